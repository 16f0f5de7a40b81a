// Which changes of a drawing touch which display lists.
#include "host/ui/render/display_cache.h"

#include "host/db/kernel/entity_access.h"

namespace korvex {

namespace {

bool isTable(const HxDbDatabase& database, const HxDbStub* stub, TableKind kind) {
    return stub && stub == database.imp()->table(kind);
}

}  // namespace

/// The blocks of one drawing.
class DisplayCache::Drawing final : public HxDbDatabaseReactor {
public:
    Drawing(DisplayCache& cache, const HxDbDatabase& database) : m_cache(cache), m_database(database) {
        m_database.addReactor(this);
    }
    ~Drawing() override { m_database.removeReactor(this); }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    void objectAppended(const HxDbDatabase*, const HxDbObject* object) override {
        note(object, Change::made);
    }
    void objectUnAppended(const HxDbDatabase*, const HxDbObject* object) override {
        note(object, Change::gone);
    }
    void objectReAppended(const HxDbDatabase*, const HxDbObject* object) override {
        note(object, Change::gone);
    }
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject* object) override {
        note(object, Change::changed);
    }
    void objectModified(const HxDbDatabase*, const HxDbObject* object) override {
        note(object, Change::changed);
    }
    void objectErased(const HxDbDatabase*, const HxDbObject* object, bool) override {
        note(object, Change::gone);
    }
    void goodbye(const HxDbDatabase* database) override { m_cache.m_drawings.erase(database); }

    void refresh() {
        if (m_allChanged) {
            blocks.clear();
        } else if (m_blocksChanged) {
            for (const auto& [record, block] : blocks) {
                block->forgetReferences();
            }
        }
        m_allChanged = m_blocksChanged = false;
    }

    std::unordered_map<const HxDbStub*, std::unique_ptr<DisplayBlock>> blocks;

private:
    enum class Change { made, changed, gone };

    void note(const HxDbObject* object, Change change) {
        HxDbStub* stub = object->objectId().stub();
        if (!stub) {
            return;
        }
        const HxDbStub* owner = stub->owner;
        const bool isBlockBegin = owner && blockBegin(*owner) == stub;
        if (isTable(m_database, owner, TableKind::block) || isBlockBegin) {
            m_blocksChanged = true;
        } else if (isTable(m_database, owner, TableKind::layer)) {
            m_allChanged |= change == Change::gone;
        } else if (isTable(m_database, owner, TableKind::linetype)) {
            m_allChanged |= change != Change::changed;
        } else if (isTable(m_database, owner, TableKind::style)) {
            m_allChanged = true;
        } else if (stub->recordClass && stub->recordClass->isEntity) {
            noteEntity(*stub);
        }
    }

    /// A vertex or an attribute counts as its main entity, too.
    void noteEntity(HxDbStub& changed) {
        std::vector<HxDbStub*> all{&changed};
        while (all.back()->subEntity && all.back()->owner) {
            all.push_back(all.back()->owner);
        }
        const auto found = blocks.find(all.back()->owner);
        if (found != blocks.end()) {
            for (const HxDbStub* stub : all) {
                found->second->forget(stub->position);
            }
        }
    }

    DisplayCache& m_cache;
    const HxDbDatabase& m_database;
    bool m_blocksChanged = false;
    bool m_allChanged = false;
};

DisplayCache::DisplayCache() = default;
DisplayCache::~DisplayCache() = default;

void DisplayCache::refresh() {
    for (const auto& [database, drawing] : m_drawings) {
        drawing->refresh();
    }
}

DisplayBlock& DisplayCache::of(HxDbStub& block) {
    std::unique_ptr<Drawing>& drawing = m_drawings[block.database];
    if (!drawing) {
        drawing = std::make_unique<Drawing>(*this, *block.database);
    }
    std::unique_ptr<DisplayBlock>& display = drawing->blocks[&block];
    if (!display) {
        display = std::make_unique<DisplayBlock>();
    }
    display->resize(members(block).size());
    return *display;
}

void DisplayCache::tidy() {
    for (const auto& [database, drawing] : m_drawings) {
        for (const auto& [record, block] : drawing->blocks) {
            block->tidy();
        }
    }
}

std::size_t DisplayCache::bytes() const {
    std::size_t total = 0;
    for (const auto& [database, drawing] : m_drawings) {
        for (const auto& [record, block] : drawing->blocks) {
            total += sizeof *block + block->bytes();
        }
    }
    return total;
}

}  // namespace korvex
