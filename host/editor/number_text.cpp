// Reads and writes the command line's numbers and points.
#include "host/editor/number_text.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace korvex {

namespace {

template <class Number>
bool readAll(std::wstring_view text, Number& value) {
    std::string narrow;
    for (const wchar_t c : text) {
        narrow += c < 0x80 ? static_cast<char>(c) : '?';
    }
    const bool plus = narrow.size() > 1 && narrow[0] == '+' && narrow[1] != '-';
    const char* first = narrow.data() + (plus ? 1 : 0);
    const char* last = narrow.data() + narrow.size();
    Number number{};
    const auto [end, error] = std::from_chars(first, last, number);
    if (error != std::errc() || end != last || narrow.empty()) {
        return false;
    }
    value = number;
    return true;
}

bool readPolar(std::wstring_view text, std::size_t sign, HxGeVector3d& offset) {
    double distance = 0;
    double angle = 0;
    if (!readReal(text.substr(0, sign), distance) || !readReal(text.substr(sign + 1), angle)) {
        return false;
    }
    const double radians = angle * kPi / 180;
    offset = {distance * std::cos(radians), distance * std::sin(radians)};
    return true;
}

bool readCoordinates(std::wstring_view text, HxGeVector3d& offset) {
    std::vector<double> values;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(L',', at), text.size());
        double value = 0;
        if (values.size() == 3 || !readReal(text.substr(at, end - at), value)) {
            return false;
        }
        values.push_back(value);
        at = end + 1;
    }
    if (values.size() < 2) {
        return false;
    }
    offset = {values[0], values[1], values.size() == 3 ? values[2] : 0};
    return true;
}

}  // namespace

bool readInteger(std::wstring_view text, int& value) { return readAll(text, value); }

bool readReal(std::wstring_view text, double& value) {
    double number = 0;
    if (!readAll(text, number) || !std::isfinite(number)) {
        return false;
    }
    value = number;
    return true;
}

bool readPoint(std::wstring_view text, const HxGePoint3d& last, HxGePoint3d& point) {
    const bool relative = !text.empty() && text.front() == L'@';
    text.remove_prefix(relative ? 1 : 0);
    text.remove_prefix(!text.empty() && text.front() == L'*' ? 1 : 0);
    const HxGePoint3d origin = relative ? last : HxGePoint3d();
    HxGeVector3d offset;
    const std::size_t sign = text.find(L'<');
    const bool isLast = relative && text.empty();
    if (!isLast &&
        !(sign == std::wstring_view::npos ? readCoordinates(text, offset) : readPolar(text, sign, offset))) {
        return false;
    }
    point = origin + offset;
    return true;
}

std::wstring realText(double value, int decimals) {
    char buffer[512];
    const auto [end, error] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
    std::string text(buffer, error == std::errc() ? end : buffer);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    text = text == "-0" ? "0" : text;
    return {text.begin(), text.end()};
}

std::wstring pointText(const HxGePoint3d& point, int decimals) {
    return realText(point.x, decimals) + L"," + realText(point.y, decimals) + L"," +
           realText(point.z, decimals);
}

}  // namespace korvex
