// From states to layers.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "layer_states/restore/restore_summary.h"

#include "sdk/hxdbtransaction.h"

using korvex::toUtf8;
using namespace korvex::test;

namespace {

class RestoreTest : public LayerStatesTest {
protected:
    ~RestoreTest() override {
        CKvLayerStateManDlg::m_bCloseNoFindChecked = 0;
        CKvLayerStateManDlg::m_bViewportReplaceChecked = 0;
    }
    static constexpr int kAll = HxLyState::kAllProperties;

    void openStyled() {
        SmallDrawing styled = drawing();
        styled.useNamedPlotStyles();
        openDrawing(styled);
    }
    /// Makes a layer different in everything.
    void changeEverything(const wchar_t* name) {
        change(name, [](auto& l) {
            l.setIsOff(!l.isOff());
            l.setIsFrozen(!l.isFrozen());
            l.setIsLocked(!l.isLocked());
            l.setVPDFLT(!l.VPDFLT());
            l.setIsPlottable(!l.isPlottable());
            l.setColor(HxCmColor::byRgb(9, 8, 7));
            l.setLinetypeObjectId(otherLinetype(l));
            l.setLineWeight(static_cast<HxDb::LineWeight>(70));
            l.setPlotStyleName(L"Screened");
            l.setTransparency(HxCmTransparency(40));
        });
    }
    static HxDbObjectId otherLinetype(const HxDbLayerTableRecord& l) {
        const HxDbObjectPointer<HxDbLinetypeTable> table(l.database()->linetypeTableId(), HxDb::kForRead);
        HxDbObjectId id = l.database()->continuousLinetype();
        table->getAt(L"DASHES", id);
        return id;
    }
    void addLinetype() {
        const HxDbObjectPointer<HxDbLinetypeTable> table(database().linetypeTableId(), HxDb::kForWrite);
        auto* const record = new HxDbLinetypeTableRecord;
        record->setName(L"DASHES");
        ASSERT_EQ(table->add(record), Hx::eOk);
        record->close();
    }
    /// A layer as a new one has it.
    void restoreDefaults(const wchar_t* name) {
        change(name, [this](auto& l) {
            l.setIsOff(false);
            l.setIsLocked(false);
            l.setVPDFLT(false);
            l.setIsPlottable(true);
            l.setColor(HxCmColor());
            l.setLinetypeObjectId(database().continuousLinetype());
            l.setLineWeight(HxDb::kLnWtByLwDefault);
            l.setPlotStyleName(L"Normal");
            l.setTransparency(HxCmTransparency());
        });
    }
    static std::wstring frozenNames(HxDbObjectId viewportId) {
        const HxDbObjectPointer<HxDbViewport> viewport(viewportId, HxDb::kForRead);
        HxArray<HxDbObjectId> ids;
        viewport->getFrozenLayers(ids);
        std::wstring names;
        for (const HxDbObjectId& id : ids) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
            names += std::wstring(record->name()) + L" ";
        }
        return names;
    }
    /// Restores a state of the drawing with a mask.
    bool restore(const wchar_t* name, std::int32_t mask, HxDbObjectId viewport = {}) {
        m_engine = engine();
        CKvLayerState* const state = m_engine->states().find(name);
        return state && m_engine->restoreLayerState(*state, mask, viewport);
    }
    const KvRestoreResult& result() { return m_engine->restored(); }

    std::unique_ptr<CKvLayerStateManDlg> m_engine;
};

}  // namespace

TEST_F(RestoreTest, EachBitOfTheMaskRestoresItsPropertyOnly) {
    openStyled();
    addLinetype();
    saveState(L"before");
    const HxLyStateEntry before = now(L"WALLS");
    for (int bit = 1; bit <= HxLyState::kTransparency; bit <<= 1) {
        if (bit == HxLyState::kCurrentViewportFrozen) continue;
        changeEverything(L"WALLS");
        const HxLyStateEntry changed = now(L"WALLS");
        ASSERT_EQ(hxlyDifferences(before, changed, kAll), kAll & ~HxLyState::kCurrentViewportFrozen);
        ASSERT_TRUE(restore(L"before", bit));
        EXPECT_EQ(hxlyDifferences(changed, now(L"WALLS"), kAll), bit) << bit;
        EXPECT_EQ(hxlyDifferences(before, now(L"WALLS"), bit), 0) << bit;
        ASSERT_TRUE(restore(L"before", kAll));
        EXPECT_EQ(hxlyDifferences(before, now(L"WALLS"), kAll), 0) << bit;
        EXPECT_EQ(result().changed, 1) << "the other layers are as they were";
        EXPECT_TRUE(result().refused.isEmpty()) << restoreSummary(result()).toStdString();
    }
}

