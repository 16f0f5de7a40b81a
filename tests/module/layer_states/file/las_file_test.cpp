// Layer-state files: the bytes of one, the spellings that are read, and what is refused.
#include "layer_states/file/las_reader.h"
#include "layer_states/file/las_writer.h"

#include "sdk/hxtext.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

constexpr int kWestern = 1252;
constexpr int kChinese = 936;

/// A file from its lines.
std::string fileOf(const char* lines, const char* lineEnd = "\r\n") {
    return QString(lines).split(' ').replaceInStrings("_", " ").join(lineEnd).append(lineEnd).toStdString();
}

const char kHeader[] =
    "0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 evening 91 2047 301 late_light 290 0 302 a-wall";

KvLasState read(const std::string& bytes) {
    KvLasFailure failure;
    KvLasState state = readLas(bytes, failure);
    EXPECT_TRUE(state) << "line " << failure.line << ", kind " << failure.kind;
    return state;
}

const HxLyStateEntry& entry(const KvLasState& state, int at = 0) {
    static const HxLyStateEntry none;
    const bool isThere = state && at < state.entries->GetSize();
    EXPECT_TRUE(isThere) << at;
    return isThere ? state.entries->GetAt(at)->values() : none;
}

/// What the entry of a file with these entry lines says.
HxLyStateEntry entryOf(const std::string& lines, const char* header = kHeader) {
    const KvLasState state = read(fileOf((header + (" " + lines)).c_str()));
    return entry(state);
}

TEST(LasWriter, WritesAStateItemByItem) {
    CKvLayerState state;
    state.SetLayerStateName(L"evening");
    state.SetLayerStateMake(0x87FF);
    state.SetDescription(L"late\r\nlight\n");
    state.SetSpace(HxLyState::kExternalReference);
    state.SetCurrentLayerName(L"A");
    KvLasWriter writer(kWestern);
    writer.begin(state);
    HxLyStateEntry layer;
    layer.layer = L"A";
    layer.flags = 9;
    layer.linetype = L"Continuous";
    writer.add(layer);
    layer.layer = L"B";
    layer.colorIndex = 12;
    layer.lineweight = 25;
    layer.plotStyle = L"Color_12";
    layer.trueColor = 0x0000FF;
    layer.transparency = 0;
    writer.add(layer);
    layer.colorBook = L"DIC$1";
    layer.transparency = 0x180;
    writer.add(layer);
    EXPECT_EQ(writer.bytes(),
              "  0\r\nLAYERSTATEDICTIONARY\r\n  0\r\nLAYERSTATE\r\n  1\r\nevening\r\n 91\r\n34815\r\n"
              "301\r\nlate light \r\n290\r\n1\r\n302\r\nA\r\n"
              "  8\r\nA\r\n 90\r\n9\r\n 62\r\n7\r\n370\r\n-3\r\n  6\r\nContinuous\r\n  2\r\n\r\n"
              "440\r\n0\r\n"
              "  8\r\nB\r\n 90\r\n9\r\n 62\r\n12\r\n370\r\n25\r\n  6\r\nContinuous\r\n  2\r\nColor_12\r\n"
              " 92\r\n255\r\n440\r\n33554432\r\n"
              "  8\r\nB\r\n 90\r\n9\r\n 62\r\n12\r\n370\r\n25\r\n  6\r\nContinuous\r\n  2\r\nColor_12\r\n"
              " 92\r\n255\r\n300\r\nDIC$1\r\n440\r\n33554560\r\n");
    EXPECT_TRUE(writer.brokenName().empty());
    EXPECT_EQ(writer.changedNames(), std::vector<CStdStr<wchar_t>>{L"late\r\nlight\n"});
}

TEST(LasWriter, KnowsTheNamesThatDoNotComeBack) {
    const auto changed = [](int codePage) {
        KvLasWriter writer(codePage);
        CKvLayerState state;
        state.SetLayerStateName(L"abend");
        state.SetCurrentLayerName(L"SITE\u00D6|C-ROAD");
        writer.begin(state);
        HxLyStateEntry layer;
        for (const wchar_t* const name :
             {L"W\u00E4nde", L"\u5899", L"SITE\u00D6|C-ROAD", L"plain ", L" plain"}) {
            layer.layer = name;
            layer.linetype = L"\u5899";
            writer.add(layer);
        }
        return writer.changedNames();
    };
    using Names = std::vector<CStdStr<wchar_t>>;
    EXPECT_EQ(changed(kWestern),
              (Names{L"SITE\u00D6|C-ROAD", L"W\u00E4nde", L"\u5899", L"plain ", L" plain"}));
    EXPECT_EQ(changed(kChinese), (Names{L"SITE\u00D6|C-ROAD", L"W\u00E4nde", L"plain ", L" plain"}))
        << "the code page lacks the umlauts";
}

TEST(LasWriter, RefusesLineBreaksInNames) {
    for (const std::wstring& name : {std::wstring(L"A\nB"), std::wstring(L"A\r"), std::wstring(L"A\0B", 3)}) {
        KvLasWriter writer(kWestern);
        HxLyStateEntry layer;
        layer.linetype = name;
        writer.add(layer);
        EXPECT_EQ(writer.brokenName(), name);
    }
}

