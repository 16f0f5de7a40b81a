// Finds handle, owner, name and the like in a record.
#include "host/io/record_head.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/groups/group_lexer.h"

namespace korvex {

namespace {

constexpr int kName = 2;
constexpr int kStyle = 7;
constexpr int kRun = 102;
constexpr int kFirstXData = 1000;

void take(std::string_view& value, const GroupCursor& cursor) {
    if (!value.data()) {
        value = groups::trimmed(cursor.raw());
    }
}

/// Handle and owner stand before the first marker.
class Identity {
public:
    Identity(RecordHead& head, int handleCode) : m_head(head), m_handleCode(handleCode) {}
    bool isOver() const { return m_isOver; }
    void take(const GroupCursor& cursor) {
        constexpr std::uint64_t kLargestHandle = 1ULL << 60U;
        const int code = cursor.code();
        if (code == 100) {
            m_isOver = true;
        } else if (m_isOver) {
            return;
        } else if (code == m_handleCode && m_head.handle == 0) {
            const std::uint64_t handle = cursor.asHandle();
            m_head.handle = handle < kLargestHandle ? handle : 0;
        } else if (code == 330 && m_head.owner == 0) {
            m_head.owner = cursor.asHandle();
        }
    }

private:
    RecordHead& m_head;
    int m_handleCode;
    bool m_isOver = false;
};

void takeShared(const EntityCursor& cursor, RecordHead& head) {
    switch (cursor.code()) {
    case shared_group::kLinetype: take(head.linetype, *cursor); break;
    case shared_group::kLayer: take(head.layer, *cursor); break;
    case shared_group::kPaper: head.onPaper = cursor->asInteger() != 0; break;
    default: break;
    }
}

}  // namespace

RecordHead entityHead(std::string_view record, const GroupFormat& format, int handleCode) {
    RecordHead head;
    Identity identity(head, handleCode);
    EntityCursor cursor(record, format);
    while (!cursor.isSharedOver() && cursor.next()) {
        if (cursor.isShared()) {
            takeShared(cursor, head);
        } else if (cursor.code() == kStyle) {
            take(head.style, *cursor);
        } else {
            identity.take(*cursor);
        }
    }
    return head;
}

RecordHead recordHead(std::string_view record, const GroupFormat& format, int handleCode, HeadPart part) {
    RecordHead head;
    Identity identity(head, handleCode);
    GroupCursor cursor(record, format);
    bool inRun = false;
    while (cursor.next() && cursor.code() < kFirstXData) {
        const int code = cursor.code();
        if (code == kRun) {
            inRun = groups::trimmed(cursor.raw()).substr(0, 1) == "{";
        } else if (!inRun) {
            identity.take(cursor);
            if (code == kName) {
                take(head.name, cursor);
            }
            if (part == HeadPart::identity ? identity.isOver() : head.name.data() != nullptr) {
                break;
            }
        }
    }
    return head;
}

std::string_view rawName(std::string_view record, const GroupFormat& format) {
    constexpr int kNoHandle = -1000;
    return recordHead(record, format, kNoHandle, HeadPart::name).name;
}

}  // namespace korvex
