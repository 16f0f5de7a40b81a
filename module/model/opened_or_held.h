// Opening an object that a transaction may hold already.
#pragma once

#include "hxdbdatabase.h"
#include "hxdbtransaction.h"

/// Opens in the constructor and closes in the destructor. What a transaction holds is got from the top
/// transaction and stays with it; if it was got for writing here, others can read it again afterwards.
template <class T>
class OpenedOrHeld {
public:
    OpenedOrHeld(HxDbObjectId id, HxDb::OpenMode mode)
        : m_opened(isHeld(id) ? HxDbObjectId() : id, mode), m_status(m_opened.openStatus()),
          m_object(m_opened.object()) {
        if (!isHeld(id)) return;
        HxDbObject* held = hxdbObjectPointer(id);
        m_endsWriting = mode == HxDb::kForWrite && !held->isWriteEnabled();
        held = nullptr;
        m_status = id.database()->transactionManager()->getObject(held, id, mode);
        m_object = T::cast(held);
        if (held && !m_object) m_status = Hx::eWrongClass;
    }
    ~OpenedOrHeld() {
        if (m_object && m_endsWriting) m_object->downgradeOpen();
    }
    OpenedOrHeld(const OpenedOrHeld&) = delete;
    OpenedOrHeld& operator=(const OpenedOrHeld&) = delete;

    Hx::ErrorStatus openStatus() const { return m_status; }
    T* object() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    static bool isHeld(HxDbObjectId id) {
        const HxDbObject* const object = hxdbObjectPointer(id);
        return object && object->isTransactionResident();
    }

    HxDbObjectPointer<T> m_opened;
    Hx::ErrorStatus m_status;
    T* m_object;
    bool m_endsWriting = false;
};
