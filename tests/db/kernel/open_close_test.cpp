// Who may open an object while others have it open, and what is refused with which status.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "sdk/hxdbentity.h"

#include <gtest/gtest.h>

namespace korvex::test {
namespace {

class OpenClose : public ::testing::Test {
protected:
    Hx::ErrorStatus open(HxDb::OpenMode mode, bool erased = false) {
        HxDbObject* object = nullptr;
        const Hx::ErrorStatus status = hxdbOpenObject(object, id, mode, erased);
        EXPECT_EQ(object != nullptr, status == Hx::eOk);
        return status;
    }
    HxDbObject* object() { return hxdbObjectPointer(id); }
    const HxDbStub& stub() { return *id.stub(); }
    bool isClosed() { return !stub().writer && stub().readers == 0 && stub().notifyOpens == 0; }

    HxDbDatabase database;
    HxDbObjectId id = [this] {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        auto* layer = new HxDbLayerTableRecord;
        layer->setName(L"A");
        HxDbObjectId added;
        table->add(added, layer);
        layer->close();
        return added;
    }();
};

TEST_F(OpenClose, ManyReadersOrOneWriter) {
    EXPECT_EQ(open(HxDb::kForRead), Hx::eOk);
    EXPECT_EQ(open(HxDb::kForRead), Hx::eOk);
    EXPECT_EQ(open(HxDb::kForWrite), Hx::eWasOpenForRead);
    EXPECT_EQ(open(HxDb::kForNotify), Hx::eOk) << "notify goes beside readers";
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(isClosed());
        EXPECT_EQ(object()->close(), Hx::eOk);
    }
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(object()->close(), Hx::eNotOpenForRead) << "nothing is left to close";

