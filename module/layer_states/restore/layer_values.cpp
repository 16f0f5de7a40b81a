#include "layer_states/restore/layer_values.h"

#include "frame/util/result_buffers.h"
#include "hxdbdict.h"
#include "hxdbsymtb.h"
#include "hxtext.h"
#include "model/record_of_name.h"

#include <cstdlib>
#include <memory>

namespace {

constexpr wchar_t kReferenceMark = L'|';
constexpr std::int64_t kPackedMask = 0xFFFFFF;
constexpr std::uint32_t kTrueColorMethod = static_cast<std::uint32_t>(HxCmColor::kTrueColor) << 24U;

/// Whether the layer has the value now, or its drawing has no place for it.
bool isSettled(Hx::ErrorStatus status) { return status == Hx::eOk || status == Hx::eNotApplicable; }

}  // namespace

bool hasColor(const HxLyStateEntry& entry) {
    const int index = std::abs(entry.colorIndex);
    return entry.trueColor >= 0 || (index > HxCmColor::kIndexByBlock && index < HxCmColor::kIndexByLayer);
}

HxCmColor colorOf(const HxLyStateEntry& entry) {
    HxCmColor color;
    color.setColorIndex(static_cast<std::int16_t>(std::abs(entry.colorIndex)));
    if (entry.trueColor < 0) return color;
    color.setColor(kTrueColorMethod | static_cast<std::uint32_t>(entry.trueColor & kPackedMask));
    color.setNamesFromDictionaryKey(entry.colorBook.c_str());
    return color;
}

HxDbObjectId KvLayerStateValues::CreateNewLineType(const CStdStr<wchar_t>& name) const {
    const HxDbWorkingDatabaseScope scope(&m_database);
    const ListPtr list(hxutBuildList(RTDXF0, L"LTYPE", 100, L"AcDbSymbolTableRecord", 100,
                                     L"AcDbLinetypeTableRecord", 2, name.c_str(), 70, 0, 3, L"Solid line", 72,
                                     65, 73, 0, 40, 0.0, 0));
    zds_name made = {0, 0};
    HxDbObjectId id;
    if (list && hxdbEntMakeX(list.get(), made) == RTNORM) hxdbGetObjectId(id, made);
    return id;
}

HxDbObjectId& KvLayerStateValues::linetypeKnownFor(const HxLyStateEntry& entry) {
    const std::size_t mark = entry.layer.find(kReferenceMark);
    const CStdStr<wchar_t> reference = mark == CStdStr<wchar_t>::npos
                                           ? CStdStr<wchar_t>()
                                           : CStdStr<wchar_t>(entry.layer.substr(0, mark + 1));
    HxDbObjectId& id = m_linetypes[reference + entry.linetype];
    if (id.isNull()) id = linetypeOfName(m_database, entry.linetype);
    if (id.isNull() && !reference.empty()) id = linetypeOfName(m_database, reference + entry.linetype);
    return id;
}

HxDbObjectId KvLayerStateValues::linetypeFor(const HxLyStateEntry& entry) {
    HxDbObjectId& id = linetypeKnownFor(entry);
    if (id.isNull()) id = CreateNewLineType(entry.linetype);
    if (id.isNull()) id = m_database.continuousLinetype();
    return id;
}

HxDbObjectId KvLayerStateValues::GetPlotStyleObjId(const CStdStr<wchar_t>& name) {
    HxDbObjectId& id = m_plotStyles[name];
    const OpenedOrHeld<HxDbDictionary> styles(
        id.isNull() ? m_database.getPlotStyleNameDictionaryId() : HxDbObjectId(), HxDb::kForRead);
    if (styles) {
        const bool isNormal =
            hxutEqualNames(name.c_str(), hxdbGetReservedString(kHxReservedNormal, true).c_str());
        const CStdStr<wchar_t> key = isNormal ? hxdbGetReservedString(kHxReservedNormal, false) : name;
        if (styles->has(key.c_str())) styles->getAt(key.c_str(), id);
    }
    return id;
}

bool KvLayerStateValues::SetCurrentVpLayerColor(HxDbLayerTableRecord& layer, const HxCmColor& color) {
    return isSettled(layer.setColor(color, m_viewport));
}

