// Builds code page tables from the C library's converter, with the corrections that drawings need.
#include "host/db/groups/code_page.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iconv.h>
#include <map>
#include <memory>
#include <mutex>

namespace korvex::groups {
namespace {

/// Where the C library's table is another maker's variant of the page, or none.
struct PageSource {
    std::string_view name;
    const char* converter;
};
constexpr PageSource kSources[] = {{"CP874", "TIS-620"}, {"CP1361", "JOHAB"}};

struct PageExtra {
    std::string_view name;
    unsigned char byte;
    char16_t character;
};
constexpr PageExtra kExtras[] = {
    {"CP874", 0x80, 0x20AC}, {"CP874", 0x85, 0x2026}, {"CP874", 0x91, 0x2018}, {"CP874", 0x92, 0x2019},
    {"CP874", 0x93, 0x201C}, {"CP874", 0x94, 0x201D}, {"CP874", 0x95, 0x2022}, {"CP874", 0x96, 0x2013},
    {"CP874", 0x97, 0x2014}, {"CP874", 0xA0, 0x00A0}, {"CP936", 0x80, 0x20AC},
};

const char* converterName(const std::string& page) {
    for (const PageSource& source : kSources) {
        if (source.name == page) {
            return source.converter;
        }
    }
    return page.c_str();
}

}  // namespace

/// One direction of the C library's converter.
class CodePage::Converter {
public:
    Converter(const char* to, const char* from) : m_handle(iconv_open(to, from)) {}
    ~Converter() {
        if (isOpen()) {
            iconv_close(m_handle);
        }
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool isOpen() const { return m_handle != reinterpret_cast<iconv_t>(-1); }

    /// Converts all of the input; empty when it cannot, incomplete() then tells that more bytes were wanted.
    std::string convert(std::string_view input) {
        std::string copy(input);
        char output[32];
        char* in = copy.data();
        char* out = output;
        std::size_t inLeft = copy.size();
        std::size_t outLeft = sizeof output;
        iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        const bool failed = iconv(m_handle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
        m_incomplete = failed && errno == EINVAL;
        // A second call hands out a character that waits for a combining mark.
        if (failed || iconv(m_handle, nullptr, nullptr, &out, &outLeft) == static_cast<std::size_t>(-1)) {
            return {};
        }
        return {output, static_cast<std::size_t>(out - output)};
    }

    /// The one character that the input stands for, kInvalid when it is not exactly one.
    char32_t character(std::string_view input) {
        const std::string bytes = convert(input);
        char32_t c = kInvalid;
        if (bytes.size() == sizeof c) {
            std::memcpy(&c, bytes.data(), sizeof c);
        }
        return c;
    }

    bool incomplete() const { return m_incomplete; }

private:
    iconv_t m_handle;
    bool m_incomplete = false;
};

const CodePage& CodePage::get(const std::string& name) {
    static std::mutex& mutex = *new std::mutex;
    static auto& pages =
        *new std::map<std::string, std::unique_ptr<CodePage>>;  // shared for the process's life
    const std::lock_guard<std::mutex> lock(mutex);
    std::unique_ptr<CodePage>& page = pages[name];
    if (!page) {
        page.reset(new CodePage(name));
    }
    return *page;
}

CodePage::CodePage(const std::string& name) {
    m_single.fill(kInvalid);
    Converter converter("WCHAR_T", converterName(name));
    if (converter.isOpen()) {
        loadSingles(converter, name);
        loadPairs(converter);
    }
    for (std::size_t byte = 0; byte < 0x80; ++byte) {
        m_single[byte] = static_cast<char32_t>(byte);
    }
    loadReverse(name);
}

void CodePage::loadSingles(Converter& converter, const std::string& name) {
    for (std::size_t byte = 0x80; byte < 0x100; ++byte) {
        const char text = static_cast<char>(byte);
        m_single[byte] = converter.character({&text, 1});
        if (converter.incomplete()) {
            m_single[byte] = kLeadByte;
        }
    }
    for (const PageExtra& extra : kExtras) {
        if (extra.name == name) {
            m_single[extra.byte] = extra.character;
        }
    }
}

void CodePage::loadPairs(Converter& converter) {
    if (std::find(m_single.begin(), m_single.end(), kLeadByte) == m_single.end()) {
        return;
    }
    m_pairs.assign(std::size_t{0x80} * 0x100, static_cast<char16_t>(kInvalid));
    for (std::size_t lead = 0x80; lead < 0x100; ++lead) {
        if (m_single[lead] != kLeadByte) {
            continue;
        }
        for (std::size_t trail = 0x30; trail < 0x100; ++trail) {
            const char text[] = {static_cast<char>(lead), static_cast<char>(trail)};
            const char32_t c = converter.character({text, 2});
            if (c <= 0xFFFF) {
                m_pairs[(lead - 0x80) * 0x100 + trail] = static_cast<char16_t>(c);
            }
        }
    }
}

void CodePage::loadReverse(const std::string& name) {
    const auto add = [this](char32_t c, std::size_t bytes) {
        if (c != kInvalid && c != kLeadByte && c >= 0x80) {
            m_reverse.emplace_back(c, static_cast<std::uint16_t>(bytes));
        }
    };
    for (std::size_t byte = 0x80; byte < 0x100; ++byte) {
        add(m_single[byte], byte);
    }
    for (std::size_t i = 0; i < m_pairs.size(); ++i) {
        add(m_pairs[i], 0x8000 + i);
    }
    std::sort(m_reverse.begin(), m_reverse.end());
    // Of several codes for a character the converter's own choice is kept.
    Converter converter(converterName(name), "WCHAR_T");
    const auto sameCharacter = [](const auto& a, const auto& b) { return a.first == b.first; };
    auto twin = m_reverse.begin();
    while ((twin = std::adjacent_find(twin, m_reverse.end(), sameCharacter)) != m_reverse.end()) {
        char wide[sizeof(char32_t)];
        std::memcpy(wide, &twin->first, sizeof wide);
        const std::string bytes = converter.isOpen() ? converter.convert({wide, sizeof wide}) : std::string();
        std::uint16_t chosen = 0;
        for (char byte : bytes) {
            chosen = static_cast<std::uint16_t>(chosen << 8 | static_cast<unsigned char>(byte));
        }
        const char32_t c = twin->first;
        const auto first = twin;
        for (; twin != m_reverse.end() && twin->first == c; ++twin) {
            if (twin->second == chosen) {
                std::swap(first->second, twin->second);
            }
        }
    }
    m_reverse.erase(std::unique(m_reverse.begin(), m_reverse.end(), sameCharacter), m_reverse.end());
}

std::size_t CodePage::decodeOne(std::string_view bytes, char32_t& out) const {
    const std::size_t lead = static_cast<unsigned char>(bytes[0]);
    out = m_single[lead];
    if (out != kLeadByte) {
        return 1;
    }
    out = kInvalid;
    if (bytes.size() > 1) {
        out = m_pairs[(lead - 0x80) * 0x100 + static_cast<unsigned char>(bytes[1])];
    }
    return out == kInvalid ? 1 : 2;
}

bool CodePage::encodeOne(char32_t c, std::string& out) const {
    const auto found =
        std::lower_bound(m_reverse.begin(), m_reverse.end(), std::make_pair(c, std::uint16_t(0)));
    if (found == m_reverse.end() || found->first != c) {
        return false;
    }
    if (found->second > 0xFF) {
        out.push_back(static_cast<char>(found->second >> 8));
    }
    out.push_back(static_cast<char>(found->second & 0xFF));
    return true;
}

std::size_t readUtf8(std::string_view bytes, char32_t& out) {
    if (bytes.empty()) {
        return 0;
    }
    const auto byte = [&](std::size_t i) {
        return static_cast<char32_t>(static_cast<unsigned char>(bytes[i]));
    };
    const char32_t lead = byte(0);
    if (lead < 0x80) {
        out = lead;
        return 1;
    }
    const std::size_t size = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < size) {
        return 0;
    }
    char32_t c = lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if ((byte(i) & 0xC0) != 0x80) {
            return 0;
        }
        c = c << 6 | (byte(i) & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < kSmallest[size] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
        return 0;
    }
    out = c;
    return size;
}

bool isUtf8BeyondAscii(std::string_view bytes) {
    bool beyond = false;
    std::size_t i = 0;
    while (i < bytes.size()) {
        std::uint64_t eight = 0;
        while (bytes.size() - i >= sizeof eight) {
            std::memcpy(&eight, bytes.data() + i, sizeof eight);
            if ((eight & 0x8080808080808080u) != 0) {
                break;
            }
            i += sizeof eight;
        }
        if (i == bytes.size()) {
            break;
        }
        char32_t c = 0;
        const std::size_t used = readUtf8(bytes.substr(i), c);
        if (used == 0) {
            return false;
        }
        beyond = beyond || used > 1;
        i += used;
    }
    return beyond;
}

}  // namespace korvex::groups
