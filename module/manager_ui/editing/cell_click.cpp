// What a click on a cell of the layer grid does.
#include "cell_click.h"

#include "layer_change.h"
#include "viewport_overrides.h"

#include "dialogs/lineweight_dialog.h"
#include "dialogs/plot_style_dialog.h"
#include "dialogs/transparency_dialog.h"
#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "manager_ui/grid/layer_cells.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/auto_layer_record.h"
#include "model/edit_guard.h"
#include "model/layer_prop_manager.h"

#include "hxdbentity.h"
#include "hxed.h"
#include "hxstddlg.h"

#include <memory>

KvCellClick::KvCellClick(KvLayerListCtrl& grid, HxDbObjectId clicked, int column)
    : m_grid(grid), m_clicked(clicked), m_column(column), m_layers(grid.selectedIds()) {
    const ModuleResources resources;
    const QString header = grid.model()->headerData(column, Qt::Horizontal).toString();
    m_name = formatMessage(resourceText(kStrUndoEdit), {header});
    if (isOfViewport()) m_viewport = activeViewport(grid.GetDatabase());
}

void KvCellClick::run() {
    switch (m_column) {
    case kColOn: return toggleOn();
    case kColFreeze: return toggleFrozen();
    case kColLock:
        return toggle(&HxDbLayerTableRecord::isLocked,
                      [](HxDbLayerTableRecord& layer, bool locked) { layer.setIsLocked(locked); });
    case kColPlot:
        return toggle(&HxDbLayerTableRecord::isPlottable,
                      [](HxDbLayerTableRecord& layer, bool plots) { layer.setIsPlottable(plots); });
    case kColNewVpFreeze:
        return toggle(&HxDbLayerTableRecord::VPDFLT,
                      [](HxDbLayerTableRecord& layer, bool frozen) { layer.setVPDFLT(frozen); });
    case kColVpFreeze: return toggleFrozenInViewport();
    default: break;
    }
    if (isOfViewport() && !hasViewport()) return;
    switch (m_column) {
    case kColColor:
    case kColVpColor: return pickColor();
    case kColLinetype:
    case kColVpLinetype: return pickLinetype();
    case kColLineweight:
    case kColVpLineweight: return pickLineweight();
    case kColTransparency:
    case kColVpTransparency: return pickTransparency();
    case kColPlotStyle:
    case kColVpPlotStyle: return pickPlotStyle();
    default: break;
    }
}

// ---- reading and writing ----

bool KvCellClick::isOfViewport() const { return m_column >= kColVpFreeze; }

bool KvCellClick::overridesByCommand() const { return isOfViewport() && m_grid.manager()->isPaletteMode(); }

bool KvCellClick::read(const Read& reader) const {
    const KvAutoLayerRecordPtr record(m_grid.transactions(), m_grid.manager()->FindLayer(m_clicked), true);
    if (!record.object()) return false;
    reader(*record.object());
    return true;
}

void KvCellClick::change(const Change& change) { changeLayers(m_grid, m_layers, m_name, change); }

/// All get what the clicked layer is not.
void KvCellClick::toggle(bool (HxDbLayerTableRecord::*is)() const,
                         const std::function<void(HxDbLayerTableRecord&, bool)>& set) {
    bool wanted = false;
    if (!read([&](const HxDbLayerTableRecord& layer) { wanted = !(layer.*is)(); })) return;
    change([&](HxDbLayerTableRecord& layer) {
        if ((layer.*is)() != wanted) set(layer, wanted);
    });
}

// ---- on and off, frozen and thawed ----

void KvCellClick::toggleOn() {
    bool off = false;
    if (!read([&](const HxDbLayerTableRecord& layer) { off = !layer.isOff(); })) return;
    if (off) askAboutCurrent(m_grid, m_layers);
    change([off](HxDbLayerTableRecord& layer) {
        if (layer.isOff() != off) layer.setIsOff(off);
    });
    if (off) dropPickFirst();
}

void KvCellClick::toggleFrozen() {
    bool frozen = false;
    if (!read([&](const HxDbLayerTableRecord& layer) { frozen = !layer.isFrozen(); })) return;
    if (frozen) leaveCurrentThawed(m_grid, m_layers);
    change([frozen](HxDbLayerTableRecord& layer) {
        if (layer.isFrozen() != frozen) layer.setIsFrozen(frozen);
    });
    if (frozen) dropPickFirst();
}

