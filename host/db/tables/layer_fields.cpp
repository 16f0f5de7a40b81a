// A layer's fields and the groups that they are in.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_imp.h"

#include <cstdlib>

namespace korvex {

namespace {

enum Code : int {
    kLinetypeCode = 6,
    kPlotCode = 290,
    kLineWeightCode = 370,
    kPlotStyleCode = 390,
};
constexpr wchar_t kTransparencyApplication[] = L"AcCmTransparency";
constexpr wchar_t kDescriptionApplication[] = L"AcAecLayerStandard";

}  // namespace

void LayerImp::clearFields() {
    SymbolRecordImp::clearFields();
    off = false;
    linetype.clear();
    plottable = true;
    lineWeight = -3;
    plotStyle = nullptr;
    m_color.clear();
}

void LayerImp::readField(const ReadContext& context, const GroupCursor& group) {
    switch (group.code()) {
    case kLinetypeCode: linetype.setName(group.asText()); break;
    case kPlotCode: plottable = group.asInteger() != 0; break;
    case kLineWeightCode: lineWeight = static_cast<std::int16_t>(group.asInteger()); break;
    case kPlotStyleCode: plotStyle = context.database.imp()->handles.find(group.asHandle()); break;
    default:
        if (!m_color.read(group)) {
            SymbolRecordImp::readField(context, group);
        }
    }
}

void LayerImp::fieldsRead(HxDbDatabase& database) {
    SymbolRecordImp::fieldsRead(database);
    off = m_color.isNegative();
    color = m_color.color();
    linetype.record(&database);
}

void LayerImp::added(HxDbDatabase& database) {
    if (linetype.empty()) {
        linetype.setName(L"Continuous");
    }
    linetype.record(&database);
    stub->inUse = inUseWhenAdded;
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
    const long long index = std::llabs(m_color.indexOf(color));
    out.integer(ColorGroups::kIndexCode, off ? -index : index);
    ColorGroups::writeTrueColor(out, color);
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
