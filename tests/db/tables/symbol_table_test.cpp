// Tables: look-up, stepping, adding, and the names of records.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class SymbolTables : public KernelTest {
protected:
    HxDbLayerTable& layers() const { return *at<HxDbLayerTable>(database->layerTableId()); }

    /// Names in stepping order, parted by blanks; "!" for erased ones.
    std::string names(bool forward, bool skipErased) const {
        HxDbSymbolTableIterator* made = nullptr;
        EXPECT_EQ(layers().newIterator(made, forward, skipErased), Hx::eOk);
        const std::unique_ptr<HxDbSymbolTableIterator> steps(made);
        std::string all;
        for (; !steps->done(); steps->step(forward, skipErased)) {
            HxDbSymbolTableRecord* record = nullptr;
            EXPECT_EQ(steps->getRecord(record, HxDb::kForRead, true), Hx::eOk);
            all += (all.empty() ? "" : " ") + toUtf8(record->name()) + (record->isErased() ? "!" : "");
            record->close();
        }
        EXPECT_TRUE(steps->getRecordId().isNull());
        return all;
    }
    /// What adding a record of the class under a name gives; a refused one is deleted.
    template <class T, class... Arguments>
    Hx::ErrorStatus add(const wchar_t* name, Arguments... arguments) {
        const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
        auto record = std::make_unique<T>(arguments...);
        EXPECT_EQ(record->setName(name), Hx::eOk);
        HxDbObjectId added;
        const Hx::ErrorStatus status = table->add(added, record.get());
        EXPECT_EQ(status == Hx::eOk, !added.isNull());
        if (status == Hx::eOk) {
            record.release()->close();
        }
        return status;
    }
};

}  // namespace

TEST_F(SymbolTables, LookUpByNameWithoutCase) {
    HxDbObjectId found;
    EXPECT_EQ(layers().getAt(L"walls", found), Hx::eOk);
    EXPECT_EQ(found, id(0x11));
    EXPECT_EQ(layers().getAt(L"ROOF", found), Hx::eKeyNotFound);
    EXPECT_TRUE(found.isNull());
    EXPECT_EQ(layers().getAt(nullptr, found), Hx::eInvalidInput);
    erase(id(0x12));
    EXPECT_EQ(layers().getAt(L"DOORS", found), Hx::eWasErased);
    EXPECT_EQ(layers().getAt(L"DOORS", found, true), Hx::eOk);
    EXPECT_EQ(found, id(0x12));
    EXPECT_FALSE(layers().has(L"DOORS") || layers().has(id(0x12)));
    EXPECT_FALSE(layers().has(id(0x33))) << "a record of another table";
    HxDbLayerTableRecord* record = nullptr;
    EXPECT_EQ(layers().getAt(L"DOORS", record, HxDb::kForRead), Hx::eWasErased);
    EXPECT_EQ(layers().getAt(L"Walls", record, HxDb::kForWrite), Hx::eOk);
    HxDbLayerTableRecord* second = nullptr;
    EXPECT_EQ(layers().getAt(L"WALLS", second, HxDb::kForRead), Hx::eWasOpenForWrite);
    EXPECT_EQ(second, nullptr);
    record->close();
}

TEST_F(SymbolTables, ANewRecordTakesThePlaceOfAnErasedName) {
    erase(layer(L"DOORS"));
    const HxDbObjectId fresh = addLayer(L"Doors");
    EXPECT_EQ(layer(L"DOORS"), fresh);
    const HxDbObjectPointer<HxDbObject> old(id(0x12), HxDb::kForWrite, true);
    EXPECT_EQ(old->erase(false), Hx::eDuplicateRecordName);
    erase(fresh);
    EXPECT_EQ(old->erase(false), Hx::eOk);
    EXPECT_EQ(layer(L"doors"), id(0x12));
}

TEST_F(SymbolTables, SteppingBothWaysAndOverErasedRecords) {
    erase(id(0x10 + 2));
    erase(id(0x15));
    EXPECT_EQ(names(true, true), "0 WALLS PIPE|VALVE Defpoints");
    EXPECT_EQ(names(true, false), "0 WALLS DOORS! PIPE|VALVE Defpoints EMPTY!");
    EXPECT_EQ(names(false, true), "Defpoints PIPE|VALVE WALLS 0");
    EXPECT_EQ(names(false, false), "EMPTY! Defpoints PIPE|VALVE DOORS! WALLS 0");
    EXPECT_EQ(layers().numRecords(), 4U);
}

