// Undo and redo of commands, inside of commands, and in groups.
#include "tests/editor/editor_fixture.h"

namespace korvex::test {
namespace {

class Undo : public EditorTest {
protected:
    void lines(int count) {
        for (int i = 0; i < count; ++i) {
            run(L"LINE 0,0 1,1 \n");
        }
    }
};

TEST_F(Undo, TakesBackWholeCommandsAndDoesThemAgain) {
    run(L"LINE 0,0 1,1 2,2 \n");
    run(L"-LAYER N A,B\nS A\n\n");
    EXPECT_EQ(run(L"U\n"), L"Command: U\n-LAYER\n");
    EXPECT_FALSE(hasLayer(L"A"));
    EXPECT_EQ(entities(), 2);
    EXPECT_EQ(run(L"REDO\n"), L"Command: REDO\n-LAYER\n");
    EXPECT_TRUE(hasLayer(L"B"));
    EXPECT_EQ(variable(L"CLAYER"), L"\"A\"");
    EXPECT_EQ(run(L"UNDO 9\n"), L"Command: UNDO\nEnter the number of operations to undo or "
                                L"[Control/BEgin/End/Mark/Back] <1>: 9\n-LAYER LINE\n");
    EXPECT_EQ(entities(), 0);
    EXPECT_EQ(run(L"U\n"), L"Command: U\nEverything has been undone.\n");
    EXPECT_TRUE(contains(run(L"REDO A\n"), L"LINE -LAYER"));
    EXPECT_EQ(run(L"REDO\n"), L"Command: REDO\nThere is nothing to redo.\n");
}

TEST_F(Undo, CommandsThatChangeNothingAreNoSteps) {
    lines(1);
    run(L"REGEN\nSETVAR LUPREC \nLINE \x1B");
    EXPECT_EQ(run(L"U\n"), L"Command: U\nLINE\n");
}

TEST_F(Undo, GoesBackToMarks) {
    lines(1);
    run(L"UNDO M\n");
    lines(2);
    run(L"UNDO M\n");
    lines(1);
    run(L"UNDO B\n");
    EXPECT_EQ(entities(), 3);
    run(L"UNDO B\n");
    EXPECT_EQ(entities(), 1);
    EXPECT_TRUE(
        contains(run(L"UNDO B N\n"), L"No mark is set. This will undo everything. OK? [Yes/No] <Y>: N"));
    EXPECT_EQ(entities(), 1);
    run(L"UNDO B \n");
    EXPECT_EQ(entities(), 0);
}

TEST_F(Undo, AMarkThatWasUndoneIsGone) {
    lines(2);
    run(L"UNDO M\nU\nU\n");
    lines(3);
    EXPECT_TRUE(contains(run(L"UNDO B N\n"), L"No mark is set"));
}

TEST_F(Undo, GroupsSpanCommands) {
    run(L"UNDO BE\n");
    lines(2);
    run(L"U\n");
    EXPECT_EQ(failures, Lines{L"An undo group is open: close it with UNDO End first."});
    EXPECT_EQ(variable(L"UNDOCTL"), L"9");
    run(L"UNDO E\nUNDO E\n");
    EXPECT_EQ(failures.size(), 2U);
    run(L"U\n");
    EXPECT_EQ(entities(), 0);
}

TEST_F(Undo, WorksByMarksInsideACommand) {
    define(L"MARKS", [&] {
        VrexUndoController* undo = curDocUndoController();
        EXPECT_EQ(undo->undoInCommand(-1, true), Hx::eNoUndo);
        for (const HxDbObjectId& id : {layer(L"A"), layer(L"B"), layer(L"C")}) {
            undo->putSubCommandKnote();
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForWrite);
            EXPECT_EQ(record->setIsFrozen(true), Hx::eOk);
        }
        EXPECT_EQ(undo->subCommandKnoteCount(), 3);
        EXPECT_EQ(undo->undoInCommand(-1, true), Hx::eOk);
        EXPECT_EQ(undo->subCommandKnoteCount(), 2);
        const HxDbObjectPointer<HxDbLayerTableRecord> b(layer(L"B"), HxDb::kForRead);
        const HxDbObjectPointer<HxDbLayerTableRecord> c(layer(L"C"), HxDb::kForRead);
        EXPECT_TRUE(b->isFrozen());
        EXPECT_FALSE(c->isFrozen());
    });
    run(L"-LAYER N A,B,C\n\n");
    run(L"MARKS\n");
    EXPECT_EQ(curDocUndoController()->subCommandKnoteCount(), 0);
    curDocUndoController()->putSubCommandKnote();
    EXPECT_EQ(curDocUndoController()->subCommandKnoteCount(), 0);
    EXPECT_EQ(run(L"U\n"), L"Command: U\nMARKS\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForRead);
    EXPECT_FALSE(a->isFrozen());
}

TEST_F(Undo, ModulesGroupTheirEdits) {
    run(L"-LAYER N A,B\n\n");
    hxedBeginUndoGroup(curDoc(), L"Lock layers");
    for (const wchar_t* name : {L"A", L"B"}) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        record->setIsLocked(true);
    }
    hxedEndUndoGroup(curDoc());
    hxedEndUndoGroup(curDoc());  // one too many does no harm
    EXPECT_EQ(run(L"U\n"), L"Command: U\nLock layers\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForRead);
    EXPECT_FALSE(a->isLocked());
}

}  // namespace
}  // namespace korvex::test
