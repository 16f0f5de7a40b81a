// The registry hive on the settings store. A key is a row under its parent's number; numbers are never given
// twice, so that an open key knows when its row was deleted.
#include "sdk/hxregistry.h"

#include "host/base/settings_store.h"

#include <cstring>
#include <unordered_set>
#include <vector>

struct HxRegKeyImp {
    std::int64_t id;
    std::uint32_t access;
    unsigned epoch;  ///< of the store that gave the number
};

namespace {

using korvex::SettingsStore;
using korvex::SqliteQuery;
using korvex::SqliteTransaction;

std::unordered_set<HxRegKey>& openKeys() {
    static auto& keys = *new std::unordered_set<HxRegKey>;
    return keys;
}

std::string foldedName(std::wstring_view name) { return korvex::toUtf8(korvex::foldCase(name)); }

/// The parts of a path; false for an empty part. An empty path has no parts.
bool partsOf(const wchar_t* path, std::vector<std::wstring>& parts) {
    std::wstring_view rest = korvex::viewOf(path);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(L'\\'), rest.size());
        parts.emplace_back(rest.substr(0, end));
        if (end == 0 || end + 1 == rest.size()) {
            return false;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return true;
}

/// Where a call begins: a key with the rights that it is used with, in a store; or the reason why not.
struct Place {
    HxRegStatus status = kRegOk;
    SettingsStore* store = nullptr;
    std::int64_t id = korvex::kRootKey;
    std::uint32_t access = KEY_ALL_ACCESS;

