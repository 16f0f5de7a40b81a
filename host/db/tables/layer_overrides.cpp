// Reading and writing override runs, and the layer's operations on them.
#include "host/db/tables/layer_overrides.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/objects/xrecord_imp.h"
#include "host/db/tables/layer_imp.h"
#include "host/db/tables/layer_values.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

constexpr int kViewportCode = 335;

struct Storage {
    const wchar_t* record;
    const wchar_t* run;
    int code;
    bool isPointer;
};
constexpr Storage kStorage[] = {
    {L"ADSK_XREC_LAYER_COLOR_OVR", L"{ADSK_LYR_COLOR_OVERRIDE", 420, false},
    {L"ADSK_XREC_LAYER_LINETYPE_OVR", L"{ADSK_LYR_LINETYPE_OVERRIDE", 343, true},
    {L"ADSK_XREC_LAYER_LINEWT_OVR", L"{ADSK_LYR_LINEWT_OVERRIDE", 91, false},
    {L"ADSK_XREC_LAYER_ALPHA_OVR", L"{ADSK_LYR_ALPHA_OVERRIDE", 440, false},
    {L"ADSK_XREC_LAYER_PLOTSTYLE_OVR", L"{ADSK_LYR_PLOTSTYLE_OVERRIDE", 343, true},
};
const Storage& storageOf(OverrideKind kind) { return kStorage[static_cast<std::size_t>(kind)]; }

/// One "102 {...}" run.
struct Run {
    std::string groups;
    bool isOverride = false;
    HxDbStub* viewport = nullptr;
    OverrideValue value;
};

/// The record's groups in runs; what stands outside of any is a run of its own.
std::vector<Run> splitRuns(const HxDbDatabase& database, const std::string& data, const Storage& storage) {
    const HandleTable& handles = database.imp()->handles;
    std::vector<Run> runs;
    bool inside = false;
    GroupCursor cursor(data, database.imp()->format);
    while (cursor.next()) {
        const bool isBrace = cursor.code() == 102;
        const std::wstring brace = isBrace ? cursor.asText() : L"";
        const bool opens = isBrace && brace.rfind(L'{', 0) == 0;
        if (opens || !inside) {
            runs.emplace_back();
            inside = opens;
            runs.back().isOverride = opens && brace == storage.run;
        }
        Run& run = runs.back();
        run.groups.append(cursor.bytes());
        if (cursor.code() == kViewportCode) {
            run.viewport = handles.find(cursor.asHandle());
        } else if (cursor.code() == storage.code) {
            run.value.number = storage.isPointer ? 0 : cursor.asInteger();
            run.value.object = storage.isPointer ? handles.find(cursor.asHandle()) : nullptr;
        }
        inside = inside && !(isBrace && !opens);
    }
    return runs;
}

bool counts(const Run& run, const HxDbStub* viewport) {
    return run.isOverride && run.viewport && !run.viewport->erased && (!viewport || run.viewport == viewport);
}

const XrecordImp* recordOf(const HxDbLayerTableRecord& layer, OverrideKind kind) {
    HxDbStub* record = dictionaryEntry(layer.extensionDictionary().stub(), storageOf(kind).record);
    const HxDbObject* object = record ? materialise(*record) : nullptr;
    return object && object->isKindOf(HxDbXrecord::desc()) ? &fields<XrecordImp>(object) : nullptr;
}

Hx::ErrorStatus addRecord(HxDbObjectId dictionaryId, const Storage& storage, std::string data) {
    HxDbObjectPointer<HxDbDictionary> dictionary(dictionaryId, HxDb::kForWrite);
    if (!dictionary) {
        return dictionary.openStatus();
    }
    auto record = std::make_unique<HxDbXrecord>();
    fields<XrecordImp>(record.get()).setGroups(std::move(data));
    HxDbObjectId id;
    const Hx::ErrorStatus status = dictionary->setAt(storage.record, record.get(), id);
    if (status == Hx::eOk) {
        record.release()->close();
    }
    return status;
}

