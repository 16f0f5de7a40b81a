// How an entity within blocks is placed, and which layer decides whether it is seen.
#pragma once

#include "host/db/kernel/entity_access.h"
#include "host/editor/pick/assumed_layers.h"
#include "sdk/hxge.h"

#include <unordered_map>

namespace korvex {

/// One level of blocks on the way down to an entity; the outermost is the space itself. Levels lie on the
/// stack of the search and point outwards.
struct Nesting {
    const Nesting* outer = nullptr;
    HxDbStub* contents = nullptr;   ///< the block record whose members are looked at
    HxDbStub* reference = nullptr;  ///< what draws it; null for the space
    HxDbStub* layer = nullptr;      ///< the reference's layer, which entities on layer "0" take
    HxDbStub* external = nullptr;   ///< the block record of an external reference; null for others
    bool isOneObject = false;       ///< what is in it counts as the reference itself (dimensions)
    HxGeMatrix3d toSpace;           ///< from the coordinates of the contents
    int depth = 0;

    /// A block within itself would never end.
    bool holds(const HxDbStub& block) const {
        for (const Nesting* level = this; level; level = level->outer) {
            if (level->contents == &block) {
                return true;
            }
        }
        return false;
    }
};

/// The rules by which layers show and hide what is on them, for one viewport or none.
class LayerRules {
public:
    /// A null viewport freezes nothing. `assumed` outlives the rules.
    explicit LayerRules(HxDbStub* viewport = nullptr, const AssumedLayers& assumed = AssumedLayers::none());

    /// The layer that decides about an entity, in the drawing of the space: on layer "0" within a block that
    /// of the reference, from an external reference the one that stands for it. A layer that the drawing does
    /// not have stays that of the external reference. Null in a drawing without layers.
    HxDbStub* layerOf(HxDbStub& entity, const Nesting& within);
    /// The same for the layer that an entity names; null gives null.
    HxDbStub* layerFor(HxDbStub* named, const Nesting& within);
    /// Off or frozen.
    bool isHidden(HxDbStub* layer) { return look(layer).hidden; }
    /// In the drawing or in the viewport: hides references with all that is in them.
    bool isFrozen(HxDbStub* layer) { return look(layer).frozen; }

private:
    struct Look {
        bool isZero = false;
        bool hidden = false;
        bool frozen = false;
    };
    const Look& look(HxDbStub* layer);

    bool isFrozenInViewport(HxDbStub* layer) const;

    HxDbStub* m_viewport;
    const AssumedLayers& m_assumed;
    std::vector<HxDbStub*> m_frozen;
    std::unordered_map<HxDbStub*, Look> m_looks;
};

}  // namespace korvex
