// States in the drawing: what is written, what is left alone.
#include "tests/module/layer_states/layer_states_fixture.h"

using korvex::fromUtf8;
using namespace korvex::test;

namespace {

const std::string kHead = "100\nAcDbXrecord\n";

/// A state of one layer in the spelling that the module does not write.
std::string foreignState(const std::string& layerHandle) {
    return kHead + "280\n1\n91\n2047\n301\nfrom elsewhere\n290\n0\n302\nSPARE\n330\n" + layerHandle +
           "\n90\n12\n62\n3\n370\n25\n331\n16\n1\nColor_3\n92\n-1023475712\n440\n33554559\n";
}

class StorageTest : public LayerStatesTest {
protected:
    /// Two states by name, one by handle and two things that are none.
    void openWithStates() {
        SmallDrawing file = drawing();
        const std::string header = "91\n2047\n301\nby name\n290\n1\n302\nSPARE\n";
        file.state("B first",
                   kHead + header + "8\nWALLS\n90\n9\n62\n1\n370\n-3\n6\nContinuous\n2\nColor_1\n440\n0\n");
        file.state("A foreign", foreignState(file.layerHandle("WALLS")));
        file.state("thing", kHead + "1\nof somebody else\n");
        file.state("C last",
                   kHead + header + "8\nGONE\n90\n8\n62\n7\n370\n-3\n6\nDOTS\n2\nColor_7\n440\n0\n");
        file.state("holder", "", "ACDBPLACEHOLDER");
        openDrawing(file);
    }
};

}  // namespace

TEST_F(StorageTest, WritesTheGroupsOfAState) {
    openDrawing(drawing());
    change(L"WALLS", [](auto& l) {
        HxCmColor colour = HxCmColor::byRgb(200, 100, 50);
        colour.setNames(L"RAL 2001", L"RAL CLASSIC");
        l.setColor(colour);
        l.setTransparency(HxCmTransparency(0));
        l.setIsOff(true);
    });
    change(L"NOTES", [](auto& l) {
        l.setColor(HxCmColor::byRgb(1, 2, 3));
        l.setLineWeight(static_cast<HxDb::LineWeight>(50));
    });
    saveState(L"evening", L"all lights");
    const HxCmColor walls = HxCmColor::byRgb(200, 100, 50);
    EXPECT_EQ(groupsOf(recordOf(L"EVENING")),
              L"91 2047\n301 all lights\n290 0\n302 SPARE\n"
              L"8 0\n90 8\n62 7\n370 -3\n6 Continuous\n2 Color_7\n440 0\n"
              L"8 NOTES\n90 8\n62 " +
                  std::to_wstring(HxCmColor::byRgb(1, 2, 3).colorIndex()) + L"\n370 50\n6 Continuous\n2 " +
                  now(L"NOTES").plotStyle +
                  L"\n92 197121\n440 0\n"
                  L"8 SPARE\n90 8\n62 7\n370 -3\n6 Continuous\n2 Color_7\n440 0\n"
                  L"8 VIEWS\n90 8\n62 7\n370 -3\n6 Continuous\n2 Color_7\n440 0\n"
                  L"8 WALLS\n90 9\n62 " +
                  std::to_wstring(walls.colorIndex()) + L"\n370 -3\n6 Continuous\n2 " +
                  now(L"WALLS").plotStyle + L"\n92 " + std::to_wstring(0x3264C8) +
                  L"\n300 RAL CLASSIC$RAL 2001\n440 33554432\n");
    const auto again = engine();
    const HxLyStateEntry* const entry = entryOf(again->states(), again->states().at(0), L"WALLS");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(hxlyDifferences(*entry, now(L"WALLS"), HxLyState::kAllProperties), 0);
    EXPECT_EQ(entry->transparency, 0);
    EXPECT_EQ(entry->colorBook, L"RAL CLASSIC$RAL 2001");
}

