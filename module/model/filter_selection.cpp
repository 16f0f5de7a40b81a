// Which layer filter is selected, as a drawing records it for the next one who opens it.
#include "filter_selection.h"

#include "opened_or_held.h"

#include "frame/util/result_buffers.h"

#include "hxads.h"
#include "hxdbdict.h"
#include "hxed.h"

#include <memory>
#include <set>

namespace {

constexpr wchar_t kFilterDictionary[] = L"ACLYDICTIONARY";
constexpr wchar_t kApplication[] = L"ACAD";

enum Group : short { kCloneFlag = 280, kSelected = 290, kFilterName = 300, kText = 1000, kAppName = 1001 };

struct ReleaseChain {
    void operator()(resbuf* chain) const { hxutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ReleaseChain>;

bool isUsers(const HxLyLayerFilter& filter) {
    switch (filter.kind()) {
    case HxLyLayerFilter::kProperty:
    case HxLyLayerFilter::kGroup:
    case HxLyLayerFilter::kProxy: return true;
    default: return false;
    }
}

/// The name that stands for a filter in the extended data.
CStdStr<wchar_t> selectionName(const HxLyLayerFilter& filter) {
    switch (filter.kind()) {
    case HxLyLayerFilter::kAll: return L"<All";
    case HxLyLayerFilter::kAllUsed: return L"<AllUsed";
    case HxLyLayerFilter::kAllNonXref: return L"<AllNonXref";
    case HxLyLayerFilter::kXrefRoot: return L"<XrefRoot";
    default: return filter.name();
    }
}

/// The group lists of a record; null when it cannot be read.
Chain listOf(HxDbObjectId record) {
    zds_name name = {0, 0};
    return Chain(hxdbGetZdsName(name, record) == Hx::eOk ? hxdbEntGet(name) : nullptr);
}

bool isNamed(const resbuf* list, const CStdStr<wchar_t>& name) {
    for (; list; list = list->rbnext) {
        if (list->restype == kFilterName) return list->resval.rstring && name == list->resval.rstring;
    }
    return false;
}

/// The filters nested in one are kept in its record's extension dictionary.
HxDbObjectId nestedFilters(HxDbObjectId record) {
    HxDbObjectId nested;
    const HxDbObjectPointer<HxDbObject> opened(record, HxDb::kForRead);
    if (!opened || opened->extensionDictionary().isNull()) return nested;
    const HxDbObjectPointer<HxDbDictionary> extension(opened->extensionDictionary(), HxDb::kForRead);
    if (extension) extension->getAt(kFilterDictionary, nested);
    return nested;
}

/// Looks for the record of a filter's name in a dictionary and what is nested in it. Damaged drawings may
/// nest a dictionary in itself: each is looked at once.
class RecordSearch {
public:
    explicit RecordSearch(const CStdStr<wchar_t>& name) : m_name(name) {}

    /// The record's list; null when there is none.
    Chain in(const HxDbDictionary& dictionary) {
        if (!m_seen.insert(dictionary.objectId()).second) return nullptr;
        const std::unique_ptr<HxDbDictionaryIterator> entries(dictionary.newIterator());
        for (; !entries->done(); entries->next()) {
            if (Chain list = listOf(entries->objectId()); isNamed(list.get(), m_name)) return list;
            const HxDbObjectPointer<HxDbDictionary> nested(nestedFilters(entries->objectId()),
                                                           HxDb::kForRead);
            if (!nested) continue;
            if (Chain list = in(*nested.object())) return list;
        }
        return nullptr;
    }

private:
    const CStdStr<wchar_t>& m_name;
    std::set<HxDbObjectId> m_seen;
};

Chain findRecord(const HxDbDictionary& dictionary, const CStdStr<wchar_t>& name) {
    return RecordSearch(name).in(dictionary);
}

Hx::ErrorStatus writeBack(const Chain& list) {
    return hxdbEntMod(list.get()) == RTNORM ? Hx::eOk : Hx::eRefused;
}

/// Marks a filter's record as selected; eOk also for a filter without one, or one that is marked.
Hx::ErrorStatus mark(const HxDbDictionary& dictionary, const HxLyLayerFilter& filter) {
    if (!isUsers(filter)) return Hx::eOk;
    const Chain list = findRecord(dictionary, filter.name());
    resbuf* flag = nullptr;
    if (!list || kv_Associate(list.get(), kCloneFlag, &flag) != 0) return Hx::eOk;
    if (flag->rbnext && flag->rbnext->restype == kSelected) return Hx::eOk;
    resbuf* const selected = hxutNewRb(kSelected);
    if (!selected) return Hx::eOutOfMemory;
    selected->resval.rint = 1;
    selected->rbnext = flag->rbnext;
    flag->rbnext = selected;
    return writeBack(list);
}

Hx::ErrorStatus unmark(const HxDbDictionary& dictionary, const HxLyLayerFilter& filter) {
    if (!isUsers(filter)) return Hx::eOk;
    const Chain list = findRecord(dictionary, filter.name());
    resbuf* before = list.get();
    while (before && !(before->rbnext && before->rbnext->restype == kSelected)) {
        before = before->rbnext;
    }
    if (!before) return Hx::eOk;
    const Chain removed(before->rbnext);
    before->rbnext = removed->rbnext;
    removed->rbnext = nullptr;
    return writeBack(list);
}

Hx::ErrorStatus storeName(HxDbObject& layerTable, const CStdStr<wchar_t>& name) {
    Chain data(layerTable.xData(kApplication));
    resbuf* text = nullptr;
    if (data && kv_Associate(data.get(), kText, &text) == 0) {
        hxutFreeString(text->resval.rstring);
        text->resval.rstring = hxutNewString(name.c_str());
    } else if (data) {
        get_rb_tail(data.get())->rbnext = hxutBuildList(kText, name.c_str(), 0);
    } else {
        hxdbRegApp(kApplication);
        data.reset(hxutBuildList(kAppName, kApplication, kText, name.c_str(), 0));
    }
    return layerTable.setXData(data.get());
}

void keepFirst(Hx::ErrorStatus& status, Hx::ErrorStatus next) {
    if (status == Hx::eOk) status = next;
}

}  // namespace

Hx::ErrorStatus storeFilterSelection(HxDbDatabase& database, const HxLyLayerFilter& selected,
                                     const HxLyLayerFilter& before, bool& hasRecords) {
    hasRecords = false;
    const OpenedOrHeld<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
    if (!table) return table.openStatus();
    const Hx::ErrorStatus made = table->createExtensionDictionary();
    if (made != Hx::eOk) return made;
    HxDbObjectId filters;
    {
        const OpenedOrHeld<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForWrite);
        if (!extension) return extension.openStatus();
        if (extension->getAt(kFilterDictionary, filters) != Hx::eOk) return Hx::eOk;
    }
    hasRecords = true;
    const OpenedOrHeld<HxDbDictionary> records(filters, HxDb::kForWrite);
    if (!records) return records.openStatus();
    Hx::ErrorStatus status = mark(*records.object(), selected);
    keepFirst(status, storeName(*table.object(), selectionName(selected)));
    keepFirst(status, unmark(*records.object(), before));
    return status;
}
