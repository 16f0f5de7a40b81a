// What the guard over a layer's record opens, borrows and closes, and that nobody else is hurt by it.
#include "tests/module/module_fixture.h"

#include "host/db/kernel/stub.h"
#include "model/auto_layer_record.h"

#include <random>

namespace korvex::test {
namespace {

/// A drawing with the layer A and an entry for it.
class AutoLayerRecord : public EditorTest {
protected:
    void SetUp() override {
        run(L"-LAYER New A,B\n\n");
        entry = entryOf(L"A");
    }
    KvLayerData entryOf(const wchar_t* name) {
        KvLayerData data;
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        EXPECT_TRUE(data.fillData(record.object(), &database()));
        return data;
    }
    int readers() const { return entry.layerId().stub()->readers; }
    bool isWriting() const { return entry.layerId().stub()->writer; }
    bool isClosed() const { return readers() == 0 && !isWriting(); }
    HxDbTransactionManager& transactions() { return *database().transactionManager(); }

    KvLayerData entry;
};

TEST_F(AutoLayerRecord, HoldsNothingWithoutAnEntryThatMayBeUsed) {
    KvLayerData unfilled;
    KvLayerData gone = entry;
    gone.setValid(false);
    const KvAutoLayerRecordPtr empty;
    const KvAutoLayerRecordPtr ofNull(nullptr, true);
    const KvAutoLayerRecordPtr ofInvalid(&gone, true);
    const KvAutoLayerRecordPtr lentInvalid(&gone, false);
    const KvAutoLayerRecordPtr lentUnfilled(&unfilled, false);
    for (const KvAutoLayerRecordPtr* guard : {&empty, &ofNull, &ofInvalid, &lentInvalid, &lentUnfilled}) {
        EXPECT_EQ(guard->openStatus(), Hx::eNullObject);
        EXPECT_EQ(guard->object(), nullptr);
    }
    EXPECT_EQ(KvAutoLayerRecordPtr(&unfilled, true).openStatus(), Hx::eNullObjectId);
    KvAutoLayerRecordPtr guard;
    EXPECT_EQ(guard.close(), Hx::eNullObject);
    EXPECT_TRUE(isClosed());
}

TEST_F(AutoLayerRecord, OpensAndClosesWhatNobodyHasOpen) {
    {
        KvAutoLayerRecordPtr guard(&entry, true);
        EXPECT_EQ(guard.openStatus(), Hx::eOk);
        EXPECT_STREQ(guard->name(), L"A");
        EXPECT_EQ(readers(), 1);
        EXPECT_EQ(guard.close(), Hx::eOk);
        EXPECT_TRUE(isClosed());
        EXPECT_EQ(guard.object(), nullptr);
        EXPECT_EQ(guard.openStatus(), Hx::eNullObject);
        EXPECT_EQ(guard.close(), Hx::eNullObject);
    }
    {
        const KvAutoLayerRecordPtr lent(&entry, false);
        EXPECT_EQ(lent.object(), entry.layerRec());
        EXPECT_TRUE(isClosed());
        const HxDbObjectPointer<HxDbLayerTableRecord> held(entry.layerId(), HxDb::kForRead);
        { const KvAutoLayerRecordPtr another(&entry, false); }
        EXPECT_EQ(readers(), 1) << "what was lent is not closed";
    }
}

TEST_F(AutoLayerRecord, OpensDirectlyWithoutATransactionManager) {
    HxDbTransactionManager* const none = nullptr;
    transactions().startTransaction();
    {
        const KvAutoLayerRecordPtr guard(none, &entry, true);
        EXPECT_EQ(guard.openStatus(), Hx::eOk);
        EXPECT_STREQ(guard->name(), L"A");
        EXPECT_EQ(readers(), 1);
        EXPECT_FALSE(guard->isTransactionResident());
    }
    EXPECT_TRUE(isClosed()) << "it closes what it opened itself";
    {
        const KvAutoLayerRecordPtr lent(none, &entry, false);
        EXPECT_EQ(lent.object(), entry.layerRec());
        EXPECT_TRUE(isClosed());
    }
    transactions().abortTransaction();
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(entry.layerId(), HxDb::kForWrite);
        ASSERT_EQ(record->erase(), Hx::eOk);
    }
    EXPECT_EQ(KvAutoLayerRecordPtr(none, &entry, true).openStatus(), Hx::eOk) << "erased ones, too";
    EXPECT_TRUE(isClosed());
}

TEST_F(AutoLayerRecord, ErasedRecordsOpenOnRequest) {
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(entry.layerId(), HxDb::kForWrite);
        ASSERT_EQ(record->erase(), Hx::eOk);
    }
    EXPECT_EQ(KvAutoLayerRecordPtr(&entry, true, false, true).openStatus(), Hx::eWasErased);
    EXPECT_EQ(KvAutoLayerRecordPtr(&entry, true, false, false).openStatus(), Hx::eWasErased);
    EXPECT_EQ(KvAutoLayerRecordPtr(&entry, true).openStatus(), Hx::eOk);
    EXPECT_TRUE(isClosed());
}

