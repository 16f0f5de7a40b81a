// One condition of a filter's expression, such as COLOR=="Red", ready to be tested on many layers.
#pragma once

#include "host/db/filters/active_viewport.h"
#include "host/db/values/wildcard.h"
#include "sdk/hxdbsymtb.h"

#include <bitset>
#include <string>

namespace korvex {

enum class LayerProperty : std::uint8_t {
    // texts
    name,
    linetype,
    plotStyle,
    description,
    // small numbers
    color,
    lineWeight,
    transparency,
    status,
    // flags
    on,
    off,
    frozen,
    locked,
    plottable,
    frozenInNewViewports,
    used,
    dependent,
    frozenInViewport,
    overridden,
};

struct PropertyName {
    const wchar_t* name;
    LayerProperty property;
    bool inViewport;  ///< its value in the active viewport
};
/// The property of a name (case ignored); null when there is none.
const PropertyName* propertyNamed(std::wstring_view name);

enum class Comparison : std::uint8_t { equal, different, less, greater, lessOrEqual, greaterOrEqual };

/// Texts are compared with a pattern. All other properties have few values: which of them pass is found out
/// once, by what each is called.
class LayerCondition {
public:
    static constexpr int kAccept = -1;
    static constexpr int kRefuse = -2;
    /// Among small numbers 0 stands for the default lineweight, w + 3 for one of w hundredths of a
    /// millimetre.
    static constexpr int kWeightOffset = 3;

    /// False, with the reason, when the property cannot have such a value or be compared so.
    bool make(const PropertyName& property, Comparison comparison, std::wstring_view value,
              std::wstring& reason);
    bool holds(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const;
    bool needsViewport() const;

    int whenTrue = kAccept;  ///< the next condition, or the result
    int whenFalse = kRefuse;

private:
    /// Numbers of any property fit: colour indexes, lineweights from -3 to 211, per cent.
    using Values = std::bitset<256>;

    bool isText() const { return m_property <= LayerProperty::description; }
    bool acceptOrdered(std::wstring_view value, std::wstring& reason);
    bool acceptEqual(std::wstring_view value);
    bool textHolds(std::wstring_view text) const;
    bool trueColorHolds(const HxCmColor& color) const;
    std::wstring_view textOf(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport,
                             std::wstring& scratch) const;
    HxCmColor colorOf(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const;
    bool colorHolds(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const;
    std::size_t numberOf(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const;

    LayerProperty m_property = LayerProperty::name;
    bool m_inViewport = false;
    Comparison m_comparison = Comparison::equal;
    Values m_accepted;
    std::unique_ptr<Pattern> m_pattern;  ///< texts, and what true colours are called
    std::wstring m_bound;                ///< texts that are ordered: folded
    long m_rgb = -1;                     ///< a true colour, 0x00BBGGRR
};

}  // namespace korvex
