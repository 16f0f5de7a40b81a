// From what an entity tells of its look to the pen that draws it: by layer, by block, overridden in a
// viewport.
#pragma once

#include "host/editor/pick/nesting.h"
#include "host/ui/render/dashes.h"
#include "host/ui/render/display_block.h"
#include "host/ui/render/scene_painter.h"

#include <deque>
#include <map>
#include <tuple>

namespace korvex {

struct LookContext;

/// What an entity is drawn with.
struct ResolvedLook {
    QRgb color = 0;  ///< faded when the layer is locked
    std::uint8_t alpha = 255;
    bool isHidden = false;                 ///< not to be drawn
    bool isFrozen = false;                 ///< neither what a reference holds
    bool isDefpoints = false;              ///< on the layer of dimensions' points, which are dots always
    std::int16_t lineweight = 0;           ///< hundredths of a millimetre
    float linetypeScale = 1;               ///< of the entity alone
    const DashPattern* pattern = nullptr;  ///< null: solid
    HxDbStub* layer = nullptr;             ///< what parts of a block inherit, besides the above:
    HxDbStub* linetype = nullptr;          ///< null for solid
    QRgb inherited = 0;                    ///< the colour, not faded
    LookContext* inner = nullptr;          ///< made when it is first asked for
};

/// The looks of one block in one context.
struct LookTable {
    std::deque<ResolvedLook> looks;  ///< those stay where they are
    std::vector<bool> isKnown;
    /// What stands for the block when it is smaller than a pixel: null when nothing is seen of it.
    const ResolvedLook* token = nullptr;
    bool hasToken = false;
};

/// What the surroundings of a block decide: its reference's layer, colour and so on.
struct LookContext {
    Nesting nesting;
    QRgb color = 0;
    HxDbStub* linetype = nullptr;
    std::int16_t lineweight = 0;
    std::uint8_t alpha = 255;
    std::unordered_map<const DisplayBlock*, LookTable> tables;
};

/// The looks in one space, seen through one viewport or none, in one paint. Every layer is looked up once.
class LookRules {
public:
    /// `onPaper`: colours are those of paper. `assumed` outlives the rules.
    LookRules(const SceneStyle& style, bool onPaper, HxDbObjectId viewport,
              const AssumedLayers& assumed = AssumedLayers::none());

    LookContext& root() { return m_root; }
    /// Inside of a reference of this look. `external`: the block record of an external reference, or null.
    LookContext& inside(LookContext& outer, const ResolvedLook& look, HxDbStub* external);
    /// The looks of a block in a context; stays where it is.
    LookTable& table(LookContext& context, const DisplayBlock& block);
    const ResolvedLook& look(LookContext& context, LookTable& table, const DisplayBlock& block,
                             std::uint32_t place) {
        if (place >= table.isKnown.size() || !table.isKnown[place]) {
            resolve(context, table, block, place);
        }
        return table.looks[place];
    }

private:
    struct LayerLook {
        QRgb color = 0;
        HxDbStub* linetype = nullptr;
        std::int16_t lineweight = 0;
        std::uint8_t alpha = 255;
        bool isLocked = false;
        bool isDefpoints = false;
    };
    using ContextKey = std::tuple<const Nesting*, HxDbStub*, QRgb, HxDbStub*, std::int16_t, std::uint8_t>;

    /// A layer's value as it counts in the viewport.
    template <class T>
    T shown(HxDbStub* layer, HxLyState::Property property, T HxUiLayerAs::*value, const T& now,
            bool isOverride) const {
        return m_assumed.in(m_viewport.stub(), layer, property, value, now, isOverride);
    }
    void resolve(LookContext& context, LookTable& table, const DisplayBlock& block, std::uint32_t place);
    const LayerLook& layerLook(HxDbStub* layer);
    const DashPattern* pattern(HxDbStub* linetype);
    QRgb rgb(const HxCmColor& color) const;
    QRgb faded(QRgb color) const;
    const Nesting* chain(const Nesting* outer, HxDbStub* external);

    const SceneStyle& m_style;
    bool m_onPaper;
    HxDbObjectId m_viewport;
    const AssumedLayers& m_assumed;
    LayerRules m_rules;
    LookContext m_root;
    std::unordered_map<HxDbStub*, LayerLook> m_layers;
    std::unordered_map<HxDbStub*, DashPattern> m_patterns;
    std::map<ContextKey, LookContext> m_contexts;
    std::map<std::pair<const Nesting*, HxDbStub*>, Nesting> m_chains;
};

}  // namespace korvex