TEST_F(AutoLayerRecord, BorrowsWhatIsOpenElsewhere) {
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> writer(entry.layerId(), HxDb::kForWrite);
        writer->setIsLocked(true);
        {
            KvAutoLayerRecordPtr guard(&entry, true);
            EXPECT_EQ(guard.openStatus(), Hx::eOk);
            EXPECT_TRUE(guard->isLocked());
            EXPECT_EQ(guard.close(), Hx::eOk);
        }
        EXPECT_TRUE(isWriting());
        writer->setIsOff(true);
    }
    EXPECT_TRUE(entry.layerRec()->isOff());
    EXPECT_TRUE(isClosed());
}

/// Makes a guard inside of every notification of a layer.
class GuardInNotifications : public HxDbObjectReactor {
public:
    explicit GuardInNotifications(KvLayerData& entry) : m_entry(entry) { entry.layerRec()->addReactor(this); }
    ~GuardInNotifications() override { m_entry.layerRec()->removeReactor(this); }
    void openedForModify(const HxDbObject* object) override { look(object); }
    void modified(const HxDbObject* object) override { look(object); }
    int seen = 0;

private:
    void look(const HxDbObject* object) {
        const KvAutoLayerRecordPtr guard(&m_entry, true);
        EXPECT_EQ(guard.openStatus(), Hx::eOk);
        EXPECT_EQ(guard.object(), object);
        ++seen;
    }
    KvLayerData& m_entry;
};

TEST_F(AutoLayerRecord, BorrowsInsideNotificationsOfChangesAndOfUndo) {
    GuardInNotifications guards(entry);
    run(L"-LAYER LOck A\n\n");
    EXPECT_EQ(guards.seen, 2);
    run(L"U\n");
    EXPECT_EQ(guards.seen, 4);
    EXPECT_TRUE(isClosed());
    EXPECT_FALSE(entry.layerRec()->isLocked());
}

TEST_F(AutoLayerRecord, ClosesOnceWhatWasOpenForReadAlready) {
    HxDbObject* held = nullptr;
    ASSERT_EQ(hxdbOpenObject(held, entry.layerId(), HxDb::kForRead), Hx::eOk);
    ASSERT_EQ(hxdbOpenObject(held, entry.layerId(), HxDb::kForRead), Hx::eOk);
    {
        const KvAutoLayerRecordPtr guard(&entry, true);
        EXPECT_EQ(guard.object(), held);
        EXPECT_EQ(readers(), 2) << "no open of its own";
    }
    EXPECT_EQ(readers(), 1);
    { const KvAutoLayerRecordPtr guard(&entry, true); }
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(held->close(), Hx::eNotOpenForRead) << "and no count runs below nothing";
    EXPECT_EQ(held->close(), Hx::eNotOpenForRead);
    const HxDbObjectPointer<HxDbLayerTableRecord> writer(entry.layerId(), HxDb::kForWrite);
    EXPECT_TRUE(writer);
}

