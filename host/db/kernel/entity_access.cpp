// Entities and records read straight from their groups.
#include "host/db/kernel/entity_access.h"

#include "host/db/entities/entity_cursor.h"
#include "host/db/entities/viewport_imp.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/layer_imp.h"
#include "host/db/tables/record_names.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

constexpr wchar_t kPaperSpace[] = L"*Paper_Space";

/// The name of the layer in an entity's groups; empty when there is none.
std::wstring layerName(std::string_view groups, const GroupFormat& format) {
    for (EntityCursor cursor(groups, format); cursor.nextShared();) {
        if (cursor.code() == shared_group::kLayer) {
            return cursor->asText();
        }
    }
    return {};
}

}  // namespace

const std::vector<HxDbStub*>& members(const HxDbStub& container) {
    static const std::vector<HxDbStub*> none;
    return container.contents ? container.contents->members : none;
}

bool isAlive(const HxDbStub& stub) {
    return !stub.erased && !(stub.subEntity && stub.owner && stub.owner->erased);
}

EntityGroups entityGroups(HxDbStub& entity) {
    const GroupFormat& format = entity.database->imp()->format;
    const std::string_view groups = currentBlob(entity).groups();
    GroupCursor cursor(groups, format);
    std::string_view type;
    if (cursor.next()) {
        type = trimmedText(cursor);
    }
    return {type, groups, format};
}

HxDbStub* layerOf(HxDbStub& entity) {
    if (!entity.layer || entity.layer->erased) {
        const HxDbDatabase& database = *entity.database;
        const std::wstring name = layerName(currentBlob(entity).groups(), database.imp()->format);
        HxDbStub* found = name.empty() ? nullptr : findRecord(database, TableKind::layer, name);
        entity.layer = found ? found : findRecord(database, TableKind::layer, L"0");
    }
    return entity.layer;
}

LayerVisibility layerVisibility(HxDbStub& layer) {
    materialise(layer);
    const auto& imp = static_cast<const LayerImp&>(*layer.object->imp());
    return {imp.off, (imp.flags & LayerImp::kFrozen) != 0, (imp.flags & LayerImp::kLocked) != 0};
}

std::vector<HxDbStub*> layersFrozenIn(HxDbStub& viewport) {
    const HxDbObject* object = materialise(viewport);
    std::vector<HxDbStub*> layers;
    if (object && object->isKindOf(HxDbViewport::desc())) {
        layers = fields<ViewportImp>(object).frozenLayers(*viewport.database);
        std::sort(layers.begin(), layers.end());
    }
    return layers;
}

HxDbStub* findRecord(const HxDbDatabase& database, TableKind table, std::wstring_view name) {
    HxDbStub* stub = database.imp()->table(table);
    return stub ? recordNamed(*stub, name, false) : nullptr;
}

HxDbStub* modelSpace(const HxDbDatabase& database) {
    return findRecord(database, TableKind::block, kModelSpaceName);
}
HxDbStub* paperSpace(const HxDbDatabase& database) {
    return findRecord(database, TableKind::block, kPaperSpace);
}

HxDbDatabase* xrefDatabase(const HxDbStub& blockRecord) {
    const auto& loaded = blockRecord.database->imp()->xrefs;
    const auto found = loaded.find(const_cast<HxDbStub*>(&blockRecord));
    return found == loaded.end() ? nullptr : found->second.get();
}

HxDbStub* hostLayer(HxDbStub& blockRecord, HxDbStub& xrefLayer) {
    const std::wstring name = recordName(xrefLayer);
    const bool isZero = name == L"0";
    return findRecord(*blockRecord.database, TableKind::layer,
                      isZero ? name : recordName(blockRecord) + L"|" + name);
}

HxDbStub* blockBegin(const HxDbStub& blockRecord) {
    return blockRecord.contents ? blockRecord.contents->blockBegin : nullptr;
}

}  // namespace korvex
