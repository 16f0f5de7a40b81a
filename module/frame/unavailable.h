// The answer of commands that this version does not have yet.
#pragma once

/// Says on the command line that a command, by its global name, is not available.
void tellUnavailable(const wchar_t* command);

void LayerStateCmd();
