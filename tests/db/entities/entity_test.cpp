// Entities and the blocks that they are in.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Entities : public KernelTest {
protected:
    HxDbEntity& look(std::uint64_t handle) const { return *at<HxDbEntity>(id(handle)); }
    HxDbBlockTableRecord& block(std::uint64_t handle) const { return *at<HxDbBlockTableRecord>(id(handle)); }
    HxDbObjectId append(HxDbObjectId space, HxDbEntity* entity) {
        HxDbObjectId added;
        change<HxDbBlockTableRecord>(space, [&](HxDbBlockTableRecord& record) {
            EXPECT_EQ(record.appendHxDbEntity(added, entity), Hx::eOk);
        });
        EXPECT_TRUE(entity->isWriteEnabled());
        entity->close();
        return added;
    }
    /// Record types in stepping order, "!" for erased ones.
    std::string types(std::uint64_t handle, bool forward, bool skipErased) {
        HxDbBlockTableRecordIterator* made = nullptr;
        EXPECT_EQ(block(handle).newIterator(made, forward, skipErased), Hx::eOk);
        const std::unique_ptr<HxDbBlockTableRecordIterator> steps(made);
        std::string all;
        for (; !steps->done(); steps->step(forward, skipErased)) {
            HxDbEntity* entity = nullptr;
            EXPECT_EQ(steps->getEntity(entity, HxDb::kForRead, true), Hx::eOk);
            all += toUtf8(entity->dxfName()) + (entity->isErased() ? "! " : " ");
            entity->close();
        }
        HxDbObjectId none;
        EXPECT_EQ(steps->getEntityId(none), Hx::eIteratorDone);
        return all;
    }
};

}  // namespace

TEST_F(Entities, ValuesAreReadAsTheyStand) {
    const HxDbEntity& point = look(0x44);
    EXPECT_EQ(point.layerId(), database->layerZero());
    EXPECT_EQ(point.linetypeId(), id(0x33));
    EXPECT_TRUE(point.color().isByBlock());
    EXPECT_EQ(point.lineWeight(), 35);
    EXPECT_FALSE(point.isVisible());
    const HxDbEntity& line = look(0x40);
    EXPECT_TRUE(line.color().isByLayer());
    EXPECT_TRUE(line.linetypeId().isNull());
    EXPECT_EQ(line.lineWeight(), HxDb::kLnWtByLayer);
    EXPECT_TRUE(line.isVisible());
    EXPECT_EQ(look(0x42).ownerId(), id(0x41)) << "an attribute";
    EXPECT_EQ(look(0x42).blockId(), database->modelSpaceId());
    EXPECT_DOUBLE_EQ(at<HxDbBlockReference>(id(0x41))->position().y, 5);
}

TEST_F(Entities, LayersByIdAndByName) {
    change<HxDbEntity>(id(0x40), [&](HxDbEntity& line) {
        EXPECT_EQ(line.setLayer(layer(L"DOORS")), Hx::eOk);
        EXPECT_EQ(line.layer(), L"DOORS");
        EXPECT_EQ(line.setLayer(L"empty"), Hx::eOk);
        EXPECT_EQ(line.setLayer(L"ROOF"), Hx::eKeyNotFound);
        EXPECT_EQ(line.setLayer(HxDbObjectId()), Hx::eWrongClass);
        EXPECT_EQ(line.setLayer(id(0x33)), Hx::eWrongClass);
        const HxDbDatabase other;
        EXPECT_EQ(line.setLayer(other.layerZero()), Hx::eWrongClass);
        erase(layer(L"DOORS"));
        EXPECT_EQ(line.setLayer(id(0x12)), Hx::eWrongClass);
    });
    EXPECT_TRUE(has(record(0x40), "8 EMPTY | 100 AcDbLine |"));
    EXPECT_EQ(layerOf(*id(0x40).stub()), layer(L"EMPTY").stub());
    EXPECT_EQ(look(0x2B).layerId(), database->layerZero()) << "its layer is gone";
    EXPECT_EQ(look(0x2B).layer(), L"DOORS");
    EXPECT_TRUE(has(record(0x2B), "8 DOORS |"));
}