TEST_F(StorageTest, ReadsBothSpellingsInTheDrawingsOrder) {
    openWithStates();
    const auto states = engine();
    KvLayerStateMap& map = states->states();
    ASSERT_EQ(map.size(), 3U);
    EXPECT_EQ(map.at(0)->GetLayerStateName(), L"B first");
    EXPECT_EQ(map.at(1)->GetLayerStateName(), L"A foreign");
    EXPECT_EQ(map.at(2)->GetLayerStateName(), L"C last");
    EXPECT_FALSE(map.hasReadEntries(map.at(1)));
    EXPECT_EQ(map.at(1)->GetDescription(), L"from elsewhere");
    const HxLyStateEntry* const entry = entryOf(map, map.at(1), L"WALLS");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->flags, 12);
    EXPECT_EQ(entry->colorIndex, 3);
    EXPECT_EQ(entry->trueColor, 0x0000FF) << "red in the low byte";
    EXPECT_EQ(entry->linetype, L"Continuous");
    EXPECT_EQ(entry->plotStyle, L"Color_3");
    EXPECT_EQ(entry->transparency, 127);
    EXPECT_NE(entryOf(map, map.at(2), L"GONE"), nullptr) << "a layer that the drawing lacks";
    EXPECT_EQ(map.find(L"a FOREIGN"), map.at(1));
}

TEST_F(StorageTest, LookingChangesNothing) {
    openDrawing(drawing());
    {
        const auto states = engine();
        EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
        EXPECT_EQ(states->written().changed, 0);
    }
    EXPECT_TRUE(layerStatesDictionary(&database(), false).isNull());
    EXPECT_FALSE(database().isModified());
    openWithStates();
    const std::string before = fileNow();
    const auto states = engine();
    for (std::size_t i = 0; i < states->states().size(); ++i) {
        states->states().entries(states->states().at(i));
        states->IsSameAsDWG(states->states().at(i));
    }
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(states->written().changed, 0);
    EXPECT_FALSE(database().isModified());
    EXPECT_EQ(fileNow(), before);
}

TEST_F(StorageTest, WritesWhatChangedAndNothingElse) {
    openWithStates();
    const HxDbObjectId first = recordOf(L"B first");
    const HxDbObjectId foreign = recordOf(L"A foreign");
    const std::wstring foreignGroups = groupsOf(foreign);
    hxdbRegApp(L"SOMEBODY");
    {
        const HxDbObjectPointer<HxDbObject> record(first, HxDb::kForWrite);
        resbuf* const data = hxutBuildList(1001, L"SOMEBODY", 1000, L"stays", 0);
        ASSERT_EQ(record->setXData(data), Hx::eOk);
        hxutRelRb(data);
    }
    const auto states = engine();
    KvLayerStateMap& map = states->states();
    map.at(0)->SetDescription(L"changed");
    map.at(1)->SetLayerStateName(L"C last");
    map.at(2)->SetLayerStateName(L"A foreign");
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(states->written().changed, 3);
    EXPECT_EQ(recordOf(L"B first"), first);
    EXPECT_TRUE(contains(groupsOf(first), L"301 changed\n"));
    EXPECT_TRUE(contains(groupsOf(first), L"8 WALLS\n90 9\n62 1\n"));
    {
        const HxDbObjectPointer<HxDbObject> record(first, HxDb::kForRead);
        resbuf* const data = record->xData(L"SOMEBODY");
        EXPECT_NE(data, nullptr) << "extended data stays";
        hxutRelRb(data);
    }
    EXPECT_EQ(recordOf(L"C last"), foreign) << "names exchanged";
    EXPECT_EQ(groupsOf(foreign), foreignGroups);
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(states->written().changed, 0) << "written once";

    map.entries(map.at(1))->GetAt(0)->SetLayerFlag(1);
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(states->written().changed, 1);
    EXPECT_TRUE(
        contains(groupsOf(foreign), L"8 WALLS\n90 1\n62 3\n370 25\n6 Continuous\n2 Color_3\n92 255\n"))
        << "a changed state is written by name";
    run(L"U\n");
    EXPECT_EQ(groupsOf(foreign), foreignGroups);

    KvLayerStateInfoArray* const entries = map.entries(map.at(0));
    delete entries->GetAt(0);
    entries->RemoveAt(0);
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_FALSE(contains(groupsOf(first), L"\n8 ")) << "a layer was taken out";
}

