// Transactions: what they hold open, what they keep and take back, alone and nested.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Transactions : public KernelTest {
protected:
    Transactions() : manager(*database->transactionManager()) {}

    /// The layer, held open by the top transaction.
    HxDbLayerTableRecord* get(HxDbObjectId id, HxDb::OpenMode mode = HxDb::kForWrite) {
        HxDbObject* object = nullptr;
        EXPECT_EQ(manager.getObject(object, id, mode), Hx::eOk);
        return HxDbLayerTableRecord::cast(object);
    }
    /// Adds a layer that the top transaction holds.
    HxDbLayerTableRecord* addHeld(const wchar_t* name) {
        auto* record = new HxDbLayerTableRecord;
        EXPECT_EQ(record->setName(name), Hx::eOk);
        const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
        EXPECT_EQ(table->add(record), Hx::eOk);
        EXPECT_EQ(manager.addNewlyCreatedDBRObject(record), Hx::eOk);
        return record;
    }
    bool isOpen(HxDbObjectId id) { return hxdbObjectPointer(id)->isReadEnabled(); }

    HxDbTransactionManager& manager;
    HxDbObjectId walls = layer(L"WALLS");
    HxDbObjectId doors = layer(L"DOORS");
};

}  // namespace

TEST_F(Transactions, WithoutOneNothingIsHeld) {
    HxDbObject* object = nullptr;
    EXPECT_EQ(manager.getObject(object, walls, HxDb::kForRead), Hx::eNoActiveTransactions);
    EXPECT_EQ(manager.endTransaction(), Hx::eNoActiveTransactions);
    EXPECT_EQ(manager.abortTransaction(), Hx::eNoActiveTransactions);
    EXPECT_EQ(manager.addNewlyCreatedDBRObject(hxdbObjectPointer(walls)), Hx::eNoActiveTransactions);
    EXPECT_EQ(manager.topTransaction(), nullptr);
    EXPECT_FALSE(hxdbObjectPointer(walls)->isTransactionResident());
}

TEST_F(Transactions, ObjectsStayOpenUntilTheEnd) {
    HxTransaction* transaction = manager.startTransaction();
    EXPECT_EQ(manager.topTransaction(), transaction);
    HxDbLayerTableRecord* record = get(walls, HxDb::kForRead);
    EXPECT_TRUE(record->isTransactionResident());
    EXPECT_EQ(record->close(), Hx::eOk);
    EXPECT_TRUE(record->isReadEnabled()) << "a close leaves the transaction's hold";
    HxDbObject* same = nullptr;
    ASSERT_EQ(transaction->getObject(same, walls, HxDb::kForWrite), Hx::eOk);
    EXPECT_EQ(same, record);
    EXPECT_TRUE(record->isWriteEnabled());
    record->setIsLocked(true);
    EXPECT_EQ(record->close(), Hx::eOk);
    EXPECT_TRUE(record->isWriteEnabled());
    ASSERT_EQ(manager.endTransaction(), Hx::eOk);
    EXPECT_FALSE(isOpen(walls));
    EXPECT_FALSE(record->isTransactionResident());
    EXPECT_TRUE(record->isLocked());
}

TEST_F(Transactions, OtherOpensOfAHeldObjectAreCountedApart) {
    manager.startTransaction();
    HxDbLayerTableRecord* record = get(walls, HxDb::kForRead);
    HxDbObject* other = nullptr;
    ASSERT_EQ(hxdbOpenObject(other, walls, HxDb::kForRead), Hx::eOk);
    HxDbObject* object = nullptr;
    EXPECT_EQ(manager.getObject(object, walls, HxDb::kForWrite), Hx::eWasOpenForRead);
    EXPECT_EQ(other->close(), Hx::eOk);
    EXPECT_EQ(other->close(), Hx::eOk);
    EXPECT_EQ(manager.getObject(object, walls, HxDb::kForWrite), Hx::eOk);
    EXPECT_TRUE(record->isWriteEnabled());
    EXPECT_EQ(hxdbOpenObject(other, walls, HxDb::kForRead), Hx::eWasOpenForWrite);
    ASSERT_EQ(manager.endTransaction(), Hx::eOk);
    EXPECT_FALSE(isOpen(walls));
}

TEST_F(Transactions, AbortTakesBackChangesAdditionsAndErasures) {
    const std::string before = saved();
    manager.startTransaction();
    get(walls)->setIsLocked(true);
    EXPECT_EQ(get(doors)->erase(), Hx::eOk);
    HxDbLayerTableRecord* added = addHeld(L"NEW");
    const HxDbObjectId id = added->objectId();
    recolor(layer(L"EMPTY"), 2);
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    Log log;
    DrawingRecorder reactor(log);
    database->addReactor(&reactor);
    ASSERT_EQ(manager.abortTransaction(), Hx::eOk);
    database->removeReactor(&reactor);
    EXPECT_NE(std::find(log.begin(), log.end(), "drawing unappended NEW"), log.end());
    EXPECT_NE(std::find(log.begin(), log.end(), "drawing unerased DOORS"), log.end());
    EXPECT_TRUE(id.isErased());
    EXPECT_FALSE(isOpen(walls) || isOpen(doors) || isOpen(id));
    EXPECT_EQ(changedLines(before, saved()), Log{});
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(journal().undoCount(), 0U);
}

