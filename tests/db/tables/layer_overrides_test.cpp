// Viewport overrides of layers: in effect, in the file, taken away.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Overrides : public KernelTest {
protected:
    HxDbObjectId walls = layer(L"WALLS");
    HxDbObjectId doors = layer(L"DOORS");
    HxDbObjectId first = id(0x61);
    HxDbObjectId second = id(0x62);

    HxDbLayerTableRecord& look(HxDbObjectId id) const { return *at<HxDbLayerTableRecord>(id); }
    template <class Edit>
    void edit(HxDbObjectId which, Edit what) {
        change<HxDbLayerTableRecord>(which, what);
    }
    /// The xrecord of a property in the saved drawing, after its head.
    std::string runs(HxDbObjectId layer, const wchar_t* property) {
        HxDbObjectId found;
        const auto* dictionary = at<HxDbDictionary>(look(layer).extensionDictionary());
        const std::wstring name = std::wstring(L"ADSK_XREC_LAYER_") + property + L"_OVR";
        if (!dictionary || dictionary->getAt(name.c_str(), found) != Hx::eOk) {
            return "none";
        }
        const std::string all = record(found);
        const std::string head = "100 AcDbXrecord | 280 1 | ";
        return all.substr(all.find(head) + head.size());
    }
};

HxDb::LineWeight weight(int hundredths) { return static_cast<HxDb::LineWeight>(hundredths); }

}  // namespace

TEST_F(Overrides, AreReadAsDrawingsStoreThem) {
    bool isOverride = false;
    EXPECT_EQ(look(walls).color(second, isOverride), HxCmColor::byIndex(5));
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(look(walls).color(first, isOverride), HxCmColor::byIndex(1)) << "another maker's run";
    EXPECT_FALSE(isOverride);
    EXPECT_EQ(look(walls).lineWeight(first, isOverride), 50);
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(look(walls).lineWeight({}, isOverride), -3);
    EXPECT_FALSE(isOverride);
    EXPECT_TRUE(look(walls).hasOverrides(first) && look(walls).hasOverrides(second));
    EXPECT_FALSE(look(walls).hasOverrides(id(0x60)) || look(walls).hasOverrides({}));
    EXPECT_TRUE(look(walls).hasAnyOverrides());
    EXPECT_FALSE(look(doors).hasAnyOverrides()) << "frozen in a viewport is none";
}

TEST_F(Overrides, AreWrittenAsDrawingsStoreThem) {
    const std::string before = saved();
    step(L"OVERRIDE", [&] {
        edit(doors, [&](HxDbLayerTableRecord& l) {
            EXPECT_EQ(l.setColor(HxCmColor::byRgb(1, 2, 3), first), Hx::eOk);
            EXPECT_EQ(l.setColor(HxCmColor::byIndex(30), second), Hx::eOk);
            EXPECT_EQ(l.setLinetypeObjectId(id(0x32), first), Hx::eOk);
            EXPECT_EQ(l.setLineWeight(weight(211), first), Hx::eOk);
            EXPECT_EQ(l.setLineWeight(weight(-3), second), Hx::eOk);
            EXPECT_EQ(l.setTransparency(HxCmTransparency(51), first), Hx::eOk);
            EXPECT_EQ(l.setPlotStyleName(id(0x71), first), Hx::eOk);
        });
    });
    EXPECT_EQ(runs(doors, L"COLOR"), "102 {ADSK_LYR_COLOR_OVERRIDE | 335 61 | 420 -1040121341 | 102 } | 102 "
                                     "{ADSK_LYR_COLOR_OVERRIDE | 335 62 | 420 -1023410146 | 102 }");
    EXPECT_EQ(runs(doors, L"LINETYPE"), "102 {ADSK_LYR_LINETYPE_OVERRIDE | 335 61 | 343 32 | 102 }");
    EXPECT_EQ(runs(doors, L"LINEWT"), "102 {ADSK_LYR_LINEWT_OVERRIDE | 335 61 | 91 25 | 102 } | 102 "
                                      "{ADSK_LYR_LINEWT_OVERRIDE | 335 62 | 91 31 | 102 }");
    EXPECT_EQ(runs(doors, L"ALPHA"), "102 {ADSK_LYR_ALPHA_OVERRIDE | 335 61 | 440 33554483 | 102 }");
    EXPECT_EQ(runs(doors, L"PLOTSTYLE"), "102 {ADSK_LYR_PLOTSTYLE_OVERRIDE | 335 61 | 343 71 | 102 }");
    const auto again = opened(saved());
    const auto& read = *at<HxDbLayerTableRecord>(recordId(*again, TableKind::layer, L"DOORS"));
    const HxDbObjectId port(byHandle(*again, 0x61));
    bool isOverride = false;
    EXPECT_EQ(read.color(port, isOverride).green(), 2);
    EXPECT_EQ(read.linetypeObjectId(port, isOverride), again->continuousLinetype());
    EXPECT_EQ(read.lineWeight(port, isOverride), 211);
    EXPECT_EQ(read.transparency(port, isOverride).alpha(), 51);
    EXPECT_EQ(read.plotStyleName(port, isOverride), L"Normal");
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(read.lineWeight(), 50);
    EXPECT_EQ(read.color().colorIndex(), 3);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_FALSE(look(doors).hasAnyOverrides());
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(Overrides, ASecondValueReplacesTheFirstAndForeignRunsStay) {
    edit(walls, [&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(6), second), Hx::eOk);
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(2), first), Hx::eOk);
    });
    const std::string foreign = "102 {OTHER_MAKERS_OVERRIDE | 335 61 | 420 9 | 102 }";
    EXPECT_EQ(runs(walls, L"COLOR"),
              "102 {ADSK_LYR_COLOR_OVERRIDE | 335 62 | 420 -1023410170 | 102 } | " + foreign +
                  " | 102 {ADSK_LYR_COLOR_OVERRIDE | 335 61 | 420 -1023410174 | 102 }");
    edit(walls, [&](HxDbLayerTableRecord& l) { EXPECT_EQ(l.removeAllOverrides(), Hx::eOk); });
    EXPECT_EQ(runs(walls, L"COLOR"), foreign);
    EXPECT_EQ(runs(walls, L"LINEWT"), "none") << "an empty record goes";
    EXPECT_FALSE(look(walls).hasAnyOverrides());
}

