// Bringing layer states out of the map into files, and into it out of files and other drawings.
#pragma once

#include "layer_states/file/layer_state_questions.h"

class HxDbDatabase;

/// Which of the files that states come from a name stands for, by its extension in any case.
enum class KvStateSource { none, layerStateFile, drawing };
KvStateSource stateSourceOf(const CStdStr<wchar_t>& path);

/// Works on one map of states. What the user must decide or hear goes to the questions.
class KvLayerStateFiles {
public:
    KvLayerStateFiles(KvLayerStateMap& states, LayerStateQuestions& questions)
        : m_states(states), m_questions(questions) {}

    /// Writes a state into a layer-state file. False for null, a state that is not in the map, and when it
    /// could not be written.
    bool exportState(const CStdStr<wchar_t>& path, const CKvLayerState* state);

    /// Reads a layer-state file into the map, its entries made to fit the drawing (null: any). A bare name is
    /// looked for (KvFindInPath). A state of that name is replaced after a question: it keeps its place and
    /// its record. Null when nothing was imported; the map is as it was then.
    CKvLayerState* importState(const CStdStr<wchar_t>& path, HxDbDatabase* database);

    /// Copies states of another map, which must be able to read their entries still; `chosen` that are not in
    /// it are passed over. Those whose names are taken replace the others after one question for all of them.
    /// The states as they are in the map now, in the order of `chosen`.
    std::vector<CKvLayerState*> importStates(const std::vector<CKvLayerState*>& chosen,
                                             const KvLayerStateMap& from, HxDbDatabase* database);

private:
    bool mayImport(const CStdStr<wchar_t>& name);
    CKvLayerState* put(const CKvLayerState& state, KvLayerStateEntries entries);

    KvLayerStateMap& m_states;
    LayerStateQuestions& m_questions;
};
