// Layers as the SDK shows them: the properties that hold everywhere.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/tables/layer_imp.h"
#include "host/db/tables/layer_values.h"
#include "host/db/tables/symbol_table_imp.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbsymtb.h"

HX_DEFINE_MEMBERS(HxDbLayerTableRecord, HxDbSymbolTableRecord)
HX_DEFINE_MEMBERS(HxDbLayerTable, HxDbSymbolTable)

using namespace korvex;

namespace {

constexpr wchar_t kTransparencyApplication[] = L"AcCmTransparency";
constexpr wchar_t kDescriptionApplication[] = L"AcAecLayerStandard";

struct ReleaseChain {
    void operator()(resbuf* chain) const { hxutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ReleaseChain>;

/// Sets the data of an application that is registered when need be.
Hx::ErrorStatus setApplicationData(HxDbLayerTableRecord& layer, const wchar_t* application,
                                   const Chain& data) {
    HxDbDatabase* database = layer.database();
    if (!database) {
        return Hx::eNotInDatabase;
    }
    const Hx::ErrorStatus status =
        layer.isWriteEnabled() ? registerApplication(*database, application) : beginChange(&layer);
    return status == Hx::eOk ? layer.setXData(data.get()) : status;
}

/// A setter of one flag without a status.
void setFlag(HxDbLayerTableRecord* layer, LayerImp::Flag flag, bool on) {
    auto& imp = layerFields(layer);
    if (((imp.flags & flag) != 0) != on && beginChange(layer) == Hx::eOk) {
        imp.setFlag(flag, on);
    }
}

template <class T>
Hx::ErrorStatus setField(HxDbLayerTableRecord* layer, T& field, const T& value) {
    if (field == value) {
        return Hx::eOk;
    }
    const Hx::ErrorStatus status = beginChange(layer);
    if (status == Hx::eOk) {
        field = value;
    }
    return status;
}

/// The layer of an entity is in use; nothing for null.
void markLayerOf(HxDbStub* entity) {
    HxDbStub* layer = entity ? layerOf(*entity) : nullptr;
    if (layer) {
        layer->inUse = true;
    }
}

/// Null for a layer that is in no drawing yet.
const HxDbDatabase* drawingOf(const LayerImp& layer) { return layer.stub ? layer.stub->database : nullptr; }

}  // namespace

HxDbLayerTable::HxDbLayerTable() : HxDbSymbolTable(new SymbolTableImp(TableKind::layer)) {}

Hx::ErrorStatus HxDbLayerTable::getAt(const wchar_t* name, HxDbLayerTableRecord*& record, HxDb::OpenMode mode,
                                      bool openErased) const {
    record = nullptr;
    HxDbObjectId id;
    const Hx::ErrorStatus status = getAt(name, id, openErased);
    return status == Hx::eOk ? hxdbOpenObject(record, id, mode, openErased) : status;
}

void HxDbLayerTable::generateUsageData() {
    HxDbDatabase* database = this->database();
    if (!database) {
        return;
    }
    for (HxDbStub* layer : members(*imp()->stub)) {
        layer->inUse = false;
    }
    for (HxDbStub* block : members(*database->imp()->table(TableKind::block))) {
        if (block->erased || !block->contents) {
            continue;
        }
        markLayerOf(block->contents->blockBegin);
        markLayerOf(block->contents->blockEnd);
        for (HxDbStub* entity : members(*block)) {
            markLayerOf(isAlive(*entity) ? entity : nullptr);
        }
    }
}

HxDbLayerTableRecord::HxDbLayerTableRecord() : HxDbSymbolTableRecord(new LayerImp) {}

bool HxDbLayerTableRecord::isOff() const { return layerFields(this).off; }
void HxDbLayerTableRecord::setIsOff(bool off) { setField(this, layerFields(this).off, off); }

bool HxDbLayerTableRecord::isFrozen() const { return (layerFields(this).flags & LayerImp::kFrozen) != 0; }
Hx::ErrorStatus HxDbLayerTableRecord::setIsFrozen(bool frozen) {
    if (frozen == isFrozen()) {
        return Hx::eOk;
    }
    if (frozen && layerFields(this).isCurrent()) {
        return Hx::eRefused;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        layerFields(this).setFlag(LayerImp::kFrozen, frozen);
    }
    return status;
}

bool HxDbLayerTableRecord::isLocked() const { return (layerFields(this).flags & LayerImp::kLocked) != 0; }
void HxDbLayerTableRecord::setIsLocked(bool locked) { setFlag(this, LayerImp::kLocked, locked); }

bool HxDbLayerTableRecord::VPDFLT() const {
    return (layerFields(this).flags & LayerImp::kFrozenInNewViewports) != 0;
}
void HxDbLayerTableRecord::setVPDFLT(bool frozen) { setFlag(this, LayerImp::kFrozenInNewViewports, frozen); }

bool HxDbLayerTableRecord::isPlottable() const {
    const LayerImp& imp = layerFields(this);
    return imp.plottable && !equalNames(imp.name, L"DEFPOINTS");
}
Hx::ErrorStatus HxDbLayerTableRecord::setIsPlottable(bool plottable) {
    LayerImp& imp = layerFields(this);
    if (plottable && equalNames(imp.name, L"DEFPOINTS")) {
        return Hx::eRefused;
    }
    const HxDbDatabase* drawing = drawingOf(imp);
    const bool hasPlace = !drawing || drawing->imp()->traits().hasLineWeights;
    return hasPlace ? setField(this, imp.plottable, plottable) : Hx::eNotApplicable;
}

HxCmColor HxDbLayerTableRecord::color() const { return layerFields(this).color; }
Hx::ErrorStatus HxDbLayerTableRecord::setColor(const HxCmColor& color) {
    LayerImp& imp = layerFields(this);
    const Hx::ErrorStatus status = colorStatus(drawingOf(imp), color);
    return status == Hx::eOk ? setField(this, imp.color, color) : status;
}

HxDbObjectId HxDbLayerTableRecord::linetypeObjectId() const {
    return HxDbObjectId(layerFields(this).linetype.record(database()));
}
Hx::ErrorStatus HxDbLayerTableRecord::setLinetypeObjectId(HxDbObjectId linetype) {
    LayerImp& imp = layerFields(this);
    if (!isLinetype(linetype, imp.stub ? imp.stub->database : linetype.database())) {
        return Hx::eWrongClass;
    }
    if (imp.linetype.record(database()) == linetype.stub()) {
        return Hx::eOk;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        imp.linetype.setRecord(*linetype.stub());
    }
    return status;
}

HxDb::LineWeight HxDbLayerTableRecord::lineWeight() const {
    return static_cast<HxDb::LineWeight>(layerFields(this).lineWeight);
}
Hx::ErrorStatus HxDbLayerTableRecord::setLineWeight(HxDb::LineWeight weight) {
    LayerImp& imp = layerFields(this);
    const Hx::ErrorStatus status = lineWeightStatus(drawingOf(imp), weight);
    return status == Hx::eOk ? setField(this, imp.lineWeight, static_cast<std::int16_t>(weight)) : status;
}

HxCmTransparency HxDbLayerTableRecord::transparency() const { return layerFields(this).transparency; }
Hx::ErrorStatus HxDbLayerTableRecord::setTransparency(const HxCmTransparency& transparency) {
    if (transparency.method() != HxCmTransparency::kByAlpha) {
        return Hx::eInvalidInput;
    }
    if (transparency == layerFields(this).transparency) {
        return Hx::eOk;
    }
    const Chain data(transparency.isSolid()
                         ? hxutBuildList(1001, kTransparencyApplication, 0)
                         : hxutBuildList(1001, kTransparencyApplication, 1071,
                                         static_cast<long>(transparency.serializeOut()), 0));
    return setApplicationData(*this, kTransparencyApplication, data);
}

CStdStr<wchar_t> HxDbLayerTableRecord::plotStyleName() const {
    const HxDbDatabase* database = this->database();
    if (!database || database->plotStyleMode()) {
        return L"Color_" + std::to_wstring(layerFields(this).color.colorIndex());
    }
    return plotStyleNameOf(*database, layerFields(this).plotStyle);
}
HxDbObjectId HxDbLayerTableRecord::plotStyleNameId() const {
    return HxDbObjectId(layerFields(this).plotStyle);
}

Hx::ErrorStatus HxDbLayerTableRecord::setPlotStyleName(const wchar_t* name) {
    const HxDbDatabase* database = this->database();
    if (!database || database->plotStyleMode()) {
        return Hx::eNotApplicable;
    }
    HxDbStub* style = name ? dictionaryEntry(database->getPlotStyleNameDictionaryId().stub(), name) : nullptr;
    return style ? setField(this, layerFields(this).plotStyle, style) : Hx::eKeyNotFound;
}
Hx::ErrorStatus HxDbLayerTableRecord::setPlotStyleName(HxDbObjectId style) {
    const HxDbDatabase* database = this->database();
    if (!database || database->plotStyleMode()) {
        return Hx::eNotApplicable;
    }
    return isPlotStyle(*database, style) ? setField(this, layerFields(this).plotStyle, style.stub())
                                         : Hx::eKeyNotFound;
}

CStdStr<wchar_t> HxDbLayerTableRecord::description() const { return layerFields(this).description; }
Hx::ErrorStatus HxDbLayerTableRecord::setDescription(const wchar_t* description) {
    const std::wstring text = description ? description : L"";
    if (text == layerFields(this).description) {
        return Hx::eOk;
    }
    const Chain data(text.empty()
                         ? hxutBuildList(1001, kDescriptionApplication, 0)
                         : hxutBuildList(1001, kDescriptionApplication, 1000, L"", 1000, text.c_str(), 0));
    return setApplicationData(*this, kDescriptionApplication, data);
}

bool HxDbLayerTableRecord::isInUse() const {
    const LayerImp& imp = layerFields(this);
    return imp.stub ? imp.isPermanent() || imp.isCurrent() || imp.stub->inUse : imp.inUseWhenAdded;
}

void HxDbLayerTableRecord::setIsInUse(bool inUse) {
    LayerImp& imp = layerFields(this);
    (imp.stub ? imp.stub->inUse : imp.inUseWhenAdded) = inUse;
}
