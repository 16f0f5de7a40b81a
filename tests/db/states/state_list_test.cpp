// Lists for records of layer states.
#include "sdk/hxtext.h"
#include "tests/db/states/states_support.h"

namespace korvex::test {

namespace {

/// "0 XRECORD | 102 ..." of a list; names of objects as their handles.
std::string told(const resbuf* list, const HxDbDatabase& database) {
    GroupWriter out(database.imp()->format);
    std::string text;
    for (const resbuf* node = list; node; node = node->rbnext) {
        text += (text.empty() ? "" : " | ") + std::to_string(node->restype) + " ";
        HxDbObjectId id;
        switch (groupType(node->restype)) {
        case GroupType::text: text += toUtf8(node->resval.rstring); break;
        case GroupType::handle:
            EXPECT_EQ(hxdbGetObjectId(id, node->resval.rlname), Hx::eOk);
            text += std::to_string(id.handle().value());
            break;
        case GroupType::int32: text += std::to_string(node->resval.rlong); break;
        default: text += std::to_string(node->resval.rint); break;
        }
    }
    return text;
}

HxLyStateEntry wallEntry() {
    HxLyStateEntry entry;
    entry.layer = L"WALLS";
    entry.flags = HxLyState::kLayerPlots;
    entry.colorIndex = 1;
    entry.linetype = L"DASHED";
    entry.lineweight = 25;
    entry.plotStyle = L"bold";
    return entry;
}

class StateList : public StatesTest {
protected:
    /// The groups of one entry alone; empty when it is refused.
    std::string listed(const HxLyStateEntry& entry) const {
        HxLyStateListBuilder builder(database.get(), id(0xA1), {});
        if (!builder.add(entry)) {
            return "";
        }
        const Chain list(builder.take());
        const std::string all = told(list.get(), *database);
        return all.substr(all.find("| 8 ") + 2);
    }
    /// Makes the record of a list and puts it into the dictionary.
    HxDbObjectId stored(const wchar_t* name, HxLyStateListBuilder& builder) const {
        const Chain list(builder.take());
        zds_name made = {0, 0};
        zds_name states = {0, 0};
        EXPECT_EQ(hxdbEntMakeX(list.get(), made), RTNORM);
        EXPECT_EQ(hxdbGetZdsName(states, id(0xA1)), Hx::eOk);
        EXPECT_EQ(hxdbDictAdd(states, name, made), RTNORM);
        HxDbObjectId id;
        EXPECT_EQ(hxdbGetObjectId(id, made), Hx::eOk);
        return id;
    }
};

/// The same drawing with colour-dependent plot styles.
class ColorStyleStateList : public StateList {
protected:
    void SetUp() override {
        std::string text = statesDrawing();
        const std::string named = drawing("9 $PSTYLEMODE | 290 0");
        text.replace(text.find(named), named.size(), drawing("9 $PSTYLEMODE | 290 1"));
        hxdbSetWorkingDatabase(nullptr);
        database = opened(text);
        hxdbSetWorkingDatabase(database.get());
    }
};

}  // namespace

TEST_F(StateList, HasTheGroupsInTheirOrder) {
    HxLyStateHeader header;
    header.mask = 1023;
    header.description = L"as built";
    header.space = HxLyState::kModel;
    header.currentLayer = L"0";
    HxLyStateListBuilder builder(database.get(), id(0xA1), header);
    ASSERT_TRUE(builder.add(wallEntry()));
    const Chain list(builder.take());
    EXPECT_EQ(
        told(list.get(), *database),
        "0 XRECORD | 102 {ACAD_REACTORS | 330 161 | 102 } | 330 161 | 100 AcDbXrecord | 91 1023 | 301 as "
        "built | 290 0 | 302 0 | 8 WALLS | 90 8 | 62 1 | 370 25 | 6 DASHED | 390 114 | 440 0");
    EXPECT_EQ(builder.take(), nullptr);
}

TEST_F(StateList, HasColoursOnlyWhereThereAreAny) {
    HxLyStateEntry entry = wallEntry();
    entry.plotStyle.clear();
    const std::string before = "8 WALLS | 90 8 | 62 1 | 370 25 | 6 DASHED | ";
    EXPECT_EQ(listed(entry), before + "440 0");
    entry.trueColor = 0x0000FF;
    EXPECT_EQ(listed(entry), before + "92 255 | 440 0");
    entry.colorBook = L"BOOK$Red";
    EXPECT_EQ(listed(entry), before + "92 255 | 300 BOOK$Red | 440 0");
    entry.trueColor = -1;
    entry.transparency = 0;
    EXPECT_EQ(listed(entry), before + "92 -1 | 440 33554432");
    entry.transparency = 127;
    EXPECT_EQ(listed(entry), before + "92 -1 | 440 33554559");
}

TEST_F(StateList, NamedPlotStylesMustBeThere) {
    HxLyStateEntry entry = wallEntry();
    entry.plotStyle = L"Thick";
    HxLyStateListBuilder builder(database.get(), id(0xA1), {});
    EXPECT_FALSE(builder.add(entry));
    const Chain list(builder.take());
    EXPECT_EQ(told(list.get(), *database).find("WALLS"), std::string::npos);
    qputenv("LC_ALL", "it_IT.UTF-8");
    entry.plotStyle = hxdbGetReservedString(kHxReservedNormal, true);
    EXPECT_EQ(entry.plotStyle, L"Normale");
    EXPECT_NE(listed(entry).find("390 113"), std::string::npos);
    entry.plotStyle = L"NORMALE";
    EXPECT_NE(listed(entry).find("390 113"), std::string::npos);
    qunsetenv("LC_ALL");
    EXPECT_EQ(listed(entry), "");
    entry.plotStyle = L"Normal";
    EXPECT_NE(listed(entry).find("390 113"), std::string::npos);
}

TEST_F(ColorStyleStateList, PlotStylesAreNames) {
    HxLyStateEntry entry = wallEntry();
    entry.plotStyle = L"Color_1";
    EXPECT_EQ(listed(entry), "8 WALLS | 90 8 | 62 1 | 370 25 | 6 DASHED | 2 Color_1 | 440 0");
}

TEST_F(StateList, WhatIsWrittenIsReadBack) {
    HxLyStateHeader header;
    header.description = L"\u00dcber\u4e2d";
    header.currentLayer = L"WALLS";
    for (const std::uint64_t handle : {0xA2U, 0xA4U}) {
        HxLyStateReader reader(id(handle));
        HxLyStateListBuilder builder(database.get(), id(0xA1), header);
        HxLyStateEntry entry;
        std::vector<std::string> expected;
        while (reader.next(entry)) {
            if (builder.add(entry)) {
                expected.push_back(told(entry));
            }
        }
        ASSERT_EQ(expected.size(), 2U);  // GONE has the plot style of another kind of drawing
        const HxDbObjectId made = stored(handle == 0xA2 ? L"Again" : L"Once more", builder);
        EXPECT_EQ(entriesOf(made), expected);
        const HxLyStateReader again(made);
        EXPECT_EQ(again.header().description, header.description);
        const std::unique_ptr<HxDbDatabase> reopened = opened(saved());
        EXPECT_EQ(entriesOf(HxDbObjectId(byHandle(*reopened, made.handle().value()))), expected);
    }
}

}  // namespace korvex::test
