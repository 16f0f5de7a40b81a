// Cutting, decoding and counting.
#include "layer_states/file/las_text.h"

#include <QTextCodec>

#include <cstring>
#include <limits>

namespace {

constexpr char kEncoding[] = "GBK";
constexpr int kLargestCode = 9999;

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

template <class Text>
bool allAscii(const Text& text) {
    for (const auto c : text) {
        if (static_cast<std::uint32_t>(c) > 0x7F) return false;
    }
    return true;
}

QString decoded(std::string_view line) {
    const QTextCodec* const codec = QTextCodec::codecForName(kEncoding);
    const int size = static_cast<int>(line.size());
    return codec ? codec->toUnicode(line.data(), size) : QString::fromLatin1(line.data(), size);
}

std::string_view trimmed(std::string_view line) {
    while (!line.empty() && isBlank(line.front())) {
        line.remove_prefix(1);
    }
    while (!line.empty() && isBlank(line.back())) {
        line.remove_suffix(1);
    }
    return line;
}

}  // namespace

bool KvLasLines::next(std::string_view& line) {
    if (m_rest.empty()) return false;
    const void* const feed = std::memchr(m_rest.data(), '\n', m_rest.size());
    const std::size_t length =
        feed ? static_cast<std::size_t>(static_cast<const char*>(feed) - m_rest.data()) : m_rest.size();
    line = trimmed(m_rest.substr(0, length));
    m_rest.remove_prefix(feed ? length + 1 : length);
    ++m_number;
    return true;
}

void decodeLasLine(std::string_view line, CStdStr<wchar_t>& text) {
    if (!isAscii(line)) {
        text = decoded(line).toStdWString();
        return;
    }
    text.resize(line.size());
    for (std::size_t i = 0; i < line.size(); ++i) {
        text[i] = static_cast<wchar_t>(line[i]);
    }
}

bool isAscii(std::string_view line) { return allAscii(line); }
bool isAscii(const CStdStr<wchar_t>& text) { return allAscii(text); }

int lasCode(std::string_view line) {
    int code = line.empty() ? -1 : 0;
    for (const char c : line) {
        if (!isDigit(c) || code > kLargestCode) return -1;
        code = code * 10 + (c - '0');
    }
    return code;
}

std::int64_t lasInteger(std::string_view line) {
    constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::uint32_t>::max();
    const bool isNegative = !line.empty() && line.front() == '-';
    if (isNegative || (!line.empty() && line.front() == '+')) line.remove_prefix(1);
    std::int64_t value = 0;
    for (const char c : line) {
        if (!isDigit(c)) break;
        value = std::min(value * 10 + (c - '0'), most);
    }
    return isNegative ? std::max(-value, least) : value;
}
