// Settings of dialogs in the registry hive.
#include "host/ui/standard/dialog_settings.h"

#include "host/base/text.h"
#include "sdk/hxconfig.h"
#include "sdk/hxregistry.h"

#include <vector>

namespace korvex {

namespace {

/// Empty when there is no profile.
std::wstring keyPath(const QString& key) {
    HxDbHostApplicationServices* const services = hxdbHostApplicationServices();
    const CStdStr<wchar_t> profile = services->currentProfile();
    return key.isEmpty() || profile.empty()
               ? std::wstring()
               : std::wstring(services->getRegistryProductRootKey()) + L"\\Profiles\\" + profile +
                     L"\\UserInterfaceSettings\\" + toWide(key);
}

/// An open key, closed at the end.
class OpenKey {
public:
    ~OpenKey() { hxRegCloseKey(key); }
    HxRegKey key = nullptr;
};

}  // namespace

QString DialogSettings::text(const char* name) const {
    const std::wstring path = keyPath(m_key);
    const std::wstring value = toWide(QString::fromLatin1(name));
    OpenKey open;
    std::uint32_t size = 0;
    std::uint32_t type = REG_NONE;
    if (path.empty() || hxRegOpenKey(HKEY_CURRENT_USER, path.c_str(), KEY_READ, open.key) != kRegOk ||
        hxRegQueryValue(open.key, value.c_str(), &type, nullptr, &size) != kRegOk || type != REG_SZ) {
        return {};
    }
    std::vector<wchar_t> buffer(size / sizeof(wchar_t) + 1, L'\0');
    if (hxRegQueryValue(open.key, value.c_str(), nullptr, buffer.data(), &size) != kRegOk) {
        return {};
    }
    buffer.back() = L'\0';
    return toQString(buffer.data());
}

int DialogSettings::number(const char* name, int fallback) const {
    bool isNumber = false;
    const int value = text(name).toInt(&isNumber);
    return isNumber ? value : fallback;
}

void DialogSettings::setText(const char* name, const QString& value) const {
    const std::wstring path = keyPath(m_key);
    const std::wstring wide = toWide(value);
    OpenKey open;
    if (!path.empty() &&
        hxRegCreateKey(HKEY_CURRENT_USER, path.c_str(), nullptr, KEY_WRITE, open.key) == kRegOk) {
        hxRegSetValue(open.key, toWide(QString::fromLatin1(name)).c_str(), REG_SZ, wide.c_str(),
                      static_cast<std::uint32_t>((wide.size() + 1) * sizeof(wchar_t)));
    }
}

}  // namespace korvex
