#include "layer_states/restore/layer_restore.h"

#include "frame/util/result_buffers.h"
#include "hxdbentity.h"
#include "model/record_of_name.h"

namespace {

constexpr wchar_t kReferenceMark = L'|';

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
    : m_database(database), m_rules(database, options), m_values(database, m_rules.overridesIn()) {}

void KvLayerRestore::RestoreLayerFromLayerState(const HxLyStateEntry& entry) {
    ++m_result.layers;
    m_rules.addNamed(entry.layer);
    HxDbObjectId id = layerOfName(m_database, entry.layer);
    const bool isNew = id.isNull();
    if (isNew) id = RestoreNewLayer(entry);
    if (id.isNull()) {
        m_result.refused.append(entry.layer);
        return;
    }
    if (isNew) ++m_result.made;
    const std::int32_t wanted = m_rules.changesWanted(id, entry, isNew);
    if (wanted != 0 && !change(id, entry, wanted)) m_result.refused.append(entry.layer);
    if (wanted != 0 || isNew) ++m_result.changed;
    if (const std::optional<bool> freezes = m_rules.freezingWanted(id, entry)) {
        (*freezes ? m_toFreeze : m_toThaw).append(id);
    }
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

void KvLayerRestore::ProcessVpLayerFreezeLayer() {
    if (m_toFreeze.isEmpty() && m_toThaw.isEmpty()) return;
    if (freezeAndThaw(m_rules.viewport(), m_toFreeze, m_toThaw)) return;
    HxDbObjectId layer;
    {
        const OpenedOrHeld<HxDbViewport> viewport(m_rules.viewport(), HxDb::kForRead);
        if (viewport) layer = viewport->layerId();
    }
    const UnlockedLayer unlocked(layer);
    if (unlocked.wasLocked() && freezeAndThaw(m_rules.viewport(), m_toFreeze, m_toThaw)) return;
    for (const HxArray<HxDbObjectId>* const ids : {&m_toFreeze, &m_toThaw}) {
        for (const HxDbObjectId id : *ids) {
            const OpenedOrHeld<HxDbLayerTableRecord> refused(id, HxDb::kForRead);
            if (refused) m_result.refused.append(refused->name());
        }
    }
}

void KvLayerRestore::TurnoffLayerOfNotFoundInLayerState() {
    HxLyStateEntry off;
    off.flags = HxLyState::kLayerOff;
    m_rules.visitOthersToTurnOff([&](HxDbObjectId id, const CStdStr<wchar_t>& name) {
        off.layer = name;
        if (!change(id, off, HxLyState::kOn)) m_result.refused.append(name);
    });
}
