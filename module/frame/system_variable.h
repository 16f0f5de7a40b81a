// Reading system variables.
#pragma once

/// An integer variable; `fallback` when it does not exist or is no short integer.
int shortVariable(const wchar_t* name, int fallback);
