// Random edits of real drawings, with undo, redo, marks, nested transactions and objects held open: whatever
// is taken back gives the bytes of that time, and with all undone those of the file.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxtext.h"
#include "tests/io/saving.h"
#include "tests/walk_seed.h"

#include <gtest/gtest.h>
#include <random>

namespace korvex::test {
namespace {

/// Says where two drawings begin to differ instead of showing both.
void expectSame(const std::string& now, const std::string& then, const char* what) {
    if (now != then) {
        const auto at = static_cast<std::size_t>(
            std::mismatch(now.begin(), now.end(), then.begin(), then.end()).first - now.begin());
        const std::size_t from = at > 120 ? at - 120 : 0;
        ADD_FAILURE() << what << ": is\n" << now.substr(from, 240) << "\nwas\n" << then.substr(from, 240);
    }
}

class Walk {
public:
    Walk(const std::string& file, std::uint32_t seed) : m_random(seed) {
        const std::wstring path(file.begin(), file.end());
        EXPECT_EQ(m_database.readDwgFile(path.c_str()), Hx::eOk);
        hxdbSetWorkingDatabase(&m_database);
        m_states.push_back(bytes());
        expectSame(written(m_database), m_database.imp()->file, "unchanged");
    }
    ~Walk() { hxdbSetWorkingDatabase(nullptr); }

    void run(int steps) {
        for (int i = 0; i < steps && !::testing::Test::HasFailure(); ++i) {
            holdOrRelease();
            switch (pick(10)) {
            case 0: undo(); break;
            case 1: redo(); break;
            default: command(); break;
            }
        }
        releaseAll();
    }

    void undoAll() {
        const std::size_t steps = journal(m_database).undoCount();
        const std::string last = bytes();
        while (journal(m_database).undo() == Hx::eOk) {
        }
        expectSame(written(m_database), m_database.imp()->file, "all undone");
        EXPECT_FALSE(m_database.isModified());
        for (std::size_t i = 0; i < steps; ++i) {
            EXPECT_EQ(journal(m_database).redo(), Hx::eOk);
        }
        expectSame(bytes(), last, "all redone");
        for (const HxDbStub& stub : m_database.imp()->stubs) {
            EXPECT_FALSE(stub.writer || stub.readers || stub.notifying || stub.notifyOpens || stub.resident);
        }
    }

private:
    std::size_t pick(std::size_t count) { return count == 0 ? 0 : m_random() % count; }
    /// Without the handle seed, which never goes down.
    std::string bytes() {
        std::string text = written(m_database);
        const std::size_t seed = text.find("$HANDSEED");
        return seed == std::string::npos ? text : text.erase(seed, text.find('$', seed + 1) - seed);
    }
    HxDbDatabase::Imp& db() { return *m_database.imp(); }

    // ---- what is open meanwhile ----

    void holdOrRelease() {
        if (m_held.size() < 5) {
            HxDbObject* object = nullptr;
            if (hxdbOpenObject(object, HxDbObjectId(&db().stubs[pick(db().stubs.size())]), HxDb::kForRead) ==
                Hx::eOk) {
                m_held.push_back(object);
            }
        } else {
            releaseAll();
        }
    }
    void releaseAll() {
        for (HxDbObject* object : m_held) {
            EXPECT_EQ(object->close(), Hx::eOk);
        }
        m_held.clear();
    }

    // ---- steps ----

    void undo() {
        if (journal(m_database).undo() == Hx::eOk) {
            expectSame(bytes(), m_states[journal(m_database).undoCount()], "undone");
        }
    }
    void redo() {
        if (journal(m_database).redo() == Hx::eOk) {
            expectSame(bytes(), m_states[journal(m_database).undoCount()], "redone");
        }
    }

    void command() {
        Journal& steps = journal(m_database);
        steps.beginGroup(L"STEP");
        for (std::size_t i = pick(4) + 1; i > 0; --i) {
            switch (pick(5)) {
            case 0: markAndRollback(); break;
            case 1: transaction(2); break;
            default: change(); break;
            }
        }
        steps.endGroup();
        if (steps.redoCount() > 0) {
            return;  // nothing was changed
        }
        m_states.resize(std::min(m_states.size(), steps.undoCount()));
        if (m_states.size() == steps.undoCount()) {
            m_states.push_back(bytes());
        }
    }