Hx::ErrorStatus removeRecord(HxDbObjectId dictionaryId, const Storage& storage) {
    HxDbObjectPointer<HxDbDictionary> dictionary(dictionaryId, HxDb::kForWrite);
    return dictionary ? dictionary->remove(storage.record) : dictionary.openStatus();
}

/// Puts `data` in place of what the property's record holds; an empty record goes.
Hx::ErrorStatus store(HxDbLayerTableRecord& layer, OverrideKind kind, std::string data) {
    const Storage& storage = storageOf(kind);
    Hx::ErrorStatus status = beginChange(&layer);
    if (status == Hx::eOk) {
        status = layer.createExtensionDictionary();
    }
    if (status != Hx::eOk) {
        return status;
    }
    const HxDbObjectId dictionary = layer.extensionDictionary();
    HxDbStub* present = dictionaryEntry(dictionary.stub(), storage.record);
    if (data.empty()) {
        return present ? removeRecord(dictionary, storage) : Hx::eOk;
    }
    if (!present) {
        return addRecord(dictionary, storage, std::move(data));
    }
    HxDbObjectPointer<HxDbXrecord> record(HxDbObjectId(present), HxDb::kForWrite);
    status = record ? beginChange(record.object()) : record.openStatus();
    if (status == Hx::eOk) {
        fields<XrecordImp>(record.object()).setGroups(std::move(data));
    }
    return status;
}

std::string runText(const GroupFormat& format, const Storage& storage, HxDbObjectId viewport,
                    const OverrideValue& value) {
    GroupWriter out(format);
    out.text(102, storage.run);
    out.handle(kViewportCode, viewport.handle().value());
    if (storage.isPointer) {
        out.handle(storage.code, value.object ? value.object->handle : 0);
    } else {
        out.integer(storage.code, value.number);
    }
    out.text(102, L"}");
    return out.take();
}

bool isViewport(const HxDbLayerTableRecord& layer, HxDbObjectId id) {
    return !id.isNull() && id.database() == layer.database() && !id.isErased() &&
           HxDbViewport::cast(hxdbObjectPointer(id));
}

}  // namespace

bool readOverride(const HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport,
                  OverrideValue& value) {
    const XrecordImp* record = viewport.isNull() ? nullptr : recordOf(layer, kind);
    if (!record) {
        return false;
    }
    const Storage& storage = storageOf(kind);
    for (const Run& run : splitRuns(*layer.database(), record->groups(), storage)) {
        if (counts(run, viewport.stub()) && (!storage.isPointer || run.value.object)) {
            value = run.value;
            return true;
        }
    }
    return false;
}

Hx::ErrorStatus writeOverride(HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport,
                              const OverrideValue& value) {
    if (!isViewport(layer, viewport)) {
        return Hx::eInvalidInput;
    }
    const Storage& storage = storageOf(kind);
    const XrecordImp* record = recordOf(layer, kind);
    const std::string mine = runText(layer.database()->imp()->format, storage, viewport, value);
    std::string data;
    bool placed = false;
    for (const Run& run : splitRuns(*layer.database(), record ? record->groups() : std::string(), storage)) {
        const bool isMine = counts(run, viewport.stub());
        data += !isMine ? run.groups : placed ? std::string() : mine;
        placed = placed || isMine;
    }
    return store(layer, kind, placed ? std::move(data) : data + mine);
}

Hx::ErrorStatus removeOverride(HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport) {
    const XrecordImp* record = recordOf(layer, kind);
    if (!record) {
        return Hx::eOk;
    }
    std::string data;
    bool found = false;
    for (const Run& run : splitRuns(*layer.database(), record->groups(), storageOf(kind))) {
        const bool goes = viewport.isNull() ? run.isOverride : counts(run, viewport.stub());
        data += goes ? std::string() : run.groups;
        found = found || goes;
    }
    return found ? store(layer, kind, std::move(data)) : Hx::eOk;
}

