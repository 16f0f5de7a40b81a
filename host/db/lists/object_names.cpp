// A name is taken at its word only after its handle has led to the same object.
#include "host/db/lists/object_names.h"

#include "host/db/kernel/database_imp.h"

namespace korvex {

namespace {

void setName(zds_name name, const HxDbStub* stub) {
    name[0] = stub ? static_cast<std::int64_t>(reinterpret_cast<std::intptr_t>(stub)) : 0;
    name[1] = stub ? static_cast<std::int64_t>(stub->handle) : 0;
}

HxDbStub* findWithXrefs(const HxDbDatabase& database, const zds_name name) {
    HxDbStub* found = stubOfName(database, name);
    for (const auto& xref : database.imp()->xrefs) {
        if (found) {
            break;
        }
        found = xref.second ? findWithXrefs(*xref.second, name) : nullptr;
    }
    return found;
}

}  // namespace

bool isClearedName(const zds_name name) { return name[0] == 0 && name[1] == 0; }

void nameOfHandle(const HxDbDatabase& database, std::uint64_t handle, zds_name name) {
    setName(name, handle != 0 ? database.imp()->handles.find(handle) : nullptr);
    name[1] = static_cast<std::int64_t>(handle);
}

bool handleOfName(const HxDbDatabase& database, const zds_name name, std::uint64_t& handle) {
    handle = static_cast<std::uint64_t>(name[1]);
    return name[0] == 0 || stubOfName(database, name) != nullptr;
}

HxDbStub* stubOfName(const HxDbDatabase& database, const zds_name name) {
    HxDbStub* stub =
        name[1] != 0 ? database.imp()->handles.find(static_cast<std::uint64_t>(name[1])) : nullptr;
    zds_name proof = {0, 0};
    setName(proof, stub);
    return stub && proof[0] == name[0] ? stub : nullptr;
}

HxDbStub* stubOfName(const zds_name name) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    return database && name ? findWithXrefs(*database, name) : nullptr;
}

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus hxdbGetZdsName(zds_name result, HxDbObjectId id) {
    setName(result, id.stub());
    return id.isNull() ? Hx::eNullObjectId : Hx::eOk;
}

Hx::ErrorStatus hxdbGetObjectId(HxDbObjectId& id, const zds_name name) {
    id = HxDbObjectId(stubOfName(name));
    return !id.isNull() ? Hx::eOk : isClearedName(name) ? Hx::eNullObjectId : Hx::eInvalidInput;
}

int hxdbHandEnt(const wchar_t* handle, zds_name result) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    const std::uint64_t value = HxDbHandle(handle).value();
    HxDbStub* stub = database && value != 0 ? database->imp()->handles.find(value) : nullptr;
    setName(result, stub && !stub->unappended ? stub : nullptr);
    return isClearedName(result) ? RTERROR : RTNORM;
}
