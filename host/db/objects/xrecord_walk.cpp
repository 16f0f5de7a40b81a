// Xrecords' contents, read without making the objects.
#include "host/db/kernel/database_imp.h"
#include "host/db/objects/xrecord_cursor.h"
#include "sdk/hxdbdict.h"

#include <optional>

namespace korvex {

bool XrecordCursor::next() {
    while (m_fields.next()) {
        if (m_fields.subclass() != "AcDbXrecord") {
            continue;
        }
        if (!std::exchange(m_isBegun, true) && m_fields->code() == kDuplicatesCode) {
            m_flag = m_fields->bytes();
            continue;
        }
        return true;
    }
    return false;
}

bool isXrecord(const HxDbStub& record) {
    return record.recordClass && std::string_view(record.recordClass->type) == "XRECORD";
}

Hx::ErrorStatus xrecordStatus(const HxDbStub* record) {
    if (!record) {
        return Hx::eNullObjectId;
    }
    if (record->erased) {
        return Hx::eWasErased;
    }
    return isXrecord(*record) ? Hx::eOk : Hx::eWrongClass;
}

}  // namespace korvex

using namespace korvex;

class HxDbXrecordWalk::Imp {
public:
    explicit Imp(HxDbStub* record) : status(xrecordStatus(record)) {
        if (status == Hx::eOk) {
            m_database = record->database;
            m_groups = currentBlob(*record);
            rewind();
        }
    }

    void rewind() {
        if (m_database) {
            m_cursor.emplace(m_groups.groups(), m_database->imp()->format);
        }
        m_isAtGroup = false;
    }
    bool next() { return m_isAtGroup = m_cursor && m_cursor->next(); }

    /// The present group if its value is of one of the types; null when it is not.
    template <class... Types>
    const GroupCursor* groupOf(Types... types) const {
        const GroupType type = m_isAtGroup ? groupType((*m_cursor)->code()) : GroupType::binary;
        return ((type == types) || ...) ? &**m_cursor : nullptr;
    }
    int code() const { return m_isAtGroup ? (*m_cursor)->code() : 0; }
    HxDbStub* object(std::uint64_t handle) const { return m_database->imp()->handles.find(handle); }

    const Hx::ErrorStatus status;

private:
    HxDbDatabase* m_database = nullptr;
    Blob m_groups;
    std::optional<XrecordCursor> m_cursor;
    bool m_isAtGroup = false;
};

HxDbXrecordWalk::HxDbXrecordWalk(HxDbObjectId xrecord) : m_imp(new Imp(xrecord.stub())) {}
HxDbXrecordWalk::~HxDbXrecordWalk() { delete m_imp; }

Hx::ErrorStatus HxDbXrecordWalk::status() const { return m_imp->status; }
bool HxDbXrecordWalk::next() { return m_imp->next(); }
void HxDbXrecordWalk::rewind() { m_imp->rewind(); }
int HxDbXrecordWalk::code() const { return m_imp->code(); }

std::int64_t HxDbXrecordWalk::integer() const {
    const GroupCursor* group =
        m_imp->groupOf(GroupType::int16, GroupType::int32, GroupType::int64, GroupType::boolean);
    return group ? group->asInteger() : 0;
}

double HxDbXrecordWalk::real() const {
    const GroupCursor* group = m_imp->groupOf(GroupType::real);
    return group ? group->asReal() : 0;
}

void HxDbXrecordWalk::text(CStdStr<wchar_t>& text) const {
    if (const GroupCursor* group = m_imp->groupOf(GroupType::text)) {
        group->asText(text);
    } else {
        text.clear();
    }
}

CStdStr<wchar_t> HxDbXrecordWalk::text() const {
    CStdStr<wchar_t> value;
    text(value);
    return value;
}

HxDbObjectId HxDbXrecordWalk::objectId() const {
    const GroupCursor* group = m_imp->groupOf(GroupType::handle);
    return HxDbObjectId(group ? m_imp->object(group->asHandle()) : nullptr);
}
