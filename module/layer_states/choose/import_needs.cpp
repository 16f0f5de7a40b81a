// What a drawing lacks of what other drawings' states name.
#include "layer_states/choose/import_needs.h"

#include "layer_states/file/names_in_drawing.h"
#include "model/opened_or_held.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"
#include "hxtext.h"

#include <algorithm>

KvImportNeeds::KvImportNeeds(HxDbDatabase* database, const KvLayerStateMap& states)
    : m_database(database), m_states(states) {}

bool KvImportNeeds::hasName(KvNeed kind, const CStdStr<wchar_t>& name) const {
    if (!m_database || name.empty()) return true;
    if (kind == kNeedLinetypes) return canUseLinetype(*m_database, name);
    if (kind == kNeedPlotStyles) return canUsePlotStyle(*m_database, name);
    const OpenedOrHeld<HxDbLayerTable> table(m_database->layerTableId(), HxDb::kForRead);
    return table && table->has(name.c_str());
}

/// Each spelling is looked up once.
int KvImportNeeds::numberOf(KvNeed kind, const CStdStr<wchar_t>& name) {
    const auto spelled = m_spelled[kind].find(name);
    if (spelled != m_spelled[kind].end()) return spelled->second;
    int number = kIsThere;
    if (!hasName(kind, name)) {
        const int next = static_cast<int>(m_names.size());
        const auto [folded, isNew] = m_folded[kind].emplace(hxutFoldName(name.c_str()), next);
        if (isNew) m_names.push_back({kind});
        number = folded->second;
    }
    m_spelled[kind].emplace(name, number);
    return number;
}

void KvImportNeeds::read(const CKvLayerState& state) {
    std::vector<int>& missing = m_missing[&state];
    m_states.visitEntries(&state, [&](const HxLyStateEntry& entry) {
        for (const int number : {numberOf(kNeedLayers, entry.layer), numberOf(kNeedLinetypes, entry.linetype),
                                 numberOf(kNeedPlotStyles, entry.plotStyle)}) {
            if (number != kIsThere) missing.push_back(number);
        }
        return true;
    });
    std::sort(missing.begin(), missing.end());
    missing.erase(std::unique(missing.begin(), missing.end()), missing.end());
}

void KvImportNeeds::want(const CKvLayerState& state) {
    if (!isKnown(state)) read(state);
    for (const int number : m_missing[&state]) {
        Name& name = m_names[static_cast<std::size_t>(number)];
        if (name.wantedBy++ == 0) ++m_counts[name.kind];
    }
}

void KvImportNeeds::unwant(const CKvLayerState& state) {
    for (const int number : m_missing[&state]) {
        Name& name = m_names[static_cast<std::size_t>(number)];
        if (--name.wantedBy == 0) --m_counts[name.kind];
    }
}
