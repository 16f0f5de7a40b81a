// Layouts: their order, and which of them is current.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Layouts : public KernelTest {
protected:
    using KernelTest::KernelTest;
    HxDbLayoutManager& manager = *hxdbLayoutManager();
    std::string blockName(std::uint64_t handle) {
        return toUtf8(at<HxDbBlockTableRecord>(id(handle))->name());
    }
};

class LayoutsOfR12 : public Layouts {
protected:
    LayoutsOfR12() : Layouts(oldDrawing()) {}
};

}  // namespace

TEST_F(Layouts, StandInTabOrderWithModelFirst) {
    HxArray<HxDbObjectId> ids;
    manager.layouts(database.get(), ids);
    std::string names;
    for (const HxDbObjectId& layout : ids) {
        names += toUtf8(at<HxDbLayout>(layout)->getLayoutName()) + " ";
    }
    EXPECT_EQ(names, "Model First Second ");
    EXPECT_EQ(at<HxDbLayout>(id(0x52))->getTabOrder(), 2);
    EXPECT_EQ(at<HxDbLayout>(id(0x52))->getBlockTableRecordId(), id(0x22));
    erase(id(0x51));
    manager.layouts(database.get(), ids);
    EXPECT_EQ(ids.length(), 2);
    manager.layouts(nullptr, ids);
    EXPECT_EQ(ids.length(), 0);
}

TEST_F(Layouts, SwitchingSwapsTheNamesOfTheirBlocks) {
    EXPECT_EQ(manager.getActiveLayoutName(), L"Model");
    EXPECT_EQ(manager.getActiveLayoutBTRId(database.get()), database->modelSpaceId());
    database->setCvport(2);
    step(L"LAYOUT", [&] { EXPECT_EQ(manager.setCurrentLayout(L"second"), Hx::eOk); });
    EXPECT_EQ(manager.getActiveLayoutName(), L"Second");
    EXPECT_EQ(manager.getActiveLayoutBTRId(database.get()), id(0x22));
    EXPECT_EQ(database->cvport(), 1);
    EXPECT_FALSE(database->tilemode());
    EXPECT_EQ(blockName(0x21) + " " + blockName(0x22), "*Paper_Space0 *Paper_Space");
    step(L"MODEL", [&] { EXPECT_EQ(manager.setCurrentLayout(L"MODEL"), Hx::eOk); });
    EXPECT_EQ(database->paperSpaceId(), id(0x22)) << "model space leaves the sheet of last";
    EXPECT_EQ(manager.setCurrentLayoutId(id(0x51)), Hx::eOk);
    EXPECT_EQ(database->paperSpaceId(), id(0x21));
    while (journal().undo() == Hx::eOk) {
    }
    EXPECT_EQ(blockName(0x21) + " " + blockName(0x22), "*Paper_Space *Paper_Space0");
    EXPECT_EQ(manager.getActiveLayoutName(), L"Model");
    EXPECT_EQ(changedLines(planDrawing(), saved()), Log{});
}

TEST_F(Layouts, ASwitchThatIsRefusedChangesNothing) {
    EXPECT_EQ(manager.setCurrentLayout(L"Third"), Hx::eKeyNotFound);
    EXPECT_EQ(manager.setCurrentLayoutId(id(0x40)), Hx::eKeyNotFound);
    for (const std::uint64_t held : {0x21U, 0x22U}) {
        const HxDbObjectPointer<HxDbObject> reading(id(held), HxDb::kForRead);
        EXPECT_EQ(manager.setCurrentLayout(L"Second"), Hx::eWasOpenForRead);
        EXPECT_EQ(blockName(0x21) + " " + blockName(0x22), "*Paper_Space *Paper_Space0");
        EXPECT_TRUE(database->tilemode());
    }
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(manager.setCurrentLayout(L"Second"), Hx::eOk);
}

TEST_F(LayoutsOfR12, HaveOnePaperSpaceWithoutAName) {
    EXPECT_EQ(manager.setCurrentLayout(L"First"), Hx::eKeyNotFound);
    EXPECT_EQ(manager.setCurrentLayout(L"Layout1"), Hx::eOk);
    EXPECT_EQ(manager.getActiveLayoutName(), L"Layout1");
    EXPECT_EQ(manager.getActiveLayoutBTRId(database.get()), database->paperSpaceId());
    EXPECT_EQ(manager.setCurrentLayout(L"Model"), Hx::eOk);
    EXPECT_TRUE(database->tilemode());
}

}  // namespace korvex::test