TEST(LasReader, ReadsWhatTheWriterWrites) {
    CKvLayerState state;
    state.SetLayerStateName(L"evening");
    state.SetLayerStateMake(0x8020);
    state.SetDescription(L"");
    state.SetSpace(HxLyState::kModel);
    state.SetCurrentLayerName(L"b");
    std::vector<HxLyStateEntry> layers(3);
    layers[0].layer = L"A";
    layers[0].flags = 0x3F;
    layers[1] = {L"B", 8, 255, 0xFFFFFF, L"BOOK A$no. 1", L"DASHED", 211, L"Normal", 0};
    const std::wstring longest(40, L'\u5899');  // longer than any line before
    layers[2] = {longest, 0, 1, 0, L"", L"", -1, L"", 254};
    KvLasWriter writer(kChinese);
    writer.begin(state);
    for (const HxLyStateEntry& layer : layers) {
        writer.add(layer);
    }
    const KvLasState back = read(writer.bytes());
    ASSERT_TRUE(back);
    EXPECT_EQ(back.state->GetLayerStateName(), L"evening");
    EXPECT_EQ(back.state->GetLayerStateMake(), 0x8020);
    EXPECT_EQ(back.state->GetDescription(), L"");
    EXPECT_EQ(back.state->GetSpace(), HxLyState::kModel);
    EXPECT_EQ(back.state->IsLasFileType(), 1);
    ASSERT_EQ(back.entries->GetSize(), 3);
    for (int i = 0; i < 3; ++i) {
        const HxLyStateEntry& one = layers[static_cast<std::size_t>(i)];
        const HxLyStateEntry& other = entry(back, i);
        EXPECT_EQ(other.layer, one.layer);
        EXPECT_EQ(other.flags, one.flags) << i;
        EXPECT_EQ(other.colorIndex, one.colorIndex) << i;
        EXPECT_EQ(other.trueColor, one.trueColor) << i;
        EXPECT_EQ(other.colorBook, one.colorBook) << i;
        EXPECT_EQ(other.linetype, one.linetype) << i;
        EXPECT_EQ(other.lineweight, one.lineweight) << i;
        EXPECT_EQ(other.plotStyle, one.plotStyle) << i;
        EXPECT_EQ(other.transparency, one.transparency) << i;
        EXPECT_EQ(back.entries->GetAt(i)->GetLayerIndex(), i);
        EXPECT_EQ(back.entries->GetAt(i)->GetCurrentLayer(), i == 1) << i;
    }
}

TEST(LasReader, AcceptsOtherSpellings) {
    const std::string body = std::string(kHeader) + " 8 A-WALL 90 9 440 33554560 62 3 92 255 70 1 6 DASHED";
    const auto padded = [&](QString text) {
        return text.replace("\n8\n", "\n  8  \n").replace("\n0\n", "\n  000\n").replace("91\n", " 91 \n");
    };
    const std::string plain = fileOf(body.c_str(), "\n");
    const std::string variants[] = {
        plain,
        fileOf(body.c_str()),
        "\xEF\xBB\xBF" + plain,
        plain.substr(0, plain.size() - 1),
        plain + "\n",
        plain + "\n\n",
        plain + "  2",
        padded(QString::fromStdString(plain)).toStdString(),
        QString::fromStdString(plain).replace("LAYERSTATE", "LayerState").toStdString(),
        QString::fromStdString(plain).replace("301\nlate light\n", "").toStdString(),
        QString::fromStdString(plain)
            .replace("302\na-wall\n", "302\na-wall\n90\n1\n6\nHIDDEN\n")
            .toStdString(),
    };
    for (const std::string& bytes : variants) {
        const KvLasState state = read(bytes);
        ASSERT_TRUE(state) << bytes;
        EXPECT_EQ(state.state->GetLayerStateName(), L"evening");
        EXPECT_EQ(state.state->GetLayerStateMake(), 2047) << bytes;
        EXPECT_EQ(state.state->GetDescription().empty(), bytes.find("301") == bytes.npos);
        ASSERT_EQ(state.entries->GetSize(), 1) << bytes;
        EXPECT_EQ(entry(state).flags, 9) << bytes;
        EXPECT_EQ(entry(state).transparency, 128);
        EXPECT_EQ(entry(state).trueColor, 255);
        EXPECT_EQ(entry(state).linetype, L"DASHED");
        EXPECT_EQ(state.entries->GetAt(0)->GetCurrentLayer(), 1) << "in another case";
    }
}

TEST(LasReader, AnEntryTakesNothingOverFromTheOneBefore) {
    const KvLasState state = read(fileOf(
        (std::string(kHeader) + " 8 A 90 9 62 3 370 25 6 DASHED 2 Color_3 92 255 300 BOOK$1 440 33554560 8 B")
            .c_str()));
    const HxLyStateEntry& layer = entry(state, 1);
    const HxLyStateEntry initial;
    EXPECT_EQ(layer.layer, L"B");
    EXPECT_EQ(layer.flags, initial.flags);
    EXPECT_EQ(layer.colorIndex, HxCmColor::kIndexWhite);
    EXPECT_EQ(layer.lineweight, initial.lineweight);
    EXPECT_EQ(layer.linetype + layer.plotStyle + layer.colorBook, L"");
    EXPECT_EQ(layer.trueColor, -1);
    EXPECT_EQ(layer.transparency, 255);
}