TEST_F(Overrides, GoOneByOneAndByViewport) {
    const auto overridden = [&](HxDbObjectId viewport) {
        bool color = false;
        bool linetype = false;
        bool lineWeight = false;
        look(doors).color(viewport, color);
        look(doors).linetypeObjectId(viewport, linetype);
        look(doors).lineWeight(viewport, lineWeight);
        return std::string(color ? "C" : "") + (linetype ? "T" : "") + (lineWeight ? "W" : "");
    };
    edit(doors, [&](HxDbLayerTableRecord& l) {
        for (const HxDbObjectId viewport : {first, second}) {
            EXPECT_EQ(l.setColor(HxCmColor::byIndex(6), viewport), Hx::eOk);
            EXPECT_EQ(l.setLinetypeObjectId(id(0x32), viewport), Hx::eOk);
            EXPECT_EQ(l.setLineWeight(weight(9), viewport), Hx::eOk);
        }
        EXPECT_EQ(l.removeLinetypeOverride(first), Hx::eOk);
        EXPECT_EQ(l.removeTransparencyOverride(first), Hx::eOk) << "there is none";
    });
    EXPECT_EQ(overridden(first), "CW");
    EXPECT_EQ(overridden(second), "CTW");
    edit(doors, [&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.removeViewportOverrides({}), Hx::eInvalidInput);
        EXPECT_EQ(l.removeViewportOverrides(second), Hx::eOk);
    });
    EXPECT_EQ(overridden(first), "CW");
    EXPECT_EQ(overridden(second), "");
    erase(first);
    EXPECT_FALSE(look(doors).hasAnyOverrides()) << "its viewport is gone";
    erase(first, false);
    EXPECT_EQ(overridden(first), "CW");
}

TEST_F(Overrides, AreRefusedForWhatIsNoViewportOrNoValue) {
    edit(doors, [&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(6), id(0x40)), Hx::eInvalidInput);
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(256), first), Hx::eInvalidInput);
        EXPECT_EQ(l.setLineWeight(weight(10), first), Hx::eInvalidInput);
        EXPECT_EQ(l.setLinetypeObjectId(walls, first), Hx::eWrongClass);
        EXPECT_EQ(l.setPlotStyleName(walls, first), Hx::eKeyNotFound);
        EXPECT_FALSE(l.isModified());
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(6), {}), Hx::eOk) << "no viewport: the layer's own";
        EXPECT_EQ(l.color().colorIndex(), 6);
    });
    EXPECT_TRUE(look(doors).extensionDictionary().isNull());
}

}  // namespace korvex::test
