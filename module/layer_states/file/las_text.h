// Lines of layer-state files as bytes, texts and numbers.
#pragma once

#include "hxstring.h"

#include <cstdint>
#include <string_view>

/// Cuts bytes at line feeds and removes the blanks around each line, carriage returns among them.
class KvLasLines {
public:
    explicit KvLasLines(std::string_view bytes) : m_rest(bytes) {}
    /// False behind the last line; what follows the last line feed is a line only if it is not empty.
    bool next(std::string_view& line);
    /// The number of the line that came last, from 1.
    int number() const { return m_number; }

private:
    std::string_view m_rest;
    int m_number = 0;
};

/// A line as text. Layer-state files are read as GBK wherever they were written. What `text` held is reused.
void decodeLasLine(std::string_view line, CStdStr<wchar_t>& text);
/// Whether every character is ASCII: such a line is the same in all code pages.
bool isAscii(std::string_view line);
bool isAscii(const CStdStr<wchar_t>& text);

/// A line as a group code, leading zeros allowed; -1 for one that is none.
int lasCode(std::string_view line);
/// A line as an integer: sign and leading digits, 0 without any; what is too large becomes the nearest that
/// 32 bits hold, with or without sign.
std::int64_t lasInteger(std::string_view line);
