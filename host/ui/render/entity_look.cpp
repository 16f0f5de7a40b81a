// Reads looks from groups, without making the entity's object.
#include "host/ui/render/entity_look.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/values/color_groups.h"

namespace korvex {

namespace {

void readLinetype(const HxDbDatabase& database, const std::wstring& name, EntityLook& look) {
    look.isLinetypeByBlock = equalNames(name, L"BYBLOCK");
    if (!look.isLinetypeByBlock && !equalNames(name, L"BYLAYER")) {
        look.linetype = findRecord(database, TableKind::linetype, name);
    }
}

}  // namespace

std::size_t EntityLookHash::operator()(const EntityLook& look) const {
    std::size_t hash = std::hash<const void*>()(look.layer);
    const auto mix = [&hash](std::size_t value) {
        hash ^= value + 0x9E3779B97F4A7C15ULL + (hash << 6U) + (hash >> 2U);
    };
    mix(std::hash<const void*>()(look.linetype));
    mix(look.color);
    mix(static_cast<std::size_t>(look.lineweight + 3) << 16U | look.alpha << 4U | look.alphaMethod << 1U |
        (look.isLinetypeByBlock ? 1U : 0U));
    mix(std::hash<float>()(look.linetypeScale));
    return hash;
}

EntityLook entityLook(HxDbStub& entity) {
    EntityLook look;
    look.layer = layerOf(entity);
    ColorGroups color(HxCmColor::kIndexByLayer);
    const EntityGroups groups = entityGroups(entity);
    for (EntityCursor cursor(groups.groups, groups.format); cursor.nextShared();) {
        switch (cursor.code()) {
        case shared_group::kLinetype: readLinetype(*entity.database, cursor->asText(), look); break;
        case shared_group::kLinetypeScale: look.linetypeScale = static_cast<float>(cursor->asReal()); break;
        case shared_group::kLineWeight:
            look.lineweight = static_cast<std::int16_t>(cursor->asInteger());
            break;
        case shared_group::kTransparency: {
            HxCmTransparency transparency;
            transparency.serializeIn(static_cast<std::uint32_t>(cursor->asInteger()));
            look.alphaMethod = transparency.method();
            look.alpha = transparency.alpha();
            break;
        }
        default: color.read(*cursor);
        }
    }
    look.color = color.color().color();
    return look;
}

}  // namespace korvex
