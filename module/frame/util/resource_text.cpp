// Texts from the resource library.
#include "resource_text.h"

#include "module_handles.h"

#include <cwchar>

namespace {

constexpr int kBufferSize = 1024;

CStdStr<wchar_t> load(HxModuleHandle library, std::uint32_t id) {
    wchar_t buffer[kBufferSize] = {};
    hxLoadString(library, id, buffer, kBufferSize);
    return buffer;
}

}  // namespace

CStdStr<wchar_t> ResourceString(int id, const wchar_t* fallback) {
    CStdStr<wchar_t> text = load(nullptr, static_cast<std::uint32_t>(id));
    return text.empty() ? CStdStr<wchar_t>(fallback) : text;
}

CStdStr<wchar_t> moduleString(int id, const wchar_t* fallback) {
    const ModuleResources resources;
    return ResourceString(id, fallback);
}

QString resourceText(int id) { return QString::fromStdWString(moduleString(id)); }

CStdStr<wchar_t> LoadLocalCmd(unsigned resourceId) { return moduleString(static_cast<int>(resourceId)); }

ModuleResources::ModuleResources() : m_override(globalResInstance()) {}
