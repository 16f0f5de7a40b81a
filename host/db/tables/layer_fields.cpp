// A layer's fields and the groups that they are in.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_imp.h"

#include <cstdlib>

namespace korvex {

namespace {

enum Code : int {
    kColorCode = 62,
    kLinetypeCode = 6,
    kPlotCode = 290,
    kLineWeightCode = 370,
    kPlotStyleCode = 390,
    kTrueColorCode = 420,
    kBookCode = 430,
};
constexpr wchar_t kTransparencyApplication[] = L"AcCmTransparency";
constexpr wchar_t kDescriptionApplication[] = L"AcAecLayerStandard";

HxCmColor colorOf(long long index, long long trueColor, const std::wstring& bookKey) {
    HxCmColor color = HxCmColor::byIndex(static_cast<std::int16_t>(index));
    if (trueColor >= 0) {
        const auto part = [&](unsigned shift) {
            return static_cast<std::uint32_t>(trueColor >> shift) & 0xFFU;
        };
        color.setColor(static_cast<std::uint32_t>(HxCmColor::kTrueColor) << 24U | part(0) << 16U |
                       part(8) << 8U | part(16));
        color.setNamesFromDictionaryKey(bookKey.c_str());
    }
    return color;
}

}  // namespace

void LayerImp::clearFields() {
    SymbolRecordImp::clearFields();
    off = false;
    linetype.clear();
    plottable = true;
    lineWeight = -3;
    plotStyle = nullptr;
    m_index = HxCmColor::kIndexWhite;
    m_trueColor = -1;
    m_bookKey.clear();
}

void LayerImp::readField(const ReadContext& context, const GroupCursor& group) {
    switch (group.code()) {
    case kColorCode: m_index = group.asInteger(); break;
    case kTrueColorCode: m_trueColor = group.asInteger() & 0xFFFFFF; break;
    case kBookCode: m_bookKey = group.asText(); break;
    case kLinetypeCode: linetype.setName(group.asText()); break;
    case kPlotCode: plottable = group.asInteger() != 0; break;
    case kLineWeightCode: lineWeight = static_cast<std::int16_t>(group.asInteger()); break;
    case kPlotStyleCode: plotStyle = context.database.imp()->handles.find(group.asHandle()); break;
    default: SymbolRecordImp::readField(context, group);
    }
}

void LayerImp::fieldsRead(HxDbDatabase& database) {
    SymbolRecordImp::fieldsRead(database);
    constexpr long long kLastIndex = 255;
    off = m_index < 0;
    const long long index = std::llabs(m_index);
    color = colorOf(index >= 1 && index <= kLastIndex ? index : 7, m_trueColor, m_bookKey);
    m_readColor = color;
    linetype.record(&database);
}

void LayerImp::added(HxDbDatabase& database) {
    if (linetype.empty()) {
        linetype.setName(L"Continuous");
    }
    linetype.record(&database);
    SymbolRecordImp::added(database);
}

void LayerImp::xdataRead(HxDbDatabase& database) {
    transparency = HxCmTransparency();
    description.clear();
    std::wstring application;
    GroupCursor cursor(xdata, database.imp()->format);
    while (cursor.next()) {
        if (cursor.code() == 1001) {
            application = cursor.asText();
        } else if (cursor.code() == 1071 && equalNames(application, kTransparencyApplication)) {
            transparency.serializeIn(static_cast<std::uint32_t>(cursor.asInteger()));
        } else if (cursor.code() == 1000 && equalNames(application, kDescriptionApplication)) {
            description = cursor.asText();  // the last text is the description
        }
    }
    if (transparency.method() != HxCmTransparency::kByAlpha) {
        transparency = HxCmTransparency();
    }
}

void LayerImp::writeFields(FieldWriter& out) const {
    const VersionTraits traits = stub->database->imp()->traits();
    SymbolRecordImp::writeFields(out);
    const long long index = color == m_readColor ? std::llabs(m_index) : color.colorIndex();
    out.integer(kColorCode, off ? -index : index);
    if (color.isByColor()) {
        out.integer(kTrueColorCode, color.red() << 16 | color.green() << 8 | color.blue());
    } else {
        out.absent(kTrueColorCode);
    }
    if (color.isFromBook()) {
        out.text(kBookCode, color.getDictionaryKey());
    } else {
        out.absent(kBookCode);
    }
    out.text(kLinetypeCode, linetype.name());
    if (!traits.hasLineWeights) {
        return;
    }
    plottable ? out.defaultInteger(kPlotCode, 1) : out.integer(kPlotCode, 0);
    const bool isNewRecord = stub->blob.empty();
    lineWeight == -3 && !isNewRecord ? out.defaultInteger(kLineWeightCode, lineWeight)
                                     : out.integer(kLineWeightCode, lineWeight);
    if (plotStyle) {
        out.handle(kPlotStyleCode, plotStyle->handle);
    }
}

bool LayerImp::isPermanent() const { return equalNames(name, L"0") || equalNames(name, L"DEFPOINTS"); }

bool LayerImp::isCurrent() const { return stub && stub->database->clayer().stub() == stub; }

Hx::ErrorStatus LayerImp::mayErase() const {
    return isPermanent() || isCurrent() ? Hx::eCannotBeErasedByCaller : Hx::eOk;
}

Hx::ErrorStatus LayerImp::mayRename() const {
    return equalNames(name, L"0") ? Hx::eRefused : SymbolRecordImp::mayRename();
}

}  // namespace korvex
