// Run-time classes, dictionaries of objects by name, the system registry and its services.
#include "sdk/hxrx.h"

#include "host/base/dynamic_linker.h"
#include "host/base/text.h"

#include <string>
#include <unordered_map>
#include <utility>

HxRxObject::~HxRxObject() = default;

const HxRxClass* HxRxObject::desc() {
    static const HxRxClass description(L"HxRxObject", nullptr);
    return &description;
}

HX_DEFINE_MEMBERS(HxRxDictionary, HxRxObject)
HX_DEFINE_MEMBERS(HxRxService, HxRxObject)
HX_DEFINE_MEMBERS(HxRxServiceDictionary, HxRxDictionary)
HX_DEFINE_MEMBERS(HxRxDynamicLinker, HxRxObject)

struct HxRxDictionary::Entries {
    std::unordered_map<std::wstring, HxRxObject*> byName;  ///< under the folded name
};

namespace {

std::wstring keyOf(const wchar_t* name) { return korvex::foldCase(korvex::viewOf(name)); }

HxRxServiceDictionary& services() {
    static auto& dictionary = *new HxRxServiceDictionary;  // shared for the process's life
    return dictionary;
}

}  // namespace

HxRxDictionary::HxRxDictionary() : m_entries(new Entries) {}
HxRxDictionary::~HxRxDictionary() { delete m_entries; }

HxRxObject* HxRxDictionary::at(const wchar_t* name) const {
    const auto found = m_entries->byName.find(keyOf(name));
    return found == m_entries->byName.end() ? nullptr : found->second;
}

HxRxObject* HxRxDictionary::atPut(const wchar_t* name, HxRxObject* object) {
    const std::wstring key = keyOf(name);
    if (key.empty() || !object) {
        return nullptr;
    }
    HxRxObject*& entry = m_entries->byName[key];
    return std::exchange(entry, object);
}

HxRxObject* HxRxDictionary::remove(const wchar_t* name) {
    const auto found = m_entries->byName.find(keyOf(name));
    if (found == m_entries->byName.end()) {
        return nullptr;
    }
    HxRxObject* const object = found->second;
    m_entries->byName.erase(found);
    return object;
}

bool HxRxDictionary::has(const wchar_t* name) const { return at(name) != nullptr; }

int HxRxDictionary::numEntries() const { return static_cast<int>(m_entries->byName.size()); }

HxRxDictionary* hxrxSysRegistry() {
    static HxRxDictionary* const registry = [] {
        auto* made = new HxRxDictionary;
        made->atPut(L"DynamicLinker", &korvex::dynamicLinker());
        made->atPut(L"ServiceDictionary", &services());
        return made;
    }();
    return registry;
}

bool hxrxServiceIsRegistered(const wchar_t* name) { return services().has(name); }

HxRxService* hxrxRegisterService(const wchar_t* name) {
    if (korvex::viewOf(name).empty()) {
        return nullptr;
    }
    if (HxRxObject* const there = services().at(name)) {
        return HxRxService::cast(there);
    }
    auto* const service = new HxRxService;
    services().atPut(name, service);
    return service;
}
