// Recording how layers are, and bringing them back, by the functions that the host calls.
#include "tests/module/layer_states/layer_states_fixture.h"

#include "sdk/hxdbtransaction.h"

namespace korvex::test {
namespace {

constexpr wchar_t kState[] = L"_LAYISO_STATE";

class LayerIsolation : public LayerStatesTest {
protected:
    void isolate() { exported<void()>("LayIso")(); }
    /// What the host is answered; no transaction stays open.
    int end() {
        const int answer = exported<int()>("LayUnisoNew")();
        EXPECT_EQ(database().transactionManager()->numActiveTransactions(), 0);
        return answer;
    }
    bool isRecorded() { return database().getLayerStateManager()->hasLayerState(kState); }
    HxDbObjectId dictionary() { return database().getLayerStateManager()->layerStatesDictionaryId(false); }

    /// The texts of an application's extended data on the dictionary of the states; its name first.
    std::vector<std::wstring> dataOf(const wchar_t* application) {
        zds_name name = {0, 0};
        hxdbGetZdsName(name, dictionary());
        resbuf* const applications = hxutBuildList(RTSTR, application, 0);
        resbuf* const list = hxdbEntGetX(name, applications);
        std::vector<std::wstring> texts;
        for (const resbuf* node = list; node; node = node->rbnext) {
            if (node->restype == 1000 || node->restype == 1001) texts.push_back(node->resval.rstring);
        }
        hxutRelRb(list);
        hxutRelRb(applications);
        return texts;
    }
    void putData(const wchar_t* application, const wchar_t* text) {
        zds_name name = {0, 0};
        hxdbGetZdsName(name, dictionary());
        hxdbRegApp(application);
        resbuf* const list = hxdbEntGet(name);
        resbuf* last = list;
        while (last->rbnext)
            last = last->rbnext;
        last->rbnext = hxutBuildList(-3, 1001, application, 1000, text, 0);
        EXPECT_EQ(hxdbEntMod(list), RTNORM);
        hxutRelRb(list);
    }
    static std::wstring handleOf(HxDbObjectId id) {
        wchar_t text[17] = {};
        id.handle().getIntoAsciiBuffer(text);
        return text;
    }
    HxDbObjectId layoutNamed(const wchar_t* name) {
        HxArray<HxDbObjectId> ids;
        hxdbLayoutManager()->layouts(&database(), ids);
        for (const HxDbObjectId& id : ids) {
            const HxDbObjectPointer<HxDbLayout> layout(id, HxDb::kForRead);
            if (layout->getLayoutName() == name) return id;
        }
        return {};
    }
    std::wstring activeLayout() { return hxdbLayoutManager()->getActiveLayoutName(); }
    bool isFrozenIn(HxDbObjectId viewportId, const wchar_t* name) {
        const HxDbObjectPointer<HxDbViewport> viewport(viewportId, HxDb::kForRead);
        return viewport->isLayerFrozenInViewport(layer(name));
    }
    /// In all that an isolation changes.
    void hide(const wchar_t* name) {
        change(name, [](auto& record) {
            record.setIsOff(!record.isOff());
            record.setIsFrozen(!record.isFrozen());
            record.setIsLocked(!record.isLocked());
            record.setVPDFLT(!record.VPDFLT());
        });
    }
    static constexpr int kVisibility =
        HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked | HxLyState::kNewViewportFrozen;
};

TEST_F(LayerIsolation, EndsNothingWhereNothingWasRecorded) {
    openDrawing(drawing());
    const std::string before = fileNow();
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(exported<int()>("LayUniso")(), 1);
    EXPECT_EQ(fileNow(), before);
    EXPECT_TRUE(dictionary().isNull()) << "none is made by looking";
}

TEST_F(LayerIsolation, RecordsAllLayersAndWhereTheUserIs) {
    openDrawing(drawing());
    isolate();
    HxLyStateHeader header;
    ASSERT_EQ(database().getLayerStateManager()->getLayerStateHeader(header, kState), Hx::eOk);
    EXPECT_EQ(header.mask, 2047);
    EXPECT_EQ(header.space, HxLyState::kModel);
    EXPECT_EQ(header.currentLayer, L"SPARE");
    EXPECT_EQ(header.description, L"");
    HxArray<CStdStr<wchar_t>> layers;
    database().getLayerStateManager()->getLayerStateLayers(layers, kState);
    EXPECT_EQ(layers.length(), 5);
    EXPECT_EQ(dataOf(L"AcLayerTools"),
              (std::vector<std::wstring>{L"AcLayerTools", handleOf(layoutNamed(L"Model")), L"0"}));
    goToLayout();
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    isolate();
    EXPECT_EQ(
        dataOf(L"AcLayerTools"),
        (std::vector<std::wstring>{L"AcLayerTools", handleOf(layoutNamed(L"Layout1")), handleOf(viewport)}));
    ASSERT_EQ(database().getLayerStateManager()->getLayerStateHeader(header, kState), Hx::eOk);
    EXPECT_EQ(header.space, HxLyState::kLayout);
}

TEST_F(LayerIsolation, BringsBackWhatHidesAndLocksAndNothingElse) {
    openDrawing(drawing());
    hide(L"NOTES");
    const HxLyStateEntry walls = now(L"WALLS");
    const HxLyStateEntry notes = now(L"NOTES");
    isolate();
    hide(L"WALLS");
    hide(L"NOTES");
    change(L"WALLS", [](auto& record) {
        record.setColor(HxCmColor::byIndex(5));
        record.setLineWeight(static_cast<HxDb::LineWeight>(70));
        record.setIsPlottable(false);
        record.setTransparency(HxCmTransparency(std::uint8_t(90)));
    });
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(notes, now(L"NOTES"), HxLyState::kAllProperties), 0);
    EXPECT_EQ(hxlyDifferences(walls, now(L"WALLS"), HxLyState::kAllProperties & ~HxLyState::kPlotStyle),
              HxLyState::kColor | HxLyState::kLineweight | HxLyState::kPlot | HxLyState::kTransparency);
    EXPECT_FALSE(isRecorded());
    EXPECT_TRUE(dataOf(L"AcLayerTools").empty());
    EXPECT_EQ(end(), 0);
}

TEST_F(LayerIsolation, EachFunctionIsOneUndoStepWithAName) {
    openDrawing(drawing());
    const std::string before = fileNow();
    isolate();
    const std::string recorded = fileNow();
    EXPECT_TRUE(contains(run(L"U\n"), L"Isolate Layers"));
    EXPECT_EQ(fileNow(), before);
    run(L"REDO\n");
    EXPECT_EQ(fileNow(), recorded);
    hide(L"WALLS");
    const std::string hidden = fileNow();
    ASSERT_EQ(end(), 1);
    const std::string ended = fileNow();
    EXPECT_TRUE(contains(run(L"U\n"), L"End Isolation"));
    EXPECT_EQ(fileNow(), hidden);
    run(L"REDO\n");
    EXPECT_EQ(fileNow(), ended);
}

TEST_F(LayerIsolation, ReturnsToTheLayoutAndItsViewport) {
    openDrawing(drawing());
    goToLayout();
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    inViewport(L"Freeze", L"NOTES");
    isolate();
    inViewport(L"Thaw", L"NOTES");
    inViewport(L"Freeze", L"WALLS");
    run(L"MODEL\n");
    ASSERT_EQ(activeLayout(), L"Model");
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(activeLayout(), L"Layout1");
    EXPECT_TRUE(isFrozenIn(viewport, L"NOTES"));
    EXPECT_FALSE(isFrozenIn(viewport, L"WALLS"));
}

TEST_F(LayerIsolation, DoesNotLeaveTheViewportThatIsCurrent) {
    openDrawing(drawing());
    goToLayout();
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    isolate();
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxedGetCurViewportObjectId(), viewport);
}

