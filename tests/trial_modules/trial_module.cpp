// A module that writes its life into the environment variable TRIAL_LOG and fails where TRIAL_REFUSES says.
#include "hxconfig.h"
#include "hxmodule.h"

#include <QVariant>
#include <QVector>
#include <QWidget>

#include <stdexcept>

#ifndef TRIAL_VERSION
#define TRIAL_VERSION kHxApiVersion
#endif
#ifndef TRIAL_ENTRY_POINT
#define TRIAL_ENTRY_POINT hxrxEntryPoint
#endif
#ifndef TRIAL_VERSION_FUNCTION
#define TRIAL_VERSION_FUNCTION hxrxGetApiVersion
#endif

struct TrialValue {
    int number = 0;
};
Q_DECLARE_METATYPE(TrialValue)

namespace {

class TrialWidget : public QWidget {
public:
    ~TrialWidget() override { qputenv("TRIAL_LOG", qgetenv("TRIAL_LOG") + "widget "); }
};

HxModuleHandle g_instance = nullptr;
void* g_packet = nullptr;
TrialWidget* g_widget = nullptr;

void note(const char* what) { qputenv("TRIAL_LOG", qgetenv("TRIAL_LOG") + what + " "); }

bool refuses(const char* what) { return qgetenv("TRIAL_REFUSES") == what; }

HxRxDynamicLinker* theLinker() { return HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker")); }

int initialise(void* packet) {
    HxRxDynamicLinker* const linker = theLinker();
    g_packet = packet;
    if (!refuses("order")) {
        linker->prepareApp(packet);
    }
    LoadResourceDll(L"TrialRes.dll");
    if (refuses("init")) {
        return kRetError;
    }
    if (refuses("throw")) {
        throw HxErrorStatusException(Hx::eOutOfMemory);
    }
    if (refuses("reenter")) {
        note(linker->unloadModule(L"Trial.hrx") == Hx::eInvalidContext ? "unload-refused" : "unloaded");
        note(linker->loadModule(L"Trial.hrx") == Hx::eDuplicateKey ? "load-refused" : "loaded");
    }
    hxrxRegisterService(L"Trial");
    g_widget = new TrialWidget;
    if (linker->registerAppMDIAware(packet) != Hx::eOk) {
        note("unprepared");
    }
    if (!refuses("locked")) {
        linker->unlockApplication(packet);
    }
    return kRetOK;
}

void takeBack() {
    auto* const services = HxRxServiceDictionary::cast(hxrxSysRegistry()->at(L"ServiceDictionary"));
    delete services->remove(L"Trial");
    if (g_widget) {
        g_widget->deleteLater();
    }
}

}  // namespace

HX_EXPORT int DllMain(HxModuleHandle instance, std::uint32_t reason, void* /*reserved*/) {
    note(reason == kProcessAttach ? "attach" : "detach");
    g_instance = instance;
    return refuses("attach") ? 0 : 1;
}

HX_EXPORT int TRIAL_ENTRY_POINT(int message, void* packet) {
    note(std::to_string(message).c_str());
    if (message == kInitAppMsg) {
        return initialise(packet);
    }
    if (message == kUnloadAppMsg && refuses("unload")) {
        return kRetError;
    }
    if (message == kUnloadAppMsg) {
        takeBack();
    }
    return kRetOK;
}

HX_EXPORT std::uint32_t TRIAL_VERSION_FUNCTION() { return TRIAL_VERSION; }

/// Carries a value of the module's own type, and a list of them, through variants.
HX_EXPORT int trialCarry(int number) {
    const QVariant variant = QVariant::fromValue(TrialValue{number});
    const QVariant copy = QVariant::fromValue(QVector<TrialValue>(3, variant.value<TrialValue>()));
    return copy.value<QVector<TrialValue>>().at(2).number;
}

HX_EXPORT void trialUnlock() {
    theLinker()->prepareApp(g_packet);
    theLinker()->unlockApplication(g_packet);
}

HX_EXPORT HxModuleHandle trialInstance() { return g_instance; }

HX_EXPORT void trialDeleteWidgetLater() {
    g_widget->deleteLater();
    g_widget = nullptr;
}
