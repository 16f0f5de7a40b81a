// Takes the boxes of entities, once, and again for those that changed.
#include "host/editor/pick/block_geometry.h"

#include "host/db/geometry/entity_fields.h"

#include <unordered_set>

namespace korvex {

namespace {

bool isEntity(const HxDbStub& stub) { return stub.recordClass && stub.recordClass->isEntity; }

HxDbStub& mainEntity(HxDbStub& stub) {
    HxDbStub* main = &stub;
    while (main->subEntity && main->owner) {
        main = main->owner;
    }
    return *main;
}

/// A block record, the block table, or the record that begins a block.
bool isOfBlocks(const HxDbDatabase& database, const HxDbStub& stub) {
    const HxDbStub* table = database.imp()->table(TableKind::block);
    return &stub == table || stub.owner == table || (stub.owner && blockBegin(*stub.owner) == &stub);
}

HxGePoint3d basePoint(const HxDbStub& record) {
    HxDbStub* begin = blockBegin(record);
    if (!begin) {
        return {};
    }
    const EntityGroups groups = entityGroups(*begin);
    const HxGePoint3d base = EntityFields(groups.groups, groups.format).point(10);
    return isUsable(base) ? base : HxGePoint3d();
}

}  // namespace

Shape shapeOf(HxDbStub& entity) {
    const EntityGroups groups = entityGroups(entity);
    std::vector<EntityRecord> vertices;
    if (groups.type == "POLYLINE") {
        forEachSubEntity(entity, [&](HxDbStub& vertex) {
            const EntityGroups of = entityGroups(vertex);
            vertices.push_back({of.type, of.groups});
        });
    }
    return entityShape({groups.type, groups.groups}, vertices, groups.format);
}

ReferencedBlock referencedBlock(const HxDbDatabase& database, const BlockPlacement& placement) {
    ReferencedBlock block;
    block.record = block.contents = findRecord(database, TableKind::block, placement.block);
    if (!block.record) {
        return block;
    }
    block.base = basePoint(*block.record);
    if (const HxDbDatabase* external = xrefDatabase(*block.record)) {
        block.contents = modelSpace(*external);
    }
    return block;
}

/// The blocks of one drawing, and its entities that changed since the last refresh.
class GeometryCache::Drawing final : public HxDbDatabaseReactor {
public:
    Drawing(GeometryCache& cache, const HxDbDatabase& database) : m_cache(cache), m_database(database) {
        m_database.addReactor(this);
    }
    ~Drawing() override { m_database.removeReactor(this); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void objectAppended(const HxDbDatabase*, const HxDbObject* object) override { note(object); }
    void objectUnAppended(const HxDbDatabase*, const HxDbObject* object) override { note(object); }
    void objectReAppended(const HxDbDatabase*, const HxDbObject* object) override { note(object); }
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject* object) override { note(object); }
    void objectModified(const HxDbDatabase*, const HxDbObject* object) override { note(object); }
    void objectErased(const HxDbDatabase*, const HxDbObject* object, bool) override { note(object); }
    void goodbye(const HxDbDatabase* database) override { m_cache.forget(*database); }

    /// False when too much changed to be put right piece by piece.
    bool applyChanges() {
        if (m_blocksChanged || m_changed.size() > kMostChanges) {
            return false;
        }
        std::unordered_set<HxDbStub*> open;
        for (HxDbStub* changed : m_changed) {
            HxDbStub& entity = mainEntity(*changed);
            const auto found = entity.owner ? blocks.find(entity.owner) : blocks.end();
            if (found != blocks.end()) {
                if (found->second->isReferenced) {
                    return false;
                }
                m_cache.place(*found->second, entity);
            }
            if (changed->writer) {
                open.insert(changed);
            }
        }
        m_changed = std::move(open);
        return true;
    }

    void clear() {
        blocks.clear();
        m_blocksChanged = false;
        std::unordered_set<HxDbStub*> open;
        for (HxDbStub* changed : m_changed) {
            if (changed->writer) {
                open.insert(changed);
            }
        }
        m_changed = std::move(open);
    }

    std::unordered_map<const HxDbStub*, std::unique_ptr<BlockGeometry>> blocks;

private:
    static constexpr std::size_t kMostChanges = 5000;

    void note(const HxDbObject* object) {
        HxDbStub* stub = object->objectId().stub();
        if (!stub) {
            return;
        }
        if (isOfBlocks(m_database, *stub)) {
            m_blocksChanged = true;
        } else if (isEntity(*stub)) {
            m_changed.insert(stub);
        }
    }

