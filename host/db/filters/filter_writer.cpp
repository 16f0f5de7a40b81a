// Stores a tree of filters in the drawing: writes what differs from the records, and nothing else.
#include "host/db/filters/filter_imp.h"
#include "host/db/filters/filter_record.h"
#include "host/db/filters/filter_selection.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/objects/dictionary_imp.h"
#include "host/db/objects/xrecord_imp.h"
#include "sdk/hxdbdict.h"

#include <algorithm>

namespace korvex {

namespace {

using Filter = HxLyLayerFilter;

/// It has to be stored, in one way or another.
bool hasStored(const Filter& filter) {
    const auto& nested = filter.getNestedFilters();
    return std::any_of(nested.begin(), nested.end(), [](const Filter* one) { return one->imp()->isUsers(); });
}

bool isEntry(HxDbStub* dictionary, const HxDbStub* record) {
    std::wstring name;
    return dictionary && record && !record->erased && entryName(*dictionary, *record, name);
}

Hx::ErrorStatus setGroups(HxDbStub& record, std::string groups) {
    const WriteAccess open(record);
    Hx::ErrorStatus status = open.status();
    if (status == Hx::eOk) {
        status = beginChange(open.object());
    }
    if (status == Hx::eOk) {
        fields<XrecordImp>(open.object()).setGroups(std::move(groups));
    }
    return status;
}

/// A name that the dictionary does not have yet: "*A7".
std::wstring freeEntryName(HxDbDictionary& dictionary) {
    std::size_t number = dictionary.numEntries() + 1;
    std::wstring name;
    do {
        name = L"*A" + std::to_wstring(number++);
    } while (dictionary.has(name.c_str()));
    return name;
}

class FilterWriter {
public:
    FilterWriter(HxDbDatabase& database, Filter& root)
        : m_database(database), m_table(*database.layerTableId().stub()), m_root(root) {}

    Hx::ErrorStatus write(const Filter& current);

private:
    HxDbStub& holderOf(const Filter& parent) const {
        return parent.parent() ? *parent.imp()->record : m_table;
    }
    HxDbStub* placeIn(const Filter& parent) const {
        return extensionEntry(holderOf(parent), kFilterDictionary);
    }
    bool isInPlace(const Filter& filter) const;
    bool differs(const Filter& filter) const;
    Hx::ErrorStatus writeNested(Filter& parent);
    Hx::ErrorStatus writeFilter(Filter& filter);
    Hx::ErrorStatus addRecord(Filter& filter);
    Hx::ErrorStatus eraseRecord(const StoredFilter& stored);
    Hx::ErrorStatus eraseForgotten();
    Hx::ErrorStatus writeMarks(const Filter& current);
    Hx::ErrorStatus writeSelectedName(const Filter& current);
    std::vector<StoredFilter> recordsOfTree() const;
    std::vector<Filter*> allFilters() const {
        std::vector<Filter*> all;
        collectFilters(m_root, all);
        return all;
    }

