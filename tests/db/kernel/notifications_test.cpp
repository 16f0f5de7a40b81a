// What reactors are told, in which order, and what they may do meanwhile.
#include "tests/db/kernel/kernel_support.h"

#include <functional>

namespace korvex::test {

namespace {

class Notifications : public KernelTest {
protected:
    Notifications() {
        database->addReactor(&drawingReactor);
        hxdbObjectPointer(walls)->addReactor(&objectReactor);
    }
    ~Notifications() override {
        if (database) {
            database->removeReactor(&drawingReactor);
            hxdbObjectPointer(walls)->removeReactor(&objectReactor);
        }
    }
    /// What was told since the last call.
    Log told() { return std::exchange(m_log, {}); }

    HxDbObjectId walls = layer(L"WALLS");

private:
    Log m_log;

protected:
    ObjectRecorder objectReactor{m_log};
    DrawingRecorder drawingReactor{m_log};
};

/// Runs something inside the notification "modified".
class WhileModified : public HxDbObjectReactor {
public:
    explicit WhileModified(std::function<void(const HxDbObject*)> body) : m_body(std::move(body)) {}
    void modified(const HxDbObject* object) override { m_body(object); }

private:
    std::function<void(const HxDbObject*)> m_body;
};

/// Looks at an object that is being changed or restored.
class WhileOpenedForModify : public HxDbObjectReactor {
public:
    explicit WhileOpenedForModify(std::function<void(const HxDbObject*)> body) : m_body(std::move(body)) {}
    void openedForModify(const HxDbObject* object) override { m_body(object); }

private:
    std::function<void(const HxDbObject*)> m_body;
};

}  // namespace

TEST_F(Notifications, ATableTellsOfTheRecordsThatItGets) {
    const HxDbObjectId tableId = database->layerTableId();
    Log log;
    ObjectRecorder reactor(log);
    at<HxDbLayerTable>(tableId)->addReactor(&reactor);
    const std::string before = record(tableId);
    addLayer(L"NEW");
    const Log whole{"object opened for modify", "object modified", "object closed"};
    EXPECT_EQ(std::exchange(log, {}), whole);
    EXPECT_EQ(record(tableId), before);

    const auto hold = [&] {
        database->transactionManager()->startTransaction();
        HxDbObject* table = nullptr;
        database->transactionManager()->getObject(table, tableId, HxDb::kForWrite);
        auto* const made = new HxDbLayerTableRecord;
        made->setName(L"NEWER");
        EXPECT_EQ(HxDbLayerTable::cast(table)->add(made), Hx::eOk);
        made->close();
        EXPECT_EQ(std::exchange(log, {}), Log{"object opened for modify"});
    };
    hold();
    database->transactionManager()->abortTransaction();
    EXPECT_EQ(std::exchange(log, {}), Log{"object closed"}) << "nothing of the table was changed after all";
    hold();
    database->transactionManager()->endTransaction();
    EXPECT_EQ(log, (Log{"object modified", "object closed"}));
    at<HxDbLayerTable>(tableId)->removeReactor(&reactor);
}

TEST_F(Notifications, ClosedIsToldWhenNobodyHasItOpenAnyMore) {
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(walls, HxDb::kForWrite);
        record->setIsLocked(true);
        told();
        EXPECT_EQ(record->downgradeOpen(), Hx::eOk);
        EXPECT_EQ(told(), (Log{"object modified", "drawing modified WALLS"}));
        const HxDbObjectPointer<HxDbLayerTableRecord> reader(walls, HxDb::kForRead);
        EXPECT_EQ(told(), Log());
    }
    EXPECT_EQ(told(), Log{"object closed"});
    { const HxDbObjectPointer<HxDbLayerTableRecord> reader(walls, HxDb::kForRead); }
    EXPECT_EQ(told(), Log());
}

