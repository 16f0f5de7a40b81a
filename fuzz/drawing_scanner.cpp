// Fuzz target: any bytes are scanned, and what scans falls into records and groups that give
// the same bytes again.
#include "host/db/groups/file_scanner.h"
#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"

#include <cstdint>
#include <cstdlib>

namespace {

using namespace korvex;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// Reads every value of a record and writes the record once as it is and once in the other form.
void walk(std::string_view slice, const GroupFormat& format) {
    GroupFormat otherForm = format;
    otherForm.binary = !format.binary;
    GroupWriter same(format);
    GroupWriter other(otherForm);
    GroupCursor cursor(slice, format);
    while (cursor.next()) {
        const bool read = cursor.asInteger() != 0 || cursor.asReal() != 0 || cursor.asHandle() != 0 ||
                          !cursor.asText().empty() || !cursor.asChunk().empty();
        static_cast<void>(read);
        require(slice.substr(cursor.offset(), cursor.bytes().size()) == cursor.bytes());
        same.copy(cursor);
        if (isKnownGroupCode(cursor.code())) {
            other.transcode(cursor);
        }
    }
    require(!cursor.malformed());
    require(same.data().substr(0, slice.size()) == slice);
    GroupCursor back(other.data(), otherForm);
    while (back.next()) {
    }
    require(!back.malformed());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    FileScanner scanner(bytes);
    DrawingError error;
    if (!scanner.detect(error)) {
        require(!error.message.empty());
        return 0;
    }
    std::string joined(scanner.preamble());
    FileRecord record;
    while (scanner.next(record, error)) {
        joined += record.slice;
        walk(record.slice, scanner.format());
    }
    if (!scanner.atEnd()) {
        require(!error.text().empty());
        return 0;
    }
    joined += scanner.trailer();
    require(joined == bytes);
    return 0;
}
