#include "classic_layer_functions.h"

#include "frame/util/result_buffers.h"
#include "model/opened_or_held.h"

#include "hxdbdict.h"

namespace {

constexpr wchar_t kFilterDictionary[] = L"VREX_LAYERFILTERS";
constexpr wchar_t kByColor[] = L"BYCOLOR";
constexpr int kEntityName = -1;
constexpr int kPlotStyle = 390;

/// A place in the order as 16 bits with a sign: what is beyond them wraps around.
std::int16_t sortKey(wchar_t character) {
    const auto code = static_cast<std::uint32_t>(character);
    std::uint32_t offset = 0;
    if ((code & 0x80U) != 0) {
        offset = 768;
    } else if (character >= L'a' && character <= L'z') {
        offset = 512;
    } else if (character >= L'A' && character <= L'Z') {
        offset = 544;
    } else if (character >= L'0' && character <= L'9') {
        offset = 256;
    }
    return static_cast<std::int16_t>(code + offset);
}

}  // namespace

resbuf* FindLayerFilter(const wchar_t* name) {
    zds_name root = {0, 0};
    if (!name || hxdbNamedObjDict(root) != RTNORM) return nullptr;
    const ListPtr filters(hxdbDictSearch(root, kFilterDictionary, 0));
    resbuf* dictionary = nullptr;
    kv_Associate(filters.get(), kEntityName, &dictionary);
    return dictionary ? hxdbDictSearch(dictionary->resval.rlname, name, 0) : nullptr;
}

CStdStr<wchar_t> GetPlotStyleName(const resbuf* layer) {
    while (layer && layer->restype != kPlotStyle) {
        layer = layer->rbnext;
    }
    HxDbDatabase* const database = hxdbWorkingDatabase();
    HxDbObjectId style;
    if (!layer || !database || database->plotStyleMode() ||
        hxdbGetObjectId(style, layer->resval.rlname) != Hx::eOk) {
        return kByColor;
    }
    const OpenedOrHeld<HxDbDictionary> styles(database->getPlotStyleNameDictionaryId(), HxDb::kForRead);
    CStdStr<wchar_t> name;
    return styles && styles->nameAt(style, name) == Hx::eOk ? name : CStdStr<wchar_t>(kByColor);
}

int strcmpSort(const wchar_t* a, const wchar_t* b) {
    for (; *a && *b; ++a, ++b) {
        const std::int16_t left = sortKey(*a);
        const std::int16_t right = sortKey(*b);
        if (left != right) return left > right ? 1 : -1;
    }
    return *a ? 1 : *b ? -1 : 0;
}
