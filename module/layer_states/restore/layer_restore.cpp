#include "layer_states/restore/layer_restore.h"

#include "frame/result_buffers.h"
#include "hxdbentity.h"
#include "hxtext.h"
#include "layer_states/capture/drawing_layers.h"
#include "model/record_of_name.h"
#include "model/visit_records.h"

namespace {

constexpr wchar_t kReferenceMark = L'|';
constexpr std::int32_t kOverridable = HxLyState::kColor | HxLyState::kLinetype | HxLyState::kLineweight |
                                      HxLyState::kTransparency | HxLyState::kPlotStyle;

/// Unlocks a layer while it lives, if it was locked.
class UnlockedLayer {
public:
    explicit UnlockedLayer(HxDbObjectId layer) : m_layer(layer), m_wasLocked(set(false)) {}
    ~UnlockedLayer() {
        if (m_wasLocked) set(true);
    }
    UnlockedLayer(const UnlockedLayer&) = delete;
    UnlockedLayer& operator=(const UnlockedLayer&) = delete;
    bool wasLocked() const { return m_wasLocked; }

private:
    /// True when the layer was changed.
    bool set(bool locked) {
        const OpenedOrHeld<HxDbLayerTableRecord> layer(m_layer, HxDb::kForWrite);
        if (!layer || layer->isLocked() == locked) return false;
        layer->setIsLocked(locked);
        return true;
    }
    HxDbObjectId m_layer;
    bool m_wasLocked;
};

/// False when the viewport cannot be opened for change.
bool freezeAndThaw(HxDbObjectId id, const HxArray<HxDbObjectId>& freeze, const HxArray<HxDbObjectId>& thaw) {
    const OpenedOrHeld<HxDbViewport> viewport(id, HxDb::kForWrite);
    if (!viewport) return false;
    if (!thaw.isEmpty()) viewport->thawLayersInViewport(thaw);
    if (!freeze.isEmpty()) viewport->freezeLayersInViewport(freeze);
    return true;
}

}  // namespace

KvLayerRestore::KvLayerRestore(HxDbDatabase& database, const KvRestoreOptions& options)
    : m_database(database), m_options(options), m_place(KvRestorePlace::of(database)),
      m_viewport(m_place.isModelSpace        ? HxDbObjectId()
                 : options.viewport.isNull() ? hxdbGetCurVportId(&database)
                                             : options.viewport),
      m_currentLayer(database.clayer()),
      m_values(database, options.asViewportOverrides ? m_viewport : HxDbObjectId()) {
    const OpenedOrHeld<HxDbViewport> viewport(m_viewport, HxDb::kForRead);
    if (!viewport) return;
    HxArray<HxDbObjectId> frozen;
    viewport->getFrozenLayers(frozen);
    m_frozenInViewport.insert(frozen.begin(), frozen.end());
}

void KvLayerRestore::RestoreLayerFromLayerState(const HxLyStateEntry& entry) {
    ++m_result.layers;
    if (m_options.turnOffOthers) m_named.insert(hxutFoldName(entry.layer.c_str()));
    HxDbObjectId id = layerOfName(m_database, entry.layer);
    const bool isNew = id.isNull();
    if (isNew) id = RestoreNewLayer(entry);
    if (id.isNull()) {
        m_result.refused.append(entry.layer);
        return;
    }
    if (isNew) ++m_result.made;
    const std::int32_t wanted = changesWanted(id, entry, isNew);
    if (wanted != 0 && !change(id, entry, wanted)) m_result.refused.append(entry.layer);
    if (wanted != 0 || isNew) ++m_result.changed;
    collectViewportFreezing(id, entry);
}