TEST_F(Entities, ColoursAreWrittenWhereTheyAreNotByLayer) {
    const auto paint = [&](const HxCmColor& color) {
        change<HxDbEntity>(id(0x40), [&](HxDbEntity& e) { EXPECT_EQ(e.setColor(color), Hx::eOk); });
        const std::string all = record(0x40);
        const std::size_t start = all.find("8 WALLS");
        return all.substr(start, all.find("100 AcDbLine") - start);
    };
    EXPECT_EQ(paint(HxCmColor::byIndex(256)), "8 WALLS | ");
    EXPECT_EQ(paint(HxCmColor::byIndex(5)), "8 WALLS | 62 5 | ");
    EXPECT_TRUE(has(paint(HxCmColor::byRgb(1, 2, 3)), " | 420 66051 | "));
    EXPECT_EQ(paint(HxCmColor::byIndex(0)), "8 WALLS | 62 0 | ");
    EXPECT_TRUE(look(0x40).color().isByBlock());
}

TEST_F(Entities, NewOnesGoOnTheCurrentLayerUnlessTheyHaveOne) {
    ASSERT_EQ(database->setClayer(layer(L"WALLS")), Hx::eOk);
    const HxDbObjectId point = append(database->modelSpaceId(), new HxDbEntity(L"POINT"));
    auto* placed = new HxDbEntity(L"POINT");
    ASSERT_EQ(placed->setLayer(layer(L"DOORS")), Hx::eOk);
    const HxDbObjectId onPaper = append(database->paperSpaceId(), placed);
    EXPECT_TRUE(has(record(point), "330 20 | 100 AcDbEntity | 8 WALLS"));
    EXPECT_TRUE(has(record(onPaper), "330 21 | 100 AcDbEntity | 67 1 | 8 DOORS"));
    EXPECT_EQ(at<HxDbEntity>(point)->blockId(), database->modelSpaceId());
    auto* insert = new HxDbBlockReference;
    EXPECT_EQ(insert->setBlockTableRecord(layer(L"WALLS")), Hx::eWrongClass);
    EXPECT_EQ(insert->setBlockTableRecord(id(0x23)), Hx::eOk);
    EXPECT_EQ(insert->setPosition({1, 2, 3}), Hx::eOk);
    const HxDbObjectId placedInsert = append(database->modelSpaceId(), insert);
    EXPECT_TRUE(has(record(placedInsert), "100 AcDbBlockReference | 2 DOOR | 10 1.0 | 20 2.0 | 30 3.0"));
}

TEST_F(Entities, WhatABlockDoesNotTake) {
    HxDbObjectId added;
    HxDbEntity loose(L"POINT");
    EXPECT_EQ(block(0x20).appendHxDbEntity(added, &loose), Hx::eNotOpenForWrite);
    change<HxDbBlockTableRecord>(id(0x20), [&](HxDbBlockTableRecord& space) {
        EXPECT_EQ(space.appendHxDbEntity(added, nullptr), Hx::eInvalidInput);
        EXPECT_EQ(space.appendHxDbEntity(added, &look(0x40)), Hx::eAlreadyInDb);
    });
    HxDbBlockTableRecord fresh;
    EXPECT_EQ(fresh.appendHxDbEntity(added, &loose), Hx::eNotInDatabase);
    EXPECT_TRUE(added.isNull());
}

TEST_F(Entities, BlocksKnowTheirOriginAndLayout) {
    const HxGePoint3d origin = block(0x23).origin();
    EXPECT_TRUE(origin.x == 1.5 && origin.y == 2.5 && origin.z == 0.5);
    EXPECT_FALSE(block(0x23).isLayout());
    EXPECT_TRUE(block(0x23).getLayoutId().isNull());
    EXPECT_TRUE(block(0x22).isLayout());
    EXPECT_EQ(block(0x22).getLayoutId(), id(0x52));
    EXPECT_FALSE(block(0x23).isFromExternalReference() || block(0x23).isUnloaded());
    EXPECT_EQ(block(0x23).pathName(), L"");
}

TEST_F(Entities, SteppingThroughABlockSkipsPartsOfEntities) {
    EXPECT_EQ(types(0x20, true, true), "LINE INSERT POINT ");
    erase(id(0x41));
    EXPECT_EQ(types(0x20, true, true), "LINE POINT ");
    EXPECT_EQ(types(0x20, false, true), "POINT LINE ");
    EXPECT_EQ(types(0x20, false, false), "POINT INSERT! LINE ");
    EXPECT_EQ(types(0x22, true, true), "");
}

}  // namespace korvex::test
