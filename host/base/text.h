// Conversion between wide strings, UTF-8 and QString, and comparison without regard to case.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace korvex {

/// What is no Unicode character (a lone surrogate, a number beyond the range, malformed bytes) becomes
/// U+FFFD.
QString toQString(std::wstring_view text);
QString toQString(const wchar_t* text);  ///< null gives the empty string
std::wstring toWide(const QString& text);
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view bytes);

/// A path as the file functions take it, and back.
std::string toFileName(std::wstring_view path);
std::wstring fromFileName(std::string_view path);
/// A path for messages, in quotation marks.
std::wstring quotedPath(const QString& path);

/// Folds "A" to "Z" only.
constexpr wchar_t foldAscii(wchar_t c) {
    return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c - L'A' + L'a') : c;
}

/// A character without its case, in all scripts; the same in every locale.
wchar_t foldCharacter(wchar_t c);
/// The form under which names that compare without regard to case are equal; character by character, so the
/// length stays.
std::wstring foldCase(std::wstring_view text);

/// The view of a text that may be null.
inline std::wstring_view viewOf(const wchar_t* text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

/// Copies as much as fits with the closing null; returns the characters copied without it. A null buffer or
/// room 0 copies nothing.
std::size_t copyText(std::wstring_view text, wchar_t* buffer, std::size_t room);

}  // namespace korvex