    GeometryCache& m_cache;
    const HxDbDatabase& m_database;
    std::unordered_set<HxDbStub*> m_changed;
    bool m_blocksChanged = false;
};

void GeometryCache::refresh() {
    bool sound = true;
    for (const auto& [record, database] : m_loaded) {
        sound = sound && xrefDatabase(*record) == database;
    }
    // Taking a box may add a drawing: that of an external reference.
    std::vector<Drawing*> drawings;
    for (const auto& [database, drawing] : m_drawings) {
        drawings.push_back(drawing.get());
    }
    for (Drawing* drawing : drawings) {
        sound = sound && drawing->applyChanges();
    }
    if (!sound) {
        clear();
    }
}

void GeometryCache::clear() {
    m_loaded.clear();
    for (const auto& [database, drawing] : m_drawings) {
        drawing->clear();
    }
}

void GeometryCache::forget(const HxDbDatabase& database) {
    clear();
    m_drawings.erase(&database);
}

GeometryCache::Drawing& GeometryCache::drawing(const HxDbDatabase& database) {
    std::unique_ptr<Drawing>& drawing = m_drawings[&database];
    if (!drawing) {
        drawing = std::make_unique<Drawing>(*this, database);
    }
    return *drawing;
}

BlockGeometry& GeometryCache::entry(HxDbStub& block) {
    std::unique_ptr<BlockGeometry>& slot = drawing(*block.database).blocks[&block];
    if (slot) {
        return *slot;
    }
    slot = std::make_unique<BlockGeometry>();
    BlockGeometry& geometry = *slot;
    const std::vector<HxDbStub*>& all = members(block);
    geometry.boxes.resize(all.size());
    std::vector<SpatialIndex::Entry> entries;
    entries.reserve(all.size());
    ++m_nesting;
    for (std::size_t i = 0; i < all.size(); ++i) {
        geometry.boxes[i] = boxOf(*all[i]);
        if (!geometry.boxes[i].isEmpty()) {
            entries.push_back({geometry.boxes[i], static_cast<SpatialIndex::Key>(i)});
        }
    }
    --m_nesting;
    geometry.index = SpatialIndex(entries);
    return geometry;
}

const BlockGeometry& GeometryCache::of(HxDbStub& block) { return entry(block); }

Box3d GeometryCache::referencedExtents(HxDbStub& block) {
    if (m_nesting > kMaxNesting) {
        return Box3d::all();
    }
    BlockGeometry& geometry = entry(block);
    geometry.isReferenced = true;
    return geometry.extents();
}

Box3d GeometryCache::boxOf(HxDbStub& entity) {
    if (entity.subEntity || !isAlive(entity)) {
        return {};
    }
    const Shape shape = shapeOf(entity);
    if (shape.kind == ShapeKind::reference) {
        return referenceBox(entity, *shape.placement);
    }
    return shape.window && !shape.window->isFloating() ? Box3d() : extents(shape);
}

Box3d GeometryCache::referenceBox(HxDbStub& entity, const BlockPlacement& placement) {
    Box3d box;
    const ReferencedBlock block = referencedBlock(*entity.database, placement);
    if (block.isExternal()) {
        m_loaded[block.record] = xrefDatabase(*block.record);
    }
    if (block.contents) {
        const Box3d contents = referencedExtents(*block.contents);
        for (const int column : {0, placement.columns - 1}) {
            for (const int row : {0, placement.rows - 1}) {
                box.add(contents.transformed(placement.cell(block.base, column, row)));
            }
        }
    }
    forEachSubEntity(entity, [&](HxDbStub& attribute) { box.add(extents(shapeOf(attribute))); });
    return box;
}

void GeometryCache::place(BlockGeometry& geometry, HxDbStub& entity) {
    const std::size_t at = entity.position;
    if (at >= geometry.boxes.size()) {
        geometry.boxes.resize(at + 1);
    }
    const Box3d box = boxOf(entity);
    geometry.index.remove(geometry.boxes[at], static_cast<SpatialIndex::Key>(at));
    geometry.index.insert(box, static_cast<SpatialIndex::Key>(at));
    geometry.boxes[at] = box;
}

GeometryCache& geometryCache() {
    static GeometryCache cache;
    return cache;
}

}  // namespace korvex