std::int32_t KvLayerRestore::changesWanted(HxDbObjectId id, const HxLyStateEntry& entry, bool isNew) {
    const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
    if (!layer) return m_options.mask;  // whoever changes it is told why it cannot be
    readLayerEntry(m_now, *layer.object(), {});
    KvRestorePlace place = m_place;
    place.isModelSpace = place.isModelSpace || isNew;
    std::int32_t wanted = wantedChanges(entry, m_now, m_options.mask, place) &
                          ~static_cast<std::int32_t>(HxLyState::kCurrentViewportFrozen);
    if (m_options.asViewportOverrides && !m_viewport.isNull()) {
        readLayerEntry(m_now, *layer.object(), m_viewport);
        wanted =
            (wanted & ~kOverridable) | (wantedChanges(entry, m_now, m_options.mask, m_place) & kOverridable);
    }
    const bool freezesCurrent = id == m_currentLayer && (entry.flags & HxLyState::kLayerFrozen) != 0;
    return freezesCurrent ? wanted & ~static_cast<std::int32_t>(HxLyState::kFrozen) : wanted;
}

bool KvLayerRestore::change(HxDbObjectId id, const HxLyStateEntry& entry, std::int32_t wanted) {
    const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
    return layer && m_values.apply(*layer.object(), entry, wanted);
}

HxDbObjectId KvLayerRestore::RestoreNewLayer(const HxLyStateEntry& entry) const {
    const bool isOfReference = entry.layer.find(kReferenceMark) != CStdStr<wchar_t>::npos;
    return isOfReference ? HxDbObjectId() : CreateNewLayer(entry.layer);
}

HxDbObjectId KvLayerRestore::CreateNewLayer(const CStdStr<wchar_t>& name) const {
    const HxDbWorkingDatabaseScope scope(&m_database);
    const ListPtr list(hxutBuildList(RTDXF0, L"LAYER", 100, L"AcDbSymbolTableRecord", 100,
                                     L"AcDbLayerTableRecord", 2, name.c_str(), 70, 0, 62, 7, 6, L"Continuous",
                                     0));
    HxDbObjectId id;
    zds_name made = {0, 0};
    if (list && hxdbEntMakeX(list.get(), made) == RTNORM) hxdbGetObjectId(id, made);
    return id;
}

void KvLayerRestore::collectViewportFreezing(HxDbObjectId id, const HxLyStateEntry& entry) {
    if (m_viewport.isNull() || (m_options.mask & HxLyState::kCurrentViewportFrozen) == 0) return;
    const bool isWanted = (entry.flags & HxLyState::kLayerCurrentViewportFrozen) != 0;
    if (isWanted == (m_frozenInViewport.count(id) != 0)) return;
    (isWanted ? m_toFreeze : m_toThaw).append(id);
}

void KvLayerRestore::ProcessVpLayerFreezeLayer() {
    if (m_toFreeze.isEmpty() && m_toThaw.isEmpty()) return;
    if (freezeAndThaw(m_viewport, m_toFreeze, m_toThaw)) return;
    HxDbObjectId layer;
    {
        const OpenedOrHeld<HxDbViewport> viewport(m_viewport, HxDb::kForRead);
        if (viewport) layer = viewport->layerId();
    }
    const UnlockedLayer unlocked(layer);
    if (unlocked.wasLocked() && freezeAndThaw(m_viewport, m_toFreeze, m_toThaw)) return;
    for (const HxArray<HxDbObjectId>* const ids : {&m_toFreeze, &m_toThaw}) {
        for (const HxDbObjectId id : *ids) {
            const OpenedOrHeld<HxDbLayerTableRecord> refused(id, HxDb::kForRead);
            if (refused) m_result.refused.append(refused->name());
        }
    }
}

void KvLayerRestore::TurnoffLayerOfNotFoundInLayerState() {
    if (!m_options.turnOffOthers) return;
    HxLyStateEntry off;
    off.flags = HxLyState::kLayerOff;
    visitRecords(m_database.layerTableId(), [&](HxDbObjectId id) {
        {
            const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
            if (!layer || layer->isOff()) return;
            off.layer = layer->name();
        }
        if (m_named.count(hxutFoldName(off.layer.c_str())) != 0) return;
        if (!change(id, off, HxLyState::kOn)) m_result.refused.append(off.layer);
    });
}
