// Linetypes and plot styles that a drawing has a use for.
#pragma once

#include "layer_states/records/layer_state_map.h"

#include <vector>

class HxDbDatabase;

/// Whether a drawing has a linetype, and whether its layers can have a plot style: one that it has where plot
/// styles are named, "Color_1" to "Color_255" where they follow the colours.
bool canUseLinetype(HxDbDatabase& database, const CStdStr<wchar_t>& name);
bool canUsePlotStyle(HxDbDatabase& database, const CStdStr<wchar_t>& name);

/// Names of entries that a drawing has no use for, each once, in the order of the entries.
struct KvUnusableNames {
    std::vector<CStdStr<wchar_t>> linetypes;
    std::vector<CStdStr<wchar_t>> plotStyles;
};

/// Makes entries fit a drawing. Linetypes that it lacks become "Continuous". Where plot styles are named,
/// those that it lacks are taken out of their entries, which its records could not hold; where they follow
/// the colours, others are only told. Null drawing: everything fits.
KvUnusableNames fitToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries);
/// Only the plot styles.
KvUnusableNames fitPlotStylesToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries);