bool hasOverride(const HxDbLayerTableRecord& layer, OverrideKind kind, HxDbObjectId viewport) {
    const XrecordImp* record = recordOf(layer, kind);
    if (!record) {
        return false;
    }
    const std::vector<Run> runs = splitRuns(*layer.database(), record->groups(), storageOf(kind));
    return std::any_of(runs.begin(), runs.end(),
                       [&](const Run& run) { return counts(run, viewport.stub()); });
}

}  // namespace korvex

using namespace korvex;

namespace {

Hx::ErrorStatus removeAllKinds(HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    for (std::size_t kind = 0; kind < static_cast<std::size_t>(OverrideKind::count); ++kind) {
        const Hx::ErrorStatus status = removeOverride(layer, static_cast<OverrideKind>(kind), viewport);
        if (status != Hx::eOk) {
            return status;
        }
    }
    return Hx::eOk;
}

bool hasAnyKind(const HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    for (std::size_t kind = 0; kind < static_cast<std::size_t>(OverrideKind::count); ++kind) {
        if (hasOverride(layer, static_cast<OverrideKind>(kind), viewport)) {
            return true;
        }
    }
    return false;
}

}  // namespace

HxCmColor HxDbLayerTableRecord::color(HxDbObjectId viewport, bool& isOverride) const {
    OverrideValue value;
    HxCmColor color;
    isOverride = readOverride(*this, OverrideKind::color, viewport, value);
    if (!isOverride) {
        return this->color();
    }
    const auto word = static_cast<std::uint32_t>(value.number);
    if (word >> 24U == HxCmColor::kTrueColor) {
        color.setRGB(static_cast<std::uint8_t>(word >> 16U), static_cast<std::uint8_t>(word >> 8U),
                     static_cast<std::uint8_t>(word));
    } else {
        color.setColorIndex(static_cast<std::int16_t>(word & 0x1FFU));
    }
    return color;
}

Hx::ErrorStatus HxDbLayerTableRecord::setColor(const HxCmColor& color, HxDbObjectId viewport) {
    if (viewport.isNull()) {
        return setColor(color);
    }
    if (const Hx::ErrorStatus status = colorStatus(nullptr, color)) {
        return status;
    }
    OverrideValue value;
    const std::uint32_t method = static_cast<std::uint32_t>(color.colorMethod()) << 24U;
    const std::uint32_t rest =
        color.isByColor() ? static_cast<std::uint32_t>(color.red() << 16 | color.green() << 8 | color.blue())
                          : static_cast<std::uint32_t>(color.colorIndex());
    value.number = static_cast<std::int32_t>(method | rest);
    return writeOverride(*this, OverrideKind::color, viewport, value);
}

HxDbObjectId HxDbLayerTableRecord::linetypeObjectId(HxDbObjectId viewport, bool& isOverride) const {
    OverrideValue value;
    isOverride = readOverride(*this, OverrideKind::linetype, viewport, value);
    return isOverride ? HxDbObjectId(value.object) : linetypeObjectId();
}

Hx::ErrorStatus HxDbLayerTableRecord::setLinetypeObjectId(HxDbObjectId linetype, HxDbObjectId viewport) {
    if (viewport.isNull()) {
        return setLinetypeObjectId(linetype);
    }
    if (!isLinetype(linetype, database())) {
        return Hx::eWrongClass;
    }
    return writeOverride(*this, OverrideKind::linetype, viewport, {0, linetype.stub()});
}

HxDb::LineWeight HxDbLayerTableRecord::lineWeight(HxDbObjectId viewport, bool& isOverride) const {
    OverrideValue value;
    isOverride = readOverride(*this, OverrideKind::lineWeight, viewport, value);
    return isOverride ? static_cast<HxDb::LineWeight>(lineWeightAtPlace(value.number)) : lineWeight();
}

