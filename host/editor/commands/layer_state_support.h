// What the options of -LAYERSTATE share: the drawing's states, lists of their names, drawings that hold
// others.
#pragma once

#include "host/editor/commands/command_support.h"
#include "sdk/hxdoc.h"
#include "sdk/hxlystate.h"

#include <memory>

namespace korvex {

/// The states of the running command's drawing.
HxDbLayerStateManager& layerStates();

/// The viewport whose layers are saved, restored and compared: a floating one; null id on paper and in model
/// space.
HxDbObjectId layerStateViewport();

/// Makes what is done while it lives one undo step of a name. Ask nothing meanwhile.
class UndoStep {
public:
    explicit UndoStep(const std::wstring& name) : m_document(curDoc()) {
        hxedBeginUndoGroup(m_document, name.c_str());
    }
    ~UndoStep() { hxedEndUndoGroup(m_document); }
    UndoStep(const UndoStep&) = delete;
    UndoStep& operator=(const UndoStep&) = delete;

private:
    HxApDocument* m_document;
};

using StateNames = std::vector<std::wstring>;

/// What a list of names means: each state once, in the order of the list. An element that is a state's name
/// means that one, also a hidden one; any other is a pattern for those that are not hidden.
struct StateSelection {
    StateNames states;
    StateNames unmatched;
};
StateSelection selectStates(const HxDbLayerStateManager& manager, const std::wstring& list);

/// "layer state NAME" or "3 layer states".
std::wstring statesText(const StateNames& states);

/// Why a state was not changed, with what can be done about it, for the end of a message.
std::wstring stateRefusal(Hx::ErrorStatus status);

/// The drawing in a file; null with a message when it cannot be read.
std::unique_ptr<HxDbDatabase> readStatesOf(const std::wstring& path);
/// Asks which states of a drawing; all for Enter. None, with a message, when nothing fits.
StateNames askStatesOf(const HxDbLayerStateManager& manager, const std::wstring& prompt,
                       const std::wstring& path);

void importStatesOption();
void compareStatesOption();

}  // namespace korvex
