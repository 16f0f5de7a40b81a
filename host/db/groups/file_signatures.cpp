// Tells what a file is that is no drawing with group codes, by its first bytes.
#include "host/db/groups/file_signatures.h"

#include "host/db/groups/group_lexer.h"

namespace korvex::groups {
namespace {

struct Signature {
    std::string_view bytes;
    const wchar_t* kind;
};
constexpr Signature kSignatures[] = {
    {"\x89PNG", L"a picture (PNG)"},
    {"\xFF\xD8\xFF", L"a picture (JPEG)"},
    {"GIF8", L"a picture (GIF)"},
    {"BM", L"a picture (BMP)"},
    {"II*", L"a picture (TIFF)"},
    {"MM", L"a picture (TIFF)"},
    {"%PDF", L"a PDF document"},
    {"%!PS", L"a PostScript document"},
    {"PK\x03\x04", L"a ZIP archive"},
    {"\x1F\x8B", L"a compressed file (gzip)"},
    {"7z\xBC\xAF", L"a 7z archive"},
    {"Rar!", L"a RAR archive"},
    {"<", L"an XML, SVG or HTML file"},
    {"{", L"a JSON file"},
    {"\xFF\xFE", L"a text file in UTF-16"},
    {"\xFE\xFF", L"a text file in UTF-16"},
    {"\x7F"
     "ELF",
     L"a program"},
    {"MZ", L"a program"},
    {"#!", L"a script of commands"},
    {"SQLite format 3", L"a database"},
};

constexpr const wchar_t* kChoose =
    L" Choose a drawing with group codes (DXF), or one that the converter reads.";

bool isAllBlank(std::string_view bytes) {
    return bytes.find_first_not_of(std::string_view(" \t\r\n\0\x1A", 6)) == bytes.npos;
}

bool startsWith(std::string_view bytes, std::string_view prefix) {
    return bytes.substr(0, prefix.size()) == prefix;
}

/// As the line of a group code does.
bool beginsWithNumber(std::string_view bytes) {
    const std::size_t first = bytes.find_first_not_of(" \t\r\n");
    return first != bytes.npos && (isDigit(bytes[first]) || bytes[first] == '-');
}

}  // namespace

bool hasBinarySentinel(std::string_view bytes) {
    constexpr std::string_view kTail(" Binary DXF\r\n\x1A\0", 15);
    return bytes.size() >= kSentinelSize && bytes.substr(kSentinelSize - kTail.size(), kTail.size()) == kTail;
}

std::wstring notADrawing(std::string_view bytes) {
    if (bytes.empty()) {
        return L"The file is empty. Restore it from a backup.";
    }
    if (isAllBlank(bytes)) {
        return L"The file holds nothing but blanks. Restore it from a backup.";
    }
    if (bytes.size() >= 6 && startsWith(bytes, "AC") && isDigit(bytes[2])) {
        return L"The file is a binary drawing (DWG), not one with group codes. "
               L"Convert it to DXF, or open it through the converter named in the configuration.";
    }
    for (const Signature& signature : kSignatures) {
        if (startsWith(bytes, signature.bytes)) {
            return std::wstring(L"The file is ") + signature.kind + L", not a drawing." + kChoose;
        }
    }
    if (bytes.substr(0, 64).find('\0') != bytes.npos) {
        return std::wstring(L"The file holds binary data of an unknown kind, not a drawing.") + kChoose;
    }
    if (bytes.find('\n') == bytes.npos && bytes.find('\r') != bytes.npos) {
        return L"The lines of the file end in a carriage return alone. "
               L"Convert the line ends to LF or CR LF and open it again.";
    }
    if (!beginsWithNumber(bytes) && bytes.find("SECTION") == bytes.npos) {
        return std::wstring(L"The file is a text without group codes, not a drawing.") + kChoose;
    }
    return {};
}

}  // namespace korvex::groups
