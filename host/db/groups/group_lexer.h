// The lines and bytes that groups are made of: shared by the cursor, which trusts its slice, and by the
// scanner, which checks a whole file. Nothing here reads outside [p, end) or allocates.
#pragma once

#include "host/db/groups/group_table.h"

#include <cstring>

namespace korvex::groups {

inline bool isBlank(char c) { return c == ' ' || c == '\t'; }

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

inline std::string_view view(const char* first, const char* last) {
    return {first, static_cast<std::size_t>(last - first)};
}

inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The line feed that ends the line at p, or end.
inline const char* lineFeed(const char* p, const char* end) {
    const void* found = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
    return found ? static_cast<const char*>(found) : end;
}

inline const char* afterLineFeed(const char* feed, const char* end) { return feed == end ? end : feed + 1; }

/// A line without its end.
inline std::string_view lineText(const char* p, const char* feed) {
    if (feed != p && feed[-1] == '\r') {
        --feed;
    }
    return view(p, feed);
}

/// Reads a code line; returns the start of the next line, null when the line is no number of a possible code
/// or has no line end.
inline const char* readCodeLine(const char* p, const char* end, int& code) {
    while (p != end && isBlank(*p)) {
        ++p;
    }
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) {
        negative = *p++ == '-';
    }
    const char* digits = p;
    int value = 0;
    while (p != end && isDigit(*p)) {
        value = value * 10 + (*p++ - '0');
        if (value > kLastGroupCode) {
            return nullptr;
        }
    }
    if (p == digits) {
        return nullptr;
    }
    while (p != end && isBlank(*p)) {
        ++p;
    }
    if (p != end && *p == '\r') {
        ++p;
    }
    if (p == end || *p != '\n') {
        return nullptr;
    }
    code = negative ? -value : value;
    return code >= kFirstGroupCode ? p + 1 : nullptr;
}

/// Steps over a line that holds one number, whole or with fraction and exponent, and blanks; returns the
/// start of the next line or end, null when the line is anything else.
inline const char* skipNumberLine(const char* p, const char* end) {
    while (p != end && isBlank(*p)) {
        ++p;
    }
    if (p != end && (*p == '-' || *p == '+')) {
        ++p;
    }
    const char* first = p;
    while (p != end && isDigit(*p)) {
        ++p;
    }
    std::ptrdiff_t digits = p - first;
    if (p != end && *p == '.') {
        first = ++p;
        while (p != end && isDigit(*p)) {
            ++p;
        }
        digits += p - first;
    }
    if (digits == 0) {
        return nullptr;
    }
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        if (p != end && (*p == '-' || *p == '+')) {
            ++p;
        }
        first = p;
        while (p != end && isDigit(*p)) {
            ++p;
        }
        if (p == first) {
            return nullptr;
        }
    }
    while (p != end && isBlank(*p)) {
        ++p;
    }
    if (p != end && *p == '\r') {
        ++p;
    }
    if (p == end) {
        return p;
    }
    return *p == '\n' ? p + 1 : nullptr;
}

enum class BinaryFault : std::uint8_t { none, truncated, wildCode };

/// One group of a binary drawing.
struct BinaryGroup {
    int code = 0;
    std::string_view value;      ///< without length byte and closing 0
    const char* next = nullptr;  ///< the byte after the group
};

/// Bytes of a value of fixed length; 0 for text, handles and chunks.
inline std::size_t fixedSize(GroupType type) {
    constexpr std::size_t kSizes[] = {0, 0, 8, 2, 4, 8, 1, 0};
    return kSizes[static_cast<std::size_t>(type)];
}

inline std::uint64_t littleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return value;
}

/// Reads the code of a binary group; null when it is cut off.
inline const char* readBinaryCode(const char* p, const char* end, int codeBytes, int& code) {
    if (codeBytes == 1 && p != end && static_cast<unsigned char>(*p) != 255) {
        code = static_cast<unsigned char>(*p);
        return p + 1;
    }
    if (codeBytes == 1 && p != end) {
        ++p;
    }
    if (end - p < 2) {
        return nullptr;
    }
    code = static_cast<std::int16_t>(littleEndian({p, 2}));
    return p + 2;
}

inline BinaryFault readBinaryGroup(const char* p, const char* end, int codeBytes, BinaryGroup& group) {
    p = readBinaryCode(p, end, codeBytes, group.code);
    if (!p) {
        return BinaryFault::truncated;
    }
    if (!isPossibleCode(group.code) || !codeEntry(group.code).known) {
        return BinaryFault::wildCode;
    }
    const GroupType type = codeEntry(group.code).type;
    const std::size_t left = static_cast<std::size_t>(end - p);
    std::size_t size = fixedSize(type);
    std::size_t closing = 0;
    if (type == GroupType::binary) {
        if (left == 0) {
            return BinaryFault::truncated;
        }
        size = static_cast<unsigned char>(*p++);
        if (size > left - 1) {
            return BinaryFault::truncated;
        }
    } else if (size == 0) {
        const void* zero = left ? std::memchr(p, 0, left) : nullptr;
        if (!zero) {
            return BinaryFault::truncated;
        }
        size = static_cast<std::size_t>(static_cast<const char*>(zero) - p);
        closing = 1;
    } else if (size > left) {
        return BinaryFault::truncated;
    }
    group.value = {p, size};
    group.next = p + size + closing;
    return BinaryFault::none;
}

}  // namespace korvex::groups
