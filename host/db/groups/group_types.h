// The value type that each group code carries, and how a drawing's slices are encoded.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvex {

enum class GroupType : std::uint8_t { text, handle, real, int16, int32, int64, boolean, binary };

/// The codes that a text drawing may use; anything else on a code line is damage.
inline constexpr int kFirstGroupCode = -5;
inline constexpr int kLastGroupCode = 1071;

/// Value type of a group code; codes outside every known range count as text.
GroupType groupType(int code);

/// True for a code that lies in a range with a known value type. A binary drawing cannot hold any other,
/// since the length of the value would not be known.
bool isKnownGroupCode(int code);

/// Converts between a drawing's bytes and wide text. Instances are shared and live for the process.
class TextCodec {
public:
    virtual ~TextCodec() = default;

    /// The codec of a "$DWGCODEPAGE" name ("ANSI_1252", "dos850", "ANSI_936" ... in any case), or of UTF-8
    /// for an empty name; null for a name that is not known.
    static const TextCodec* find(std::string_view codePageName);
    static const TextCodec& utf8();
    static const TextCodec& ansi1252();

    /// Decodes bytes; \U+XXXX and \M+nXXXX escapes become the characters they stand for, bytes that are
    /// not valid in the code page become U+FFFD. Never fails.
    std::wstring decode(std::string_view bytes) const;
    /// The same into a text whose room is used again.
    void decode(std::string_view bytes, std::wstring& out) const;

    /// Encodes text; a character that the code page lacks becomes \U+XXXX (two surrogates beyond U+FFFF).
    virtual std::string encode(std::wstring_view text) const = 0;

    /// True when the character can be written as it is, without an escape.
    virtual bool canEncode(wchar_t character) const = 0;

    /// True for UTF-8, false for a code page.
    virtual bool isUtf8() const = 0;

protected:
    /// Decodes bytes and appends what they stand for.
    virtual void decodeOnto(std::wstring& out, std::string_view bytes) const = 0;
};

/// How the group codes of one drawing are written; every slice of the drawing is in this form.
struct GroupFormat {
    bool binary = false;
    int codeBytes = 2;        ///< binary only: 1 (R12; 255 escapes to two bytes) or 2
    bool crlf = false;        ///< text only: lines end in CR LF
    bool paddedCodes = true;  ///< text only: codes are right-aligned in three columns
    bool paddedInts = false;  ///< text only: 16-bit and boolean values right-aligned in six columns, 32-bit
                              ///< in nine, 64-bit in eighteen
    const TextCodec* codec = &TextCodec::utf8();

    bool operator==(const GroupFormat& o) const {
        return binary == o.binary && codeBytes == o.codeBytes && crlf == o.crlf &&
               paddedCodes == o.paddedCodes && paddedInts == o.paddedInts && codec == o.codec;
    }
    bool operator!=(const GroupFormat& o) const { return !(*this == o); }
};

}  // namespace korvex
