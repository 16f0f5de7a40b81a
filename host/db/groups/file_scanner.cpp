// Splits a drawing file into records in one pass: each byte is looked at once, nothing is copied or allocated
// unless there is damage to report.
#include "host/db/groups/file_scanner.h"

#include "host/db/groups/code_page.h"
#include "host/db/groups/file_signatures.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_lexer.h"
#include "host/db/groups/group_numbers.h"

#include <algorithm>

namespace korvex {

using namespace groups;

namespace {

constexpr const wchar_t* kRestore = L" Restore the file from a backup or have it written again.";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kFirstUtf8Version = "AC1021";
constexpr int kComment = 999;

enum class RecordKind { section, endSection, endOfFile, other };

RecordKind kindOf(std::string_view type) {
    return type == "SECTION"  ? RecordKind::section
           : type == "ENDSEC" ? RecordKind::endSection
           : type == "EOF"    ? RecordKind::endOfFile
                              : RecordKind::other;
}

std::wstring hexadecimal(std::size_t value) {
    const std::string digits = handleText(value);
    return L"0x" + std::wstring(digits.begin(), digits.end());
}

/// The value of a section's 2 group; empty when it has none.
std::string_view sectionName(std::string_view slice, const GroupFormat& format) {
    GroupCursor cursor(slice, format);
    while (cursor.next()) {
        if (cursor.code() == 2) {
            return trimmed(cursor.raw());
        }
        if (cursor.code() != 0 && cursor.code() != kComment) {
            break;
        }
    }
    return {};
}

}  // namespace

std::wstring DrawingError::text() const {
    if (line == 0 && !binary) {
        return message;
    }
    std::wstring place = binary ? L"byte offset " + hexadecimal(line) : L"line " + std::to_wstring(line);
    if (code != -1) {
        place += L", group " + std::to_wstring(code);
    }
    return place + L": " + message;
}

FileScanner::FileScanner(std::string_view bytes) : m_bytes(bytes) {}

// ---- form ----

bool FileScanner::detect(DrawingError& error) {
    m_format.binary = hasBinarySentinel(m_bytes);
    if (!(m_format.binary ? detectBinary(error) : detectText(error)) || !skipPreamble(error)) {
        return false;
    }
    if (!m_format.binary) {
        detectLayout();
    }
    readHeader();
    chooseCodec();
    return true;
}

bool FileScanner::detectBinary(DrawingError& error) {
    m_pos = kSentinelSize;
    const std::string_view groups = m_bytes.substr(m_pos);
    if (groups.size() < 2) {
        error = errorAt(m_pos, -1, std::wstring(L"the file ends after its sentinel.") + kRestore);
        return false;
    }
    // The first group is "0 SECTION" or a 999 comment. A code of one byte is followed by a letter at once, or
    // is escaped by 255.
    const unsigned char first = static_cast<unsigned char>(groups[0]);
    const bool oneByte = first == 255 || (first == 0 && groups[1] != 0);
    m_format.codeBytes = oneByte ? 1 : 2;
    return true;
}

bool FileScanner::detectText(DrawingError& error) {
    m_bom = m_bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    m_pos = m_bom ? kByteOrderMark.size() : 0;
    const std::string_view text = m_bytes.substr(m_pos);
    std::wstring reason = notADrawing(text);
    if (!reason.empty()) {
        error = DrawingError{};
        error.message = std::move(reason);
        return false;
    }
    const std::size_t feed = text.find('\n');
    m_format.crlf = feed != text.npos && feed > 0 && text[feed - 1] == '\r';
    return true;
}

/// Steps over the comments before the first 0 group.
bool FileScanner::skipPreamble(DrawingError& error) {
    const std::size_t first = m_pos;
    GroupCursor cursor(m_bytes.substr(first), m_format);
    while (cursor.next() && cursor.code() == kComment) {
        m_pos = first + cursor.endOffset();
        m_line += 2;
    }
    if (cursor.malformed()) {
        const char* start = m_bytes.data() + m_pos;
        error = m_format.binary ? binaryError(start) : codeLineError(start, m_line);
        return false;
    }
    if (m_pos == m_bytes.size()) {
        error = errorAt(lastPlace(), -1, std::wstring(L"the file holds comments only.") + kRestore);
        return false;
    }
    if (cursor.code() != 0) {
        error = errorAt(m_format.binary ? m_pos : m_line, cursor.code(),
                        std::wstring(L"a drawing must begin with a SECTION.") + kRestore);
        return false;
    }
    m_preamble = m_bytes.substr(0, m_pos);
    return true;
}

/// Finds out the padding from the first groups that could show it.
void FileScanner::detectLayout() {
    constexpr int kGroupsToSee = 5000;
    bool codesSeen = false;
    bool intsSeen = false;
    m_format.paddedCodes = false;
    GroupCursor cursor(m_bytes.substr(m_pos), m_format);
    for (int i = 0; i < kGroupsToSee && !(codesSeen && intsSeen) && cursor.next(); ++i) {
        if (!codesSeen && cursor.code() < 100) {
            codesSeen = true;
            m_format.paddedCodes = isBlank(cursor.bytes().front());
        }
        const GroupType type = groupType(cursor.code());
        const bool fitsShort = trimmed(cursor.raw()).size() < 6;
        if (!intsSeen && fitsShort && (type == GroupType::int16 || type == GroupType::int32)) {
            intsSeen = true;
            m_format.paddedInts = !cursor.raw().empty() && isBlank(cursor.raw().front());
        }
    }
}

/// Reads version and code page from the HEADER section, wherever it stands; next() will find the damage.
void FileScanner::readHeader() {
    GroupCursor cursor(m_bytes.substr(m_pos), m_format);
    bool sectionBegins = false;
    bool inHeader = false;
    std::string* wanted = nullptr;
    while (cursor.next()) {
        const std::string_view value = cursor.raw();
        if (cursor.code() == 0) {
            if (inHeader) {
                return;
            }
            sectionBegins = trimmed(value) == "SECTION";
        } else if (sectionBegins && cursor.code() == 2) {
            inHeader = trimmed(value) == "HEADER";
            sectionBegins = false;
        } else if (inHeader && cursor.code() == 9) {
            const std::string_view name = trimmed(value);
            wanted = name == "$ACADVER" ? &m_version : name == "$DWGCODEPAGE" ? &m_codePage : nullptr;
        } else if (wanted) {
            *wanted = std::string(trimmed(value));
            wanted = nullptr;
        }
    }
}

void FileScanner::chooseCodec() {
    const TextCodec* named = m_codePage.empty() ? nullptr : TextCodec::find(m_codePage);
    // Names of versions compare as text, but for the oldest ones, which have a point ("AC1.40", "AC2.10").
    const bool utf8Version = m_version.size() == kFirstUtf8Version.size() &&
                             m_version.find('.') == m_version.npos && m_version >= kFirstUtf8Version;
    m_codePageKnown = m_codePage.empty() || named != nullptr;
    // Programs that write old versions without a code page write UTF-8 as often as not, and text in a code
    // page is hardly ever well-formed UTF-8 by chance.
    const bool looksUtf8 = m_codePage.empty() && !m_format.binary && isUtf8BeyondAscii(m_bytes);
    if (utf8Version || m_bom || looksUtf8) {
        m_format.codec = &TextCodec::utf8();
    } else {
        m_format.codec = named ? named : &TextCodec::ansi1252();
    }
}

// ---- records ----

bool FileScanner::next(FileRecord& record, DrawingError& error) {
    if (m_atEnd) {
        return false;
    }
    if (m_pos == m_bytes.size()) {
        error = errorAt(lastPlace(), -1,
                        std::wstring(L"the file ends without EOF; its end is missing.") + kRestore);
        return false;
    }
    const char* start = m_bytes.data() + m_pos;
    record.line = m_format.binary ? m_pos : m_line;
    GroupCursor head(m_bytes.substr(m_pos), m_format);
    if (!head.next()) {
        error = m_format.binary ? binaryError(start) : codeLineError(start, m_line);
        return false;
    }
    record.type = trimmed(head.raw());
    if (kindOf(record.type) == RecordKind::endOfFile) {
        record.slice = head.bytes();
        return finish(record, error);
    }
    std::size_t line = m_line + 2;
    const char* rest = start + head.bytes().size();
    const char* end = m_format.binary ? binaryRecordEnd(rest, error) : textRecordEnd(rest, line, error);
    if (!end) {
        return false;
    }
    record.slice = view(start, end);
    if (!checkPlace(record, error)) {
        return false;
    }
    const RecordKind kind = kindOf(record.type);
    if (kind == RecordKind::section) {
        m_sectionPlace = record.line;
    }
    m_inSection = kind == RecordKind::section || (m_inSection && kind != RecordKind::endSection);
    m_pos += record.slice.size();
    m_line = line;
    return true;
}

/// The start of the next 0 group, or the end of the file; null with an error on damage.
const char* FileScanner::textRecordEnd(const char* start, std::size_t& line, DrawingError& error) {
    const char* p = start;
    const char* end = m_bytes.data() + m_bytes.size();
    while (p != end) {
        int code = 0;
        const char* value = readCodeLine(p, end, code);
        if (!value || (value == end && code != 0)) {
            error = codeLineError(p, line);
            return nullptr;
        }
        if (code == 0) {
            break;
        }
        const GroupType type = codeEntry(code).type;
        if (fixedSize(type) == 0) {
            const char* feed = lineFeed(value, end);
            if (type == GroupType::handle) {
                noteHandle(code, lineText(value, feed));
            }
            p = afterLineFeed(feed, end);
        } else {
            p = skipNumberLine(value, end);
            if (!p) {
                const char* feed = lineFeed(value, end);
                if (type != GroupType::real || !isNonFinite(lineText(value, feed))) {
                    error = numberError(value, line + 1, code);
                    return nullptr;
                }
                p = afterLineFeed(feed, end);
            }
        }
        line += 2;
    }
    return p;
}

const char* FileScanner::binaryRecordEnd(const char* start, DrawingError& error) {
    const char* p = start;
    const char* end = m_bytes.data() + m_bytes.size();
    BinaryGroup group;
    while (p != end) {
        if (readBinaryGroup(p, end, m_format.codeBytes, group) != BinaryFault::none) {
            error = binaryError(p);
            return nullptr;
        }
        if (group.code == 0) {
            break;
        }
        if (codeEntry(group.code).type == GroupType::handle) {
            noteHandle(group.code, group.value);
        }
        p = group.next;
    }
    return p;
}

void FileScanner::noteHandle(int code, std::string_view value) {
    constexpr int kSeedCode = 5;
    const bool isSeed = code == kSeedCode && !m_inSection;  // in the HEADER section's own record
    if (!isSeed) {
        m_highestHandle = std::max(m_highestHandle, parseHandle(value));
    }
}

/// Sections open and close in turn and hold every other record.
bool FileScanner::checkPlace(const FileRecord& record, DrawingError& error) const {
    const auto fail = [&](const std::wstring& message) {
        error = errorAt(record.line, 0, message + kRestore);
        return false;
    };
    switch (kindOf(record.type)) {
    case RecordKind::section:
        if (m_inSection) {
            return fail(L"a SECTION begins inside the section of " + placeText(m_sectionPlace) +
                        L", whose ENDSEC is missing.");
        }
        if (sectionName(record.slice, m_format).empty()) {
            return fail(L"the SECTION has no name (group 2).");
        }
        return true;
    case RecordKind::endSection: return m_inSection || fail(L"an ENDSEC stands outside of any section.");
    default:
        if (record.type.empty()) {
            return fail(L"the record has no type.");
        }
        return m_inSection || fail(L"the record " + quoted(record.type) + L" stands outside of any section.");
    }
}

/// Checks what stands around EOF; what follows it is left alone. Returns false, as next() does at the end.
bool FileScanner::finish(const FileRecord& record, DrawingError& error) {
    if (m_inSection) {
        error = errorAt(record.line, 0,
                        L"EOF stands inside the section of " + placeText(m_sectionPlace) +
                            L", whose ENDSEC is missing." + kRestore);
        return false;
    }
    const std::size_t after = m_pos + record.slice.size();
    const std::size_t trash = m_bytes.find_first_not_of(std::string_view(" \t\r\n\0\x1A", 6), after);
    if (trash != m_bytes.npos) {
        std::size_t line = m_line + 2;
        for (const char* p = m_bytes.data() + after; p != m_bytes.data() + trash; ++p) {
            line += *p == '\n' ? 1u : 0u;
        }
        m_warning = errorAt(m_format.binary ? trash : line, -1,
                            L"data follow after EOF: " + quoted(m_bytes.substr(trash)) +
                                L". They are kept but mean nothing; if something is missing in the drawing, "
                                L"restore the file from a backup.");
    }
    m_trailer = m_bytes.substr(m_pos);
    m_pos = m_bytes.size();
    m_atEnd = true;
    return false;
}

// ---- damage ----

DrawingError FileScanner::codeLineError(const char* start, std::size_t line) const {
    const char* end = m_bytes.data() + m_bytes.size();
    const char* feed = lineFeed(start, end);
    const std::string_view text = trimmed(lineText(start, feed));
    // A final line need not end, so give it an end to tell a code without value from a line that is no code.
    const std::string lone = std::string(text.substr(0, 16)) + '\n';
    int code = 0;
    if (text.size() < 16 && readCodeLine(lone.data(), lone.data() + lone.size(), code)) {
        return errorAt(line, code, std::wstring(L"the file ends before the value of this group.") + kRestore);
    }
    if (text.find_first_not_of("0123456789+-") == text.npos && !text.empty()) {
        return errorAt(line, -1, L"there is no group code " + quoted(text) + L"." + kRestore);
    }
    return errorAt(line, -1, L"expected a group code, found " + quoted(text) + L"." + kRestore);
}

DrawingError FileScanner::numberError(const char* value, std::size_t line, int code) const {
    const char* end = m_bytes.data() + m_bytes.size();
    const std::string_view text = trimmed(lineText(value, lineFeed(value, end)));
    return errorAt(line, code, L"expected a number, found " + quoted(text) + L"." + kRestore);
}

DrawingError FileScanner::binaryError(const char* start) const {
    const char* end = m_bytes.data() + m_bytes.size();
    const std::size_t offset = static_cast<std::size_t>(start - m_bytes.data());
    BinaryGroup group;
    if (readBinaryGroup(start, end, m_format.codeBytes, group) == BinaryFault::wildCode) {
        return errorAt(offset, group.code,
                       L"there is no group code " + std::to_wstring(group.code) + L"." + kRestore);
    }
    int code = -1;
    if (!readBinaryCode(start, end, m_format.codeBytes, code)) {
        return errorAt(offset, -1, std::wstring(L"the file ends inside a group code.") + kRestore);
    }
    return errorAt(offset, code, std::wstring(L"the file ends inside the value of this group.") + kRestore);
}

DrawingError FileScanner::errorAt(std::size_t place, int code, std::wstring message) const {
    DrawingError error;
    error.message = std::move(message);
    error.line = place;
    error.binary = m_format.binary;
    error.code = code;
    return error;
}

/// Text of the file for a message: short, on one line, in quotation marks.
std::wstring FileScanner::quoted(std::string_view bytes) const {
    constexpr std::size_t kLongest = 40;
    const std::size_t lineEnd = bytes.find_first_of("\r\n");
    const std::string_view line = bytes.substr(0, lineEnd);
    std::wstring text = m_format.codec->decode(line.substr(0, kLongest));
    for (wchar_t& c : text) {
        c = c < 32 || c == 127 ? L'?' : c;
    }
    return L"\"" + text + (line.size() > kLongest ? L"...\"" : L"\"");
}

std::wstring FileScanner::placeText(std::size_t place) const {
    return m_format.binary ? L"byte offset " + hexadecimal(place) : L"line " + std::to_wstring(place);
}

/// Where the file ends: its last line, or its size.
std::size_t FileScanner::lastPlace() const {
    if (m_format.binary) {
        return m_bytes.size();
    }
    return m_line > 1 ? m_line - 1 : 1;
}

std::size_t countGroups(std::string_view bytes) {
    const char* p = bytes.data();
    const char* end = p + bytes.size();
    std::size_t count = 0;
    while (p != end) {
        const char* feed = lineFeed(p, end);
        unsigned code = 0;
        for (; p != feed; ++p) {
            code = isDigit(*p) ? code * 10 + static_cast<unsigned>(*p - '0') : code;
        }
        if (feed == end) {
            break;
        }
        p = afterLineFeed(lineFeed(feed + 1, end), end);
        count += code <= static_cast<unsigned>(kLastGroupCode) ? 1u : 0u;
    }
    return count;
}

}  // namespace korvex
