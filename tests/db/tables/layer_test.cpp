// Layer properties: their rules, and the groups that they are in.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Layers : public KernelTest {
protected:
    using KernelTest::KernelTest;

    HxDbObjectId walls = layer(L"WALLS");
    HxDbLayerTableRecord& look(HxDbObjectId id) const { return *at<HxDbLayerTableRecord>(id); }
    template <class Edit>
    void edit(Edit what) {
        change<HxDbLayerTableRecord>(walls, what);
    }
    /// WALLS in the saved drawing without head, and in a drawing that is opened from it.
    std::string written() { return record(walls).substr(record(walls).find("2 WALLS")); }
    template <class Check>
    void inTheFile(Check what) {
        const auto again = opened(saved());
        what(*HxDbLayerTableRecord::cast(hxdbObjectPointer(recordId(*again, TableKind::layer, L"WALLS"))));
    }
};

/// The same drawing in an older version; extended data and dictionaries as R12 has them are of no matter
/// here.
class LayersOfR12 : public Layers {
protected:
    LayersOfR12() : Layers(oldDrawing()) {}
};
class LayersOfR2000 : public Layers {
protected:
    LayersOfR2000() : Layers(sheetDrawing()) {}
};

}  // namespace

TEST_F(Layers, SwitchesAreBitsAndASign) {
    edit([](HxDbLayerTableRecord& l) {
        l.setIsOff(true);
        EXPECT_EQ(l.setIsFrozen(true), Hx::eOk);
        l.setIsLocked(true);
        l.setVPDFLT(true);
        EXPECT_EQ(l.setIsPlottable(false), Hx::eOk);
    });
    EXPECT_EQ(written(),
              "2 WALLS | 70 7 | 62 -1 | 6 Continuous | 290 0 | 370 -3 | 390 71 | 1001 ACAD | 1070 5");
    inTheFile([](HxDbLayerTableRecord& l) {
        EXPECT_TRUE(l.isOff() && l.isFrozen() && l.isLocked() && l.VPDFLT());
        EXPECT_FALSE(l.isPlottable());
        EXPECT_EQ(l.color().colorIndex(), 1);
    });
    edit([](HxDbLayerTableRecord& l) {
        l.setIsOff(false);
        EXPECT_EQ(l.setIsFrozen(false), Hx::eOk);
        l.setIsLocked(false);
        l.setVPDFLT(false);
        EXPECT_EQ(l.setIsPlottable(true), Hx::eOk);
    });
    EXPECT_EQ(record(walls).find("70 0 | 62 1 |") == std::string::npos, false);
}

TEST_F(Layers, WhatTheDrawingsRulesForbid) {
    ASSERT_EQ(database->setClayer(walls), Hx::eOk);
    edit([](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setIsFrozen(true), Hx::eRefused);
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(256)), Hx::eInvalidInput);
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(0)), Hx::eInvalidInput);
        EXPECT_EQ(l.setLineWeight(static_cast<HxDb::LineWeight>(51)), Hx::eInvalidInput);
        EXPECT_EQ(l.setLineWeight(HxDb::kLnWtByLayer), Hx::eInvalidInput);
        EXPECT_EQ(l.setLinetypeObjectId({}), Hx::eWrongClass);
        EXPECT_EQ(l.setLinetypeObjectId(l.objectId()), Hx::eWrongClass);
        HxCmTransparency byLayer;
        byLayer.setMethod(HxCmTransparency::kByLayer);
        EXPECT_EQ(l.setTransparency(byLayer), Hx::eInvalidInput);
        EXPECT_EQ(l.setPlotStyleName(L"Thin"), Hx::eKeyNotFound);
        EXPECT_EQ(l.setPlotStyleName(l.objectId()), Hx::eKeyNotFound);
        EXPECT_FALSE(l.isModified());
    });
    const HxDbObjectId defpoints = layer(L"DEFPOINTS");
    change<HxDbLayerTableRecord>(defpoints, [](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setIsPlottable(true), Hx::eRefused);
        EXPECT_EQ(l.setIsPlottable(false), Hx::eOk);
    });
    for (const HxDbObjectId refused : {id(0x13), layer(L"EMPTY")}) {
        if (!look(refused).isDependent()) {
            change<HxDbLayerTableRecord>(refused, [](HxDbLayerTableRecord& l) { l.setIsFrozen(true); });
        }
        EXPECT_EQ(database->setClayer(refused), Hx::eRefused);
    }
    EXPECT_EQ(database->setClayer({}), Hx::eNullObjectId);
    EXPECT_EQ(database->setClayer(id(0x33)), Hx::eWrongClass);
    const HxDbDatabase other;
    EXPECT_EQ(database->setClayer(other.layerZero()), Hx::eWrongClass);
}

