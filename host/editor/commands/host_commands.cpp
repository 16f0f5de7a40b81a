// The table of the host's own commands and their short names.
#include "host/editor/commands/host_commands.h"

#include "host/editor/command_stack.h"

namespace korvex {

namespace {

constexpr int kSession = HXCMD_SESSION | HXCMD_NOUNDOMARK;

struct HostCommand {
    const wchar_t* name;
    int flags;
    HxCommandFunction function;
};

constexpr HostCommand kCommands[] = {
    {L"NEW", kSession, newCommand},
    {L"OPEN", kSession, openCommand},
    {L"SAVE", HXCMD_NOUNDOMARK, saveCommand},
    {L"QSAVE", HXCMD_NOUNDOMARK, saveCommand},
    {L"SAVEAS", HXCMD_NOUNDOMARK, saveAsCommand},
    {L"CLOSE", kSession, closeCommand},
    {L"QUIT", kSession, quitCommand},
    {L"UNDO", HXCMD_NOUNDOMARK, undoCommand},
    {L"U", HXCMD_NOUNDOMARK, uCommand},
    {L"REDO", HXCMD_NOUNDOMARK, redoCommand},
    {L"SETVAR", HXCMD_TRANSPARENT | kDocumentOptional, setvarCommand},
    {L"ZOOM", HXCMD_TRANSPARENT, zoomCommand},
    {L"PAN", HXCMD_TRANSPARENT, panCommand},
    {L"REGEN", HXCMD_NOUNDOMARK, regenCommand},
    {L"REDRAW", HXCMD_TRANSPARENT | HXCMD_NOUNDOMARK, redrawCommand},
    {L"ERASE", HXCMD_USEPICKSET, eraseCommand},
    {L"LINE", HXCMD_MODAL, lineCommand},
    {L"CIRCLE", HXCMD_MODAL, circleCommand},
    {L"INSERT", HXCMD_MODAL, insertCommand},
    {L"-INSERT", HXCMD_MODAL, insertCommand},
    {L"XREF", HXCMD_MODAL, xrefCommand},
    {L"-XREF", HXCMD_MODAL, xrefCommand},
    {L"MODEL", HXCMD_MODAL, modelCommand},
    {L"LAYOUT", HXCMD_MODAL, layoutCommand},
    {L"MSPACE", HXCMD_MODAL, modelSpaceCommand},
    {L"PSPACE", HXCMD_MODAL, paperSpaceCommand},
    {L"-LAYER", HXCMD_TRANSPARENT, layerCommand},
    {L"-LAYERSTATE", HXCMD_NOUNDOMARK, layerStatesCommand},
    {L"LAYISO", HXCMD_USEPICKSET, isolateLayersCommand},
    {L"LAYUNISO", HXCMD_MODAL, endIsolationCommand},
    {L"-LAYMRG", HXCMD_MODAL, mergeLayersCommand},
    {L"VPLAYER", HXCMD_TRANSPARENT, viewportLayerCommand},
    {L"SCRIPT", kSession, scriptCommand},
    {L"HRX", kSession, moduleCommand},
};

struct ShortName {
    const wchar_t* alias;
    const wchar_t* command;
};

constexpr ShortName kShortNames[] = {
    {L"L", L"LINE"},     {L"C", L"CIRCLE"},  {L"E", L"ERASE"},  {L"Z", L"ZOOM"},     {L"P", L"PAN"},
    {L"I", L"INSERT"},   {L"R", L"REDRAW"},  {L"RE", L"REGEN"}, {L"XR", L"XREF"},    {L"LO", L"LAYOUT"},
    {L"MS", L"MSPACE"},  {L"PS", L"PSPACE"}, {L"LA", L"LAYER"}, {L"-LA", L"-LAYER"}, {L"SET", L"SETVAR"},
    {L"SCR", L"SCRIPT"}, {L"EXIT", L"QUIT"},
};

}  // namespace

void registerHostCommands(CommandStack& stack) {
    for (const HostCommand& command : kCommands) {
        stack.addCommand(kHostCommandGroup, command.name, nullptr, command.flags, command.function, nullptr,
                         -1, nullptr);
    }
    for (const ShortName& name : kShortNames) {
        stack.addAlias(name.alias, name.command);
    }
}

}  // namespace korvex