    korvex::SqliteDatabase& database() const { return store->database(); }
    /// The status of a query that found nothing: its failure, that the key is gone, or `otherwise`.
    HxRegStatus nothing(const SqliteQuery& query, HxRegStatus otherwise) const;
    HxRegStatus result(int code) const { return code == 0 ? kRegOk : korvex::storeFailure(*store); }
};

Place placeOf(HxRegRoot root) {
    Place place;
    if (root != HKEY_CURRENT_USER) {
        place.status = kRegInvalidHandle;
    } else {
        place.store = korvex::settingsStore(&place.status);
    }
    return place;
}

Place placeOf(HxRegKey key, std::uint32_t needed = 0) {
    Place place;
    if (openKeys().count(key) == 0) {
        place.status = kRegInvalidHandle;
    } else if ((key->access & needed) != needed) {
        place.status = kRegAccessDenied;
    } else if ((place.store = korvex::settingsStore(&place.status)) && place.store->epoch() != key->epoch) {
        place.status = kRegKeyDeleted;
    } else {
        place.id = key->id;
        place.access = key->access;
    }
    return place;
}

/// kRegOk, or kRegKeyDeleted when the place's key is gone.
HxRegStatus existence(const Place& place) {
    SqliteQuery query(place.database(), "SELECT 1 FROM keys WHERE id=?1");
    if (query.bind(1, place.id).row()) {
        return kRegOk;
    }
    return query.failure() == 0 ? kRegKeyDeleted : place.result(query.failure());
}

HxRegStatus Place::nothing(const SqliteQuery& query, HxRegStatus otherwise) const {
    if (query.failure() != 0) {
        return result(query.failure());
    }
    const HxRegStatus there = existence(*this);
    return there == kRegOk ? otherwise : there;
}

HxRegStatus findChild(const Place& place, std::int64_t parent, const std::wstring& name, std::int64_t& id) {
    SqliteQuery query(place.database(), "SELECT id FROM keys WHERE parent=?1 AND folded=?2");
    if (!query.bind(1, parent).bindText(2, foldedName(name)).row()) {
        return query.failure() == 0 ? kRegNotFound : place.result(query.failure());
    }
    id = query.integer(0);
    return kRegOk;
}

/// Follows the parts from the place's key as far as they exist. `id` is the last key found, `found` counts.
HxRegStatus follow(const Place& place, const std::vector<std::wstring>& parts, std::int64_t& id,
                   std::size_t& found) {
    id = place.id;
    HxRegStatus status = existence(place);
    for (found = 0; status == kRegOk && found < parts.size(); ++found) {
        status = findChild(place, id, parts[found], id);
        if (status != kRegOk) {
            break;
        }
    }
    return status;
}

HxRegStatus addChild(const Place& place, std::int64_t parent, const std::wstring& name,
                     const wchar_t* keyClass, std::int64_t& id) {
    SqliteQuery query(place.database(),
                      "INSERT INTO keys(parent, folded, name, class) VALUES(?1, ?2, ?3, ?4) RETURNING id");
    query.bind(1, parent).bindText(2, foldedName(name)).bindText(3, korvex::toUtf8(name));
    if (query.bindText(4, korvex::toUtf8(korvex::viewOf(keyClass))).row()) {
        id = query.integer(0);
    }
    return place.result(query.run());
}

HxRegKey newHandle(const Place& place, std::int64_t id, std::uint32_t access) {
    auto* const key = new HxRegKeyImp{id, access, place.store->epoch()};
    openKeys().insert(key);
    return key;
}

HxRegStatus openKey(const Place& place, const wchar_t* path, std::uint32_t access, HxRegKey& key) {
    key = nullptr;
    std::vector<std::wstring> parts;
    if (place.status != kRegOk) {
        return place.status;
    }
    if (!partsOf(path, parts)) {
        return kRegInvalidInput;
    }
    std::int64_t id = 0;
    std::size_t found = 0;
    const HxRegStatus status = follow(place, parts, id, found);
    if (status == kRegOk) {
        key = newHandle(place, id, access);
    }
    return status;
}

/// Adds the keys that miss from `parts`; the store's write lock is held.
HxRegStatus addMissing(const Place& place, const std::vector<std::wstring>& parts, const wchar_t* keyClass,
                       std::int64_t& id) {
    std::size_t found = 0;
    HxRegStatus status = follow(place, parts, id, found);
    if (status == kRegNotFound) {
        status = kRegOk;
        for (; status == kRegOk && found < parts.size(); ++found) {
            status = addChild(place, id, parts[found], keyClass, id);
        }
    }
    return status;
}

HxRegStatus createKey(const Place& place, const wchar_t* path, const wchar_t* keyClass, std::uint32_t access,
                      HxRegKey& key, bool* created) {
    HxRegStatus status = openKey(place, path, access, key);
    if (created) {
        *created = false;
    }
    if (status != kRegNotFound) {
        return status;
    }
    if ((place.access & KEY_CREATE_SUB_KEY) == 0) {
        return kRegAccessDenied;
    }
    std::vector<std::wstring> parts;
    partsOf(path, parts);
    SqliteTransaction transaction(place.database());
    std::int64_t id = 0;
    status = place.result(transaction.failure());
    if (status == kRegOk) {
        status = addMissing(place, parts, keyClass, id);
    }
    if (status == kRegOk) {
        status = place.result(transaction.commit());
    }
    if (status == kRegOk) {
        key = newHandle(place, id, access);
        if (created) {
            *created = true;
        }
    }
    return status;
}

bool hasKeysBelow(const Place& place, std::int64_t id) {
    SqliteQuery query(place.database(), "SELECT 1 FROM keys WHERE parent=?1 LIMIT 1");
    return query.bind(1, id).row();
}

HxRegStatus deleteKey(const Place& place, const wchar_t* path) {
    std::vector<std::wstring> parts;
    if (place.status != kRegOk) {
        return place.status;
    }
    if (!partsOf(path, parts) || parts.empty()) {
        return kRegInvalidInput;
    }
    SqliteTransaction transaction(place.database());
    if (transaction.failure() != 0) {
        return place.result(transaction.failure());
    }
    std::int64_t id = 0;
    std::size_t found = 0;
    const HxRegStatus status = follow(place, parts, id, found);
    if (status != kRegOk) {
        return status;
    }
    if (hasKeysBelow(place, id)) {
        return kRegAccessDenied;
    }
    for (const char* sql : {"DELETE FROM key_values WHERE key=?1", "DELETE FROM keys WHERE id=?1"}) {
        const int code = SqliteQuery(place.database(), sql).bind(1, id).run();
        if (code != 0) {
            return place.result(code);
        }
    }
    return place.result(transaction.commit());
}

/// Gives a name or class text as far as the room goes.
HxRegStatus giveText(std::string_view utf8, wchar_t* buffer, std::uint32_t* size) {
    const std::wstring text = korvex::fromUtf8(utf8);
    const std::size_t room = buffer ? *size : 0;
    korvex::copyText(text, buffer, room);
    *size = static_cast<std::uint32_t>(text.size());
    return text.size() < room ? kRegOk : kRegMoreData;
}

/// The text at a position of an ordered list below a key.
HxRegStatus enumerate(const Place& place, const char* sql, std::uint32_t at, wchar_t* buffer,
                      std::uint32_t* size) {
    if (place.status != kRegOk) {
        return place.status;
    }
    if (!size) {
        return kRegInvalidInput;
    }
    SqliteQuery query(place.database(), sql);
    if (!query.bind(1, place.id).bind(2, std::int64_t{at}).row()) {
        return place.nothing(query, kRegNoMoreItems);
    }
    return giveText(query.bytes(0), buffer, size);
}

}  // namespace

HxRegStatus hxRegOpenKey(HxRegRoot root, const wchar_t* path, std::uint32_t access, HxRegKey& key) {
    return openKey(placeOf(root), path, access, key);
}

HxRegStatus hxRegOpenKey(HxRegKey parent, const wchar_t* path, std::uint32_t access, HxRegKey& key) {
    return openKey(placeOf(parent), path, access, key);
}

HxRegStatus hxRegCreateKey(HxRegRoot root, const wchar_t* path, const wchar_t* keyClass, std::uint32_t access,
                           HxRegKey& key, bool* created) {
    return createKey(placeOf(root), path, keyClass, access, key, created);
}