TEST_F(RestoreTest, IsOneUndoStepAndLeavesNothingBehind) {
    openDrawing(drawing());
    saveState(L"before");
    changeEverything(L"WALLS");
    run(L"-LAYER\nOFF\nNOTES\n\n");
    const std::string before = fileNow();
    ASSERT_TRUE(restore(L"before", kAll));
    EXPECT_EQ(m_engine->isRestore(), 1);
    EXPECT_EQ(m_engine->restoredName(), L"before");
    EXPECT_EQ(result().layers, 5);
    EXPECT_EQ(result().changed, 2);
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"before"), 1);
    EXPECT_TRUE(contains(run(L"U\n"), L"Restore layer state before"));
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"before"), 1) << "the engine is not told of the undo";
    m_engine->layersChanged();
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"before"), 0);
    EXPECT_EQ(fileNow(), before);
}

TEST_F(RestoreTest, WhatIsTheSameIsNotTouched) {
    openDrawing(drawing());
    saveState(L"before");
    saveAs(database(), path("states.dxf"));
    ASSERT_FALSE(database().isModified());
    ASSERT_TRUE(restore(L"before", kAll));
    EXPECT_EQ(result().changed, 0);
    EXPECT_FALSE(database().isModified());
}

TEST_F(RestoreTest, TheCurrentLayerStaysThawed) {
    openDrawing(drawing());
    run(L"-LAYER\nFreeze\nWALLS\n\n");
    saveState(L"frozen");
    run(L"-LAYER\nThaw\nWALLS\nSet\nWALLS\nFreeze\nNOTES\n\n");
    ASSERT_TRUE(restore(L"frozen", kAll));
    EXPECT_EQ(now(L"WALLS").flags, HxLyState::kLayerPlots);
    EXPECT_EQ(now(L"NOTES").flags, HxLyState::kLayerPlots);
    EXPECT_EQ(currentLayer(), L"SPARE") << "the state's current layer is current again";
    EXPECT_TRUE(result().refused.isEmpty());
    run(L"-LAYER\nSet\n0\nFreeze\nSPARE\n\n");
    ASSERT_TRUE(restore(L"frozen", HxLyState::kColor));
    EXPECT_EQ(currentLayer(), L"0") << "a frozen layer cannot be";
}

TEST_F(RestoreTest, MakesLayersAndLinetypesThatTheDrawingLacks) {
    openDrawing(drawing());
    const auto states = engine();
    auto* const state = new CKvLayerState;
    state->SetLayerStateName(L"more");
    auto* const entries = new KvLayerStateInfoArray;
    HxLyStateEntry fresh;
    fresh.layer = L"FRESH";
    fresh.flags = HxLyState::kLayerOff | HxLyState::kLayerFrozen | HxLyState::kLayerLocked;
    fresh.trueColor = 0x030201;
    fresh.linetype = L"DOTTED";
    fresh.lineweight = 30;
    fresh.transparency = 90;
    HxLyStateEntry walls = now(L"WALLS");
    walls.layer = L"walls";
    walls.colorIndex = 5;
    walls.linetype = L"bad|linetype*";
    HxLyStateEntry notes = now(L"NOTES");
    notes.linetype.clear();
    notes.plotStyle.clear();
    HxLyStateEntry ofReference;
    ofReference.layer = L"PLAN|WALLS";
    for (const HxLyStateEntry& entry : {fresh, walls, notes, ofReference}) {
        entries->Add(new CKvLayerStateInfo(entry, entries->GetSize(), false));
    }
    states->AddLayerState(state, entries);
    ASSERT_TRUE(states->CmdRestore(L"MORE", {}));
    EXPECT_EQ(hxlyDifferences(now(L"FRESH"), fresh, kAll & ~HxLyState::kPlotStyle), 0);
    EXPECT_EQ(now(L"FRESH").linetype, L"DOTTED");
    EXPECT_FALSE(hasLayer(L"PLAN|WALLS"));
    EXPECT_EQ(now(L"WALLS").colorIndex, 5);
    EXPECT_EQ(now(L"WALLS").linetype, L"Continuous") << "for a name that no linetype can have";
    EXPECT_EQ(now(L"NOTES").linetype, L"Continuous");
    EXPECT_EQ(states->restored().made, 1);
    EXPECT_EQ(restoreSummary(states->restored()), "1 of 4 layers could not be changed: \"PLAN|WALLS\"");
    const HxDbObjectPointer<HxDbLinetypeTableRecord> made(linetype(L"DOTTED"), HxDb::kForRead);
    EXPECT_EQ(made->comments(), L"Solid line");
    EXPECT_EQ(made->numDashes(), 0);

    state->SetLayerStateMake(HxLyState::kColor);
    run(L"U\n");
    EXPECT_FALSE(hasLayer(L"FRESH"));
    EXPECT_TRUE(linetype(L"DOTTED").isNull() || linetype(L"DOTTED").isErased());
    ASSERT_TRUE(states->CmdRestore(L"more", {}));
    EXPECT_EQ(now(L"FRESH").flags, HxLyState::kLayerPlots) << "as the mask allows";
    EXPECT_EQ(now(L"FRESH").linetype, L"Continuous");
    EXPECT_EQ(now(L"FRESH").trueColor, 0x030201);
}

