// The codecs of drawings: what UTF-8 and the code pages share is here (plain ASCII, escapes), and the
// register of code page names. Tables of the code pages are in code_page.cpp.
#include "host/db/groups/code_page.h"
#include "host/db/groups/group_types.h"

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>

namespace korvex {
namespace {

using groups::CodePage;

constexpr wchar_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t c) { return c >= 0xD800 && c < 0xDC00; }

bool isLowSurrogate(char32_t c) { return c >= 0xDC00 && c < 0xE000; }

char32_t joined(char32_t high, char32_t low) { return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00); }

/// The number in four hexadecimal digits; false when there are not four.
bool readHex4(std::string_view text, char32_t& value) {
    if (text.size() < 4) {
        return false;
    }
    value = 0;
    for (char c : text.substr(0, 4)) {
        const char lower = static_cast<char>(c | 0x20);
        if (c >= '0' && c <= '9') {
            value = value << 4 | static_cast<char32_t>(c - '0');
        } else if (lower >= 'a' && lower <= 'f') {
            value = value << 4 | static_cast<char32_t>(lower - 'a' + 10);
        } else {
            return false;
        }
    }
    return true;
}

const CodePage* multibytePage(char number) {
    constexpr const char* kPages[] = {"CP932", "CP950", "CP949", "CP1361", "CP936"};
    return number >= '1' && number <= '5' ? &CodePage::get(kPages[number - '1']) : nullptr;
}

bool isUnicodeEscape(std::string_view text) {
    return text.size() >= 7 && (text[1] == 'U' || text[1] == 'u') && text[2] == '+';
}

/// \U+XXXX, two of them for a surrogate pair; returns the bytes used, 0 when the text is no escape.
std::size_t readUnicodeEscape(std::string_view text, wchar_t& out) {
    constexpr std::size_t kLength = 7;
    char32_t first = 0;
    if (!isUnicodeEscape(text) || !readHex4(text.substr(3), first) || first == 0) {
        return 0;
    }
    out = static_cast<wchar_t>(first);
    if (!isHighSurrogate(first) && !isLowSurrogate(first)) {
        return kLength;
    }
    const std::string_view rest = text.substr(kLength);
    char32_t second = 0;
    const bool pair = isHighSurrogate(first) && !rest.empty() && rest[0] == '\\' && isUnicodeEscape(rest) &&
                      readHex4(rest.substr(3), second) && isLowSurrogate(second);
    out = pair ? static_cast<wchar_t>(joined(first, second)) : kReplacement;
    return pair ? 2 * kLength : kLength;
}