    void markAndRollback() {
        const std::string before = bytes();
        const Journal::Mark mark = journal(m_database).putMark();
        change();
        change();
        if (pick(2) == 0) {
            journal(m_database).rollbackTo(mark);
            expectSame(bytes(), before, "rolled back to a mark");
        }
    }

    void transaction(int depth) {
        const std::string before = bytes();
        HxDbTransactionManager& manager = *m_database.transactionManager();
        manager.startTransaction();
        HxDbObject* object = nullptr;
        manager.getObject(object, HxDbObjectId(&randomLayer()),
                          pick(2) == 0 ? HxDb::kForRead : HxDb::kForWrite);
        if (auto* layer = HxDbLayerTableRecord::cast(object)) {
            layer->setIsLocked(!layer->isLocked());
        }
        change();
        if (depth > 0 && pick(2) == 0) {
            transaction(depth - 1);
        }
        change();
        if (pick(2) == 0) {
            manager.abortTransaction();
            expectSame(bytes(), before, "aborted");
        } else {
            manager.endTransaction();
        }
    }

    void change() {
        static void (Walk::*const changes[])() = {
            &Walk::toggleLayer,  &Walk::recolorLayer, &Walk::renameLayer,  &Walk::addLayer,
            &Walk::eraseObject,  &Walk::moveEntity,   &Walk::addEntity,    &Walk::freezeInViewport,
            &Walk::override,     &Walk::editXrecord,  &Walk::switchLayout, &Walk::setCurrent,
            &Walk::describe,     &Walk::cancelChange, &Walk::unerase,      &Walk::editState,
            &Walk::manageStates,
        };
        (this->*changes[pick(std::size(changes))])();
    }

    // ---- changes ----

    HxDbStub& member(const HxDbStub& container) {
        return *members(container)[pick(members(container).size())];
    }
    HxDbStub& randomLayer() { return member(*db().table(TableKind::layer)); }
    HxDbStub* randomEntity() {
        const HxDbStub& block = member(*db().table(TableKind::block));
        return members(block).empty() ? nullptr : &member(block);
    }
    HxDbObjectId randomViewport() {
        for (int i = 0; i < 50; ++i) {
            HxDbStub& stub = db().stubs[pick(db().stubs.size())];
            if (!stub.erased && HxDbViewport::cast(hxdbObjectPointer(HxDbObjectId(&stub)))) {
                return HxDbObjectId(&stub);
            }
        }
        return {};
    }
    std::wstring freshName() { return L"Ebene " + std::to_wstring(++m_names); }

