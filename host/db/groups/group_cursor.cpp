// Walks the groups of a slice and reads their values in the type that the caller wants.
#include "host/db/groups/group_cursor.h"

#include "host/db/groups/group_lexer.h"
#include "host/db/groups/group_numbers.h"

#include <cmath>

namespace korvex {

using namespace groups;

GroupCursor::GroupCursor(std::string_view slice, const GroupFormat& format)
    : m_slice(slice), m_format(format), m_bytes(slice.substr(0, 0)) {}

bool GroupCursor::next() {
    if (m_malformed || m_pos == m_slice.size()) {
        return false;
    }
    const bool sound = m_format.binary ? nextBinary() : nextText();
    m_malformed = !sound;
    return sound;
}

bool GroupCursor::nextText() {
    const char* start = m_slice.data() + m_pos;
    const char* end = m_slice.data() + m_slice.size();
    const char* value = readCodeLine(start, end, m_code);
    if (!value || value == end) {
        return false;
    }
    const char* feed = lineFeed(value, end);
    const char* after = afterLineFeed(feed, end);
    m_raw = lineText(value, feed);
    m_bytes = view(start, after);
    m_pos = static_cast<std::size_t>(after - m_slice.data());
    return true;
}

bool GroupCursor::nextBinary() {
    const char* start = m_slice.data() + m_pos;
    const char* end = m_slice.data() + m_slice.size();
    BinaryGroup group;
    if (readBinaryGroup(start, end, m_format.codeBytes, group) != BinaryFault::none) {
        return false;
    }
    m_code = group.code;
    m_raw = group.value;
    m_bytes = view(start, group.next);
    m_pos = static_cast<std::size_t>(group.next - m_slice.data());
    return true;
}

namespace {

bool isFixed(const GroupFormat& format, GroupType type) { return format.binary && fixedSize(type) != 0; }

long long binaryInteger(GroupType type, std::string_view raw) {
    const std::uint64_t bits = littleEndian(raw);
    switch (type) {
    case GroupType::int16: return static_cast<std::int16_t>(bits);
    case GroupType::int32: return static_cast<std::int32_t>(bits);
    default: return static_cast<long long>(bits);
    }
}

double binaryReal(std::string_view raw) {
    const std::uint64_t bits = littleEndian(raw);
    double value = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

}  // namespace

long long GroupCursor::asInteger() const {
    const GroupType type = groupType(m_code);
    if (!isFixed(m_format, type)) {
        return parseInteger(m_raw);
    }
    return type == GroupType::real ? wholePart(binaryReal(m_raw)) : binaryInteger(type, m_raw);
}

double GroupCursor::asReal() const {
    const GroupType type = groupType(m_code);
    if (!isFixed(m_format, type)) {
        return parseReal(m_raw);
    }
    return type == GroupType::real ? binaryReal(m_raw) : static_cast<double>(binaryInteger(type, m_raw));
}

std::uint64_t GroupCursor::asHandle() const {
    const GroupType type = groupType(m_code);
    return isFixed(m_format, type) ? static_cast<std::uint64_t>(asInteger()) : parseHandle(m_raw);
}

std::wstring GroupCursor::asText() const {
    std::wstring text;
    asText(text);
    return text;
}

void GroupCursor::asText(std::wstring& out) const {
    const GroupType type = groupType(m_code);
    if (!isFixed(m_format, type)) {
        const bool number = fixedSize(type) != 0 || type == GroupType::handle;
        m_format.codec->decode(number ? trimmed(m_raw) : m_raw, out);
        return;
    }
    if (type == GroupType::real) {
        const std::string text = realText(binaryReal(m_raw));
        out.assign(text.begin(), text.end());
        return;
    }
    out = std::to_wstring(binaryInteger(type, m_raw));
}

std::string GroupCursor::asChunk() const {
    if (m_format.binary || groupType(m_code) != GroupType::binary) {
        return std::string(m_raw);
    }
    return parseHex(m_raw);
}

}  // namespace korvex