    EXPECT_EQ(open(HxDb::kForWrite), Hx::eOk);
    EXPECT_EQ(open(HxDb::kForWrite), Hx::eWasOpenForWrite);
    EXPECT_EQ(open(HxDb::kForRead), Hx::eWasOpenForWrite);
    EXPECT_TRUE(object()->isWriteEnabled());
    EXPECT_EQ(object()->close(), Hx::eOk);
    EXPECT_FALSE(object()->isReadEnabled());
    EXPECT_FALSE(object()->isWriteEnabled());
}

TEST_F(OpenClose, UpgradesAndDowngrades) {
    EXPECT_EQ(object()->upgradeOpen(), Hx::eNotOpenForRead);
    EXPECT_EQ(object()->downgradeOpen(), Hx::eNotOpenForWrite);
    open(HxDb::kForRead);
    open(HxDb::kForRead);
    EXPECT_EQ(object()->upgradeOpen(), Hx::eWasOpenForRead) << "another reads";
    object()->close();
    EXPECT_EQ(object()->upgradeOpen(), Hx::eOk);
    EXPECT_EQ(object()->upgradeOpen(), Hx::eWasOpenForWrite);
    auto* layer = HxDbLayerTableRecord::cast(object());
    layer->setIsLocked(true);
    EXPECT_TRUE(layer->isModified());
    EXPECT_EQ(object()->downgradeOpen(), Hx::eOk);
    EXPECT_FALSE(layer->isModified());
    EXPECT_TRUE(layer->isLocked());
    EXPECT_EQ(open(HxDb::kForRead), Hx::eOk) << "it is open for read now";
    object()->close();
    object()->close();
    EXPECT_TRUE(isClosed());
}

TEST_F(OpenClose, TellsWhatIdsStandFor) {
    HxDbObject* any = nullptr;
    EXPECT_EQ(hxdbOpenObject(any, HxDbObjectId(), HxDb::kForRead), Hx::eNullObjectId);
    HxDbStub empty;
    empty.database = &database;
    EXPECT_EQ(hxdbOpenObject(any, HxDbObjectId(&empty), HxDb::kForRead), Hx::eNullObject);
    EXPECT_FALSE(HxDbObjectId(&empty).isValid());
    HxDbLinetypeTableRecord* linetype = nullptr;
    EXPECT_EQ(hxdbOpenObject(linetype, id, HxDb::kForRead), Hx::eWrongClass);
    EXPECT_TRUE(isClosed()) << "an object of another class is not left open";
    HxDbSymbolTableRecord* record = nullptr;
    EXPECT_EQ(hxdbOpenObject(record, id, HxDb::kForRead), Hx::eOk) << "a base class will do";
    record->close();
}

TEST_F(OpenClose, ErasedObjectsOpenOnRequest) {
    open(HxDb::kForWrite);
    EXPECT_EQ(object()->erase(), Hx::eOk);
    EXPECT_EQ(object()->erase(), Hx::eWasErased);
    object()->close();
    EXPECT_TRUE(id.isErased());
    EXPECT_TRUE(id.isValid());
    EXPECT_EQ(open(HxDb::kForRead), Hx::eWasErased);
    EXPECT_EQ(open(HxDb::kForRead, true), Hx::eOk);
    EXPECT_EQ(object()->erase(false), Hx::eNotOpenForWrite);
    object()->close();
    EXPECT_EQ(open(HxDb::kForWrite, true), Hx::eOk);
    EXPECT_EQ(object()->erase(false), Hx::eOk);
    object()->close();
    EXPECT_EQ(open(HxDb::kForRead), Hx::eOk);
    object()->close();
}

TEST_F(OpenClose, ChangesNeedAnOpenForWrite) {
    const std::size_t recorded = journal(database).size();
    auto* layer = HxDbLayerTableRecord::cast(object());
    EXPECT_EQ(layer->setColor(HxCmColor::byIndex(1)), Hx::eNotOpenForWrite);
    open(HxDb::kForRead);
    EXPECT_EQ(layer->setIsFrozen(true), Hx::eNotOpenForWrite);
    layer->setIsLocked(true);
    EXPECT_FALSE(layer->isLocked());
    EXPECT_FALSE(layer->isFrozen());
    layer->close();
    EXPECT_EQ(journal(database).size(), recorded);
}

TEST_F(OpenClose, WhoeverIsLateLeavesTheNextOneAlone) {
    using Pointer = HxDbObjectPointer<HxDbLayerTableRecord>;
    auto late = std::make_unique<Pointer>(id, HxDb::kForRead);
    const std::uint32_t serial = object()->openSerial();
    open(HxDb::kForRead);
    object()->close();
    EXPECT_EQ(object()->openSerial(), serial) << "it was open all the time";
    EXPECT_EQ((*late)->upgradeOpen(), Hx::eOk);
    EXPECT_EQ((*late)->downgradeOpen(), Hx::eOk);
    EXPECT_EQ(object()->openSerial(), serial);
    EXPECT_EQ(object()->close(), Hx::eOk) << "someone lets go of what the pointer opened";
    const Pointer next(id, HxDb::kForWrite);
    EXPECT_NE(object()->openSerial(), serial);
    late.reset();
    EXPECT_TRUE(object()->isWriteEnabled());
    const HxDbLayerTableRecord unborn;
    EXPECT_EQ(unborn.openSerial(), 0U);
}

TEST_F(OpenClose, OpensAnyClassOnRequest) {
    HxDbObject* any = nullptr;
    const HxRxClass* const other = HxDbLinetypeTableRecord::desc();
    EXPECT_EQ(hxdbOpenObjectEx(any, id, HxDb::kForRead, false, other, 0), Hx::eWrongClass);
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(hxdbOpenObjectEx(any, id, HxDb::kForRead, false, other, 1), Hx::eOk);
    any->close();
}

TEST_F(OpenClose, CountsReadersToTheLast) {
    constexpr int kMost = 65535;
    for (int i = 0; i < kMost; ++i) {
        ASSERT_EQ(open(HxDb::kForRead), Hx::eOk);
    }
    EXPECT_EQ(open(HxDb::kForRead), Hx::eAtMaxReaders);
    for (int i = 0; i < kMost; ++i) {
        ASSERT_EQ(object()->close(), Hx::eOk);
    }
    EXPECT_TRUE(isClosed());
}

}  // namespace
}  // namespace korvex::test