TEST_F(Layers, ChangesNeedAnOpenForWrite) {
    const HxDbObjectPointer<HxDbLayerTableRecord> open(walls, HxDb::kForRead);
    EXPECT_EQ(open->setIsFrozen(true), Hx::eNotOpenForWrite);
    open->setIsOff(true);
    EXPECT_FALSE(open->isOff());
    EXPECT_EQ(open->setTransparency(HxCmTransparency(100)), Hx::eNotOpenForWrite);
    EXPECT_EQ(open->setDescription(L"outer"), Hx::eNotOpenForWrite);
    EXPECT_EQ(open->setColor(HxCmColor::byIndex(5), id(0x61)), Hx::eNotOpenForWrite);
    EXPECT_EQ(open->erase(), Hx::eNotOpenForWrite);
    EXPECT_FALSE(database->isModified()) << "no application was registered either";
}

TEST_F(Layers, ColoursByIndexTrueAndFromABook) {
    edit([](HxDbLayerTableRecord& l) { EXPECT_EQ(l.setColor(HxCmColor::byRgb(255, 128, 1)), Hx::eOk); });
    EXPECT_TRUE(has(written(), " | 420 16744449")) << written();
    edit([](HxDbLayerTableRecord& l) {
        HxCmColor color = HxCmColor::byRgb(10, 20, 30);
        color.setNames(L"Slate 3", L"HOUSE COLOURS");
        EXPECT_EQ(l.setColor(color), Hx::eOk);
        l.setIsOff(true);
    });
    EXPECT_TRUE(has(written(), "420 660510")) << written();
    EXPECT_TRUE(has(written(), "430 HOUSE COLOURS$Slate 3"));
    EXPECT_TRUE(has(written(), "70 0 | 62 -"));
    inTheFile([](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.color().red(), 10);
        EXPECT_EQ(l.color().blue(), 30);
        EXPECT_TRUE(l.color().isFromBook());
        EXPECT_EQ(l.color().colorNameForDisplay(), L"Slate 3");
        EXPECT_TRUE(l.isOff());
    });
    edit([](HxDbLayerTableRecord& l) { EXPECT_EQ(l.setColor(HxCmColor::byIndex(30)), Hx::eOk); });
    EXPECT_FALSE(has(written(), "420 ") || has(written(), "430 "));
    EXPECT_TRUE(has(written(), "62 -30 |"));
}

TEST_F(Layers, LinetypeLineweightAndPlotStyle) {
    edit([&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setLinetypeObjectId(id(0x33)), Hx::eOk);
        EXPECT_EQ(l.setLineWeight(static_cast<HxDb::LineWeight>(35)), Hx::eOk);
        EXPECT_EQ(l.setPlotStyleName(L"bold"), Hx::eOk);
        EXPECT_EQ(l.plotStyleName(), L"Bold");
        EXPECT_EQ(l.plotStyleNameId(), id(0x72));
    });
    EXPECT_TRUE(has(written(), "6 DASHED | 370 35 | 390 72 |"));
    EXPECT_EQ(look(layer(L"DOORS")).linetypeObjectId(), id(0x33));
    EXPECT_EQ(look(layer(L"DOORS")).lineWeight(), 50);
    erase(id(0x33));
    EXPECT_TRUE(look(walls).linetypeObjectId().isNull());
}

TEST_F(Layers, TransparencyAndDescriptionAreExtendedData) {
    const auto application = [&](const wchar_t* name) {
        return !recordId(*database, TableKind::appId, name).isNull();
    };
    EXPECT_TRUE(look(walls).transparency().isSolid());
    edit([](HxDbLayerTableRecord& l) { EXPECT_EQ(l.setTransparency(HxCmTransparency(102)), Hx::eOk); });
    EXPECT_TRUE(application(L"AcCmTransparency"));
    EXPECT_FALSE(application(L"AcAecLayerStandard"));
    edit([](HxDbLayerTableRecord& l) { EXPECT_EQ(l.setDescription(L"Außenwände"), Hx::eOk); });
    EXPECT_TRUE(has(written(), "| 1001 ACAD | 1070 5 | 1001 AcCmTransparency | 1071 33554534 | 1001 "
                               "AcAecLayerStandard | 1000  | 1000 Außenwände"));
    inTheFile([](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.transparency().alpha(), 102);
        EXPECT_EQ(l.description(), L"Außenwände");
    });
    edit([](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setTransparency(HxCmTransparency(255)), Hx::eOk);
        EXPECT_EQ(l.setDescription(nullptr), Hx::eOk);
    });
    EXPECT_TRUE(has(written(), "390 71 | 1001 ACAD | 1070 5"));
    EXPECT_FALSE(has(written(), "AcCm") || has(written(), "AcAec"));
    edit([](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setDescription(std::wstring(20000, L'x').c_str()), Hx::eXdataSizeExceeded);
        EXPECT_EQ(l.description(), L"");
    });
}

TEST_F(Layers, NewLayersAreWrittenAsDrawingsHaveThem) {
    const HxDbObjectId fresh = addLayer(L"NEW");
    EXPECT_TRUE(has(record(fresh),
                    " | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 NEW | "
                    "70 0 | 62 7 | 6 Continuous | 370 -3"))
        << record(fresh);
    EXPECT_EQ(look(fresh).plotStyleName(), L"Normal");
    EXPECT_TRUE(look(fresh).isPlottable());
    EXPECT_EQ(look(fresh).linetypeObjectId(), database->continuousLinetype());
}