TEST_F(RestoreTest, InALayoutFreezesInTheViewportOnly) {
    openDrawing(drawing());
    goToLayout();
    const HxDbObjectId viewport = hxdbGetCurVportId(&database());
    inViewport(L"Freeze", L"NOTES");
    change(L"WALLS", [](auto& l) {
        l.setIsLocked(true);
        l.setVPDFLT(true);
        l.setIsOff(true);
        l.setIsFrozen(true);
    });
    saveState(L"viewport");
    const std::string file = fileNow();
    inViewport(L"Thaw", L"NOTES");
    inViewport(L"Freeze", L"WALLS");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> views(layer(L"VIEWS"), HxDb::kForWrite);
        views->setIsLocked(true);
    }
    ASSERT_TRUE(restore(L"viewport", HxLyState::kCurrentViewportFrozen));
    EXPECT_EQ(frozenNames(viewport), L"NOTES ");
    EXPECT_EQ(result().changed, 0) << "no layer's record";
    EXPECT_TRUE(result().refused.isEmpty());
    EXPECT_EQ(now(L"VIEWS").flags & HxLyState::kLayerLocked, HxLyState::kLayerLocked);

    change(L"WALLS", [](auto& l) {
        l.setIsLocked(false);
        l.setVPDFLT(false);
        l.setIsOff(false);
        l.setIsFrozen(false);
        l.setColor(HxCmColor::byIndex(3));
    });
    ASSERT_TRUE(restore(L"viewport", kAll));
    EXPECT_EQ(now(L"WALLS").flags,
              HxLyState::kLayerPlots | HxLyState::kLayerLocked | HxLyState::kLayerNewViewportFrozen);
    EXPECT_EQ(now(L"WALLS").colorIndex, 7);
    EXPECT_EQ(now(L"VIEWS").flags & HxLyState::kLayerLocked, HxLyState::kLayerLocked)
        << "locks are set, but not taken away";
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"viewport"), 1);
    run(L"LAYOUT\nSet\nModel\n");
    EXPECT_EQ(engine()->FindLayerStateSameAsDwg(L"viewport"), 0) << "off and frozen count in model space";
}

TEST_F(RestoreTest, TellsLayersThatAViewportInUseDoesNotTake) {
    openDrawing(drawing());
    goToLayout();
    inViewport(L"Freeze", L"NOTES");
    saveState(L"viewport");
    inViewport(L"Thaw", L"NOTES");
    inViewport(L"Freeze", L"WALLS");
    run(L"-LAYER\nLOck\nVIEWS\n\n");
    const HxDbObjectPointer<HxDbViewport> reader(hxdbGetCurVportId(&database()), HxDb::kForRead);
    ASSERT_TRUE(restore(L"viewport", HxLyState::kCurrentViewportFrozen));
    EXPECT_EQ(restoreSummary(result()), "2 of 5 layers could not be changed: \"NOTES\", \"WALLS\"");
    EXPECT_EQ(now(L"VIEWS").flags & HxLyState::kLayerLocked, HxLyState::kLayerLocked) << "locked again";
    run(L"-LAYER\nUnlock\nVIEWS\n\n");
    ASSERT_TRUE(restore(L"viewport", HxLyState::kCurrentViewportFrozen));
    EXPECT_EQ(now(L"VIEWS").flags & HxLyState::kLayerLocked, 0) << "it was not locked";
}

