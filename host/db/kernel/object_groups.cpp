// Objects made from their groups, and groups made from changed objects.
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/xrecord_cursor.h"
#include "host/db/states/state_records.h"

namespace korvex {

namespace {

/// Gives the object's class its fields and takes its extended data.
void readFields(const HxDbStub& stub, HxDbObjectImp& imp) {
    const HxDbDatabase::Imp& db = *stub.database->imp();
    ReadContext context{*stub.database, {}};
    FieldCursor cursor(stub.blob.groups(), db.format, stub.recordClass->handleCode);
    while (cursor.next()) {
        context.subclass = cursor.subclass();
        imp.readField(context, *cursor);
    }
    imp.extensionDictionary = db.handles.find(cursor.extensionDictionary());
    imp.xdata = std::string(cursor.xdata());
}

/// The groups with the names of now.
Blob refreshed(HxDbStub& stub, const Blob& blob) {
    const HxDbDatabase::Imp& db = *stub.database->imp();
    if (blob.generation() >= db.names.size() || blob.empty() || db.names.isHeld()) {
        return blob;
    }
    Blob origin = blob.origin();
    GroupCursor first(origin.groups(), db.format);
    first.next();
    const std::wstring type = first.asText();
    const bool isState = isLayerState(stub);
    std::string fresh;
    if (db.names.refresh(isState ? kLayerStateType : std::string(type.begin(), type.end()),
                         stub.recordClass->isEntity, origin, db.format, fresh)) {
        return Blob(std::move(fresh), db.names.size(), origin);
    }
    if (isState) {
        return origin.keptUntil(db.names.size());
    }
    // An xrecord that nothing owns yet may become a state.
    if (!db.names.isAmbiguous() && (!isXrecord(stub) || ownerOf(stub))) {
        origin.setGeneration(db.names.size());
    }
    return origin;
}

/// Puts names right that were changed since the groups were written.
void refreshNames(HxDbStub& stub) {
    if (stub.blob.generation() < stub.database->imp()->names.size()) {
        stub.blob = refreshed(stub, stub.blob);
    }
}

}  // namespace

HxDbObject* materialise(HxDbStub& stub) {
    if (!stub.object && !stub.blob.empty()) {
        const HxDbDatabase::Imp& db = *stub.database->imp();
        GroupCursor first(stub.blob.groups(), db.format);
        first.next();
        const std::wstring type = first.asText();
        HxDbObject* object = stub.recordClass->make(std::string(type.begin(), type.end()));
        object->imp()->stub = &stub;
        stub.object = object;
        readObject(stub);
    }
    return stub.object;
}

void readObject(HxDbStub& stub) {
    HxDbObjectImp& imp = *stub.object->imp();
    refreshNames(stub);
    imp.clearFields();
    imp.xdataChanged = false;
    imp.readGroups(stub.blob.groups(), stub.database->imp()->format);
    readFields(stub, imp);
    imp.xdataGeneration = stub.blob.namesGeneration();
    imp.xdataRead(*stub.database);
    imp.fieldsRead(*stub.database);
}

FieldWriter::Frame frameOf(const HxDbStub& stub, bool forFile) {
    const HxDbDatabase::Imp& db = *stub.database->imp();
    const HxDbObjectImp& imp = *stub.object->imp();
    FieldWriter::Frame frame;
    frame.type = imp.type;
    frame.handle = db.writesHandles && stub.handleInFile ? stub.handle : 0;
    frame.handleCode = stub.recordClass->handleCode;
    const HxDbStub* dictionary = imp.extensionDictionary;
    frame.extensionDictionary = dictionary && !(forFile && dictionary->erased) ? dictionary->handle : 0;
    const HxDbStub* owner = imp.newOwner ? imp.newOwner : stub.blob.empty() ? stub.owner : nullptr;
    frame.owner = owner ? owner->handle : 0;
    frame.subclassMarkers = db.traits().hasSubclassMarkers;
    frame.keepXData = !imp.xdataChanged;
    frame.xdata = imp.xdata;
    return frame;
}

void refreshXData(HxDbObjectImp& imp) {
    const HxDbDatabase::Imp& db = *imp.stub->database->imp();
    if (imp.xdataGeneration < db.names.size() && !imp.xdata.empty()) {
        std::string fresh;
        if (db.names.refresh({}, false, Blob(imp.xdata, imp.xdataGeneration), db.format, fresh)) {
            imp.xdata = std::move(fresh);
        }
    }
    imp.xdataGeneration = db.names.size();
}

namespace {

/// The groups with the fields of now, whether they were changed or not.
Blob merged(HxDbStub& stub, bool forFile) {
    const HxDbDatabase::Imp& db = *stub.database->imp();
    FieldWriter fields(db.format, forFile);
    refreshXData(*stub.object->imp());
    stub.object->imp()->writeFields(fields);
    const FieldWriter::Frame frame = frameOf(stub, forFile);
    const std::uint32_t generation = stub.object->imp()->namesGeneration(db.names.size());
    return refreshed(stub, {fields.merge(stub.blob.groups(), frame), generation});
}

}  // namespace

const Blob& currentBlob(HxDbStub& stub) {
    refreshNames(stub);
    if (stub.changed && stub.object) {
        stub.blob = merged(stub, false);
        stub.changed = false;
        stub.object->imp()->xdataChanged = false;
    }
    return stub.blob;
}

namespace {

/// Classes that hold references by themselves, not only through the head of their groups.
bool holdsReferences(const HxDbStub& stub) {
    const std::string_view type = stub.recordClass->type;
    return type == "DICTIONARY" || type == "ACDBDICTIONARYWDFLT" || type == "VIEWPORT";
}

}  // namespace

Blob blobForSaving(HxDbStub& stub) {
    const Blob& blob = currentBlob(stub);
    if (!stub.object && !(stub.database->imp()->hasErased && holdsReferences(stub))) {
        return blob;
    }
    const HxDbObjectImp& imp = *materialise(stub)->imp();
    const bool lostDictionary = imp.extensionDictionary && imp.extensionDictionary->erased;
    return lostDictionary || imp.isStaleForSaving() ? merged(stub, true) : blob;
}

HxDbStub* ownerOf(HxDbStub& stub) {
    if (stub.owner || !stub.database) {
        return stub.owner;
    }
    const HxDbDatabase::Imp& db = *stub.database->imp();
    GroupCursor cursor(stub.blob.groups(), db.format);
    bool inBrace = false;
    while (cursor.next() && cursor.code() != 100) {
        if (cursor.code() == 102) {
            inBrace = cursor.asText().rfind(L'{', 0) == 0;
        } else if (cursor.code() == 330 && !inBrace) {
            stub.owner = db.handles.find(cursor.asHandle());
            break;
        }
    }
    return stub.owner;
}

}  // namespace korvex