    HxDbDatabase& m_database;
    HxDbStub& m_table;
    Filter& m_root;
};

Hx::ErrorStatus FilterWriter::write(const Filter& current) {
    Hx::ErrorStatus status = writeNested(m_root);
    if (status == Hx::eOk) {
        status = eraseForgotten();
    }
    if (status == Hx::eOk) {
        status = writeMarks(current);
    }
    if (status == Hx::eOk) {
        status = writeSelectedName(current);
    }
    if (status == Hx::eOk) {
        m_root.imp()->known = recordsOfTree();
    }
    return status;
}

bool FilterWriter::isInPlace(const Filter& filter) const {
    const Filter::Imp& imp = *filter.imp();
    const bool isTop = imp.parent == &m_root;
    return imp.isOlder ? isTop && isEntry(extensionEntry(m_table, kOlderFilterDictionary), imp.record)
                       : isEntry(placeIn(*imp.parent), imp.record);
}

/// The record says something else than the filter. A record without a name has that of its entry.
bool FilterWriter::differs(const Filter& filter) const {
    const Filter::Imp& imp = *filter.imp();
    if (filter.isProxy()) {
        return false;
    }
    FilterRecord stored = imp.isOlder ? readOlderFilterRecord(*imp.record) : readFilterRecord(*imp.record);
    std::wstring entry;
    if (stored.name.empty() && !imp.isOlder && entryName(*placeIn(*imp.parent), *imp.record, entry)) {
        stored.name = entry;
    }
    return stored.name != imp.name || stored.kind != imp.kind || stored.expression != imp.expressionText ||
           (filter.isIdFilter() && stored.layers != imp.layers);
}

Hx::ErrorStatus FilterWriter::writeNested(Filter& parent) {
    for (Filter* filter : parent.getNestedFilters()) {
        if (!filter->imp()->isUsers()) {
            continue;
        }
        Hx::ErrorStatus status = writeFilter(*filter);
        if (status == Hx::eOk) {
            status = writeNested(*filter);
        }
        if (status != Hx::eOk) {
            return status;
        }
    }
    return Hx::eOk;
}

Hx::ErrorStatus FilterWriter::writeFilter(Filter& filter) {
    Filter::Imp& imp = *filter.imp();
    const bool isInPlace = this->isInPlace(filter);
    const bool needsTree = imp.isOlder && hasStored(filter);
    if (isInPlace && !needsTree && !differs(filter)) {
        return Hx::eOk;
    }
    imp.olderCopy = nullptr;  // says something else now
    if (!isInPlace || imp.isOlder) {
        return addRecord(filter);
    }
    return setGroups(*imp.record,
                     filterGroups(filter, *xrecordGroups(*imp.record), m_database.imp()->format));
}

/// A new record, with what the old one said besides.
Hx::ErrorStatus FilterWriter::addRecord(Filter& filter) {
    Filter::Imp& imp = *filter.imp();
    const bool isOwn = imp.record && imp.record->database == &m_database && !imp.isOlder;
    const std::string* old = isOwn ? xrecordGroups(*imp.record) : nullptr;
    if (filter.isProxy() && !old) {
        return Hx::eNotApplicable;
    }
    std::string groups =
        filter.isProxy() ? *old
                         : filterGroups(filter, old ? std::string_view(*old) : "", m_database.imp()->format);
    HxDbStub* place = nullptr;
    const Hx::ErrorStatus made = makeExtensionDictionaryEntry(holderOf(*imp.parent), kFilterDictionary,
                                                              WriteAccess::Upgrade::transactions, place);
    if (made != Hx::eOk) {
        return made;
    }
    const WriteAccess open(*place);
    auto* dictionary = HxDbDictionary::cast(open.object());
    if (!dictionary) {
        return open.status() == Hx::eOk ? Hx::eWrongClass : open.status();
    }
    auto* record = new HxDbXrecord;
    HxDbObjectId id;
    const Hx::ErrorStatus status = dictionary->setAt(freeEntryName(*dictionary).c_str(), record, id);
    if (status != Hx::eOk) {
        delete record;
        return status;
    }
    fields<XrecordImp>(record).setGroups(std::move(groups));
    record->close();
    imp.record = id.stub();
    imp.isOlder = false;
    return Hx::eOk;
}

std::vector<StoredFilter> FilterWriter::recordsOfTree() const {
    std::vector<StoredFilter> records;
    HxDbStub* older = extensionEntry(m_table, kOlderFilterDictionary);
    for (const Filter* filter : allFilters()) {
        const Filter::Imp& imp = *filter->imp();
        if (imp.record) {
            records.push_back({imp.record, imp.isOlder ? older : placeIn(*imp.parent)});
        }
        if (imp.olderCopy) {
            records.push_back({imp.olderCopy, older});
        }
    }
    return records;
}

Hx::ErrorStatus FilterWriter::eraseRecord(const StoredFilter& stored) {
    std::wstring name;
    if (stored.record->erased || !stored.dictionary || stored.dictionary->erased ||
        !entryName(*stored.dictionary, *stored.record, name)) {
        return Hx::eOk;
    }
    const WriteAccess open(*stored.dictionary);
    Hx::ErrorStatus status = open.status();
    if (status == Hx::eOk) {
        status = HxDbDictionary::cast(open.object())->remove(name.c_str());
    }
    if (status != Hx::eOk || stored.record->erased) {
        return status;
    }
    const WriteAccess record(*stored.record);  // the dictionary does not say that it owns it
    return record.object() ? record.object()->erase() : record.status();
}

/// What the tree was read from and holds no more.
Hx::ErrorStatus FilterWriter::eraseForgotten() {
    std::unordered_set<const HxDbStub*> held;
    for (const StoredFilter& stored : recordsOfTree()) {
        held.insert(stored.record);
    }
    for (const StoredFilter& stored : m_root.imp()->known) {
        const Hx::ErrorStatus status = held.count(stored.record) > 0 ? Hx::eOk : eraseRecord(stored);
        if (status != Hx::eOk) {
            return status;
        }
    }
    return Hx::eOk;
}

Hx::ErrorStatus FilterWriter::writeMarks(const Filter& current) {
    for (const Filter* filter : allFilters()) {
        HxDbStub* record = filter->imp()->isOlder ? nullptr : filter->imp()->record;
        const std::string* groups = record ? xrecordGroups(*record) : nullptr;
        const bool isSelected = filter == &current;
        if (!groups || readFilterRecord(*record).isSelected == isSelected) {
            continue;
        }
        const Hx::ErrorStatus status =
            setGroups(*record, groupsWithMark(*groups, isSelected, m_database.imp()->format));
        if (status != Hx::eOk) {
            return status;
        }
    }
    return Hx::eOk;
}

Hx::ErrorStatus FilterWriter::writeSelectedName(const Filter& current) {
    if (!m_database.imp()->traits().hasSubclassMarkers) {
        return Hx::eOk;  // too old for it, as for filters
    }
    std::wstring present;
    HxDbStub* dictionary = extensionEntry(m_table, kFilterDictionary);
    const bool isInTable = readSelection(m_table, present);
    const bool isInDictionary = dictionary && readSelection(*dictionary, present);
    Hx::ErrorStatus status = Hx::eOk;
    if (isInTable || &current != &m_root) {
        status = writeSelection(m_table, current.name());
    }
    if (status == Hx::eOk && isInDictionary) {
        status = writeSelection(*dictionary, current.name());
    }
    return status;
}

bool isInTree(const Filter& filter, const Filter& root) {
    const Filter* at = &filter;
    while (at->parent()) {
        at = at->parent();
    }
    return at == &root;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus HxLyLayerFilterManager::setFilters(HxLyLayerFilter* root, const HxLyLayerFilter* current) {
    if (!root || !current || root->imp()->database != m_database || !isInTree(*current, *root)) {
        return Hx::eInvalidInput;
    }
    Journal& changes = journal(*m_database);
    changes.beginGroup(L"LAYERFILTER");
    const Journal::Mark before = changes.putMark();
    const Hx::ErrorStatus status = FilterWriter(*m_database, *root).write(*current);
    if (status != Hx::eOk) {
        changes.rollbackTo(before);
    }
    changes.endGroup();
    return status;
}
