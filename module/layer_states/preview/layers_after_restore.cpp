#include "layer_states/preview/layers_after_restore.h"

#include "layer_states/restore/layer_values.h"
#include "model/record_of_name.h"

namespace {

class AfterRestore {
public:
    AfterRestore(HxDbDatabase& database, const KvRestoreOptions& options)
        : m_database(database), m_rules(database, options), m_values(database) {}

    void add(const HxLyStateEntry& entry) {
        m_rules.addNamed(entry.layer);
        const HxDbObjectId id = layerOfName(m_database, entry.layer);
        if (id.isNull()) return;  // nothing is on a layer that the restore would make
        HxUiLayerAs as = valuesOf(entry);
        as.layer = id;
        const std::int32_t wanted = m_rules.changesWanted(id, entry, false);
        const bool overrides = !m_rules.overridesIn().isNull();
        const std::int32_t there = overrides ? KvRestoreRules::kOverridable : 0;
        const std::int32_t usable = hasColor(entry) ? wanted : wanted & ~std::int32_t{HxLyState::kColor};
        put(as, usable & ~there);
        as.viewport = m_rules.viewport();
        std::int32_t inViewport = usable & there;
        if (const std::optional<bool> freezes = m_rules.freezingWanted(id, entry)) {
            as.isFrozen = *freezes;
            inViewport |= HxLyState::kCurrentViewportFrozen;
        }
        if (!as.viewport.isNull()) put(as, inViewport);
    }
    std::vector<HxUiLayerAs> take() {
        m_rules.visitOthersToTurnOff([this](HxDbObjectId id, const CStdStr<wchar_t>& /*name*/) {
            HxUiLayerAs off;
            off.layer = id;
            off.isOff = true;
            put(off, HxLyState::kOn);
        });
        return std::move(m_layers);
    }

private:
    HxUiLayerAs valuesOf(const HxLyStateEntry& entry) {
        HxUiLayerAs as;
        as.isOff = (entry.flags & HxLyState::kLayerOff) != 0;
        as.isFrozen = (entry.flags & HxLyState::kLayerFrozen) != 0;
        as.isLocked = (entry.flags & HxLyState::kLayerLocked) != 0;
        as.color = colorOf(entry);
        as.linetype = m_values.findLinetypeFor(entry);
        if (as.linetype.isNull()) as.linetype = m_database.continuousLinetype();  // one that is made is solid
        as.lineweight = entry.lineweight;
        as.transparency = HxCmTransparency(static_cast<std::uint8_t>(entry.transparency));
        return as;
    }
    void put(HxUiLayerAs as, std::int32_t properties) {
        as.properties = properties;
        m_layers.push_back(std::move(as));
    }

    HxDbDatabase& m_database;
    KvRestoreRules m_rules;
    KvLayerStateValues m_values;
    std::vector<HxUiLayerAs> m_layers;
};

}  // namespace

bool layersAfterRestore(HxDbDatabase& database, const KvLayerStateMap& states, const CKvLayerState* state,
                        const KvRestoreOptions& options, std::vector<HxUiLayerAs>& layers) {
    layers.clear();
    if (!states.contains(state)) return false;
    bool hasEntries = false;
    AfterRestore after(database, options);
    states.visitEntries(state, [&](const HxLyStateEntry& entry) {
        after.add(entry);
        hasEntries = true;
        return true;
    });
    if (hasEntries) layers = after.take();
    return hasEntries;
}
