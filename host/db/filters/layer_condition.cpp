// Which layers a condition holds for.
#include "host/db/filters/layer_condition.h"

#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_imp.h"
#include "host/db/tables/layer_values.h"

namespace korvex {

namespace {

enum StatusValue : std::size_t { kUnused = 0, kUsed = 1, kCurrent = 2 };

bool compares(Comparison comparison, int order) {
    switch (comparison) {
    case Comparison::equal: return order == 0;
    case Comparison::different: return order != 0;
    case Comparison::less: return order < 0;
    case Comparison::greater: return order > 0;
    case Comparison::lessOrEqual: return order <= 0;
    case Comparison::greaterOrEqual: break;
    }
    return order >= 0;
}

/// As wcscmp of the folded text and the bound, without folding it as a whole.
int orderOf(std::wstring_view text, std::wstring_view folded) {
    for (std::size_t i = 0; i < text.size() && i < folded.size(); ++i) {
        const wchar_t c = foldCharacter(text[i]);
        if (c != folded[i]) {
            return c < folded[i] ? -1 : 1;
        }
    }
    return text.size() == folded.size() ? 0 : text.size() < folded.size() ? -1 : 1;
}

std::wstring colorNumbers(const HxCmColor& color) {
    return std::to_wstring(color.red()) + L"," + std::to_wstring(color.green()) + L"," +
           std::to_wstring(color.blue());
}

/// The linetype's name without a copy where the drawing has the record.
std::wstring_view linetypeName(HxDbObjectId linetype) {
    const auto* record = HxDbLinetypeTableRecord::cast(hxdbObjectPointer(linetype));
    return record ? std::wstring_view(fields<SymbolRecordImp>(record).name) : std::wstring_view();
}

}  // namespace

bool LayerCondition::needsViewport() const {
    return m_inViewport || m_property == LayerProperty::frozenInViewport ||
           m_property == LayerProperty::overridden || m_property == LayerProperty::plotStyle;
}

bool LayerCondition::holds(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const {
    if (isText()) {
        std::wstring scratch;
        return textHolds(textOf(layer, viewport, scratch));
    }
    return m_property == LayerProperty::color ? colorHolds(layer, viewport)
                                              : m_accepted[numberOf(layer, viewport)];
}

bool LayerCondition::textHolds(std::wstring_view text) const {
    return m_pattern ? m_pattern->matches(text) == (m_comparison == Comparison::equal)
                     : compares(m_comparison, orderOf(text, m_bound));
}

bool LayerCondition::trueColorHolds(const HxCmColor& color) const {
    if (!m_pattern && m_rgb < 0) {
        return m_accepted[static_cast<std::size_t>(color.colorIndex()) &
                          0xFFU];  // ordered: by the index beside it
    }
    const bool equal =
        m_rgb >= 0 ? (color.color() & 0xFFFFFFU) == static_cast<std::uint32_t>(m_rgb)
        : color.isFromBook()
            ? m_pattern->matchesAny({colorNumbers(color), color.colorName(), color.getDictionaryKey()})
            : m_pattern->matches(colorNumbers(color));
    return equal == (m_comparison == Comparison::equal);
}

bool LayerCondition::colorHolds(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const {
    if (m_inViewport) {
        bool isOverride = false;
        const HxCmColor color = layer.color(viewport.id(), isOverride);
        return color.isByColor() ? trueColorHolds(color)
                                 : m_accepted[static_cast<std::size_t>(color.colorIndex()) & 0xFFU];
    }
    const HxCmColor& color = layerFields(&layer).color;
    return color.isByColor() ? trueColorHolds(color)
                             : m_accepted[static_cast<std::size_t>(color.colorIndex()) & 0xFFU];
}

std::wstring_view LayerCondition::textOf(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport,
                                         std::wstring& scratch) const {
    const LayerImp& imp = layerFields(&layer);
    bool isOverride = false;
    switch (m_property) {
    case LayerProperty::name: return imp.name;
    case LayerProperty::description: return imp.description;
    case LayerProperty::linetype: {
        const std::wstring_view name = linetypeName(
            m_inViewport ? layer.linetypeObjectId(viewport.id(), isOverride) : layer.linetypeObjectId());
        if (!name.empty()) {
            return name;
        }
        scratch = imp.linetype.name();
        break;
    }
    default:
        if (m_inViewport) {
            scratch = layer.plotStyleName(viewport.id(), isOverride);
        } else if (viewport.hasNamedPlotStyles() && layer.database()) {
            scratch = plotStyleNameOf(*layer.database(), imp.plotStyle);
        } else {
            scratch = L"Color_" + std::to_wstring(imp.color.colorIndex());
        }
    }
    return scratch;
}

std::size_t LayerCondition::numberOf(const HxDbLayerTableRecord& layer,
                                     const ActiveViewport& viewport) const {
    const LayerImp& imp = layerFields(&layer);
    bool isOverride = false;
    switch (m_property) {
    case LayerProperty::lineWeight: {
        const int weight = m_inViewport ? static_cast<int>(layer.lineWeight(viewport.id(), isOverride))
                                        : static_cast<int>(imp.lineWeight);
        return static_cast<std::size_t>((isLayerLineWeight(weight) ? weight : -kWeightOffset) +
                                        kWeightOffset);
    }
    case LayerProperty::transparency:
        return static_cast<std::size_t>(
            (m_inViewport ? layer.transparency(viewport.id(), isOverride) : imp.transparency).percent());
    case LayerProperty::status: return imp.isCurrent() ? kCurrent : layer.isInUse() ? kUsed : kUnused;
    case LayerProperty::on: return !imp.off;
    case LayerProperty::off: return imp.off;
    case LayerProperty::frozen: return layer.isFrozen();
    case LayerProperty::locked: return layer.isLocked();
    case LayerProperty::plottable: return layer.isPlottable();
    case LayerProperty::frozenInNewViewports: return layer.VPDFLT();
    case LayerProperty::used: return layer.isInUse();
    case LayerProperty::dependent: return layer.isDependent();
    case LayerProperty::frozenInViewport: return viewport.freezes(imp.stub);
    case LayerProperty::overridden: return layer.hasOverrides(viewport.id());
    default: return 0;
    }
}

}  // namespace korvex