TEST_F(RestoreTest, GivesViewportOverridesInstead) {
    openStyled();
    addLinetype();
    changeEverything(L"WALLS");
    change(L"WALLS", [](auto& l) { l.setIsFrozen(false); });
    saveState(L"other");
    restoreDefaults(L"WALLS");
    const HxLyStateEntry own = now(L"WALLS");
    goToLayout();
    const HxDbObjectId viewport = hxdbGetCurVportId(&database());
    CKvLayerStateManDlg::m_bViewportReplaceChecked = 1;
    ASSERT_TRUE(restore(L"other", kAll));
    const int overridable = HxLyState::kColor | HxLyState::kLinetype | HxLyState::kLineweight |
                            HxLyState::kTransparency | HxLyState::kPlotStyle;
    const HxLyStateEntry wanted = *entryOf(m_engine->states(), m_engine->states().at(0), L"WALLS");
    EXPECT_EQ(hxlyDifferences(own, now(L"WALLS"), overridable), 0) << "the layer keeps its values";
    EXPECT_EQ(hxlyDifferences(wanted, now(L"WALLS", viewport), overridable), 0);
    EXPECT_EQ(hxlyDifferences(own, now(L"WALLS", viewport), overridable), overridable);
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"other"), 1) << "as the viewport shows it";
    run(L"LAYOUT\nSet\nModel\n");
    ASSERT_TRUE(restore(L"other", kAll));
    EXPECT_EQ(hxlyDifferences(wanted, now(L"WALLS"), overridable), 0) << "model space has no viewport";
}

TEST_F(RestoreTest, TurnsOffWhatTheStateDoesNotName) {
    openDrawing(drawing());
    const auto states = engine();
    CKvLayerState* const state = states->CmdNew(L"few", L"");
    KvLayerStateInfoArray* const entries = new KvLayerStateInfoArray;
    entries->Add(new CKvLayerStateInfo(now(L"WALLS"), 0, false));
    (*entries)[0]->SetLayerName(L"walls");
    states->states().replaceEntries(state, entries);
    ASSERT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    ASSERT_TRUE(restore(L"few", kAll));
    EXPECT_EQ(now(L"NOTES").flags & HxLyState::kLayerOff, 0);
    CKvLayerStateManDlg::m_bCloseNoFindChecked = 1;
    ASSERT_TRUE(restore(L"few", HxLyState::kColor));
    EXPECT_EQ(now(L"WALLS").flags & HxLyState::kLayerOff, 0);
    for (const wchar_t* const other : {L"0", L"NOTES", L"SPARE", L"VIEWS"}) {
        EXPECT_EQ(now(other).flags & HxLyState::kLayerOff, HxLyState::kLayerOff) << toUtf8(other);
    }
}

TEST_F(RestoreTest, LeavesOutWhatTheVersionCannotHold) {
    SmallDrawing old = drawing();
    old.useVersion("AC1015");
    openDrawing(old);
    const auto states = engine();
    CKvLayerState* const state = states->CmdNew(L"plan", L"");
    for (CKvLayerStateInfo* const entry : *states->states().entries(state)) {
        if (entry->GetLayerName() != L"WALLS") continue;
        entry->SetRGBColor(0x112233);
        entry->SetLayerFlag(HxLyState::kLayerLocked);
        entry->SetLineWeight(25);
    }
    ASSERT_TRUE(states->CmdRestore(L"plan", {}));
    EXPECT_EQ(now(L"WALLS").flags, HxLyState::kLayerLocked);
    EXPECT_EQ(now(L"WALLS").lineweight, 25);
    EXPECT_EQ(now(L"WALLS").trueColor, -1);
    EXPECT_EQ(restoreSummary(states->restored()), "");
}