TEST_F(Layers, UsageCountsWhatIsDrawnInAllSpacesAndBlocks) {
    const auto used = [&] {
        change<HxDbLayerTable>(database->layerTableId(), [](HxDbLayerTable& t) { t.generateUsageData(); });
        std::string names;
        for (HxDbStub* stub : members(*database->layerTableId().stub())) {
            const HxDbLayerTableRecord& record = look(HxDbObjectId(stub));
            names += record.isInUse() ? toUtf8(record.name()) + " " : "";
        }
        return names;
    };
    EXPECT_EQ(used(), "0 WALLS DOORS Defpoints ");
    erase(id(0x40));
    EXPECT_EQ(used(), "0 WALLS DOORS Defpoints ") << "the attribute is on it";
    erase(id(0x41));
    EXPECT_EQ(used(), "0 DOORS Defpoints ");
    erase(id(0x23));
    EXPECT_EQ(used(), "0 Defpoints ");
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    EXPECT_EQ(used(), "0 Defpoints EMPTY ");
    EXPECT_FALSE(hxdbObjectPointer(database->layerTableId())->isModified());
}

TEST_F(Layers, UsageCountsTheBeginningsOfBlocksAndNotWhatViewportsFreeze) {
    const auto isUsed = [&](const wchar_t* name) {
        change<HxDbLayerTable>(database->layerTableId(), [](HxDbLayerTable& t) { t.generateUsageData(); });
        return look(layer(name)).isInUse();
    };
    change<HxDbViewport>(id(0x61), [&](HxDbViewport& v) {
        HxArray<HxDbObjectId> frozen;
        frozen.append(layer(L"EMPTY"));
        ASSERT_EQ(v.freezeLayersInViewport(frozen), Hx::eOk);
    });
    EXPECT_FALSE(isUsed(L"EMPTY"));
    change<HxDbEntity>(id(0x2A), [&](HxDbEntity& begin) { ASSERT_EQ(begin.setLayer(L"EMPTY"), Hx::eOk); });
    EXPECT_TRUE(isUsed(L"EMPTY"));
}

TEST_F(Layers, KeepTheUsageMarkThatTheyAreGivenUntilUsageIsFoundOutAnew) {
    auto* record = new HxDbLayerTableRecord;
    EXPECT_FALSE(record->isInUse());
    record->setIsInUse(true);
    ASSERT_EQ(record->setName(L"NEW"), Hx::eOk);
    change<HxDbLayerTable>(database->layerTableId(),
                           [&](HxDbLayerTable& t) { ASSERT_EQ(t.add(record), Hx::eOk); });
    record->close();
    EXPECT_TRUE(record->isInUse());
    record->setIsInUse(false);
    EXPECT_FALSE(record->isInUse());
    record->setIsInUse(true);
    change<HxDbLayerTable>(database->layerTableId(), [](HxDbLayerTable& t) { t.generateUsageData(); });
    EXPECT_FALSE(record->isInUse());
}

TEST_F(LayersOfR12, HaveWhatTheirFilesCanHold) {
    edit([&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setColor(HxCmColor::byRgb(1, 2, 3)), Hx::eNotApplicable);
        EXPECT_EQ(l.setLineWeight(static_cast<HxDb::LineWeight>(35)), Hx::eNotApplicable);
        EXPECT_EQ(l.setIsPlottable(false), Hx::eNotApplicable);
        EXPECT_EQ(l.setPlotStyleName(L"Normal"), Hx::eNotApplicable);
        EXPECT_EQ(l.createExtensionDictionary(), Hx::eNotApplicable);
        EXPECT_FALSE(l.isModified());
        EXPECT_EQ(l.plotStyleName(), L"Color_1");
        EXPECT_EQ(l.setColor(HxCmColor::byIndex(4)), Hx::eOk);
        l.setIsOff(true);
    });
    EXPECT_TRUE(has(saved(), "0\nLAYER\n2\nWALLS\n70\n0\n62\n-4\n6\nCONTINUOUS\n0\nENDTAB\n"));
}

TEST_F(LayersOfR2000, HaveLineweightsButNoTrueColours) {
    edit([&](HxDbLayerTableRecord& l) {
        EXPECT_EQ(l.setColor(HxCmColor::byRgb(1, 2, 3)), Hx::eNotApplicable);
        EXPECT_EQ(l.setLineWeight(static_cast<HxDb::LineWeight>(35)), Hx::eOk);
        EXPECT_EQ(l.setIsPlottable(false), Hx::eOk);
        EXPECT_EQ(l.setPlotStyleName(L"Normal"), Hx::eNotApplicable) << "plot styles depend on colours";
        EXPECT_EQ(l.plotStyleName(), L"Color_1");
    });
    EXPECT_TRUE(has(written(), "6 Continuous | 290 0 | 370 35")) << written();
}

}  // namespace korvex::test
