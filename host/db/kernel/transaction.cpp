// Transactions: marks of the journal, and the objects that are held open meanwhile.
#include "host/db/kernel/database_imp.h"

HX_DEFINE_MEMBERS(HxTransaction, HxRxObject)
HX_DEFINE_MEMBERS(HxDbTransactionManager, HxRxObject)

using namespace korvex;

struct HxDbTransactionManager::Imp {
    struct Level {
        std::unique_ptr<HxTransaction> transaction;
        Journal::Mark mark = 0;
        std::vector<HxDbStub*> held;
    };
    explicit Imp(HxDbDatabase* of) : database(of) {}

    Hx::ErrorStatus hold(Level& level, HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                         bool openErased);
    Level* levelOf(const HxTransaction* transaction);

    HxDbDatabase* database;
    std::vector<Level> levels;
};

Hx::ErrorStatus HxDbTransactionManager::Imp::hold(Level& level, HxDbObject*& object, HxDbObjectId id,
                                                  HxDb::OpenMode mode, bool openErased) {
    object = nullptr;
    HxDbStub* stub = id.stub();
    if (!stub || !stub->resident) {
        const Hx::ErrorStatus status = hxdbOpenObject(object, id, mode, openErased);
        if (status == Hx::eOk && mode != HxDb::kForNotify) {
            stub->resident = true;
            level.held.push_back(stub);
        }
        return status;
    }
    if (stub->erased && !openErased) {
        return Hx::eWasErased;
    }
    if (mode == HxDb::kForWrite && !stub->writer) {
        const Hx::ErrorStatus status = stub->object->upgradeOpen();
        if (status != Hx::eOk) {
            return status;
        }
    }
    object = stub->object;
    return Hx::eOk;
}

HxDbTransactionManager::Imp::Level* HxDbTransactionManager::Imp::levelOf(const HxTransaction* transaction) {
    for (Level& level : levels) {
        if (level.transaction.get() == transaction) {
            return &level;
        }
    }
    return nullptr;
}

HxTransaction::~HxTransaction() = default;

Hx::ErrorStatus HxTransaction::getObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                         bool openErased) {
    HxDbTransactionManager::Imp& manager = *m_database->transactionManager()->m_imp;
    return manager.hold(*manager.levelOf(this), object, id, mode, openErased);
}

HxDbTransactionManager::HxDbTransactionManager(HxDbDatabase* database) : m_imp(new Imp(database)) {}

HxDbTransactionManager::~HxDbTransactionManager() { delete m_imp; }

HxTransaction* HxDbTransactionManager::startTransaction() {
    Imp::Level level;
    level.transaction.reset(new HxTransaction(m_imp->database));
    level.mark = journal(*m_imp->database).putMark();
    m_imp->levels.push_back(std::move(level));
    return m_imp->levels.back().transaction.get();
}

Hx::ErrorStatus HxDbTransactionManager::endTransaction() {
    if (m_imp->levels.empty()) {
        return Hx::eNoActiveTransactions;
    }
    const Imp::Level level = std::move(m_imp->levels.back());
    m_imp->levels.pop_back();
    journal(*m_imp->database).putMark();
    if (!m_imp->levels.empty()) {
        std::vector<HxDbStub*>& parent = m_imp->levels.back().held;
        parent.insert(parent.end(), level.held.begin(), level.held.end());
        return Hx::eOk;
    }
    for (HxDbStub* stub : level.held) {
        stub->resident = false;
        stub->object->close();
    }
    return Hx::eOk;
}

Hx::ErrorStatus HxDbTransactionManager::abortTransaction() {
    if (m_imp->levels.empty()) {
        return Hx::eNoActiveTransactions;
    }
    const Imp::Level level = std::move(m_imp->levels.back());
    m_imp->levels.pop_back();
    for (HxDbStub* stub : level.held) {
        stub->resident = false;
        if (stub->writer) {
            dropWriteOpen(*stub);
        } else if (stub->readers > 0) {
            --stub->readers;
        }
    }
    journal(*m_imp->database).rollbackTo(level.mark);
    for (HxDbStub* stub : level.held) {
        if (!stub->writer && stub->readers == 0) {
            tellClosed(*stub);
        }
    }
    return Hx::eOk;
}

int HxDbTransactionManager::numActiveTransactions() const { return static_cast<int>(m_imp->levels.size()); }

HxTransaction* HxDbTransactionManager::topTransaction() const {
    return m_imp->levels.empty() ? nullptr : m_imp->levels.back().transaction.get();
}

Hx::ErrorStatus HxDbTransactionManager::getObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                                  bool openErased) {
    object = nullptr;
    return m_imp->levels.empty() ? Hx::eNoActiveTransactions
                                 : m_imp->hold(m_imp->levels.back(), object, id, mode, openErased);
}

Hx::ErrorStatus HxDbTransactionManager::addNewlyCreatedDBRObject(HxDbObject* object) {
    if (m_imp->levels.empty()) {
        return Hx::eNoActiveTransactions;
    }
    HxDbStub* stub = object ? object->imp()->stub : nullptr;
    if (!stub || stub->database != m_imp->database) {
        return Hx::eNotInDatabase;
    }
    if (!stub->resident) {
        if (!stub->writer && stub->readers == 0) {
            return Hx::eNotOpenForWrite;
        }
        stub->resident = true;
        m_imp->levels.back().held.push_back(stub);
    }
    return Hx::eOk;
}

bool HxDbObject::isNewObject() const {
    if (!m_imp->stub) {
        return true;
    }
    const auto& levels = m_imp->stub->database->transactionManager()->m_imp->levels;
    return m_imp->appendedAt > 0 && !levels.empty() && m_imp->appendedAt > levels.back().mark;
}