TEST_F(AutoLayerRecord, LeavesAloneWhoeverOpenedTheRecordSince) {
    std::unique_ptr<KvAutoLayerRecordPtr> guard;
    std::unique_ptr<HxDbObjectPointer<HxDbLayerTableRecord>> first =
        std::make_unique<HxDbObjectPointer<HxDbLayerTableRecord>>(entry.layerId(), HxDb::kForRead);
    guard = std::make_unique<KvAutoLayerRecordPtr>(&entry, true);
    first.reset();
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> writer(entry.layerId(), HxDb::kForWrite);
        guard.reset();
        EXPECT_TRUE(isWriting());
        EXPECT_EQ(writer->setColor(HxCmColor::byIndex(3)), Hx::eOk);
    }
    // The other way round: the guard takes the open of a reader, who lets go late.
    first = std::make_unique<HxDbObjectPointer<HxDbLayerTableRecord>>(entry.layerId(), HxDb::kForRead);
    { const KvAutoLayerRecordPtr taken(&entry, true); }
    const HxDbObjectPointer<HxDbLayerTableRecord> writer(entry.layerId(), HxDb::kForWrite);
    first.reset();
    EXPECT_TRUE(isWriting());
}

TEST_F(AutoLayerRecord, WhatATransactionHoldsStaysOpen) {
    transactions().startTransaction();
    {
        KvAutoLayerRecordPtr guard(&transactions(), &entry, true);
        EXPECT_EQ(guard.openStatus(), Hx::eOk);
        EXPECT_EQ(guard.close(), Hx::eOk);
        const KvAutoLayerRecordPtr direct(&entry, true);
        EXPECT_EQ(direct.openStatus(), Hx::eOk);
    }
    EXPECT_EQ(readers(), 1);
    transactions().endTransaction();
    EXPECT_TRUE(isClosed());
    EXPECT_EQ(KvAutoLayerRecordPtr(&transactions(), &entry, true).openStatus(), Hx::eNoActiveTransactions);
}

TEST_F(AutoLayerRecord, TakesOverARecordThatItIsGiven) {
    const KvLayerData other = entryOf(L"B");
    HxDbLayerTableRecord* given = nullptr;
    ASSERT_EQ(hxdbOpenObject(given, other.layerId(), HxDb::kForRead), Hx::eOk);
    {
        KvAutoLayerRecordPtr guard(&entry, true);
        guard = nullptr;
        EXPECT_STREQ(guard->name(), L"A");
        guard = given;
        EXPECT_EQ(guard.object(), given);
        EXPECT_TRUE(isClosed());
    }
    EXPECT_EQ(given->close(), Hx::eNotOpenForRead) << "a guard that opens closes";
    ASSERT_EQ(hxdbOpenObject(given, other.layerId(), HxDb::kForRead), Hx::eOk);
    {
        KvAutoLayerRecordPtr guard;
        guard = given;
    }
    EXPECT_EQ(given->close(), Hx::eOk) << "an empty one does not";
    HxDbLayerTableRecord unborn;
    KvAutoLayerRecordPtr guard(&entry, true);
    guard = &unborn;
    EXPECT_EQ(guard.close(), Hx::eOk);
}

/// Readers, writers, guards and transactions come and go in any order. Beside the kernel's counts a model of
/// the rules is kept: what each of them adds, and what it takes away when it goes.
class Walk {
public:
    Walk(KvLayerData& entry, HxDbTransactionManager& transactions, unsigned seed)
        : m_entry(entry), m_stub(*entry.layerId().stub()), m_transactions(transactions), m_random(seed) {}

