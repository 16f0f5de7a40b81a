// The commands that show and hide the layer manager.
#include "palette_commands.h"

#include "module_state.h"
#include "palette_settings.h"
#include "resource_text.h"
#include "unavailable.h"

#include "manager_ui/palette/layer_manager_wnd.h"

#include "hxdoc.h"
#include "hxdock.h"
#include "hxed.h"
#include "hxui.h"

#include <QWidget>

namespace {

constexpr QRect kFirstPlace(0, 0, 500, 250);

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

void ClassicLayerDlgCmd() { tellUnavailable(L"CLASSICLAYER"); }

void LayerPaletteCmd(bool loadSettings) {
    const ModuleResources resources;
    auto* const frame = qobject_cast<HxUiDockFrameWindow*>(hxuiMainWindow());
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
    if (palette && palette->widget()->isVisible() && hxuiMainWindow()) palette->showPanel(false);
}
