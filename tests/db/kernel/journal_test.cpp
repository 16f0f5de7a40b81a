// Undo and redo of changes, marks inside a command, and what counts as a step.
#include "tests/db/kernel/kernel_support.h"

#include <QTemporaryDir>

#include <functional>

namespace korvex::test {

namespace {

class JournalTest : public KernelTest {
protected:
    HxDbObjectId walls = layer(L"WALLS");
    HxDbObjectId doors = layer(L"DOORS");
    bool locked(HxDbObjectId id) { return at<HxDbLayerTableRecord>(id)->isLocked(); }
};

}  // namespace

TEST_F(JournalTest, EveryKindOfChangeIsTakenBackAndDoneAgain) {
    const std::string before = saved();
    std::vector<std::string> states{before};
    const std::vector<std::function<void()>> edits = {
        [&] { lock(walls); },
        [&] { addLayer(L"NEW"); },
        [&] { erase(id(0x41)); },
        [&] { EXPECT_EQ(database->setClayer(doors), Hx::eOk); },
        [&] { EXPECT_EQ(database->setTilemode(false), Hx::eOk); },
        [&] { EXPECT_EQ(rename(walls, L"MUR"), Hx::eOk); },
        [&] { erase(id(0x41), false); },
        [&] { EXPECT_EQ(rename(layer(L"NEW"), L"WALLS"), Hx::eOk); },
        [&] { change<HxDbEntity>(id(0x40), [&](HxDbEntity& e) { e.setLayer(layer(L"WALLS")); }); },
        [&] { erase(layer(L"EMPTY")); },
    };
    for (const auto& edit : edits) {
        step(L"STEP", edit);
        states.push_back(saved());
        ASSERT_NE(states.back(), states[states.size() - 2]);
    }
    EXPECT_EQ(journal().undoCount(), edits.size());
    for (int round = 0; round < 2; ++round) {
        for (std::size_t i = edits.size(); i-- > 0;) {
            ASSERT_EQ(journal().undo(), Hx::eOk);
            ASSERT_EQ(changedLines(states[i], saved()), Log{}) << i;
        }
        EXPECT_EQ(journal().undo(), Hx::eNoUndo);
        EXPECT_FALSE(database->isModified());
        for (std::size_t i = 1; i <= edits.size(); ++i) {
            ASSERT_EQ(journal().redo(), Hx::eOk);
            ASSERT_EQ(changedLines(states[i], saved()), Log{}) << i;
        }
        EXPECT_EQ(journal().redo(), Hx::eNoUndo);
    }
}

TEST_F(JournalTest, GroupsNestAndEmptyOnesVanish) {
    step(L"NOTHING", [] {});
    step(L"LOOK",
         [&] { change<HxDbLayerTableRecord>(walls, [](HxDbLayerTableRecord& l) { l.setIsOff(false); }); });
    EXPECT_EQ(journal().undoCount(), 0U);
    step(L"OUTER", [&] {
        step(L"INNER", [&] { lock(walls); });
        EXPECT_EQ(journal().undo(), Hx::eInvalidContext);
        lock(doors);
    });
    EXPECT_EQ(journal().undoCount(), 1U);
    EXPECT_EQ(journal().undoName(), L"OUTER");
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_FALSE(locked(walls) || locked(doors));
    EXPECT_EQ(journal().redoName(), L"OUTER");
    EXPECT_EQ(journal().undoName(), L"");
}

TEST_F(JournalTest, ChangesOutsideOfGroupsAreOneStepUntilTheNextGroup) {
    lock(walls);
    lock(doors);
    EXPECT_EQ(journal().undoCount(), 1U);
    step(L"LOCK", [&] { lock(layer(L"EMPTY")); });
    lock(layer(L"EMPTY"), false);
    EXPECT_EQ(journal().undoCount(), 3U);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(locked(layer(L"EMPTY")));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_FALSE(locked(walls) || locked(doors));
}

TEST_F(JournalTest, ANewChangeForgetsWhatWasUndone) {
    step(L"ONE", [&] { lock(walls); });
    ASSERT_EQ(journal().undo(), Hx::eOk);
    step(L"TWO", [&] { lock(doors); });
    EXPECT_EQ(journal().redoCount(), 0U);
    EXPECT_EQ(journal().redo(), Hx::eNoUndo);
    EXPECT_FALSE(locked(walls));
}

TEST_F(JournalTest, MarksTakeBackPartOfACommandWhileObjectsAreOpen) {
    const std::string before = saved();
    journal().beginGroup(L"COMMAND");
    const HxDbObjectPointer<HxDbLayerTableRecord> open(walls, HxDb::kForWrite);
    const Journal::Mark first = journal().putMark();
    open->setIsLocked(true);
    const Journal::Mark second = journal().putMark();
    open->setIsOff(true);
    const HxDbObjectId added = addLayer(L"NEW");
    journal().rollbackTo(second);
    EXPECT_TRUE(open->isLocked());
    EXPECT_FALSE(open->isOff());
    EXPECT_TRUE(added.isErased());
    EXPECT_TRUE(open->isWriteEnabled());
    open->setIsOff(true);
    journal().rollbackTo(first);
    EXPECT_FALSE(open->isLocked() || open->isOff());
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(open->setColor(HxCmColor::byIndex(2)), Hx::eOk);
    open->close();
    journal().endGroup();
    EXPECT_EQ(changedLines(before, saved()), Log{"1 > 2"});
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(JournalTest, AGroupThatWasRolledBackToItsBeginIsNone) {
    step(L"COMMAND", [&] {
        const Journal::Mark mark = journal().putMark();
        lock(walls);
        journal().rollbackTo(mark);
    });
    EXPECT_EQ(journal().undoCount(), 0U);
    EXPECT_FALSE(database->isModified());
}

TEST_F(JournalTest, CancellingTakesBackOneOpen) {
    const std::string before = saved();
    step(L"LOCK", [&] { lock(walls); });
    Log log;
    ObjectRecorder reactor(log);
    hxdbObjectPointer(walls)->addReactor(&reactor);
    HxDbLayerTableRecord* record = nullptr;
    ASSERT_EQ(hxdbOpenObject(record, walls, HxDb::kForWrite), Hx::eOk);
    record->setIsOff(true);
    EXPECT_EQ(record->setTransparency(HxCmTransparency(128)), Hx::eOk);
    EXPECT_EQ(record->setName(L"MUR"), Hx::eOk);
    EXPECT_EQ(record->cancel(), Hx::eOk);
    EXPECT_EQ(log, (Log{"object opened for modify", "object closed"}));
    hxdbObjectPointer(walls)->removeReactor(&reactor);
    EXPECT_TRUE(locked(walls));
    EXPECT_FALSE(record->isOff());
    EXPECT_EQ(layer(L"walls"), walls);
    EXPECT_EQ(layer(L"MUR"), HxDbObjectId());
    EXPECT_TRUE(record->transparency().isSolid());
    EXPECT_EQ(record->close(), Hx::eNotOpenForRead);
    while (journal().undo() == Hx::eOk) {
    }
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(JournalTest, CancellingTheOpenThatAddedAnObjectLeavesNothing) {
    const std::string before = saved();
    auto* record = new HxDbLayerTableRecord;
    ASSERT_EQ(record->setName(L"NEW"), Hx::eOk);
    HxDbObjectId added;
    {
        const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
        ASSERT_EQ(table->add(added, record), Hx::eOk);
    }
    record->setIsLocked(true);
    EXPECT_EQ(record->cancel(), Hx::eOk);
    EXPECT_TRUE(added.isErased());
    EXPECT_EQ(layer(L"NEW"), HxDbObjectId());
    EXPECT_EQ(journal().undoCount(), 0U);
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(changedLines(before, saved()), Log{});
    EXPECT_NE(addLayer(L"NEW"), added);
}

TEST_F(JournalTest, ModifiedFollowsUndoBackToTheSavedState) {
    const QTemporaryDir folder;
    const std::wstring file = folder.filePath("plan.dxf").toStdWString();
    lock(walls);
    EXPECT_TRUE(database->isModified());
    ASSERT_EQ(saveAs(*database, file), Hx::eOk);
    EXPECT_FALSE(database->isModified());
    lock(walls, false);
    EXPECT_TRUE(database->isModified());
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_FALSE(database->isModified());
    EXPECT_TRUE(locked(walls)) << "a save ends a step of loose changes";
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(database->isModified());
    lock(doors);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(database->isModified()) << "the saved state cannot be reached any more";
}

TEST_F(JournalTest, ASaveInsideAGroupIsNoStateToComeBackTo) {
    const QTemporaryDir folder;
    step(L"SAVE IN BETWEEN", [&] {
        lock(walls);
        ASSERT_EQ(saveAs(*database, folder.filePath("plan.dxf").toStdWString()), Hx::eOk);
        lock(walls, false);
    });
    ASSERT_EQ(journal().undo(), Hx::eOk);
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_FALSE(locked(walls));
    EXPECT_TRUE(database->isModified()) << "the file has the layer locked";
}

}  // namespace korvex::test
