// The file that keeps the registry hive and the configuration: opened, checked, and made anew when damaged.
#pragma once

#include "host/base/sqlite_database.h"
#include "host/base/text.h"
#include "sdk/hxregistry.h"

namespace korvex {

/// The user's profile folder: KORVEX_PROFILE_DIR, else "korvex" in the user's configuration folder.
QString profileFolder();

/// The folder's store while it is open.
class SettingsStore {
public:
    SqliteDatabase& database() { return m_database; }
    /// Another number each time a file is opened; ids of keys hold for one number only.
    unsigned epoch() const { return m_epoch; }
    const QString& file() const { return m_file; }

private:
    friend class SettingsStoreOpener;
    SqliteDatabase m_database;
    QString m_file;
    unsigned m_epoch = 0;
};

/// The store of the profile folder as it stands now, opened if need be. A store whose file was damaged,
/// moved or deleted is replaced: the damaged file is kept beside under another name, a warning in the log
/// says which. Null when no store can be opened; `status` (may be null) then is kRegBusy or kRegStoreFailed,
/// and the reason is in the log.
SettingsStore* settingsStore(HxRegStatus* status = nullptr);

/// The status for the store's last failure, after a note in the log.
HxRegStatus storeFailure(SettingsStore& store);

/// How long calls wait for other hosts that are writing; 5000 at start. Holds for stores that are opened
/// later.
void setSettingsBusyTimeout(int milliseconds);

/// Closes the store; the next call of settingsStore opens it again.
void closeSettingsStore();

// The layout of the store.

/// The key that HKEY_CURRENT_USER stands for.
constexpr std::int64_t kRootKey = 1;
/// Below the root key.
constexpr wchar_t kProductKey[] = L"Software\\KORVEX\\2021";
constexpr wchar_t kFirstProfile[] = L"Default";

}  // namespace korvex
