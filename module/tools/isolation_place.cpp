#include "isolation_place.h"

#include "frame/util/result_buffers.h"
#include "model/opened_or_held.h"

#include "hxdbdict.h"
#include "hxdbentity.h"

#include <array>

namespace {

constexpr wchar_t kApplication[] = L"AcLayerTools";
constexpr wchar_t kNoViewport[] = L"0";
constexpr std::size_t kHandleSize = 256;

enum Group : int { kExtendedData = -3, kText = 1000, kApplicationName = 1001 };

CStdStr<wchar_t> handleText(HxDbObjectId id) {
    std::array<wchar_t, kHandleSize> buffer = {};
    return id.handle().getIntoAsciiBuffer(buffer.data(), buffer.size()) ? buffer.data() : L"";
}

/// Null id when the drawing has no such object any more.
HxDbObjectId objectOf(const HxDbDatabase& database, const wchar_t* handle) {
    HxDbObjectId id;
    if (database.getHxDbObjectId(id, false, HxDbHandle(handle)) != Hx::eOk || id.isErased()) return {};
    return id;
}

/// The dictionary's list with extended data behind it. Takes the data over.
bool putData(HxDbObjectId dictionary, ListPtr data) {
    zds_name name = {0, 0};
    if (!data || hxdbGetZdsName(name, dictionary) != Hx::eOk) return false;
    const ListPtr list(hxdbEntGet(name));
    if (!list) return false;
    get_rb_tail(list.get())->rbnext = data.release();
    return hxdbEntMod(list.get()) == RTNORM;
}

/// The next text of a list from one of its nodes on; null at the end. `node` goes behind it.
const wchar_t* nextText(const resbuf*& node) {
    while (node && node->restype != kText) {
        node = node->rbnext;
    }
    if (!node) return nullptr;
    const wchar_t* const text = node->resval.rstring;
    node = node->rbnext;
    return text;
}

}  // namespace

HxDbObjectId activeLayout(const HxDbDatabase& database) {
    const OpenedOrHeld<HxDbBlockTableRecord> block(hxdbLayoutManager()->getActiveLayoutBTRId(&database),
                                                   HxDb::kForRead);
    return block ? block->getLayoutId() : HxDbObjectId();
}

bool writeIsolationPlace(const HxDbDatabase& database, HxDbObjectId dictionary) {
    const HxDbObjectId layout = activeLayout(database);
    if (layout.isNull() || hxdbRegApp(kApplication) != RTNORM) return false;
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    const CStdStr<wchar_t> viewportText = viewport.isNull() ? kNoViewport : handleText(viewport);
    return putData(dictionary,
                   ListPtr(hxutBuildList(kExtendedData, kApplicationName, kApplication, kText,
                                         handleText(layout).c_str(), kText, viewportText.c_str(), 0)));
}

std::optional<KvIsolationPlace> readIsolationPlace(const HxDbDatabase& database, HxDbObjectId dictionary) {
    zds_name name = {0, 0};
    if (hxdbGetZdsName(name, dictionary) != Hx::eOk) return {};
    const ListPtr applications(hxutBuildList(RTSTR, kApplication, 0));
    const ListPtr list(hxdbEntGetX(name, applications.get()));
    resbuf* data = nullptr;
    if (kv_Associate(list.get(), kApplicationName, &data) != 0) return {};
    const resbuf* node = data->rbnext;
    KvIsolationPlace place;
    const wchar_t* const layout = nextText(node);
    if (layout && *layout) place.layout = objectOf(database, layout);
    const wchar_t* const viewport = nextText(node);
    if (viewport && std::wcscmp(viewport, kNoViewport) != 0) place.viewport = objectOf(database, viewport);
    return place;
}

bool removeIsolationPlace(HxDbObjectId dictionary) {
    return putData(dictionary, ListPtr(hxutBuildList(kExtendedData, kApplicationName, kApplication, 0)));
}
