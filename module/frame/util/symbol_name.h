// The rule for names of layers, filters and other symbols.
#pragma once

/// True for a name that a symbol may have: 1 to 255 characters, no blank first, none of
/// " * , / : ; < = > ? \ ` | but in the escapes \U+XXXX and \M+NXXXX, each of which counts as one character.
/// Leaves the process in the "C" locale but for the character types, which are then the user's.
bool kv_isvalidname(const wchar_t* name);
