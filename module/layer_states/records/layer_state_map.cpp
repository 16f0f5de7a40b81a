// The states that are worked on, and when their entries are read.
#include "layer_states/records/layer_state_map.h"

#include "hxtext.h"

#include <algorithm>

namespace {

constexpr wchar_t kReferenceMark = L'|';

/// A layer that references do not bring: theirs is the drawing's own.
constexpr wchar_t kSharedLayer[] = L"0";

/// The next entry, with the reference's name before the layer's; false at the end.
bool readNext(HxLyStateReader& reader, HxLyStateEntry& entry, const CStdStr<wchar_t>& prefix) {
    do {
        if (!reader.next(entry)) return false;
    } while (!prefix.empty() && entry.layer == kSharedLayer);
    if (!prefix.empty()) entry.layer.insert(0, prefix);
    return true;
}

}  // namespace

void deleteEntries(KvLayerStateInfoArray* entries) {
    if (!entries) return;
    for (const CKvLayerStateInfo* const entry : *entries) {
        delete entry;
    }
    delete entries;
}

void KvLayerStateMap::DeleteEntries::operator()(KvLayerStateInfoArray* entries) const {
    deleteEntries(entries);
}

KvLayerStateMap::KvLayerStateMap() = default;
KvLayerStateMap::~KvLayerStateMap() = default;
KvLayerStateMap::KvLayerStateMap(KvLayerStateMap&&) noexcept = default;
KvLayerStateMap& KvLayerStateMap::operator=(KvLayerStateMap&&) noexcept = default;

KvLayerStateMap::Node* KvLayerStateMap::nodeOf(const CKvLayerState* state) const {
    const auto found = m_byState.find(state);
    return found == m_byState.end() ? nullptr : found->second;
}

KvLayerStateMap::Node& KvLayerStateMap::append(std::unique_ptr<CKvLayerState> state) {
    auto node = std::make_unique<Node>();
    node->state = std::move(state);
    m_byState[node->state.get()] = node.get();
    m_nodes.push_back(std::move(node));
    return *m_nodes.back();
}

CKvLayerState* KvLayerStateMap::find(const CStdStr<wchar_t>& name) const {
    const CStdStr<wchar_t> folded = hxutFoldName(name.c_str());
    for (const auto& node : m_nodes) {
        const CStdStr<wchar_t>& other = node->state->GetLayerStateName();
        if (other.size() == name.size() && hxutFoldName(other.c_str()) == folded) return node->state.get();
    }
    return nullptr;
}

bool KvLayerStateMap::add(CKvLayerState* state, KvLayerStateInfoArray* entries) {
    EntriesPtr owned(entries ? entries : new KvLayerStateInfoArray);
    if (!state) return false;
    append(std::unique_ptr<CKvLayerState>(state)).entries = std::move(owned);
    return true;
}

CKvLayerState* KvLayerStateMap::addUnread(std::unique_ptr<CKvLayerState> state, HxDbObjectId record,
                                          const CStdStr<wchar_t>& reference) {
    Node& node = append(std::move(state));
    setStored(node.state.get(), record);
    if (!reference.empty()) node.prefix = reference + kReferenceMark;
    return node.state.get();
}

void KvLayerStateMap::readEntries(Node& node) const {
    node.entries.reset(new KvLayerStateInfoArray);
    const CStdStr<wchar_t> current = hxutFoldName(node.state->GetCurrentLayerName().c_str());
    HxLyStateReader reader(node.record);
    HxLyStateEntry entry;
    while (readNext(reader, entry, node.prefix)) {
        const bool isCurrent =
            entry.layer.size() == current.size() && hxutFoldName(entry.layer.c_str()) == current;
        node.entries->Add(new CKvLayerStateInfo(entry, node.entries->GetSize(), isCurrent));
    }
}

KvLayerStateInfoArray* KvLayerStateMap::entries(const CKvLayerState* state) const {
    Node* const node = nodeOf(state);
    if (!node) return nullptr;
    if (!node->entries) readEntries(*node);
    return node->entries.get();
}

bool KvLayerStateMap::replaceEntries(const CKvLayerState* state, KvLayerStateInfoArray* entries) {
    EntriesPtr owned(entries ? entries : new KvLayerStateInfoArray);
    Node* const node = nodeOf(state);
    if (!node) return false;
    node->entries = std::move(owned);
    return true;
}

bool KvLayerStateMap::remove(const CKvLayerState* state) {
    const auto found = std::find_if(m_nodes.begin(), m_nodes.end(),
                                    [&](const auto& node) { return node->state.get() == state; });
    if (found == m_nodes.end()) return false;
    if (!state->isOfReference() && !(*found)->record.isNull()) m_removedRecords.push_back((*found)->record);
    m_byState.erase(state);
    m_nodes.erase(found);
    return true;
}

void KvLayerStateMap::clear() {
    m_byState.clear();
    m_nodes.clear();
    m_removedRecords.clear();
}

HxDbObjectId KvLayerStateMap::record(const CKvLayerState* state) const {
    const Node* const node = nodeOf(state);
    return node ? node->record : HxDbObjectId();
}

void KvLayerStateMap::setStored(const CKvLayerState* state, HxDbObjectId record) {
    if (Node* const node = nodeOf(state)) {
        node->record = record;
        node->storedName = node->state->GetLayerStateName();
        node->storedHeader = node->state->header();
    }
}

const CStdStr<wchar_t>& KvLayerStateMap::storedName(const CKvLayerState* state) const {
    static const CStdStr<wchar_t> none;
    const Node* const node = nodeOf(state);
    return node ? node->storedName : none;
}

CStdStr<wchar_t> KvLayerStateMap::referenceOf(const CKvLayerState* state) const {
    const Node* const node = nodeOf(state);
    return node && !node->prefix.empty() ? node->prefix.Left(node->prefix.GetLength() - 1)
                                         : CStdStr<wchar_t>();
}

void KvLayerStateMap::releaseEntries(const CKvLayerState* state) {
    Node* const node = nodeOf(state);
    if (node && !node->record.isNull()) node->entries.reset();
}

const HxLyStateHeader& KvLayerStateMap::storedHeader(const CKvLayerState* state) const {
    static const HxLyStateHeader none;
    const Node* const node = nodeOf(state);
    return node ? node->storedHeader : none;
}

bool KvLayerStateMap::hasReadEntries(const CKvLayerState* state) const {
    const Node* const node = nodeOf(state);
    return node && node->entries;
}

void KvLayerStateMap::visitEntries(const CKvLayerState* state, const Visitor& visit) const {
    const Node* const node = nodeOf(state);
    if (!node) return;
    if (node->entries) {
        for (const CKvLayerStateInfo* const info : *node->entries) {
            if (!visit(info->values())) return;
        }
        return;
    }
    HxLyStateReader reader(node->record);
    HxLyStateEntry entry;
    while (readNext(reader, entry, node->prefix)) {
        if (!visit(entry)) return;
    }
}