TEST_F(Transactions, AnInnerAbortTakesBackItsOwnOnly) {
    manager.startTransaction();
    get(walls)->setIsLocked(true);
    manager.startTransaction();
    EXPECT_EQ(manager.numActiveTransactions(), 2);
    get(walls)->setIsOff(true);
    get(doors)->setIsLocked(true);
    addHeld(L"NEW");
    ASSERT_EQ(manager.abortTransaction(), Hx::eOk);
    EXPECT_FALSE(isOpen(doors)) << "what the inner one opened is closed";
    auto* record = at<HxDbLayerTableRecord>(walls);
    EXPECT_TRUE(record->isWriteEnabled()) << "what the outer one opened is not";
    EXPECT_TRUE(record->isLocked());
    EXPECT_FALSE(record->isOff());
    EXPECT_FALSE(at<HxDbLayerTableRecord>(doors)->isLocked());
    EXPECT_EQ(layer(L"NEW"), HxDbObjectId());
    record->setVPDFLT(true);
    ASSERT_EQ(manager.endTransaction(), Hx::eOk);
    EXPECT_TRUE(has(this->record(walls), "2 WALLS | 70 6 |"));
}

TEST_F(Transactions, AnOuterAbortTakesBackEndedInnerOnes) {
    const std::string before = saved();
    manager.startTransaction();
    manager.startTransaction();
    get(walls)->setIsLocked(true);
    const HxDbObjectId added = addHeld(L"NEW")->objectId();
    ASSERT_EQ(manager.endTransaction(), Hx::eOk);
    EXPECT_TRUE(isOpen(walls)) << "open until the outermost ends";
    EXPECT_TRUE(isOpen(added));
    ASSERT_EQ(manager.abortTransaction(), Hx::eOk);
    EXPECT_FALSE(isOpen(walls) || isOpen(added));
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(Transactions, NewObjectsAreThoseOfTheInnermost) {
    auto* loose = new HxDbLayerTableRecord;
    EXPECT_TRUE(loose->isNewObject());
    delete loose;
    manager.startTransaction();
    const HxDbLayerTableRecord* added = addHeld(L"NEW");
    EXPECT_TRUE(added->isNewObject());
    EXPECT_FALSE(hxdbObjectPointer(walls)->isNewObject());
    manager.startTransaction();
    EXPECT_FALSE(added->isNewObject());
    EXPECT_TRUE(addHeld(L"NEWER")->isNewObject());
    manager.endTransaction();
    manager.endTransaction();
    EXPECT_FALSE(added->isNewObject());
}

TEST_F(Transactions, UndoWaitsForTheEndAndTakesTheWholeBack) {
    const std::string before = saved();
    manager.startTransaction();
    get(walls)->setIsLocked(true);
    EXPECT_EQ(journal().undo(), Hx::eInvalidContext);
    EXPECT_EQ(journal().redo(), Hx::eInvalidContext);
    manager.startTransaction();
    get(walls)->setIsOff(true);
    manager.endTransaction();
    manager.endTransaction();
    EXPECT_EQ(journal().undoCount(), 1U);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), Log{});
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_TRUE(has(record(walls), "70 4 | 62 -1 |"));
}

TEST_F(Transactions, CancellingAHeldObjectTakesBackAndHoldsOn) {
    manager.startTransaction();
    HxDbLayerTableRecord* record = get(walls);
    record->setIsLocked(true);
    EXPECT_EQ(record->cancel(), Hx::eOk);
    EXPECT_FALSE(record->isLocked());
    EXPECT_TRUE(record->isWriteEnabled());
    record->setIsOff(true);
    ASSERT_EQ(manager.endTransaction(), Hx::eOk);
    EXPECT_FALSE(isOpen(walls));
    EXPECT_TRUE(record->isOff());
    EXPECT_EQ(journal().undoCount(), 1U);
}

TEST_F(Transactions, RefusalsLeaveTheHoldAlone) {
    manager.startTransaction();
    HxDbObject* object = nullptr;
    {
        const HxDbObjectPointer<HxDbObject> writer(doors, HxDb::kForWrite);
        EXPECT_EQ(manager.getObject(object, doors, HxDb::kForRead), Hx::eWasOpenForWrite);
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(get(walls)->erase(), Hx::eOk);
    EXPECT_EQ(manager.getObject(object, walls, HxDb::kForRead), Hx::eWasErased);
    EXPECT_EQ(manager.getObject(object, walls, HxDb::kForRead, true), Hx::eOk);
    auto* loose = new HxDbLayerTableRecord;
    EXPECT_EQ(manager.addNewlyCreatedDBRObject(loose), Hx::eNotInDatabase);
    delete loose;
    EXPECT_EQ(manager.addNewlyCreatedDBRObject(hxdbObjectPointer(doors)), Hx::eNotOpenForWrite);
    EXPECT_EQ(manager.abortTransaction(), Hx::eOk);
    EXPECT_FALSE(walls.isErased());
    EXPECT_FALSE(isOpen(walls) || isOpen(doors));
}

}  // namespace korvex::test
