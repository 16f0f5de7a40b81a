// The per-user registry hive: keys with named, typed values of raw bytes, kept between runs.
#pragma once

#include "hxtypes.h"

// Key paths are parted by "\". Key and value names compare without regard to case and keep the case in which
// they were made. A change outlives a crash of the host once the call has returned, and other running hosts
// see it; after a power cut the last changes may be missing. A name may hold any character but "\"; what is
// no Unicode character is kept as U+FFFD. To be used from the user-interface thread only.

struct HxRegKeyImp;
/// An open key. Belongs to who opened it, until hxRegCloseKey.
using HxRegKey = HxRegKeyImp*;

/// The hives.
enum HxRegRoot : int { HKEY_CURRENT_USER = 1 };

/// Access that a key is opened for; the bits of both may be combined.
enum HxRegAccess : std::uint32_t {
    KEY_QUERY_VALUE = 0x1,
    KEY_SET_VALUE = 0x2,
    KEY_CREATE_SUB_KEY = 0x4,
    KEY_ENUMERATE_SUB_KEYS = 0x8,
    KEY_READ = 0x20019,
    KEY_WRITE = 0x20006,
    KEY_ALL_ACCESS = 0xF003F,
};

/// Types of values. Any other number may be stored as well.
enum HxRegType : std::uint32_t { REG_NONE = 0, REG_SZ = 1, REG_BINARY = 3, REG_DWORD = 4, REG_QWORD = 11 };

/// Results of the functions below.
enum HxRegStatus : int {
    kRegOk = 0,
    kRegNotFound = 2,       ///< no such key or value
    kRegAccessDenied = 5,   ///< the key is not open for this, or has keys below it (delete)
    kRegInvalidHandle = 6,  ///< not an open key
    kRegInvalidInput = 87,  ///< a null where none may be, an empty part in a path, a root as key to delete
    kRegDiskFull = 112,
    kRegBusy = 170,      ///< another host kept the store locked for too long
    kRegMoreData = 234,  ///< the buffer is too small
    kRegNoMoreItems = 259,
    kRegStoreFailed = 1016,  ///< the store cannot be opened, read or written; the reason is in the host's log
    kRegKeyDeleted = 1018,   ///< the key was deleted after it was opened
};

/// Opens a key below a root or another key; an empty or null path opens that one again. `key` is null unless
/// the result is kRegOk.
HXSDK_API HxRegStatus hxRegOpenKey(HxRegRoot root, const wchar_t* path, std::uint32_t access, HxRegKey& key);
HXSDK_API HxRegStatus hxRegOpenKey(HxRegKey parent, const wchar_t* path, std::uint32_t access, HxRegKey& key);

/// The same, making the key and those above it where missing. `keyClass` (may be null) becomes the class text
/// of a key that is made. `created` (may be null) tells whether it was. A parent key must be open with
/// KEY_CREATE_SUB_KEY if one has to be made.
HXSDK_API HxRegStatus hxRegCreateKey(HxRegRoot root, const wchar_t* path, const wchar_t* keyClass,
                                     std::uint32_t access, HxRegKey& key, bool* created = nullptr);
HXSDK_API HxRegStatus hxRegCreateKey(HxRegKey parent, const wchar_t* path, const wchar_t* keyClass,
                                     std::uint32_t access, HxRegKey& key, bool* created = nullptr);

/// Null is closed as well.
HXSDK_API HxRegStatus hxRegCloseKey(HxRegKey key);

/// Reads the bytes of a value as they were written; null or "" names the unnamed value. `byteSize` takes the
/// room of `data` and gives the size of the value, in bytes (a wide character has 4). kRegMoreData when the
/// room is too small: `data` then holds the leading bytes. A null `data` asks for type and size only.
/// `type`, `data` and `byteSize` may be null, but `data` not without `byteSize`.
HXSDK_API HxRegStatus hxRegQueryValue(HxRegKey key, const wchar_t* name, std::uint32_t* type, void* data,
                                      std::uint32_t* byteSize);
/// Adds or replaces a value. Strings are stored with or without their closing null, as `byteSize` says.
HXSDK_API HxRegStatus hxRegSetValue(HxRegKey key, const wchar_t* name, std::uint32_t type, const void* data,
                                    std::uint32_t byteSize);
/// The key must be open with KEY_SET_VALUE.
HXSDK_API HxRegStatus hxRegDeleteValue(HxRegKey key, const wchar_t* name);
/// Deletes a key with its values. kRegAccessDenied when it has keys below it.
HXSDK_API HxRegStatus hxRegDeleteKey(HxRegRoot root, const wchar_t* path);
HXSDK_API HxRegStatus hxRegDeleteKey(HxRegKey parent, const wchar_t* path);

/// The class text that the key was made with. `size` takes the room of `buffer` and gives the length of the
/// text, in characters, the first with and the second without the closing null; kRegMoreData when it was cut.
/// A null `buffer` has no room.
HXSDK_API HxRegStatus hxRegQueryClass(HxRegKey key, wchar_t* buffer, std::uint32_t* size);
/// The name of the key below, or of the value, at a position in alphabetical order; kRegNoMoreItems after the
/// last one. `size` as in hxRegQueryClass.
HXSDK_API HxRegStatus hxRegEnumKey(HxRegKey key, std::uint32_t at, wchar_t* buffer, std::uint32_t* size);
HXSDK_API HxRegStatus hxRegEnumValue(HxRegKey key, std::uint32_t at, wchar_t* buffer, std::uint32_t* size);
