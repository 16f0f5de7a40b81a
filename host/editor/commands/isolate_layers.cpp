// Shows some layers and hides or locks all others.
#include "host/editor/commands/isolate_layers.h"

#include "host/db/kernel/entity_access.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <memory>
#include <unordered_set>

namespace korvex {

namespace {

using Ids = std::vector<HxDbObjectId>;

class Isolator {
public:
    Isolator(HxDbDatabase& database, const IsolatedLayers& kept, HxDbObjectId viewport)
        : m_database(database), m_kept(kept), m_viewport(viewport),
          m_stay(kept.layers.begin(), kept.layers.end()) {}

    IsolationCounts run(OtherLayers others) {
        show();
        chooseCurrent();
        switch (others) {
        case OtherLayers::off: changeOthers(&LayerVisibility::off, &HxDbLayerTableRecord::setIsOff); break;
        case OtherLayers::lock:
            changeOthers(&LayerVisibility::locked, &HxDbLayerTableRecord::setIsLocked);
            break;
        case OtherLayers::viewportFreeze: freezeOthers(); break;
        }
        return m_counts;
    }

private:
    void failed(HxDbObjectId id, Hx::ErrorStatus status) {
        ++m_counts.failed;
        if (m_counts.unchanged.empty()) {
            m_counts.unchanged = layerName(id);
            m_counts.because = because(status);
        }
    }

    void show() {
        for (const HxDbObjectId& id : m_kept.layers) {
            const LayerVisibility now = layerVisibility(*id.stub());
            if (!now.off && !now.frozen) {
                continue;
            }
            const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
            Hx::ErrorStatus status = layer.openStatus();
            if (layer) {
                layer->setIsOff(false);
                status = layer->setIsFrozen(false);
            }
            if (status != Hx::eOk) {
                failed(id, status);
            }
        }
    }

    void chooseCurrent() {
        const HxDbObjectId current = m_database.clayer();
        const auto becomesCurrent = [&](HxDbObjectId id) { return m_database.setClayer(id) == Hx::eOk; };
        if (m_stay.count(current) == 0 &&
            std::none_of(m_kept.layers.begin(), m_kept.layers.end(), becomesCurrent)) {
            m_stay.insert(current);
            m_counts.stayedCurrent = layerName(current);
        }
    }

    /// Calls use(id) for each layer that does not stay.
    template <class Use>
    void forEachOther(Use&& use) {
        const HxDbObjectPointer<HxDbLayerTable> table(m_database.layerTableId(), HxDb::kForRead);
        HxDbSymbolTableIterator* steps = nullptr;
        if (!table || table->newIterator(steps) != Hx::eOk) {
            return;
        }
        const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
        for (; !steps->done(); steps->step()) {
            const HxDbObjectId id = steps->getRecordId();
            if (m_stay.count(id) == 0) {
                use(id);
            }
        }
    }

    void changeOthers(bool LayerVisibility::*isSo, void (HxDbLayerTableRecord::*change)(bool)) {
        forEachOther([&](HxDbObjectId id) {
            if (layerVisibility(*id.stub()).*isSo) {
                ++m_counts.already;
                return;
            }
            const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
            if (layer) {
                (layer.object()->*change)(true);
                ++m_counts.changed;
            } else {
                failed(id, layer.openStatus());
            }
        });
    }

    void freezeOthers() {
        m_stay.insert(m_kept.around.begin(), m_kept.around.end());
        const std::vector<HxDbStub*> before = layersFrozenIn(*m_viewport.stub());
        const auto wasFrozen = [&](HxDbObjectId id) {
            return std::binary_search(before.begin(), before.end(), id.stub());
        };
        HxArray<HxDbObjectId> freeze;
        forEachOther([&](HxDbObjectId id) {
            if (wasFrozen(id)) {
                ++m_counts.already;
            } else {
                freeze.append(id);
            }
        });
        HxArray<HxDbObjectId> thaw;
        std::for_each(m_stay.begin(), m_stay.end(), [&](HxDbObjectId id) { thaw.append(id); });
        const HxDbObjectPointer<HxDbViewport> viewport(m_viewport, HxDb::kForWrite);
        Hx::ErrorStatus status = viewport.openStatus();
        if (viewport) {
            status = viewport->thawLayersInViewport(thaw);
            status = status == Hx::eOk ? viewport->freezeLayersInViewport(freeze) : status;
        }
        if (status == Hx::eOk) {
            m_counts.changed = static_cast<std::size_t>(freeze.length());
        } else if (!freeze.isEmpty()) {
            failed(freeze[0], status);
        }
    }

    HxDbDatabase& m_database;
    const IsolatedLayers& m_kept;
    HxDbObjectId m_viewport;
    std::unordered_set<HxDbObjectId> m_stay;
    IsolationCounts m_counts;
};

}  // namespace

IsolationCounts isolate(HxDbDatabase& database, const IsolatedLayers& kept, OtherLayers others,
                        HxDbObjectId viewport) {
    return Isolator(database, kept, viewport).run(others);
}

}  // namespace korvex
