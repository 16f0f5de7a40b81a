// Default layouts of the layer grid's columns.
#include "layer_column.h"

#include "frame/util/resource_text.h"

namespace {

struct DefaultColumn {
    KvString header;
    std::int32_t modelWidth;
    std::int32_t layoutWidth;
};

constexpr std::array<DefaultColumn, kColumnCount> kDefaults = {{
    {kStrHeaderStatus, 35, 35},        {kStrHeaderName, 70, 70},        {kStrHeaderOn, 30, 30},
    {kStrHeaderFreeze, 40, 40},        {kStrHeaderLock, 35, 35},        {kStrHeaderColor, 60, 60},
    {kStrHeaderLinetype, 125, 80},     {kStrHeaderLineweight, 80, 80},  {kStrHeaderTransparency, 60, 80},
    {kStrHeaderPlotStyle, 60, 60},     {kStrHeaderPlot, 40, 40},        {kStrHeaderNewVpFreeze, 60, 60},
    {kStrHeaderDescription, 90, 60},   {kStrHeaderVpFreeze, 0, 90},     {kStrHeaderVpColor, 0, 60},
    {kStrHeaderVpLinetype, 0, 80},     {kStrHeaderVpLineweight, 0, 80}, {kStrHeaderVpPlotStyle, 0, 60},
    {kStrHeaderVpTransparency, 0, 80},
}};

}  // namespace

std::vector<tagKvLayerListInfo> defaultColumns(KvColumnSet set) {
    const bool isModel = set == KvColumnSet::modelSpace;
    std::vector<tagKvLayerListInfo> columns(isModel ? kModelColumnCount : kColumnCount);
    for (std::size_t id = 0; id < columns.size(); ++id) {
        columns[id].widthName = kColumnWidthNames[id];
        columns[id].indexName = kColumnIndexNames[id];
        columns[id].header = moduleString(kDefaults[id].header);
        columns[id].index = static_cast<std::int32_t>(id);
        columns[id].width = isModel ? kDefaults[id].modelWidth : kDefaults[id].layoutWidth;
    }
    return columns;
}

std::vector<tagKvLayerListInfo> storedColumns(KvGridKind grid, KvColumnSet set) {
    std::vector<tagKvLayerListInfo> columns = defaultColumns(set);
    return GetColInfoFromReg(grid, columns.data(), columns.size()) ? columns : defaultColumns(set);
}

int columnOf(const tagKvLayerListInfo& column) {
    for (std::size_t id = 0; id < kColumnCount; ++id) {
        if (column.widthName == kColumnWidthNames[id]) return static_cast<int>(id);
    }
    return -1;
}
