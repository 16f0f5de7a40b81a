// What the writer writes the cursor reads back, in every form; from one form to another values stay the same.
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace {

using namespace korvex;

GroupFormat textForm(bool crlf, bool padded, const TextCodec& codec = TextCodec::utf8()) {
    GroupFormat format;
    format.crlf = crlf;
    format.paddedCodes = padded;
    format.paddedInts = padded;
    format.codec = &codec;
    return format;
}

GroupFormat binaryForm(int codeBytes, const TextCodec& codec = TextCodec::utf8()) {
    GroupFormat format;
    format.binary = true;
    format.codeBytes = codeBytes;
    format.codec = &codec;
    return format;
}

const GroupFormat kForms[] = {textForm(false, true), textForm(true, false), binaryForm(1), binaryForm(2)};

struct Value {
    int code = 0;
    long long integer = 0;
    double real = 0;
    std::wstring text;
    std::string chunk;
};

/// Random groups of every type; the seed is named in every failure.
class RandomGroups {
public:
    explicit RandomGroups(unsigned seed) : m_random(seed) {}

    Value next() {
        constexpr int kCodes[] = {1,   2,   5,   8,   10,   40,   62,   70,   90,   102, 105,
                                  140, 160, 170, 210, 270,  280,  290,  300,  310,  330, 360,
                                  370, 390, 420, 440, 1000, 1004, 1005, 1010, 1070, 1071};
        Value value;
        value.code = kCodes[pick(std::size(kCodes))];
        switch (groupType(value.code)) {
        case GroupType::int16: value.integer = static_cast<std::int16_t>(m_random()); break;
        case GroupType::int32: value.integer = static_cast<std::int32_t>(m_random()); break;
        case GroupType::int64:
        case GroupType::handle: value.integer = static_cast<long long>(m_random() >> pick(64)); break;
        case GroupType::boolean: value.integer = static_cast<long long>(pick(2)); break;
        case GroupType::real: value.real = randomReal(); break;
        case GroupType::binary: value.chunk = randomChunk(); break;
        case GroupType::text: value.text = randomText(); break;
        }
        return value;
    }

private:
    std::size_t pick(std::size_t count) { return static_cast<std::size_t>(m_random() % count); }

    double randomReal() {
        constexpr double kSpecial[] = {0.0,  -0.0, 1.0,      0.1,     1e20,   -1e-20, 1e300, 5e-324,
                                       1e15, 1e16, 123456.0, 0.00001, 2.5e-7, 1e5,    -1e-5, 9e15};
        if (pick(3) == 0) {
            return kSpecial[pick(std::size(kSpecial))];
        }
        const std::uint64_t bits = m_random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? value : 0.5;
    }

    std::string randomChunk() {
        std::string chunk(pick(255), '\0');
        for (char& c : chunk) {
            c = static_cast<char>(m_random());
        }
        return chunk;
    }

    std::wstring randomText() {
        constexpr std::wstring_view kCharacters =
            L"AZaz09 *{}|$_-^\\\u00C4\u0416\u4E2D\uAC00\U0001F600\uFFFD";
        std::wstring text(pick(40), L' ');
        for (wchar_t& c : text) {
            c = kCharacters[pick(kCharacters.size())];
        }
        return text;
    }

    std::mt19937_64 m_random;
};

void write(GroupWriter& out, const Value& value) {
    switch (groupType(value.code)) {
    case GroupType::real: out.real(value.code, value.real); break;
    case GroupType::text: out.text(value.code, value.text); break;
    case GroupType::binary: out.chunk(value.code, value.chunk); break;
    case GroupType::handle: out.handle(value.code, static_cast<std::uint64_t>(value.integer)); break;
    default: out.integer(value.code, value.integer); break;
    }
}

void expectSame(const GroupCursor& cursor, const Value& value) {
    ASSERT_EQ(cursor.code(), value.code);
    switch (groupType(value.code)) {
    case GroupType::real:
        EXPECT_EQ(cursor.asReal(), value.real);
        EXPECT_EQ(std::signbit(cursor.asReal()), std::signbit(value.real));
        break;
    case GroupType::text: EXPECT_EQ(cursor.asText(), value.text); break;
    case GroupType::binary: EXPECT_EQ(cursor.asChunk(), value.chunk); break;
    case GroupType::handle: EXPECT_EQ(cursor.asHandle(), static_cast<std::uint64_t>(value.integer)); break;
    default: EXPECT_EQ(cursor.asInteger(), value.integer) << value.code; break;
    }
}

TEST(GroupRoundTrip, RandomGroupsReadBackInEveryForm) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        for (const GroupFormat& form : kForms) {
            SCOPED_TRACE("seed " + std::to_string(seed) + (form.binary ? " binary" : " text"));
            RandomGroups random(seed);
            std::vector<Value> values;
            GroupWriter out(form);
            for (int i = 0; i < 200; ++i) {
                values.push_back(random.next());
                write(out, values.back());
            }
            GroupCursor cursor(out.data(), form);
            std::string joined;
            for (const Value& value : values) {
                ASSERT_TRUE(cursor.next());
                expectSame(cursor, value);
                EXPECT_EQ(cursor.endOffset() - cursor.offset(), cursor.bytes().size());
                joined += cursor.bytes();
            }
            EXPECT_FALSE(cursor.next());
            EXPECT_FALSE(cursor.malformed());
            EXPECT_EQ(joined, out.data());
        }
    }
}

