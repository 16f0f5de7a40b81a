// Commands during which layers are not edited in the palette and the dialog.
#pragma once

/// By the global name, in capitals; false for null.
bool isNeedBlockCommand(const wchar_t* globalCommandName);
