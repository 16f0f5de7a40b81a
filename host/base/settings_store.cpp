// Opens the settings store. One host at a time checks and repairs, under a lock that the system gives back
// even when the host is killed; reading and writing afterwards rest on the database's own locks.
#include "host/base/settings_store.h"

#include "host/base/log.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sqlite3.h>
#include <sys/file.h>
#include <unistd.h>

namespace korvex {
namespace {

constexpr char kFileName[] = "settings.sqlite";
constexpr char kLockName[] = "settings.lock";
constexpr int kApplicationId = 0x4B565853;
constexpr int kSchemaVersion = 1;

constexpr const char* kSchema[] = {
    "CREATE TABLE keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, folded TEXT NOT NULL,"
    " name TEXT NOT NULL, class TEXT NOT NULL, UNIQUE(parent, folded))",
    "CREATE TABLE key_values(key INTEGER NOT NULL, folded TEXT NOT NULL, name TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, PRIMARY KEY(key, folded)) WITHOUT ROWID",
    "CREATE TABLE settings(profile TEXT NOT NULL, category INTEGER NOT NULL, folded TEXT NOT NULL,"
    " path TEXT NOT NULL, type INTEGER NOT NULL, value NOT NULL, PRIMARY KEY(profile, category, folded))"
    " WITHOUT ROWID",
    "INSERT INTO keys(id, parent, folded, name, class) VALUES(1, 0, '', '', '')",
};

int g_busyMilliseconds = 5000;
std::unique_ptr<SettingsStore> g_store;

std::wstring systemReason() { return fromUtf8(std::strerror(errno)); }

/// Holds the folder's lock file while it lives.
class FolderLock {
public:
    explicit FolderLock(const QString& file)
        : m_file(::open(toFileName(toWide(file)).c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
        QElapsedTimer waited;
        waited.start();
        while (m_file >= 0 && !(m_held = flock(m_file, LOCK_EX | LOCK_NB) == 0) && errno == EWOULDBLOCK &&
               waited.elapsed() < g_busyMilliseconds) {
            QThread::msleep(5);
        }
    }
    ~FolderLock() {
        if (m_file >= 0) {
            ::close(m_file);
        }
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    bool canBeMade() const { return m_file >= 0; }
    bool isHeld() const { return m_held; }

private:
    int m_file;
    bool m_held = false;
};

}  // namespace

/// Opening, step by step. `reason` tells what is wrong where a step fails.
class SettingsStoreOpener {
public:
    explicit SettingsStoreOpener(SettingsStore& store) : m_store(store), m_database(store.m_database) {}

    HxRegStatus open(const QString& folder) {
        static unsigned opened = 0;
        m_store.m_file = QDir(folder).filePath(kFileName);
        m_store.m_epoch = ++opened;
        if (!QDir().mkpath(folder)) {
            return fail(L"the folder cannot be made", kRegStoreFailed);
        }
        const FolderLock lock(QDir(folder).filePath(kLockName));
        if (!lock.canBeMade()) {
            return fail(L"the folder is not writable: " + systemReason(), kRegStoreFailed);
        }
        if (!lock.isHeld()) {
            return fail(L"another KORVEX keeps it locked", kRegBusy);
        }
        HxRegStatus status = prepare();
        if (m_damaged) {
            status = moveAside() ? prepare() : kRegStoreFailed;
        }
        return status == kRegOk ? kRegOk : fail(m_reason, status);
    }

private:
    HxRegStatus fail(const std::wstring& reason, HxRegStatus status) {
        log(Severity::Error, L"The settings store " + quotedPath(m_store.m_file) + L" cannot be opened: " +
                                 reason + L". Free it, or name another folder in KORVEX_PROFILE_DIR.");
        m_database.close();
        return status;
    }

    /// Opens and checks the file, and makes the tables in an empty one.
    HxRegStatus prepare() {
        m_damaged = false;
        if (m_database.open(toFileName(toWide(m_store.m_file)), g_busyMilliseconds) != SQLITE_OK ||
            !isSound()) {
            return failed();
        }
        const std::string id = m_database.firstText("PRAGMA application_id");
        const std::string tables = m_database.firstText("SELECT count(*) FROM sqlite_master");
        if (id != std::to_string(kApplicationId) && tables != "0") {
            return damaged(L"it is no settings store");
        }
        if (std::atoi(m_database.firstText("PRAGMA user_version").c_str()) > kSchemaVersion) {
            m_reason = L"it was made by a later version of KORVEX";
            return kRegStoreFailed;
        }
        // Committed changes outlive the process in both; only a power cut may take the last ones.
        m_database.execute("PRAGMA journal_mode=WAL");
        m_database.execute("PRAGMA synchronous=NORMAL");
        return tables != "0" || makeTables() ? kRegOk : failed();
    }

