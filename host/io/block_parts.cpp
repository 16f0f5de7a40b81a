// Makes BLOCK and ENDBLK records.
#include "host/io/block_parts.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/entity_access.h"

namespace korvex {

namespace {

HxDbStub& addPart(HxDbStub& record, const char* type) {
    HxDbDatabase::Imp& db = *record.database->imp();
    HxDbStub& stub = db.newStub();
    stub.recordClass = &recordClass(type, RecordPlace::entity);
    stub.owner = &record;
    stub.handleInFile = db.writesHandles;
    db.handles.add(db.handles.next(), &stub);
    return stub;
}

/// What both parts begin with.
void writeHead(GroupWriter& out, const char* type, const HxDbStub& stub, const char* marker) {
    const HxDbDatabase::Imp& db = *stub.database->imp();
    const bool hasMarkers = db.traits().hasSubclassMarkers;
    out.rawText(0, type);
    if (db.writesHandles) {
        out.handle(5, stub.handle);
    }
    if (hasMarkers) {
        out.handle(330, stub.owner->handle);
        out.rawText(100, "AcDbEntity");
    }
    out.rawText(8, "0");
    if (hasMarkers) {
        out.rawText(100, marker);
    }
}

}  // namespace

HxDbStub& addBlockBegin(HxDbStub& record, const BlockHeader& header) {
    HxDbStub& stub = addPart(record, "BLOCK");
    const HxDbDatabase::Imp& db = *record.database->imp();
    GroupWriter out(db.format);
    writeHead(out, "BLOCK", stub, "AcDbBlockBegin");
    const std::wstring name = recordName(record);
    out.text(2, name);
    out.integer(70, header.flags);
    for (const int code : {10, 20, 30}) {
        out.real(code, 0);
    }
    out.text(3, name);
    out.text(1, header.path);
    stub.blob = Blob(out.take(), db.names.size());
    record.contents->blockBegin = &stub;
    return stub;
}

HxDbStub& addBlockEnd(HxDbStub& record) {
    HxDbStub& stub = addPart(record, "ENDBLK");
    const HxDbDatabase::Imp& db = *record.database->imp();
    GroupWriter out(db.format);
    writeHead(out, "ENDBLK", stub, "AcDbBlockEnd");
    stub.blob = Blob(out.take(), db.names.size());
    record.contents->blockEnd = &stub;
    return stub;
}

}  // namespace korvex
