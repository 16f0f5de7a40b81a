// The options of LAYFRZ, kept from run to run.
#include "freeze_options.h"

#include "hxconfig.h"

namespace {

constexpr wchar_t kSection[] = L"UserInterfaceSettings\\LayerTools";
constexpr wchar_t kNesting[] = L"FRZ_BlockNesting";
constexpr wchar_t kViewport[] = L"FRZ_Vpfreeze";
constexpr std::int32_t kDefault = 1;

CStdStr<wchar_t> pathOf(const wchar_t* name) { return std::wstring(kSection) + L"\\" + name; }

/// 0 for a setting of another type.
std::int32_t readOrAdd(KorvexConfig& config, const wchar_t* name) {
    VrexVariant value(kDefault);
    if (config.getValue(kHxConfigUser, pathOf(name).c_str(), value) != 0) {
        config.addValue(kHxConfigUser, kSection, name, value);
    }
    return value.asInt32();
}

void write(KorvexConfig* config, const wchar_t* name, std::int32_t value) {
    if (config) config->setValue(kHxConfigUser, pathOf(name).c_str(), VrexVariant(value));
}

}  // namespace

FreezeOptions::FreezeOptions() : m_config(vrexConfig()) {
    if (!m_config) return;
    m_nesting = readOrAdd(*m_config, kNesting);
    m_viewport = static_cast<std::uint32_t>(readOrAdd(*m_config, kViewport));
}

void FreezeOptions::setNesting(Nesting nesting) {
    m_nesting = nesting;
    write(m_config, kNesting, nesting);
}

void FreezeOptions::setViewport(Viewport viewport) {
    m_viewport = viewport;
    write(m_config, kViewport, static_cast<std::int32_t>(viewport));
}
