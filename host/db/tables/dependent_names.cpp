// Renames the records of an external reference with it.
#include "host/db/tables/dependent_names.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/record_names.h"
#include "host/db/tables/symbol_record_imp.h"
#include "host/db/tables/symbol_table_imp.h"
#include "sdk/hxdbentity.h"

namespace korvex {

DependentNames::DependentNames(HxDbStub& record, const std::wstring& newName) {
    const auto* block = HxDbBlockTableRecord::cast(materialise(record));
    if (!block || !block->isFromExternalReference() || block->isDependent()) {
        return;
    }
    const std::wstring oldPrefix = recordName(record) + L"|";
    for (HxDbStub* table : record.database->imp()->tables) {
        if (table) {
            collect(*table, oldPrefix, newName + L"|");
        }
    }
}

/// Where only the case of the reference's name changes, the name that is found is the record's own.
void DependentNames::collect(HxDbStub& table, const std::wstring& oldPrefix, const std::wstring& newPrefix) {
    for (HxDbStub* member : members(table)) {
        const std::wstring name = member->erased ? std::wstring() : recordName(*member);
        if (m_status != Hx::eOk || !equalNames(name.substr(0, oldPrefix.size()), oldPrefix)) {
            continue;
        }
        const Dependent& dependent =
            m_dependents.emplace_back(*member, newPrefix + name.substr(oldPrefix.size()));
        const HxDbStub* taken = recordNamed(table, dependent.newName, false);
        m_status = taken && taken != member ? Hx::eDuplicateRecordName : dependent.access.status();
    }
}

void DependentNames::rename() {
    for (Dependent& dependent : m_dependents) {
        HxDbObject* object = dependent.access.object();
        if (beginChange(object) == Hx::eOk) {
            auto& imp = fields<SymbolRecordImp>(object);
            imp.name = std::move(dependent.newName);
            imp.noteName(*imp.stub->database);
        }
    }
}

}  // namespace korvex
