// LAYISO and LAYUNISO with a stand-in for the layer manager: which layers stay, what becomes of the others,
// what is refused.
#include "host/base/dynamic_linker.h"
#include "host/editor/layer_isolation.h"
#include "host/editor/selection.h"
#include "sdk/hxlystate.h"
#include "tests/editor/editor_fixture.h"
#include "tests/module/small_drawing.h"

namespace korvex::test {
namespace {

constexpr wchar_t kModule[] = L"Isolation.hrx";

class LayerIsolation : public EditorTest {
protected:
    void SetUp() override {
        CStdStr<wchar_t> error;
        const QString file = KORVEX_BINARY_DIR "/tests/trial_modules/Isolation.hrx";
        ASSERT_EQ(dynamicLinker().loadModule(file.toStdWString().c_str(), &error), Hx::eOk) << toUtf8(error);
        SmallDrawing drawing;
        drawing.useVersion("AC1027");
        drawing.block("DOOR", drawing.line("LEAF", 0, 0, 9, 0) + drawing.line("0", 0, 1, 9, 1));
        drawing.model(drawing.line("WALLS", 0, 100, 9, 100) + drawing.line("NOTES", 0, 110, 9, 110) +
                      drawing.insert("DOOR", "DOORS", 0, 0));
        drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) +
                      drawing.viewport(2, 60, 100, 100, 5, 50));
        write("plan.dxf", drawing.text());
        run(L"OPEN " + path("plan.dxf") + L"\n-LAYER OFF NOTES\n\nZOOM E\n");
        ASSERT_EQ(failures, Lines());
    }
    void TearDown() override {
        qunsetenv("TRIAL_ISOLATION");
        dynamicLinker().unloadModule(kModule);
    }
    /// The first of a command's failures; the second is that something is held open.
    std::wstring refusalOf(const std::wstring& commands) {
        const Lines all = failuresOf(commands);
        EXPECT_EQ(all.size(), 2U);
        return all.empty() ? std::wstring() : all.front();
    }
    /// "WALLS DOORS*-": what is shown of all layers; * is current, + locked, - off, ~ frozen.
    std::wstring looks() {
        std::wstring text;
        for (const HxDbObjectId& id : selectLayers(database(), L"*").layers) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
            text += (text.empty() ? L"" : L" ") + std::wstring(record->name());
            text += id == database().clayer() ? L"*" : L"";
            text += record->isLocked() ? L"+" : L"";
            text += record->isOff() ? L"-" : L"";
            text += record->isFrozen() ? L"~" : L"";
        }
        return text;
    }
    std::wstring frozenInViewport() {
        std::wstring text;
        const HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForRead);
        HxArray<HxDbObjectId> frozen;
        viewport->getFrozenLayers(frozen);
        for (const HxDbObjectId& id : selectLayers(database(), L"*").layers) {
            text += frozen.contains(id) ? L" " + layerName(id) : L"";
        }
        return text;
    }
    Lines failuresOf(const std::wstring& commands) {
        failures.clear();
        run(commands);
        return failures;
    }
};

}  // namespace