TEST_F(Notifications, OneWriteOpenTellsOnceEachInOrder) {
    change<HxDbLayerTableRecord>(walls, [&](HxDbLayerTableRecord& record) {
        record.setIsLocked(true);
        EXPECT_EQ(told(), (Log{"object opened for modify", "drawing opened for modify WALLS"}));
        record.setIsOff(true);
        EXPECT_EQ(record.setColor(HxCmColor::byIndex(4)), Hx::eOk);
        EXPECT_EQ(told(), Log{}) << "further changes are told at the close";
    });
    EXPECT_EQ(told(), (Log{"object modified", "drawing modified WALLS", "object closed"}));
}

TEST_F(Notifications, ExtendedDataAndErasureHaveTheirOwn) {
    change<HxDbObject>(walls, [](HxDbObject& object) {
        EXPECT_EQ(object.setXData(Chain(hxutBuildList(1001, L"TOOLS", 1070, 3, 0)).get()), Hx::eOk);
    });
    EXPECT_EQ(told(), (Log{"object opened for modify", "drawing opened for modify WALLS", "object modified",
                           "object xdata", "drawing modified WALLS", "object closed"}));
    erase(walls);
    EXPECT_EQ(told(), (Log{"object opened for modify", "drawing opened for modify WALLS", "object erased",
                           "drawing erased WALLS", "object closed"}));
    erase(walls, false);
    EXPECT_EQ(told(), (Log{"object opened for modify", "drawing opened for modify WALLS", "object unerased",
                           "drawing unerased WALLS", "object closed"}));
}

TEST_F(Notifications, WhatChangesNothingTellsNothing) {
    change<HxDbLayerTableRecord>(walls, [](HxDbLayerTableRecord& record) {
        record.setIsLocked(false);
        EXPECT_EQ(record.setIsFrozen(false), Hx::eOk);
        EXPECT_EQ(record.setColor(HxCmColor::byIndex(1)), Hx::eOk);
        EXPECT_EQ(record.setName(L"WALLS"), Hx::eOk);
        EXPECT_EQ(record.setName(L"DOORS"), Hx::eDuplicateRecordName);
        EXPECT_FALSE(record.isModified());
    });
    EXPECT_EQ(database->setClayer(layer(L"0")), Hx::eOk);
    EXPECT_EQ(told(), Log{});
    EXPECT_FALSE(database->isModified());
}

TEST_F(Notifications, DowngradingTellsAndReadingOnIsQuiet) {
    const HxDbObjectPointer<HxDbLayerTableRecord> record(walls, HxDb::kForWrite);
    record->setIsLocked(true);
    told();
    EXPECT_EQ(record->downgradeOpen(), Hx::eOk);
    EXPECT_EQ(told(), (Log{"object modified", "drawing modified WALLS"}));
    EXPECT_FALSE(record->isWriteEnabled());
    EXPECT_TRUE(record->isReadEnabled());
    EXPECT_EQ(record->close(), Hx::eOk);
    EXPECT_EQ(record->upgradeOpen(), Hx::eNotOpenForRead);
    EXPECT_EQ(record->isModified(), false);
}

TEST_F(Notifications, UndoAndRedoTellTheSameAndThatTheyDo) {
    step(L"LOCK", [&] { lock(walls); });
    step(L"NEW", [&] { addLayer(L"NEW"); });
    told();
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(told(), (Log{"drawing opened for modify NEW", "drawing unappended NEW"}));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    const Log restored{"object opened for modify", "drawing opened for modify WALLS",
                       "object modified",          "object undone",
                       "drawing modified WALLS",   "object closed"};
    EXPECT_EQ(told(), restored);
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_EQ(told(), restored);
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_EQ(told(), (Log{"drawing opened for modify NEW", "drawing reappended NEW"}));
}

TEST_F(Notifications, HeaderValuesTellBeforeAndAfter) {
    ASSERT_EQ(database->setClayer(walls), Hx::eOk);
    EXPECT_EQ(told(), (Log{"drawing will change CLAYER", "drawing changed CLAYER"}));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(told(), (Log{"drawing will change CLAYER", "drawing changed CLAYER"}));
    EXPECT_EQ(database->clayer(), layer(L"0"));
}

