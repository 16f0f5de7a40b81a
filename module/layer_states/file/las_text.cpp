// Cutting, decoding and counting.
#include "layer_states/file/las_text.h"

#include <QTextDecoder>

#include <cstring>
#include <limits>

namespace {

constexpr char kEncoding[] = "GBK";
constexpr int kLargestCode = 9999;

bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Looks at all of it: short texts are done sooner so.
bool isAscii(std::string_view text) {
    unsigned char all = 0;
    for (const char c : text) {
        all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
    }
    return all <= 0x7F;
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

KvLasDecoder::KvLasDecoder() {
    if (const QTextCodec* const codec = QTextCodec::codecForName(kEncoding)) {
        m_decoder.reset(codec->makeDecoder());
    }
}

KvLasDecoder::~KvLasDecoder() = default;

void KvLasDecoder::decode(std::string_view line, CStdStr<wchar_t>& text) {
    if (isAscii(line) || !m_decoder) {
        text.resize(line.size());
        std::transform(line.begin(), line.end(), text.begin(),
                       [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
        return;
    }
    m_line.assign(line);
    m_line += '\n';  // ends a character that the line leaves unfinished
    const QString decoded = m_decoder->toUnicode(m_line.data(), static_cast<int>(m_line.size()));
    text.resize(static_cast<std::size_t>(decoded.size()));
    text.resize(static_cast<std::size_t>(decoded.toWCharArray(text.data()) - 1));
}

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
