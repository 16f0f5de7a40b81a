// Drawings that carry far more layer filters than layers.
#include "excess_filters.h"

#include "hxdbdict.h"
#include "hxdbsymtb.h"
#include "hxdoc.h"
#include "hxlyfilter.h"

namespace {

constexpr wchar_t kOldFilters[] = L"ACAD_LAYERFILTERS";
constexpr wchar_t kFilters[] = L"ACLYDICTIONARY";

/// Null id without a drawing or when its layer table has none.
HxDbObjectId filterDictionary() {
    const HxDbDatabase* const database = curDocDatabase();
    const HxDbObjectPointer<HxDbLayerTable> table(database ? database->layerTableId() : HxDbObjectId(),
                                                  HxDb::kForRead);
    return table ? table->extensionDictionary() : HxDbObjectId();
}

}  // namespace

int getLayersNumber() {
    const HxDbDatabase* const database = curDocDatabase();
    const HxDbObjectPointer<HxDbLayerTable> table(database ? database->layerTableId() : HxDbObjectId(),
                                                  HxDb::kForRead);
    return table ? static_cast<int>(table->numRecords()) : 0;
}

int getSubItemNum(HxDbDictionary* dictionary, const wchar_t* name) {
    HxDbObjectId id;
    if (!dictionary || dictionary->getAt(name, id) != Hx::eOk) return 0;
    const HxDbObjectPointer<HxDbDictionary> entries(id, HxDb::kForRead);
    return entries ? static_cast<int>(entries->numEntries()) : 0;
}

int getLayerFiltersNumber() {
    const HxDbObjectPointer<HxDbDictionary> dictionary(filterDictionary(), HxDb::kForRead);
    if (!dictionary) return 0;
    return getSubItemNum(dictionary.object(), kOldFilters) + getSubItemNum(dictionary.object(), kFilters);
}

void removeDictionary(HxDbDictionary* dictionary, const wchar_t* name) {
    if (dictionary && dictionary->has(name)) dictionary->remove(name);
}

void removeAllFiltersTree() {
    const HxDbObjectPointer<HxDbDictionary> dictionary(filterDictionary(), HxDb::kForWrite);
    if (!dictionary) return;
    removeDictionary(dictionary.object(), kOldFilters);
    removeDictionary(dictionary.object(), kFilters);
}

void removeAllFiltersTree(HxLyLayerFilter* filter) {
    if (!filter) return;
    const HxArray<HxLyLayerFilter*> nested = filter->getNestedFilters();
    for (HxLyLayerFilter* const each : nested) {
        removeAllFiltersTree(each);
        if (filter->removeNested(each) == Hx::eOk) delete each;
    }
}
