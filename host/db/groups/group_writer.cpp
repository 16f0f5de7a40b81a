// Writes groups in a drawing's own form: the code, then the value in the type that the code carries.
#include "host/db/groups/group_writer.h"

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_lexer.h"
#include "host/db/groups/group_numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace korvex {

using namespace groups;

namespace {

constexpr std::size_t kMaxChunk = 254;

std::size_t paddedWidth(GroupType type) {
    switch (type) {
    case GroupType::int16:
    case GroupType::boolean: return 6;
    case GroupType::int32: return 9;
    case GroupType::int64: return 18;
    default: return 0;
    }
}

void appendNumber(std::string& out, long long value, std::size_t width) {
    char buffer[24];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    const std::size_t size = static_cast<std::size_t>(result.ptr - buffer);
    if (size < width) {
        out.append(width - size, ' ');
    }
    out.append(buffer, size);
}

void appendLittleEndian(std::string& out, std::uint64_t bits, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) {
        out.push_back(static_cast<char>(bits >> (8 * i) & 0xFF));
    }
}

std::uint64_t realBits(double value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void appendHex(std::string& out, std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (char c : bytes) {
        out.push_back(kDigits[static_cast<unsigned char>(c) >> 4]);
        out.push_back(kDigits[static_cast<unsigned char>(c) & 15]);
    }
}

/// A text value must not end its own line or, in a binary drawing, itself: such characters are written as
/// drawings spell control characters.
std::string withoutEnds(std::string_view text, bool binary) {
    std::string out;
    out.reserve(text.size() + 8);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const bool lineEnd = !binary && (c == '\n' || c == '\r');
        if (lineEnd && c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        if (lineEnd) {
            out.append("^J");
        } else if (c == 0) {
            out.append("^@");
        } else {
            out.push_back(c);
        }
    }
    return out;
}

bool hasEnd(std::string_view text, bool binary) {
    constexpr std::string_view kEnds("\0\r\n", 3);
    return text.find_first_of(kEnds.substr(0, binary ? 1 : 3)) != text.npos;
}

bool isWhole(std::string_view number) { return number.find_first_not_of("0123456789+- ") == number.npos; }

}  // namespace

void GroupWriter::code(int code) {
    if (!m_format.binary) {
        appendNumber(m_out, code, m_format.paddedCodes ? 3 : 0);
        endLine();
        return;
    }
    const bool oneByte = m_format.codeBytes == 1 && code >= 0 && code < 255;
    if (m_format.codeBytes == 1 && !oneByte) {
        m_out.push_back(static_cast<char>(255));
    }
    appendLittleEndian(m_out, static_cast<std::uint64_t>(code), oneByte ? 1 : 2);
}

void GroupWriter::endLine() { m_out.append(m_format.crlf ? "\r\n" : "\n"); }

void GroupWriter::integer(int code, long long value) {
    const GroupType type = groupType(code);
    switch (type) {
    case GroupType::real: real(code, static_cast<double>(value)); return;
    case GroupType::handle: handle(code, static_cast<std::uint64_t>(value)); return;
    case GroupType::text:
    case GroupType::binary: text(code, std::to_wstring(value)); return;
    default: break;
    }
    this->code(code);
    if (m_format.binary) {
        appendLittleEndian(m_out, static_cast<std::uint64_t>(value), fixedSize(type));
        return;
    }
    appendNumber(m_out, value, m_format.paddedInts ? paddedWidth(type) : 0);
    endLine();
}

void GroupWriter::real(int code, double value) {
    const GroupType type = groupType(code);
    if (type != GroupType::real && fixedSize(type) != 0) {
        integer(code, wholePart(std::round(value)));
    } else if (type == GroupType::real && m_format.binary) {
        this->code(code);
        appendLittleEndian(m_out, realBits(value), 8);
    } else {
        rawText(code, realText(value));
    }
}

void GroupWriter::handle(int code, std::uint64_t value) {
    if (fixedSize(groupType(code)) != 0) {
        integer(code, static_cast<long long>(value));
    } else {
        rawText(code, handleText(value));
    }
}

void GroupWriter::text(int code, std::wstring_view value) {
    const GroupType type = groupType(code);
    if (m_format.binary && fixedSize(type) != 0) {
        const std::string number = TextCodec::utf8().encode(value);
        if (type == GroupType::real) {
            real(code, parseReal(number));
        } else {
            integer(code, parseInteger(number));
        }
        return;
    }
    rawText(code, m_format.codec->encode(value));
}

void GroupWriter::chunk(int code, std::string_view bytes) {
    if (groupType(code) != GroupType::binary) {
        rawText(code, bytes);
        return;
    }
    do {
        const std::string_view part = bytes.substr(0, kMaxChunk);
        bytes.remove_prefix(part.size());
        this->code(code);
        if (m_format.binary) {
            m_out.push_back(static_cast<char>(part.size()));
            m_out.append(part);
        } else {
            appendHex(m_out, part);
            endLine();
        }
    } while (!bytes.empty());
}

void GroupWriter::rawText(int code, std::string_view encoded) {
    const GroupType type = groupType(code);
    if (m_format.binary && type == GroupType::binary) {
        chunk(code, encoded);
        return;
    }
    this->code(code);
    const std::size_t size = m_format.binary ? fixedSize(type) : 0;
    if (size != 0) {
        m_out.append(encoded.substr(0, size));
        m_out.append(size - std::min(size, encoded.size()), '\0');
        return;
    }
    if (hasEnd(encoded, m_format.binary)) {
        m_out.append(withoutEnds(encoded, m_format.binary));
    } else {
        m_out.append(encoded);
    }
    if (m_format.binary) {
        m_out.push_back('\0');
    } else {
        endLine();
    }
}

void GroupWriter::copy(const GroupCursor& group) {
    m_out.append(group.bytes());
    const bool openLine = !m_format.binary && (m_out.empty() || m_out.back() != '\n');
    if (openLine) {
        endLine();  // the last line of a file need not have an end
    }
}

void GroupWriter::transcode(const GroupCursor& group) {
    const int code = group.code();
    const GroupType type = groupType(code);
    if (group.format() == m_format) {
        copy(group);
    } else if (type == GroupType::binary) {
        chunk(code, group.asChunk());
    } else if (type == GroupType::text || type == GroupType::handle) {
        text(code, group.asText());
    } else if (!m_format.binary && !group.format().binary &&
               (type == GroupType::real || !isWhole(group.raw()))) {
        rawText(code, trimmed(group.raw()));  // the number as it is spelled
    } else if (type == GroupType::real) {
        real(code, group.asReal());
    } else {
        integer(code, group.asInteger());
    }
}

}  // namespace korvex
