// Making a layer that is like another one.
#include "new_layer.h"

#include "manager_ui/editing/layer_change.h"
#include "manager_ui/editing/viewport_overrides.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/auto_layer_record.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"

namespace {

void copyProperties(const HxDbLayerTableRecord& from, HxDbLayerTableRecord& to, bool namedPlotStyles) {
    to.setIsFrozen(from.isFrozen());
    to.setIsLocked(from.isLocked());
    to.setIsOff(from.isOff());
    to.setColor(from.color());
    if (namedPlotStyles) to.setPlotStyleName(from.plotStyleNameId());
    to.setLinetypeObjectId(from.linetypeObjectId());
    to.setLineWeight(from.lineWeight());
    to.setTransparency(from.transparency());
    to.setDescription(from.description().c_str());
    to.setIsPlottable(from.isPlottable());
    to.setVPDFLT(from.VPDFLT());
}

void copyOverrides(const HxDbLayerTableRecord& from, HxDbLayerTableRecord& to, HxDbObjectId viewport,
                   bool namedPlotStyles) {
    bool isOverride = false;
    const HxCmColor color = from.color(viewport, isOverride);
    if (isOverride) to.setColor(color, viewport);
    const HxDbObjectId linetype = from.linetypeObjectId(viewport, isOverride);
    if (isOverride) to.setLinetypeObjectId(linetype, viewport);
    const HxDb::LineWeight weight = from.lineWeight(viewport, isOverride);
    if (isOverride) to.setLineWeight(weight, viewport);
    const CStdStr<wchar_t> style = from.plotStyleName(viewport, isOverride);
    if (isOverride && namedPlotStyles) {
        to.setPlotStyleName(plotStyleId(from.objectId().database(), style.c_str()), viewport);
    }
    const HxCmTransparency transparency = from.transparency(viewport, isOverride);
    if (isOverride) to.setTransparency(transparency, viewport);
}

/// What the new layer is to be like; null for nothing in particular.
KvLayerData* modelLayer(KvLayerListCtrl& list) {
    const int focused = list.currentIndex().row();
    if (list.ItemIsSelected(focused)) return list.rows().layerAt(focused);
    HxArray<KvLayerData*> layers;
    HxArray<int> rows;
    list.SelectedLayers(layers, rows);
    return layers.isEmpty() ? nullptr : layers[0];
}

void freezeWhereFrozen(KvLayerPropManager& manager, HxDbObjectId from, HxDbObjectId to) {
    HxDbViewport* const viewport = manager.GetViewport();
    if (!viewport) return;
    if (viewport->isLayerFrozenInViewport(from) && viewport->upgradeOpen() == Hx::eOk) {
        HxArray<HxDbObjectId> layers;
        layers.append(to);
        viewport->freezeLayersInViewport(layers);
        viewport->downgradeOpen();
    }
    if (manager.isPaletteMode()) viewport->close();
}

}  // namespace

HxDbLayerTableRecord* makeLayerLikeSelected(KvLayerListCtrl& list) {
    KvLayerPropManager& manager = *list.manager();
    KvLayerData* const from = modelLayer(list);
    if (!manager.AddNewLayer(nullptr)) return nullptr;
    const HxArray<KvLayerData*>& all = manager.GetAllLayersRef();
    KvLayerData* const made = all[all.length() - 1];
    if (!from) return made->layerRec();  // its linetype is Continuous
    const HxDbDatabase* const database = manager.GetDatabase();
    const bool namedPlotStyles = !database->plotStyleMode();
    const HxDbObjectId viewport = activeViewport(database);
    {
        const KvAutoLayerRecordPtr source(list.transactions(), from, true);
        const KvAutoLayerRecordPtr copy(list.transactions(), made, true);
        if (!source.object() || !copy.object()) return made->layerRec();
        changeRecord(*copy.object(), [&](HxDbLayerTableRecord& layer) {
            copyProperties(*source.object(), layer, namedPlotStyles);
            if (!viewport.isNull()) copyOverrides(*source.object(), layer, viewport, namedPlotStyles);
        });
    }
    if (!viewport.isNull()) freezeWhereFrozen(manager, from->layerId(), made->layerId());
    return made->layerRec();
}
