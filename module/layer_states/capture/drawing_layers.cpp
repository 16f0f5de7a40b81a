#include "layer_states/capture/drawing_layers.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"
#include "hxtext.h"
#include "model/visit_records.h"

#include <algorithm>

void readLayerEntry(HxLyStateEntry& entry, const HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    static const CStdStr<wchar_t> kNormal = hxdbGetReservedString(kHxReservedNormal, false);
    static const CStdStr<wchar_t> kLocalNormal = hxdbGetReservedString(kHxReservedNormal, true);
    hxlyEntryOfLayer(entry, layer, viewport);
    if (hxutEqualNames(entry.plotStyle.c_str(), kNormal.c_str())) entry.plotStyle = kLocalNormal;
}

KvDrawingLayers::KvDrawingLayers(const HxDbDatabase* database, HxDbObjectId viewport) {
    if (!database) return;
    visitRecords(database->layerTableId(), [&](HxDbObjectId id) { read(id, viewport); });
    const auto isBefore = [](const Layer& a, const Layer& b) { return a.own.layer < b.own.layer; };
    if (!std::is_sorted(m_layers.begin(), m_layers.end(), isBefore)) {
        std::sort(m_layers.begin(), m_layers.end(), isBefore);
    }
    for (std::size_t i = 0; i < m_layers.size(); ++i) {
        m_layers[i].following = i + 1;
    }
}

void KvDrawingLayers::read(HxDbObjectId id, HxDbObjectId viewport) {
    const OpenedOrHeld<HxDbLayerTableRecord> record(id, HxDb::kForRead);
    if (!record) return;
    Layer layer;
    readLayerEntry(layer.own, *record.object(), {});
    if (!viewport.isNull()) {
        auto shown = std::make_unique<HxLyStateEntry>();
        readLayerEntry(*shown, *record.object(), viewport);
        layer.own.flags |= shown->flags & HxLyState::kLayerCurrentViewportFrozen;
        if (hxlyDifferences(layer.own, *shown, HxLyState::kAllProperties) != 0) {
            layer.inViewport = std::move(shown);
        }
    }
    m_layers.push_back(std::move(layer));
}

const KvDrawingLayers::Layer* KvDrawingLayers::find(const CStdStr<wchar_t>& name) {
    if (m_last < m_layers.size()) {
        const std::size_t expected = m_layers[m_last].following;
        if (expected < m_layers.size() && m_layers[expected].own.layer == name) {
            m_last = expected;
            return &m_layers[expected];
        }
    }
    if (m_byName.empty()) {
        for (std::size_t i = 0; i < m_layers.size(); ++i) {
            m_byName.emplace(hxutFoldName(m_layers[i].own.layer.c_str()), i);
        }
    }
    const auto found = m_byName.find(hxutFoldName(name.c_str()));
    if (found == m_byName.end()) return nullptr;
    if (m_last < m_layers.size()) m_layers[m_last].following = found->second;
    m_last = found->second;
    return &m_layers[m_last];
}
