// Small operations on wide text: trimming, comparing, copying.
#pragma once

/// Removes blanks in place; only the space character is one. A text of nothing but blanks becomes empty.
/// Otherwise each letter of `operations` is applied in turn, case ignored: "b" removes the leading blanks,
/// "e" the trailing ones, "m" all blanks between the first and the last other character. Null texts and other
/// letters are ignored.
void kv_trim(wchar_t* text, const wchar_t* operations);

/// Compares with "A" to "Z" folded to lower case, and nothing else. The difference of the first characters
/// that differ, 0 for equal texts. REQUIRES: neither is null.
int db_compareNames(const wchar_t* a, const wchar_t* b);
/// The same; -1 when either is null.
int strings_i_compare(const wchar_t* a, const wchar_t* b);

/// Replaces `*target` (made with new[] or null; it is deleted) by a new copy of at most `n` characters of
/// `source`: of all of it when `n` is negative. `source` may lie within the old text. A null source leaves
/// null.
void db_astrncpy(wchar_t** target, const wchar_t* source, int n);

/// A buffer of at least `size` characters with the text of `text` (made with new[] or null): the same buffer
/// when its text alone fills that many, otherwise a new one, and the old one is deleted.
wchar_t* kv_realloc_char(wchar_t* text, int size);

/// In place: "/" becomes "\" and "|" a blank.
void ChangeSlashToBackslashAndRemovePipe(wchar_t* text);
