// The configuration service and the host application services on the settings store.
#include "sdk/hxconfig.h"

#include "host/base/log.h"
#include "host/base/settings_store.h"
#include "sdk/hxregistry.h"

#include <algorithm>
#include <cstring>

HX_DEFINE_MEMBERS(HxDbHostApplicationServices, HxRxObject)

namespace {

using korvex::SettingsStore;
using korvex::SqliteQuery;

std::wstring profilesKey() { return std::wstring(korvex::kProductKey) + L"\\Profiles"; }

/// Closes the key at its end.
class KeyGuard {
public:
    ~KeyGuard() { hxRegCloseKey(key); }
    KeyGuard() = default;
    KeyGuard(const KeyGuard&) = delete;
    KeyGuard& operator=(const KeyGuard&) = delete;
    HxRegKey key = nullptr;
};

/// The path with "\" between its parts; false when a part is empty.
bool joinedPath(std::wstring_view section, std::wstring_view name, std::wstring& path) {
    path.assign(section);
    if (!path.empty()) {
        path += L'\\';
    }
    path += name;
    for (wchar_t& c : path) {
        c = c == L'/' ? L'\\' : c;
    }
    return !path.empty() && path.front() != L'\\' && path.back() != L'\\' &&
           path.find(L"\\\\") == std::wstring::npos;
}

/// Numbers are kept as an integer (a double by its bits, so that every one comes back as it was).
std::int64_t numberOf(const VrexVariant& value) {
    std::int16_t int16 = 0;
    std::int32_t int32 = 0;
    std::int64_t int64 = 0;
    double real = 0;
    bool flag = false;
    if (value.getInt16(int16)) return int16;
    if (value.getInt32(int32)) return int32;
    if (value.getBool(flag)) return flag ? 1 : 0;
    if (value.getDouble(real)) {
        std::memcpy(&int64, &real, sizeof int64);
        return int64;
    }
    value.getInt64(int64);
    return int64;
}

/// False for a type that this host does not know.
bool takeValue(const SqliteQuery& query, VrexVariant& value) {
    const std::int64_t number = query.integer(1);
    double real = 0;
    switch (query.integer(0)) {
    case VrexVariant::kInt16: value.setInt16(static_cast<std::int16_t>(number)); return true;
    case VrexVariant::kInt32: value.setInt32(static_cast<std::int32_t>(number)); return true;
    case VrexVariant::kInt64: value.setInt64(number); return true;
    case VrexVariant::kBool: value.setBool(number != 0); return true;
    case VrexVariant::kString: value.setString(korvex::fromUtf8(query.bytes(1)).c_str()); return true;
    case VrexVariant::kDouble:
        std::memcpy(&real, &number, sizeof real);
        value.setDouble(real);
        return true;
    default: return false;
    }
}

class Configuration : public KorvexConfig {
public:
    int getValue(int category, const wchar_t* path, VrexVariant& value) override {
        Setting setting;
        if (const int status = locate(category, L"", path, setting)) {
            return status;
        }
        SqliteQuery query(setting.store->database(), "SELECT type, value FROM settings"
                                                     " WHERE profile=?1 AND category=?2 AND folded=?3");
        const bool found = bind(query, setting).row();
        if (query.failure() != 0) {
            return failed(setting);
        }
        return found && takeValue(query, value) ? Hx::eOk : Hx::eKeyNotFound;
    }

    int addValue(int category, const wchar_t* section, const wchar_t* name,
                 const VrexVariant& value) override {
        Setting setting;
        if (value.type() == VrexVariant::kEmpty || korvex::viewOf(name).empty()) {
            return Hx::eInvalidInput;
        }
        if (const int status = locate(category, korvex::viewOf(section), name, setting)) {
            return status;
        }
        return store(setting, value);
    }

    int setValue(int category, const wchar_t* path, const VrexVariant& value) override {
        return addValue(category, L"", path, value);
    }

    int removeValue(int category, const wchar_t* path) override {
        Setting setting;
        if (const int status = locate(category, L"", path, setting)) {
            return status;
        }
        SqliteQuery query(setting.store->database(),
                          "DELETE FROM settings WHERE profile=?1 AND category=?2 AND folded=?3 RETURNING 1");
        const bool found = bind(query, setting).row();
        if (query.run() != 0) {
            return failed(setting);
        }
        return found ? Hx::eOk : Hx::eKeyNotFound;
    }

private:
    struct Setting {
        SettingsStore* store = nullptr;
        std::string profile;
        int category = 0;
        std::wstring path;
    };

