// Reads a drawing: the file apart, then what refers across it put together, then what is missing.
#include "host/io/drawing_reader.h"

#include "host/base/log.h"
#include "host/base/progress.h"
#include "host/base/text.h"
#include "host/db/groups/group_cursor.h"
#include "host/io/converter.h"
#include "host/io/named_handles.h"
#include "host/io/record_placing.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvex {

namespace {

/// The first group of a header value; false when the drawing lacks it.
template <class Use>
bool useHeaderValue(const HxDbDatabase::Imp& db, std::string_view name, Use use) {
    const Header::Value* value = db.header.find(name);
    if (!value) {
        return false;
    }
    GroupCursor cursor(value->groups.groups(), db.format);
    if (!cursor.next() || !cursor.next()) {
        return false;
    }
    use(cursor);
    return true;
}

/// Handles are optional before R13: $HANDLING tells, else what the records have.
bool writesHandles(const HxDbDatabase::Imp& db, bool anyHandle) {
    bool handling = anyHandle;
    useHeaderValue(db, "$HANDLING", [&](const GroupCursor& group) { handling = group.asInteger() != 0; });
    return db.traits().hasSubclassMarkers || handling;
}

/// Gives every object a handle that nothing else in the file has or names.
void settleHandles(HxDbDatabase::Imp& db, std::uint64_t highestNamed) {
    useHeaderValue(db, "$HANDSEED",
                   [&](const GroupCursor& group) { db.handles.raiseSeed(group.asHandle()); });
    if (highestNamed >= db.handles.seed()) {
        db.handles.reserve(handlesFrom(db.file, db.handles.seed()));
    }
    db.handles.settle();
}

void complete(HxDbDatabase& database, UnplacedRecords& records) {
    HxDbDatabase::Imp& db = *database.imp();
    settleHandles(db, records.highestHandle);
    db.writesHandles = writesHandles(db, records.anyHandle);
    ImpliedRecords implied(database);
    implied.addTables();
    implied.addNamedObjects();
    RecordPlacing(database, records, implied).run();
    for (const char* linetype : {"ByBlock", "ByLayer", "Continuous"}) {
        records.linetypes.add(linetype);
    }
    records.layers.add("0");
    records.styles.add("Standard");
    const auto add = [&](TableKind kind, NameSet& names) {
        implied.addRecords(kind, std::move(names), records.names[static_cast<std::size_t>(kind)]);
    };
    add(TableKind::linetype, records.linetypes);
    add(TableKind::layer, records.layers);
    add(TableKind::style, records.styles);
}

/// What was read before the damage or the end of the user's patience must not be taken for a drawing.
void discard(HxDbDatabase::Imp& db) {
    db.layout.clear();
    db.header.values.clear();
    db.tables.fill(nullptr);
    db.namedObjects = nullptr;
    db.handles = HandleTable();
}

constexpr const wchar_t* kCancelled = L"cancelled";
constexpr std::size_t kChunk = std::size_t{8} << 20;  // bytes that are fetched at once

/// Shares of the work, by experience with files that are not in the system's memory.
enum Share : long long { kFetching = 20, kLoading = 55, kCompleting = 25 };

std::wstring fileNameOf(const std::wstring& path) {
    return L"\"" + path.substr(path.rfind(L'/') + 1) + L"\"";
}

Hx::ErrorStatus readBytes(const std::wstring& path, std::string& bytes, std::wstring& error) {
    const auto fail = [&](Hx::ErrorStatus status, int reason) {
        error = L"Cannot read \"" + path + L"\": " + fromUtf8(std::strerror(reason)) +
                L". Check the name and the permissions.";
        return status;
    };
    const int file = ::open(toFileName(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file == -1) {
        const bool isMissing = errno == ENOENT || errno == ENOTDIR;
        return fail(isMissing ? Hx::eFileNotFound : Hx::eFileAccessErr, errno);
    }
    struct stat status {};
    int reason = ::fstat(file, &status) != 0 ? errno : S_ISDIR(status.st_mode) ? EISDIR : 0;
    reason = reason == 0 && !S_ISREG(status.st_mode) ? EINVAL : reason;
    std::size_t size = 0;
    bytes.resize(reason == 0 ? static_cast<std::size_t>(status.st_size) : 0);
    ProgressScope progress(L"Reading the file", static_cast<long long>(bytes.size()));
    while (reason == 0 && size < bytes.size() && progress.step(static_cast<long long>(size))) {
        const ssize_t got = ::read(file, &bytes[size], std::min(bytes.size() - size, kChunk));
        if (got == 0) {
            break;
        }
        reason = got < 0 && errno != EINTR ? errno : 0;
        size += got > 0 ? static_cast<std::size_t>(got) : 0;
    }
    ::close(file);
    bytes.resize(size);
    if (progress.isCancelled()) {
        error = kCancelled;
        return Hx::eCancelled;
    }
    return reason == 0 ? Hx::eOk : fail(Hx::eFileAccessErr, reason);
}

}  // namespace

Hx::ErrorStatus readDrawing(HxDbDatabase& database, std::string bytes, std::wstring& error,
                            std::wstring* warning) {
    HxDbDatabase::Imp& db = *database.imp();
    db.journal.recording = false;
    db.file = std::move(bytes);
    FileLoader loader(database);
    DrawingError damage;
    ProgressScope progress(L"Reading the drawing", kLoading + kCompleting);
    progress.nextPart(kLoading);
    const bool isLoaded = loader.load(damage);
    if (!progress.step(kLoading)) {
        discard(db);
        error = kCancelled;
        return Hx::eCancelled;
    }
    if (!isLoaded) {
        discard(db);
        error = damage.text();
        const bool isDrawing = damage.line != 0 || damage.binary;
        return isDrawing ? Hx::eBadDxfSequence : Hx::eFilerError;
    }
    complete(database, loader.unplaced());
    db.journal.clear();
    db.journal.recording = true;
    db.modified = false;
    error.clear();
    if (warning) {
        *warning = loader.warning().message.empty() ? L"" : loader.warning().text();
    }
    return Hx::eOk;
}

Hx::ErrorStatus readDrawingFile(HxDbDatabase& database, const std::wstring& path, std::wstring& error) {
    ProgressScope progress(L"Opening " + fileNameOf(path), kFetching + kLoading + kCompleting);
    progress.nextPart(kFetching);
    std::string bytes;
    Hx::ErrorStatus status = readBytes(path, bytes, error);
    if (status == Hx::eOk && isCompressedDrawing(bytes)) {
        status = convertDrawing(path, bytes, error);
    }
    progress.step(kFetching);
    progress.nextPart(kLoading + kCompleting);
    std::wstring warning;
    status = status == Hx::eOk ? readDrawing(database, std::move(bytes), error, &warning) : status;
    if (!warning.empty()) {
        log(Severity::Warning, fileNameOf(path) + L": " + warning);
    }
    return status;
}

}  // namespace korvex
