// The states of a drawing while they are worked on: who they are, in a stable order, and their entries.
#pragma once

#include "layer_states/records/layer_state.h"

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

/// Owns states and their entries, in the drawing's order, then as they come. Entries that stand in a drawing
/// are read when they are first asked for: a state that nobody looks into costs the same whatever its layers.
class KvLayerStateMap {
public:
    KvLayerStateMap();
    ~KvLayerStateMap();
    KvLayerStateMap(KvLayerStateMap&&) noexcept;
    KvLayerStateMap& operator=(KvLayerStateMap&&) noexcept;

    std::size_t size() const { return m_nodes.size(); }
    CKvLayerState* at(std::size_t position) const { return m_nodes[position]->state.get(); }
    /// The state of a name, as the host compares names; null when there is none.
    CKvLayerState* find(const CStdStr<wchar_t>& name) const;
    bool contains(const CKvLayerState* state) const { return nodeOf(state) != nullptr; }

    /// Takes both over. False, and both are deleted, when the state is null. Null entries: none.
    bool add(CKvLayerState* state, KvLayerStateInfoArray* entries);
    /// A state whose entries stand in a record. `reference`, with a "|", goes before the names of its layers.
    CKvLayerState* addUnread(std::unique_ptr<CKvLayerState> state, HxDbObjectId record,
                             const CStdStr<wchar_t>& reference = {});
    /// The reference that a state comes from; empty for a state of the drawing itself.
    CStdStr<wchar_t> referenceOf(const CKvLayerState* state) const;
    /// The entries, read now if they were not; they belong to the map. Null for a state that is not here.
    KvLayerStateInfoArray* entries(const CKvLayerState* state) const;
    /// Takes `entries` over in place of the old ones. False, and they are deleted, for a state that is not
    /// here.
    bool replaceEntries(const CKvLayerState* state, KvLayerStateInfoArray* entries);
    /// Deletes the state with its entries. False when it is not here.
    bool remove(const CKvLayerState* state);
    void clear();
    /// Records of removed states, until the drawing is written.
    const std::vector<HxDbObjectId>& removedRecords() const { return m_removedRecords; }
    void forgetRemovedRecords() { m_removedRecords.clear(); }

    /// Where a state stands in its drawing; null id when it does not yet.
    HxDbObjectId record(const CKvLayerState* state) const;
    /// The name that it has there, and what it said when it was read or written.
    const CStdStr<wchar_t>& storedName(const CKvLayerState* state) const;
    const HxLyStateHeader& storedHeader(const CKvLayerState* state) const;
    /// It stands in `record` now, under its name of now.
    void setStored(const CKvLayerState* state, HxDbObjectId record);
    /// Lets go of entries that stand in a record; they are read again when they are asked for.
    void releaseEntries(const CKvLayerState* state);
    bool hasReadEntries(const CKvLayerState* state) const;
    using Visitor = std::function<bool(const HxLyStateEntry&)>;
    /// The state's entries one by one, without keeping those that were not read. `visit` returns false to
    /// stop.
    void visitEntries(const CKvLayerState* state, const Visitor& visit) const;

private:
    struct DeleteEntries {
        void operator()(KvLayerStateInfoArray* entries) const;
    };
    using EntriesPtr = std::unique_ptr<KvLayerStateInfoArray, DeleteEntries>;
    struct Node {
        std::unique_ptr<CKvLayerState> state;
        EntriesPtr entries;  ///< null: not read yet
        HxDbObjectId record;
        CStdStr<wchar_t> storedName;
        HxLyStateHeader storedHeader;
        CStdStr<wchar_t> prefix;
    };
    Node* nodeOf(const CKvLayerState* state) const;
    Node& append(std::unique_ptr<CKvLayerState> state);
    void readEntries(Node& node) const;

    std::vector<std::unique_ptr<Node>> m_nodes;
    std::vector<HxDbObjectId> m_removedRecords;
    std::unordered_map<const CKvLayerState*, Node*> m_byState;
};

/// Deletes the entries and the array; null is fine.
void deleteEntries(KvLayerStateInfoArray* entries);
