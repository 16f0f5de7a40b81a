// Text of drawings: code pages by their names, escapes, and what happens to bytes that are no text.
#include "host/db/groups/group_types.h"

#include <gtest/gtest.h>

namespace {

using namespace korvex;

constexpr const char* kCodePages[] = {
    "ANSI_874",  "ANSI_932",  "ANSI_936",  "ANSI_949",  "ANSI_950",  "ANSI_1250", "ANSI_1251", "ANSI_1252",
    "ANSI_1253", "ANSI_1254", "ANSI_1255", "ANSI_1256", "ANSI_1257", "ANSI_1258", "ANSI_1361", "DOS437",
    "DOS850",    "DOS852",    "DOS855",    "DOS857",    "DOS860",    "DOS861",    "DOS862",    "DOS863",
    "DOS864",    "DOS865",    "DOS866",    "DOS869",    "DOS932",    "ISO8859-1", "ISO8859-2", "ISO8859-3",
    "ISO8859-4", "ISO8859-5", "ISO8859-6", "ISO8859-7", "ISO8859-8", "ISO8859-9", "MACINTOSH",
};

const TextCodec& codec(const char* name) {
    const TextCodec* found = TextCodec::find(name);
    EXPECT_NE(found, nullptr) << name;
    return found ? *found : TextCodec::utf8();
}

TEST(TextCodecs, DecodesAndEncodesTheTextOfItsCodePage) {
    struct Row {
        const char* page;
        const char* bytes;
        const wchar_t* text;
    };
    const Row rows[] = {
        {"ANSI_1252", "\xC4\xD6\xDC-\x80", L"\u00C4\u00D6\u00DC-\u20AC"},
        {"ansi_1251", "\xD1\xEB\xEE\xE9", L"\u0421\u043B\u043E\u0439"},
        {"DOS850", "Ma\xE1 \x9B", L"Ma\u00DF \u00F8"},
        {"dos437", "\xF8\xE3", L"\u00B0\u03C0"},
        {"ANSI_936", "\xCD\xBC\xB2\xE3\x80", L"\u56FE\u5C42\u20AC"},
        {"ANSI_950", "\xB9\xCF\xBC\x68", L"\u5716\u5C64"},
        {"ANSI_932", "\x83\x8C\x83\x43\x83\x84\x81\x5B\xB1", L"\u30EC\u30A4\u30E4\u30FC\uFF71"},
        {"dos932", "\x83\x8C", L"\u30EC"},
        {"ANSI_949", "\xB5\xB5\xB8\xE9", L"\uB3C4\uBA74"},
        {"ANSI_1361", "\x88\x61", L"\uAC00"},
        {"ANSI_874", "\xAA\xD1\xE9\xB9\x80", L"\u0E0A\u0E31\u0E49\u0E19\u20AC"},
        {"ANSI_1258", "\xD0\xEA", L"\u0110\u00EA"},
        {"ISO8859-5", "\xB0", L"\u0410"},
        {"ISO_8859_7", "\xC1", L"\u0391"},
        {"macintosh", "\x8A", L"\u00E4"},
        {"", "Ma\xC3\x9F \xF0\x9F\x98\x80", L"Ma\u00DF \U0001F600"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(codec(row.page).decode(row.bytes), row.text) << row.page;
        EXPECT_EQ(codec(row.page).encode(row.text), row.bytes) << row.page;
    }
}

TEST(TextCodecs, FindsNamesInAnySpellingAndRefusesUnknownOnes) {
    EXPECT_EQ(TextCodec::find("ANSI_1252"), TextCodec::find("ansi1252"));
    EXPECT_EQ(TextCodec::find("DOS850"), TextCodec::find("dos_850"));
    EXPECT_EQ(TextCodec::find("ANSI_1252"), &TextCodec::ansi1252());
    EXPECT_EQ(TextCodec::find(""), &TextCodec::utf8());
    EXPECT_TRUE(TextCodec::utf8().isUtf8());
    EXPECT_FALSE(TextCodec::ansi1252().isUtf8());
    for (const char* name : {"ANSI_", "ANSI_9999", "ANSI", "klingon", "1", "DOS850x"}) {
        EXPECT_EQ(TextCodec::find(name), nullptr) << name;
    }
}

TEST(TextCodecs, EveryByteOfEveryPageComesBack) {
    int total = 0;
    for (const char* page : kCodePages) {
        const TextCodec& pageCodec = codec(page);
        int valid = 0;
        for (int byte = 1; byte < 256; ++byte) {
            const std::string bytes(1, static_cast<char>(byte));
            const std::wstring text = pageCodec.decode(bytes);
            ASSERT_EQ(text.size(), 1u) << page << " byte " << byte;
            if (byte < 128) {
                EXPECT_EQ(text[0], static_cast<wchar_t>(byte)) << page;
            }
            if (text[0] != 0xFFFD) {
                ++valid;
                EXPECT_TRUE(pageCodec.canEncode(text[0])) << page << " byte " << byte;
                EXPECT_EQ(pageCodec.encode(text), bytes) << page << " byte " << byte;
            }
        }
        total += valid - 127;
    }
    EXPECT_GT(total, 100 * 30) << "bytes from 128 on that are characters, in 30-odd single-byte pages";
}

TEST(TextCodecs, EveryCharacterOfADoubleBytePageComesBackAsTheSameCharacter) {
    for (const char* page : {"ANSI_932", "ANSI_936", "ANSI_949", "ANSI_950", "ANSI_1361"}) {
        const TextCodec& pageCodec = codec(page);
        int pairs = 0;
        for (int lead = 0x81; lead < 0xFF; ++lead) {
            for (int trail = 0x31; trail < 0xFF; ++trail) {
                const std::string bytes{static_cast<char>(lead), static_cast<char>(trail)};
                const std::wstring text = pageCodec.decode(bytes);
                if (text.size() == 1 && text[0] != 0xFFFD) {
                    ++pairs;
                    ASSERT_EQ(pageCodec.decode(pageCodec.encode(text)), text)
                        << page << ' ' << lead << ' ' << trail;
                }
            }
        }
        EXPECT_GT(pairs, 6000) << page;
    }
}

TEST(TextCodecs, OfSeveralCodesForACharacterTheUsualOneIsWritten) {
    const TextCodec& japanese = codec("ANSI_932");
    EXPECT_EQ(japanese.decode("\xED\x40"), japanese.decode("\xFA\x5C"));
    EXPECT_EQ(japanese.encode(L"\u7E8A"), "\xFA\x5C");
    EXPECT_EQ(japanese.encode(L"\u2252"), "\x81\xE0");
}

TEST(TextCodecs, ASecondByteThatLooksLikeABackslashBeginsNoEscape) {
    const std::string gbk = "\xD5\x5CU+00E9";
    EXPECT_EQ(codec("ANSI_936").decode(gbk), L"\u8AA0U+00E9");
    EXPECT_EQ(codec("ANSI_936").encode(codec("ANSI_936").decode(gbk)), gbk);
    EXPECT_EQ(codec("ANSI_932").decode("\x83\x5CU+0041"), L"\u30BDU+0041");
    EXPECT_EQ(codec("ANSI_932").decode("\x83\x5C\\U+00E9"), L"\u30BD\u00E9");
}

TEST(TextCodecs, ResolvesEscapesInAnyCase) {
    const TextCodec& latin = TextCodec::ansi1252();
    EXPECT_EQ(latin.decode("a\\U+4E2Db"), L"a\u4E2Db");
    EXPECT_EQ(latin.decode("\\u+4e2d"), L"\u4E2D");
    EXPECT_EQ(TextCodec::utf8().decode("\\U+00E9"), L"\u00E9");
    EXPECT_EQ(latin.decode("\\U+D83D\\U+DE00"), L"\U0001F600");
    EXPECT_EQ(latin.decode("\\U+D83Dx\\U+DE00"), L"\uFFFDx\uFFFD");
    EXPECT_EQ(latin.decode("\\U+DE00\\U+DE00"), L"\uFFFD\uFFFD");
    EXPECT_EQ(latin.decode("\\M+1838C"), L"\u30EC");
    EXPECT_EQ(latin.decode("\\m+2b9cf"), L"\u5716");
    EXPECT_EQ(latin.decode("\\M+3B5B5"), L"\uB3C4");
    EXPECT_EQ(latin.decode("\\M+48861"), L"\uAC00");
    EXPECT_EQ(latin.decode("\\M+5CDBC"), L"\u56FE");
}

TEST(TextCodecs, LeavesWhatOnlyLooksLikeAnEscape) {
    for (const char* text : {"\\U+12", "\\U+12G4", "\\U-1234", "\\U+0000", "\\M+6838C", "\\M+1FFFF",
                             "\\M+10000", "\\M+183", "\\P", "\\", "C:\\Users\\Mia", "\\U+"}) {
        EXPECT_EQ(TextCodec::ansi1252().decode(text), std::wstring(text, text + std::string(text).size()))
            << text;
    }
}

TEST(TextCodecs, EscapesWhatThePageLacks) {
    const TextCodec& latin = TextCodec::ansi1252();
    EXPECT_FALSE(latin.canEncode(L'\u4E2D'));
    EXPECT_EQ(latin.encode(L"\u00E9\u4E2D"), "\xE9\\U+4E2D");
    EXPECT_EQ(latin.encode(L"\U0001F600"), "\\U+D83D\\U+DE00");
    EXPECT_EQ(latin.decode(latin.encode(L"\u0416\U0001F600x")), L"\u0416\U0001F600x");
    EXPECT_EQ(TextCodec::utf8().encode(L"\u4E2D\U0001F600"), "\xE4\xB8\xAD\xF0\x9F\x98\x80");
}

TEST(TextCodecs, BytesThatAreNoTextBecomeTheReplacementCharacter) {
    const TextCodec& utf8 = TextCodec::utf8();
    EXPECT_EQ(utf8.decode("a\xC3"), L"a\uFFFD");
    EXPECT_EQ(utf8.decode("\xC0\xAFz"), L"\uFFFD\uFFFDz") << "overlong";
    EXPECT_EQ(utf8.decode("\xE0\x80\xAF"), L"\uFFFD\uFFFD\uFFFD") << "overlong";
    EXPECT_EQ(utf8.decode("\xED\xA0\x80"), L"\uFFFD\uFFFD\uFFFD") << "surrogate";
    EXPECT_EQ(utf8.decode("\xF4\x90\x80\x80"), L"\uFFFD\uFFFD\uFFFD\uFFFD") << "beyond the last plane";
    EXPECT_EQ(utf8.decode("\xE9t\xE9"), L"\uFFFDt\uFFFD");
    EXPECT_EQ(codec("ANSI_936").decode("\xCD"), L"\uFFFD");
    EXPECT_EQ(codec("ANSI_936").decode("\xCD\"x"), L"\uFFFD\"x") << "the byte after a lone lead byte is kept";
    EXPECT_EQ(utf8.encode(std::wstring{static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000)}),
              "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
