// Follows the layer table, its layers and the viewports for the layer palette.
#include "palette_object_reactor.h"

#include "visible_palette.h"

#include "hxdbentity.h"

namespace {

bool isLayerTable(HxDbObjectId id) {
    const HxDbDatabase* const database = id.database();
    return database && database->layerTableId() == id;
}

bool isStray(const HxDbObject* object) {
    return !HxDbLayerTable::cast(object) && !HxDbLayerTableRecord::cast(object);
}

}  // namespace

KvLayerPaletteObjectReactor::~KvLayerPaletteObjectReactor() {
    for (const HxDbObjectId& id : m_strays) {
        if (const HxDbObject* const object = hxdbObjectPointer(id)) object->removeReactor(this);
    }
}

void KvLayerPaletteObjectReactor::follow(const HxDbObject* object) {
    object->addReactor(this);
    if (isStray(object)) m_strays.insert(object->objectId());
}

void KvLayerPaletteObjectReactor::leave(const HxDbObject* object) {
    object->removeReactor(this);
    m_strays.erase(object->objectId());
}

/// Somebody changes the table: it is not to be read until it is closed.
void KvLayerPaletteObjectReactor::openedForModify(const HxDbObject* object) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (palette && isLayerTable(object->objectId())) palette->setWndEnabled(false);
}

void KvLayerPaletteObjectReactor::objectClosed(HxDbObjectId id) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (palette && isLayerTable(id)) palette->setWndEnabled(true);
}

void KvLayerPaletteObjectReactor::modified(const HxDbObject* object) {
    KvLayerPaletteMarks* const palette = layerPalette();
    if (!palette) return;
    if (HxDbViewport::cast(object)) {
        palette->SetDirtyNeedRefreshList();  // overrides may be others
    } else if (HxDbLayerTableRecord::cast(object)) {
        palette->SetDirtyNeedRefreshListItem(object->objectId());
    }
}

void KvLayerPaletteObjectReactor::goodbye(const HxDbObject* object) { m_strays.erase(object->objectId()); }
