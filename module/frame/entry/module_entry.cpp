// The module's entry points: attaching, version, and the host's life-cycle messages.
#include "frame/util/module_handles.h"
#include "frame_app.h"

#include "hxmodule.h"

namespace {

constexpr std::uint32_t kPathSize = 1024;
constexpr wchar_t kResourceLibrary[] = L"KvLayerManagerRes.dll";

bool loadResources() {
    if (globalResInstance()) return true;
    wchar_t path[kPathSize] = {};
    if (hxModuleFileName(moduleInstance(), path, kPathSize) < 1) return false;
    setGlobalResInstance(LoadResourceDll(kResourceLibrary));
    return globalResInstance() != nullptr;
}

void freeResources() {
    if (!globalResInstance()) return;
    hxFreeResourceDll(globalResInstance());
    setGlobalResInstance(nullptr);
}

int initialise(void* packet) {
    if (!loadResources()) return kRetError;
    auto* const linker = HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker"));
    linker->prepareApp(packet);
    registerLayerService();
    initLayerManagerFrameApp();
    linker->registerAppMDIAware(packet);
    linker->unlockApplication(packet);
    return kRetOK;
}

}  // namespace

HX_EXPORT int DllMain(HxModuleHandle instance, std::uint32_t reason, void* /*reserved*/) {
    if (reason == kProcessAttach) {
        hxDisableThreadLibraryCalls(instance);
        setModuleInstance(instance);
    }
    return 1;
}

HX_EXPORT std::uint32_t hxrxGetApiVersion() { return kHxApiVersion; }

HX_EXPORT int hxrxEntryPoint(int message, void* packet) {
    switch (message) {
    case kInitAppMsg: return initialise(packet);
    case kUnloadAppMsg:
        unloadLayerManagerFrameApp();
        freeResources();
        return kRetOK;
    case kQuitMsg: unloadLayerManagerFrameApp(); return kRetOK;
    default: return kRetOK;
    }
}
