// Resolves looks, each once for every context that it is met in.
#include "host/ui/render/look_rules.h"

#include "host/db/kernel/object_imp.h"
#include "host/db/kernel/text_fold.h"
#include "sdk/hxdbsymtb.h"

namespace korvex {

namespace {

constexpr std::int16_t kDefaultWeight = 25;

std::int16_t weightOr(std::int16_t weight, std::int16_t byLayer, std::int16_t byBlock) {
    switch (weight) {
    case HxDb::kLnWtByLayer: return byLayer;
    case HxDb::kLnWtByBlock: return byBlock;
    default: return weight >= 0 ? weight : kDefaultWeight;
    }
}

HxCmColor colorOf(std::uint32_t word) {
    HxCmColor color;
    color.setColor(word);
    return color;
}

}  // namespace

LookRules::LookRules(const SceneStyle& style, bool onPaper, HxDbObjectId viewport,
                     const AssumedLayers& assumed)
    : m_style(style), m_onPaper(onPaper), m_viewport(viewport), m_assumed(assumed),
      m_rules(viewport.stub(), assumed) {
    m_root.color = (m_onPaper ? m_style.paperInk : m_style.ink).rgb();
    m_root.lineweight = kDefaultWeight;
}

QRgb LookRules::rgb(const HxCmColor& color) const {
    if (color.isByColor()) {
        return qRgb(color.red(), color.green(), color.blue());
    }
    if (color.colorIndex() == HxCmColor::kIndexWhite || !color.isByIndex()) {
        return m_root.color;
    }
    return 0xFF000000U | hxedGetRGB(color.colorIndex());
}

QRgb LookRules::faded(QRgb color) const {
    const QColor& ground = m_onPaper ? m_style.paper : m_style.background;
    const int fade = std::min(std::max(m_style.lockedFade, 0), 100);
    const auto mix = [fade](int from, int to) { return from + (to - from) * fade / 100; };
    return qRgb(mix(qRed(color), ground.red()), mix(qGreen(color), ground.green()),
                mix(qBlue(color), ground.blue()));
}

const LookRules::LayerLook& LookRules::layerLook(HxDbStub* layer) {
    const auto [found, isNew] = m_layers.try_emplace(layer);
    LayerLook& look = found->second;
    if (!isNew) {
        return look;
    }
    look.color = m_root.color;
    look.lineweight = kDefaultWeight;
    const auto* record = layer ? HxDbLayerTableRecord::cast(materialise(*layer)) : nullptr;
    if (record) {
        bool isOverride = false;
        const HxCmColor color = record->color(m_viewport, isOverride);
        look.color = rgb(shown(layer, HxLyState::kColor, &HxUiLayerAs::color, color, isOverride));
        const HxDbObjectId linetype = record->linetypeObjectId(m_viewport, isOverride);
        look.linetype =
            shown(layer, HxLyState::kLinetype, &HxUiLayerAs::linetype, linetype, isOverride).stub();
        const int weight = record->lineWeight(m_viewport, isOverride);
        look.lineweight =
            weightOr(static_cast<std::int16_t>(
                         shown(layer, HxLyState::kLineweight, &HxUiLayerAs::lineweight, weight, isOverride)),
                     kDefaultWeight, kDefaultWeight);
        const HxCmTransparency transparency = record->transparency(m_viewport, isOverride);
        look.alpha =
            shown(layer, HxLyState::kTransparency, &HxUiLayerAs::transparency, transparency, isOverride)
                .alpha();
        look.isLocked = m_assumed.own(layer, HxLyState::kLocked, &HxUiLayerAs::isLocked, record->isLocked());
        look.isDefpoints = equalNames(record->name(), L"DEFPOINTS");
    }
    return look;
}

const DashPattern* LookRules::pattern(HxDbStub* linetype) {
    if (!linetype || linetype->erased) {
        return nullptr;
    }
    const auto [found, isNew] = m_patterns.try_emplace(linetype);
    DashPattern& pattern = found->second;
    const auto* record = isNew ? HxDbLinetypeTableRecord::cast(materialise(*linetype)) : nullptr;
    for (int i = 0; record && i < record->numDashes(); ++i) {
        const double dash = record->dashLengthAt(i);
        if (isUsable(dash)) {
            pattern.dashes.push_back(dash);
            pattern.length += std::fabs(dash);
        }
    }
    return pattern.isSolid() ? nullptr : &pattern;
}

const Nesting* LookRules::chain(const Nesting* outer, HxDbStub* external) {
    if (!external) {
        return outer;
    }
    Nesting& link = m_chains[{outer, external}];
    link.outer = outer;
    link.external = external;
    return &link;
}

LookContext& LookRules::inside(LookContext& outer, const ResolvedLook& look, HxDbStub* external) {
    const Nesting* outward = chain(outer.nesting.outer, external);
    const ContextKey key(outward, look.layer, look.inherited, look.linetype, look.lineweight, look.alpha);
    const auto [found, isNew] = m_contexts.try_emplace(key);
    LookContext& context = found->second;
    if (isNew) {
        context.nesting.outer = outward;
        context.nesting.layer = look.layer;
        context.nesting.reference = look.layer;  // any object: what counts is that there is one
        context.color = look.inherited;
        context.linetype = look.linetype;
        context.lineweight = look.lineweight;
        context.alpha = look.alpha;
    }
    return context;
}

LookTable& LookRules::table(LookContext& context, const DisplayBlock& block) {
    return context.tables[&block];
}

void LookRules::resolve(LookContext& context, LookTable& table, const DisplayBlock& block,
                        std::uint32_t place) {
    if (table.looks.size() < block.looks()) {
        table.looks.resize(block.looks());
        table.isKnown.resize(block.looks(), false);
    }
    const EntityLook& own = block.look(place);
    ResolvedLook& look = table.looks[place];
    table.isKnown[place] = true;
    look.layer = m_rules.layerFor(own.layer, context.nesting);
    const LayerLook& layer = layerLook(look.layer);
    look.isHidden = m_rules.isHidden(look.layer);
    look.isFrozen = m_rules.isFrozen(look.layer);
    look.isDefpoints = layer.isDefpoints;
    const HxCmColor color = colorOf(own.color);
    look.inherited = color.isByLayer() ? layer.color : color.isByBlock() ? context.color : rgb(color);
    look.color = layer.isLocked ? faded(look.inherited) : look.inherited;
    look.linetype = own.isLinetypeByBlock ? context.linetype : own.linetype ? own.linetype : layer.linetype;
    look.pattern = pattern(look.linetype);
    look.lineweight = weightOr(own.lineweight, layer.lineweight, context.lineweight);
    look.linetypeScale = own.linetypeScale > 0 ? own.linetypeScale : 1;
    switch (own.alphaMethod) {
    case HxCmTransparency::kByBlock: look.alpha = context.alpha; break;
    case HxCmTransparency::kByAlpha: look.alpha = own.alpha; break;
    default: look.alpha = layer.alpha; break;
    }
}

}  // namespace korvex
