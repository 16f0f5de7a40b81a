// -LAYER and the lists of names that it takes.
#include "tests/editor/editor_fixture.h"

#include <functional>

namespace korvex::test {
namespace {

class LayerCommand : public EditorTest {
protected:
    /// Names of the layers for which something holds.
    Lines layersThat(const std::function<bool(const HxDbLayerTableRecord&)>& holds) {
        Lines names;
        for (const HxDbObjectId& id : selectLayers(database(), L"*").layers) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
            if (holds(*record.object())) {
                names.push_back(record->name());
            }
        }
        return names;
    }
    Lines frozen() {
        return layersThat([](const HxDbLayerTableRecord& l) { return l.isFrozen(); });
    }
};

TEST_F(LayerCommand, FindsLayersByNameOrPattern) {
    run(L"-LAYER N A-WALL, A-WIN ,B-WALL,[A],A1\n\n");
    struct Case {
        const wchar_t* list;
        Lines names;
        Lines unmatched;
    };
    const Case cases[] = {
        {L"a-wall", {L"A-WALL"}, {}},
        {L"A-*, B-WALL", {L"A-WALL", L"A-WIN", L"B-WALL"}, {}},
        {L"A-*,A-WALL", {L"A-WALL", L"A-WIN"}, {}},
        {L"NOPE,A-WIN,X*", {L"A-WIN"}, {L"NOPE", L"X*"}},
        {L"[A]", {L"[A]"}, {}},  // the layer of that name, not the pattern
        {L"[A]#", {L"A1"}, {}},
        {L"~A*", {L"0", L"B-WALL", L"[A]"}, {}},
        {L" , ,", {}, {}},
        {L"A`,1,A-WIN,A`", {L"A-WIN"}, {L"A`,1", L"A`"}},
    };
    for (const Case& c : cases) {
        const LayerSelection selection = selectLayers(database(), c.list);
        Lines names;
        for (const HxDbObjectId& id : selection.layers) {
            names.push_back(layerName(id));
        }
        EXPECT_EQ(names, c.names) << testing::PrintToString(std::wstring(c.list));
        EXPECT_EQ(selection.unmatched, c.unmatched) << testing::PrintToString(std::wstring(c.list));
    }
}

TEST_F(LayerCommand, SetsPropertiesInOneStep) {
    run(L"-LAYER N My Walls,B\nC red My Walls\nLW 0.5 B\nTR 40 B\nP N B\nD  Hello there \nB\nLO *\nF B\n\n");
    EXPECT_EQ(failures, Lines());
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"My Walls"), HxDb::kForRead);
    const HxDbObjectPointer<HxDbLayerTableRecord> b(layer(L"B"), HxDb::kForRead);
    EXPECT_EQ(walls->color().colorIndex(), 1);
    EXPECT_EQ(b->lineWeight(), 50);
    EXPECT_EQ(b->transparency().percent(), 40);
    EXPECT_FALSE(b->isPlottable());
    EXPECT_EQ(b->description(), L" Hello there ");
    EXPECT_TRUE(walls->isLocked());
    EXPECT_EQ(frozen(), Lines{L"B"});
}

TEST_F(LayerCommand, TakesColoursInAllForms) {
    run(L"-LAYER N A\nC 30 A\n\n");
    const auto color = [&] {
        const HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForRead);
        return a->color();
    };
    EXPECT_EQ(color().colorIndex(), 30);
    run(L"-LAYER C T 10,20,30 A\n\n");
    EXPECT_TRUE(color().isByColor());
    EXPECT_EQ(color().blue(), 30);
    run(L"-LAYER C T 10,20,300 1,2,3 A\n\n");
    EXPECT_EQ(color().red(), 1);
    run(L"-LAYER C 256 mauve 5 A\n\n");
    EXPECT_EQ(color().colorIndex(), 5);
    EXPECT_EQ(failures.size(), 3U);
    run(L"-LAYER C -3 A\n\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForRead);
    EXPECT_TRUE(a->isOff());
    EXPECT_EQ(a->color().colorIndex(), 3);
}

TEST_F(LayerCommand, GuardsTheCurrentLayer) {
    run(L"-LAYER M A\nF 0,A\n\n");
    EXPECT_EQ(frozen(), Lines{L"0"});
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"Layer \"A\" is current and can not be frozen"));
    run(L"-LAYER OFF A\nN\n\n");
    HxDbObjectPointer<HxDbLayerTableRecord> a(layer(L"A"), HxDb::kForRead);
    EXPECT_FALSE(a->isOff());
    a.close();
    run(L"-LAYER S 0\n\n");
    EXPECT_EQ(failures.size(), 2U);
    EXPECT_EQ(variable(L"CLAYER"), L"\"A\"");
}

TEST_F(LayerCommand, SaysWhatItCanNotDo) {
    run(L"-LAYER N A,B\nN a,C*,D\nR A\nB\nR NOPE\nF NOPE\n\n");
    EXPECT_TRUE(hasLayer(L"D"));
    ASSERT_EQ(failures.size(), 4U);
    EXPECT_TRUE(contains(failures[0], L"Layer \"C*\" can not be made"));
    EXPECT_TRUE(contains(failures[1], L"Layer \"A\" can not be renamed to \"B\""));
    EXPECT_EQ(failures[2], L"There is no layer \"NOPE\".");
    EXPECT_EQ(failures[3], L"There is no layer that fits \"NOPE\".");
}

TEST_F(LayerCommand, LineweightsFollowTheUnits) {
    run(L"-LAYER N A\nLW 0.51 A\n\n");
    const HxDbObjectId a = layer(L"A");
    const auto weight = [a] {
        return HxDbObjectPointer<HxDbLayerTableRecord>(a, HxDb::kForRead)->lineWeight();
    };
    EXPECT_EQ(weight(), 50);
    run(L"LWUNITS 0\n-LAYER LW 0.012 A\n\n");
    EXPECT_EQ(weight(), 30);
    run(L"-LAYER LW D A\n\n");
    EXPECT_EQ(weight(), HxDb::kLnWtByLwDefault);
    run(L"LWUNITS 1\n");
}

}  // namespace
}  // namespace korvex::test