    void toggleLayer() {
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            layer->setIsFrozen(!layer->isFrozen());
            layer->setIsOff(pick(2) == 0);
            layer->setVPDFLT(pick(2) == 0);
        }
    }
    void recolorLayer() {
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            layer->setColor(pick(2) == 0 ? HxCmColor::byIndex(static_cast<std::int16_t>(pick(255) + 1))
                                         : HxCmColor::byRgb(9, 8, static_cast<std::uint8_t>(pick(255))));
            layer->setLineWeight(static_cast<HxDb::LineWeight>(pick(2) == 0 ? 50 : -3));
            layer->setLinetypeObjectId(HxDbObjectId(&member(*db().table(TableKind::linetype))));
            layer->setTransparency(HxCmTransparency(static_cast<std::uint8_t>(pick(255))));
        }
    }
    void renameLayer() {
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            const std::wstring name = pick(3) == 0 ? m_lastName : freshName();
            m_lastName = layer->name();
            layer->setName(name.c_str());
        }
    }
    void describe() {
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            layer->setDescription(pick(3) == 0 ? L"" : freshName().c_str());
        }
    }
    void addLayer() {
        HxDbObjectPointer<HxDbLayerTable> table(m_database.layerTableId(), HxDb::kForWrite);
        auto layer = std::make_unique<HxDbLayerTableRecord>();
        layer->setName(freshName().c_str());
        if (table && table->add(layer.get()) == Hx::eOk) {
            pick(4) == 0 ? layer.release()->cancel() : layer.release()->close();
        }
    }
    void eraseObject() {
        HxDbObject* object = nullptr;
        HxDbStub& stub = pick(2) == 0 ? randomLayer() : db().stubs[pick(db().stubs.size())];
        if (hxdbOpenObject(object, HxDbObjectId(&stub), HxDb::kForWrite) == Hx::eOk) {
            object->erase();
            object->close();
        }
    }
    void unerase() {
        HxDbObject* object = nullptr;
        for (HxDbStub& stub : db().stubs) {
            if (stub.erased && !stub.unappended && pick(2) == 0 &&
                hxdbOpenObject(object, HxDbObjectId(&stub), HxDb::kForWrite, true) == Hx::eOk) {
                object->erase(false);
                object->close();
                return;
            }
        }
    }
    void moveEntity() {
        HxDbStub* stub = randomEntity();
        if (HxDbObjectPointer<HxDbEntity> entity(HxDbObjectId(stub), HxDb::kForWrite); entity) {
            entity->setLayer(HxDbObjectId(&randomLayer()));
            entity->setColor(HxCmColor::byIndex(static_cast<std::int16_t>(pick(257))));
        }
    }
    void addEntity() {
        HxDbObjectPointer<HxDbBlockTableRecord> block(HxDbObjectId(&member(*db().table(TableKind::block))),
                                                      HxDb::kForWrite);
        if (block && !block->isDependent()) {
            auto entity = std::make_unique<HxDbEntity>(L"POINT");
            HxDbObjectId id;
            if (block->appendHxDbEntity(id, entity.get()) == Hx::eOk) {
                entity.release()->close();
            }
        }
    }
    void freezeInViewport() {
        if (HxDbObjectPointer<HxDbViewport> viewport(randomViewport(), HxDb::kForWrite); viewport) {
            HxArray<HxDbObjectId> layers;
            layers.append(HxDbObjectId(&randomLayer()));
            layers.append(HxDbObjectId(&randomLayer()));
            pick(2) == 0 ? viewport->freezeLayersInViewport(layers) : viewport->thawLayersInViewport(layers);
        }
    }
    void override() {
        const HxDbObjectId viewport = randomViewport();
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            switch (pick(4)) {
            case 0: layer->setColor(HxCmColor::byIndex(3), viewport); break;
            case 1: layer->setTransparency(HxCmTransparency(77), viewport); break;
            case 2: layer->removeAllOverrides(); break;
            default: layer->setLineWeight(static_cast<HxDb::LineWeight>(30), viewport); break;
            }
        }
    }
    void editXrecord() {
        HxDbObjectPointer<HxDbDictionary> root(m_database.namedObjectsDictionaryId(), HxDb::kForWrite);
        if (!root) {
            return;
        }
        if (pick(3) == 0) {
            root->remove(L"WALK");
            return;
        }
        auto record = std::make_unique<HxDbXrecord>();
        HxDbObjectId id;
        if (root->setAt(L"WALK", record.get(), id) == Hx::eOk) {
            resbuf* chain = hxutBuildList(1, L"walk", 70, static_cast<int>(pick(100)), 0);
            EXPECT_EQ(record->setFromRbChain(chain), Hx::eOk);
            hxutRelRb(chain);
            record.release()->close();
        }
    }
    /// A state of the layers, which names them, in the place where drawings keep such.
    void editState() {
        HxDbObjectPointer<HxDbLayerTable> table(m_database.layerTableId(), HxDb::kForWrite);
        if (!table || table->createExtensionDictionary() != Hx::eOk) {
            return;
        }
        HxDbObjectPointer<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForWrite);
        const HxDbObjectId dictionary =
            extension ? entryOf<HxDbDictionary>(*extension.object(), L"ACAD_LAYERSTATES") : HxDbObjectId();
        HxDbObjectPointer<HxDbDictionary> states(dictionary, HxDb::kForWrite);
        const HxDbObjectId id = states ? entryOf<HxDbXrecord>(*states.object(), L"WALK") : HxDbObjectId();
        if (HxDbObjectPointer<HxDbXrecord> record(id, HxDb::kForWrite); record) {
            const std::wstring lower = hxutFoldName(nameOfRandomLayer().c_str());
            resbuf* chain =
                hxutBuildList(91, 2047L, 302, nameOfRandomLayer().c_str(), 8, lower.c_str(), 6, L"CONTINUOUS",
                              8, nameOfRandomLayer().c_str(), 8, freshName().c_str(), 0);
            EXPECT_EQ(record->setFromRbChain(chain), Hx::eOk);
            hxutRelRb(chain);
        }
    }
    /// What users do with states, whoever holds layers and records open.
    void manageStates() {
        static constexpr const wchar_t* kNames[] = {L"Day", L"night", L"WALK"};
        const wchar_t* const name = kNames[pick(std::size(kNames))];
        HxDbLayerStateManager& states = *m_database.getLayerStateManager();
        HxArray<HxLyStateDifference> differences;
        switch (pick(7)) {
        case 0: states.saveLayerState(name, HxLyState::kAllProperties, randomViewport()); break;
        case 1: states.restoreLayerState(name, randomViewport(), static_cast<int>(pick(8))); break;
        case 2: states.deleteLayerState(name); break;
        case 3: states.renameLayerState(name, kNames[pick(std::size(kNames))]); break;
        case 4: states.setLayerStateMask(name, static_cast<std::int32_t>(pick(2048))); break;
        case 5: states.setLayerStateDescription(name, freshName().c_str()); break;
        default: states.compareLayerStateToDb(differences, name, randomViewport()); break;
        }
    }
    /// The entry of that name, made when there is none.
    template <class T>
    static HxDbObjectId entryOf(HxDbDictionary& dictionary, const wchar_t* name) {
        HxDbObjectId id;
        if (dictionary.getAt(name, id) != Hx::eOk) {
            auto made = std::make_unique<T>();
            if (dictionary.setAt(name, made.get(), id) == Hx::eOk) {
                made.release()->close();
            }
        }
        return id;
    }
    std::wstring nameOfRandomLayer() {
        return HxDbLayerTableRecord::cast(hxdbObjectPointer(HxDbObjectId(&randomLayer())))->name();
    }
    void switchLayout() {
        HxArray<HxDbObjectId> layouts;
        hxdbLayoutManager()->layouts(&m_database, layouts);
        if (!layouts.isEmpty()) {
            hxdbLayoutManager()->setCurrentLayoutId(
                layouts[static_cast<int>(pick(static_cast<std::size_t>(layouts.length())))]);
        }
    }
    void setCurrent() { m_database.setClayer(HxDbObjectId(&randomLayer())); }
    void cancelChange() {
        const std::string before = bytes();
        if (HxDbObjectPointer<HxDbLayerTableRecord> layer(HxDbObjectId(&randomLayer()), HxDb::kForWrite);
            layer) {
            layer->setIsLocked(!layer->isLocked());
            layer->setColor(HxCmColor::byIndex(6));
            layer.object()->cancel();
            HxDbObject* again = nullptr;
            EXPECT_EQ(hxdbOpenObject(again, layer->objectId(), HxDb::kForWrite), Hx::eOk);
            expectSame(bytes(), before, "cancelled");
            again->close();
        }
    }

    HxDbDatabase m_database{false};
    std::mt19937 m_random;
    std::vector<std::string> m_states;  ///< the bytes by number of steps that can be undone
    std::vector<HxDbObject*> m_held;
    std::wstring m_lastName = L"Ebene";
    int m_names = 0;
};

class RandomWalk : public ::testing::TestWithParam<const char*> {};

TEST_P(RandomWalk, AlwaysComesBackToTheSameBytes) {
    constexpr std::uint32_t kWalks = 5;
    const std::uint32_t first = walkSeed(1);
    std::printf("seeds from %u\n", first);
    for (std::uint32_t seed = first; seed != first + kWalks && !HasFailure(); ++seed) {
        SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(seed));
        Walk walk(std::string(KORVEX_SOURCE_DIR "/samples/") + GetParam(), seed);
        walk.run(60);
        walk.undoAll();
    }
}

INSTANTIATE_TEST_SUITE_P(Drawings, RandomWalk,
                         ::testing::Values("office-floor.dxf", "small/nesting.dxf", "small/r12.dxf",
                                           "small/binary.dxf", "small/r2000-cp1252.dxf"));

}  // namespace
}  // namespace korvex::test