TEST(GroupRoundTrip, TranscodingBetweenFormsKeepsCodesAndValues) {
    for (unsigned seed = 100; seed < 110; ++seed) {
        for (const GroupFormat& from : kForms) {
            for (const GroupFormat& to : kForms) {
                SCOPED_TRACE("seed " + std::to_string(seed));
                RandomGroups random(seed);
                std::vector<Value> values(60);
                GroupWriter source(from);
                for (Value& value : values) {
                    value = random.next();
                    write(source, value);
                }
                GroupWriter target(to);
                for (GroupCursor cursor(source.data(), from); cursor.next();) {
                    target.transcode(cursor);
                }
                GroupCursor cursor(target.data(), to);
                for (const Value& value : values) {
                    ASSERT_TRUE(cursor.next());
                    expectSame(cursor, value);
                }
                EXPECT_FALSE(cursor.next());
            }
        }
    }
}

TEST(GroupRoundTrip, TextFormIsSpelledAsDrawingsSpellIt) {
    const GroupFormat padded = textForm(true, true);
    GroupWriter out(padded);
    out.text(0, L"LAYER");
    out.handle(5, 0x1AF);
    out.integer(62, -7);
    out.integer(420, 255);
    out.integer(160, 12);
    out.integer(290, 1);
    out.real(40, 0);
    out.real(40, 1e20);
    out.real(40, 100000);
    out.real(1040, -2.5e-6);
    out.chunk(310, std::string("\x00\xAB\x7F", 3));
    out.integer(1071, 0x020000FF);
    EXPECT_EQ(out.data(), "  0\r\nLAYER\r\n  5\r\n1AF\r\n 62\r\n    -7\r\n420\r\n      255\r\n"
                          "160\r\n                12\r\n290\r\n     1\r\n 40\r\n0.0\r\n 40\r\n1.0E+20\r\n"
                          " 40\r\n100000.0\r\n1040\r\n-2.5E-06\r\n310\r\n00AB7F\r\n1071\r\n 33554687\r\n");
}

TEST(GroupRoundTrip, BinaryFormHasTheBytesThatDrawingsHave) {
    const GroupFormat wide = binaryForm(2);
    GroupWriter out(wide);
    out.text(8, L"0");
    out.integer(70, -2);
    out.integer(290, 1);
    out.real(10, 1.0);
    out.chunk(1004, "ab");
    EXPECT_EQ(out.data(), std::string("\x08\0"
                                      "0\0"
                                      "\x46\0\xFE\xFF"
                                      "\x22\x01\x01"
                                      "\x0A\0\0\0\0\0\0\0\xF0\x3F"
                                      "\xEC\x03\x02"
                                      "ab",
                                      26));
    const GroupFormat r12 = binaryForm(1);
    GroupWriter old(r12);
    old.text(8, L"0");
    old.integer(1070, 3);
    EXPECT_EQ(old.data(), std::string("\x08"
                                      "0\0"
                                      "\xFF\x2E\x04\x03\0",
                                      8));
}

TEST(GroupRoundTrip, NumbersAreReadTolerantly) {
    struct Row {
        const char* text;
        long long integer;
        double real;
    };
    const Row rows[] = {
        {"  7 ", 7, 7},
        {"+3", 3, 3},
        {"\t-12", -12, -12},
        {"2.9", 2, 2.9},
        {"-1.5E+2", -150, -150},
        {".5", 0, 0.5},
        {"5.", 5, 5},
        {"", 0, 0},
        {"abc", 0, 0},
        {"1,5", 0, 0},
        {"99999999999999999999", std::numeric_limits<long long>::max(), 1e20},
        {"1e-999", 0, 0},
        {"+-1", 0, 0},
    };
    const GroupFormat form = textForm(false, false);
    for (const Row& row : rows) {
        const std::string slice = std::string("70\n") + row.text + "\n";
        GroupCursor cursor(slice, form);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asInteger(), row.integer) << row.text;
        EXPECT_EQ(cursor.asReal(), row.real) << row.text;
    }
    for (const char* text : {"nan", "-nan(ind)", "1.#QNAN"}) {
        const std::string slice = std::string("40\n") + text + "\n";
        GroupCursor cursor(slice, form);
        ASSERT_TRUE(cursor.next());
        EXPECT_TRUE(std::isnan(cursor.asReal())) << text;
        EXPECT_EQ(cursor.asInteger(), 0) << text;
    }
}

