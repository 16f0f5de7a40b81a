// The commands that show and hide the layer manager.
#include "palette_commands.h"

#include "frame/util/resource_text.h"
#include "module_state.h"
#include "palette_settings.h"

#include "manager_ui/palette/layer_manager_wnd.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"

#include "hxdoc.h"
#include "hxdock.h"
#include "hxed.h"
#include "hxui.h"

#include <QWidget>

namespace {

constexpr QRect kFirstPlace(0, 0, 500, 250);

/// Null when the main window is none that panels dock in.
HxUiDockFrameWindow* dockFrame() { return qobject_cast<HxUiDockFrameWindow*>(hxuiMainWindow()); }

void showAgain(KvPalettePanel& palette) {
    if (HxDbDatabase* const database = curDocDatabase()) {
        palette.refreshWndLayers(database, database != palette.GetDatabase());
    }
    palette.showPanel(true);
}

void makePalette(HxUiDockFrameWindow& frame, bool loadSettings) {
    auto* const palette = new KvLayerManagerWnd(&frame);
    setLayerPalette(palette);
    palette->initDialog();
    palette->setGeometry(kFirstPlace);
    const CStdStr<wchar_t> title = ResourceString(kStrPaletteTitle);
    palette->setWindowTitle(QString::fromStdWString(title));
    palette->setCaption(title.c_str());
    palette->setDockingStyle(kHxDockAndFloat);
    frame.dockPanel(palette, nullptr, kHxDockLeft, kHxDockWhole);
    if (loadSettings) LoadPaletteSet();
    palette->show();
    palette->AdjustFrameSize();
}

}  // namespace

void LayerCmd2() {
    resbuf mode = {};
    if (hxedGetVar(L"LayerDlgMode", &mode) == RTNORM && mode.resval.rint == 0) {
        ClassicLayerDlgCmd();
    } else {
        LayerPaletteCmd(true);
    }
}

void ClassicLayerDlgCmd() {
    const ModuleResources resources;
    KvLayerPropManagerDlg dialog(curDocDatabase(), nullptr);
    dialog.setIsPalette(false);
    if (dialog.DoModal() != IDOK) return;
    kvSetLayerTableChanges();
    resbuf layer = {};
    if (hxedGetVar(L"CLAYER", &layer) != RTNORM) return;
    hxedSetVar(L"CLAYER", &layer);  // whoever listens hears of it
    hxutFreeString(layer.resval.rstring);
}

void LayerPaletteCmd(bool loadSettings) {
    const ModuleResources resources;
    HxUiDockFrameWindow* const frame = dockFrame();
    if (!frame) return;
    if (KvPalettePanel* const palette = layerPalette()) {
        showAgain(*palette);
    } else {
        makePalette(*frame, loadSettings);
    }
}

void LayerPaletteCmd() { LayerPaletteCmd(true); }

void LayerCloseCmd() {
    const ModuleResources resources;
    hxuiMainAppService()->setLayerPaletteVisible(false);
    KvPalettePanel* const palette = layerPalette();
    if (palette && palette->widget()->isVisible() && dockFrame()) palette->showPanel(false);
}
