// VPLAYER as others send it: one string, names that look like patterns, a list that ends at the line's end.
#include "tests/editor/editor_fixture.h"
#include "tests/module/small_drawing.h"

#include <map>
#include <set>

namespace korvex::test {
namespace {

const wchar_t* const kOdd[] = {L"My walls", L"W#1@.~x", L"[A]-\u00e4\u00df\u00e9", L"it's (50%)", L"\u5899"};

/// What layers look like in the viewports of the layout, by layer and number of the viewport.
using Looks = std::map<std::pair<std::wstring, int>, std::wstring>;
using Places = std::set<std::pair<std::wstring, int>>;

class ViewportLayers : public EditorTest {
protected:
    /// A layout with two floating viewports, of which number 2 is current; the odd layers and two others.
    void SetUp() override {
        SmallDrawing drawing;
        drawing.useNamedPlotStyles();
        drawing.model(drawing.line("PLAIN", 0, 0, 1, 0) + drawing.line("W11ax", 0, 1, 1, 1));
        drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) + drawing.viewport(2, 60, 100, 100, 5, 0) +
                      drawing.viewport(3, 180, 100, 100, 5, 0));
        write("layout.dxf", drawing.text());
        run(L"OPEN " + path("layout.dxf") + L"\n-LAYER N " + list() + L"\n\nLAYOUT S Layout1\nMSPACE\n");
        ASSERT_EQ(failures, Lines());
        for (const wchar_t* const name : kOdd) {
            ASSERT_TRUE(hasLayer(name));
        }
    }
    /// The odd layers as others join them.
    static std::wstring list() {
        std::wstring names;
        for (const wchar_t* const name : kOdd) {
            names += (names.empty() ? L"" : L",") + std::wstring(name);
        }
        return names;
    }
    /// Sends it; the commands that ran and how they ended come back.
    Lines send(const std::wstring& text) {
        failures.clear();
        const Recorder recorder;
        EXPECT_EQ(hxDocManager()->sendStringToExecute(curDoc(), text.c_str(), true, false, false), Hx::eOk);
        editor().processor().runAll();
        EXPECT_TRUE(curDoc()->isQuiescent());
        Lines ends;
        for (const std::wstring& line : recorder.log) {
            if (!contains(line, L"start ")) ends.push_back(line);
        }
        return ends;
    }
    Looks looks() {
        Looks all;
        for (const HxDbObjectId& id : viewports()) {
            const HxDbObjectPointer<HxDbViewport> viewport(id, HxDb::kForRead);
            for (const HxDbObjectId& layerId : selectLayers(database(), L"*").layers) {
                const HxDbObjectPointer<HxDbLayerTableRecord> layer(layerId, HxDb::kForRead);
                all[{layer->name(), viewport->number()}] = look(*layer.object(), *viewport.object());
            }
        }
        return all;
    }
    Places changedSince(const Looks& before) {
        Places places;
        for (const auto& [place, look] : looks()) {
            const auto known = before.find(place);
            if (known != before.end() && known->second != look) places.insert(place);
        }
        return places;
    }
    static Places odd(std::set<int> numbers) {
        Places places;
        for (const wchar_t* const name : kOdd) {
            for (const int number : numbers) {
                places.insert({name, number});
            }
        }
        return places;
    }

private:
    std::vector<HxDbObjectId> viewports() {
        const HxDbObjectPointer<HxDbBlockTableRecord> paper(database().paperSpaceId(), HxDb::kForRead);
        HxDbBlockTableRecordIterator* steps = nullptr;
        paper->newIterator(steps);
        std::vector<HxDbObjectId> ids;
        for (const std::unique_ptr<HxDbBlockTableRecordIterator> owner(steps); !steps->done();
             steps->step()) {
            ids.emplace_back();
            steps->getEntityId(ids.back());
        }
        return ids;
    }
    static std::wstring look(const HxDbLayerTableRecord& layer, const HxDbViewport& viewport) {
        bool isOverride = false;
        const HxDbObjectId id = viewport.objectId();
        const HxCmColor color = layer.color(id, isOverride);
        std::wstring text = isOverride ? L"color " + std::wstring(color.colorNameForDisplay()) + L";" : L"";
        const HxDbObjectPointer<HxDbLinetypeTableRecord> linetype(layer.linetypeObjectId(id, isOverride),
                                                                  HxDb::kForRead);
        text += isOverride ? L"linetype " + std::wstring(linetype->name()) + L";" : L"";
        const int weight = layer.lineWeight(id, isOverride);
        text += isOverride ? L"weight " + std::to_wstring(weight) + L";" : L"";
        const std::wstring style = layer.plotStyleName(id, isOverride);
        text += isOverride ? L"style " + style + L";" : L"";
        const int alpha = layer.transparency(id, isOverride).alpha();
        text += isOverride ? L"alpha " + std::to_wstring(alpha) + L";" : L"";
        return text + (viewport.isLayerFrozenInViewport(layer.objectId()) ? L"frozen;" : L"");
    }
};

const Lines kEnded{L"end VPLAYER"};

