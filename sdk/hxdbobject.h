// Objects of the drawing database: opening and closing, erasing, extended data, notifications.
#pragma once

#include "hxdbid.h"
#include "hxrx.h"

class HxDbDatabase;
class HxDbObject;
class HxDbObjectImp;
struct resbuf;

namespace HxDb {

/// Many readers or one writer; notify goes beside either, for objects that are sending notifications.
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

/// Hundredths of a millimetre, or one of the negative special values.
enum LineWeight : std::int16_t { kLnWtByLayer = -1, kLnWtByBlock = -2, kLnWtByLwDefault = -3 };

}  // namespace HxDb

/// Receives what happens to the objects that it is added to. The reactor belongs to whoever made it and must
/// be removed (or outlive the database). Reactors may be added and removed from inside a notification.
/// Objects passed in are open for notify only: read them, do not change them.
///
/// Order, for one write-open: openedForModify once, before the first change; modified (or erased,
/// modifiedXData) when the object is closed or goes on as open for read; objectClosed last, when nobody has
/// it open any more. A table is modified by the records that it gets. Object reactors are told before the
/// reactors of the database. Undo and redo send the same, with modifyUndone besides; to the table of records
/// whose creation they take back they send nothing.
class HXSDK_API HxDbObjectReactor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbObjectReactor)
    virtual void openedForModify(const HxDbObject*) {}
    virtual void modified(const HxDbObject*) {}
    virtual void erased(const HxDbObject*, bool /*erasing*/) {}
    virtual void modifiedXData(const HxDbObject*) {}
    virtual void modifyUndone(const HxDbObject*) {}
    virtual void unappended(const HxDbObject*) {}
    virtual void reappended(const HxDbObject*) {}
    virtual void objectClosed(const HxDbObjectId) {}
    /// The database is going; the object must not be used any more and the reactor is removed.
    virtual void goodbye(const HxDbObject*) {}
};

/// Base of everything that a drawing holds. An object is made with new, and belongs to its maker until it is
/// added to a database (table add, appendEntity, dictionary setAt ...); from then on the database owns it and
/// it is reached by id through open and close. Queries need it open (any mode), changes need it open for
/// write.
class HXSDK_API HxDbObject : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbObject)
    ~HxDbObject() override;
    HxDbObject(const HxDbObject&) = delete;
    HxDbObject& operator=(const HxDbObject&) = delete;

    /// Null while the object is in no database.
    HxDbObjectId objectId() const;
    HxDbObjectId ownerId() const;
    HxDbDatabase* database() const;
    void getHxDbHandle(HxDbHandle& handle) const;
    /// The record name that drawings use: "LAYER", "LINE", "DICTIONARY" ...
    const wchar_t* dxfName() const;

    bool isReadEnabled() const;
    bool isWriteEnabled() const;
    bool isNotifyEnabled() const;
    bool isErased() const;
    /// Changed since it was opened for write.
    bool isModified() const;
    /// Undo or redo is restoring it just now.
    bool isUndoing() const;
    /// Not in a database yet, or created under the innermost transaction.
    bool isNewObject() const;
    bool isTransactionResident() const;
    /// Tells one stretch of being open from the next: stays the same until the last open for read or write is
    /// let go, and is another one after the next open. Whoever remembers it with a pointer can see at the
    /// close whether what was open then still is. 0 for an object in no database.
    std::uint32_t openSerial() const;

    /// Read to write. eWasOpenForWrite when it is open for write already, eWasOpenForRead when there are
    /// other readers, eNotOpenForRead when it is not open.
    Hx::ErrorStatus upgradeOpen();
    /// Write to read: changes are recorded and notified as by close. eNotOpenForWrite when it is not open for
    /// write.
    Hx::ErrorStatus downgradeOpen();
    /// Lets go of one open, whoever made it. After the last one the pointer must not be used. eOk; an object
    /// that is not in a database or not open: eNotOpenForRead, and nothing happens. Of an object that a
    /// transaction holds its own open is left alone: eOk.
    Hx::ErrorStatus close();
    /// Close that takes back what was changed since the object was opened for write.
    Hx::ErrorStatus cancel();
    /// Erases or un-erases. eWasErased when it is erased already, eCannotBeErasedByCaller for what a drawing
    /// cannot be without (tables, layer "0" ...).
    Hx::ErrorStatus erase(bool erasing = true);

    /// Null id when there is none.
    HxDbObjectId extensionDictionary() const;
    /// Makes an empty one; eOk also when there was one.
    Hx::ErrorStatus createExtensionDictionary();

    /// The extended data of one application (all applications for null) as a chain that the caller releases;
    /// null when there is none.
    resbuf* xData(const wchar_t* application = nullptr) const;
    /// Replaces the data of the applications that the chain names (1001); an application with nothing after
    /// its name is removed. eInvalidInput for a chain that does not begin with 1001, eKeyNotFound for an
    /// application that is not registered, eXdataSizeExceeded beyond 16,383 bytes.
    Hx::ErrorStatus setXData(const resbuf* data);

    /// Adding twice counts once. The object may be open in any mode.
    void addReactor(HxDbObjectReactor* reactor) const;
    void removeReactor(HxDbObjectReactor* reactor) const;
    bool hasReactor(const HxDbObjectReactor* reactor) const;

    HxDbObjectImp* imp() const { return m_imp; }  ///< the host's own side; of no use to modules

