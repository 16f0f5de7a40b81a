// -LAYMRG: everything on the layers moves, in all spaces and blocks, and the layers go, in one step.
#include "host/db/kernel/entity_access.h"
#include "host/io/drawing_writer.h"
#include "tests/editor/editor_fixture.h"

namespace korvex::test {
namespace {

class MergeLayers : public EditorTest {
protected:
    MergeLayers() {
        run(L"-LAYER M A\n\nLINE 0,0 10,0 \n-LAYER M B\n\nLINE 0,5 10,5 \nLINE 0,7 10,7 \n-LAYER S 0\nN "
            L"C\nLO A\n\n");
    }
    /// Entities of model space that are on a layer.
    int on(const wchar_t* name) {
        int count = 0;
        for (HxDbStub* entity : members(*database().modelSpaceId().stub())) {
            count += isAlive(*entity) && layerOf(*entity) == layer(name).stub() ? 1 : 0;
        }
        return count;
    }
};

TEST_F(MergeLayers, MovesAndErasesInOneStep) {
    // As the palette sends it: names, an empty line, the target, the confirmation.
    const std::wstring shown = run(L"_.-LAYMRG _N A\n_N B\n\n_N C\n_Y ");
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(contains(shown, L"Merge \"A\", \"B\" into \"C\"?")) << testing::PrintToString(shown);
    EXPECT_FALSE(hasLayer(L"A") || hasLayer(L"B"));
    EXPECT_EQ(on(L"C"), 3);
    run(L"U\n");
    EXPECT_TRUE(hasLayer(L"A") && hasLayer(L"B"));
    EXPECT_EQ(on(L"A"), 1);
    EXPECT_EQ(on(L"B"), 2);
    EXPECT_EQ(on(L"C"), 0);
}

TEST_F(MergeLayers, TakesPicksAndAsksBefore) {
    run(L"-LAYMRG 5,5\n\n5,0\nN\n");
    EXPECT_TRUE(hasLayer(L"B")) << "it was not confirmed";
    run(L"-LAYMRG 5,5 5,0 U\n\n");
    EXPECT_TRUE(hasLayer(L"B")) << "no target was given";
    run(L"-LAYMRG 5,5\n\n5,0\nY\n");
    EXPECT_FALSE(hasLayer(L"B"));
    EXPECT_EQ(on(L"A"), 3);
}

TEST_F(MergeLayers, RefusesWhatMustStay) {
    run(L"-LAYER M D\n\n-LAYMRG N 0,D,NOPE,A\n\nN A,C\nN A\n\n");
    ASSERT_EQ(failures.size(), 4U);
    EXPECT_TRUE(contains(failures[0], L"NOPE"));
    EXPECT_TRUE(contains(failures[1], L"\"0\" can not be merged"));
    EXPECT_TRUE(contains(failures[2], L"\"D\" can not be merged: it is current"));
    EXPECT_TRUE(contains(failures[3], L"One layer only"));
    EXPECT_TRUE(hasLayer(L"A")) << "a layer is not merged into itself";
}

TEST_F(MergeLayers, WhatHangsOnALayerGoesWithIt) {
    HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForWrite);
    ASSERT_EQ(a->createExtensionDictionary(), Hx::eOk);
    wchar_t handle[17];
    a->extensionDictionary().handle().getIntoAsciiBuffer(handle);
    a.close();
    const std::string mark = "  5\n" + std::string(handle, handle + std::wcslen(handle)) + "\n";
    EXPECT_NE(writeDrawing(database()).find(mark), std::string::npos);
    run(L"-LAYMRG N A\n\nN C\nY\n");
    EXPECT_EQ(writeDrawing(database()).find(mark), std::string::npos);
    run(L"U\n");
    EXPECT_NE(writeDrawing(database()).find(mark), std::string::npos);
}

}  // namespace
}  // namespace korvex::test
