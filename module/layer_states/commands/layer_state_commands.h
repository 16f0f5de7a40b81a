// LAYERSTATE and LAYERSTATESAVE, and the same from the layer manager's dialog. LayerStateSaveCmd is declared
// with the exported functions.
#pragma once

class QWidget;

/// LAYERSTATE: the layer states manager on the current drawing. Nothing without one.
void LayerStateCmd();

/// What the commands do, with windows before `parent` (null: the main window); the caller makes the undo
/// step.
void runLayerStatesManager(QWidget* parent);
void runLayerStateSave(QWidget* parent);
