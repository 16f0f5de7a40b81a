// Registering and taking back all that the module offers.
#include "frame_app.h"

#include "exported_functions.h"
#include "frame/module_state.h"
#include "frame/palette_commands.h"
#include "frame/palette_properties.h"
#include "frame/util/resource_text.h"

#include "layer_states/commands/layer_state_commands.h"
#include "layer_states/manager/layer_state_man_window.h"
#include "model/palette_doc_reactor.h"
#include "model/palette_editor_reactor.h"
#include "tools/layfrz.h"

#include "hxcmd.h"

#include <memory>

namespace {

constexpr wchar_t kService[] = L"KvLayerApps";
constexpr wchar_t kGroup[] = L"KVLAYERAPPS";

struct CommandRow {
    const wchar_t* globalName;
    KvString localName;
    int flags;
    HxCommandFunction function;
};

constexpr int kShowsPalette = HXCMD_TRANSPARENT;
constexpr int kHidesPalette = HXCMD_TRANSPARENT | HXCMD_NOUNDOMARK;

const CommandRow kCommands[] = {
    {L"LAYERSTATE", kStrCommandLayerState, HXCMD_MODAL, LayerStateCmd},
    {L"LAYERSTATESAVE", kStrCommandLayerStateSave, HXCMD_MODAL, LayerStateSaveCmd},
    {L"LAYFRZ", kStrCommandLayFrz, HXCMD_MODAL, LayFrz},
    {L"LAYER", kStrCommandLayer, kShowsPalette, LayerCmd2},
    {L"LAYERCLOSE", kStrCommandLayerClose, kHidesPalette, LayerCloseCmd},
    {L"CLASSICLAYER", kStrCommandClassicLayer, kShowsPalette, ClassicLayerDlgCmd},
    {L"LAYERPALETTE", kStrCommandLayerPalette, kShowsPalette, LayerPaletteCmd},
};

/// One of each while the module is initialised.
struct Singletons {
    std::unique_ptr<KvLayerPaletteEditorReactor> editorReactor;
    std::unique_ptr<VrexLayerCuixManager> cuixManager;
};

Singletons& singletons() {
    static Singletons all;
    return all;
}

HxEdCommandStack* commandStack() {
    return HxEdCommandStack::cast(hxrxSysRegistry()->at(L"VREX_REGISTERED_COMMANDS"));
}

void registerCommands() {
    for (const CommandRow& row : kCommands) {
        if (HxEdCommandStack* const stack = commandStack()) {
            stack->addCommand(kGroup, row.globalName, LoadLocalCmd(row.localName).c_str(), row.flags,
                              row.function, nullptr, -1, nullptr);
        }
    }
}

void removeService() {
    if (!hxrxServiceIsRegistered(kService)) return;
    auto* const services = HxRxServiceDictionary::cast(hxrxSysRegistry()->at(L"ServiceDictionary"));
    if (services) delete services->remove(kService);
}

}  // namespace

void registerLayerService() {
    if (!hxrxServiceIsRegistered(kService)) hxrxRegisterService(kService);
}

void initLayerManagerFrameApp() {
    registerLayerService();
    registerCommands();
    registerLayerStateWidgets();
    Singletons& all = singletons();
    if (!all.editorReactor) all.editorReactor = std::make_unique<KvLayerPaletteEditorReactor>();
    if (!paletteDocReactor()) setPaletteDocReactor(new KvLayerPaletteDocReactor(curDoc()));
    if (!all.cuixManager) all.cuixManager = std::make_unique<VrexLayerCuixManager>();
}

Hx::ErrorStatus unloadLayerManagerFrameApp() {
    Singletons& all = singletons();
    all.editorReactor.reset();
    setPaletteDocReactor(nullptr);
    all.cuixManager.reset();
    removeService();
    setLayerPalette(nullptr);
    forgetLayerStateWidgets();
    HxEdCommandStack* const stack = commandStack();
    return stack ? stack->removeGroup(kGroup) : Hx::eKeyNotFound;
}

IVrexPalettePropManager* GetCuixManagerUtil() { return singletons().cuixManager.get(); }
