// Commands during which layers are not edited in the palette and the dialog.
#pragma once

class CWnd;

/// By the global name, in capitals; false for null.
bool isNeedBlockCommand(const wchar_t* globalCommandName);

/// Whether such a command runs in the current document; the user is told so, in a message before `parent`.
/// False for a null parent. To be asked before every edit.
bool isNeedBlockCmdRuning(CWnd* parent);

/// The same without a message.
bool isBlockingCommandRunning();
