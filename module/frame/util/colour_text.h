// Colours as text: an index or name, optionally ";RGB:r,g,b", optionally ";BOOK:book$colour".
#pragma once

#include "hxcm.h"

#include <cstddef>

/// Room for the book part of a colour text and its null.
constexpr std::size_t kColourBookSize = 257;

/// Reads a colour text; outputs that are null are not wanted, and the index part is looked at only when
/// `index` is wanted (or the text is empty). `index` gets 0 to 256; `rgb` the true colour with red in bits
/// 0-7; `book`, of kColourBookSize characters, "book$colour". -1 for a text that is none; else 0 for an index
/// alone, plus 1 for a true colour, plus 1 for a book colour. A damaged true colour makes it an index alone;
/// a book colour counts even where the true colour is missing.
int GetCeColorFromStr(const wchar_t* text, short* index, unsigned* rgb, wchar_t* book);

/// Reads "r,g,b", each 0 to 255 and 11 characters at most, into a word with red in bits 0-7. False, with
/// `rgb` unchanged, for anything else.
bool ParseRGBString(const wchar_t* text, unsigned long* rgb);

/// Sets a colour from a colour text; white (7) for a text that is none.
void GetHxCmColor(const wchar_t* text, HxCmColor& colour);

/// Writes a colour's text, cut to `size` with its null; returns the number of characters. For a colour that
/// has a book name but is no book colour nothing is written: 0.
int FormatNormalCeStr(wchar_t* buffer, std::size_t size, const HxCmColor* colour);

/// Reads the looser texts of saved layer states: "book$colour", "r,g,b", an index up to 255 or a colour's
/// name; a word that is no colour's name gives white. False, with the colour unchanged, for an empty text and
/// for numbers that are too large.
bool stringToColor(const CStdStr<wchar_t>& text, HxCmColor& colour);