TEST_F(LayerIsolation, NamesStayAndEverythingComesBack) {
    const std::wstring before = looks();
    ASSERT_EQ(before, L"0* DOORS LEAF NOTES- WALLS");
    const std::wstring told = run(L"LAYISO\nNames\nnotes,w*\n");
    EXPECT_TRUE(contains(told, L"2 layers isolated; 3 others turned off. LAYUNISO brings them back."));
    const std::wstring isolated = looks();
    EXPECT_EQ(isolated, L"0- DOORS- LEAF- NOTES* WALLS") << "the first named is shown, and current";
    EXPECT_TRUE(isIsolated(database()));
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYISO"));
    EXPECT_EQ(looks(), before);
    EXPECT_FALSE(isIsolated(database()));
    run(L"REDO\n");
    EXPECT_EQ(looks(), isolated);
    EXPECT_TRUE(isIsolated(database()));
    EXPECT_TRUE(contains(run(L"LAYUNISO\n"), L"Layers are as before LAYISO: 5 layers."));
    EXPECT_EQ(looks(), before);
    EXPECT_FALSE(isIsolated(database()));
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYUNISO"));
    EXPECT_EQ(looks(), isolated);
    EXPECT_TRUE(isIsolated(database()));
    run(L"REDO\n");
    EXPECT_TRUE(contains(run(L"LAYUNISO\n"), L"not isolated"));
    EXPECT_EQ(looks(), before);
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, PicksMeanTheLayerThatShowsTheObject) {
    run(L"LAYISO\n5,0\n\n");
    EXPECT_EQ(looks(), L"0- DOORS- LEAF* NOTES- WALLS-") << "in a block the object's own";
    run(L"LAYUNISO\nLAYISO\n5,1\n5,100\n\n");
    EXPECT_EQ(looks(), L"0- DOORS* LEAF- NOTES- WALLS") << "on layer 0 that of the reference";
    run(L"LAYUNISO\n");
    Selection& selection = selectionOf(database());
    selection.addAll();
    ASSERT_EQ(selection.objects().size(), 2U) << "the wall and the reference";
    EXPECT_TRUE(contains(run(L"LAYISO\n"), L"2 layers isolated; 2 others turned off, 1 was so already."));
    EXPECT_EQ(looks(), L"0- DOORS LEAF- NOTES- WALLS*") << "of a reference as a whole its own";
    EXPECT_TRUE(selection.isEmpty());
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, SettingsAreKept) {
    run(L"LAYISO\nSettings\nLock\nVpfreeze\n5,100\n\n");
    EXPECT_EQ(looks(), L"0+ DOORS+ LEAF+ NOTES+- WALLS*");
    run(L"LAYUNISO\nLAYISO\nNames\nDOORS\n");
    EXPECT_EQ(looks(), L"0+ DOORS* LEAF+ NOTES+- WALLS+") << "kept for the next time";
    run(L"LAYUNISO\nLAYOUT S Layout1\nMSPACE\nLAYISO\n5,0\n\n");
    EXPECT_EQ(looks(), L"0 DOORS LEAF* NOTES- WALLS");
    EXPECT_EQ(frozenInViewport(), L" 0 NOTES WALLS") << "not the reference's layer, which would hide it all";
    EXPECT_TRUE(
        contains(run(L"LAYISO\nNames\nWALLS\n"), L"2 others frozen in the viewport, 2 were so already."));
    EXPECT_EQ(frozenInViewport(), L" 0 DOORS LEAF NOTES") << "thawed where it was frozen";
    run(L"LAYUNISO\n");
    EXPECT_EQ(frozenInViewport(), L" 0 NOTES WALLS") << "before the second isolation";
    run(L"U\nU\nU\n");
    EXPECT_EQ(frozenInViewport(), L"");
    EXPECT_TRUE(contains(run(L"PSPACE\nLAYISO\nNames\nWALLS\n"), L"No floating viewport is current"));
    EXPECT_EQ(looks(), L"0- DOORS- LEAF- NOTES- WALLS*");
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, TwiceBringsBackWhatWasBeforeTheSecond) {
    run(L"LAYISO\nNames\nWALLS,DOORS\n");
    const std::wstring first = looks();
    EXPECT_TRUE(contains(run(L"LAYISO\nNames\nDOORS\n"), L"was isolated already"));
    run(L"LAYUNISO\n");
    EXPECT_EQ(looks(), first);
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, FrozenLayersFreezeAgain) {
    run(L"-LAYER F WALLS\n\nLAYISO\nNames\nWALLS\n");
    EXPECT_EQ(looks(), L"0- DOORS- LEAF- NOTES- WALLS*");
    run(L"LAYUNISO\n");
    EXPECT_EQ(looks(), L"0* DOORS LEAF NOTES- WALLS~") << "the layer of before is current again first";
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, WhatCannotBeRecordedIsNotIsolated) {
    const std::wstring before = looks();
    qputenv("TRIAL_ISOLATION", "record");
    EXPECT_EQ(failuresOf(L"LAYISO\nNames\nWALLS\n").size(), 1U);
    EXPECT_EQ(looks(), before);
    qunsetenv("TRIAL_ISOLATION");
    run(L"LAYISO\nNames\nWALLS\n");
    qputenv("TRIAL_ISOLATION", "record");
    const std::wstring isolated = looks();
    run(L"-LAYER ON DOORS\n\n");
    EXPECT_EQ(failuresOf(L"LAYISO\nNames\nDOORS\n").size(), 1U) << "an old record is none";
    EXPECT_TRUE(contains(looks(), L"WALLS*"));
    qputenv("TRIAL_ISOLATION", "restore");
    const Lines incomplete = failuresOf(L"LAYUNISO\n");
    ASSERT_EQ(incomplete.size(), 1U);
    EXPECT_TRUE(contains(incomplete[0], L"-LAYERSTATE Delete ends the isolation"));
    EXPECT_TRUE(contains(looks(), L"WALLS*")) << "the current layer stays";
    qunsetenv("TRIAL_ISOLATION");
    EXPECT_EQ(failuresOf(L"LAYISO\nNames\nNOSUCH*\n\n"), Lines{L"There is no layer that fits \"NOSUCH*\"."});
}

