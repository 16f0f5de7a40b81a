#include "layer_states/restore/restore_rules.h"

#include "hxdbentity.h"
#include "hxtext.h"
#include "layer_states/capture/drawing_layers.h"
#include "model/record_of_name.h"
#include "model/visit_records.h"

KvRestoreRules::KvRestoreRules(const HxDbDatabase& database, const KvRestoreOptions& options)
    : m_database(database), m_options(options), m_place(KvRestorePlace::of(database)),
      m_viewport(m_place.isModelSpace        ? HxDbObjectId()
                 : options.viewport.isNull() ? hxdbGetCurVportId(&database)
                                             : options.viewport),
      m_currentLayer(database.clayer()) {
    const OpenedOrHeld<HxDbViewport> viewport(m_viewport, HxDb::kForRead);
    if (!viewport) return;
    HxArray<HxDbObjectId> frozen;
    viewport->getFrozenLayers(frozen);
    m_frozenInViewport.insert(frozen.begin(), frozen.end());
}

std::int32_t KvRestoreRules::changesWanted(HxDbObjectId id, const HxLyStateEntry& entry, bool isNew) {
    const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
    if (!layer) return m_options.mask;  // whoever changes it is told why it cannot be
    readLayerEntry(m_now, *layer.object(), {});
    KvRestorePlace place = m_place;
    place.isModelSpace = place.isModelSpace || isNew;
    std::int32_t wanted = wantedChanges(entry, m_now, m_options.mask, place) &
                          ~static_cast<std::int32_t>(HxLyState::kCurrentViewportFrozen);
    if (!overridesIn().isNull()) {
        readLayerEntry(m_now, *layer.object(), m_viewport);
        wanted =
            (wanted & ~kOverridable) | (wantedChanges(entry, m_now, m_options.mask, m_place) & kOverridable);
    }
    const bool freezesCurrent = id == m_currentLayer && (entry.flags & HxLyState::kLayerFrozen) != 0;
    return freezesCurrent ? wanted & ~static_cast<std::int32_t>(HxLyState::kFrozen) : wanted;
}

std::optional<bool> KvRestoreRules::freezingWanted(HxDbObjectId id, const HxLyStateEntry& entry) const {
    if (m_viewport.isNull() || (m_options.mask & HxLyState::kCurrentViewportFrozen) == 0) return {};
    const bool isWanted = (entry.flags & HxLyState::kLayerCurrentViewportFrozen) != 0;
    if (isWanted == (m_frozenInViewport.count(id) != 0)) return {};
    return isWanted;
}

void KvRestoreRules::addNamed(const CStdStr<wchar_t>& layer) {
    if (m_options.turnOffOthers) m_named.insert(hxutFoldName(layer.c_str()));
}

void KvRestoreRules::visitOthersToTurnOff(const Visitor& visit) const {
    if (!m_options.turnOffOthers) return;
    visitRecords(m_database.layerTableId(), [&](HxDbObjectId id) {
        CStdStr<wchar_t> name;
        {
            const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
            if (!layer || layer->isOff()) return;
            name = layer->name();
        }
        if (m_named.count(hxutFoldName(name.c_str())) == 0) visit(id, name);
    });
}
