// Restoring a layer state: layers get what it says, each opened once and only where something differs.
#include "host/db/kernel/entity_access.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/states/layer_state_manager.h"
#include "sdk/hxdbentity.h"

#include <unordered_set>

namespace korvex {

namespace {

constexpr std::int32_t kAppearance = HxLyState::kColor | HxLyState::kLinetype | HxLyState::kLineweight |
                                     HxLyState::kPlotStyle | HxLyState::kTransparency;

/// Null when the drawing lacks it.
HxDbStub* plotStyleOf(const HxDbDatabase& database, const std::wstring& name) {
    return dictionaryEntry(database.getPlotStyleNameDictionaryId().stub(), name);
}

/// Sets properties of one layer that is open for write and remembers whether one was refused.
class LayerChange {
public:
    LayerChange(HxDbLayerTableRecord& layer, const HxLyStateEntry& entry) : m_layer(layer), m_entry(entry) {}

    void setFlags(std::int32_t properties) {
        if (properties & HxLyState::kOn) {
            m_layer.setIsOff(has(HxLyState::kLayerOff));
        }
        if (properties & HxLyState::kFrozen) {
            note(m_layer.setIsFrozen(has(HxLyState::kLayerFrozen)));
        }
        if (properties & HxLyState::kLocked) {
            m_layer.setIsLocked(has(HxLyState::kLayerLocked));
        }
        if (properties & HxLyState::kPlot) {
            note(m_layer.setIsPlottable(has(HxLyState::kLayerPlots)));
        }
        if (properties & HxLyState::kNewViewportFrozen) {
            m_layer.setVPDFLT(has(HxLyState::kLayerNewViewportFrozen));
        }
    }
    /// In a viewport, or the layer's own for the null id.
    void setAppearance(std::int32_t properties, HxDbObjectId viewport) {
        if (properties & HxLyState::kColor) {
            note(m_layer.setColor(colorOf(m_entry), viewport));
        }
        if (properties & HxLyState::kLinetype) {
            HxDbStub* linetype = findRecord(*m_layer.database(), TableKind::linetype, m_entry.linetype);
            note(m_layer.setLinetypeObjectId(HxDbObjectId(linetype), viewport));
        }
        if (properties & HxLyState::kLineweight) {
            note(m_layer.setLineWeight(static_cast<HxDb::LineWeight>(m_entry.lineweight), viewport));
        }
        if (properties & HxLyState::kTransparency) {
            const HxCmTransparency transparency(static_cast<std::uint8_t>(m_entry.transparency));
            note(m_layer.setTransparency(transparency, viewport));
        }
        if (properties & HxLyState::kPlotStyle) {
            HxDbStub* style = plotStyleOf(*m_layer.database(), m_entry.plotStyle);
            note(m_layer.setPlotStyleName(HxDbObjectId(style), viewport));
        }
    }
    bool isRefused() const { return m_refused; }

private:
    bool has(std::int32_t flag) const { return (m_entry.flags & flag) != 0; }
    void note(Hx::ErrorStatus status) { m_refused = m_refused || status != Hx::eOk; }

    HxDbLayerTableRecord& m_layer;
    const HxLyStateEntry& m_entry;
    bool m_refused = false;
};

/// One restore of one state.
class Restore {
public:
    Restore(HxDbDatabase& database, HxDbStub* viewport, int flags, std::int32_t mask,
            HxArray<CStdStr<wchar_t>>* refused)
        : m_database(database), m_viewport(viewport), m_flags(flags), m_mask(mask), m_refused(refused) {}

    void layer(HxLyStateEntry& entry);
    void layersOfNoEntry();
    Hx::ErrorStatus viewportFreezing() const;

private:
    bool wants(HxDbLayerStateManager::RestoreFlag flag) const { return (m_flags & flag) != 0; }
    bool changesOthers() const {
        return wants(HxDbLayerStateManager::kUndefinedLayersOff) ||
               wants(HxDbLayerStateManager::kUndefinedLayersFrozen);
    }
    bool isCurrent(const HxDbStub& layer) const { return m_database.clayer().stub() == &layer; }
    std::int32_t differences(const HxLyStateEntry& entry) const;
    std::int32_t possible(const HxLyStateEntry& entry, const HxDbStub& layer, std::int32_t properties) const;
    void refuse(const HxDbStub& layer) const {
        if (m_refused) {
            m_refused->append(recordName(const_cast<HxDbStub&>(layer)));
        }
    }

