// Finds the layers that a list of names means.
#include "host/editor/layer_names.h"

#include "host/db/values/wildcard.h"
#include "sdk/hxdbsymtb.h"

#include <memory>
#include <unordered_set>

namespace korvex {

namespace {

constexpr wchar_t kEscape = L'`';

/// Collects layers, each once.
class Collector {
public:
    explicit Collector(LayerSelection& selection) : m_selection(selection) {}
    void add(HxDbObjectId id) {
        if (m_seen.insert(id).second) {
            m_selection.layers.push_back(id);
        }
    }

private:
    LayerSelection& m_selection;
    std::unordered_set<HxDbObjectId> m_seen;
};

bool addMatching(const HxDbLayerTable& table, const std::wstring& element, Collector& into) {
    HxDbSymbolTableIterator* steps = nullptr;
    if (table.newIterator(steps) != Hx::eOk) {
        return false;
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    const Pattern pattern(element);
    bool found = false;
    for (; !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(steps->getRecordId(), HxDb::kForRead);
        if (layer && pattern.matches(layer->name())) {
            into.add(steps->getRecordId());
            found = true;
        }
    }
    return found;
}

}  // namespace

std::vector<std::wstring> splitNames(const std::wstring& list) {
    std::vector<std::wstring> names;
    for (std::size_t at = 0; at <= list.size();) {
        std::size_t end = at;
        while (end < list.size() && list[end] != L',') {
            end = std::min(end + (list[end] == kEscape ? 2 : 1), list.size());
        }
        CStdStr<wchar_t> name(list.substr(at, end - at));
        if (!name.Trim().IsEmpty()) {
            names.push_back(name);
        }
        at = end + 1;
    }
    return names;
}

std::wstring layerName(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
    return layer ? layer->name() : L"";
}

LayerSelection selectLayers(HxDbDatabase& database, const std::wstring& list) {
    LayerSelection selection;
    Collector collector(selection);
    HxDbLayerTable* table = nullptr;
    const bool opened = database.getLayerTable(table, HxDb::kForRead) == Hx::eOk;
    for (const std::wstring& name : splitNames(list)) {
        HxDbObjectId id;
        if (opened && table->getAt(name.c_str(), id) == Hx::eOk) {
            collector.add(id);
        } else if (!opened || !isPattern(name) || !addMatching(*table, name, collector)) {
            selection.unmatched.push_back(name);
        }
    }
    if (opened) {
        table->close();
    }
    return selection;
}

}  // namespace korvex
