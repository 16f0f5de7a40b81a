// Lines of layer-state files as bytes, texts and numbers.
#pragma once

#include "hxstring.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

class QTextDecoder;

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

/// Lines as texts. Layer-state files are read as GBK wherever they were written.
class KvLasDecoder {
public:
    KvLasDecoder();
    ~KvLasDecoder();
    KvLasDecoder(const KvLasDecoder&) = delete;
    KvLasDecoder& operator=(const KvLasDecoder&) = delete;

    /// The room that `text` has is used again.
    void decode(std::string_view line, CStdStr<wchar_t>& text);

private:
    std::unique_ptr<QTextDecoder> m_decoder;
    std::string m_line;
};

/// A line as a group code, leading zeros allowed; -1 for one that is none.
int lasCode(std::string_view line);
/// A line as an integer: sign and leading digits, 0 without any; what is too large becomes the nearest that
/// 32 bits hold, with or without sign.
std::int64_t lasInteger(std::string_view line);