    HxDbDatabase& m_database;
    HxDbStub* m_viewport;
    int m_flags;
    std::int32_t m_mask;
    HxArray<CStdStr<wchar_t>>* m_refused;
    HxLyStateEntry m_now;
    std::unordered_set<const HxDbStub*> m_named;
    HxArray<HxDbObjectId> m_toFreeze;
    HxArray<HxDbObjectId> m_toThaw;
};

/// Without what the drawing has no place or no record for.
std::int32_t Restore::possible(const HxLyStateEntry& entry, const HxDbStub& layer,
                               std::int32_t properties) const {
    if (isCurrent(layer) && (entry.flags & HxLyState::kLayerFrozen)) {
        properties &= ~HxLyState::kFrozen;
    }
    if ((properties & HxLyState::kLinetype) && !findRecord(m_database, TableKind::linetype, entry.linetype)) {
        properties &= ~HxLyState::kLinetype;
    }
    if ((properties & HxLyState::kPlotStyle) && !plotStyleOf(m_database, entry.plotStyle)) {
        properties &= ~HxLyState::kPlotStyle;
    }
    return properties;
}

/// From what the layer is now. A book colour is brought back also where its value is there.
std::int32_t Restore::differences(const HxLyStateEntry& entry) const {
    const std::int32_t mask = m_mask & ~HxLyState::kCurrentViewportFrozen;
    const bool lacksBook = !entry.colorBook.empty() && m_now.colorBook.empty();
    return hxlyDifferences(entry, m_now, mask) | (lacksBook ? mask & HxLyState::kColor : 0);
}

void Restore::layer(HxLyStateEntry& entry) {
    HxDbStub* stub = findRecord(m_database, TableKind::layer, entry.layer);
    const auto* present = stub ? HxDbLayerTableRecord::cast(materialise(*stub)) : nullptr;
    if (!present) {
        return;
    }
    if (changesOthers()) {
        m_named.insert(stub);
    }
    makeAttainable(entry);
    if (m_mask & HxLyState::kCurrentViewportFrozen) {
        const bool freezes = (entry.flags & HxLyState::kLayerCurrentViewportFrozen) != 0;
        (freezes ? m_toFreeze : m_toThaw).append(HxDbObjectId(stub));
    }
    const bool overrides = m_viewport && wants(HxDbLayerStateManager::kPropertiesAsViewportOverrides);
    const HxDbObjectId place(overrides ? m_viewport : nullptr);
    hxlyEntryOfLayer(m_now, *present, place);
    const std::int32_t differing = possible(entry, *stub, differences(entry));
    if (differing == 0) {
        return;
    }
    const StateWriteAccess open(*stub);
    auto* record = HxDbLayerTableRecord::cast(open.object());
    if (!record) {
        refuse(*stub);
        return;
    }
    LayerChange change(*record, entry);
    change.setFlags(differing);
    change.setAppearance(differing & kAppearance, place);
    if (change.isRefused()) {
        refuse(*stub);
    }
}

void Restore::layersOfNoEntry() {
    if (!changesOthers()) {
        return;
    }
    const bool off = wants(HxDbLayerStateManager::kUndefinedLayersOff);
    const bool freezes = wants(HxDbLayerStateManager::kUndefinedLayersFrozen);
    for (HxDbStub* stub : members(*m_database.layerTableId().stub())) {
        const bool isNamed = stub->erased || m_named.count(stub) != 0;
        const LayerVisibility now = isNamed ? LayerVisibility() : layerVisibility(*stub);
        const bool turnsOff = !isNamed && off && !now.off;
        const bool freezesIt = !isNamed && freezes && !now.frozen && !isCurrent(*stub);
        if (!turnsOff && !freezesIt) {
            continue;
        }
        const StateWriteAccess open(*stub);
        auto* record = HxDbLayerTableRecord::cast(open.object());
        if (record && turnsOff) {
            record->setIsOff(true);
        }
        if (!record || (freezesIt && record->setIsFrozen(true) != Hx::eOk)) {
            refuse(*stub);
        }
    }
}

Hx::ErrorStatus Restore::viewportFreezing() const {
    if (m_toFreeze.isEmpty() && m_toThaw.isEmpty()) {
        return Hx::eOk;
    }
    const StateWriteAccess open(*m_viewport);
    auto* viewport = HxDbViewport::cast(open.object());
    if (!viewport) {
        return open.status();
    }
    const Hx::ErrorStatus status = viewport->thawLayersInViewport(m_toThaw);
    return status == Hx::eOk ? viewport->freezeLayersInViewport(m_toFreeze) : status;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

Hx::ErrorStatus HxDbLayerStateManager::restoreLayerState(const wchar_t* name, HxDbObjectId viewport,
                                                         int restoreFlags, const std::int32_t* mask,
                                                         HxArray<CStdStr<wchar_t>>* refused) {
    const HxDbStub* record = layerStateRecord(*m_database, name);
    if (!record) {
        return Hx::eKeyNotFound;
    }
    HxLyStateReader reader(layerStateId(name));
    HxDbStub* place = viewportOf(*m_database, viewport);
    const std::int32_t wanted = (mask ? *mask : reader.header().mask) &
                                comparableProperties(*m_database, reader.header(), place != nullptr);
    Restore restore(*m_database, place, restoreFlags, wanted, refused);
    HxLyStateEntry entry;
    while (reader.next(entry)) {
        restore.layer(entry);
    }
    restore.layersOfNoEntry();
    return restore.viewportFreezing();
}