TEST_F(LayerIsolation, RestoresWhatItCanWhenLayoutAndViewportAreGone) {
    openDrawing(drawing());
    goToLayout();
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    inViewport(L"Freeze", L"NOTES");
    isolate();
    hide(L"WALLS");
    const HxLyStateEntry hidden = now(L"WALLS");
    run(L"PSPACE\n");
    {
        const HxDbObjectPointer<HxDbViewport> record(viewport, HxDb::kForWrite);
        ASSERT_TRUE(record);
        EXPECT_EQ(record->erase(), Hx::eOk);
    }
    run(L"MODEL\n");
    {
        const HxDbObjectPointer<HxDbLayout> record(layoutNamed(L"Layout1"), HxDb::kForWrite);
        ASSERT_TRUE(record);
        EXPECT_EQ(record->erase(), Hx::eOk);
    }
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(hidden, now(L"WALLS"), kVisibility), kVisibility);
    EXPECT_EQ(activeLayout(), L"Model");
    EXPECT_FALSE(isRecorded());
}

TEST_F(LayerIsolation, PassesOverLayersThatAreGoneAndFollowsRenamedOnes) {
    openDrawing(drawing());
    run(L"-LAYER\nN\nGONE\n\n");
    const HxLyStateEntry walls = now(L"WALLS");
    isolate();
    run(L"-LAYER\nN\nMADE,SEEN\nR\nWALLS\nMASONRY\n\n");
    hide(L"MASONRY");
    hide(L"MADE");
    const HxLyStateEntry made = now(L"MADE");
    const HxLyStateEntry seen = now(L"SEEN");
    change(L"GONE", [](auto& record) { EXPECT_EQ(record.erase(), Hx::eOk); });
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(walls, now(L"MASONRY"), kVisibility), 0);
    EXPECT_EQ(hxlyDifferences(made, now(L"MADE"), kVisibility), 0) << "it was not there";
    EXPECT_EQ(hxlyDifferences(seen, now(L"SEEN"), kVisibility), 0);
    EXPECT_TRUE(layer(L"GONE").isNull() || layer(L"GONE").isErased());
}

