// A side database with the states that it holds.
#include "layer_states/file/other_drawing.h"

#include "layer_states/file/find_in_path.h"
#include "layer_states/storage/layer_state_storage.h"

bool KvOtherDrawing::read(const CStdStr<wchar_t>& path, LayerStateQuestions& questions) {
    m_states.clear();
    m_database = std::make_unique<HxDbDatabase>(false);
    const Hx::ErrorStatus status = m_database->readDwgFile(KvFindInPath(path).c_str());
    if (status != Hx::eOk) {
        const CStdStr<wchar_t> reason = m_database->readError();
        m_database.reset();
        if (status != Hx::eCancelled) questions.tellNoStates(path, reason);
        return false;
    }
    loadLayerStates(m_database.get(), m_states);
    if (m_states.size() > 0) return true;
    m_database.reset();
    questions.tellNoStates(path, {});
    return false;
}
