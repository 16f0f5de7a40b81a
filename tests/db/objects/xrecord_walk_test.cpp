// Walking xrecords where they stand.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

/// The plan with two more xrecords: F1 with everything around its content, F2 without a duplicates flag.
std::string walkDrawing() {
    std::string text = planDrawing();
    text.insert(text.find(drawing("0 ENDSEC | 0 EOF")), drawing(R"(
0 XRECORD | 5 F1 | 102 {ACAD_REACTORS | 330 90 | 102 } | 102 {ACAD_XDICTIONARY | 360 80 | 102 } | 330 90 | 100 AcDbXrecord | 280 1 | 280 2 | 102 {RUN | 1 W\U+00E4nde | 62 3 | 102 } | 5 77 | 40 2.5 | 160 5000000000 | 290 1 | 330 12 | 340 FE | 1001 ACAD | 1070 5
0 XRECORD | 5 F2 | 330 90 | 100 AcDbXrecord | 90 -7 | 280 1
)"));
    return text;
}

class XrecordWalk : public KernelTest {
protected:
    explicit XrecordWalk(const std::string& bytes = walkDrawing()) : KernelTest(bytes) {}

    /// "280 2 | 1 text ...", each value as its kind.
    static std::string walked(HxDbXrecordWalk& walk) {
        std::string all;
        while (walk.next()) {
            all += (all.empty() ? "" : " | ") + std::to_string(walk.code()) + " " + valueOf(walk);
        }
        return all;
    }
    static std::string valueOf(const HxDbXrecordWalk& walk) {
        switch (groupType(walk.code())) {
        case GroupType::text: return toUtf8(walk.text());
        case GroupType::real: return std::to_string(walk.real());
        case GroupType::handle:
            return walk.objectId().isNull() ? "none" : std::to_string(walk.objectId().handle().value());
        default: return std::to_string(walk.integer());
        }
    }
    static constexpr const char* kContent =
        "280 2 | 102 {RUN | 1 W\xC3\xA4nde | 62 3 | 102 } | 5 none | 40 2.500000 | 160 5000000000 | 290 1 | "
        "330 18 | 340 none";
};

class BinaryXrecordWalk : public XrecordWalk {
protected:
    BinaryXrecordWalk() : XrecordWalk(binary(walkDrawing(), 2)) {}
};

}  // namespace

TEST_F(XrecordWalk, ShowsTheContentWithoutMakingTheObject) {
    HxDbXrecordWalk walk(id(0xF1));
    EXPECT_EQ(walk.status(), Hx::eOk);
    EXPECT_EQ(walk.code(), 0);
    EXPECT_EQ(walked(walk), kContent);
    EXPECT_FALSE(walk.next());
    walk.rewind();
    EXPECT_EQ(walked(walk), kContent);
    EXPECT_FALSE(id(0xF1).stub()->object);
    HxDbXrecordWalk other(id(0xF2));
    EXPECT_EQ(walked(other), "90 -7 | 280 1");
}

TEST_F(BinaryXrecordWalk, ReadsBinaryDrawings) {
    HxDbXrecordWalk walk(id(0xF1));
    EXPECT_EQ(walked(walk), kContent);
}

TEST_F(XrecordWalk, GivesNothingForAValueOfAnotherKind) {
    HxDbXrecordWalk walk(id(0xF1));
    for (int step = 0; step < 3; ++step) {
        ASSERT_TRUE(walk.next());
    }
    ASSERT_EQ(walk.code(), 1);
    EXPECT_EQ(walk.integer(), 0);
    EXPECT_EQ(walk.real(), 0);
    EXPECT_TRUE(walk.objectId().isNull());
    ASSERT_TRUE(walk.next());
    ASSERT_EQ(walk.code(), 62);
    EXPECT_EQ(walk.text(), L"");
    EXPECT_EQ(walk.real(), 0);
}

TEST_F(XrecordWalk, TellsWhatItCannotWalk) {
    EXPECT_EQ(HxDbXrecordWalk(HxDbObjectId()).status(), Hx::eNullObjectId);
    EXPECT_EQ(HxDbXrecordWalk(id(0x90)).status(), Hx::eWrongClass);
    EXPECT_EQ(HxDbXrecordWalk(id(0x11)).status(), Hx::eWrongClass);
    erase(id(0xF2));
    HxDbXrecordWalk erased(id(0xF2));
    EXPECT_EQ(erased.status(), Hx::eWasErased);
    EXPECT_FALSE(erased.next());
    EXPECT_EQ(erased.code(), 0);
    EXPECT_EQ(erased.integer(), 0);
    erased.rewind();
    EXPECT_FALSE(erased.next());
}

TEST_F(XrecordWalk, ShowsChangesThatAreNotInTheGroupsYet) {
    const HxDbObjectPointer<HxDbXrecord> open(id(0xF1), HxDb::kForWrite);
    const Chain list(hxutBuildList(1, L"new", 70, 4, 0));
    ASSERT_EQ(open->setFromRbChain(list.get()), Hx::eOk);
    HxDbXrecordWalk walk(id(0xF1));
    EXPECT_EQ(walked(walk), "1 new | 70 4");
    // An erased object is still told.
    erase(id(0x12));
    zds_name name = {0, 0};
    hxdbGetZdsName(name, id(0x12));
    const Chain pointer = nameNode(330, name);
    ASSERT_EQ(open->setFromRbChain(pointer.get()), Hx::eOk);
    HxDbXrecordWalk again(id(0xF1));
    EXPECT_EQ(walked(again), "330 18");
}

TEST_F(KernelTest, ThePlotStyleDictionaryIsOpenedAsAskedFor) {
    HxDbDictionaryWithDefault* styles = nullptr;
    ASSERT_EQ(database->getPlotStyleNameDictionary(styles, HxDb::kForRead), Hx::eOk);
    EXPECT_EQ(styles->objectId(), id(0x70));
    HxDbDictionaryWithDefault* again = nullptr;
    EXPECT_EQ(database->getPlotStyleNameDictionary(again, HxDb::kForWrite), Hx::eWasOpenForRead);
    EXPECT_FALSE(again);
    styles->close();
    erase(id(0x70));
    EXPECT_EQ(database->getPlotStyleNameDictionary(styles, HxDb::kForRead), Hx::eNullObjectId);
    EXPECT_FALSE(styles);
}

}  // namespace korvex::test
