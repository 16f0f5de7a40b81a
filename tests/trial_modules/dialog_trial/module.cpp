// A module with a dialog of its own, a widget class for layouts, and commands that wait in them.
#include "hxcmd.h"
#include "hxdialog.h"
#include "hxmodule.h"

#include <QFrame>

namespace {

constexpr wchar_t kGroup[] = L"DIALOG_TRIAL";
HxModuleHandle g_resources = nullptr;

class Swatch : public QFrame {
public:
    explicit Swatch(QWidget* parent) : QFrame(parent) { setMinimumHeight(8); }
};

class TrialDialog : public HxUiBaseDialog {
public:
    TrialDialog() : HxUiBaseDialog("IDD_SWATCH") {}

protected:
    bool OnInitDialog() override {
        GetDlgItem("IDC_SWATCH")
            ->setObjectName(dynamic_cast<Swatch*>(GetDlgItem("IDC_SWATCH")) ? "IDC_OWN_SWATCH"
                                                                            : "IDC_PLAIN_SWATCH");
        return HxUiBaseDialog::OnInitDialog();
    }
};

void showDialog() {
    const HxResourceOverride resources(g_resources);
    TrialDialog().DoModal();
}
void showBox() { hxuiMessageBox(nullptr, L"Shall it stay?", nullptr, MB_YESNO); }

HxEdCommandStack* commands() {
    return HxEdCommandStack::cast(hxrxSysRegistry()->at(L"VREX_REGISTERED_COMMANDS"));
}

int initialise(void* packet) {
    auto* const linker = HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker"));
    linker->prepareApp(packet);
    linker->unlockApplication(packet);
    g_resources = LoadResourceDll(L"DialogTrialRes.dll");
    hxuiRegisterWidget("TrialSwatch", [](QWidget* parent) -> QWidget* { return new Swatch(parent); });
    commands()->addCommand(kGroup, L"TRIALDIALOG", nullptr, HXCMD_MODAL, showDialog);
    commands()->addCommand(kGroup, L"TRIALBOX", nullptr, HXCMD_MODAL, showBox);
    return kRetOK;
}

}  // namespace

HX_EXPORT std::uint32_t hxrxGetApiVersion() { return kHxApiVersion; }

HX_EXPORT int hxrxEntryPoint(int message, void* packet) {
    if (message == kInitAppMsg) {
        return initialise(packet);
    }
    commands()->removeGroup(kGroup);  // the widget class is left to the host
    return kRetOK;
}
