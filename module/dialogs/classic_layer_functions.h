// Small functions of the classic layer dialog.
#pragma once

#include "hxads.h"

/// The list of a layer filter of earlier versions, by name; null when the drawing has none. The caller
/// releases it.
resbuf* FindLayerFilter(const wchar_t* name);

/// The name of a layer's plot style by its entity list; "BYCOLOR" where plot styles depend on colours, and
/// for a list without one that the drawing has.
CStdStr<wchar_t> GetPlotStyleName(const resbuf* layer);

/// Compares names character by character: punctuation, then digits, then letters without regard to their
/// case; 1, -1 or 0. A name that is the beginning of the other comes first.
int strcmpSort(const wchar_t* a, const wchar_t* b);
