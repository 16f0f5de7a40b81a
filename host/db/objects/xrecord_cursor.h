// Walks an xrecord's content where it stands in the object's groups.
#pragma once

#include "host/db/kernel/field_cursor.h"
#include "host/db/kernel/stub.h"

namespace korvex {

/// Steps through an xrecord's groups after the duplicates flag. The object's groups must outlive it.
class XrecordCursor {
public:
    static constexpr int kDuplicatesCode = 280;

    XrecordCursor(std::string_view groups, const GroupFormat& format) : m_fields(groups, format) {}

    /// Steps to the next group; false at the end.
    bool next();
    const GroupCursor& operator*() const { return *m_fields; }
    const GroupCursor* operator->() const { return &*m_fields; }
    /// The duplicates flag's group as it stands; empty when there is none or next() was not called yet.
    std::string_view flag() const { return m_flag; }

private:
    FieldCursor m_fields;
    std::string_view m_flag;
    bool m_isBegun = false;
};

bool isXrecord(const HxDbStub& record);

/// What keeps a record's content from being walked: eNullObjectId, eWasErased, eWrongClass for what is no
/// xrecord; eOk when nothing does. Makes no object.
Hx::ErrorStatus xrecordStatus(const HxDbStub* record);

}  // namespace korvex
