// The layer states of a drawing or template that is not open.
#pragma once

#include "layer_states/file/layer_state_questions.h"

#include "hxdbdatabase.h"

#include <memory>

/// Holds the drawing as long as it lives; entries of its states are read from it when they are asked for.
class KvOtherDrawing {
public:
    /// Reads a drawing; a bare name is looked for (KvFindInPath). False, and the user is told, when it cannot
    /// be read or has no layer states; false in silence when the user gave the reading up. What was read
    /// before goes. Must not be called while a working database is set: reading may wait for the user.
    bool read(const CStdStr<wchar_t>& path, LayerStateQuestions& questions);

    /// In the drawing's order; empty before read.
    KvLayerStateMap& states() { return m_states; }

private:
    std::unique_ptr<HxDbDatabase> m_database;
    KvLayerStateMap m_states;
};