TEST_F(RestoreTest, WorksInsideATransactionAndTellsWhatRefuses) {
    openDrawing(drawing());
    saveState(L"before");
    changeEverything(L"WALLS");
    changeEverything(L"NOTES");
    HxDbTransactionManager* const transactions = database().transactionManager();
    transactions->startTransaction();
    HxDbObject* held = nullptr;
    transactions->getObject(held, layer(L"WALLS"), HxDb::kForRead);
    ASSERT_TRUE(restore(L"before", kAll));
    EXPECT_TRUE(result().refused.isEmpty()) << "a record that the transaction holds";
    transactions->endTransaction();
    EXPECT_EQ(now(L"WALLS").flags, HxLyState::kLayerPlots);

    changeEverything(L"WALLS");
    changeEverything(L"NOTES");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> reader(layer(L"NOTES"), HxDb::kForRead);
        ASSERT_TRUE(restore(L"before", kAll));
    }
    EXPECT_EQ(now(L"WALLS").flags, HxLyState::kLayerPlots);
    EXPECT_EQ(restoreSummary(result()), "1 of 5 layers could not be changed: \"NOTES\"");
    EXPECT_EQ(m_engine->FindLayerStateSameAsDwg(L"before"), 0);
}

TEST_F(RestoreTest, TellsLayersThatTakeNotEverything) {
    openStyled();
    const auto states = engine();
    CKvLayerState* const state = states->CmdNew(L"odd", L"");
    for (CKvLayerStateInfo* const entry : *states->states().entries(state)) {
        if (entry->GetLayerName() == L"0") entry->SetColorIndex(300);
        if (entry->GetLayerName() == L"NOTES") entry->SetLineWeight(26);
        if (entry->GetLayerName() == L"WALLS") entry->SetPlotStyle(L"Unknown");
        entry->SetTransparency(99);
    }
    ASSERT_TRUE(states->CmdRestore(L"odd", {}));
    EXPECT_EQ(restoreFailures(states->restored()), L"0 NOTES WALLS ");
    for (const wchar_t* const name : {L"0", L"NOTES", L"WALLS"}) {
        EXPECT_EQ(now(name).transparency, 99) << "the rest is given " << toUtf8(name);
    }
}

TEST_F(RestoreTest, NothingIsRestoredFromNothing) {
    openDrawing(drawing());
    const auto states = engine();
    EXPECT_FALSE(states->CmdRestore(L"none", {}));
    EXPECT_FALSE(states->AddLayerState(nullptr, new KvLayerStateInfoArray));
    states->AddLayerState(new CKvLayerState, nullptr);
    EXPECT_FALSE(states->CmdRestore(L"", {})) << "a state without entries";
    CKvLayerState* const locked = states->CmdNew(L"locked", L"");
    locked->LayerStateCannotRestore();
    EXPECT_FALSE(states->CmdRestore(L"locked", {}));
    EXPECT_EQ(states->isRestore(), 0);
    EXPECT_FALSE(database().isModified());
}

TEST_F(RestoreTest, ComparesByColourBookKeyThenColour) {
    openDrawing(drawing());
    HxCmColor book = HxCmColor::byRgb(200, 100, 50);
    book.setNames(L"RAL 2001", L"RAL CLASSIC");
    change(L"WALLS", [&](auto& l) { l.setColor(book); });
    saveState(L"book");
    EXPECT_EQ(engine()->FindLayerStateSameAsDwg(L"book"), 1);
    book.setNames(L"RAL 2002", L"RAL CLASSIC");
    change(L"WALLS", [&](auto& l) { l.setColor(book); });
    EXPECT_EQ(engine()->FindLayerStateSameAsDwg(L"book"), 0);
    const auto states = engine();
    states->states().at(0)->SetLayerStateMake(kAll & ~HxLyState::kColor);
    EXPECT_EQ(states->FindLayerStateSameAsDwg(L"book"), 1) << "outside the mask";
    run(L"-LAYER\nNew\nmore\n\n");
    states->layersChanged();
    EXPECT_EQ(states->FindLayerStateSameAsDwg(L"book"), 1) << "layers that the state does not name";
    ASSERT_TRUE(restore(L"book", kAll));
    EXPECT_EQ(now(L"WALLS").colorBook, L"RAL CLASSIC$RAL 2001");
}
