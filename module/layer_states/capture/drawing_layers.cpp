#include "layer_states/capture/drawing_layers.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"
#include "hxtext.h"
#include "model/visit_records.h"

#include <algorithm>
#include <array>

namespace {

/// A layer for sorting: the beginning of its name lies beside it, so that most comparisons read nothing else.
struct NamedLayer {
    NamedLayer(std::wstring_view layerName, HxDbObjectId layer)
        : begin{packed(layerName, 0), packed(layerName, 8)}, name(layerName), id(layer) {}
    bool operator<(const NamedLayer& other) const {
        return begin != other.begin ? begin < other.begin : name < other.name;
    }
    /// Eight characters in their order; those beyond a byte are equal here.
    static std::uint64_t packed(std::wstring_view name, std::size_t from) {
        std::uint64_t key = 0;
        for (std::size_t i = from; i < from + 8; ++i) {
            key = key << 8U | (i < name.size() ? std::min<std::uint64_t>(name[i], 0xFF) : 0);
        }
        return key;
    }

    std::array<std::uint64_t, 2> begin;
    std::wstring_view name;
    HxDbObjectId id;
};

}  // namespace

void readLayerEntry(HxLyStateEntry& entry, const HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    static const CStdStr<wchar_t> kNormal = hxdbGetReservedString(kHxReservedNormal, false);
    static const CStdStr<wchar_t> kLocalNormal = hxdbGetReservedString(kHxReservedNormal, true);
    hxlyEntryOfLayer(entry, layer, viewport);
    if (hxutEqualNames(entry.plotStyle.c_str(), kNormal.c_str())) entry.plotStyle = kLocalNormal;
}

KvDrawingLayers::KvDrawingLayers(const HxDbDatabase* database, HxDbObjectId viewport) {
    if (!database) return;
    std::vector<NamedLayer> inOrder;
    visitRecords(database->layerTableId(), [&](HxDbObjectId id) {
        const OpenedOrHeld<HxDbLayerTableRecord> record(id, HxDb::kForRead);
        if (record) inOrder.emplace_back(record->name(), id);
    });
    if (!std::is_sorted(inOrder.begin(), inOrder.end())) std::sort(inOrder.begin(), inOrder.end());
    m_layers.reserve(inOrder.size());
    for (const NamedLayer& layer : inOrder) {  // read in this order they lie side by side in memory
        read(layer.id, viewport);
    }
}

void KvDrawingLayers::read(HxDbObjectId id, HxDbObjectId viewport) {
    const OpenedOrHeld<HxDbLayerTableRecord> record(id, HxDb::kForRead);
    if (!record) return;
    Layer& layer = m_layers.emplace_back();
    layer.following = m_layers.size();
    readLayerEntry(layer.own, *record.object(), {});
    if (viewport.isNull()) return;
    auto shown = std::make_unique<HxLyStateEntry>();
    readLayerEntry(*shown, *record.object(), viewport);
    layer.own.flags |= shown->flags & HxLyState::kLayerCurrentViewportFrozen;
    if (hxlyDifferences(layer.own, *shown, HxLyState::kAllProperties) != 0)
        layer.inViewport = std::move(shown);
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