TEST_F(SymbolTables, RecordsThatComeAndGoMeanwhile) {
    HxDbSymbolTableIterator* made = nullptr;
    ASSERT_EQ(layers().newIterator(made), Hx::eOk);
    const std::unique_ptr<HxDbSymbolTableIterator> steps(made);
    std::string seen;
    for (; !steps->done(); steps->step()) {
        const std::wstring name = at<HxDbLayerTableRecord>(steps->getRecordId())->name();
        seen += toUtf8(name) + " ";
        if (name == L"WALLS") {
            erase(layer(L"DOORS"));
            addLayer(L"NEW");
        }
    }
    EXPECT_EQ(seen, "0 WALLS PIPE|VALVE Defpoints EMPTY NEW ");
    steps->step();
    EXPECT_TRUE(steps->done());
    HxDbObjectId none;
    EXPECT_EQ(steps->getRecordId(none), Hx::eIteratorDone);
    steps->start(false);
    EXPECT_EQ(steps->getRecordId(), layer(L"NEW"));
}

TEST_F(SymbolTables, WhatCannotBeAdded) {
    EXPECT_EQ(add<HxDbLayerTableRecord>(L"walls"), Hx::eDuplicateRecordName);
    EXPECT_EQ(add<HxDbLinetypeTableRecord>(L"DOTS"), Hx::eInvalidInput);
    EXPECT_EQ(add<HxDbOtherTableRecord>(L"DOTS", L"STYLE"), Hx::eInvalidInput);
    EXPECT_EQ(add<HxDbLayerTableRecord>(L"DOTS"), Hx::eOk);
    HxDbLayerTableRecord nameless;
    EXPECT_EQ(layers().add(&nameless), Hx::eNotOpenForWrite);
    change<HxDbLayerTable>(database->layerTableId(), [&](HxDbLayerTable& table) {
        EXPECT_EQ(table.add(&nameless), Hx::eInvalidInput);
        EXPECT_EQ(table.add(nullptr), Hx::eInvalidInput);
        EXPECT_EQ(table.add(at<HxDbLayerTableRecord>(layer(L"DOTS"))), Hx::eAlreadyInDb);
    });
    EXPECT_EQ(layers().numRecords(), 7U);
}

TEST_F(SymbolTables, WhatCannotGo) {
    for (const HxDbObjectId needed : {layer(L"0"), layer(L"DEFPOINTS"), database->layerTableId(),
                                      database->continuousLinetype(), database->modelSpaceId()}) {
        const HxDbObjectPointer<HxDbObject> object(needed, HxDb::kForWrite);
        EXPECT_EQ(object->erase(), Hx::eCannotBeErasedByCaller) << toUtf8(object->dxfName());
    }
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    {
        const HxDbObjectPointer<HxDbObject> current(layer(L"EMPTY"), HxDb::kForWrite);
        EXPECT_EQ(current->erase(), Hx::eCannotBeErasedByCaller);
    }
    ASSERT_EQ(database->setClayer(layer(L"0")), Hx::eOk);
    erase(layer(L"EMPTY"));
    EXPECT_EQ(database->setClayer(id(0x15)), Hx::eWasErased);
}

TEST_F(SymbolTables, WhichNamesARecordMayGet) {
    EXPECT_EQ(rename(layer(L"WALLS"), L"doors"), Hx::eDuplicateRecordName);
    EXPECT_EQ(rename(layer(L"0"), L"ZERO"), Hx::eRefused);
    EXPECT_EQ(rename(id(0x13), L"VALVE"), Hx::eRefused);
    EXPECT_EQ(rename(database->modelSpaceId(), L"MODEL"), Hx::eRefused);
    for (const wchar_t* bad : {L"", L" A", L"A ", L"A|B", L"A*", L"A\tB", L"a<b", L"a`b"}) {
        EXPECT_EQ(rename(layer(L"WALLS"), bad), Hx::eInvalidInput) << toUtf8(bad);
    }
    EXPECT_EQ(rename(layer(L"WALLS"), std::wstring(256, L'x').c_str()), Hx::eInvalidInput);
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(rename(layer(L"WALLS"), std::wstring(255, L'x').c_str()), Hx::eOk);
    EXPECT_EQ(rename(id(0x11), L"Wände (außen) - 2$_"), Hx::eOk);
    EXPECT_EQ(layer(L"WÄNDE (AUßEN) - 2$_"), id(0x11));
}

TEST_F(SymbolTables, AChangeOfCaseIsARename) {
    EXPECT_EQ(rename(layer(L"WALLS"), L"Walls"), Hx::eOk);
    EXPECT_STREQ(at<HxDbLayerTableRecord>(layer(L"WALLS"))->name(), L"Walls");
    EXPECT_TRUE(has(record(0x11), "2 Walls |"));
    EXPECT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x11));
    EXPECT_EQ(layers().numRecords(), 6U);
}