TEST_F(LayerIsolation, ASecondRecordTakesTheFirstOnesPlace) {
    openDrawing(drawing());
    saveState(L"Other");
    putData(L"SOMEBODY", L"theirs");
    isolate();
    ASSERT_EQ(database().getLayerStateManager()->setLayerStateMask(kState, HxLyState::kHidden), Hx::eOk);
    hide(L"WALLS");
    const HxLyStateEntry between = now(L"WALLS");
    isolate();
    HxLyStateHeader header;
    ASSERT_EQ(database().getLayerStateManager()->getLayerStateHeader(header, kState), Hx::eOk);
    EXPECT_EQ(header.mask, 2047);
    EXPECT_EQ(dataOf(L"AcLayerTools").size(), 3U);
    hide(L"WALLS");
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(between, now(L"WALLS"), kVisibility), 0);
    EXPECT_EQ(dataOf(L"SOMEBODY"), (std::vector<std::wstring>{L"SOMEBODY", L"theirs"}));
    EXPECT_TRUE(database().getLayerStateManager()->hasLayerState(L"Other"));
    EXPECT_EQ(end(), 0);
}

TEST_F(LayerIsolation, ChangesNothingWithoutThePlace) {
    openDrawing(drawing());
    saveState(kState);
    hide(L"WALLS");
    const std::string before = fileNow();
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(fileNow(), before);
    EXPECT_TRUE(isRecorded());
}

TEST_F(LayerIsolation, ChangesNothingWhenSomethingIsHeld) {
    openDrawing(drawing());
    goToLayout();
    isolate();
    run(L"MODEL\n");
    hide(L"WALLS");
    for (const HxDbObjectId held : {layer(L"WALLS"), dictionary()}) {
        const std::string before = fileNow();
        HxDbObject* object = nullptr;
        ASSERT_EQ(hxdbOpenObject(object, held, HxDb::kForWrite), Hx::eOk);
        const int answer = end();
        object->close();
        EXPECT_EQ(answer, 0);
        EXPECT_EQ(activeLayout(), L"Model");
        EXPECT_TRUE(isRecorded());
        EXPECT_EQ(dataOf(L"AcLayerTools").size(), 3U);
        EXPECT_EQ(fileNow(), before);
    }
    EXPECT_EQ(end(), 1);
}

TEST_F(LayerIsolation, LeavesDrawingsWithoutDictionariesAlone) {
    write("early.dxf", "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nEOF\n");
    open("early.dxf");
    const std::string before = fileNow();
    isolate();
    EXPECT_EQ(end(), 0);
    EXPECT_EQ(fileNow(), before);
}

TEST_F(LayerIsolation, LastsThroughSavingAndInTwoDrawingsAtOnce) {
    openDrawing(drawing());
    const HxLyStateEntry walls = now(L"WALLS");
    goToLayout();
    isolate();
    hide(L"WALLS");
    run(L"MODEL\nSAVEAS " + path("kept.dxf") + L"\nCLOSE\n");
    open("kept.dxf");
    ASSERT_TRUE(isRecorded());
    write("other.dxf", drawing().text());
    open("other.dxf");
    hide(L"NOTES");
    const HxLyStateEntry notes = now(L"NOTES");
    isolate();
    hide(L"NOTES");
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(notes, now(L"NOTES"), kVisibility), 0);
    run(L"CLOSE\nYes\n" + path("other-saved.dxf") + L"\n");
    ASSERT_TRUE(isRecorded()) << "the first one is current again";
    EXPECT_EQ(end(), 1);
    EXPECT_EQ(hxlyDifferences(walls, now(L"WALLS"), kVisibility), 0);
    EXPECT_EQ(activeLayout(), L"Layout1");
}

}  // namespace
}  // namespace korvex::test