Hx::ErrorStatus HxDbLayerTableRecord::setLineWeight(HxDb::LineWeight weight, HxDbObjectId viewport) {
    if (viewport.isNull()) {
        return setLineWeight(weight);
    }
    return isLayerLineWeight(weight)
               ? writeOverride(*this, OverrideKind::lineWeight, viewport, {lineWeightPlace(weight), nullptr})
               : Hx::eInvalidInput;
}

HxCmTransparency HxDbLayerTableRecord::transparency(HxDbObjectId viewport, bool& isOverride) const {
    OverrideValue value;
    isOverride = readOverride(*this, OverrideKind::transparency, viewport, value);
    if (!isOverride) {
        return transparency();
    }
    HxCmTransparency transparency;
    transparency.serializeIn(static_cast<std::uint32_t>(value.number));
    return transparency.method() == HxCmTransparency::kByAlpha ? transparency : HxCmTransparency();
}

Hx::ErrorStatus HxDbLayerTableRecord::setTransparency(const HxCmTransparency& transparency,
                                                      HxDbObjectId viewport) {
    if (viewport.isNull()) {
        return setTransparency(transparency);
    }
    if (transparency.method() != HxCmTransparency::kByAlpha) {
        return Hx::eInvalidInput;
    }
    return writeOverride(*this, OverrideKind::transparency, viewport, {transparency.serializeOut(), nullptr});
}

CStdStr<wchar_t> HxDbLayerTableRecord::plotStyleName(HxDbObjectId viewport, bool& isOverride) const {
    OverrideValue value;
    isOverride = readOverride(*this, OverrideKind::plotStyle, viewport, value);
    return isOverride ? CStdStr<wchar_t>(plotStyleNameOf(*database(), value.object)) : plotStyleName();
}

Hx::ErrorStatus HxDbLayerTableRecord::setPlotStyleName(HxDbObjectId style, HxDbObjectId viewport) {
    if (viewport.isNull()) {
        return setPlotStyleName(style);
    }
    const HxDbDatabase* database = this->database();
    if (!database || database->plotStyleMode()) {
        return Hx::eNotApplicable;
    }
    return isPlotStyle(*database, style)
               ? writeOverride(*this, OverrideKind::plotStyle, viewport, {0, style.stub()})
               : Hx::eKeyNotFound;
}

Hx::ErrorStatus HxDbLayerTableRecord::removeColorOverride(HxDbObjectId viewport) {
    return removeOverride(*this, OverrideKind::color, viewport);
}
Hx::ErrorStatus HxDbLayerTableRecord::removeLinetypeOverride(HxDbObjectId viewport) {
    return removeOverride(*this, OverrideKind::linetype, viewport);
}
Hx::ErrorStatus HxDbLayerTableRecord::removeLineWeightOverride(HxDbObjectId viewport) {
    return removeOverride(*this, OverrideKind::lineWeight, viewport);
}
Hx::ErrorStatus HxDbLayerTableRecord::removeTransparencyOverride(HxDbObjectId viewport) {
    return removeOverride(*this, OverrideKind::transparency, viewport);
}
Hx::ErrorStatus HxDbLayerTableRecord::removePlotStyleOverride(HxDbObjectId viewport) {
    return removeOverride(*this, OverrideKind::plotStyle, viewport);
}
bool HxDbLayerTableRecord::hasOverrides(HxDbObjectId viewport) const {
    return !viewport.isNull() && hasAnyKind(*this, viewport);
}
bool HxDbLayerTableRecord::hasAnyOverrides() const { return hasAnyKind(*this, {}); }
Hx::ErrorStatus HxDbLayerTableRecord::removeViewportOverrides(HxDbObjectId viewport) {
    return viewport.isNull() ? Hx::eInvalidInput : removeAllKinds(*this, viewport);
}
Hx::ErrorStatus HxDbLayerTableRecord::removeAllOverrides() { return removeAllKinds(*this, {}); }
