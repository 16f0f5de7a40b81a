// Fuzz target: any bytes are read as a drawing; what is read is written as the same bytes.
#include "host/io/drawing_reader.h"
#include "host/db/kernel/database_imp.h"
#include "host/io/drawing_writer.h"

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
    return 0;
}
