// Transactions: changes to a database that are kept or taken back together.
#pragma once

#include "hxdbobject.h"

/// One open transaction; belongs to the manager and dies when it ends or is aborted.
class HXSDK_API HxTransaction : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxTransaction)
    ~HxTransaction() override;
    /// Opens an object for as long as the transaction lasts; it must not be closed. Statuses as
    /// hxdbOpenObject; asking again for write upgrades it.
    Hx::ErrorStatus getObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                              bool openErased = false);

private:
    friend class HxDbTransactionManager;
    explicit HxTransaction(HxDbDatabase* database) : m_database(database) {}
    HxDbDatabase* m_database;
};

/// The transactions of one database; they nest. Objects that a transaction opened are closed when the
/// outermost transaction that holds them ends.
class HXSDK_API HxDbTransactionManager : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbTransactionManager)
    explicit HxDbTransactionManager(HxDbDatabase* database);
    ~HxDbTransactionManager() override;

    /// Begins a transaction within the top one. Never null.
    HxTransaction* startTransaction();
    /// Keeps what the top transaction changed. eNoActiveTransactions.
    Hx::ErrorStatus endTransaction();
    /// Takes back everything that the top transaction changed. eNoActiveTransactions.
    Hx::ErrorStatus abortTransaction();
    int numActiveTransactions() const;
    /// Null when there is none.
    HxTransaction* topTransaction() const;
    /// As HxTransaction::getObject on the top transaction; eNoActiveTransactions without one.
    Hx::ErrorStatus getObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                              bool openErased = false);
    /// Hands an object that was just added to the database to the top transaction, which closes it at its
    /// end. eNoActiveTransactions, eNotInDatabase.
    Hx::ErrorStatus addNewlyCreatedDBRObject(HxDbObject* object);

private:
    friend class HxTransaction;
    friend class HxDbObject;
    struct Imp;
    Imp* m_imp;
};
