// Layer states name layers and linetypes by text: the names follow renames.
#include "host/db/tables/symbol_record_imp.h"
#include "tests/db/states/states_support.h"

namespace korvex::test {

namespace {

class RenamedInStates : public StatesTest {
protected:
    void renameStep(std::uint64_t handle, const wchar_t* name) const {
        step(L"RENAME", [&] { EXPECT_EQ(rename(id(handle), name), Hx::eOk); });
    }
    void undo() const { EXPECT_EQ(journal().undo(), Hx::eOk); }
    void redo() const { EXPECT_EQ(journal().redo(), Hx::eOk); }
    /// "Walls GONE PIPE|VALVE ": the layers of a state.
    std::string layersOf(std::uint64_t state) const {
        HxLyStateReader reader(id(state));
        HxLyStateEntry entry;
        std::string names;
        while (reader.next(entry)) {
            names += toUtf8(entry.layer) + " ";
        }
        return names;
    }
    /// What the record's object tells.
    std::string chainOf(std::uint64_t state) const {
        const Chain chain(at<HxDbXrecord>(id(state))->rbChain());
        std::string text;
        for (const resbuf* node = chain.get(); node; node = node->rbnext) {
            text += node->restype == 8 || node->restype == 6 || node->restype == 302
                        ? std::to_string(node->restype) + " " + toUtf8(node->resval.rstring) + " | "
                        : "";
        }
        return text;
    }
    void setState(std::uint64_t state, const resbuf* list) {
        change<HxDbXrecord>(id(state), [&](HxDbXrecord& r) { EXPECT_EQ(r.setFromRbChain(list), Hx::eOk); });
    }
    /// The state after saving and opening again.
    std::vector<std::string> reopened(std::uint64_t state) const {
        const std::unique_ptr<HxDbDatabase> again = opened(saved());
        return entriesOf(HxDbObjectId(byHandle(*again, state)));
    }
};

}  // namespace

TEST_F(RenamedInStates, FollowFromNameToName) {
    const std::string before = saved();
    const std::string handles = record(0xA3);
    renameStep(0x11, L"Mauern");
    const std::string once = saved();
    renameStep(0x11, L"\u00dc-Mura");
    renameStep(0x33, L"gestrichelt");
    EXPECT_EQ(entriesOf(id(0xA2)).at(0), "\u00dc-Mura 8 c1 t0000FF BOOK$Red w25 gestrichelt Bold a127");
    EXPECT_EQ(HxLyStateReader(id(0xA2)).header().currentLayer, L"\u00dc-Mura");
    EXPECT_EQ(layersOf(0xA2), "\u00dc-Mura GONE PIPE|VALVE ");
    EXPECT_EQ(entriesOf(id(0xA2)).at(2), "PIPE|VALVE 12 c4 w-3 LOST Normal a0");
    EXPECT_EQ(reopened(0xA2), entriesOf(id(0xA2)));
    EXPECT_EQ(record(0xA3), handles);
    const std::string after = saved();
    undo();
    undo();
    EXPECT_EQ(saved(), once);
    undo();
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(layersOf(0xA2), "Walls GONE PIPE|VALVE ");
    redo();
    EXPECT_EQ(saved(), once);
    redo();
    redo();
    EXPECT_EQ(saved(), after);
}

TEST_F(RenamedInStates, TradeNames) {
    const Chain list(hxutBuildList(91, 2047L, 8, L"walls", 8, L"DOORS", 0));
    setState(0xA4, list.get());
    const std::string before = saved();
    renameStep(0x11, L"X");
    renameStep(0x12, L"WALLS");
    renameStep(0x11, L"DOORS");
    EXPECT_EQ(layersOf(0xA4), "DOORS WALLS ");
    EXPECT_EQ(chainOf(0xA4), "8 DOORS | 8 WALLS | ");
    for (int i = 0; i < 3; ++i) {
        undo();
    }
    EXPECT_EQ(saved(), before);
}

TEST_F(RenamedInStates, NamesOfNoLayerStay) {
    const auto spelled = [](const std::string& dashed) {
        return "302 Walls | 8 Walls | 6 " + dashed + " | 8 GONE | 6 Continuous | 8 PIPE|VALVE | 6 LOST | ";
    };
    renameStep(0x12, L"GONE");
    renameStep(0x33, L"LOST");
    EXPECT_EQ(layersOf(0xA2), "Walls GONE PIPE|VALVE ");
    EXPECT_EQ(chainOf(0xA2), spelled("LOST"));
    renameStep(0x12, L"Y");
    renameStep(0x33, L"Z");
    EXPECT_EQ(layersOf(0xA2), "Walls GONE PIPE|VALVE ");
    EXPECT_EQ(chainOf(0xA2), spelled("Z"));
}

TEST_F(RenamedInStates, ANameThatALayerGetsAndLosesAgainStays) {
    const Chain list(hxutBuildList(91, 2047L, 8, L"GONE", 0));
    setState(0xA4, list.get());
    const std::string before = saved();
    renameStep(0x12, L"GONE");
    EXPECT_EQ(layersOf(0xA4), "GONE ");  // the record is looked at while the other has the name
    undo();
    EXPECT_EQ(saved(), before);
    redo();
    EXPECT_EQ(layersOf(0xA4), "GONE ");
    renameStep(0x12, L"Y");
    EXPECT_EQ(layersOf(0xA4), "GONE ");
    EXPECT_EQ(chainOf(0xA4), "8 GONE | ");
}

TEST_F(RenamedInStates, AnErasedLayersNameIsNotTheOthers) {
    const Chain list(hxutBuildList(91, 2047L, 8, L"EMPTY", 8, L"WALLS", 302, L"empty", 0));
    setState(0xA4, list.get());
    const std::string before = saved();
    step(L"ERASE", [&] { erase(id(0x15)); });
    renameStep(0x11, L"EMPTY");
    EXPECT_EQ(layersOf(0xA4), "EMPTY EMPTY ");
    renameStep(0x11, L"Y");
    EXPECT_EQ(layersOf(0xA4), "EMPTY Y ");
    EXPECT_EQ(HxLyStateReader(id(0xA4)).header().currentLayer, L"empty");
    for (int i = 0; i < 3; ++i) {
        undo();
    }
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(layersOf(0xA4), "EMPTY WALLS ");
}

TEST_F(RenamedInStates, ObjectsThatAreThereTellTheNamesOfNow) {
    const std::string before = saved();
    const std::string spelled =
        "302 Walls | 8 Walls | 6 Dashed | 8 GONE | 6 Continuous | 8 PIPE|VALVE | 6 LOST | ";
    EXPECT_EQ(chainOf(0xA2), spelled);
    const HxDbObjectPointer<HxDbXrecord> open(id(0xA2), HxDb::kForRead);
    renameStep(0x11, L"B");
    EXPECT_EQ(chainOf(0xA2).substr(0, 12), "302 B | 8 B ");
    renameStep(0x11, L"C");
    EXPECT_EQ(chainOf(0xA2).substr(0, 12), "302 C | 8 C ");
    undo();
    EXPECT_EQ(chainOf(0xA2).substr(0, 12), "302 B | 8 B ");
    undo();
    EXPECT_EQ(chainOf(0xA2), spelled);
    EXPECT_EQ(saved(), before);
}

TEST_F(RenamedInStates, ChangesBeforeTheRenameKeepTheirSpelling) {
    const std::string before = saved();
    const Chain list(hxutBuildList(91, 2047L, 8, L"wAlLs", 0));
    step(L"STATE", [&] { setState(0xA2, list.get()); });
    renameStep(0x11, L"B");
    EXPECT_EQ(layersOf(0xA2), "B ");
    EXPECT_EQ(chainOf(0xA2), "8 B | ");
    EXPECT_NE(record(0xA2).find("| 8 B"), std::string::npos);
    undo();
    EXPECT_EQ(layersOf(0xA2), "wAlLs ");
    EXPECT_EQ(chainOf(0xA2), "8 wAlLs | ");
    renameStep(0x11, L"B");
    step(L"STATE", [&] { setState(0xA2, list.get()); });  // names no layer now
    renameStep(0x11, L"C");
    EXPECT_EQ(layersOf(0xA2), "wAlLs ");
    for (int i = 0; i < 4; ++i) {
        undo();
    }
    EXPECT_EQ(saved(), before);
}

TEST_F(RenamedInStates, OtherXrecordsAreLeftAlone) {
    const Chain list(hxutBuildList(8, L"WALLS", 302, L"WALLS", 6, L"DASHED", 0));
    setState(0x91, list.get());
    const std::string before = record(0x91);
    renameStep(0x11, L"B");
    renameStep(0x33, L"C");
    EXPECT_EQ(record(0x91), before);
    EXPECT_EQ(chainOf(0x91), "8 WALLS | 302 WALLS | 6 DASHED | ");
}

TEST_F(RenamedInStates, LayersOfAReferenceGoWithIt) {
    const std::string before = saved();
    const HxDbObjectId reference = id(0xB0);
    EXPECT_EQ(rename(id(0x13), L"VALVE"), Hx::eRefused);
    step(L"RENAME", [&] { EXPECT_EQ(rename(reference, L"Rohr"), Hx::eOk); });
    EXPECT_EQ(layer(L"Rohr|VALVE"), id(0x13));
    EXPECT_EQ(layersOf(0xA2), "Walls GONE Rohr|VALVE ");
    EXPECT_EQ(reopened(0xA2), entriesOf(id(0xA2)));
    EXPECT_NE(record(0x13).find("2 Rohr|VALVE"), std::string::npos);
    undo();
    EXPECT_EQ(saved(), before);
    const HxDbObjectId taken = addLayer(L"Rohr");
    change<HxDbLayerTableRecord>(taken, [&](HxDbLayerTableRecord& other) {
        ASSERT_EQ(beginChange(&other), Hx::eOk);
        fields<SymbolRecordImp>(&other).name = L"Rohr|VALVE";
        fields<SymbolRecordImp>(&other).noteName(*database);
    });
    EXPECT_EQ(rename(reference, L"Rohr"), Hx::eDuplicateRecordName);
    erase(taken);
    {
        const HxDbObjectPointer<HxDbObject> open(id(0x13), HxDb::kForRead);
        EXPECT_EQ(rename(reference, L"Rohr"), Hx::eWasOpenForRead);
        EXPECT_EQ(at<HxDbSymbolTableRecord>(reference)->name(), std::wstring(L"PIPE"));
    }
    EXPECT_EQ(rename(reference, L"pipe"), Hx::eOk);
    EXPECT_EQ(at<HxDbSymbolTableRecord>(id(0x13))->name(), std::wstring(L"pipe|VALVE"));
}

TEST_F(RenamedInStates, AlsoWhileTheStatesAreErased) {
    step(L"ERASE", [&] { erase(id(0xA1)); });
    step(L"ERASE", [&] { erase(id(0xA2)); });
    renameStep(0x11, L"B");
    EXPECT_EQ(chainOf(0xA2).substr(0, 12), "302 B | 8 B ");
    step(L"UNERASE", [&] {
        erase(id(0xA1), false);
        erase(id(0xA2), false);
    });
    renameStep(0x11, L"C");
    EXPECT_EQ(layersOf(0xA2), "C GONE PIPE|VALVE ");
    EXPECT_NE(record(0xA2).find("302 C | 8 C"), std::string::npos);
}

TEST_F(RenamedInStates, ARecordThatIsMadeBeforeItHasAnOwner) {
    HxLyStateListBuilder builder(database.get(), id(0xA1), {});
    HxLyStateEntry entry;
    entry.layer = L"WALLS";
    ASSERT_TRUE(builder.add(entry));
    const Chain list(builder.take());
    zds_name made = {0, 0};
    zds_name states = {0, 0};
    ASSERT_EQ(hxdbEntMakeX(list.get(), made), RTNORM);
    renameStep(0x11, L"B");
    ASSERT_EQ(hxdbGetZdsName(states, id(0xA1)), Hx::eOk);
    ASSERT_EQ(hxdbDictAdd(states, L"New", made), RTNORM);
    HxDbObjectId record;
    ASSERT_EQ(hxdbGetObjectId(record, made), Hx::eOk);
    HxLyStateReader reader(record);
    ASSERT_TRUE(reader.next(entry));
    EXPECT_EQ(entry.layer, L"B");
}

}  // namespace korvex::test
