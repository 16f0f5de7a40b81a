#include "layer_states/records/vp_layer_info.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"

void CKvVpLayerInfo::initVpLayerInfo(HxDbLayerTableRecord* layer) {
    if (!layer) return;
    const HxDbObjectId viewport = layer->database() ? hxdbGetCurVportId(layer->database()) : HxDbObjectId();
    bool isOverride = false;
    m_color = layer->color(viewport, isOverride);
    const HxDbObjectPointer<HxDbLinetypeTableRecord> linetype(layer->linetypeObjectId(viewport, isOverride),
                                                              HxDb::kForRead);
    m_linetype = linetype ? linetype->name() : L"";
    m_lineweight = layer->lineWeight(viewport, isOverride);
    m_plotStyle = layer->plotStyleName(viewport, isOverride);
    m_transparency = layer->transparency(viewport, isOverride);
}
