// What a drawing lacks of what other drawings' states name.
#pragma once

#include "layer_states/records/layer_state_map.h"

#include <array>
#include <unordered_map>
#include <vector>

class HxDbDatabase;

/// Kinds of names in entries.
enum KvNeed : int { kNeedLayers, kNeedLinetypes, kNeedPlotStyles, kNeedCount };

/// Reads states one by one and counts the names that a drawing lacks, of those that are wanted.
class KvImportNeeds {
public:
    /// Null drawing: it lacks nothing. The states must outlive this object.
    KvImportNeeds(HxDbDatabase* database, const KvLayerStateMap& states);

    /// The state's entries are read, unless they were before.
    void want(const CKvLayerState& state);
    void unwant(const CKvLayerState& state);
    bool isKnown(const CKvLayerState& state) const { return m_missing.count(&state) > 0; }
    /// Names that the drawing lacks, each counted once for all states that are wanted.
    const std::array<int, kNeedCount>& missing() const { return m_counts; }

private:
    struct Name {
        KvNeed kind;
        int wantedBy = 0;  ///< states
    };
    static constexpr int kIsThere = -1;

    void read(const CKvLayerState& state);
    bool hasName(KvNeed kind, const CStdStr<wchar_t>& name) const;
    int numberOf(KvNeed kind, const CStdStr<wchar_t>& name);

    HxDbDatabase* m_database;
    const KvLayerStateMap& m_states;
    /// Names as they are spelled, and folded ones that the drawing lacks: kIsThere or a place in m_names.
    std::array<std::unordered_map<std::wstring, int>, kNeedCount> m_spelled, m_folded;
    std::vector<Name> m_names;
    std::unordered_map<const CKvLayerState*, std::vector<int>> m_missing;  ///< places in m_names, each once
    std::array<int, kNeedCount> m_counts{};
};
