// Dictionaries and registered applications by the names of entity lists.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/write_access.h"
#include "host/db/lists/object_names.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <memory>
#include <optional>

using namespace korvex;

namespace {

/// The object of a name in the working database itself; null for any other name.
HxDbStub* ownObject(const zds_name name) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    HxDbStub* stub = database && name ? stubOfName(*database, name) : nullptr;
    return stub && !stub->erased ? stub : nullptr;
}

/// A dictionary for a change, whoever of the caller's has it open for one.
class DictionaryAccess {
public:
    explicit DictionaryAccess(const zds_name name) {
        HxDbStub* stub = ownObject(name);
        if (stub && HxDbDictionary::cast(hxdbObjectPointer(HxDbObjectId(stub)))) {
            m_open.emplace(*stub);
        }
    }
    explicit operator bool() const { return m_open && m_open->object(); }
    HxDbDictionary* operator->() const { return HxDbDictionary::cast(m_open->object()); }

private:
    std::optional<WriteAccess> m_open;
};

int resultOf(Hx::ErrorStatus status) { return status == Hx::eOk ? RTNORM : RTERROR; }

/// Table parts and drawn things have their owners; everything else may go into a dictionary.
bool mayEnterDictionary(const HxDbObject* object) {
    return !object->isKindOf(HxDbEntity::desc()) && !object->isKindOf(HxDbSymbolTable::desc()) &&
           !object->isKindOf(HxDbSymbolTableRecord::desc());
}

}  // namespace

int hxdbRegApp(const wchar_t* application) {
    HxDbDatabase* database = hxdbWorkingDatabase();
    HxDbSymbolTable* table = nullptr;
    if (!database || !application ||
        hxdbOpenObject(table, database->regAppTableId(), HxDb::kForRead) != Hx::eOk) {
        return RTERROR;
    }
    Hx::ErrorStatus status = Hx::eOk;
    if (!table->has(application)) {
        status = table->upgradeOpen();
        auto record = std::make_unique<HxDbOtherTableRecord>(L"APPID");
        status = status == Hx::eOk ? record->setName(application) : status;
        status = status == Hx::eOk ? table->add(record.get()) : status;
        if (status == Hx::eOk) {
            record.release()->close();
        }
    }
    table->close();
    return resultOf(status);
}

int hxdbNamedObjDict(zds_name result) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    return resultOf(hxdbGetZdsName(result, database ? database->namedObjectsDictionaryId() : HxDbObjectId()));
}

resbuf* hxdbDictSearch(const zds_name dictionary, const wchar_t* name, int /*setNext*/) {
    const auto* const entries = HxDbDictionary::cast(hxdbObjectPointer(HxDbObjectId(ownObject(dictionary))));
    HxDbObjectId id;
    zds_name entry = {0, 0};
    const bool found = entries && name && entries->getAt(name, id) == Hx::eOk;
    return found && hxdbGetZdsName(entry, id) == Hx::eOk ? hxdbEntGet(entry) : nullptr;
}

int hxdbDictAdd(const zds_name dictionary, const wchar_t* name, const zds_name object) {
    const DictionaryAccess entries(dictionary);
    HxDbStub* stub = ownObject(object);
    if (!entries || !stub || stub == ownObject(dictionary) || !name || entries->has(name)) {
        return RTERROR;
    }
    const WriteAccess entry(*stub);
    HxDbObjectId id;
    return entry.object() && mayEnterDictionary(entry.object())
               ? resultOf(entries->setAt(name, entry.object(), id))
               : RTERROR;
}

int hxdbDictRemove(const zds_name dictionary, const wchar_t* name) {
    const DictionaryAccess entries(dictionary);
    return entries && name ? resultOf(entries->remove(name)) : RTERROR;
}
