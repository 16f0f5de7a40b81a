// Viewports: numbers, and the layers frozen in them.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

using Ids = HxArray<HxDbObjectId>;

/// R12: a viewport that has DOORS frozen, and one without the data that frozen layers stand in.
std::string mviewDrawing() {
    return drawing(R"(
0 SECTION | 2 HEADER | 9 $ACADVER | 1 AC1009 | 9 $TILEMODE | 70 0 | 0 ENDSEC
0 SECTION | 2 TABLES | 0 TABLE | 2 LAYER | 70 2 | 0 LAYER | 2 WALLS | 70 0 | 62 1 | 6 CONTINUOUS | 0 LAYER | 2 DOORS | 70 0 | 62 2 | 6 CONTINUOUS | 0 ENDTAB | 0 ENDSEC
0 SECTION | 2 ENTITIES
0 VIEWPORT | 67 1 | 8 0 | 10 0.0 | 20 0.0 | 40 10.0 | 41 8.0 | 68 1 | 69 1
0 VIEWPORT | 67 1 | 8 0 | 10 5.0 | 20 5.0 | 40 4.0 | 41 4.0 | 68 2 | 69 2 | 1001 TOOLS | 1003 WALLS | 1001 ACAD | 1000 MVIEW | 1002 { | 1070 16 | 1040 0.0 | 1002 { | 1003 DOORS | 1002 } | 1002 }
0 ENDSEC | 0 EOF)");
}

class Viewports : public KernelTest {
protected:
    using KernelTest::KernelTest;

    HxDbObjectId port = id(0x61);
    HxDbViewport& look(HxDbObjectId id) const { return *at<HxDbViewport>(id); }
    static Ids list(std::initializer_list<HxDbObjectId> ids) {
        Ids all;
        for (const HxDbObjectId& id : ids) {
            all.append(id);
        }
        return all;
    }
    Hx::ErrorStatus freeze(HxDbObjectId viewport, const Ids& layers) {
        const HxDbObjectPointer<HxDbViewport> open(viewport, HxDb::kForWrite);
        return open->freezeLayersInViewport(layers);
    }
    Hx::ErrorStatus thaw(HxDbObjectId viewport, const Ids& layers) {
        const HxDbObjectPointer<HxDbViewport> open(viewport, HxDb::kForWrite);
        return open->thawLayersInViewport(layers);
    }
    /// The viewport's groups 331 in the saved drawing.
    std::string frozen() {
        const std::string all = record(port);
        const std::size_t start = all.find("45 200.0");
        return all.substr(start, all.find("90 0") - start);
    }
};

class ViewportsOfR12 : public Viewports {
protected:
    ViewportsOfR12() : Viewports(mviewDrawing()) {
        const std::vector<HxDbStub*>& paper = members(*database->paperSpaceId().stub());
        overall = HxDbObjectId(paper.at(0));
        port = HxDbObjectId(paper.at(1));
    }
    /// The layer names in the saved drawing's MVIEW data.
    std::string mview() const { return between(saved(), "1040\n0.0\n", "0\nENDSEC"); }

    HxDbObjectId overall;
};

}  // namespace

TEST_F(Viewports, NumbersCountOnTheActiveSheetOnly) {
    EXPECT_EQ(look(id(0x60)).number(), 1);
    EXPECT_EQ(look(port).number(), 2);
    EXPECT_EQ(look(id(0x62)).number(), -1) << "it is off";
    EXPECT_FALSE(look(id(0x62)).isOn());
    EXPECT_DOUBLE_EQ(look(port).customScale(), 0.25);
    EXPECT_TRUE(hxdbGetCurVportId(database.get()).isNull()) << "model space";
    ASSERT_EQ(hxdbLayoutManager()->setCurrentLayout(L"First"), Hx::eOk);
    EXPECT_EQ(hxedGetCurViewportObjectId(), id(0x60));
    ASSERT_EQ(database->setCvport(2), Hx::eOk);
    EXPECT_EQ(hxedGetCurViewportObjectId(), port);
    EXPECT_EQ(database->setCvport(0), Hx::eInvalidInput);
    ASSERT_EQ(hxdbLayoutManager()->setCurrentLayout(L"Second"), Hx::eOk);
    EXPECT_EQ(look(port).number(), -1);
    EXPECT_TRUE(hxedGetCurViewportObjectId().isNull()) << "a sheet without viewports";
}

