// Drawings that lack records or handles which their other records need, and changes that refer to those.
#pragma once

#include "tests/io/drawing_support.h"

namespace korvex::test {

inline constexpr const char* kModel = "0 BLOCK_RECORD | 5 20 | 330 1 | 100 AcDbSymbolTableRecord"
                                      " | 100 AcDbBlockTableRecord | 2 *Model_Space | 340 0\n";
inline constexpr const char* kPaper = "0 BLOCK_RECORD | 5 21 | 330 1 | 100 AcDbSymbolTableRecord"
                                      " | 100 AcDbBlockTableRecord | 2 *Paper_Space | 340 0\n";
inline constexpr const char* kViewport =
    " | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbViewport | 10 0.0 | 20 0.0"
    " | 30 0.0 | 40 9.0 | 41 9.0 | 68 2 | 69 2 | 45 9.0 | 90 0\n";

/// R2000: layers 0 and WALLS, entities and objects as given; layers GHOST and SHADE are only named.
inline std::string incompletePlan(const std::string& blockRecords, const std::string& entities,
                                  const std::string& layer = "5 11 | 330 2") {
    return inVersion(
        "AC1015",
        "0 SECTION | 2 TABLES\n0 TABLE | 2 LAYER | 5 2 | 330 0 | 100 AcDbSymbolTable | 70 2\n"
        "0 LAYER | 5 10 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 0 | 70 0 "
        "| 62 7 | 6 Continuous\n0 LAYER | " +
            layer +
            " | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 WALLS | 70 0 | 62 1 | 6 "
            "Continuous\n0 ENDTAB\n0 TABLE | 2 BLOCK_RECORD | 5 1 | 330 0 | 100 AcDbSymbolTable | 70 "
            "2\n" +
            blockRecords + "0 ENDTAB\n0 ENDSEC\n0 SECTION | 2 ENTITIES\n" + entities +
            "0 POINT | 5 40 | 330 20 | 100 AcDbEntity | 8 GHOST | 100 AcDbPoint | 10 0.0 | 20 0.0\n"
            "0 POINT | 5 41 | 330 20 | 100 AcDbEntity | 8 SHADE | 100 AcDbPoint | 10 0.0 | 20 0.0\n"
            "0 ENDSEC");
}

inline HxDbStub* firstViewport(const HxDbDatabase& database) {
    HxDbStub* found = nullptr;
    for (HxDbStub* entity : members(*paperSpace(database))) {
        const bool isViewport = std::string_view(entity->recordClass->type) == "VIEWPORT";
        found = !found && isViewport ? entity : found;
    }
    return found;
}

inline void freezeInViewport(HxDbDatabase& database, const wchar_t* layer) {
    HxArray<HxDbObjectId> layers;
    layers.append(recordId(database, TableKind::layer, layer));
    const HxDbObjectPointer<HxDbViewport> viewport(HxDbObjectId(firstViewport(database)), HxDb::kForWrite);
    ASSERT_EQ(viewport->freezeLayersInViewport(layers), Hx::eOk);
}

/// Makes a layer green in a viewport.
inline void overrideColor(HxDbObjectId layer, HxDbObjectId viewport) {
    const HxDbObjectPointer<HxDbLayerTableRecord> record(layer, HxDb::kForWrite);
    HxCmColor color;
    color.setColorIndex(3);
    ASSERT_EQ(record.openStatus(), Hx::eOk);
    ASSERT_EQ(record->setColor(color, viewport), Hx::eOk);
}

inline HxDbStub* addPoint(HxDbStub* block) {
    const HxDbObjectPointer<HxDbBlockTableRecord> record(HxDbObjectId(block), HxDb::kForWrite);
    auto* point = new HxDbEntity(L"POINT");
    HxDbObjectId id;
    EXPECT_EQ(record->appendHxDbEntity(id, point), Hx::eOk);
    point->close();
    return id.stub();
}

}  // namespace korvex::test