TEST_F(StorageTest, RemovesStatesAndKeepsWhatIsNone) {
    openWithStates();
    const auto states = engine();
    KvLayerStateMap& map = states->states();
    EXPECT_TRUE(states->removeLayerState(map.at(1)));
    EXPECT_TRUE(states->removeLayerState(map.find(L"C last")));
    EXPECT_FALSE(states->removeLayerState(nullptr));
    ASSERT_NE(states->CmdNew(L"a foreign", L"made anew"), nullptr);
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_FALSE(recordOf(L"thing").isNull());
    EXPECT_FALSE(recordOf(L"holder").isNull());
    const auto again = engine();
    ASSERT_EQ(again->states().size(), 2U);
    EXPECT_TRUE(recordOf(L"C last").isNull());
    EXPECT_EQ(again->states().at(1)->GetDescription(), L"made anew");
    run(L"U\n");
    EXPECT_EQ(engine()->states().at(1)->GetDescription(), L"from elsewhere");
}

TEST_F(StorageTest, ReplacesAStateInItsPlace) {
    openWithStates();
    const HxDbObjectId last = recordOf(L"C last");
    const auto states = engine();
    auto* const replacement = new CKvLayerState;
    replacement->SetLayerStateName(L"c LAST");
    replacement->SetDescription(L"imported");
    auto* const entries = new KvLayerStateInfoArray;
    entries->Add(new CKvLayerStateInfo);
    (*entries)[0]->SetLayerName(L"WALLS");
    EXPECT_TRUE(states->OverwriteLayerState(states->states().at(2), replacement, entries));
    EXPECT_FALSE(states->OverwriteLayerState(nullptr, new CKvLayerState, new KvLayerStateInfoArray));
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(recordOf(L"c last"), last);
    const auto again = engine();
    ASSERT_EQ(again->states().size(), 3U);
    EXPECT_EQ(again->states().at(2)->GetLayerStateName(), L"c LAST");
    EXPECT_EQ(again->states().at(2)->GetDescription(), L"imported");
    EXPECT_EQ(again->states().entries(again->states().at(2))->GetSize(), 1);
}

TEST_F(StorageTest, LeavesOutLayersWhosePlotStyleTheDrawingLacks) {
    SmallDrawing styled = drawing();
    styled.useNamedPlotStyles();
    openDrawing(styled);
    const auto states = engine();
    CKvLayerState* const state = states->CmdNew(L"plan", L"");
    for (CKvLayerStateInfo* const entry : *states->states().entries(state)) {
        if (entry->GetLayerName() == L"WALLS") entry->SetPlotStyle(L"Unknown");
        if (entry->GetLayerName() == L"NOTES") entry->SetPlotStyle(L"screened");
    }
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    const auto again = engine();
    EXPECT_EQ(entryOf(again->states(), again->states().at(0), L"WALLS"), nullptr);
    ASSERT_NE(entryOf(again->states(), again->states().at(0), L"NOTES"), nullptr);
    EXPECT_EQ(entryOf(again->states(), again->states().at(0), L"NOTES")->plotStyle, L"Screened");
    EXPECT_EQ(entryOf(again->states(), again->states().at(0), L"0")->plotStyle, L"Normal");
}

TEST_F(StorageTest, ListsStatesOfReferencesAndNeverWritesThem) {
    SmallDrawing plan = drawing();
    plan.state("there",
               kHead + "91\n7\n301\n\n290\n0\n302\nWALLS\n8\nWALLS\n90\n9\n62\n1\n370\n-3\n6\nContinuous\n"
                       "2\nColor_1\n440\n0\n");
    write("plan.dxf", plan.text());
    SmallDrawing host = drawing();
    host.xref("PLAN", "plan.dxf");
    host.xref("LOST", "not there.dxf");
    host.model(host.insert("PLAN", "WALLS", 0, 0));
    openDrawing(host);
    const auto states = engine();
    states->LoadXrefLayerState(&database());
    KvLayerStateMap& map = states->states();
    ASSERT_EQ(map.size(), 1U);
    EXPECT_EQ(map.at(0)->GetLayerStateName(), L"PLAN_there");
    EXPECT_EQ(map.at(0)->GetSpace(), 2);
    EXPECT_EQ(map.at(0)->GetCurrentLayerName(), L"PLAN|WALLS");
    EXPECT_EQ(map.at(0)->GetLayerStateMake(), 7);
    ASSERT_NE(entryOf(map, map.at(0), L"PLAN|WALLS"), nullptr);
    EXPECT_EQ(map.entries(map.at(0))->GetAt(0)->GetCurrentLayer(), 1);
    EXPECT_FALSE(states->removeLayerState(map.at(0)));
    EXPECT_FALSE(states->SaveasLayerState(map.at(0)));
    states->CmdNew(L"here", L"");
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_TRUE(recordOf(L"PLAN_there").isNull());
    EXPECT_FALSE(recordOf(L"here").isNull());

    CKvLayerStateManDlg::m_bNoDisplayXrefChecked = 1;
    const auto without = engine();
    without->LoadXrefLayerState(&database());
    EXPECT_EQ(without->states().size(), 1U);
    CKvLayerStateManDlg::m_bNoDisplayXrefChecked = 0;
}