    static int locate(int category, std::wstring_view section, const wchar_t* name, Setting& setting) {
        if (!joinedPath(section, korvex::viewOf(name), setting.path)) {
            return Hx::eInvalidInput;
        }
        const std::wstring profile = hxdbHostApplicationServices()->currentProfile();
        setting.profile = korvex::toUtf8(korvex::foldCase(profile));
        setting.category = category;
        setting.store = korvex::settingsStore();
        if (setting.store && profile.empty()) {
            korvex::log(korvex::Severity::Error,
                        L"The settings name no current profile: set the unnamed value of "
                        L"the key \"" +
                            profilesKey() + L"\".");
        }
        return setting.store && !profile.empty() ? Hx::eOk : Hx::eFileAccessErr;
    }

    static SqliteQuery& bind(SqliteQuery& query, const Setting& setting) {
        return query.bindText(1, setting.profile)
            .bind(2, std::int64_t{setting.category})
            .bindText(3, korvex::toUtf8(korvex::foldCase(setting.path)));
    }

    static int store(const Setting& setting, const VrexVariant& value) {
        SqliteQuery query(setting.store->database(),
                          "INSERT INTO settings(profile, category, folded, path, type, value)"
                          " VALUES(?1, ?2, ?3, ?4, ?5, ?6) ON CONFLICT(profile, category, folded)"
                          " DO UPDATE SET type=excluded.type, value=excluded.value");
        bind(query, setting).bindText(4, korvex::toUtf8(setting.path)).bind(5, std::int64_t{value.type()});
        if (value.type() == VrexVariant::kString) {
            query.bindText(6, korvex::toUtf8(value.asString()));
        } else {
            query.bind(6, numberOf(value));
        }
        return query.run() == 0 ? Hx::eOk : failed(setting);
    }

    static int failed(const Setting& setting) {
        korvex::storeFailure(*setting.store);
        return Hx::eFileAccessErr;
    }
};

}  // namespace

KorvexConfig* vrexConfig() {
    static Configuration& configuration = *new Configuration;
    return korvex::settingsStore() ? &configuration : nullptr;
}

const wchar_t* HxDbHostApplicationServices::product() const { return L"KORVEX"; }

const wchar_t* HxDbHostApplicationServices::getRegistryProductRootKey() const { return korvex::kProductKey; }

CStdStr<wchar_t> HxDbHostApplicationServices::currentProfile() const {
    KeyGuard profiles;
    HxRegStatus status = hxRegOpenKey(HKEY_CURRENT_USER, profilesKey().c_str(), KEY_READ, profiles.key);
    std::wstring name(64, L'\0');
    std::uint32_t size = 0;
    if (status == kRegOk) {
        do {
            name.resize(std::max<std::size_t>(name.size(), size / sizeof(wchar_t) + 1));
            size = static_cast<std::uint32_t>(name.size() * sizeof(wchar_t));
            status = hxRegQueryValue(profiles.key, nullptr, nullptr, &name[0], &size);
        } while (status == kRegMoreData);
    }
    name.resize(status == kRegOk ? size / sizeof(wchar_t) : 0);
    return name.c_str();  // ends at the closing null, if one was stored
}

Hx::ErrorStatus HxDbHostApplicationServices::setCurrentProfile(const wchar_t* name) {
    const std::wstring given(korvex::viewOf(name));
    if (given.empty() || given.find_first_of(L"\\/") != std::wstring::npos) {
        return Hx::eInvalidInput;
    }
    KeyGuard profiles;
    KeyGuard profile;
    const auto bytes = static_cast<std::uint32_t>((given.size() + 1) * sizeof(wchar_t));
    const bool stored =
        hxRegCreateKey(HKEY_CURRENT_USER, profilesKey().c_str(), nullptr, KEY_WRITE, profiles.key) ==
            kRegOk &&
        hxRegCreateKey(profiles.key, given.c_str(), nullptr, KEY_WRITE, profile.key) == kRegOk &&
        hxRegSetValue(profiles.key, nullptr, REG_SZ, given.c_str(), bytes) == kRegOk;
    return stored ? Hx::eOk : Hx::eFileAccessErr;
}

HxDbHostApplicationServices* hxdbHostApplicationServices() {
    static HxDbHostApplicationServices& services = *new HxDbHostApplicationServices;
    return &services;
}
