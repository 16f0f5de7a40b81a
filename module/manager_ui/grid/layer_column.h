// The columns of the layer grid: their identities, default widths and headers.
#pragma once

#include "frame/util/column_settings.h"

#include <vector>

/// A column's identity; also its default position.
enum KvLayerColumn : int {
    kColStatus,
    kColName,
    kColOn,
    kColFreeze,
    kColLock,
    kColColor,
    kColLinetype,
    kColLineweight,
    kColTransparency,
    kColPlotStyle,
    kColPlot,
    kColNewVpFreeze,
    kColDescription,
    kColVpFreeze,  ///< this and those below are shown in a layout only
    kColVpColor,
    kColVpLinetype,
    kColVpLineweight,
    kColVpPlotStyle,
    kColVpTransparency,
};

/// In pixels, by the mouse; what a profile keeps may be less.
constexpr int kLeastColumnWidth = 16;

/// Which columns are shown.
enum class KvColumnSet { modelSpace, layout };

/// All columns of the set in their own order, with default widths and positions and headers.
std::vector<tagKvLayerListInfo> defaultColumns(KvColumnSet set);

/// The set as the profile has it for a grid, else the default.
std::vector<tagKvLayerListInfo> storedColumns(KvGridKind grid, KvColumnSet set);

/// The column's identity by the name of its width value; -1 for none.
int columnOf(const tagKvLayerListInfo& column);
