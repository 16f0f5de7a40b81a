// What of the states differs from their records, and writing just that.
#include "layer_states/storage/layer_state_writer.h"

#include "frame/util/result_buffers.h"
#include "hxdbdatabase.h"
#include "hxdbdict.h"
#include "hxtext.h"
#include "layer_states/storage/layer_state_storage.h"
#include "model/opened_or_held.h"

#include <algorithm>

namespace {

bool isSame(const HxLyStateHeader& recorded, const CKvLayerState& state) {
    return recorded.mask == state.GetLayerStateMake() && recorded.space == state.GetSpace() &&
           recorded.description == state.GetDescription() &&
           recorded.currentLayer == state.GetCurrentLayerName();
}

bool isSame(const HxLyStateEntry& a, const HxLyStateEntry& b) {
    return a.layer == b.layer && a.flags == b.flags && a.colorIndex == b.colorIndex &&
           a.trueColor == b.trueColor && a.colorBook == b.colorBook && a.linetype == b.linetype &&
           a.lineweight == b.lineweight && a.plotStyle == b.plotStyle && a.transparency == b.transparency;
}

/// Whether a record says what the state says. Entries that nobody read cannot differ.
bool isAsRecorded(const KvLayerStateMap& states, const CKvLayerState& state) {
    if (!isSame(states.storedHeader(&state), state)) return false;
    if (!states.hasReadEntries(&state)) return true;
    HxLyStateReader reader(states.record(&state));
    HxLyStateEntry recorded;
    for (const CKvLayerStateInfo* const entry : *states.entries(&state)) {
        if (!reader.next(recorded) || !isSame(recorded, entry->values())) return false;
    }
    return !reader.next(recorded);
}

enum class Change { none, renamed, content };

Change changeOf(const KvLayerStateMap& states, const CKvLayerState& state) {
    if (state.isOfReference()) return Change::none;
    if (states.record(&state).isNull() || !isAsRecorded(states, state)) return Change::content;
    return states.storedName(&state) == state.GetLayerStateName() ? Change::none : Change::renamed;
}

std::vector<CKvLayerState*> changedStates(const KvLayerStateMap& states) {
    std::vector<CKvLayerState*> changed;
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (changeOf(states, *states.at(i)) != Change::none) changed.push_back(states.at(i));
    }
    return changed;
}

/// Writes states into one dictionary.
class StatesWriting {
public:
    StatesWriting(HxDbDatabase& database, HxDbObjectId dictionary, KvLayerStateMap& states)
        : m_database(database), m_dictionary(dictionary), m_states(states), m_scope(&database) {
        hxdbGetZdsName(m_name, dictionary);
    }

    KvLayerStatesWritten run(const std::vector<CKvLayerState*>& changed) {
        removeDeleted();
        rename(changed);
        for (CKvLayerState* const state : changed) {
            const bool isWritten = changeOf(m_states, *state) != Change::content || writeContent(*state);
            if (isWritten) {
                m_states.setStored(state, recordNow(*state));
                m_states.releaseEntries(state);
                ++m_result.changed;
            } else {
                m_result.failed.append(state->GetLayerStateName());
            }
        }
        return m_result;
    }

private:
    HxDbObjectId recordNow(const CKvLayerState& state) const {
        const OpenedOrHeld<HxDbDictionary> dictionary(m_dictionary, HxDb::kForRead);
        HxDbObjectId id;
        if (dictionary) dictionary->getAt(state.GetLayerStateName().c_str(), id);
        return id;
    }

    void removeDeleted() {
        if (m_states.removedRecords().empty()) return;
        const OpenedOrHeld<HxDbDictionary> dictionary(m_dictionary, HxDb::kForWrite);
        if (!dictionary) return;
        for (const HxDbObjectId record : m_states.removedRecords()) {
            CStdStr<wchar_t> name;
            if (dictionary->nameAt(record, name) == Hx::eOk && dictionary->remove(name.c_str()) == Hx::eOk) {
                ++m_result.changed;
            }
        }
        m_states.forgetRemovedRecords();
    }

    /// Gives records the names of their states; through names that nobody has, since states may have
    /// exchanged theirs.
    void rename(const std::vector<CKvLayerState*>& changed) {
        const auto hasOther = [this](const CKvLayerState* state) {
            return !m_states.record(state).isNull() &&
                   m_states.storedName(state) != state->GetLayerStateName();
        };
        if (std::none_of(changed.begin(), changed.end(), hasOther)) return;
        const OpenedOrHeld<HxDbDictionary> dictionary(m_dictionary, HxDb::kForWrite);
        if (!dictionary) return;
        std::vector<std::pair<CStdStr<wchar_t>, CStdStr<wchar_t>>> between;
        for (const CKvLayerState* const state : changed) {
            CStdStr<wchar_t> stored;
            const bool isThere = dictionary->nameAt(m_states.record(state), stored) == Hx::eOk;
            if (!isThere || stored == state->GetLayerStateName()) continue;
            CStdStr<wchar_t> passing;
            do {
                passing.Format(L"*%d", m_passing++);
            } while (dictionary->has(passing.c_str()));
            if (dictionary->setName(stored.c_str(), passing.c_str()) == Hx::eOk) {
                between.emplace_back(passing, state->GetLayerStateName());
            }
        }
        for (const auto& [passing, wanted] : between) {
            dictionary->setName(passing.c_str(), wanted.c_str());
        }
    }

    ListPtr listOf(const CKvLayerState& state) const {
        HxLyStateListBuilder list(&m_database, m_dictionary, state.header());
        for (const CKvLayerStateInfo* const entry : *m_states.entries(&state)) {
            list.add(entry->values());
        }
        return ListPtr(list.take());
    }

    /// Changes the record, which keeps its handle and extended data, or makes one.
    bool writeContent(const CKvLayerState& state) const {
        ListPtr list = listOf(state);
        if (!list) return false;
        const HxDbObjectId record = m_states.record(&state);
        if (!record.isNull() && !record.isErased()) {
            resbuf* const name = hxutNewRb(-1);
            if (!name) return false;
            hxdbGetZdsName(name->resval.rlname, record);
            name->rbnext = list.release();
            list.reset(name);
            return hxdbEntMod(list.get()) == RTNORM;
        }
        zds_name made = {0, 0};
        if (hxdbEntMakeX(list.get(), made) != RTNORM) return false;
        hxdbDictRemove(m_name, state.GetLayerStateName().c_str());
        if (hxdbDictAdd(m_name, state.GetLayerStateName().c_str(), made) == RTNORM) return true;
        hxdbEntDel(made);
        return false;
    }

    HxDbDatabase& m_database;
    HxDbObjectId m_dictionary;
    KvLayerStateMap& m_states;
    HxDbWorkingDatabaseScope m_scope;
    zds_name m_name = {0, 0};
    int m_passing = 1;
    KvLayerStatesWritten m_result;
};

}  // namespace

bool haveLayerStatesChanged(const KvLayerStateMap& states) {
    return !states.removedRecords().empty() || !changedStates(states).empty();
}

KvLayerStatesWritten writeLayerStates(HxDbDatabase* database, KvLayerStateMap& states) {
    KvLayerStatesWritten result;
    result.isOk = database != nullptr;
    if (!database) return result;
    const std::vector<CKvLayerState*> changed = changedStates(states);
    if (changed.empty() && states.removedRecords().empty()) return result;
    const HxDbObjectId dictionary = layerStatesDictionary(database, true);
    result.isOk = !dictionary.isNull();
    return result.isOk ? StatesWriting(*database, dictionary, states).run(changed) : result;
}
