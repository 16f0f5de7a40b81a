// Linetypes and plot styles that a drawing has a use for.
#pragma once

#include "layer_states/records/layer_state_map.h"

#include <vector>

class HxDbDatabase;

/// Names of entries that a drawing has no use for, each once, in the order of the entries.
struct KvUnusableNames {
    std::vector<CStdStr<wchar_t>> linetypes;
    std::vector<CStdStr<wchar_t>> plotStyles;
};

/// Makes entries fit a drawing. Linetypes that it lacks become "Continuous". Where plot styles are named,
/// those that it lacks are taken out of their entries, which its records could not hold; where they follow
/// the colours, others than "Color_1" to "Color_255" are only told. Null drawing: everything fits.
KvUnusableNames fitToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries);
/// Only the plot styles.
KvUnusableNames fitPlotStylesToDrawing(HxDbDatabase* database, KvLayerStateInfoArray& entries);