TEST_F(SymbolTables, RenamesReachWhateverNamesTheRecord) {
    ASSERT_EQ(database->setClayer(layer(L"WALLS")), Hx::eOk);
    ASSERT_TRUE(hxdbObjectPointer(id(0x40)));  // one that is in memory, the others only in the file
    ASSERT_EQ(rename(layer(L"WALLS"), L"MUR"), Hx::eOk);
    ASSERT_EQ(rename(recordId(*database, TableKind::linetype, L"DASHED"), L"DOTTED"), Hx::eOk);
    ASSERT_EQ(rename(recordId(*database, TableKind::block, L"DOOR"), L"GATE"), Hx::eOk);
    const std::string bytes = saved();
    EXPECT_TRUE(has(bytes, "9\n$CLAYER\n8\nMUR\n"));
    EXPECT_TRUE(has(record(0x40), "8 MUR |") && has(record(0x40), "1003 MUR |"));
    EXPECT_TRUE(has(record(0x42), "8 MUR |"));
    EXPECT_TRUE(has(record(0x12), "6 DOTTED |") && has(record(0x44), "6 DOTTED |"));
    EXPECT_TRUE(has(record(0x41), "2 GATE |") && has(record(0x2A), "3 GATE |"));
    for (const char* gone : {"WALLS", "DASHED", "DOOR\n"}) {
        EXPECT_FALSE(has(bytes, gone)) << gone;
    }
    EXPECT_EQ(at<HxDbEntity>(id(0x40))->layer(), L"MUR");
    EXPECT_EQ(at<HxDbEntity>(id(0x44))->linetypeId(), id(0x33));
    EXPECT_EQ(at<HxDbBlockReference>(id(0x41))->blockTableRecord(), id(0x23));
    EXPECT_EQ(database->clayer(), id(0x11));
}

TEST_F(SymbolTables, SwappedNamesDoNotMixUp) {
    ASSERT_EQ(rename(id(0x11), L"TEMP"), Hx::eOk);
    ASSERT_EQ(rename(id(0x12), L"WALLS"), Hx::eOk);
    ASSERT_EQ(rename(id(0x11), L"DOORS"), Hx::eOk);
    EXPECT_TRUE(has(record(0x40), "8 DOORS |"));
    EXPECT_TRUE(has(record(0x2B), "8 WALLS |"));
    EXPECT_EQ(layer(L"WALLS"), id(0x12));
    while (journal().undo() == Hx::eOk) {
    }
    EXPECT_EQ(changedLines(planDrawing(), saved()), Log{});
}

TEST_F(SymbolTables, ANameTakenFromAnErasedRecordGoesBackToIt) {
    ASSERT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x11));  // one is in memory, the attribute is not
    step(L"ERASE", [&] { erase(id(0x11)); });
    step(L"RENAME", [&] { rename(id(0x12), L"WALLS"); });
    EXPECT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x12));
    EXPECT_EQ(layerOf(*id(0x42).stub()), id(0x12).stub());
    const std::string renamed = saved();
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(journal().undo(), Hx::eOk);
        ASSERT_EQ(journal().undo(), Hx::eOk);
        EXPECT_EQ(changedLines(planDrawing(), saved()), Log{});
        EXPECT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x11));
        EXPECT_EQ(layerOf(*id(0x42).stub()), id(0x11).stub());
        ASSERT_EQ(journal().redo(), Hx::eOk);
        ASSERT_EQ(journal().redo(), Hx::eOk);
        EXPECT_EQ(changedLines(renamed, saved()), Log{});
    }
}

TEST_F(SymbolTables, NamesSwappedBetweenOtherChangesDoNotMixUp) {
    const auto paint = [&](std::uint64_t entity) {
        change<HxDbEntity>(id(entity), [](HxDbEntity& e) { e.setColor(HxCmColor::byIndex(2)); });
    };
    step(L"SWAP", [&] {
        rename(id(0x11), L"TEMP");
        paint(0x40);
        rename(id(0x12), L"WALLS");
        paint(0x2B);
        journal().putMark();
        paint(0x42);
        rename(id(0x11), L"DOORS");
        paint(0x40);
    });
    const std::string swapped = saved();
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(journal().undo(), Hx::eOk);
        EXPECT_EQ(changedLines(planDrawing(), saved()), Log{});
        EXPECT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x11));
        EXPECT_EQ(at<HxDbEntity>(id(0x2B))->layerId(), id(0x12));
        ASSERT_EQ(journal().redo(), Hx::eOk);
        EXPECT_EQ(changedLines(swapped, saved()), Log{});
        EXPECT_EQ(at<HxDbEntity>(id(0x40))->layerId(), id(0x11));
    }
}

TEST_F(SymbolTables, ExtendedDataInMemoryFollowsARename) {
    change<HxDbObject>(id(0x40), [&](HxDbObject& line) {
        ASSERT_EQ(rename(layer(L"WALLS"), L"MUR"), Hx::eOk);
        const Chain data(line.xData(L"TOOLS"));
        ASSERT_TRUE(data && data->rbnext);
        EXPECT_EQ(textOf(*data->rbnext), L"MUR");
        EXPECT_EQ(line.setXData(Chain(hxutBuildList(1001, L"ACAD", 1070, 1, 0)).get()), Hx::eOk);
    });
    EXPECT_TRUE(has(record(0x40), "1001 TOOLS | 1003 MUR | 1000 note | 1001 ACAD | 1070 1"));
}

}  // namespace korvex::test