    bool isSound() {
        const std::string verdict = m_database.firstText("PRAGMA quick_check(1)");
        if (verdict != "ok" && m_database.lastFailure() == 0) {
            damaged(fromUtf8(verdict));
        }
        return verdict == "ok";
    }

    bool makeTables() {
        SqliteTransaction transaction(m_database);
        bool good = transaction.failure() == 0;
        for (const char* sql : kSchema) {
            good = good && m_database.execute(sql) == SQLITE_OK;
        }
        good = good &&
               m_database.execute(("PRAGMA application_id=" + std::to_string(kApplicationId)).c_str()) == 0 &&
               m_database.execute(("PRAGMA user_version=" + std::to_string(kSchemaVersion)).c_str()) == 0 &&
               makeFirstProfile();
        return good && transaction.commit() == SQLITE_OK;
    }

    bool makeFirstProfile() {
        std::int64_t parent = kRootKey;
        for (const QString& name : toQString(std::wstring(kProductKey) + L"\\Profiles").split('\\')) {
            parent = makeKey(parent, name);
        }
        SqliteQuery query(m_database,
                          "INSERT INTO key_values(key, folded, name, type, data) VALUES(?1, '', '', ?2, ?3)");
        query.bind(1, parent).bind(2, std::int64_t{REG_SZ});
        return query.bindBytes(3, kFirstProfile, sizeof kFirstProfile).run() == SQLITE_OK &&
               makeKey(parent, toQString(kFirstProfile)) != 0;
    }

    std::int64_t makeKey(std::int64_t parent, const QString& name) {
        SqliteQuery query(
            m_database, "INSERT INTO keys(parent, folded, name, class) VALUES(?1, ?2, ?3, '') RETURNING id");
        const std::wstring wide = toWide(name);
        query.bind(1, parent).bindText(2, toUtf8(foldCase(wide))).bindText(3, toUtf8(wide));
        return query.row() ? query.integer(0) : 0;
    }

    HxRegStatus damaged(const std::wstring& reason) {
        m_damaged = true;
        m_reason = reason;
        return kRegStoreFailed;
    }

    HxRegStatus failed() {
        if (m_damaged) {
            return kRegStoreFailed;
        }
        m_reason = fromUtf8(m_database.failureText());
        m_damaged = m_database.isDamaged();
        const int primary = m_database.lastFailure() & 0xFF;
        return primary == SQLITE_BUSY || primary == SQLITE_LOCKED ? kRegBusy : kRegStoreFailed;
    }

    /// Renames the file and what belongs to it.
    bool moveAside() {
        m_database.close();
        const QString base =
            m_store.m_file + ".damaged-" + QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
        QString aside = base;
        for (int i = 2; QFileInfo::exists(aside); ++i) {
            aside = base + "-" + QString::number(i);
        }
        for (const char* suffix : {"-wal", "-shm", ""}) {
            const std::string from = toFileName(toWide(m_store.m_file + suffix));
            if (std::rename(from.c_str(), toFileName(toWide(aside + suffix)).c_str()) != 0 &&
                errno != ENOENT) {
                m_reason += L", and it cannot be moved aside: " + systemReason();
                return false;
            }
        }
        log(Severity::Warning, L"The settings store " + quotedPath(m_store.m_file) + L" is damaged (" +
                                   m_reason + L"). It was kept as " + quotedPath(aside) +
                                   L"; the settings start anew from their defaults.");
        return true;
    }

    SettingsStore& m_store;
    SqliteDatabase& m_database;
    bool m_damaged = false;
    std::wstring m_reason;
};

QString profileFolder() {
    const QString given = qEnvironmentVariable("KORVEX_PROFILE_DIR");
    return given.isEmpty()
               ? QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/korvex"
               : QDir(given).absolutePath();
}

SettingsStore* settingsStore(HxRegStatus* status) {
    const QString folder = profileFolder();
    if (g_store && (g_store->file() != QDir(folder).filePath(kFileName) || g_store->database().isDamaged() ||
                    g_store->database().hasMoved())) {
        g_store.reset();
    }
    if (!g_store) {
        auto store = std::make_unique<SettingsStore>();
        const HxRegStatus opened = SettingsStoreOpener(*store).open(folder);
        if (opened != kRegOk) {
            if (status) {
                *status = opened;
            }
            return nullptr;
        }
        g_store = std::move(store);
    }
    return g_store.get();
}

HxRegStatus storeFailure(SettingsStore& store) {
    log(Severity::Error, L"The settings store " + quotedPath(store.file()) + L" failed: " +
                             fromUtf8(store.database().failureText()) + L".");
    switch (store.database().lastFailure() & 0xFF) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED: return kRegBusy;
    case SQLITE_FULL: return kRegDiskFull;
    default: return kRegStoreFailed;
    }
}

void setSettingsBusyTimeout(int milliseconds) { g_busyMilliseconds = milliseconds; }

void closeSettingsStore() { g_store.reset(); }

}  // namespace korvex
