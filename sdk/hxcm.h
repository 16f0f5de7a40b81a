// Colours and transparencies as layers and entities carry them.
#pragma once

#include "hxstring.h"
#include "hxtypes.h"

#include <cstdint>

/// A colour: a method and, by method, a colour index, a true colour or a colour-book colour.
///
/// The colour word keeps the method in bits 24-31. With method true colour the bits 0-23 are the packed value
/// that was set, whatever its byte order; red(), green() and blue() read it with red in bits 0-7.
class HXSDK_API HxCmColor {
public:
    enum Method : std::uint8_t { kByLayer = 0xC0, kByBlock = 0xC1, kTrueColor = 0xC2, kByColorIndex = 0xC3 };
    enum : std::int16_t { kIndexByBlock = 0, kIndexWhite = 7, kIndexByLayer = 256 };

    /// By colour index, white (7).
    HxCmColor() = default;
    static HxCmColor byIndex(std::int16_t index);
    static HxCmColor byRgb(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

    Method colorMethod() const { return static_cast<Method>(m_word >> 24); }
    /// Changes the method only; the bits below it stay. eInvalidInput for a value that is no method.
    Hx::ErrorStatus setColorMethod(Method method);
    bool isByLayer() const { return colorMethod() == kByLayer; }
    bool isByBlock() const { return colorMethod() == kByBlock; }
    bool isByColor() const { return colorMethod() == kTrueColor; }
    bool isByIndex() const { return colorMethod() == kByColorIndex; }

    /// 0 by block, 256 by layer, the index, or for a true colour the index that stands in for it: the one
    /// that was set beside it, else the nearest of the 255. Bits that are no index count as the index that
    /// was set last, or 7.
    std::int16_t colorIndex() const;
    /// Sets index and method (by block, by layer or by index); a true colour and book names are dropped.
    /// eInvalidInput outside 0 to 256.
    Hx::ErrorStatus setColorIndex(std::int16_t index);

    /// The colour word: the method in the top byte, below it the index or the packed true colour.
    std::uint32_t color() const { return m_word; }
    /// Sets the whole word, method included; an index that was set stays as the stand-in of a true colour.
    /// eInvalidInput when the top byte is no method.
    Hx::ErrorStatus setColor(std::uint32_t word);

    std::uint8_t red() const { return static_cast<std::uint8_t>(m_word); }
    std::uint8_t green() const { return static_cast<std::uint8_t>(m_word >> 8); }
    std::uint8_t blue() const { return static_cast<std::uint8_t>(m_word >> 16); }
    /// Makes it a true colour; the stand-in index becomes the nearest of the 255, book names are dropped.
    void setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

    bool hasBookName() const { return !m_book.empty(); }
    bool hasColorName() const { return !m_colorName.empty(); }
    /// True for a true colour that comes from a colour book.
    bool isFromBook() const { return isByColor() && hasBookName() && hasColorName(); }
    const CStdStr<wchar_t>& bookName() const { return m_book; }
    const CStdStr<wchar_t>& colorName() const { return m_colorName; }
    /// Null takes a name away.
    Hx::ErrorStatus setNames(const wchar_t* colorName, const wchar_t* bookName);
    /// "book$colour"; empty unless both names are there.
    CStdStr<wchar_t> getDictionaryKey() const;
    /// Takes the names from "book$colour", split at the first "$"; the colour itself stays. eInvalidInput
    /// (nothing changed) unless both are there.
    Hx::ErrorStatus setNamesFromDictionaryKey(const wchar_t* key);
    /// The text a user reads: "ByLayer", "ByBlock", a colour's name ("Red"), "Color 42", "r,g,b" or the book
    /// colour's name.
    CStdStr<wchar_t> colorNameForDisplay() const;

    /// The index of a standard colour's name ("red", "ByLayer"; case ignored); 7 when there is none of that
    /// name.
    static std::int16_t standardColorIndex(const wchar_t* name);

    /// Same method and what counts with it: the index, or packed colour and book names.
    bool operator==(const HxCmColor& o) const;
    bool operator!=(const HxCmColor& o) const { return !(*this == o); }

private:
    std::uint32_t m_word = 0xC3000007U;
    std::int16_t m_standIn = -1;  ///< index beside a true colour; -1 none was set
    CStdStr<wchar_t> m_book;
    CStdStr<wchar_t> m_colorName;
};

/// 0x00RRGGBB of a colour index (1-255); 0x00FFFFFF for any other.
HXSDK_API std::uint32_t hxedGetRGB(int colorIndex);

/// A transparency: by layer, by block, or an alpha (255 opaque, 0 clear).
class HXSDK_API HxCmTransparency {
public:
    enum Method : std::uint8_t { kByLayer = 0, kByBlock = 1, kByAlpha = 2, kErrorValue = 3 };

    /// By alpha, opaque.
    HxCmTransparency() = default;
    explicit HxCmTransparency(std::uint8_t alpha) : m_alpha(alpha) {}

    Method method() const { return m_method; }
    void setMethod(Method method) { m_method = method; }
    std::uint8_t alpha() const { return m_alpha; }
    /// Sets the alpha and the method by alpha.
    void setAlpha(std::uint8_t alpha);
    /// From a percentage, 0 opaque to 90 (larger values are cut to 90).
    void setAlphaPercent(double percent);
    /// 0 opaque to 100 clear, rounded to whole per cent; 0 unless the method is by alpha.
    int percent() const;
    bool isSolid() const { return m_method == kByAlpha && m_alpha == 255; }

    /// As drawings store it: the method in bits 24-31, the alpha (by alpha only) in bits 0-7. A method that
    /// does not exist reads as kErrorValue.
    std::uint32_t serializeOut() const;
    void serializeIn(std::uint32_t word);

    bool operator==(const HxCmTransparency& o) const {
        return m_method == o.m_method && (m_method != kByAlpha || m_alpha == o.m_alpha);
    }
    bool operator!=(const HxCmTransparency& o) const { return !(*this == o); }

private:
    Method m_method = kByAlpha;
    std::uint8_t m_alpha = 255;
};