void KvCellClick::toggleFrozenInViewport() {
    if (!hasViewport() || !read([](const HxDbLayerTableRecord&) {})) return;
    bool frozen = false;
    {
        const KvLayerUndoAndLockWorker guard(m_grid.manager()->isPaletteMode(),
                                             m_name.toStdWString().c_str());
        frozen = toggleInViewport(*m_grid.manager(), m_clicked, m_layers);
    }
    m_grid.refreshLayers(m_layers);
    if (frozen) dropPickFirst();
}

// ---- pickers ----

void KvCellClick::pickColor() {
    HxCmColor color;
    bool isOverride = false;
    if (!read([&](const HxDbLayerTableRecord& layer) {
            color = isOfViewport() ? layer.color(m_viewport, isOverride) : layer.color();
        }))
        return;
    const HxCmColor before = color;
    if (!hxedSetColorDialogTrueColor(color, false, before, &m_grid)) return;
    if (overridesByCommand()) {
        sendViewportCommand(colorOverrideCommand(color, layerNames(m_grid, m_layers)));
    } else {
        change([&](HxDbLayerTableRecord& layer) {
            isOfViewport() ? layer.setColor(color, m_viewport) : layer.setColor(color);
        });
    }
}

void KvCellClick::pickLinetype() {
    HxDbObjectId linetype;
    bool isOverride = false;
    if (!read([&](const HxDbLayerTableRecord& layer) {
            linetype =
                isOfViewport() ? layer.linetypeObjectId(m_viewport, isOverride) : layer.linetypeObjectId();
        }))
        return;
    if (!hxuiSelectLinetype(m_grid.GetDatabase(), linetype, false, &m_grid)) return;
    if (overridesByCommand()) {
        sendViewportCommand(linetypeOverrideCommand(linetype, layerNames(m_grid, m_layers)));
    } else {
        change([&](HxDbLayerTableRecord& layer) {
            isOfViewport() ? layer.setLinetypeObjectId(linetype, m_viewport)
                           : layer.setLinetypeObjectId(linetype);
        });
    }
}

void KvCellClick::pickLineweight() {
    HxDb::LineWeight weight = HxDb::kLnWtByLwDefault;
    bool isOverride = false;
    if (!read([&](const HxDbLayerTableRecord& layer) {
            weight = isOfViewport() ? layer.lineWeight(m_viewport, isOverride) : layer.lineWeight();
        }))
        return;
    const ModuleResources resources;
    CWnd parent(&m_grid);
    CVrexLWListDia dialog(weight, &parent);
    if (dialog.DoModal() != IDOK) return;
    weight = static_cast<HxDb::LineWeight>(dialog.lineweight());
    if (overridesByCommand()) {
        sendViewportCommand(lineweightOverrideCommand(weight, layerNames(m_grid, m_layers)));
    } else {
        change([&](HxDbLayerTableRecord& layer) {
            isOfViewport() ? layer.setLineWeight(weight, m_viewport) : layer.setLineWeight(weight);
        });
    }
}

/// No command sets it for a viewport from here: it is set on the records also in the palette.
void KvCellClick::pickTransparency() {
    HxCmTransparency transparency;
    bool isOverride = false;
    if (!read([&](const HxDbLayerTableRecord& layer) {
            transparency = isOfViewport() ? layer.transparency(m_viewport, isOverride) : layer.transparency();
        }))
        return;
    const ModuleResources resources;
    CWnd parent(&m_grid);
    CLayerTransDlg dialog(static_cast<int>(transparencyPercent(transparency)), &parent);
    if (dialog.DoModal() != IDOK) return;
    transparency.setAlpha(alphaOfPercent(dialog.percent()));
    change([&](HxDbLayerTableRecord& layer) {
        isOfViewport() ? layer.setTransparency(transparency, m_viewport)
                       : layer.setTransparency(transparency);
    });
}

void KvCellClick::pickPlotStyle() {
    if (m_grid.GetDatabase()->plotStyleMode()) return;  // they follow the colours
    CStdStr<wchar_t> style;
    bool isOverride = false;
    if (!read([&](const HxDbLayerTableRecord& layer) {
            style = isOfViewport() ? layer.plotStyleName(m_viewport, isOverride) : layer.plotStyleName();
        }))
        return;
    wchar_t* chosen = nullptr;
    if (!kvPlotstyleDialog(style.c_str(), false, chosen)) return;
    const std::unique_ptr<wchar_t[]> owner(chosen);
    if (overridesByCommand()) {
        sendViewportCommand(plotStyleOverrideCommand(chosen, layerNames(m_grid, m_layers)));
    } else {
        const HxDbObjectId id = plotStyleId(m_grid.GetDatabase(), chosen);
        change([&](HxDbLayerTableRecord& layer) {
            isOfViewport() ? layer.setPlotStyleName(id, m_viewport) : layer.setPlotStyleName(chosen);
        });
    }
}