    void step() {
        switch (pick(10)) {
        case 0: openPointer(HxDb::kForRead); break;
        case 1: openPointer(HxDb::kForWrite); break;
        case 2:
        case 3: openGuard(); break;
        case 4: openTransactionGuard(); break;
        case 5: changeTransaction(); break;
        case 6: editThroughGuard(); break;
        default: letGo(pick(8)); break;
        }
        compare();
    }
    void letAllGo() {
        while (!m_users.empty()) {
            letGo(pick(m_users.size()));
            compare();
        }
        while (m_transactions.numActiveTransactions() > 0) {
            endTransaction();
            compare();
        }
        EXPECT_EQ(m_stub.readers, 0);
        EXPECT_FALSE(m_stub.writer);
    }

private:
    using Pointer = HxDbObjectPointer<HxDbLayerTableRecord>;
    struct User {
        std::unique_ptr<Pointer> pointer;
        std::unique_ptr<KvAutoLayerRecordPtr> guard;
        unsigned stretch = 0;
        bool closes = false;
        bool writes = false;
    };

    std::size_t pick(std::size_t below) { return m_random() % below; }
    bool isOpen() const { return m_readers > 0 || m_writes; }

    /// What an open does by the rules; whether it succeeds.
    bool expectOpen(HxDb::OpenMode mode) {
        if (m_writes || (mode == HxDb::kForWrite && m_readers > 0)) return false;
        if (!isOpen()) ++m_stretch;
        if (mode == HxDb::kForWrite) {
            m_writes = true;
        } else {
            ++m_readers;
        }
        return true;
    }
    void expectClose(unsigned stretch) {
        if (stretch != m_stretch || (m_resident && (m_writes || m_readers == 1))) return;
        if (m_writes) {
            m_writes = false;
        } else if (m_readers > 0) {
            --m_readers;
        }
    }

    void openPointer(HxDb::OpenMode mode) {
        User user;
        user.pointer = std::make_unique<Pointer>(m_entry.layerId(), mode);
        const bool opens = expectOpen(mode);
        EXPECT_EQ(user.pointer->openStatus() == Hx::eOk, opens);
        if (!opens) return;
        user.stretch = m_stretch;
        user.closes = true;
        user.writes = mode == HxDb::kForWrite;
        m_users.push_back(std::move(user));
    }
    void openGuard() {
        User user;
        const bool opens = pick(4) > 0;
        user.guard = std::make_unique<KvAutoLayerRecordPtr>(&m_entry, opens);
        EXPECT_EQ(user.guard->openStatus(), Hx::eOk);
        user.closes = opens && !m_writes;
        if (opens && !isOpen()) expectOpen(HxDb::kForRead);
        user.stretch = m_stretch;
        m_users.push_back(std::move(user));
    }
    void openTransactionGuard() {
        User user;
        user.guard = std::make_unique<KvAutoLayerRecordPtr>(&m_transactions, &m_entry, true);
        const bool holds =
            m_resident || (m_transactions.numActiveTransactions() > 0 && expectOpen(HxDb::kForRead));
        EXPECT_EQ(user.guard->openStatus() == Hx::eOk, holds);
        m_resident = holds;
        m_users.push_back(std::move(user));
    }
    void changeTransaction() {
        if (m_transactions.numActiveTransactions() == 0) {
            m_transactions.startTransaction();
        } else if (pick(2) == 0) {
            HxDbObject* object = nullptr;
            const bool holds = m_resident ? m_writes || m_readers == 1 : expectOpen(HxDb::kForWrite);
            EXPECT_EQ(m_transactions.getObject(object, m_entry.layerId(), HxDb::kForWrite) == Hx::eOk, holds);
            if (holds) {
                m_writes = m_resident = true;
                m_readers = 0;
            }
        } else {
            endTransaction();
        }
    }
    void endTransaction() {
        EXPECT_EQ(pick(2) == 0 ? m_transactions.endTransaction() : m_transactions.abortTransaction(),
                  Hx::eOk);
        if (!m_resident) return;
        m_resident = false;
        expectClose(m_stretch);
    }
    /// As an edit does: to write, the change, and back.
    void editThroughGuard() {
        const KvAutoLayerRecordPtr guard(&m_entry, true);
        const bool own = !isOpen();
        if (own) ++m_stretch;
        const bool borrowed = m_writes;
        if (guard->upgradeOpen() == Hx::eOk) {
            guard->setIsLocked(!guard->isLocked());
            guard->downgradeOpen();
        }
        if (!own && !borrowed) expectClose(m_stretch);
    }
    void letGo(std::size_t at) {
        if (at >= m_users.size()) return;
        const User user = std::move(m_users[at]);
        m_users.erase(m_users.begin() + static_cast<std::ptrdiff_t>(at));
        if (user.closes) expectClose(user.stretch);
    }
    void compare() const {
        ASSERT_EQ(m_stub.readers, m_readers);
        ASSERT_EQ(m_stub.writer, m_writes);
        for (const User& user : m_users) {
            if (!user.writes) continue;
            ASSERT_TRUE(m_stub.writer) << "a writer was closed by someone else";
            ASSERT_EQ((*user.pointer)->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(1 + m_step))),
                      Hx::eOk);
        }
        m_step = (m_step + 1) % 200;
    }

    KvLayerData& m_entry;
    const HxDbStub& m_stub;
    HxDbTransactionManager& m_transactions;
    std::mt19937 m_random;
    std::vector<User> m_users;
    int m_readers = 0;
    bool m_writes = false;
    bool m_resident = false;
    unsigned m_stretch = 0;
    mutable int m_step = 0;
};

