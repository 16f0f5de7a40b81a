// New objects take the current layer, linetype, colour and lineweight.
#include "tests/editor/editor_fixture.h"

#include "sdk/hxads.h"

namespace korvex::test {
namespace {

class CurrentProperties : public EditorTest {};

TEST_F(CurrentProperties, GoIntoNewObjects) {
    run(L"-LAYER M Pipes\n\nCECOLOR 3\nCELWEIGHT 50\nCELTYPE Continuous\nCIRCLE 0,0 2\n");
    EXPECT_EQ(failures, Lines());
    zds_name name = {0, 0};
    HxDbObjectId id;
    ASSERT_EQ(hxdbEntLast(name), RTNORM);
    ASSERT_EQ(hxdbGetObjectId(id, name), Hx::eOk);
    const HxDbObjectPointer<HxDbEntity> circle(id, HxDb::kForRead);
    ASSERT_TRUE(circle);
    EXPECT_STREQ(circle->dxfName(), L"CIRCLE");
    EXPECT_EQ(circle->layer(), L"Pipes");
    EXPECT_EQ(circle->color().colorIndex(), 3);
    EXPECT_EQ(circle->lineWeight(), 50);
    const HxDbObjectPointer<HxDbSymbolTableRecord> linetype(circle->linetypeId(), HxDb::kForRead);
    ASSERT_TRUE(linetype);
    EXPECT_STREQ(linetype->name(), L"Continuous");
}

}  // namespace
}  // namespace korvex::test
