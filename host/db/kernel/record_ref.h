// A field that names a table record: kept as the record where the drawing has it, so that renames need no
// care.
#pragma once

#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"

namespace korvex {

class RecordRef {
public:
    explicit RecordRef(TableKind table) : m_table(table) {}

    void clear() { m_record = nullptr, m_name.clear(); }
    void setName(std::wstring name) { m_record = nullptr, m_name = std::move(name); }
    void setRecord(HxDbStub& record) { m_record = &record, m_name = recordName(record); }
    bool empty() const { return !m_record && m_name.empty(); }

    /// Null when the drawing has no such record. `database` may be null for an object outside of one.
    HxDbStub* record(const HxDbDatabase* database) const {
        if (m_record && !m_record->erased) {
            return m_record;
        }
        HxDbStub* found = database && !name().empty() ? findRecord(*database, m_table, name()) : nullptr;
        if (!m_record) {
            m_record = found;  // an erased one stays, since it may come back
        }
        return found;
    }
    /// The name of now; spelled as it was given where only the case differs from the record's.
    std::wstring name() const {
        std::wstring now = m_record ? recordName(*m_record) : m_name;
        return equalNames(now, m_name) ? m_name : now;
    }

private:
    TableKind m_table;
    mutable HxDbStub* m_record = nullptr;
    std::wstring m_name;
};

}  // namespace korvex
