// The host's own commands. Each function is a command's body: it runs inside a command and talks to the user.
#pragma once

namespace korvex {

class CommandStack;

/// Puts all of them on the stack.
void registerHostCommands(CommandStack& stack);

void newCommand();
void openCommand();
void saveCommand();
void saveAsCommand();
void closeCommand();
void quitCommand();
void undoCommand();
void uCommand();
void redoCommand();
void setvarCommand();
void zoomCommand();
void panCommand();
void regenCommand();
void redrawCommand();
void eraseCommand();
void lineCommand();
void circleCommand();
void insertCommand();
void xrefCommand();
void modelCommand();
void layoutCommand();
void modelSpaceCommand();
void paperSpaceCommand();
void layerCommand();
void layerStatesCommand();
void isolateLayersCommand();
void endIsolationCommand();
void mergeLayersCommand();
void viewportLayerCommand();
void scriptCommand();
void moduleCommand();

}  // namespace korvex