TEST(GroupRoundTrip, NumbersKeepTheirSpellingFromTextToText) {
    const GroupFormat form = textForm(false, false);
    const GroupFormat other = textForm(true, true);
    const std::string slice = "70\n7.0\n70\n7\n40\n2.50\n";
    GroupWriter out(other);
    for (GroupCursor cursor(slice, form); cursor.next();) {
        out.transcode(cursor);
    }
    EXPECT_EQ(out.data(), " 70\r\n7.0\r\n 70\r\n     7\r\n 40\r\n2.50\r\n");
}

TEST(GroupRoundTrip, HandlesThatAreNoneAreZeroAndKeepTheirText) {
    const GroupFormat form = textForm(false, false);
    const std::string slice = "5\n 1af \n340\nStandard\n5\n\n330\n123456789ABCDEF01\n";
    GroupCursor cursor(slice, form);
    const std::uint64_t handles[] = {0x1AF, 0, 0, 0};
    for (std::uint64_t handle : handles) {
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asHandle(), handle);
    }
    const GroupFormat binary = binaryForm(2);
    GroupWriter out(binary);
    GroupCursor again(slice, form);
    again.next();
    again.next();
    out.transcode(again);
    GroupCursor copied(out.data(), binary);
    ASSERT_TRUE(copied.next());
    EXPECT_EQ(copied.asText(), L"Standard");
}

TEST(GroupRoundTrip, TextCannotBreakTheStructure) {
    for (const GroupFormat& form : kForms) {
        GroupWriter out(form);
        out.text(1, std::wstring(L"a\r\nb\nc\rd\0e", 10));
        out.text(1, L"next");
        GroupCursor cursor(out.data(), form);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asText(), form.binary ? L"a\r\nb\nc\rd^@e" : L"a^Jb^Jc^Jd^@e");
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asText(), L"next");
        EXPECT_FALSE(cursor.next());
    }
}

TEST(GroupRoundTrip, AWriterPutsValuesIntoTheTypeOfTheCode) {
    for (const GroupFormat& form : kForms) {
        GroupWriter out(form);
        out.integer(40, 3);
        out.real(70, 2.0);
        out.text(62, L"5");
        out.integer(330, 0x2A);
        out.chunk(310, std::string(300, 'x'));
        GroupCursor cursor(out.data(), form);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asReal(), 3.0);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asInteger(), 2);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asInteger(), 5);
        ASSERT_TRUE(cursor.next());
        EXPECT_EQ(cursor.asHandle(), 0x2Au);
        std::string chunk;
        while (cursor.next()) {
            EXPECT_EQ(cursor.code(), 310);
            chunk += cursor.asChunk();
        }
        EXPECT_EQ(chunk, std::string(300, 'x'));
    }
}

TEST(GroupRoundTrip, ChangingTheCodecKeepsTheText) {
    const GroupFormat gbk = textForm(false, true, *TextCodec::find("ANSI_936"));
    const GroupFormat latin = binaryForm(2, TextCodec::ansi1252());
    GroupWriter source(gbk);
    source.text(2, L"\u56FE\u5C42 A");
    GroupWriter target(latin);
    GroupCursor cursor(source.data(), gbk);
    ASSERT_TRUE(cursor.next());
    target.transcode(cursor);
    GroupCursor back(target.data(), latin);
    ASSERT_TRUE(back.next());
    EXPECT_EQ(back.raw(), "\\U+56FE\\U+5C42 A");
    EXPECT_EQ(back.asText(), L"\u56FE\u5C42 A");
}

TEST(GroupRoundTrip, ACutSliceEndsTheCursorWithoutReadingOn) {
    for (const GroupFormat& form : kForms) {
        RandomGroups random(7);
        GroupWriter out(form);
        for (int i = 0; i < 40; ++i) {
            write(out, random.next());
        }
        for (std::size_t size = 0; size < out.data().size(); ++size) {
            const std::vector<char> exact(out.data().begin(),
                                          out.data().begin() + static_cast<std::ptrdiff_t>(size));
            const std::string_view slice(exact.data(), exact.size());
            GroupCursor cursor(slice, form);
            std::size_t read = 0;
            while (cursor.next()) {
                read += cursor.bytes().size();
            }
            EXPECT_EQ(cursor.malformed(), read != size);
        }
    }
}

}  // namespace
