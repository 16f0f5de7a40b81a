// Edits outside of commands: one undo step with its name, and a lock while they last.
#include "sdk/hxui.h"
#include "tests/editor/editor_fixture.h"

namespace korvex::test {
namespace {

class GuardedOperationsTest : public EditorTest {
protected:
    /// An edit that the journal sees.
    void freeze(const wchar_t* name) {
        HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        ASSERT_EQ(record.openStatus(), Hx::eOk);
        record->setIsFrozen(true);
    }
    bool isFrozen(const wchar_t* name) {
        return HxDbObjectPointer<HxDbLayerTableRecord>(layer(name), HxDb::kForRead)->isFrozen();
    }
    std::size_t locks() { return editor().documents().current()->locks().size(); }
    HxUiMainAppService& service = *hxuiMainAppService();
};

TEST_F(GuardedOperationsTest, IsOneStepThatUndoTellsByName) {
    run(L"-LAYER Make A \n-LAYER Make B \n-LAYER Make C \n");
    const int operation = service.beginGuardedOperation(curDoc(), L"Freeze layers");
    ASSERT_NE(operation, 0);
    EXPECT_EQ(hxDocManager()->lockMode(curDoc()), kWrite);
    freeze(L"A");
    freeze(L"B");
    EXPECT_TRUE(service.endGuardedOperation(operation));
    EXPECT_EQ(hxDocManager()->lockMode(curDoc()), kNone);
    EXPECT_FALSE(service.endGuardedOperation(operation)) << "it has ended";

    EXPECT_TRUE(contains(run(L"U\n"), L"Freeze layers"));
    EXPECT_FALSE(isFrozen(L"A"));
    EXPECT_FALSE(isFrozen(L"B"));
    EXPECT_TRUE(contains(run(L"REDO\n"), L"Freeze layers"));
    EXPECT_TRUE(isFrozen(L"A") && isFrozen(L"B"));
    run(L"UNDO 2\n");
    EXPECT_FALSE(hasLayer(L"C")) << "the step before is the command's";
}

TEST_F(GuardedOperationsTest, NestAndAreEndedWithTheOuterOne) {
    run(L"-LAYER Make A \n-LAYER Make B \n-LAYER Make C \n");
    const int outer = service.beginGuardedOperation(curDoc(), L"Outer");
    const int middle = service.beginGuardedOperation(curDoc(), nullptr);
    freeze(L"A");
    const int inner = service.beginGuardedOperation(curDoc(), L"Inner", false);
    EXPECT_EQ(locks(), 3U);
    EXPECT_TRUE(service.endGuardedOperation(middle));
    EXPECT_EQ(locks(), 1U);
    EXPECT_FALSE(service.endGuardedOperation(inner)) << "it was ended with the one around it";
    freeze(L"B");
    EXPECT_TRUE(service.endGuardedOperation(outer));
    EXPECT_EQ(locks(), 0U);
    EXPECT_TRUE(contains(run(L"U\n"), L"Outer"));
    EXPECT_FALSE(isFrozen(L"A") || isFrozen(L"B"));
}

TEST_F(GuardedOperationsTest, WithoutUndoItOnlyLocks) {
    run(L"-LAYER Make A \n-LAYER Make B \n");
    const std::size_t steps = editor().documents().current()->undo().undoCount();
    const int operation = service.beginGuardedOperation(curDoc(), L"Look", false);
    EXPECT_EQ(locks(), 1U);
    EXPECT_EQ(journal(database()).nesting(), 0);
    EXPECT_TRUE(service.endGuardedOperation(operation));
    EXPECT_EQ(editor().documents().current()->undo().undoCount(), steps);

    const int empty = service.beginGuardedOperation(curDoc(), L"Nothing");
    service.endGuardedOperation(empty);
    EXPECT_EQ(editor().documents().current()->undo().undoCount(), steps) << "nothing changed: no step";
}

TEST_F(GuardedOperationsTest, InsideOfACommandTheCommandIsTheStep) {
    run(L"-LAYER Make A \n-LAYER Make B \n");
    define(L"GUARDED", [this] {
        const int operation = service.beginGuardedOperation(curDoc(), L"Freeze");
        freeze(L"A");
        service.endGuardedOperation(operation);
        freeze(L"0");
    });
    run(L"GUARDED\n");
    EXPECT_TRUE(contains(run(L"U\n"), L"GUARDED"));
    EXPECT_FALSE(isFrozen(L"A"));
}

TEST_F(GuardedOperationsTest, ADocumentMayCloseMeanwhile) {
    EXPECT_EQ(service.beginGuardedOperation(nullptr), 0);
    HxApDocument* first = curDoc();
    const int operation = service.beginGuardedOperation(first, L"First");
    hxDocManager()->newDocument();
    const int other = service.beginGuardedOperation(curDoc(), L"Second");
    ASSERT_EQ(hxDocManager()->closeDocument(first), Hx::eOk);
    EXPECT_EQ(service.beginGuardedOperation(first), 0);
    EXPECT_EQ(locks(), 1U);
    EXPECT_TRUE(service.endGuardedOperation(operation)) << "and the one within it";
    EXPECT_EQ(locks(), 0U);
    EXPECT_FALSE(service.endGuardedOperation(other));
    EXPECT_EQ(journal(database()).nesting(), 0);
}

}  // namespace
}  // namespace korvex::test