/// \M+nXXXX; returns the bytes used, 0 when the text is no escape or stands for no character.
std::size_t readMultibyteEscape(std::string_view text, wchar_t& out) {
    constexpr std::size_t kLength = 8;
    char32_t value = 0;
    if (text.size() < kLength || (text[1] != 'M' && text[1] != 'm') || text[2] != '+' ||
        !readHex4(text.substr(4), value)) {
        return 0;
    }
    const CodePage* page = multibytePage(text[3]);
    if (!page || value == 0) {
        return 0;
    }
    const char bytes[] = {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
    const std::string_view character(bytes + (value < 0x100 ? 1 : 0), value < 0x100 ? 1 : 2);
    char32_t decoded = 0;
    if (page->decodeOne(character, decoded) != character.size() || decoded == CodePage::kInvalid) {
        return 0;
    }
    out = static_cast<wchar_t>(decoded);
    return kLength;
}

std::size_t readEscape(std::string_view text, wchar_t& out) {
    const std::size_t used = readUnicodeEscape(text, out);
    return used ? used : readMultibyteEscape(text, out);
}

void appendUnicodeEscape(std::string& out, char32_t c) {
    if (c > 0xFFFF) {
        appendUnicodeEscape(out, 0xD800 + ((c - 0x10000) >> 10));
        appendUnicodeEscape(out, 0xDC00 + ((c - 0x10000) & 0x3FF));
        return;
    }
    constexpr char kDigits[] = "0123456789ABCDEF";
    out.append("\\U+");
    for (int shift = 12; shift >= 0; shift -= 4) {
        out.push_back(kDigits[c >> shift & 15]);
    }
}

/// The code point at text[i], surrogate pairs joined, U+FFFD for what is none; i moves past it.
char32_t nextCodePoint(std::wstring_view text, std::size_t& i) {
    const char32_t c = static_cast<char32_t>(text[i++]);
    if (isHighSurrogate(c) && i < text.size() && isLowSurrogate(static_cast<char32_t>(text[i]))) {
        return joined(c, static_cast<char32_t>(text[i++]));
    }
    return isHighSurrogate(c) || isLowSurrogate(c) || c > 0x10FFFF ? char32_t(kReplacement) : c;
}

/// What all codecs share: bytes below 128 are ASCII, a backslash may begin an escape.
class AsciiBasedCodec : public TextCodec {
public:
    std::string encode(std::wstring_view text) const override;

protected:
    void decodeOnto(std::wstring& out, std::string_view bytes) const override;
    /// Reads one character that begins with a byte from 128 on; returns the bytes used, at least one.
    virtual std::size_t decodeOne(std::string_view bytes, char32_t& out) const = 0;
    /// Appends a character from 128 on; false when the encoding lacks it.
    virtual bool encodeOne(char32_t c, std::string& out) const = 0;
};

void AsciiBasedCodec::decodeOnto(std::wstring& out, std::string_view bytes) const {
    out.reserve(out.size() + bytes.size());
    std::size_t i = 0;
    while (i < bytes.size()) {
        const char byte = bytes[i];
        wchar_t character = 0;
        if (static_cast<unsigned char>(byte) >= 0x80) {
            char32_t decoded = kReplacement;
            i += decodeOne(bytes.substr(i), decoded);
            out.push_back(static_cast<wchar_t>(decoded));
        } else if (const std::size_t used = byte == '\\' ? readEscape(bytes.substr(i), character) : 0) {
            i += used;
            out.push_back(character);
        } else {
            ++i;
            out.push_back(static_cast<wchar_t>(byte));
        }
    }
}

std::string AsciiBasedCodec::encode(std::wstring_view text) const {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const char32_t c = nextCodePoint(text, i);
        if (c < 0x80) {
            out.push_back(static_cast<char>(c));
        } else if (!encodeOne(c, out)) {
            appendUnicodeEscape(out, c);
        }
    }
    return out;
}

class Utf8Codec final : public AsciiBasedCodec {
public:
    bool isUtf8() const override { return true; }
    bool canEncode(wchar_t c) const override {
        const char32_t point = static_cast<char32_t>(c);
        return point <= 0x10FFFF && !isHighSurrogate(point) && !isLowSurrogate(point);
    }

protected:
    std::size_t decodeOne(std::string_view bytes, char32_t& out) const override {
        const std::size_t used = groups::readUtf8(bytes, out);
        if (used == 0) {
            out = kReplacement;
            return 1;
        }
        return used;
    }

    bool encodeOne(char32_t c, std::string& out) const override {
        const auto tail = [&](int shift) { out.push_back(static_cast<char>(0x80 | (c >> shift & 0x3F))); };
        if (c < 0x800) {
            out.push_back(static_cast<char>(0xC0 | c >> 6));
        } else if (c < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | c >> 12));
            tail(6);
        } else {
            out.push_back(static_cast<char>(0xF0 | c >> 18));
            tail(12);
            tail(6);
        }
        tail(0);
        return true;
    }
};

class PageCodec final : public AsciiBasedCodec {
public:
    explicit PageCodec(const CodePage& page) : m_page(page) {}
    bool isUtf8() const override { return false; }
    bool canEncode(wchar_t c) const override {
        std::string out;
        const char32_t point = static_cast<char32_t>(c);
        return point < 0x80 || m_page.encodeOne(point, out);
    }

protected:
    std::size_t decodeOne(std::string_view bytes, char32_t& out) const override {
        return m_page.decodeOne(bytes, out);
    }
    bool encodeOne(char32_t c, std::string& out) const override { return m_page.encodeOne(c, out); }

private:
    const CodePage& m_page;
};

