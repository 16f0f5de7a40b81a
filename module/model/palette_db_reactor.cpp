// Follows what comes to and goes from drawings for the layer palette.
#include "palette_db_reactor.h"

#include "layer_doc_context.h"
#include "visible_palette.h"

#include "hxdbdict.h"
#include "hxdbentity.h"

namespace {

/// One of the two in the layer table's extension dictionary that keep layer filters; layer states lie beside
/// them. One whose entry has gone already counts.
bool isFilterDictionary(const HxDbDatabase& database, const HxDbObject* object) {
    const auto* const owner =
        HxDbDictionary::cast(HxDbDictionary::cast(object) ? hxdbObjectPointer(object->ownerId()) : nullptr);
    if (!owner || owner->ownerId() != database.layerTableId()) return false;
    CStdStr<wchar_t> name;
    return owner->nameAt(object->objectId(), name) != Hx::eOk ||
           name.CompareNoCase(L"ACAD_LAYERFILTERS") == 0 || name.CompareNoCase(L"ACLYDICTIONARY") == 0;
}

/// Entities use layers; new layers are taken to be in use until that is found out.
void markUsage(const HxDbObject* object) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (palette && (HxDbEntity::cast(object) || HxDbLayerTableRecord::cast(object))) palette->SetDirtyUsage();
}

}  // namespace

void KvLayerPaletteDbReactor::objectAppended(const HxDbDatabase* database, const HxDbObject* object) {
    if (!m_context || !database || !object) return;
    markUsage(object);
    const bool isLayer = HxDbLayerTableRecord::cast(object) != nullptr;
    if (!isLayer && !HxDbViewport::cast(object)) return;
    m_context->GetLayerPaletteObjectReactor()->follow(object);
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (isLayer && palette) palette->SetDirtyNeedRefreshListItem(object->objectId());
}

void KvLayerPaletteDbReactor::objectUnAppended(const HxDbDatabase* database, const HxDbObject* object) {
    if (!m_context || !database || !object) return;
    markUsage(object);
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (isFilterDictionary(*database, object)) {
        m_context->GetLayerPaletteObjectReactor()->leave(object);
        if (palette) palette->SetDirtyNeedRefreshFilter();
    } else if (const auto* const layer = HxDbLayerTableRecord::cast(object)) {
        m_context->GetLayerPaletteObjectReactor()->leave(object);
        if (!palette) return;
        palette->SetDirtyNeedRefreshListItem(object->objectId());
        palette->setLayerDataValid(layer, false);
    }
}

void KvLayerPaletteDbReactor::objectReAppended(const HxDbDatabase* database, const HxDbObject* object) {
    if (!m_context || !database || !object) return;
    markUsage(object);
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (isFilterDictionary(*database, object)) {
        m_context->GetLayerPaletteObjectReactor()->follow(object);
        if (palette) palette->SetDirtyNeedRefreshFilter();
    } else if (const auto* const layer = HxDbLayerTableRecord::cast(object)) {
        m_context->GetLayerPaletteObjectReactor()->follow(object);
        if (!palette) return;
        palette->SetDirtyNeedRefreshListItem(object->objectId());
        palette->setLayerDataValid(layer, true);
    }
}

void KvLayerPaletteDbReactor::objectModified(const HxDbDatabase* database, const HxDbObject* object) {
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (!palette || !database || !object) return;
    if (HxDbEntity::cast(object)) palette->SetDirtyUsage();
    const HxDbObject* const holder =
        HxDbXrecord::cast(object) ? hxdbObjectPointer(object->ownerId()) : object;
    if (isFilterDictionary(*database, holder)) palette->SetDirtyNeedRefreshFilter();
}

void KvLayerPaletteDbReactor::objectErased(const HxDbDatabase* database, const HxDbObject* object,
                                           bool erased) {
    if (erased) {
        objectUnAppended(database, object);
    } else {
        objectReAppended(database, object);
    }
}
