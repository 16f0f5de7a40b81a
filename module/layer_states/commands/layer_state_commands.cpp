#include "layer_states/commands/layer_state_commands.h"

#include "dialogs/classic_layer_dialog.h"
#include "frame/entry/exported_functions.h"
#include "frame/util/resource_text.h"
#include "model/blocking_commands.h"
#include "model/edit_guard.h"

#include "hxdoc.h"
#include "hxed.h"
#include "hxui.h"

namespace {

/// As a command: whatever it does is one undo step.
void runAsCommand(void (*function)(QWidget* parent)) {
    const ModuleResources resources;
    CWnd mainWindow(hxuiMainWindow());
    if (!isNeedBlockCmdRuning(&mainWindow)) {
        const KvLayerUndoAndLockWorker step(true, ResourceString(kStrUndoLayerStates).c_str());
        function(mainWindow.window());
    }
    hxedRetVoid();
}

}  // namespace

void runLayerStatesManager(QWidget* parent) {
    if (!curDoc()) return;
    CWnd window(parent);
    CVrexLayerP(&window).OnButtonStateman();
}

void runLayerStateSave(QWidget* parent) {
    if (!curDoc()) return;
    CWnd window(parent);
    CVrexLayerP(&window).OnButtonSavestate();
}

void LayerStateCmd() { runAsCommand(runLayerStatesManager); }

void LayerStateSaveCmd() { runAsCommand(runLayerStateSave); }
