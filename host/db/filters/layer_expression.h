// Expressions of property filters: NAME=="A-*" AND NOT FROZEN=="True".
#pragma once

#include "host/db/filters/layer_condition.h"
#include "sdk/hxlyfilter.h"

#include <vector>

namespace korvex {

/// An expression, parsed once. Its conditions stand in the order of the text; each knows which one is next
/// when it holds and when it does not, so that testing a layer takes no stack and no more conditions than it
/// needs.
class LayerExpression {
public:
    /// How deep parentheses and NOT may nest.
    static constexpr int kDeepest = 100;

    /// False, with the reason, for a text that cannot be understood; nothing passes then.
    bool parse(std::wstring_view text, HxLyExpressionError& error);
    /// The layer passes. `viewport` is up to date if needsViewport().
    bool accepts(const HxDbLayerTableRecord& layer, const ActiveViewport& viewport) const;
    bool needsViewport() const { return m_needsViewport; }

private:
    std::vector<LayerCondition> m_conditions;
    bool m_valid = true;
    bool m_needsViewport = false;
};

}  // namespace korvex
