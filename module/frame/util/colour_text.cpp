// Colours as text: an index or name, optionally ";RGB:r,g,b", optionally ";BOOK:book$colour".
#include "colour_text.h"

#include "text_utilities.h"

#include <algorithm>
#include <array>
#include <cwchar>
#include <string_view>

namespace {

constexpr std::size_t kMaxTextLength = 256;
constexpr std::size_t kMaxRgbLength = 11;
constexpr unsigned kPackedMask = 0xFFFFFFU;

struct NamedIndex {
    const wchar_t* name;
    short index;
};

constexpr NamedIndex kLogicalColours[] = {{L"BYLAYER", 256}, {L"BYBLOCK", 0}};
constexpr NamedIndex kColours[] = {{L"RED", 1},  {L"YELLOW", 2},  {L"GREEN", 3}, {L"CYAN", 4},
                                   {L"BLUE", 5}, {L"MAGENTA", 6}, {L"WHITE", 7}};

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

bool isNumber(std::wstring_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

/// The decimal number that a text begins with; large ones stay large instead of wrapping around.
unsigned long leadingNumber(std::wstring_view text) {
    return std::wcstoul(std::wstring(text).c_str(), nullptr, 10);
}

/// Position of a one-character separator, `text`'s length when there is none.
std::size_t findOrEnd(std::wstring_view text, wchar_t separator, std::size_t from = 0) {
    return std::min(text.find(separator, from), text.size());
}

void trimEnds(std::wstring& text) {
    kv_trim(text.data(), L"be");
    text.resize(std::wcslen(text.c_str()));
}

/// The three parts of a colour text.
struct ColourParts {
    std::wstring index, rgb, book;
    bool hasBook = false;
    bool tooMany = false;
};

ColourParts split(const std::wstring& text) {
    ColourParts parts;
    const std::size_t first = findOrEnd(text, L';');
    parts.index = text.substr(0, first);
    if (first == text.size()) return parts;
    const std::size_t second = findOrEnd(text, L';', first + 1);
    parts.rgb = text.substr(first + 1, second - first - 1);
    if (second == text.size()) return parts;
    parts.book = text.substr(second + 1);
    parts.hasBook = true;
    parts.tooMany = parts.book.find(L';') != std::wstring::npos;
    return parts;
}

template <std::size_t N>
bool findNamed(const NamedIndex (&table)[N], const wchar_t* name, short& index) {
    const auto* const found = std::find_if(std::begin(table), std::end(table), [name](const NamedIndex& row) {
        return strings_i_compare(row.name, name) == 0;
    });
    if (found == std::end(table)) return false;
    index = found->index;
    return true;
}

bool readIndex(std::wstring text, short& index) {
    trimEnds(text);
    if (findNamed(kLogicalColours, text.c_str(), index)) return true;
    if (text.empty() || !isDigit(text.front())) return findNamed(kColours, text.c_str(), index);
    const unsigned long number = leadingNumber(text);
    if (number > static_cast<unsigned long>(HxCmColor::kIndexByLayer)) return false;
    index = static_cast<short>(number);
    return true;
}

/// Takes a prefix off, case ignored, and the blanks around the rest; false when it is not there.
bool takePrefix(std::wstring& text, const std::wstring& prefix) {
    if (strings_i_compare(text.substr(0, prefix.size()).c_str(), prefix.c_str()) != 0) return false;
    text.erase(0, prefix.size());
    trimEnds(text);
    return true;
}

bool readBook(std::wstring text, wchar_t* book) {
    if (!takePrefix(text, L"BOOK:")) return false;
    const std::size_t joint = text.find(L'$');
    if (joint == 0 || joint == std::wstring::npos || joint + 1 == text.size()) return false;
    const std::size_t length = text.copy(book, kColourBookSize - 1);
    book[length] = 0;
    return true;
}

void setTrueColour(HxCmColor& colour, unsigned packed) {
    colour.setColor((static_cast<unsigned>(HxCmColor::kTrueColor) << 24U) | (packed & kPackedMask));
    colour.setColorMethod(HxCmColor::kTrueColor);
}

/// Splits at the first two commas; false when there are not as many.
bool splitTriple(std::wstring_view text, std::array<std::wstring_view, 3>& pieces) {
    const std::size_t first = findOrEnd(text, L',');
    const std::size_t second = findOrEnd(text, L',', first + 1);
    if (second == text.size()) return false;
    pieces = {text.substr(0, first), text.substr(first + 1, second - first - 1), text.substr(second + 1)};
    return true;
}

/// Three numbers of 0 to 255.
bool readTriple(const std::array<std::wstring_view, 3>& pieces, std::array<std::uint8_t, 3>& values) {
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const unsigned long number = isNumber(pieces[i]) ? leadingNumber(pieces[i]) : 256;
        if (number > 255) return false;
        values[i] = static_cast<std::uint8_t>(number);
    }
    return true;
}

}  // namespace

