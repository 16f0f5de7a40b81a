// Settings as text in the per-user registry hive.
#pragma once

#include "hxregistry.h"
#include "hxstring.h"

/// Reads a text value of a key; an empty `valueName` is the key's unnamed value. Of a longer text the first
/// 256 characters are read. False, with `out` unchanged, when key or value is missing or cannot be read.
bool ReadRegString(HxRegRoot root, const CStdStr<wchar_t>& keyPath, const CStdStr<wchar_t>& valueName,
                   CStdStr<wchar_t>& out);

/// Writes a text value, making the key where it is missing; with an empty `valueName` it only makes the key.
/// False when that fails.
bool WriteRegString(HxRegRoot root, const CStdStr<wchar_t>& keyPath, const CStdStr<wchar_t>& valueName,
                    const CStdStr<wchar_t>& value);

/// The path of the current profile's key for user interface settings, which is made if need be. Empty when
/// there is no current profile or the key cannot be made.
CStdStr<wchar_t> GetUserInterfaceSettingsRegKey();

/// An open key, closed at the end.
class RegistryKey {
public:
    RegistryKey() = default;
    ~RegistryKey() { hxRegCloseKey(m_key); }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;

    bool openForRead(HxRegRoot root, const CStdStr<wchar_t>& path) {
        return hxRegOpenKey(root, path.c_str(), KEY_READ, m_key) == kRegOk;
    }
    /// `keyClass` (may be null) is for a key that has to be made.
    bool openForWrite(HxRegRoot root, const CStdStr<wchar_t>& path, const wchar_t* keyClass) {
        return hxRegCreateKey(root, path.c_str(), keyClass, KEY_WRITE, m_key) == kRegOk;
    }
    bool openForWrite(const RegistryKey& parent, const wchar_t* path, const wchar_t* keyClass) {
        return hxRegCreateKey(parent.m_key, path, keyClass, KEY_WRITE, m_key) == kRegOk;
    }
    /// Reads up to `byteBudget` bytes of a value as text, up to its first null. `isWhole` (may be null) tells
    /// whether that was all of it. False, with `out` unchanged, when there is nothing to read.
    bool readText(const wchar_t* name, std::uint32_t byteBudget, CStdStr<wchar_t>& out,
                  bool* isWhole = nullptr) const;
    /// Writes text, with or without its closing null.
    bool writeText(const wchar_t* name, const CStdStr<wchar_t>& text, bool withNull) const;

private:
    HxRegKey m_key = nullptr;
};