TEST_F(ViewportLayers, OverridesReachTheNamedLayersInTheCurrentViewport) {
    ASSERT_EQ(send(L"LWUNITS 1\n").size(), 3U);
    struct Form {
        std::wstring text;
        const wchar_t* look;
    };
    const Form forms[] = {
        {L"'_.vplayer _C 30 " + list() + L"\n_C  ", L"color Color 30;"},
        {L"'_.vplayer _C _T 250,3,2 " + list() + L"\n_C  ", L"color 250,3,2;"},
        {L"'_.vplayer _C _CO Quarry Greys\nSlate 54\n" + list() + L"\n_C  ", L"color 138,138,138;"},
        {L"'_.vplayer _LT CONTINUOUS\n" + list() + L"\n_C  ", L"linetype Continuous;"},
        {L"'_.vplayer _LW 0.25 " + list() + L"\n_C  ", L"weight 25;"},
        {L"'_.vplayer _LW 2.11 " + list() + L"\n_C  ", L"weight 211;"},
        {L"'_.vplayer _LW _D " + list() + L"\n_C  ", L"weight -3;"},
        {L"'_.vplayer _PS Screened\n" + list() + L"\n_C  ", L"style Screened;"},
    };
    for (const Form& form : forms) {
        SCOPED_TRACE(testing::PrintToString(form.text));
        const Looks before = looks();
        EXPECT_EQ(send(form.text), kEnded);
        EXPECT_EQ(failures, Lines());
        EXPECT_EQ(changedSince(before), odd({2}));
        EXPECT_EQ((looks()[{kOdd[1], 2}]), form.look);
        send(L"U\n");
        EXPECT_EQ(looks(), before) << "one step";
    }
}

TEST_F(ViewportLayers, LineweightsCanBeInInches) {
    send(L"LWUNITS 0\n");
    for (const auto& [inches, hundredths] :
         {std::pair(L"0.000", 0), {L"0.002", 5}, {L"0.010", 25}, {L"0.039", 100}, {L"0.083", 211}}) {
        const Looks before = looks();
        EXPECT_EQ(send(L"'_.vplayer _LW " + std::wstring(inches) + L" " + list() + L"\n_C  "), kEnded);
        EXPECT_EQ(changedSince(before), odd({2}));
        EXPECT_EQ((looks()[{kOdd[0], 2}]), L"weight " + std::to_wstring(hundredths) + L";");
    }
    send(L"LWUNITS 1\n");
}

TEST_F(ViewportLayers, FreezesAndTakesBackInAllOrOneViewport) {
    const Looks nothing = looks();
    EXPECT_EQ(send(L"_.vplayer _F " + list() + L"\n_A  "), kEnded);
    EXPECT_EQ(changedSince(nothing), odd({2, 3}));
    send(L"U\n");
    EXPECT_EQ(looks(), nothing);
    EXPECT_EQ(send(L"_.vplayer _F " + list() + L"\n_X  "), kEnded);
    EXPECT_EQ(changedSince(nothing), odd({3}));
    send(L"U\n");
    send(L"_.vplayer _C 1 " + list() + L",PLAIN\n_A _LW 0.5 " + list() + L"\n_A  ");
    const Looks overridden = looks();
    EXPECT_EQ(send(L"'_.vplayer _M _A\n " + list() + L"\n_C  "), kEnded);
    EXPECT_EQ(changedSince(overridden), odd({2}));
    EXPECT_EQ(send(L"'_.vplayer _M _A\n " + list() + L"\n_A  "), kEnded);
    EXPECT_EQ(changedSince(overridden), odd({2, 3}));
    EXPECT_EQ((looks()[{kOdd[0], 3}]), L"");
    EXPECT_EQ((looks()[{L"PLAIN", 2}]), L"color Red;");
    EXPECT_EQ(failures, Lines());
}

TEST_F(ViewportLayers, NothingChangesOnThePaperOrInModelSpace) {
    send(L"_.vplayer _C 1 " + list() + L"\n_A  ");
    const Looks before = looks();
    const std::wstring current[] = {
        L"'_.vplayer _C 30 " + list() + L"\n_C  ",
        L"'_.vplayer _LT CONTINUOUS\n" + list() + L"\n_C  ",
        L"_.vplayer _F " + list() + L"\n_X  ",
        L"'_.vplayer _M _A\n " + list() + L"\n_C  ",
    };
    for (const wchar_t* const place : {L"PSPACE\n", L"MODEL\n"}) {
        send(place);
        for (const std::wstring& text : current) {
            SCOPED_TRACE(testing::PrintToString(place + text));
            EXPECT_EQ(send(text), Lines{L"fail VPLAYER"}) << "and nothing of it is another command";
            EXPECT_EQ(failures.size(), 1U) << testing::PrintToString(failures);
            EXPECT_EQ(looks(), before);
        }
    }
    send(L"LAYOUT S Layout1\n");
    EXPECT_EQ(send(L"'_.vplayer _C 30 NOPE\n_A _F NOPE*\n_A  "), Lines{L"fail VPLAYER"});
    EXPECT_EQ(failures.size(), 2U) << testing::PrintToString(failures);
    EXPECT_EQ(looks(), before);
    EXPECT_EQ(send(L"_.vplayer _F " + list() + L"\n_A  "), kEnded);
    EXPECT_EQ(changedSince(before), odd({2, 3})) << "all viewports need none that is current";
}

TEST_F(ViewportLayers, ResetsAndMakesLayersForNewViewports) {
    const Looks before = looks();
    run(L"VPLAYER V PLAIN\nF R PLAIN\nA N FRESH, Fresh two\n\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(changedSince(before), (Places{{L"PLAIN", 2}, {L"PLAIN", 3}}));
    EXPECT_EQ((looks()[{L"Fresh two", 3}]), L"frozen;");
    const std::wstring told = run(L"VPLAYER ?\n\n\n");
    EXPECT_TRUE(contains(told, L"frozen in viewport 2:\n  PLAIN\n  FRESH\n  Fresh two\n"))
        << testing::PrintToString(told);
    run(L"VPLAYER T F*\nA V PLAIN\nT R PLAIN\nC\n");
    EXPECT_EQ((looks()[{L"Fresh two", 3}]), L"");
    EXPECT_EQ(changedSince(before), (Places{{L"PLAIN", 3}}));
}

}  // namespace
}  // namespace korvex::test