/// Names that drawings use, in capitals without "_", "-" and blanks, beside "ANSInnnn" and "DOSnnn".
struct PageName {
    std::string_view name;
    std::string_view page;
};
constexpr PageName kPageNames[] = {
    {"ASCII", "CP1252"},       {"USASCII", "CP1252"},  {"88591", "ISO8859-1"}, {"88592", "ISO8859-2"},
    {"88593", "ISO8859-3"},    {"88594", "ISO8859-4"}, {"88595", "ISO8859-5"}, {"88596", "ISO8859-6"},
    {"88597", "ISO8859-7"},    {"88598", "ISO8859-8"}, {"88599", "ISO8859-9"}, {"MACINTOSH", "MACINTOSH"},
    {"MACROMAN", "MACINTOSH"}, {"BIG5", "CP950"},      {"GB2312", "CP936"},    {"GBK", "CP936"},
    {"KSC5601", "CP949"},      {"JOHAB", "CP1361"},    {"SHIFTJIS", "CP932"},
};
constexpr std::string_view kNumberedPages[] = {
    "437",  "737",  "775",  "850",  "852",  "855",  "857",  "858",  "860",  "861", "862",
    "863",  "864",  "865",  "866",  "869",  "874",  "932",  "936",  "949",  "950", "1250",
    "1251", "1252", "1253", "1254", "1255", "1256", "1257", "1258", "1361",
};

/// The number of a "$DWGCODEPAGE" name after one of its usual prefixes.
std::string_view afterPrefix(std::string_view name) {
    for (std::string_view prefix : {"ANSI", "DOS", "CP", "IBM", "ISO", "WINDOWS"}) {
        if (name.size() > prefix.size() && name.substr(0, prefix.size()) == prefix) {
            return name.substr(prefix.size());
        }
    }
    return name;
}

/// The code page of a drawing's name for it; empty when there is none.
std::string pageOf(std::string_view name) {
    const std::string_view rest = afterPrefix(name);
    for (const PageName& entry : kPageNames) {
        if (entry.name == name || entry.name == rest) {
            return std::string(entry.page);
        }
    }
    const auto last = std::end(kNumberedPages);
    return std::find(std::begin(kNumberedPages), last, rest) == last ? std::string()
                                                                     : "CP" + std::string(rest);
}

std::string simplified(std::string_view name) {
    std::string out;
    for (char c : name) {
        if (c != '_' && c != '-' && c != ' ' && c != '\t') {
            out.push_back(c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c);
        }
    }
    return out;
}

const TextCodec& codecOfPage(const std::string& page) {
    static std::mutex& mutex = *new std::mutex;
    static auto& codecs =
        *new std::map<std::string, std::unique_ptr<PageCodec>>;  // shared for the process's life
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<PageCodec>& codec = codecs[page];
    if (!codec) {
        codec = std::make_unique<PageCodec>(CodePage::get(page));
    }
    return *codec;
}

}  // namespace

std::wstring TextCodec::decode(std::string_view bytes) const {
    std::wstring out;
    decode(bytes, out);
    return out;
}

/// Most texts are plain ASCII all through: those need no codec.
void TextCodec::decode(std::string_view bytes, std::wstring& out) const {
    const auto isPlain = [](char c) { return static_cast<unsigned char>(c) < 0x80 && c != '\\'; };
    const auto special = std::find_if_not(bytes.begin(), bytes.end(), isPlain);
    out.assign(bytes.begin(), special);
    if (special != bytes.end()) {
        decodeOnto(out, bytes.substr(out.size()));
    }
}

const TextCodec* TextCodec::find(std::string_view codePageName) {
    const std::string name = simplified(codePageName);
    if (name.empty() || name == "UTF8") {
        return &utf8();
    }
    const std::string page = pageOf(name);
    return page.empty() ? nullptr : &codecOfPage(page);
}

const TextCodec& TextCodec::utf8() {
    static const Utf8Codec& codec = *new Utf8Codec;
    return codec;
}

const TextCodec& TextCodec::ansi1252() {
    static const TextCodec& codec = codecOfPage("CP1252");
    return codec;
}

}  // namespace korvex