TEST_F(Viewports, FreezeAndThawTheirOwnLayers) {
    const std::string before = saved();
    EXPECT_TRUE(look(port).isLayerFrozenInViewport(layer(L"DOORS")));
    step(L"FREEZE", [&] {
        const HxDbObjectId walls = layer(L"WALLS");
        EXPECT_EQ(freeze(port, list({walls, layer(L"DOORS"), walls})), Hx::eOk);
    });
    EXPECT_EQ(frozen(), "45 200.0 | 331 12 | 331 FF | 331 11 | ") << "handles of nothing are kept";
    Ids ids;
    look(port).getFrozenLayers(ids);
    EXPECT_EQ(ids.length(), 2);
    EXPECT_FALSE(look(id(0x60)).isLayerFrozenInViewport(layer(L"WALLS")));
    EXPECT_FALSE(at<HxDbLayerTableRecord>(layer(L"WALLS"))->isFrozen());
    step(L"THAW", [&] { EXPECT_EQ(thaw(port, list({layer(L"DOORS"), layer(L"EMPTY")})), Hx::eOk); });
    EXPECT_EQ(frozen(), "45 200.0 | 331 FF | 331 11 | ");
    step(L"THAW", [&] {
        change<HxDbViewport>(port, [](HxDbViewport& v) { EXPECT_EQ(v.thawAllLayersInViewport(), Hx::eOk); });
    });
    EXPECT_EQ(frozen(), "45 200.0 | 331 FF | ");
    while (journal().undo() == Hx::eOk) {
    }
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(Viewports, RefusedListsChangeNothing) {
    const HxDbObjectId walls = layer(L"WALLS");
    for (const HxDbObjectId none : {HxDbObjectId(), id(0x40), id(0x33)}) {
        EXPECT_EQ(freeze(port, list({walls, none})), Hx::eInvalidInput);
        EXPECT_EQ(thaw(port, list({layer(L"DOORS"), none})), Hx::eInvalidInput);
    }
    EXPECT_EQ(freeze(port, list({layer(L"DOORS")})), Hx::eOk) << "frozen already";
    EXPECT_EQ(freeze(port, {}), Hx::eOk);
    EXPECT_EQ(look(port).freezeLayersInViewport(list({walls})), Hx::eNotOpenForWrite);
    EXPECT_FALSE(database->isModified());
}

TEST_F(ViewportsOfR12, KeepNamesInExtendedData) {
    const HxDbObjectId walls = layer(L"WALLS");
    const HxDbObjectId doors = layer(L"DOORS");
    EXPECT_TRUE(look(port).isLayerFrozenInViewport(doors));
    step(L"FREEZE", [&] { EXPECT_EQ(freeze(port, list({walls})), Hx::eOk); });
    EXPECT_EQ(mview(), "1040\n0.0\n1002\n{\n1003\nDOORS\n1003\nWALLS\n1002\n}\n1002\n}\n");
    ASSERT_EQ(rename(doors, L"GATES"), Hx::eOk);
    EXPECT_TRUE(look(port).isLayerFrozenInViewport(doors));
    EXPECT_EQ(thaw(port, list({walls})), Hx::eOk);
    EXPECT_EQ(mview(), "1040\n0.0\n1002\n{\n1003\nGATES\n1002\n}\n1002\n}\n");
    EXPECT_TRUE(has(saved(), "1001\nTOOLS\n1003\nWALLS\n1001\nACAD\n"));
    while (journal().undo() == Hx::eOk) {
    }
    EXPECT_EQ(changedLines(mviewDrawing(), saved()), Log{});
    EXPECT_TRUE(look(port).isLayerFrozenInViewport(doors));
}

TEST_F(ViewportsOfR12, WithoutSuchDataNothingIsFrozen) {
    EXPECT_EQ(freeze(overall, list({layer(L"WALLS")})), Hx::eNotApplicable);
    EXPECT_FALSE(look(overall).isLayerFrozenInViewport(layer(L"WALLS")));
    EXPECT_FALSE(database->isModified());
}

}  // namespace korvex::test
