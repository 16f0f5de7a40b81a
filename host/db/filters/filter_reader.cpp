// Makes a tree of filters from what a drawing holds.
#include "host/db/filters/filter_imp.h"
#include "host/db/filters/filter_record.h"
#include "host/db/filters/filter_selection.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/objects/dictionary_imp.h"
#include "sdk/hxdbdict.h"

#include <algorithm>

namespace korvex {

namespace {

std::unique_ptr<HxLyLayerFilter> filterOf(FilterRecord read, const std::wstring& entry) {
    std::unique_ptr<HxLyLayerFilter> filter;
    if (read.kind == HxLyLayerFilter::kGroup) {
        filter = std::make_unique<HxLyLayerGroup>();
        filter->imp()->setLayers(std::move(read.layers));
    } else {
        filter = HxLyLayerFilter::Imp::make(read.kind, L"");
    }
    filter->imp()->name = read.name.empty() ? entry : std::move(read.name);
    if (read.kind == HxLyLayerFilter::kProperty) {
        filter->imp()->setExpression(std::move(read.expression));
    }
    return filter;
}

const std::vector<DictionaryImp::Entry>& entriesOf(HxDbStub* dictionary) {
    static const std::vector<DictionaryImp::Entry> none;
    const auto* object = dictionary ? HxDbDictionary::cast(materialise(*dictionary)) : nullptr;
    return object ? fields<DictionaryImp>(object).entries : none;
}

class FilterReader {
public:
    explicit FilterReader(HxDbDatabase& database)
        : m_table(*database.layerTableId().stub()), m_root(systemFilters(database)) {}

    std::unique_ptr<HxLyLayerFilter> read(HxLyLayerFilter*& current);

private:
    void readTree(HxLyLayerFilter& parent, HxDbStub* dictionary, int depth);
    void readOlder(HxDbStub* dictionary);
    HxLyLayerFilter* add(HxLyLayerFilter& parent, std::unique_ptr<HxLyLayerFilter> filter,
                         const StoredFilter& stored);
    HxLyLayerFilter* filterNamed(std::wstring_view name) const;
    HxLyLayerFilter* selected() const;

    HxDbStub& m_table;
    std::unique_ptr<HxLyLayerFilter> m_root;
    HxLyLayerFilter* m_marked = nullptr;
    std::unordered_set<const HxDbStub*> m_seen;
};

std::unique_ptr<HxLyLayerFilter> FilterReader::read(HxLyLayerFilter*& current) {
    readTree(*m_root, extensionEntry(m_table, kFilterDictionary), 0);
    readOlder(extensionEntry(m_table, kOlderFilterDictionary));
    current = selected();
    if (!current) {
        current = m_root.get();
    }
    return std::move(m_root);
}

HxLyLayerFilter* FilterReader::add(HxLyLayerFilter& parent, std::unique_ptr<HxLyLayerFilter> filter,
                                   const StoredFilter& stored) {
    HxLyLayerFilter* added = filter.get();
    added->imp()->record = stored.record;
    m_root->imp()->known.push_back(stored);
    parent.imp()->append(std::move(filter));
    return added;
}

void FilterReader::readTree(HxLyLayerFilter& parent, HxDbStub* dictionary, int depth) {
    constexpr int kDeepest = 100;  // nobody nests so deep: the drawing is damaged
    if (depth == kDeepest) {
        return;
    }
    for (const DictionaryImp::Entry& entry : entriesOf(dictionary)) {
        if (!entry.isLive() || !m_seen.insert(entry.object).second) {
            continue;
        }
        FilterRecord read = readFilterRecord(*entry.object);
        const bool isSelected = read.isSelected;
        HxLyLayerFilter* filter =
            add(parent, filterOf(std::move(read), entry.name), {entry.object, dictionary});
        if (isSelected && !m_marked) {
            m_marked = filter;
        }
        readTree(*filter, extensionEntry(*entry.object, kFilterDictionary), depth + 1);
    }
}

/// An older record that has the name of another filter is its copy for older programs.
void FilterReader::readOlder(HxDbStub* dictionary) {
    for (const DictionaryImp::Entry& entry : entriesOf(dictionary)) {
        if (!entry.isLive() || !m_seen.insert(entry.object).second) {
            continue;
        }
        std::unique_ptr<HxLyLayerFilter> filter = filterOf(readOlderFilterRecord(*entry.object), entry.name);
        HxLyLayerFilter* same = filterNamed(filter->name());
        if (same && same->imp()->isUsers() && !same->imp()->isOlder && !same->imp()->olderCopy) {
            same->imp()->olderCopy = entry.object;
            m_root->imp()->known.push_back({entry.object, dictionary});
        } else {
            add(*m_root, std::move(filter), {entry.object, dictionary})->imp()->isOlder = true;
        }
    }
}

/// Users' filters go before those of the system.
HxLyLayerFilter* FilterReader::filterNamed(std::wstring_view name) const {
    std::vector<HxLyLayerFilter*> all;
    collectFilters(*m_root, all);
    std::stable_partition(all.begin(), all.end(),
                          [](const HxLyLayerFilter* filter) { return filter->imp()->isUsers(); });
    const auto found = std::find_if(all.begin(), all.end(), [&](const HxLyLayerFilter* filter) {
        return equalNames(filter->name(), name);
    });
    return found == all.end() ? nullptr : *found;
}

/// The layer table tells by name, the mark which of several of that name; in drawings whose layer table does
/// not tell the mark, or the dictionary's data.
HxLyLayerFilter* FilterReader::selected() const {
    std::wstring name;
    HxDbStub* dictionary = extensionEntry(m_table, kFilterDictionary);
    if (readSelection(m_table, name)) {
        return m_marked && equalNames(m_marked->name(), name) ? m_marked : filterNamed(name);
    }
    if (m_marked) {
        return m_marked;
    }
    return dictionary && readSelection(*dictionary, name) ? filterNamed(name) : nullptr;
}

}  // namespace

}  // namespace korvex

Hx::ErrorStatus HxLyLayerFilterManager::getFilters(HxLyLayerFilter*& root, HxLyLayerFilter*& current) const {
    root = korvex::FilterReader(*m_database).read(current).release();
    return Hx::eOk;
}
