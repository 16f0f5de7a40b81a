// How the host compares, reserves and encodes texts.
#pragma once

#include "hxstring.h"
#include "hxtypes.h"

/// The form under which names that the host takes for the same are equal: letters of all scripts without
/// their case, character by character. Null gives the empty text.
HXSDK_API CStdStr<wchar_t> hxutFoldName(const wchar_t* name);
/// Whether the host takes two names for the same. Null is the empty name.
HXSDK_API bool hxutEqualNames(const wchar_t* a, const wchar_t* b);

/// Names with a meaning of their own.
enum HxReservedString : int {
    kHxReservedNormal = 5,  ///< the plot style "Normal"
};
/// A reserved name as drawings store it, or as the user's language has it. Empty for a number that is none.
HXSDK_API CStdStr<wchar_t> hxdbGetReservedString(int kind, bool localised);

/// The text with the host's escapes ("\U+00D6", "\M+nxxxx") turned into the characters that they stand for;
/// what is no complete escape stays.
HXSDK_API CStdStr<wchar_t> hxGetUniStringFromMIFCIF(const wchar_t* text);

/// The number of the code page that a desktop of the user's language takes for "ANSI": 1252, 1251, 936 ...
/// By the locale's language; the environment variable KORVEX_ANSI_CODEPAGE overrides it.
HXSDK_API int hxutAnsiCodePage();
/// The text in a code page; "?" for characters that it lacks. ASCII only for a page that does not exist.
HXSDK_API CStdStr<char> hxutEncode(const CStdStr<wchar_t>& text, int codePage);
