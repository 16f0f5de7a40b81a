// Fuzz target: any bytes are read as a drawing; what is read is written as the same bytes, also after all
// objects were looked at, and all layers changed and the change undone. What is written can be read.
#include "host/io/drawing_reader.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/io/drawing_writer.h"
#include "sdk/hxads.h"
#include "sdk/hxdbentity.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace korvex;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Every member knows its place, and every object can be found by its handle.
void checkPlaces(const HxDbDatabase::Imp& db) {
    for (const HxDbStub& stub : db.stubs) {
        require(stub.recordClass && stub.handle != 0 && db.handles.find(stub.handle) == &stub);
        if (!stub.contents) {
            continue;
        }
        const std::vector<HxDbStub*>& members = stub.contents->members;
        for (std::size_t i = 0; i < members.size(); ++i) {
            const HxDbStub& member = *members[i];
            const HxDbStub* container = member.subEntity ? member.owner->owner : member.owner;
            require(member.position == i && container == &stub);
        }
    }
}

/// Makes every object and its list.
void lookAtAll(HxDbDatabase& database) {
    hxdbSetWorkingDatabase(&database);
    std::vector<HxDbStub*> stubs;
    for (HxDbStub& stub : database.imp()->stubs) {
        stubs.push_back(&stub);
    }
    for (HxDbStub* stub : stubs) {
        require(hxdbObjectPointer(HxDbObjectId(stub)) != nullptr);
        zds_name name = {0, 0};
        require(hxdbGetZdsName(name, HxDbObjectId(stub)) == Hx::eOk);
        hxutRelRb(hxdbEntGet(name));
    }
    hxdbGetCurVportId(&database);
    hxdbSetWorkingDatabase(nullptr);
}

/// A new object, which needs a handle and an owner that the file may lack.
void addPoint(HxDbDatabase& database) {
    const HxDbObjectPointer<HxDbBlockTableRecord> space(database.modelSpaceId(), HxDb::kForWrite);
    require(static_cast<bool>(space));
    auto* point = new HxDbEntity(L"POINT");
    HxDbObjectId id;
    require(space->appendHxDbEntity(id, point) == Hx::eOk);
    point->close();
}

void changeAndUndo(HxDbDatabase& database) {
    journal(database).beginGroup(L"CHANGE");
    for (HxDbStub* stub : members(*database.layerTableId().stub())) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(stub), HxDb::kForWrite);
        require(static_cast<bool>(layer));
        layer->setIsLocked(!layer->isLocked());
        layer->setIsFrozen(!layer->isFrozen());
        layer->setName((L"new " + std::to_wstring(stub->handle)).c_str());
    }
    addPoint(database);
    HxDbDatabase again(false);
    std::wstring error;
    require(readDrawing(again, writeDrawing(database), error) == Hx::eOk);
    journal(database).endGroup();
    journal(database).undo();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    HxDbDatabase database(false);
    std::wstring error;
    if (readDrawing(database, bytes, error) != Hx::eOk) {
        require(!error.empty());
        return 0;
    }
    checkPlaces(*database.imp());
    require(writeDrawing(database) == bytes);
    lookAtAll(database);
    require(writeDrawing(database) == bytes);
    changeAndUndo(database);
    require(writeDrawing(database) == bytes);
    return 0;
}
