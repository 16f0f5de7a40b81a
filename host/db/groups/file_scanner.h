// Splits the bytes of a drawing file into its records: finds the form (text or binary), checks every
// group's structure once, and reports damage with its line (or byte offset) and group code.
#pragma once

#include "host/db/groups/group_types.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace korvex {

/// Where and why a drawing file cannot be read.
struct DrawingError {
    std::wstring message;  ///< what is wrong and what to do, one sentence each
    std::size_t line = 0;  ///< text files: line from 1, 0 if not tied to a place; binary files: byte offset
    bool binary = false;   ///< line is a byte offset
    int code = -1;         ///< the group code at that place, -1 if none

    /// "line 120, group 70: ..." or "byte offset 0x1F4, ...".
    std::wstring text() const;
};

/// One record: from its "0 TYPE" group up to the next one; the variables of the HEADER section belong to its
/// SECTION record. Views point into the file's buffer.
struct FileRecord {
    std::string_view type;   ///< value of the 0 group without blanks around it ("SECTION", "LINE" ...)
    std::string_view slice;  ///< all its groups, the 0 group included
    std::size_t line = 0;    ///< of the 0 group's code, as DrawingError::line counts
};

/// Scans a whole file. Usage: FileScanner scan(bytes); if (!scan.detect(error)) ...;
/// while (scan.next(record, error)) ...; if (!scan.atEnd()) ...
class FileScanner {
public:
    /// The bytes must outlive the scanner and everything that refers to its records.
    explicit FileScanner(std::string_view bytes);

    /// Finds out the form (binary sentinel and the width of codes, line ends, padding) and, from the header
    /// variables "$ACADVER" and "$DWGCODEPAGE", the text codec: UTF-8 from AC1021 on or after a byte order
    /// mark, else the code page; where none is named, UTF-8 if the bytes are well-formed UTF-8 beyond ASCII,
    /// otherwise ANSI_1252. False with an error when the bytes are no drawing with group codes (a binary
    /// drawing "AC10..", an empty file, a picture ...): the message says what they look like.
    bool detect(DrawingError& error);

    const GroupFormat& format() const { return m_format; }
    const std::string& version() const { return m_version; }  ///< "AC1027"; empty when the header names none
    /// "$DWGCODEPAGE" as the header spells it; empty when it names none.
    const std::string& codePage() const { return m_codePage; }
    /// False when the header names a code page that is not known: ANSI_1252 stands in for it, and text beyond
    /// ASCII may show wrong (bytes that are not edited stay as they are).
    bool isCodePageKnown() const { return m_codePageKnown; }

    /// Bytes before the first 0 group: the binary sentinel, a byte order mark, 999 comments.
    std::string_view preamble() const { return m_preamble; }

    /// The next record; false at EOF (atEnd()) or on damage (error filled, and again at every further call).
    /// Sections must open and close in turn, and hold every record. A file must end with "0 EOF"; anything
    /// but blank lines, NUL or Ctrl-Z after it is a warning(). Values of real and whole-number codes must be
    /// numbers; handles and chunks are not checked in text, since real drawings put names in handle codes.
    bool next(FileRecord& record, DrawingError& error);
    bool atEnd() const { return m_atEnd; }
    /// The EOF group and what follows it.
    std::string_view trailer() const { return m_trailer; }

    /// The largest handle of the records so far, their own and those that they name; $HANDSEED does not
    /// count.
    std::uint64_t highestHandle() const { return m_highestHandle; }
    /// What is odd but harms nothing; without a message when there is no such thing. Complete at EOF.
    const DrawingError& warning() const { return m_warning; }

    /// Bytes consumed and in all, for progress.
    std::size_t position() const { return m_pos; }
    std::size_t size() const { return m_bytes.size(); }

private:
    bool detectBinary(DrawingError& error);
    bool detectText(DrawingError& error);
    void detectLayout();
    void readHeader();
    void chooseCodec();
    bool skipPreamble(DrawingError& error);

    const char* textRecordEnd(const char* start, std::size_t& line, DrawingError& error);
    const char* binaryRecordEnd(const char* start, DrawingError& error);
    void noteHandle(int code, std::string_view value);
    bool checkPlace(const FileRecord& record, DrawingError& error) const;
    bool finish(const FileRecord& record, DrawingError& error);

    DrawingError codeLineError(const char* start, std::size_t line) const;
    DrawingError numberError(const char* value, std::size_t line, int code) const;
    DrawingError binaryError(const char* start) const;
    DrawingError errorAt(std::size_t place, int code, std::wstring message) const;
    std::wstring quoted(std::string_view bytes) const;
    std::wstring placeText(std::size_t place) const;
    std::size_t lastPlace() const;

    std::string_view m_bytes;
    GroupFormat m_format;
    std::string m_version;
    std::string m_codePage;
    bool m_codePageKnown = true;
    bool m_bom = false;
    std::string_view m_preamble;
    std::string_view m_trailer;
    DrawingError m_warning;
    std::size_t m_pos = 0;
    std::size_t m_line = 1;  ///< of m_pos, from 1; text only
    bool m_inSection = false;
    std::size_t m_sectionPlace = 0;  ///< where the open section, or the last one, began
    bool m_atEnd = false;
    std::uint64_t m_highestHandle = 0;
};

/// Number of groups in the bytes of a text drawing, by nothing but reading pairs of lines and the code's
/// digits: the floor that benchmarks measure reading against.
std::size_t countGroups(std::string_view bytes);

}  // namespace korvex
