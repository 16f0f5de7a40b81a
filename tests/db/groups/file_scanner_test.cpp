// Scanning whole drawings: their form, their records, and damage named by line and group code.
#include "host/db/groups/file_scanner.h"

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"
#include "tests/db/groups/group_test_support.h"

#include <gtest/gtest.h>

namespace {

using namespace korvex;
using namespace korvex::test;

const Pairs kLayerTable = inSection({{0, "TABLE"},
                                     {2, "LAYER"},
                                     {70, "1"},
                                     {0, "LAYER"},
                                     {5, "1F"},
                                     {2, "WALL"},
                                     {70, "0"},
                                     {62, "-7"},
                                     {290, "1"},
                                     {370, "-3"},
                                     {310, "00FF7A"},
                                     {1001, "ACAD"},
                                     {1004, "0102"},
                                     {1040, "1.5"},
                                     {1071, "33554687"},
                                     {0, "ENDTAB"}});

std::string binaryDrawing(int codeBytes) {
    const std::string text = textDrawing(kLayerTable);
    GroupFormat from;
    GroupFormat to;
    to.binary = true;
    to.codeBytes = codeBytes;
    GroupWriter out(to);
    out.append(binarySentinel());
    for (GroupCursor cursor(text, from); cursor.next();) {
        out.transcode(cursor);
    }
    return out.take();
}

std::vector<std::string> types(const Scan& scan) {
    std::vector<std::string> names;
    for (const FileRecord& record : scan.records) {
        names.emplace_back(record.type);
    }
    return names;
}

TEST(FileScanner, SplitsADrawingIntoRecordsThatJoinToItsBytes) {
    const std::vector<std::string> expected{"SECTION", "TABLE", "LAYER", "ENDTAB", "ENDSEC"};
    const std::string comment = "999\nmade by hand\n999\n\n";
    const std::string drawings[] = {
        textDrawing(kLayerTable),
        textDrawing(kLayerTable, "\r\n"),
        comment + textDrawing(kLayerTable),
        "\xEF\xBB\xBF" + textDrawing(kLayerTable),
        textDrawing(kLayerTable) + "\n\n \x1A",
        textDrawing(kLayerTable).substr(0, textDrawing(kLayerTable).size() - 1),
        binaryDrawing(1),
        binaryDrawing(2),
        binaryDrawing(2) + std::string("\0\0\x1A", 3),
    };
    for (const std::string& drawing : drawings) {
        const Scan scan(drawing);
        EXPECT_TRUE(scan.scanner.atEnd()) << ::testing::PrintToString(scan.error.text());
        EXPECT_EQ(types(scan), expected);
        EXPECT_EQ(scan.joined, drawing);
        EXPECT_EQ(scan.scanner.position(), drawing.size());
    }
    const std::string commented = comment + textDrawing(kLayerTable);
    const Scan scan(commented);
    EXPECT_EQ(scan.scanner.preamble(), comment);
    EXPECT_EQ(scan.records.at(2).line, 15u);
    EXPECT_EQ(scan.records.at(2).slice.substr(0, 8), "0\nLAYER\n");
    EXPECT_EQ(scan.scanner.trailer(), "0\nEOF\n");
}

TEST(FileScanner, FindsOutHowADrawingIsWritten) {
    const std::string padded = "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nLINE\r\n 62\r\n     1\r\n"
                               "  0\r\nENDSEC\r\n  0\r\nEOF\r\n";
    const Scan wide(padded);
    EXPECT_TRUE(wide.scanner.format().crlf);
    EXPECT_TRUE(wide.scanner.format().paddedCodes);
    EXPECT_TRUE(wide.scanner.format().paddedInts);
    const std::string plain = textDrawing(kLayerTable);
    const Scan narrow(plain);
    EXPECT_FALSE(narrow.scanner.format().crlf);
    EXPECT_FALSE(narrow.scanner.format().paddedCodes);
    EXPECT_FALSE(narrow.scanner.format().paddedInts);
    for (int codeBytes : {1, 2}) {
        const std::string bytes = binaryDrawing(codeBytes);
        const Scan binary(bytes);
        EXPECT_TRUE(binary.scanner.format().binary);
        EXPECT_EQ(binary.scanner.format().codeBytes, codeBytes);
    }
}

TEST(FileScanner, ChoosesTheCodecFromVersionAndCodePage) {
    struct Row {
        const char* version;
        const char* codePage;
        const char* text;
        const TextCodec* codec;
    };
    const TextCodec* utf8 = &TextCodec::utf8();
    const TextCodec* latin = &TextCodec::ansi1252();
    const Row rows[] = {
        {"AC1032", "ANSI_1252", "x", utf8},
        {"AC1021", "ANSI_936", "\xC4", utf8},
        {"AC1018", "ANSI_936", "x", TextCodec::find("ANSI_936")},
        {"AC1009", "dos850", "x", TextCodec::find("DOS850")},
        {"AC1015", "ANSI_1252", "Ma\xC3\x9F", latin},
        {"AC1009", "", "x", latin},
        {"AC2.10", "", "\xC4", latin},
        {"AC1009", "", "Ma\xC3\x9F", utf8},
        {"", "", "Ma\xC3\x9F", utf8},
        {"", "", "Ma\xDF", latin},
        {"AC1015", "klingon", "x", latin},
    };
    for (const Row& row : rows) {
        const std::string bytes = headerDrawing(row.version, row.codePage, row.text);
        const Scan scan(bytes);
        EXPECT_TRUE(scan.scanner.atEnd());
        EXPECT_EQ(scan.scanner.version(), row.version);
        EXPECT_EQ(scan.scanner.codePage(), row.codePage);
        EXPECT_EQ(scan.scanner.format().codec, row.codec)
            << row.version << ' ' << row.codePage << ' ' << row.text;
        EXPECT_EQ(scan.scanner.isCodePageKnown(), std::string(row.codePage) != "klingon");
    }
}

TEST(FileScanner, AByteOrderMarkOverridesTheCodePage) {
    const std::string bytes = "\xEF\xBB\xBF" + headerDrawing("AC1015", "ANSI_1252", "Ma\xC3\x9F");
    EXPECT_EQ(Scan(bytes).scanner.format().codec, &TextCodec::utf8());
}

TEST(FileScanner, ReadsWhatRealProgramsWrite) {
    const Pairs odd = inSection({{0, " LINE "},
                                 {999, "a comment"},
                                 {62, " 7 "},
                                 {62, "7.0"},
                                 {70, "\t256"},
                                 {10, "+1.5e+03"},
                                 {20, "nan"},
                                 {30, "-1.#IND"},
                                 {340, "Standard"},
                                 {5, ""},
                                 {1, ""},
                                 {-3, "inner code"},
                                 {85, "code of no known range"}});
    const std::string bytes = textDrawing(odd);
    const Scan scan(bytes);
    EXPECT_TRUE(scan.scanner.atEnd()) << ::testing::PrintToString(scan.error.text());
    EXPECT_EQ(scan.records.at(1).type, "LINE");
    EXPECT_EQ(scan.joined, bytes);
}

struct Damage {
    const char* name;
    std::string bytes;
    std::size_t line;
    int code;
    const wchar_t* words;
};

std::vector<Damage> damages() {
    const std::string start = "0\nSECTION\n2\nENTITIES\n";
    const std::string end = "0\nENDSEC\n0\nEOF\n";
    return {
        {"value missing", start + "0\nLINE\n8\n", 7, 8, L"ends before the value"},
        {"value missing, no line end", start + "0\nLINE\n 62", 7, 62, L"ends before the value"},
        {"cut inside a code", start + "0\nLINE\nxy", 7, -1, L"expected a group code, found \"xy\""},
        {"code is a word", start + "LINE\n8\n0\n" + end, 5, -1, L"expected a group code, found \"LINE\""},
        {"code line is empty", start + "\n" + end, 5, -1, L"expected a group code, found \"\""},
        {"code out of range", start + "0\nLINE\n1072\nx\n" + end, 7, -1, L"no group code \"1072\""},
        {"code below range", start + "0\nLINE\n-6\nx\n" + end, 7, -1, L"no group code \"-6\""},
        {"code with fraction", start + "0\nLINE\n8.5\nx\n" + end, 7, -1,
         L"expected a group code, found \"8.5\""},
        {"whole number expected", start + "0\nLINE\n62\nred\n" + end, 8, 62,
         L"expected a number, found \"red\""},
        {"real expected", start + "0\nLINE\n10\n1,5\n" + end, 8, 10, L"expected a number, found \"1,5\""},
        {"number with rest", start + "0\nLINE\n10\n1.5 2\n" + end, 8, 10,
         L"expected a number, found \"1.5 2\""},
        {"exponent empty", start + "0\nLINE\n10\n1.5E\n" + end, 8, 10, L"expected a number, found \"1.5E\""},
        {"number empty", start + "0\nLINE\n10\n\n" + end, 8, 10, L"expected a number, found \"\""},
        {"nan in a whole number", start + "0\nLINE\n70\nnan\n" + end, 8, 70, L"expected a number"},
        {"no ENDSEC at EOF", start + "0\nLINE\n0\nEOF\n", 7, 0,
         L"section of line 1, whose ENDSEC is missing"},
        {"no ENDSEC at SECTION", start + "0\nSECTION\n2\nOBJECTS\n" + end, 5, 0,
         L"section of line 1, whose ENDSEC"},
        {"ENDSEC twice", start + "0\nENDSEC\n" + end, 7, 0, L"ENDSEC stands outside"},
        {"record outside", start + "0\nENDSEC\n0\nLINE\n0\nEOF\n", 7, 0, L"\"LINE\" stands outside"},
        {"section without name", "0\nSECTION\n0\nENDSEC\n0\nEOF\n", 1, 0, L"no name"},
        {"record without type", start + "0\n\n" + end, 5, 0, L"no type"},
        {"begins with a value", "2\nENTITIES\n" + end, 1, 2, L"must begin with a SECTION"},
        {"no EOF", start + "0\nENDSEC\n", 6, -1, L"without EOF"},
        {"no EOF, cut in a section", start + "0\nLINE\n8\n0\n", 8, -1, L"without EOF"},
        {"comments only", "999\nhello\n", 2, -1, L"comments only"},
    };
}

TEST(FileScanner, NamesDamageByLineAndCode) {
    for (const Damage& damage : damages()) {
        SCOPED_TRACE(damage.name);
        Scan scan(damage.bytes);
        EXPECT_FALSE(scan.scanner.atEnd());
        EXPECT_EQ(scan.error.line, damage.line);
        EXPECT_EQ(scan.error.code, damage.code);
        EXPECT_FALSE(scan.error.binary);
        EXPECT_NE(scan.error.message.find(damage.words), std::wstring::npos)
            << ::testing::PrintToString(scan.error.message);
        if (scan.detected) {
            FileRecord record;
            DrawingError again;
            EXPECT_FALSE(scan.scanner.next(record, again)) << "damage stays";
            EXPECT_EQ(again.message, scan.error.message);
        }
    }
}

TEST(FileScanner, ErrorTextGivesPlaceAndCode) {
    const std::string text = "0\nSECTION\n2\nENTITIES\n0\nLINE\n62\nabc\n0\nENDSEC\n0\nEOF\n";
    EXPECT_EQ(Scan(text).error.text().rfind(L"line 8, group 62: expected a number, found \"abc\".", 0), 0u);
    std::string binary = binaryDrawing(2);
    binary.resize(24);
    const Scan cut(binary);
    EXPECT_TRUE(cut.error.binary);
    EXPECT_EQ(cut.error.text().rfind(L"byte offset 0x16, group 0: ", 0), 0u)
        << ::testing::PrintToString(cut.error.text());
}

TEST(FileScanner, SaysWhatAFileIsThatIsNoDrawing) {
    struct Row {
        std::string bytes;
        const wchar_t* words;
    };
    const Row rows[] = {
        {"", L"empty"},
        {" \r\n\r\n", L"nothing but blanks"},
        {"AC1027" + std::string(200, '\0'), L"(DWG)"},
        {"\x89PNG\r\n\x1A\n", L"PNG"},
        {"%PDF-1.4\n", L"PDF"},
        {"<?xml version=\"1.0\"?>\n", L"XML"},
        {std::string("\x01\x02\0\x03\n", 5), L"unknown kind"},
        {"0\rSECTION\r2\rHEADER\r", L"carriage return alone"},
        {"hello\nworld\n",
         L"a text without group codes, not a drawing. Choose a drawing with group codes (DXF)"},
        {"#!/bin/sh\necho 0\n", L"a script of commands, not a drawing"},
        {"hello\n0\nSECTION\n", L"expected a group code"},
        {binarySentinel(), L"ends after its sentinel"},
    };
    for (const Row& row : rows) {
        const Scan scan(row.bytes);
        EXPECT_FALSE(scan.detected);
        EXPECT_NE(scan.error.message.find(row.words), std::wstring::npos)
            << ::testing::PrintToString(scan.error.message);
    }
}

TEST(FileScanner, WhatFollowsEofIsKeptAndTold) {
    for (const std::string& whole : {binaryDrawing(2), textDrawing(kLayerTable)}) {
        const std::string bytes = whole + "more\n0\nLINE\n";
        const Scan scan(bytes);
        EXPECT_TRUE(scan.scanner.atEnd()) << ::testing::PrintToString(scan.error.message);
        EXPECT_EQ(scan.joined, bytes);
        EXPECT_NE(scan.scanner.warning().message.find(L"data follow after EOF: \"more"), std::wstring::npos);
        EXPECT_GT(scan.scanner.warning().line, 0U);
    }
    EXPECT_TRUE(Scan(textDrawing(kLayerTable) + "\n \x1A").scanner.warning().message.empty());
}

TEST(FileScanner, EveryCutOfADrawingIsDamageWithAPlaceInIt) {
    for (const std::string& whole : {binaryDrawing(1), binaryDrawing(2), textDrawing(kLayerTable, "\r\n")}) {
        // Cuts that only take the last line end, or part of it, leave a whole drawing.
        const std::size_t needed = whole[0] == '0' ? whole.size() - 2 : whole.size();
        for (std::size_t size = 0; size < needed; ++size) {
            const std::vector<char> exact(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            FileScanner scanner(std::string_view(exact.data(), size));
            DrawingError error;
            FileRecord record;
            if (scanner.detect(error)) {
                while (scanner.next(record, error)) {
                }
            }
            EXPECT_FALSE(scanner.atEnd()) << size;
            EXPECT_FALSE(error.message.empty()) << size;
            EXPECT_LE(error.line, whole.size()) << size;
        }
    }
}

TEST(FileScanner, DamagedBinaryDrawingsNameTheOffset) {
    const std::string whole = binaryDrawing(2);
    const std::size_t layer = whole.find("LAYER", whole.find("LAYER") + 1) - 2;
    std::string wild = whole;
    wild.replace(layer, 2, "\x0A\x14");  // 0x140A = 5130
    const Scan scan(wild);
    EXPECT_EQ(scan.error.line, layer);
    EXPECT_EQ(scan.error.code, 5130);
    EXPECT_NE(scan.error.message.find(L"no group code 5130"), std::wstring::npos);

    const std::string noEof = whole.substr(0, whole.size() - 6);
    const Scan open(noEof);
    EXPECT_EQ(open.error.line, noEof.size());
    EXPECT_NE(open.error.message.find(L"without EOF"), std::wstring::npos);
}

TEST(FileScanner, CountsGroupsOfATextDrawing) {
    EXPECT_EQ(countGroups(textDrawing(kLayerTable)), kLayerTable.size());
    EXPECT_EQ(countGroups(textDrawing(kLayerTable, "\r\n")), kLayerTable.size());
    EXPECT_EQ(countGroups(""), 0u);
}

}  // namespace