int GetCeColorFromStr(const wchar_t* text, short* index, unsigned* rgb, wchar_t* book) {
    if (!text) return -1;
    std::wstring copy(text, ::wcsnlen(text, kMaxTextLength));
    trimEnds(copy);
    const ColourParts parts = split(copy);
    if (parts.tooMany) return -1;

    short ignored = 0;
    if ((index || copy.empty()) && !readIndex(parts.index, index ? *index : ignored)) return -1;

    int result = 0;
    std::wstring components = parts.rgb;
    if (rgb && takePrefix(components, L"RGB:")) {
        *rgb = 0;
        unsigned long packed = 0;
        if (!ParseRGBString(components.c_str(), &packed)) return 0;
        *rgb = static_cast<unsigned>(packed);
        result = 1;
    }
    if (book && parts.hasBook && readBook(parts.book, book)) ++result;
    return result;
}

bool ParseRGBString(const wchar_t* text, unsigned long* rgb) {
    if (!text || !isDigit(*text) || std::wcslen(text) > kMaxRgbLength) return false;
    std::array<std::wstring_view, 3> pieces;
    std::array<std::uint8_t, 3> values{};
    if (!splitTriple(text, pieces) || !readTriple(pieces, values)) return false;
    if (rgb)
        *rgb = values[0] | (static_cast<unsigned long>(values[1]) << 8U) |
               (static_cast<unsigned long>(values[2]) << 16U);
    return true;
}

void GetHxCmColor(const wchar_t* text, HxCmColor& colour) {
    short index = HxCmColor::kIndexByLayer;
    unsigned packed = kPackedMask;
    wchar_t book[kColourBookSize] = {};
    const int result = GetCeColorFromStr(text, &index, &packed, book);
    if (result < 0) {
        colour.setColorIndex(HxCmColor::kIndexWhite);
        return;
    }
    colour.setColorIndex(index);
    if (result > 0) setTrueColour(colour, packed);
    if (result > 1) colour.setNamesFromDictionaryKey(book);
}

int FormatNormalCeStr(wchar_t* buffer, std::size_t size, const HxCmColor* colour) {
    if (!buffer || size == 0 || !colour || (colour->hasBookName() && !colour->isFromBook())) return 0;
    std::wstring text = std::to_wstring(colour->colorIndex());
    if (colour->isByColor()) {
        text += L";RGB:" + std::to_wstring(colour->red()) + L"," + std::to_wstring(colour->green()) + L"," +
                std::to_wstring(colour->blue());
    }
    if (colour->isFromBook()) text += L";BOOK:" + colour->bookName() + L"$" + colour->colorName();
    const std::size_t length = text.copy(buffer, size - 1);
    buffer[length] = 0;
    return static_cast<int>(length);
}

bool stringToColor(const CStdStr<wchar_t>& text, HxCmColor& colour) {
    if (text.empty()) return false;
    if (colour.setNamesFromDictionaryKey(text.c_str()) == Hx::eOk) return true;
    std::array<std::wstring_view, 3> pieces;
    if (splitTriple(text, pieces)) {
        std::array<std::uint8_t, 3> values{};
        if (!readTriple(pieces, values)) return false;
        colour.setRGB(values[0], values[1], values[2]);
        return true;
    }
    if (!isNumber(text)) {
        colour.setColorIndex(HxCmColor::standardColorIndex(text.c_str()));
        return true;
    }
    const unsigned long number = leadingNumber(text);
    if (number > 255) return false;
    colour.setColorIndex(static_cast<short>(number));
    return true;
}
