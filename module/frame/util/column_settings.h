// Widths and order of the layer grid's columns in the current profile.
#pragma once

#include "hxstring.h"

#include <array>
#include <cstdint>
#include <vector>

class HxDbDatabase;

constexpr std::size_t kColumnCount = 19;
/// The columns that model space shows: the first ones.
constexpr std::size_t kModelColumnCount = 13;

/// The value names of the columns, in the columns' own order.
extern const std::array<const wchar_t*, kColumnCount> kColumnWidthNames;
extern const std::array<const wchar_t*, kColumnCount> kColumnIndexNames;

/// One column's layout.
struct tagKvLayerListInfo {
    CStdStr<wchar_t> widthName;  ///< value name of the width
    CStdStr<wchar_t> indexName;  ///< value name of the position
    CStdStr<wchar_t> header;
    std::int32_t index = 0;  ///< position among the shown columns, 0 leftmost
    std::int32_t width = 0;  ///< pixels

    bool operator<(const tagKvLayerListInfo& other) const { return index < other.index; }
};

/// Whose grid it is; each keeps columns of its own.
enum class KvGridKind { palette, dialog };

/// Model space, or no drawing: 13 columns. A layout: all.
std::size_t shownColumnCount(const HxDbDatabase* database);

/// Reads the layout of a set of columns, each by its value names: that of model space for kModelColumnCount
/// columns, that of layouts for kColumnCount. False when there is none or at the first value that is missing;
/// the columns read before that have their new numbers, the others keep theirs. A text that is no number is
/// 0.
bool GetColInfoFromReg(KvGridKind grid, tagKvLayerListInfo* columns, std::size_t count);

/// Writes both sets. False when something could not be written; a set is written up to its first failure.
bool SaveColInfoInReg(KvGridKind grid, const std::vector<tagKvLayerListInfo>& modelColumns,
                      const std::vector<tagKvLayerListInfo>& layoutColumns);
