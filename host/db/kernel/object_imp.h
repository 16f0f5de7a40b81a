// The host's side of a database object: its fields, read from groups and written to groups.
#pragma once

#include "host/db/kernel/field_writer.h"
#include "host/db/kernel/stub.h"
#include "sdk/hxdbobject.h"

namespace korvex {

/// What the reading of a field may need to know.
struct ReadContext {
    HxDbDatabase& database;
    std::string_view subclass;  ///< the "100" marker that the group follows; empty before the first
};

/// How records of a type are made into objects.
struct RecordClass {
    const char* type;  ///< "LAYER", "LINE"; for tables the name of the table
    HxDbObject* (*make)(std::string_view type);
    bool isEntity = false;
    int handleCode = 5;
};

/// Where a record stands; the same type may mean different things.
enum class RecordPlace : std::uint8_t { table, tableRecord, entity, object };

/// Never fails: types that are not modelled get the class of their place.
const RecordClass& recordClass(std::string_view type, RecordPlace place);

}  // namespace korvex

/// Base of all classes' fields. Each class maps its fields to groups in readField and writeFields, and
/// nowhere else; the fields that all entities share are read in EntityImp::readGroups.
class HxDbObjectImp {
public:
    explicit HxDbObjectImp(std::string_view dxfType) : type(dxfType) {}
    virtual ~HxDbObjectImp() = default;
    HxDbObjectImp(const HxDbObjectImp&) = delete;
    HxDbObjectImp& operator=(const HxDbObjectImp&) = delete;

    /// Fields back to their defaults, before groups are read.
    virtual void clearFields() {}
    /// All groups, before readField gets each.
    virtual void readGroups(std::string_view, const korvex::GroupFormat&) {}
    /// One group, in the drawing's order, outside of "102 {...}" runs and extended data.
    virtual void readField(const korvex::ReadContext&, const korvex::GroupCursor&) {}
    /// After the last group.
    virtual void fieldsRead(HxDbDatabase&) {}
    /// After `xdata` was read or set.
    virtual void xdataRead(HxDbDatabase&) {}
    /// It got its place in a database.
    virtual void added(HxDbDatabase&) {}
    /// All fields, in their usual order.
    virtual void writeFields(korvex::FieldWriter&) const {}

    /// How many of `renames` had happened when the names that writeFields writes were those of records.
    virtual std::uint32_t namesGeneration(std::uint32_t renames) const { return renames; }

    /// Refers to an object that has been erased since its groups were written.
    virtual bool isStaleForSaving() const { return false; }

    /// What keeps it from being erased, or from coming back; eOk when nothing does.
    virtual Hx::ErrorStatus mayErase() const { return Hx::eOk; }
    virtual Hx::ErrorStatus mayUnerase() const { return Hx::eOk; }

    HxDbStub* stub = nullptr;      ///< null while the object is in no database
    HxDbObject* object = nullptr;  ///< set by HxDbObject's constructor
    std::string type;              ///< record type as the drawing writes it
    std::wstring dxfName;          ///< the same, for HxDbObject::dxfName
    HxDbStub* extensionDictionary = nullptr;
    HxDbStub* newOwner = nullptr;       ///< an owner other than the groups tell
    std::string xdata;                  ///< all extended data, as groups
    bool xdataChanged = false;          ///< differs from the blob's
    std::uint32_t xdataGeneration = 0;  ///< renames that had happened when it was read or set
    bool fieldsChangedInOpen = false;
    bool xdataChangedInOpen = false;
    bool erasedChangedInOpen = false;
    bool membersChangedInOpen = false;  ///< a table got a record
    std::size_t appendedAt = 0;         ///< journal size when it was added; 0 for what was read
    std::vector<HxDbObjectReactor*> reactors;

    /// The state before the first change of the present open for write; for cancel().
    struct Before {
        korvex::Blob blob;
        bool erased = false;
        bool implicit = false;
        bool taken = false;
        std::size_t journalSize = 0;
    } before;
};

namespace korvex {

/// The fields of an object, in the type that its class keeps.
template <class Imp>
Imp& fields(const HxDbObject* object) {
    return *static_cast<Imp*>(object->imp());
}

/// The object of a stub, made from its groups when it does not exist yet; null for a stub without groups.
HxDbObject* materialise(HxDbStub& stub);

/// Reads the fields anew from the stub's blob.
void readObject(HxDbStub& stub);

/// The object's groups as of now: fields that were changed are merged in, names that were changed since are
/// put right. References to what is erased are in them: it may come back.
const Blob& currentBlob(HxDbStub& stub);

/// The same for a file: without references to what is erased.
Blob blobForSaving(HxDbStub& stub);

/// Puts the layer names in an object's extended data right that were changed since it was read or set. To be
/// called before it is looked at.
void refreshXData(HxDbObjectImp& imp);

/// The owner, also where only the groups tell it; null when there is none.
HxDbStub* ownerOf(HxDbStub& stub);

/// Name, handle code and the like that go around the fields.
FieldWriter::Frame frameOf(const HxDbStub& stub, bool forFile = false);

/// To be called before a change of a field: records the state in the journal and tells the reactors, once per
/// open for write. eNotOpenForWrite for an object of a database that is not open for write.
Hx::ErrorStatus beginChange(const HxDbObject* object);

/// The same for a table that gets a record: its reactors are told, its own groups stay as they are.
void beginMembersChange(const HxDbObject* table);

/// Tells the end of an open for write that began with openedForModify; nothing when it was told.
void tellClosed(HxDbStub& stub);

/// Gives an object that is in no database a place in one: stub, handle, owner; records and entities become
/// members of a table or block that owns them. The object is open for write then.
HxDbStub& addToDatabase(HxDbDatabase& database, HxDbObject* object, HxDbStub* owner);

/// Takes back what was changed since the object was opened for write.
void revertChange(HxDbStub& stub);
/// Ends an open for write without telling anyone.
void dropWriteOpen(HxDbStub& stub);

/// Replaces the object's groups (entity lists) and reads its fields anew; the object is open for write.
void replaceGroups(HxDbStub& stub, std::string groups);

/// Makes `stub` a member of a table or block, at the end; nothing when it is one.
void appendMember(HxDbStub& container, HxDbStub& stub);

}  // namespace korvex
