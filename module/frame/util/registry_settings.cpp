// Settings as text in the per-user registry hive.
#include "registry_settings.h"

#include "hxconfig.h"

namespace {

constexpr std::uint32_t kCharacterSize = sizeof(wchar_t);
constexpr std::uint32_t kTextBudget = 1024;

}  // namespace

bool RegistryKey::readText(const wchar_t* name, std::uint32_t byteBudget, CStdStr<wchar_t>& out,
                           bool* isWhole) const {
    std::wstring buffer(byteBudget / kCharacterSize, L'\0');
    std::uint32_t size = byteBudget;
    const HxRegStatus status = hxRegQueryValue(m_key, name, nullptr, buffer.data(), &size);
    if (status != kRegOk && status != kRegMoreData) return false;
    if (isWhole) *isWhole = status == kRegOk;
    if (status == kRegOk) buffer.resize(size / kCharacterSize);
    out = buffer.substr(0, buffer.find(L'\0'));
    return true;
}

bool RegistryKey::writeText(const wchar_t* name, const CStdStr<wchar_t>& text, bool withNull) const {
    const std::size_t characters = text.size() + (withNull ? 1 : 0);
    return hxRegSetValue(m_key, name, REG_SZ, text.c_str(),
                         static_cast<std::uint32_t>(characters * kCharacterSize)) == kRegOk;
}

bool ReadRegString(HxRegRoot root, const CStdStr<wchar_t>& keyPath, const CStdStr<wchar_t>& valueName,
                   CStdStr<wchar_t>& out) {
    RegistryKey key;
    return key.openForRead(root, keyPath) && key.readText(valueName.c_str(), kTextBudget, out);
}

bool WriteRegString(HxRegRoot root, const CStdStr<wchar_t>& keyPath, const CStdStr<wchar_t>& valueName,
                    const CStdStr<wchar_t>& value) {
    RegistryKey key;
    if (!key.openForWrite(root, keyPath, nullptr)) return false;
    return valueName.empty() || key.writeText(valueName.c_str(), value, true);
}

CStdStr<wchar_t> GetUserInterfaceSettingsRegKey() {
    CStdStr<wchar_t> path = hxdbHostApplicationServices()->getRegistryProductRootKey();
    path += L"\\Profiles";
    CStdStr<wchar_t> profile;
    if (!ReadRegString(HKEY_CURRENT_USER, path, L"", profile)) return {};
    path += L"\\" + profile + L"\\UserInterfaceSettings";
    return WriteRegString(HKEY_CURRENT_USER, path, L"", L"") ? path : CStdStr<wchar_t>();
}
