// Reading a layer's record for a while, whoever else has it open.
#pragma once

#include "layer_data.h"

#include "hxdbtransaction.h"

/// Holds a layer's record while it lives: lent by the list's entry, opened for read, or got from a
/// transaction. Layers are read while commands and notifications have them open; such a record is borrowed.
///
/// What it closes at its end, and by close(): only what it was asked to open (`open` true), and nothing that
/// is borrowed, came from a transaction, is in no database or is being restored by undo. A record that was
/// open for read already is closed once although no open was added for it: it counts as the guard's own. If
/// that open has been let go meanwhile, nothing is closed, so that whoever opened the record since keeps it.
class KvAutoLayerRecordPtr {
public:
    /// Empty: eNullObject.
    KvAutoLayerRecordPtr() = default;
    /// Empty for a null or invalid entry. `openErased` opens erased records too; with `useEx` by the host's
    /// extended open.
    KvAutoLayerRecordPtr(KvLayerData* data, bool open, bool openErased, bool useEx);
    KvAutoLayerRecordPtr(KvLayerData* data, bool open);
    /// From the manager's top transaction; a null one: opened directly. Erased records too.
    KvAutoLayerRecordPtr(HxDbTransactionManager* transactions, KvLayerData* data, bool open);
    virtual ~KvAutoLayerRecordPtr();
    KvAutoLayerRecordPtr(const KvAutoLayerRecordPtr&) = delete;
    KvAutoLayerRecordPtr& operator=(const KvAutoLayerRecordPtr&) = delete;

    /// eOk with a record in hand; eNullObject when empty, eNullObjectId for an entry without a record,
    /// eWrongClass for an id of something else, and what the host's open gives.
    Hx::ErrorStatus openStatus() const { return m_status; }
    /// Null unless the status is eOk.
    HxDbLayerTableRecord* object() const { return m_object; }
    HxDbLayerTableRecord* operator->() const { return m_object; }
    operator HxDbLayerTableRecord*() const { return m_object; }  // NOLINT(google-explicit-constructor)

    /// Others have the record open in a way that left no room for another open: it may be read only.
    bool isBorrowed() const { return m_isBorrowed; }

    /// Lets go of the record in hand and holds another, which it closes if it was made to open; null changes
    /// nothing. If the first cannot be closed the guard is empty.
    KvAutoLayerRecordPtr& operator=(HxDbLayerTableRecord* record);
    /// Lets go of the record. eNullObject when there is none, else eOk.
    Hx::ErrorStatus close();

private:
    void lend(KvLayerData& data);
    void openById(HxDbObjectId id, HxDb::OpenMode mode, bool openErased, bool useEx);
    void openThrough(HxDbTransactionManager& transactions, HxDbObjectId id, HxDb::OpenMode mode,
                     bool openErased);
    void borrow(HxDbObjectId id);
    void hold(HxDbLayerTableRecord* record);
    Hx::ErrorStatus acquire(HxDbLayerTableRecord* record);
    Hx::ErrorStatus release();
    bool closesAtRelease() const;

    HxDbLayerTableRecord* m_object = nullptr;
    Hx::ErrorStatus m_status = Hx::eNullObject;
    std::uint32_t m_serial = 0;  ///< the record's openSerial when it came into hand
    bool m_isBorrowed = false;
    bool m_mayClose = false;
    bool m_isInTransaction = false;
};
