// Widths and order of the layer grid's columns in the current profile.
#include "column_settings.h"

#include "registry_settings.h"

#include "hxdbdatabase.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace {

constexpr std::uint32_t kNumberBudget = 4096;
/// Given as the class of keys that are made; existing profiles have it so.
constexpr wchar_t kKeyClass[] = L"REG_SZ";
constexpr wchar_t kModelSet[] = L"GlobalColumnSets";
constexpr wchar_t kLayoutSet[] = L"ViewportColumnSets";

CStdStr<wchar_t> gridKey(KvGridKind grid) {
    CStdStr<wchar_t> path = GetUserInterfaceSettingsRegKey();
    if (path.empty()) return path;
    path += grid == KvGridKind::palette ? L"\\KvLayerPropManagerPalette" : L"\\KvLayerPropManagerDlg";
    return path;
}

bool readNumber(const RegistryKey& key, const CStdStr<wchar_t>& name, std::int32_t& number) {
    CStdStr<wchar_t> text;
    bool isWhole = false;
    if (!key.readText(name.c_str(), kNumberBudget, text, &isWhole) || !isWhole) return false;
    using Limits = std::numeric_limits<std::int32_t>;
    const long value = std::wcstol(text.c_str(), nullptr, 10);
    number = static_cast<std::int32_t>(std::clamp<long>(value, Limits::min(), Limits::max()));
    return true;
}

bool writeNumber(const RegistryKey& key, const CStdStr<wchar_t>& name, std::int32_t number) {
    return key.writeText(name.c_str(), std::to_wstring(number), false);
}

bool saveSet(const RegistryKey& grid, const wchar_t* set, const std::vector<tagKvLayerListInfo>& columns) {
    RegistryKey key;
    if (!key.openForWrite(grid, set, kKeyClass)) return false;
    return std::all_of(columns.begin(), columns.end(), [&key](const tagKvLayerListInfo& column) {
        return writeNumber(key, column.widthName, column.width) &&
               writeNumber(key, column.indexName, column.index);
    });
}

}  // namespace

const std::array<const wchar_t*, kColumnCount> kColumnWidthNames = {
    L"StatusWidth",     L"NameWidth",         L"OnWidth",          L"FreezeWidth",        L"LockWidth",
    L"ColorWidth",      L"LineTypeWidth",     L"LineWeightWidth",  L"TransparencyWidth",  L"PlotStyleWidth",
    L"PlotWidth",       L"NewVpFreezeWidth",  L"DescrWidth",       L"VpFreezeWidth",      L"VpColorWidth",
    L"VpLineTypeWidth", L"VpLineWeightWidth", L"VpPlotStyleWidth", L"VpTransparencyWidth"};

const std::array<const wchar_t*, kColumnCount> kColumnIndexNames = {
    L"StatusIndex",     L"NameIndex",         L"OnIndex",          L"FreezeIndex",        L"LockIndex",
    L"ColorIndex",      L"LineTypeIndex",     L"LineWeightIndex",  L"TransparencyIndex",  L"PlotStyleIndex",
    L"PlotIndex",       L"NewVpFreezeIndex",  L"DescrIndex",       L"VpFreezeIndex",      L"VpColorIndex",
    L"VpLineTypeIndex", L"VpLineWeightIndex", L"VpPlotStyleIndex", L"VpTransparencyIndex"};

std::size_t shownColumnCount(const HxDbDatabase* database) {
    return !database || database->tilemode() ? kModelColumnCount : kColumnCount;
}

bool GetColInfoFromReg(KvGridKind grid, tagKvLayerListInfo* columns, std::size_t count) {
    CStdStr<wchar_t> path = gridKey(grid);
    if (path.empty()) return false;
    path += L"\\";
    path += count == kModelColumnCount ? kModelSet : kLayoutSet;
    RegistryKey key;
    if (!key.openForRead(HKEY_CURRENT_USER, path)) return false;
    return std::all_of(columns, columns + count, [&key](tagKvLayerListInfo& column) {
        return readNumber(key, column.widthName, column.width) &&
               readNumber(key, column.indexName, column.index);
    });
}

bool SaveColInfoInReg(KvGridKind grid, const std::vector<tagKvLayerListInfo>& modelColumns,
                      const std::vector<tagKvLayerListInfo>& layoutColumns) {
    const CStdStr<wchar_t> path = gridKey(grid);
    RegistryKey key;
    if (path.empty() || !key.openForWrite(HKEY_CURRENT_USER, path, kKeyClass)) return false;
    const bool modelSaved = saveSet(key, kModelSet, modelColumns);
    const bool layoutSaved = saveSet(key, kLayoutSet, layoutColumns);
    return modelSaved && layoutSaved;
}
