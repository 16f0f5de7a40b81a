// Tables of one code page, single- or double-byte, and the reading of UTF-8 characters.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace korvex::groups {

/// A code page whose bytes below 128 are ASCII. Tables are made from the C library's converter when the page
/// is first asked for, and live for the process.
class CodePage {
public:
    static constexpr char32_t kInvalid = 0xFFFD;

    /// "CP1252", "CP936", "ISO8859-5", "MACINTOSH" ...; a page that the C library lacks holds ASCII only.
    static const CodePage& get(const std::string& name);

    /// Decodes the first character of bytes, which is not empty; returns the bytes used, at least one;
    /// kInvalid for what the page lacks.
    std::size_t decodeOne(std::string_view bytes, char32_t& out) const;

    /// Appends the bytes of a character; false when the page lacks it.
    bool encodeOne(char32_t c, std::string& out) const;

private:
    explicit CodePage(const std::string& name);

    class Converter;
    void loadSingles(Converter& converter, const std::string& name);
    void loadPairs(Converter& converter);
    void loadReverse(const std::string& name);

    static constexpr char32_t kLeadByte = 0xFFFFFFFF;
    std::array<char32_t, 256> m_single{};
    std::vector<char16_t> m_pairs;  ///< lead byte from 128 x trail byte; empty: no pairs
    std::vector<std::pair<char32_t, std::uint16_t>> m_reverse;  ///< sorted by character
};

/// Reads one well-formed UTF-8 character; returns its length, 0 when the bytes are malformed.
std::size_t readUtf8(std::string_view bytes, char32_t& out);

/// True when the bytes are well-formed UTF-8 with at least one character beyond ASCII.
bool isUtf8BeyondAscii(std::string_view bytes);

}  // namespace korvex::groups
