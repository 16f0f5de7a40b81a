// Walks the groups (code and value) of a slice, text or binary, without copying.
#pragma once

#include "host/db/groups/group_types.h"

namespace korvex {

/// Forward reader over a slice. The slice must outlive the cursor and every view taken from it.
/// A slice comes from a scanned file or from GroupWriter, so its structure is sound; should it not be,
/// next() returns false and malformed() true, and nothing is read outside the slice.
class GroupCursor {
public:
    GroupCursor(std::string_view slice, const GroupFormat& format);

    /// Steps to the next group; false at the end.
    bool next();
    bool malformed() const { return m_malformed; }

    const GroupFormat& format() const { return m_format; }
    int code() const { return m_code; }
    /// Text: the value line without its line end; numbers keep their blanks. Binary: the value's bytes,
    /// strings without the closing 0, chunks without the length byte.
    std::string_view raw() const { return m_raw; }
    /// The whole group as it stands in the slice, code, value and line ends.
    std::string_view bytes() const { return m_bytes; }
    /// Offset in the slice of the group's first byte, and of the byte after it.
    std::size_t offset() const { return static_cast<std::size_t>(m_bytes.data() - m_slice.data()); }
    std::size_t endOffset() const { return offset() + m_bytes.size(); }

    /// The value in the wanted type; 0 or empty where the text is not a number. A real may be infinite or
    /// not a number where the drawing says so.
    long long asInteger() const;
    double asReal() const;
    std::uint64_t asHandle() const;
    std::wstring asText() const;  ///< decoded with the format's codec
    /// The same into a text whose room is used again.
    void asText(std::wstring& out) const;
    std::string asChunk() const;  ///< 310-319, 1004: the bytes themselves, hexadecimal resolved in text
                                  ///< form, up to a character that is none

private:
    bool nextText();
    bool nextBinary();

    std::string_view m_slice;
    const GroupFormat& m_format;
    std::size_t m_pos = 0;
    int m_code = 0;
    bool m_malformed = false;
    std::string_view m_raw;
    std::string_view m_bytes;
};

}  // namespace korvex