TEST_F(StorageTest, ConvertsStatesOfEarlierVersionsOnce) {
    SmallDrawing old = drawing();
    old.application("LMAN");
    old.layer("WALLS",
              "1001\nLMAN\n1000\nA\n1000\nfrom long ago\n1070\n9\n1070\n5\n1070\n25\n1071\n255\n1005\n16\n"
              "1000\nB\n1070\n12\n1070\n3\n");
    old.layer("NOTES", "1001\nLMAN\n1000\na\n1070\n8\n1070\n2\n1070\n-3\n");
    old.state("LMAN_A", kHead + "91\n2047\n");
    openDrawing(old);
    const auto states = engine();
    KvLayerStateMap& map = states->states();
    ASSERT_EQ(map.size(), 3U);
    const CKvLayerState* const converted = map.find(L"LMAN_A(1)");
    ASSERT_NE(converted, nullptr);
    EXPECT_EQ(converted->GetLayerStateMake(), 1023);
    EXPECT_EQ(converted->GetSpace(), 0);
    EXPECT_EQ(converted->GetDescription(), L"from long ago");
    EXPECT_EQ(map.entries(converted)->GetSize(), 2);
    const HxLyStateEntry* const walls = entryOf(map, converted, L"WALLS");
    ASSERT_NE(walls, nullptr);
    EXPECT_EQ(walls->flags, 9);
    EXPECT_EQ(walls->colorIndex, 5);
    EXPECT_EQ(walls->lineweight, 25);
    EXPECT_EQ(walls->trueColor, 255);
    EXPECT_EQ(walls->linetype, L"Continuous");
    ASSERT_NE(map.find(L"LMAN_B"), nullptr);

    EXPECT_TRUE(states->removeLayerState(map.find(L"LMAN_B")));
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_FALSE(contains(fromUtf8(fileNow()), L"from long ago\n1070")) << "off the layers";
    const auto again = engine();
    EXPECT_EQ(again->states().size(), 2U);
    EXPECT_NE(again->states().find(L"LMAN_A(1)"), nullptr);
    EXPECT_EQ(again->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(again->written().changed, 0);
    run(L"U\n");
    EXPECT_EQ(engine()->states().size(), 3U) << "one step takes all of it back";
}

TEST_F(StorageTest, ConvertsPlotStylesAndTriesAgainWhereALayerIsHeld) {
    SmallDrawing old = drawing();
    old.useNamedPlotStyles();
    old.application("LMAN");
    old.layer("WALLS", "1001\nLMAN\n1000\nA\n1070\n9\n1005\n16\n1005\nD\n");
    old.layer("NOTES", "1001\nLMAN\n1000\nA\n1070\n9\n1005\nFFF\n1005\n2\n");
    openDrawing(old);
    const auto states = engine();
    const CKvLayerState* const converted = states->states().at(0);
    EXPECT_EQ(entryOf(states->states(), converted, L"WALLS")->plotStyle, L"Screened");
    EXPECT_EQ(entryOf(states->states(), converted, L"NOTES")->plotStyle, L"") << "no plot style's handle";
    EXPECT_EQ(entryOf(states->states(), converted, L"NOTES")->linetype, L"");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> reader(layer(L"NOTES"), HxDb::kForRead);
        EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 0);
    }
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    EXPECT_EQ(engine()->states().size(), 1U);
}

TEST_F(StorageTest, RefusesDrawingsWithoutDictionaries) {
    write("old.dxf",
          "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n0\nTABLE\n2\n"
          "LAYER\n70\n1\n0\nLAYER\n2\nWALLS\n70\n0\n62\n7\n6\nCONTINUOUS\n0\nENDTAB\n0\nENDSEC\n0\nSECTION\n"
          "2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    open("old.dxf");
    const auto states = engine();
    ASSERT_NE(states->CmdNew(L"plan", L""), nullptr);
    EXPECT_EQ(states->BuildLayerStateExtensionDictionary(), 0);
    EXPECT_FALSE(database().isModified());
}
