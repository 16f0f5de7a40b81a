// Reading system variables.
#pragma once

#include "hxstring.h"

/// An integer variable; `fallback` when it does not exist or is no short integer.
int shortVariable(const wchar_t* name, int fallback);
/// A text variable; false, and `value` stays as it is, when it does not exist or is no text.
bool textVariable(const wchar_t* name, CStdStr<wchar_t>& value);
/// The same with `fallback` instead.
CStdStr<wchar_t> textVariable(const wchar_t* name, const wchar_t* fallback);