TEST_F(LayerIsolation, PicksInReferencesMeanTheLayersThatStandForThem) {
    SmallDrawing part;
    part.block("DOOR", part.line("0", 0, 2, 9, 2) + part.line("LEAF", 0, 3, 9, 3));
    part.model(part.line("WALLS", 0, 0, 9, 0) + part.line("0", 0, 1, 9, 1) +
               part.insert("DOOR", "DOORS", 0, 0));
    write("part.dxf", part.text());
    SmallDrawing host;
    host.useVersion("AC1027");
    host.xref("P", "part.dxf");
    host.model(host.insert("P", "REF", 0, 0) + host.line("WALLS", 0, 100, 9, 100));
    host.paper(host.viewport(1, 150, 100, 300, 150, 100) + host.viewport(2, 60, 100, 100, 5, 50));
    write("host.dxf", host.text());
    run(L"OPEN " + path("host.dxf") + L"\nZOOM E\n");
    ASSERT_EQ(looks(), L"0* REF WALLS P|DOORS P|LEAF P|WALLS");
    const std::wstring told = run(L"LAYISO\n5,0\n\n");
    EXPECT_TRUE(contains(told, L"Layer \"0\" stays current and as it is"))
        << "a reference's layer cannot be current";
    EXPECT_TRUE(contains(told, L"1 layer isolated; 4 others turned off."));
    EXPECT_EQ(looks(), L"0* REF- WALLS- P|DOORS- P|LEAF- P|WALLS");
    run(L"LAYUNISO\nLAYISO\n5,1\n\n");
    EXPECT_EQ(looks(), L"0- REF* WALLS- P|DOORS- P|LEAF- P|WALLS-") << "on layer 0 that of the reference";
    run(L"LAYUNISO\nLAYISO\n5,2\n\n");
    EXPECT_EQ(looks(), L"0* REF- WALLS- P|DOORS P|LEAF- P|WALLS-")
        << "of the block's reference in the drawing";
    run(L"LAYUNISO\nLAYOUT S Layout1\nMSPACE\nLAYISO\nSettings\nOff\nVpfreeze\n5,3\n\n");
    EXPECT_EQ(frozenInViewport(), L" WALLS P|WALLS") << "neither what is current nor what is around";
    run(L"LAYUNISO\n");
    EXPECT_EQ(frozenInViewport(), L"");
    EXPECT_EQ(failures, Lines());
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"P|WALLS"), HxDb::kForWrite);
        ASSERT_EQ(walls->erase(), Hx::eOk);
    }
    const Lines all = failuresOf(L"LAYISO\n5,0\n\n");
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(contains(all[0], L"reload the external reference"));
    EXPECT_FALSE(isIsolated(database()));
}

TEST_F(LayerIsolation, WhatIsHeldOpenIsTold) {
    const std::wstring before = looks();
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"DOORS"), HxDb::kForRead);
        EXPECT_TRUE(contains(refusalOf(L"LAYISO\nNames\nWALLS\n"),
                             L"1 layer could not be changed, the first is \"DOORS\""));
        EXPECT_EQ(looks(), L"0- DOORS LEAF- NOTES- WALLS*");
    }
    run(L"LAYUNISO\n-LAYER OFF WALLS\n\n");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"WALLS"), HxDb::kForRead);
        EXPECT_TRUE(contains(refusalOf(L"LAYISO\nNames\nWALLS,LEAF\n"), L"first is \"WALLS\" ("))
            << "one that stays, too";
    }
    run(L"LAYUNISO\n-LAYER ON WALLS\n\nLAYOUT S Layout1\nMSPACE\nLAYISO\nSettings\nOff\nVpfreeze\n\n");
    {
        const HxDbObjectPointer<HxDbViewport> held(hxedGetCurViewportObjectId(), HxDb::kForRead);
        EXPECT_TRUE(contains(refusalOf(L"LAYISO\nNames\nWALLS\n"), L"1 layer could not be changed"));
    }
    EXPECT_EQ(frozenInViewport(), L"");
    run(L"LAYUNISO\n");
    EXPECT_EQ(looks(), before);
}

