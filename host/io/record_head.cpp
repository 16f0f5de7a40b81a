// Finds handle, owner, name and the like in a record.
#include "host/io/record_head.h"

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_lexer.h"

namespace korvex {

namespace {

constexpr int kFirstPoint = 10;
constexpr int kFirstXData = 1000;

/// True at the group where the part is over. What all entities have stands before the marker of their own
/// class, but some programs put it behind.
bool endsHead(HeadPart part, const RecordHead& head, int code, int markers) {
    if (code >= kFirstXData) {
        return true;
    }
    switch (part) {
    case HeadPart::identity: return markers == 1 || code == kFirstPoint;
    case HeadPart::entity: return code == kFirstPoint || (markers == 2 && head.layer.data()) || markers == 3;
    default: return false;
    }
}

/// True when there is nothing more to look for.
bool isComplete(HeadPart part, const RecordHead& head) {
    return (part == HeadPart::text && head.style.data()) || (part == HeadPart::name && head.name.data());
}

void take(std::string_view& value, const GroupCursor& cursor) {
    if (!value.data()) {
        value = groups::trimmed(cursor.raw());
    }
}

}  // namespace

RecordHead readHead(std::string_view record, const GroupFormat& format, int handleCode, HeadPart part) {
    constexpr std::uint64_t kLargestHandle = 1ULL << 60U;
    RecordHead head;
    GroupCursor cursor(record, format);
    int markers = 0;
    bool inBrace = false;
    while (cursor.next() && !isComplete(part, head)) {
        const int code = cursor.code();
        markers += code == 100 ? 1 : 0;
        if (endsHead(part, head, code, markers)) {
            break;
        }
        if (code == 102) {
            inBrace = groups::trimmed(cursor.raw()).substr(0, 1) == "{";
        } else if (inBrace) {
            continue;
        } else if (code == handleCode && head.handle == 0 && markers == 0) {
            const std::uint64_t handle = cursor.asHandle();
            head.handle = handle < kLargestHandle ? handle : 0;
        } else if (code == 330 && head.owner == 0 && markers == 0) {
            head.owner = cursor.asHandle();
        } else {
            switch (code) {
            case 2: take(head.name, cursor); break;
            case 6: take(head.linetype, cursor); break;
            case 7: take(head.style, cursor); break;
            case 8: take(head.layer, cursor); break;
            case 67: head.onPaper = cursor.asInteger() != 0; break;
            default: break;
            }
        }
    }
    return head;
}

std::string_view rawName(std::string_view record, const GroupFormat& format) {
    constexpr int kNoHandle = -1000;
    return readHead(record, format, kNoHandle, HeadPart::name).name;
}

}  // namespace korvex