HxRegStatus hxRegCreateKey(HxRegKey parent, const wchar_t* path, const wchar_t* keyClass,
                           std::uint32_t access, HxRegKey& key, bool* created) {
    return createKey(placeOf(parent), path, keyClass, access, key, created);
}

HxRegStatus hxRegCloseKey(HxRegKey key) {
    if (!key) {
        return kRegOk;
    }
    if (openKeys().erase(key) == 0) {
        return kRegInvalidHandle;
    }
    delete key;
    return kRegOk;
}

HxRegStatus hxRegQueryValue(HxRegKey key, const wchar_t* name, std::uint32_t* type, void* data,
                            std::uint32_t* byteSize) {
    const Place place = placeOf(key, KEY_QUERY_VALUE);
    if (place.status != kRegOk) {
        return place.status;
    }
    if (data && !byteSize) {
        return kRegInvalidInput;
    }
    SqliteQuery query(place.database(), "SELECT type, data FROM key_values WHERE key=?1 AND folded=?2");
    if (!query.bind(1, place.id).bindText(2, foldedName(korvex::viewOf(name))).row()) {
        return place.nothing(query, kRegNotFound);
    }
    if (type) {
        *type = static_cast<std::uint32_t>(query.integer(0));
    }
    const std::string_view bytes = query.bytes(1);
    HxRegStatus status = kRegOk;
    if (data) {
        const std::size_t room = *byteSize;
        if (!bytes.empty()) {
            std::memcpy(data, bytes.data(), std::min(room, bytes.size()));
        }
        status = room < bytes.size() ? kRegMoreData : kRegOk;
    }
    if (byteSize) {
        *byteSize = static_cast<std::uint32_t>(bytes.size());
    }
    return status;
}

HxRegStatus hxRegSetValue(HxRegKey key, const wchar_t* name, std::uint32_t type, const void* data,
                          std::uint32_t byteSize) {
    const Place place = placeOf(key, KEY_SET_VALUE);
    if (place.status != kRegOk) {
        return place.status;
    }
    if (!data && byteSize != 0) {
        return kRegInvalidInput;
    }
    const std::wstring_view given = korvex::viewOf(name);
    SqliteQuery query(place.database(),
                      "INSERT INTO key_values(key, folded, name, type, data)"
                      " SELECT id, ?2, ?3, ?4, ?5 FROM keys WHERE id=?1"
                      " ON CONFLICT(key, folded) DO UPDATE SET type=excluded.type, data=excluded.data"
                      " RETURNING 1");
    query.bind(1, place.id).bindText(2, foldedName(given)).bindText(3, korvex::toUtf8(given));
    if (!query.bind(4, std::int64_t{type}).bindBytes(5, data, byteSize).row()) {
        return place.nothing(query, kRegKeyDeleted);
    }
    return place.result(query.run());
}

HxRegStatus hxRegDeleteValue(HxRegKey key, const wchar_t* name) {
    const Place place = placeOf(key, KEY_SET_VALUE);
    if (place.status != kRegOk) {
        return place.status;
    }
    SqliteQuery query(place.database(), "DELETE FROM key_values WHERE key=?1 AND folded=?2 RETURNING 1");
    if (!query.bind(1, place.id).bindText(2, foldedName(korvex::viewOf(name))).row()) {
        return place.nothing(query, kRegNotFound);
    }
    return place.result(query.run());
}

HxRegStatus hxRegDeleteKey(HxRegRoot root, const wchar_t* path) { return deleteKey(placeOf(root), path); }

HxRegStatus hxRegDeleteKey(HxRegKey parent, const wchar_t* path) { return deleteKey(placeOf(parent), path); }

HxRegStatus hxRegQueryClass(HxRegKey key, wchar_t* buffer, std::uint32_t* size) {
    const Place place = placeOf(key, KEY_QUERY_VALUE);
    if (place.status != kRegOk) {
        return place.status;
    }
    if (!size) {
        return kRegInvalidInput;
    }
    SqliteQuery query(place.database(), "SELECT class FROM keys WHERE id=?1");
    if (!query.bind(1, place.id).row()) {
        return place.nothing(query, kRegKeyDeleted);
    }
    return giveText(query.bytes(0), buffer, size);
}

HxRegStatus hxRegEnumKey(HxRegKey key, std::uint32_t at, wchar_t* buffer, std::uint32_t* size) {
    return enumerate(placeOf(key, KEY_ENUMERATE_SUB_KEYS),
                     "SELECT name FROM keys WHERE parent=?1 ORDER BY folded LIMIT 1 OFFSET ?2", at, buffer,
                     size);
}

HxRegStatus hxRegEnumValue(HxRegKey key, std::uint32_t at, wchar_t* buffer, std::uint32_t* size) {
    return enumerate(placeOf(key, KEY_QUERY_VALUE),
                     "SELECT name FROM key_values WHERE key=?1 ORDER BY folded LIMIT 1 OFFSET ?2", at, buffer,
                     size);
}