protected:
    explicit HxDbObject(HxDbObjectImp* imp);

private:
    HxDbObjectImp* m_imp;
};

/// Opens an object. On eOk `object` is open in `mode` and must be closed; otherwise it is null. eNullObjectId
/// for a null id, eNullObject when nothing stands behind it, eWasErased unless `openErased`, eWasOpenForRead
/// / eWasOpenForWrite / eWasOpenForNotify / eWasOpenForUndo when it is open in a way that excludes `mode`,
/// eAtMaxReaders beyond 65,535 readers.
HXSDK_API Hx::ErrorStatus hxdbOpenObject(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                         bool openErased = false);

/// The same for a wanted class: eWrongClass when the object is of another.
template <class T>
Hx::ErrorStatus hxdbOpenObject(T*& object, HxDbObjectId id, HxDb::OpenMode mode, bool openErased = false);

/// The open for callers that handle any class: with `anyClass` 1 the object's class does not count, with 0 it
/// must be `wanted`, eWrongClass when it is another. Otherwise as above.
HXSDK_API Hx::ErrorStatus hxdbOpenObjectEx(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                           bool openErased, const HxRxClass* wanted, int anyClass);

/// The object behind an id whatever its open state, without opening it; null when there is none. For callers
/// that hold it open, or that run inside a notification of it.
HXSDK_API HxDbObject* hxdbObjectPointer(HxDbObjectId id);

/// The test behind the typed open; returns eWrongClass without opening.
HXSDK_API Hx::ErrorStatus hxdbOpenObjectOfClass(HxDbObject*& object, HxDbObjectId id, HxDb::OpenMode mode,
                                                bool openErased, const HxRxClass* wanted);

template <class T>
Hx::ErrorStatus hxdbOpenObject(T*& object, HxDbObjectId id, HxDb::OpenMode mode, bool openErased) {
    HxDbObject* any = nullptr;
    const Hx::ErrorStatus status = hxdbOpenObjectOfClass(any, id, mode, openErased, T::desc());
    object = static_cast<T*>(any);
    return status;
}

/// Opens in the constructor and closes in the destructor what it opened: an object that someone else has
/// closed meanwhile is left as it is, also when it is open again.
template <class T>
class HxDbObjectPointer {
public:
    HxDbObjectPointer(HxDbObjectId id, HxDb::OpenMode mode, bool openErased = false)
        : m_status(hxdbOpenObject(m_object, id, mode, openErased)),
          m_serial(m_object ? m_object->openSerial() : 0) {}
    ~HxDbObjectPointer() { close(); }
    HxDbObjectPointer(const HxDbObjectPointer&) = delete;
    HxDbObjectPointer& operator=(const HxDbObjectPointer&) = delete;

    Hx::ErrorStatus openStatus() const { return m_status; }
    T* object() const { return m_object; }
    T* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    void close() {
        if (m_object && m_object->openSerial() == m_serial) m_object->close();
        m_object = nullptr;
    }

private:
    T* m_object = nullptr;
    Hx::ErrorStatus m_status;
    std::uint32_t m_serial;
};