TEST_F(AutoLayerRecord, CountsAreWhatTheRulesGiveInAnyOrder) {
    for (unsigned seed = 1; seed <= 200 && !HasFailure(); ++seed) {
        SCOPED_TRACE(seed);
        Walk walk(entry, transactions(), seed);
        for (int i = 0; i < 150 && !HasFatalFailure(); ++i) {
            walk.step();
        }
        walk.letAllGo();
    }
}

TEST_F(AutoLayerRecord, EntriesTakeEveryLayerButThatOfConstraints) {
    SmallDrawing marks;
    marks.model(marks.line("*Adsk_Constraints", 0, 0, 1, 1) + marks.line("ADSK_CONSTRAINTS", 0, 0, 1, 1));
    QFile file(QString::fromStdWString(path("marks.dxf")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(marks.text()));
    file.close();
    HxDbDatabase drawing(false);
    ASSERT_EQ(drawing.readDwgFile(path("marks.dxf").c_str()), Hx::eOk) << drawing.readError();
    const HxDbObjectPointer<HxDbLayerTable> table(drawing.layerTableId(), HxDb::kForRead);
    const auto take = [&](KvLayerData& data, const wchar_t* name) {
        HxDbObjectId id;
        EXPECT_EQ(table->getAt(name, id), Hx::eOk);
        const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        return fillKvLayerData(&data, record.object(), &drawing);
    };
    KvLayerData data;
    EXPECT_FALSE(take(data, L"*ADSK_CONSTRAINTS"));
    EXPECT_TRUE(data.layerId().isNull());
    EXPECT_FALSE(data.fillData(nullptr, &drawing));
    EXPECT_TRUE(take(data, L"ADSK_CONSTRAINTS"));
    EXPECT_FALSE(fillKvLayerData(nullptr, data.layerRec(), &drawing));

    HxArray<KvLayerData*> list;
    EXPECT_FALSE(kvLayerInLayerManager(list, data.layerRec()));
    list.append(&data);
    EXPECT_TRUE(kvLayerInLayerManager(list, data.layerRec()));
    EXPECT_FALSE(kvLayerInLayerManager(list, entry.layerRec()));
    EXPECT_FALSE(kvLayerInLayerManager(list, nullptr));
}

}  // namespace
}  // namespace korvex::test
