// Numbers in group values: read from text tolerantly, written in the spelling that drawings use.
#include "host/db/groups/group_numbers.h"

#include "host/db/groups/group_lexer.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace korvex::groups {
namespace {

int hexDigit(char c) {
    if (isDigit(c)) {
        return c - '0';
    }
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string_view withoutPlus(std::string_view text) {
    text = trimmed(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    return text;
}

bool startsWithWord(std::string_view text, std::string_view lowerWord) {
    if (text.size() < lowerWord.size()) {
        return false;
    }
    for (std::size_t i = 0; i < lowerWord.size(); ++i) {
        const char c = text[i];
        const char lower = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        if (lower != lowerWord[i]) {
            return false;
        }
    }
    return true;
}

double parseNonFinite(std::string_view text) {
    text = withoutPlus(text);
    const bool negative = !text.empty() && text.front() == '-';
    if (negative) {
        text.remove_prefix(1);
    }
    const bool infinite = startsWithWord(text, "inf") || startsWithWord(text, "1.#inf");
    const double value =
        infinite ? std::numeric_limits<double>::infinity() : std::numeric_limits<double>::quiet_NaN();
    return negative ? -value : value;
}

}  // namespace

bool isNonFinite(std::string_view text) {
    text = trimmed(text);
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        text.remove_prefix(1);
    }
    constexpr std::string_view kWords[] = {"nan", "inf", "1.#inf", "1.#qnan", "1.#snan", "1.#ind"};
    for (std::string_view word : kWords) {
        if (startsWithWord(text, word)) {
            return true;
        }
    }
    return false;
}

double parseReal(std::string_view text) {
    text = withoutPlus(text);
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc::result_out_of_range) {
        // Beyond the type at either end: an exponent below zero means the number is as good as 0.
        const bool tiny = text.find("e-") != text.npos || text.find("E-") != text.npos || text.find("0.") < 2;
        const double limit = tiny ? 0.0 : std::numeric_limits<double>::max();
        return text.front() == '-' ? -limit : limit;
    }
    const bool whole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    if (whole) {
        return value;
    }
    return isNonFinite(text) ? parseNonFinite(text) : 0.0;
}

long long wholePart(double value) {
    constexpr double kLimit = 9223372036854775808.0;  // 2^63
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= kLimit) {
        return std::numeric_limits<long long>::max();
    }
    if (value < -kLimit) {
        return std::numeric_limits<long long>::min();
    }
    return static_cast<long long>(value);
}

long long parseInteger(std::string_view text) {
    text = withoutPlus(text);
    long long value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec == std::errc() && result.ptr == text.data() + text.size()) {
        return value;
    }
    return wholePart(parseReal(text));
}

std::uint64_t parseHandle(std::string_view text) {
    text = trimmed(text);
    if (text.empty() || text.size() > 16) {
        return 0;
    }
    std::uint64_t value = 0;
    for (char c : text) {
        const int digit = hexDigit(c);
        if (digit < 0) {
            return 0;
        }
        value = value << 4 | static_cast<std::uint64_t>(digit);
    }
    return value;
}

std::string parseHex(std::string_view text) {
    text = trimmed(text);
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0) {
            break;
        }
        bytes.push_back(static_cast<char>(high << 4 | low));
    }
    return bytes;
}

std::string realText(double value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "nan" : value < 0 ? "-inf" : "inf";
    }
    const double size = std::fabs(value);
    const bool plain = size == 0 || (size >= 1e-5 && size < 1e16);
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value,
                                      plain ? std::chars_format::fixed : std::chars_format::scientific);
    std::string text(buffer, result.ptr);
    const std::size_t exponent = text.find('e');
    if (exponent != text.npos) {
        text[exponent] = 'E';
    }
    if (text.find('.') == text.npos) {
        text.insert(exponent == text.npos ? text.size() : exponent, ".0");
    }
    return text;
}

std::string handleText(std::uint64_t value) {
    char buffer[16];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value, 16);
    std::string text(buffer, result.ptr);
    for (char& c : text) {
        if (c >= 'a') {
            c = static_cast<char>(c - ('a' - 'A'));
        }
    }
    return text;
}

}  // namespace korvex::groups
