// The layers of a drawing as a state would have them.
#pragma once

#include "hxlystate.h"

#include <memory>
#include <unordered_map>
#include <vector>

/// A layer as a state would have it: its own values or, with a viewport, those in effect there. The plot
/// style "Normal" has its name of the user's language.
void readLayerEntry(HxLyStateEntry& entry, const HxDbLayerTableRecord& layer, HxDbObjectId viewport);

/// Reads the layers when it is made, in the order of their names; what happens to them afterwards it does not
/// know.
class KvDrawingLayers {
public:
    struct Layer {
        HxLyStateEntry own;                          ///< its own values, and whether the viewport freezes it
        std::unique_ptr<HxLyStateEntry> inViewport;  ///< null when the viewport overrides nothing
        std::size_t following = 0;                   ///< which layer came next when it was looked up last
    };

    /// With a viewport also the values in effect there. Null: no layers.
    explicit KvDrawingLayers(const HxDbDatabase* database, HxDbObjectId viewport = {});

    std::size_t size() const { return m_layers.size(); }
    Layer& at(std::size_t position) { return m_layers[position]; }
    /// The layer of a name, as the host compares names; null when there is none. Cheap for names that come in
    /// the order of those before.
    const Layer* find(const CStdStr<wchar_t>& name);

private:
    void read(HxDbObjectId id, HxDbObjectId viewport);

    std::vector<Layer> m_layers;
    std::unordered_map<std::wstring, std::size_t> m_byName;  ///< by folded name, made when first needed
    std::size_t m_last = 0;                                  ///< place behind which the next is looked for
};