TEST_F(Notifications, ObjectsAreForLookingWhileTheyNotify) {
    int calls = 0;
    WhileModified reactor([&](const HxDbObject* object) {
        ++calls;
        HxDbObject* opened = nullptr;
        EXPECT_TRUE(object->isNotifyEnabled());
        EXPECT_FALSE(object->isWriteEnabled());
        EXPECT_EQ(hxdbOpenObject(opened, walls, HxDb::kForWrite), Hx::eWasOpenForNotify);
        EXPECT_EQ(hxdbOpenObject(opened, walls, HxDb::kForRead), Hx::eWasOpenForNotify);
        auto* record = at<HxDbLayerTableRecord>(walls);
        EXPECT_EQ(record->upgradeOpen(), Hx::eWasOpenForNotify);
        EXPECT_EQ(record->setIsFrozen(true), Hx::eWasOpenForNotify);
        ASSERT_EQ(hxdbOpenObject(opened, walls, HxDb::kForNotify), Hx::eOk);
        EXPECT_TRUE(HxDbLayerTableRecord::cast(opened)->isLocked());
        EXPECT_EQ(opened->close(), Hx::eOk);
        lock(layer(L"DOORS"));
    });
    hxdbObjectPointer(walls)->addReactor(&reactor);
    lock(walls);
    hxdbObjectPointer(walls)->removeReactor(&reactor);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(at<HxDbLayerTableRecord>(walls)->isFrozen());
    EXPECT_TRUE(at<HxDbLayerTableRecord>(layer(L"DOORS"))->isLocked()) << "other objects may be changed";
}

TEST_F(Notifications, OpensForNotifyGoBesideOthers) {
    HxDbObject* looking = nullptr;
    ASSERT_EQ(hxdbOpenObject(looking, walls, HxDb::kForNotify), Hx::eOk);
    {
        const HxDbObjectPointer<HxDbObject> reading(walls, HxDb::kForRead);
        EXPECT_EQ(reading.openStatus(), Hx::eOk);
    }
    looking->close();  // either of the two closes let go of one open
    lock(walls);
    EXPECT_EQ(looking->close(), Hx::eNotOpenForRead);
}

TEST_F(Notifications, ObjectsBeingRestoredAreClosedToAll) {
    step(L"LOCK", [&] { lock(walls); });
    int calls = 0;
    WhileOpenedForModify reactor([&](const HxDbObject* object) {
        ++calls;
        HxDbObject* opened = nullptr;
        EXPECT_TRUE(object->isUndoing());
        EXPECT_EQ(hxdbOpenObject(opened, walls, HxDb::kForRead), Hx::eWasOpenForUndo);
        EXPECT_EQ(at<HxDbLayerTableRecord>(walls)->setIsFrozen(true), Hx::eWasOpenForUndo);
    });
    hxdbObjectPointer(walls)->addReactor(&reactor);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    hxdbObjectPointer(walls)->removeReactor(&reactor);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(hxdbObjectPointer(walls)->isUndoing());
}

TEST_F(Notifications, ReactorsComeAndGoInsideANotification) {
    Log late;
    ObjectRecorder newcomer(late);
    std::unique_ptr<WhileModified> leaving;
    int second = 0;
    WhileModified victim([&](const HxDbObject*) { ++second; });
    leaving = std::make_unique<WhileModified>([&](const HxDbObject* object) {
        object->removeReactor(&victim);
        object->addReactor(&newcomer);
        object->removeReactor(leaving.get());
    });
    const HxDbObject* object = hxdbObjectPointer(walls);
    object->addReactor(leaving.get());
    object->addReactor(&victim);
    object->addReactor(&victim);
    lock(walls);
    EXPECT_EQ(second, 0) << "it was removed before its turn";
    EXPECT_EQ(late, Log{"object closed"}) << "told from the next notification on";
    EXPECT_FALSE(object->hasReactor(leaving.get()));
    object->addReactor(&victim);
    object->addReactor(&victim);
    lock(walls, false);
    EXPECT_EQ(second, 1) << "added twice, told once";
    object->removeReactor(&newcomer);
    object->removeReactor(&victim);
}

TEST_F(Notifications, TheDrawingSaysGoodbye) {
    database.reset();
    EXPECT_EQ(told(), (Log{"drawing goodbye", "object goodbye"}));
}

}  // namespace korvex::test
