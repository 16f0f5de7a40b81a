// Colours: the colour word, the index that stands in for a true colour, names from colour books.
#include "host/db/values/color_table.h"
#include "sdk/hxcm.h"

namespace {

constexpr std::uint32_t kValueBits = 0x00FFFFFF;
constexpr std::int16_t kNoStandIn = -1;
constexpr wchar_t kKeyJoint = L'$';

struct NamedColor {
    const wchar_t* name;
    std::int16_t index;
};
constexpr NamedColor kNames[] = {
    {L"ByBlock", HxCmColor::kIndexByBlock},
    {L"Red", 1},
    {L"Yellow", 2},
    {L"Green", 3},
    {L"Cyan", 4},
    {L"Blue", 5},
    {L"Magenta", 6},
    {L"White", HxCmColor::kIndexWhite},
    {L"ByLayer", HxCmColor::kIndexByLayer},
};

bool isMethod(std::uint32_t value) {
    return value >= HxCmColor::kByLayer && value <= HxCmColor::kByColorIndex;
}

std::uint32_t wordOf(HxCmColor::Method method, std::uint32_t value) {
    return static_cast<std::uint32_t>(method) << 24U | value;
}

HxCmColor::Method methodOf(std::int16_t index) {
    return index == HxCmColor::kIndexByLayer   ? HxCmColor::kByLayer
           : index == HxCmColor::kIndexByBlock ? HxCmColor::kByBlock
                                               : HxCmColor::kByColorIndex;
}

std::wstring nameOfIndex(std::int16_t index) {
    for (const NamedColor& named : kNames) {
        if (named.index == index) {
            return named.name;
        }
    }
    return L"Color " + std::to_wstring(index);
}

}  // namespace

HxCmColor HxCmColor::byIndex(std::int16_t index) {
    HxCmColor color;
    color.setColorIndex(index);
    return color;
}

HxCmColor HxCmColor::byRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    HxCmColor color;
    color.setRGB(red, green, blue);
    return color;
}

Hx::ErrorStatus HxCmColor::setColorMethod(Method method) {
    if (!isMethod(method)) {
        return Hx::eInvalidInput;
    }
    m_word = wordOf(method, m_word & kValueBits);
    return Hx::eOk;
}

std::int16_t HxCmColor::colorIndex() const {
    switch (colorMethod()) {
    case kByLayer: return kIndexByLayer;
    case kByBlock: return kIndexByBlock;
    case kTrueColor:
        return m_standIn != kNoStandIn ? m_standIn : korvex::nearestColorIndex(red(), green(), blue());
    case kByColorIndex: break;
    }
    const std::uint32_t index = m_word & kValueBits;
    if (index <= static_cast<std::uint32_t>(kIndexByLayer)) {
        return static_cast<std::int16_t>(index);
    }
    return m_standIn != kNoStandIn ? m_standIn : static_cast<std::int16_t>(kIndexWhite);
}

Hx::ErrorStatus HxCmColor::setColorIndex(std::int16_t index) {
    if (index < kIndexByBlock || index > kIndexByLayer) {
        return Hx::eInvalidInput;
    }
    m_word = wordOf(methodOf(index), static_cast<std::uint32_t>(index));
    m_standIn = index;
    m_book.clear();
    m_colorName.clear();
    return Hx::eOk;
}

Hx::ErrorStatus HxCmColor::setColor(std::uint32_t word) {
    if (!isMethod(word >> 24U)) {
        return Hx::eInvalidInput;
    }
    m_word = word;
    return Hx::eOk;
}

void HxCmColor::setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    m_word = wordOf(kTrueColor,
                    red | static_cast<std::uint32_t>(green) << 8U | static_cast<std::uint32_t>(blue) << 16U);
    m_standIn = kNoStandIn;
    m_book.clear();
    m_colorName.clear();
}

Hx::ErrorStatus HxCmColor::setNames(const wchar_t* colorName, const wchar_t* bookName) {
    m_colorName = colorName;
    m_book = bookName;
    return Hx::eOk;
}

CStdStr<wchar_t> HxCmColor::getDictionaryKey() const {
    return hasBookName() && hasColorName() ? m_book + kKeyJoint + m_colorName : std::wstring();
}

Hx::ErrorStatus HxCmColor::setNamesFromDictionaryKey(const wchar_t* key) {
    const std::wstring text = key ? key : L"";
    const std::size_t joint = text.find(kKeyJoint);
    if (joint == 0 || joint == std::wstring::npos || joint + 1 == text.size()) {
        return Hx::eInvalidInput;
    }
    m_book = text.substr(0, joint);
    m_colorName = text.substr(joint + 1);
    return Hx::eOk;
}

CStdStr<wchar_t> HxCmColor::colorNameForDisplay() const {
    if (isFromBook()) {
        return m_colorName;
    }
    if (isByColor()) {
        return std::to_wstring(red()) + L"," + std::to_wstring(green()) + L"," + std::to_wstring(blue());
    }
    return nameOfIndex(colorIndex());
}

std::int16_t HxCmColor::standardColorIndex(const wchar_t* name) {
    const CStdStr<wchar_t> wanted(name);
    for (const NamedColor& named : kNames) {
        if (wanted.CompareNoCase(named.name) == 0) {
            return named.index;
        }
    }
    return kIndexWhite;
}

bool HxCmColor::operator==(const HxCmColor& o) const {
    if (colorMethod() != o.colorMethod()) {
        return false;
    }
    switch (colorMethod()) {
    case kByLayer:
    case kByBlock: return true;
    case kTrueColor: return m_word == o.m_word && m_book == o.m_book && m_colorName == o.m_colorName;
    case kByColorIndex: break;
    }
    return colorIndex() == o.colorIndex();
}
