// A fresh profile folder for each test, and the log as a list.
#pragma once

#include "host/base/log.h"
#include "host/base/settings_store.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace korvex::test {

class ProfileTest : public ::testing::Test {
protected:
    ProfileTest() {
        setFolder(m_folder.path());
        setLogHook([this](Severity, const std::wstring& message) { m_messages.push_back(message); });
    }
    ~ProfileTest() override {
        closeSettingsStore();
        setSettingsBusyTimeout(5000);
        setLogHook({});
    }

    static void setFolder(const QString& folder) { qputenv("KORVEX_PROFILE_DIR", folder.toUtf8()); }
    QString folder() const { return m_folder.path(); }
    QString storeFile() const { return QDir(folder()).filePath("settings.sqlite"); }
    bool wasLogged(const std::wstring& part) const {
        for (const std::wstring& message : m_messages) {
            if (message.find(part) != std::wstring::npos) {
                return true;
            }
        }
        return false;
    }

private:
    QTemporaryDir m_folder;
    std::vector<std::wstring> m_messages;
};

/// An open key that closes itself; made when missing.
class Key {
public:
    explicit Key(const std::wstring& path, std::uint32_t access = KEY_ALL_ACCESS)
        : status(hxRegCreateKey(HKEY_CURRENT_USER, path.c_str(), nullptr, access, m_key, &created)) {}
    ~Key() { hxRegCloseKey(m_key); }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    operator HxRegKey() const { return m_key; }  // NOLINT(google-explicit-constructor)

    HxRegStatus set(const wchar_t* name, const std::wstring& text) const {
        return hxRegSetValue(m_key, name, REG_SZ, text.data(),
                             static_cast<std::uint32_t>(text.size() * sizeof(wchar_t)));
    }
    /// L"<status>" when there is none.
    std::wstring text(const wchar_t* name) const {
        wchar_t buffer[2000];
        std::uint32_t size = sizeof buffer;
        const HxRegStatus read = hxRegQueryValue(m_key, name, nullptr, buffer, &size);
        return read == kRegOk ? std::wstring(buffer, size / sizeof(wchar_t))
                              : L"<" + std::to_wstring(read) + L">";
    }

private:
    HxRegKey m_key = nullptr;

public:
    bool created = false;
    HxRegStatus status;
};

}  // namespace korvex::test
