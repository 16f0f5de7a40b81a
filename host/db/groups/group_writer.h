// Writes groups (code and value) in a drawing's own form, text or binary.
#pragma once

#include "host/db/groups/group_types.h"

#include <utility>

namespace korvex {

class GroupCursor;

/// Appends groups to a buffer. Values are written in the type that the code carries.
class GroupWriter {
public:
    explicit GroupWriter(const GroupFormat& format) : m_format(format) {}

    void integer(int code, long long value);
    void real(int code, double value);           ///< the shortest text that reads back as the same value
    void handle(int code, std::uint64_t value);  ///< hexadecimal, capitals, no leading zeros
    /// Encoded with the format's codec; line ends become "^J" (in a binary drawing they may stay), NUL "^@".
    void text(int code, std::wstring_view value);
    void chunk(int code, std::string_view bytes);  ///< more than 254 bytes make several groups
    /// A value that is already in this format's encoding; line ends and NUL as in text().
    void rawText(int code, std::string_view encoded);
    /// A group as a cursor of the same format stands on: copied byte for byte.
    void copy(const GroupCursor& group);
    /// A group of a cursor in another format: same code and value in this format. Escapes become characters
    /// where this format's codec has them.
    void transcode(const GroupCursor& group);
    /// Bytes that are groups of this format already.
    void append(std::string_view groups) { m_out.append(groups); }

    const std::string& data() const { return m_out; }
    std::string take() { return std::move(m_out); }
    void clear() { m_out.clear(); }

private:
    void code(int code);
    void endLine();

    const GroupFormat& m_format;
    std::string m_out;
};

}  // namespace korvex