TEST_F(LayerIsolation, GivingUpOrChoosingNothingChangesNothing) {
    const std::wstring before = looks();
    EXPECT_TRUE(contains(run(L"LAYISO\n500,500\n\n"), L"Nothing is there."));
    for (const wchar_t* const commands : {L"LAYISO\n5,100\n\x1B", L"LAYISO\nSettings\n\x1B",
                                          L"LAYISO\n5,100\nSettings\nOff\n\x1B", L"LAYISO\n\n"}) {
        const std::wstring told = run(commands);
        EXPECT_FALSE(contains(told, L"isolated;")) << toUtf8(told);
        EXPECT_FALSE(isIsolated(database()));
        EXPECT_EQ(looks(), before);
    }
    EXPECT_TRUE(contains(run(L"LAYISO\n\n"), L"No layer was chosen, so nothing was isolated."));
    EXPECT_TRUE(
        contains(run(L"LAYISO\nSettings\nLock\n\n\n"), L"viewport of a layout [Off/Vpfreeze] <Vpfreeze>:"));
    EXPECT_TRUE(contains(run(L"LAYISO\nSettings\n\n\n\n"), L"in model space [Off/Lock] <Lock>:"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, TheLayerOfBeforeIsCurrentAgainWhenItCanBe) {
    run(L"LAYISO\nNames\nWALLS\n-LAYER F 0\n\n");
    EXPECT_FALSE(contains(run(L"LAYUNISO\n"), L"stays current"));
    EXPECT_EQ(looks(), L"0* DOORS LEAF NOTES- WALLS") << "frozen meanwhile";
    run(L"-LAYER M SPARE\n\nLAYISO\nNames\nWALLS\n");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> spare(layer(L"SPARE"), HxDb::kForWrite);
        ASSERT_EQ(spare->erase(), Hx::eOk);
    }
    EXPECT_TRUE(contains(run(L"LAYUNISO\n"),
                         L"Layer \"WALLS\" stays current: \"SPARE\", which was before, is frozen or gone."));
    EXPECT_EQ(looks(), L"0 DOORS LEAF NOTES- WALLS*");
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, ComesBackAlsoWhereTheDrawingCannotSayWhereTheUserWas) {
    const std::wstring before = looks();
    qputenv("TRIAL_ISOLATION", "place");
    run(L"LAYISO\nNames\nWALLS\n");
    ASSERT_NE(looks(), before);
    qputenv("TRIAL_ISOLATION", "restore");
    EXPECT_TRUE(contains(run(L"LAYUNISO\n"), L"Layers are as before LAYISO"));
    EXPECT_EQ(looks(), before);
    EXPECT_FALSE(isIsolated(database()));
    run(L"LAYOUT\nSet\nLayout1\nMSPACE\n");
    qputenv("TRIAL_ISOLATION", "place");
    EXPECT_TRUE(contains(run(L"LAYISO\nSettings\nOff\nVpfreeze\nNames\nWALLS\n"),
                         L"cannot keep which viewport it was"));
    EXPECT_EQ(frozenInViewport(), L"");
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerIsolation, WithoutTheModuleNothingChanges) {
    run(L"LAYISO\nNames\nWALLS\n");
    const std::wstring isolated = looks();
    ASSERT_EQ(dynamicLinker().unloadModule(kModule), Hx::eOk);
    for (const wchar_t* const command : {L"LAYISO\n", L"LAYUNISO\n"}) {
        const Lines all = failuresOf(command);
        ASSERT_EQ(all.size(), 1U);
        EXPECT_TRUE(contains(all[0], L"HRX Load"));
    }
    EXPECT_EQ(looks(), isolated);
}

TEST_F(LayerIsolation, OldDrawingsAreRefused) {
    run(L"OPEN " + QString(KORVEX_SOURCE_DIR "/samples/small/r12.dxf").toStdWString() + L"\n");
    const std::wstring before = looks();
    const Lines all = failuresOf(L"LAYISO\n");
    ASSERT_EQ(all.size(), 1U);
    EXPECT_TRUE(contains(all[0], L"older than R13"));
    EXPECT_EQ(looks(), before);
    EXPECT_FALSE(database().isModified());
}

}  // namespace korvex::test
