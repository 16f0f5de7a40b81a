// Reading a layer's record for a while, whoever else has it open.
#include "auto_layer_record.h"

namespace {

constexpr int kAnyClass = 1;

/// Open for read and in no other way.
bool isOpenForReadOnly(const HxDbObject& object) {
    return object.isReadEnabled() && !object.isWriteEnabled() && !object.isNotifyEnabled();
}

bool isOpenElsewhere(Hx::ErrorStatus status) {
    return status == Hx::eWasOpenForRead || status == Hx::eWasOpenForWrite || status == Hx::eWasOpenForUndo ||
           status == Hx::eWasOpenForNotify;
}

bool isUsable(const KvLayerData* data) { return data && data->isValid(); }

}  // namespace

KvAutoLayerRecordPtr::KvAutoLayerRecordPtr(KvLayerData* data, bool open, bool openErased, bool useEx)
    : m_mayClose(open) {
    if (!isUsable(data)) return;
    if (open) {
        openById(data->layerId(), HxDb::kForRead, openErased, useEx);
    } else {
        lend(*data);
    }
}

KvAutoLayerRecordPtr::KvAutoLayerRecordPtr(KvLayerData* data, bool open)
    : KvAutoLayerRecordPtr(data, open, true, true) {}

KvAutoLayerRecordPtr::KvAutoLayerRecordPtr(HxDbTransactionManager* transactions, KvLayerData* data, bool open)
    : m_mayClose(open) {
    if (!isUsable(data)) return;
    if (!open) {
        lend(*data);
    } else if (transactions) {
        openThrough(*transactions, data->layerId(), HxDb::kForRead, true);
    } else {
        openById(data->layerId(), HxDb::kForRead, true, true);
    }
}

KvAutoLayerRecordPtr::~KvAutoLayerRecordPtr() { release(); }

KvAutoLayerRecordPtr& KvAutoLayerRecordPtr::operator=(HxDbLayerTableRecord* record) {
    acquire(record);
    return *this;
}

Hx::ErrorStatus KvAutoLayerRecordPtr::close() {
    if (!m_object) return Hx::eNullObject;
    release();
    return Hx::eOk;
}

/// An entry that has not been filled has nothing to lend.
void KvAutoLayerRecordPtr::lend(KvLayerData& data) {
    if (data.layerRec()) hold(data.layerRec());
}

void KvAutoLayerRecordPtr::openById(HxDbObjectId id, HxDb::OpenMode mode, bool openErased, bool useEx) {
    if (!id.isValid()) {
        m_status = Hx::eNullObjectId;
        return;
    }
    HxDbObject* const inMemory = hxdbObjectPointer(id);
    if (!inMemory) return;
    auto* const record = HxDbLayerTableRecord::cast(inMemory);
    if (!record) {
        m_status = Hx::eWrongClass;
        return;
    }
    if (m_mayClose && mode == HxDb::kForRead && isOpenForReadOnly(*record)) {
        hold(record);
        return;
    }
    HxDbObject* opened = nullptr;
    m_status = useEx ? hxdbOpenObjectEx(opened, id, mode, openErased, HxDbLayerTableRecord::desc(), kAnyClass)
                     : hxdbOpenObjectOfClass(opened, id, mode, openErased, HxDbLayerTableRecord::desc());
    if (m_status == Hx::eOk) {
        hold(HxDbLayerTableRecord::cast(opened));
    } else if (isOpenElsewhere(m_status)) {
        borrow(id);
    }
}

void KvAutoLayerRecordPtr::openThrough(HxDbTransactionManager& transactions, HxDbObjectId id,
                                       HxDb::OpenMode mode, bool openErased) {
    m_isInTransaction = true;
    if (!id.isValid()) {
        m_status = Hx::eNullObjectId;
        return;
    }
    HxDbObject* object = nullptr;
    m_status = transactions.getObject(object, id, mode, openErased);
    if (m_status != Hx::eOk) return;
    if (auto* const record = HxDbLayerTableRecord::cast(object)) {
        hold(record);
    } else {
        m_status = object ? Hx::eWrongClass : Hx::eNullObject;
    }
}

/// Takes the record although others have it open; the status stays when there is none.
void KvAutoLayerRecordPtr::borrow(HxDbObjectId id) {
    m_isBorrowed = true;
    if (auto* const record = HxDbLayerTableRecord::cast(hxdbObjectPointer(id))) hold(record);
}

void KvAutoLayerRecordPtr::hold(HxDbLayerTableRecord* record) {
    m_object = record;
    m_status = Hx::eOk;
    m_serial = record->openSerial();
}

Hx::ErrorStatus KvAutoLayerRecordPtr::acquire(HxDbLayerTableRecord* record) {
    if (!record) return Hx::eNullObject;
    const Hx::ErrorStatus released = release();
    if (released == Hx::eOk) hold(record);
    return released;
}

/// The record is forgotten in any case. The status of closing it; eOk when there was nothing to close.
Hx::ErrorStatus KvAutoLayerRecordPtr::release() {
    if (!m_object) return Hx::eOk;
    const Hx::ErrorStatus status = closesAtRelease() ? m_object->close() : Hx::eOk;
    m_object = nullptr;
    m_isBorrowed = false;
    m_status = Hx::eNullObject;
    return status;
}

bool KvAutoLayerRecordPtr::closesAtRelease() const {
    return m_mayClose && !m_isInTransaction && !m_isBorrowed && !m_object->objectId().isNull() &&
           !m_object->isUndoing() && m_object->openSerial() == m_serial;
}
