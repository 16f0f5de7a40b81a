// -LAYMRG: everything on the layers moves, in all spaces and blocks, and the layers go, in one step.
#include "host/db/kernel/entity_access.h"
#include "host/io/drawing_writer.h"
#include "sdk/hxlyfilter.h"
#include "tests/editor/editor_fixture.h"
#include "tests/module/small_drawing.h"

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
    // As the palette sends it: a list of names, the target, the confirmation.
    const std::wstring shown = run(L"_.-laymrg A,B\n_N C\n_Y ");
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(contains(shown, L"Merge \"A\", \"B\" into \"C\"?")) << testing::PrintToString(shown);
    EXPECT_TRUE(contains(shown, L"2 layer(s) merged into \"C\", 3 object(s) moved."))
        << testing::PrintToString(shown);
    EXPECT_FALSE(hasLayer(L"A") || hasLayer(L"B"));
    EXPECT_EQ(on(L"C"), 3);
    run(L"U\n");
    EXPECT_TRUE(hasLayer(L"A") && hasLayer(L"B"));
    EXPECT_EQ(on(L"A"), 1);
    EXPECT_EQ(on(L"B"), 2);
    EXPECT_EQ(on(L"C"), 0);
}

TEST_F(MergeLayers, LeavesNothingBehindInBlocksViewportsAndGroups) {
    SmallDrawing drawing;
    drawing.block("DOOR", drawing.line("My A#", 0, 0, 1, 0));
    drawing.model(drawing.insert("DOOR", "B", 0, 0) + drawing.line("C", 0, 0, 1, 0) +
                  drawing.line("C,.1", 0, 0, 1, 0));
    drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) + drawing.viewport(2, 60, 100, 100, 5, 0));
    write("blocks.dxf", drawing.text());
    run(L"OPEN " + path("blocks.dxf") + L"\nLAYOUT S Layout1\nMSPACE\nVPLAYER F My A#,C\nC\nC 1 B\nC\n\n");
    HxLyLayerFilter* root = nullptr;
    HxLyLayerFilter* current = nullptr;
    ASSERT_EQ(database().layerFilterManager()->getFilters(root, current), Hx::eOk);
    const std::unique_ptr<HxLyLayerFilter> owner(root);
    auto* const group = new HxLyLayerGroup;
    group->setName(L"Both");
    ASSERT_EQ(root->addNested(group), Hx::eOk);
    for (const wchar_t* const name : {L"My A#", L"C"}) {
        ASSERT_EQ(group->addLayerId(layer(name)), Hx::eOk);
    }
    const auto frozen = [] {
        const HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForRead);
        HxArray<HxDbObjectId> ids;
        viewport->getFrozenLayers(ids);
        return ids.length();
    };
    const auto grouped = [group] {
        HxArray<HxDbObjectId> ids;
        group->layerIds(ids);
        return ids.length();
    };
    const std::string before = written(database());
    run(L"_.-laymrg My A#,C`,`.1,B\n_N C\n_Y ");
    EXPECT_EQ(failures, Lines());
    EXPECT_FALSE(hasLayer(L"My A#") || hasLayer(L"B") || hasLayer(L"C,.1"));
    EXPECT_EQ(on(L"C"), 3);
    EXPECT_EQ(frozen(), 1);
    EXPECT_EQ(grouped(), 1);
    const std::string after = written(database());
    EXPECT_EQ(after.find("My A#"), std::string::npos);
    EXPECT_EQ(after.find("  8\nB\n"), std::string::npos);
    run(L"U\n");
    EXPECT_EQ(frozen(), 2);
    EXPECT_EQ(grouped(), 2);
    EXPECT_EQ(written(database()), before);
}

TEST_F(MergeLayers, ObjectsMoveWhereverTheyTellTheirLayer) {
    for (const wchar_t* const source : {L"1,0\n", L"N A\n"}) {
        SmallDrawing drawing;
        drawing.model(drawing.line("A", 0, 0, 10, 0) + drawing.line("C", 0, 5, 10, 5));
        std::string text = drawing.text();
        const std::string usual = "AcDbEntity\n8\nA\n100\nAcDbLine\n";
        text.replace(text.find(usual), usual.size(), "AcDbEntity\n100\nAcDbLine\n8\nA\n");
        write("early.dxf", text);
        run(L"CLOSE N\nOPEN " + path("early.dxf") + L"\n-LAYMRG " + source + L"\nN C\nY\n");
        EXPECT_EQ(failures, Lines());
        EXPECT_FALSE(hasLayer(L"A"));
        EXPECT_EQ(on(L"C"), 2);
        EXPECT_NE(writeDrawing(database()).find("AcDbEntity\n100\nAcDbLine\n8\nC\n10"), std::string::npos);
    }
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

TEST_F(MergeLayers, AListAtTheFirstPromptIsToldFromPicksAndKeywords) {
    run(L"-LAYER N 5,7,N,N A\n\n-LAYMRG 5,0\n\nN C\nY\n");
    EXPECT_FALSE(hasLayer(L"A")) << "a pick at 5,0";
    run(L"-LAYMRG `5,`7\nN C\nY\n");
    EXPECT_FALSE(hasLayer(L"5") || hasLayer(L"7"));
    EXPECT_EQ(on(L"B"), 2) << "no pick at 5,7";
    run(L"-LAYMRG N A\nN C\nY\n");
    EXPECT_FALSE(hasLayer(L"N A"));
    run(L"-LAYMRG N\nNOPE\n\n-LAYMRG `N\nN C\nY\n");
    EXPECT_FALSE(hasLayer(L"N"));
    EXPECT_EQ(failures.size(), 1U) << "the keyword asks for a name";
    run(L"-LAYMRG N B\n\nN C\nY\n");
    EXPECT_EQ(on(L"C"), 3);
}

TEST_F(MergeLayers, WhatWasSentForNothingIsDropped) {
    ScriptOptions options;
    options.document = editor().documents().active();
    editor().input().send(L"_.-laymrg 0\n_N A\n_Y ", options);
    run(L"REGEN\n");
    ASSERT_EQ(failures.size(), 1U) << testing::PrintToString(failures);
    EXPECT_TRUE(contains(failures[0], L"\"0\" can not be merged"));
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
    EXPECT_NE(written(database()).find(mark), std::string::npos);
    run(L"-LAYMRG N A\n\nN C\nY\n");
    EXPECT_EQ(written(database()).find(mark), std::string::npos);
    run(L"U\n");
    EXPECT_NE(written(database()).find(mark), std::string::npos);
}

}  // namespace
}  // namespace korvex::test
