// Copies a record group by group with something changed on the way.
#include "host/io/group_edits.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/groups/group_writer.h"

namespace korvex {

namespace {

constexpr int kFirstXData = 1000;

/// Calls `write` in place of copying the groups of a code.
template <class Write>
std::string replaced(std::string_view record, const GroupFormat& format, int code, Write write) {
    GroupWriter out(format);
    GroupCursor cursor(record, format);
    while (cursor.next()) {
        if (cursor.code() == code) {
            write(out);
        } else {
            out.copy(cursor);
        }
    }
    return out.take();
}

bool hasMarkers(std::string_view record, const GroupFormat& format) {
    GroupCursor cursor(record, format);
    while (cursor.next() && cursor.code() < kFirstXData) {
        if (cursor.code() == 100) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::string withInteger(std::string_view record, const GroupFormat& format, int code, long long value) {
    return replaced(record, format, code, [=](GroupWriter& out) { out.integer(code, value); });
}

std::string withHandle(std::string_view record, const GroupFormat& format, int code, std::uint64_t value) {
    return replaced(record, format, code, [=](GroupWriter& out) { out.handle(code, value); });
}

std::string withOwnHandle(std::string_view record, const GroupFormat& format, int handleCode,
                          std::uint64_t handle) {
    GroupWriter out(format);
    GroupCursor cursor(record, format);
    bool toWrite = true;
    bool inHead = true;
    bool inBrace = false;
    bool isTable = false;  // which has its name before its handle
    while (cursor.next()) {
        const int code = cursor.code();
        inHead = inHead && code != 100 && code < kFirstXData;
        isTable = isTable || (code == 0 && trimmedText(cursor) == "TABLE");
        const bool isPlaced = code == 0 || (isTable && code == 2 && inHead);
        const bool isOld = inHead && !inBrace && code == handleCode;
        if (toWrite && !isPlaced) {
            out.handle(handleCode, handle);
            toWrite = false;
        }
        if (code == 102 && inHead) {
            inBrace = trimmedText(cursor).substr(0, 1) == "{";
        }
        if (!isOld) {
            out.copy(cursor);
        }
    }
    if (toWrite) {
        out.handle(handleCode, handle);
    }
    return out.take();
}

std::string withReal(std::string_view record, const GroupFormat& format, int code, double value) {
    return replaced(record, format, code, [=](GroupWriter& out) { out.real(code, value); });
}

std::string withBlockName(std::string_view record, const GroupFormat& format, std::wstring_view name) {
    const std::string first = replaced(record, format, 2, [=](GroupWriter& out) { out.text(2, name); });
    return replaced(first, format, 3, [=](GroupWriter& out) { out.text(3, name); });
}

std::string withPaperFlag(std::string_view record, const GroupFormat& format, bool onPaper) {
    std::size_t flagAt = record.size();
    std::size_t layerAt = record.size();
    bool wasOnPaper = false;
    for (EntityCursor shared(record, format); shared.nextShared();) {
        if (shared.code() == shared_group::kPaper) {
            flagAt = shared->offset();
            wasOnPaper = shared->asInteger() != 0;
        } else if (shared.code() == shared_group::kLayer) {
            layerAt = shared->offset();
        }
    }
    if (wasOnPaper == onPaper) {
        return std::string(record);
    }
    // Where there is none: behind the first marker, without markers before the layer.
    const bool isNew = onPaper && flagAt == record.size();
    const bool afterMarker = hasMarkers(record, format);
    bool toWrite = isNew;
    GroupWriter out(format);
    GroupCursor cursor(record, format);
    while (cursor.next()) {
        const bool isFlag = cursor.offset() == flagAt;
        const bool isMarker = cursor.code() == 100;
        const bool before =
            toWrite && !afterMarker && (cursor.offset() == layerAt || cursor.code() >= kFirstXData);
        if (before || (isFlag && onPaper)) {
            out.integer(shared_group::kPaper, 1);
        }
        if (!isFlag) {
            out.copy(cursor);
        }
        if (toWrite && afterMarker && isMarker) {
            out.integer(shared_group::kPaper, 1);
        }
        toWrite = toWrite && !before && !(afterMarker && isMarker);
    }
    if (toWrite) {
        out.integer(shared_group::kPaper, 1);
    }
    return out.take();
}

}  // namespace korvex