bool KvLayerStateValues::SetCurrentVpLayerLinetype(HxDbLayerTableRecord& layer, HxDbObjectId linetype) {
    return isSettled(layer.setLinetypeObjectId(linetype, m_viewport));
}

bool KvLayerStateValues::SetCurrentVpLayerLineweight(HxDbLayerTableRecord& layer, HxDb::LineWeight weight) {
    return isSettled(layer.setLineWeight(weight, m_viewport));
}

bool KvLayerStateValues::SetCurrentVpLayerTransparency(HxDbLayerTableRecord& layer,
                                                       const HxCmTransparency& transparency) {
    return isSettled(layer.setTransparency(transparency, m_viewport));
}

bool KvLayerStateValues::SetCurrentVpLayerPlotstyle(HxDbLayerTableRecord& layer, HxDbObjectId style) {
    return isSettled(layer.setPlotStyleName(style, m_viewport));
}

bool KvLayerStateValues::applyFlags(HxDbLayerTableRecord& layer, const HxLyStateEntry& entry,
                                    std::int32_t wanted) {
    const auto has = [&](HxLyState::LayerFlag flag) { return (entry.flags & flag) != 0; };
    bool isDone = true;
    if ((wanted & HxLyState::kOn) != 0) layer.setIsOff(has(HxLyState::kLayerOff));
    if ((wanted & HxLyState::kLocked) != 0) layer.setIsLocked(has(HxLyState::kLayerLocked));
    if ((wanted & HxLyState::kNewViewportFrozen) != 0) {
        layer.setVPDFLT(has(HxLyState::kLayerNewViewportFrozen));
    }
    if ((wanted & HxLyState::kFrozen) != 0) {
        isDone = isSettled(layer.setIsFrozen(has(HxLyState::kLayerFrozen)));
    }
    if ((wanted & HxLyState::kPlot) != 0) {
        // a layer that never plots keeps to that
        const Hx::ErrorStatus status = layer.setIsPlottable(has(HxLyState::kLayerPlots));
        isDone = (isSettled(status) || status == Hx::eRefused) && isDone;
    }
    return isDone;
}

bool KvLayerStateValues::apply(HxDbLayerTableRecord& layer, const HxLyStateEntry& entry,
                               std::int32_t wanted) {
    const bool inViewport = !m_viewport.isNull();
    bool isDone = applyFlags(layer, entry, wanted);
    if ((wanted & HxLyState::kColor) != 0) {
        const HxCmColor color = colorOf(entry);
        isDone = hasColor(entry) &&
                 (inViewport ? SetCurrentVpLayerColor(layer, color) : isSettled(layer.setColor(color))) &&
                 isDone;
    }
    if ((wanted & HxLyState::kLinetype) != 0) {
        const HxDbObjectId linetype = linetypeFor(entry);
        isDone = (inViewport ? SetCurrentVpLayerLinetype(layer, linetype)
                             : isSettled(layer.setLinetypeObjectId(linetype))) &&
                 isDone;
    }
    if ((wanted & HxLyState::kLineweight) != 0) {
        const auto weight = static_cast<HxDb::LineWeight>(entry.lineweight);
        isDone = (inViewport ? SetCurrentVpLayerLineweight(layer, weight)
                             : isSettled(layer.setLineWeight(weight))) &&
                 isDone;
    }
    if ((wanted & HxLyState::kTransparency) != 0) {
        const HxCmTransparency transparency(static_cast<std::uint8_t>(entry.transparency));
        isDone = (inViewport ? SetCurrentVpLayerTransparency(layer, transparency)
                             : isSettled(layer.setTransparency(transparency))) &&
                 isDone;
    }
    if ((wanted & HxLyState::kPlotStyle) != 0) {
        const HxDbObjectId style = GetPlotStyleObjId(entry.plotStyle);
        isDone = !style.isNull() &&
                 (inViewport ? SetCurrentVpLayerPlotstyle(layer, style)
                             : isSettled(layer.setPlotStyleName(style))) &&
                 isDone;
    }
    return isDone;
}
