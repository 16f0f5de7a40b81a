// Reading layer states in the spellings that drawings have.
#include "tests/db/states/states_support.h"

namespace korvex::test {

namespace {

using Entries = std::vector<std::string>;

class BinaryStates : public StatesTest {
protected:
    BinaryStates() : StatesTest(binary(statesDrawing(), 2)) {}
};

const Entries kByNames = {"Walls 8 c1 t0000FF BOOK$Red w25 Dashed Bold a127",
                          "GONE 3 c3 w-3 Continuous Color_3 a255", "PIPE|VALVE 12 c4 w-3 LOST Normal a0"};
const Entries kByHandles = {"WALLS 8 c1 t0000FF w-3 DASHED Color_1 a255",
                            "EMPTY 10 c5 t030201 w50  Color_5 a25"};

}  // namespace

TEST_F(StatesTest, AreReadInBothSpellings) {
    HxLyStateReader names(id(0xA2));
    ASSERT_EQ(names.status(), Hx::eOk);
    EXPECT_EQ(names.header().mask, 2047);
    EXPECT_EQ(names.header().description, L"by names");
    EXPECT_EQ(names.header().space, 1);
    EXPECT_EQ(names.header().currentLayer, L"Walls");
    EXPECT_EQ(allOf(names), kByNames);
    HxLyStateReader handles(id(0xA3));
    ASSERT_EQ(handles.status(), Hx::eOk);
    EXPECT_EQ(handles.header().mask, 1023);
    EXPECT_EQ(handles.header().description, L"");
    EXPECT_EQ(handles.header().space, 0);
    EXPECT_EQ(handles.header().currentLayer, L"0");
    EXPECT_EQ(allOf(handles), kByHandles);
    EXPECT_EQ(handles.skippedEntries(), 2);
    EXPECT_FALSE(id(0xA2).stub()->object || id(0xA3).stub()->object);
}

TEST_F(BinaryStates, AreReadToo) {
    EXPECT_EQ(entriesOf(id(0xA2)), kByNames);
    EXPECT_EQ(entriesOf(id(0xA3)), kByHandles);
}

TEST_F(StatesTest, MayMixSpellingsInAnyOrder) {
    HxLyStateReader mixed(id(0xA4));
    ASSERT_EQ(mixed.status(), Hx::eOk);
    EXPECT_EQ(mixed.header().mask, 256);  // behind the entries
    EXPECT_EQ(mixed.header().description, L"first");
    EXPECT_EQ(mixed.header().currentLayer, L"EMPTY");
    // 0xC3 in the top byte of 92 is an index and no true colour; of several colours the last counts.
    EXPECT_EQ(allOf(mixed), (Entries{"DOORS 0 c3 w-3 DASHED Normal a255", "EMPTY 0 c7 t010000 w-3   a255"}));
}

TEST_F(StatesTest, AreReadFromTheStartAgain) {
    HxLyStateReader reader(id(0xA3));
    HxLyStateEntry entry;
    EXPECT_TRUE(reader.next(entry));
    reader.rewind();
    EXPECT_EQ(allOf(reader), kByHandles);
    EXPECT_FALSE(reader.next(entry));
    reader.rewind();
    EXPECT_EQ(reader.skippedEntries(), 0);
    EXPECT_EQ(allOf(reader), kByHandles);
    EXPECT_EQ(reader.skippedEntries(), 2);
}

TEST_F(StatesTest, HandlesGiveTheNameOfNowAlsoOfErasedRecords) {
    ASSERT_EQ(rename(id(0x11), L"Mauern"), Hx::eOk);
    ASSERT_EQ(rename(id(0x33), L"gestrichelt"), Hx::eOk);
    erase(id(0x15));
    EXPECT_EQ(entriesOf(id(0xA3)), (Entries{"Mauern 8 c1 t0000FF w-3 gestrichelt Color_1 a255",
                                            "EMPTY 10 c5 t030201 w50  Color_5 a25"}));
}

TEST_F(StatesTest, TellWhatIsNone) {
    EXPECT_EQ(HxLyStateReader(HxDbObjectId()).status(), Hx::eNullObjectId);
    EXPECT_EQ(HxLyStateReader(id(0xA1)).status(), Hx::eWrongClass);
    HxLyStateReader noMask(id(0xA5));
    EXPECT_EQ(noMask.status(), Hx::eKeyNotFound);
    EXPECT_EQ(noMask.header().description, L"");
    EXPECT_TRUE(allOf(noMask).empty());
    erase(id(0xA2));
    HxLyStateReader erased(id(0xA2));
    EXPECT_EQ(erased.status(), Hx::eWasErased);
    EXPECT_EQ(erased.header().mask, HxLyState::kAllProperties);
    erased.rewind();
    EXPECT_TRUE(allOf(erased).empty());
}

TEST_F(StatesTest, PlotStylesOfDrawingsWithoutAnyAreNormal) {
    erase(id(0x70));
    HxLyStateReader reader(id(0xA2));
    HxLyStateEntry entry;
    ASSERT_TRUE(reader.next(entry));
    EXPECT_EQ(entry.plotStyle, L"Normal");
}

TEST_F(StatesTest, ManyEntriesUseTheSameTexts) {
    HxLyStateReader reader(id(0xA2));
    HxLyStateEntry entry;
    ASSERT_TRUE(reader.next(entry));
    entry.layer.reserve(100);
    entry.linetype.reserve(100);
    const wchar_t* layer = entry.layer.data();
    const wchar_t* linetype = entry.linetype.data();
    while (reader.next(entry)) {
        EXPECT_EQ(entry.layer.data(), layer);
        EXPECT_EQ(entry.linetype.data(), linetype);
    }
}

}  // namespace korvex::test