TEST(LasReader, TakesNumbersAsTheyBegin) {
    EXPECT_EQ(entryOf("8 A 90 12abc").flags, 12);
    EXPECT_EQ(entryOf("8 A 90 abc").flags, 0);
    EXPECT_EQ(entryOf("8 A 90 +5").flags, 5);
    EXPECT_EQ(entryOf("8 A 370 -3").lineweight, -3);
    EXPECT_EQ(entryOf("8 A 370 99999999999999999999").lineweight, 2147483647);
    EXPECT_EQ(entryOf("8 A 370 -99999999999999999999").lineweight, -2147483647 - 1);
    EXPECT_EQ(entryOf("8 A 440 0").transparency, 255);
    EXPECT_EQ(entryOf("8 A 440 33554432").transparency, 0);
    EXPECT_EQ(entryOf("8 A 440 50331776").transparency, 255) << "another method";
}

TEST(LasReader, TakesColorsByTheirMethodAndTheMask) {
    EXPECT_EQ(entryOf("8 A 92 -1").trueColor, -1);
    EXPECT_EQ(entryOf("8 A 92 66051").trueColor, 0x010203);
    EXPECT_EQ(entryOf("8 A 92 -1023475712").trueColor, 0x0000FF) << "0xC2FF0000 is red";
    EXPECT_EQ(entryOf("8 A 92 3254845955").trueColor, 0x030201) << "0xC2010203, without sign";
    EXPECT_EQ(entryOf("8 A 92 -1023410175").trueColor, -1) << "0xC3000001 is an index";
    const char withoutColors[] = "0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 evening 91 2015 290 1 302 A";
    const HxLyStateEntry layer = entryOf("8 A 62 3 92 255 300 BOOK$1", withoutColors);
    EXPECT_EQ(layer.colorIndex, 7);
    EXPECT_EQ(layer.trueColor, 0xFFFFFF);
    EXPECT_EQ(layer.colorBook, L"");
    EXPECT_EQ(entryOf("8 A 62 3", withoutColors).trueColor, -1);
}

TEST(LasReader, LeavesNothingHalfMade) {
    struct Row {
        const char* lines;
        KvLasFailure::Kind kind;
        int line;
    };
    const Row rows[] = {
        {"", KvLasFailure::otherLine, 1},
        {"1 LAYERSTATEDICTIONARY", KvLasFailure::otherLine, 1},
        {"0 SECTION", KvLasFailure::otherLine, 2},
        {"0 LAYERSTATEDICTIONARY 0 LAYER", KvLasFailure::otherLine, 4},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1", KvLasFailure::endsEarly, 5},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 _ 91 7", KvLasFailure::noName, 6},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 a 91 7 302 A 290 1", KvLasFailure::otherLine, 9},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 a 91 7 301 b 302 A", KvLasFailure::otherLine, 11},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 a 91 7 290 1 302", KvLasFailure::endsEarly, 11},
        {"0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 a 91 7 290 1 8x A", KvLasFailure::otherLine, 11},
    };
    for (const Row& row : rows) {
        KvLasFailure failure;
        EXPECT_FALSE(readLas(fileOf(row.lines), failure)) << row.lines;
        EXPECT_EQ(failure.kind, row.kind) << row.lines;
        EXPECT_EQ(failure.line, row.line) << row.lines;
        EXPECT_EQ(failure.text.empty(), row.kind != KvLasFailure::otherLine);
    }
    KvLasFailure failure;
    EXPECT_FALSE(readLas(fileOf(kHeader) + std::string("8\nA\0\n", 5), failure));
    EXPECT_EQ(failure.kind, KvLasFailure::nullCharacter);
    EXPECT_EQ(failure.line, 16);
    EXPECT_FALSE(readLas("", failure));
    EXPECT_EQ(failure.kind, KvLasFailure::endsEarly);
}

TEST(LasReader, SpacesAreModelOrLayoutAndLayersHaveNames) {
    const auto spaceOf = [](const char* space) {
        const std::string lines = "0 LAYERSTATEDICTIONARY 0 LAYERSTATE 1 a 91 7 290 ";
        return read(fileOf((lines + space + " 302 A").c_str())).state->GetSpace();
    };
    EXPECT_EQ(spaceOf("0"), HxLyState::kModel);
    EXPECT_EQ(spaceOf("1"), HxLyState::kLayout);
    EXPECT_EQ(spaceOf("2"), HxLyState::kLayout) << "a reference's would never be stored";
    const KvLasState state = read(fileOf((std::string(kHeader) + " 8 _ 90 1 8 B").c_str()));
    ASSERT_EQ(state.entries->GetSize(), 1);
    EXPECT_EQ(entry(state).layer, L"B");
}

}  // namespace
