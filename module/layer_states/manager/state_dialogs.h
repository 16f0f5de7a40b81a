// The dialogs that the layer states manager opens.
#pragma once

#include "layer_states/manager/layer_state_man_dlg.h"

class QWidget;

/// Lets the user edit a state's layers. False on Cancel.
bool editStateEntries(QWidget* parent, CKvLayerStateManDlg& engine, CKvLayerState& state);
/// Asks for each of several states whether it is to be deleted; those that are.
std::vector<CKvLayerState*> statesToDelete(QWidget* parent, const std::vector<CKvLayerState*>& states);
/// Lets the user choose states of another drawing. False on Cancel.
bool chooseStates(QWidget* parent, CKvLayerStateManDlg& engine, KvLayerStateMap& theirs,
                  std::vector<CKvLayerState*>& chosen);
