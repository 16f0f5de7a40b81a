// Layer states in a drawing: saving, restoring, comparing, copying, whoever has what open.
#include "tests/db/states/states_support.h"

#include <set>

namespace korvex::test {

namespace {

using Texts = std::vector<std::string>;

class LayerStates : public StatesTest {
protected:
    explicit LayerStates(const std::string& bytes = statesDrawing()) : StatesTest(bytes) {}

    HxDbLayerStateManager& states() const { return *database->getLayerStateManager(); }
    Hx::ErrorStatus save(const wchar_t* name, HxDbObjectId viewport = {}) const {
        return states().saveLayerState(name, HxLyState::kAllProperties, viewport);
    }
    Texts names(bool hidden = false) const {
        HxArray<CStdStr<wchar_t>> found;
        EXPECT_EQ(states().getLayerStateNames(found, hidden), Hx::eOk);
        return texts(found);
    }
    static Texts texts(const HxArray<CStdStr<wchar_t>>& names) {
        Texts all;
        for (const CStdStr<wchar_t>& name : names) {
            all.push_back(toUtf8(name));
        }
        return all;
    }
    /// "WALLS 32: Red, now Blue", one for each difference.
    Texts differences(const wchar_t* name, HxDbObjectId viewport = {}, HxDbDatabase* source = nullptr) const {
        HxArray<HxLyStateDifference> found;
        EXPECT_EQ(states().compareLayerStateToDb(found, name, viewport, nullptr, source), Hx::eOk);
        Texts all;
        for (const HxLyStateDifference& one : found) {
            all.push_back(toUtf8(one.layer) + ' ' + std::to_string(one.property) + ": " +
                          toUtf8(one.inState) + ", now " + toUtf8(one.inDrawing));
        }
        return all;
    }
    Texts restore(const wchar_t* name, HxDbObjectId viewport = {}, int flags = 0,
                  const std::int32_t* mask = nullptr) const {
        HxArray<CStdStr<wchar_t>> refused;
        EXPECT_EQ(states().restoreLayerState(name, viewport, flags, mask, &refused), Hx::eOk);
        return texts(refused);
    }
    /// Another value for every property.
    void changeAll(const wchar_t* name) const {
        change<HxDbLayerTableRecord>(layer(name), [this](HxDbLayerTableRecord& l) {
            l.setIsOff(!l.isOff());
            l.setIsFrozen(!l.isFrozen());
            l.setIsLocked(!l.isLocked());
            l.setIsPlottable(!l.isPlottable());
            l.setVPDFLT(!l.VPDFLT());
            HxCmColor color = HxCmColor::byRgb(1, 2, 3);
            color.setNames(L"Sky", L"BOOK");
            l.setColor(color);
            l.setLinetypeObjectId(l.linetypeObjectId() == id(0x33) ? id(0x32) : id(0x33));
            l.setLineWeight(static_cast<HxDb::LineWeight>(70));
            l.setPlotStyleName(l.plotStyleName() == L"Bold" ? L"Normal" : L"Bold");
            l.setTransparency(HxCmTransparency(127));
        });
    }
};

class PlanWithoutStates : public LayerStates {
protected:
    PlanWithoutStates() : LayerStates(planDrawing()) {}
};

class StatesOfR12 : public LayerStates {
protected:
    StatesOfR12() : LayerStates(oldDrawing()) {}
};

}  // namespace

TEST_F(PlanWithoutStates, SavingMakesTheDictionariesAndOneRecord) {
    const std::string before = saved();
    EXPECT_TRUE(states().layerStatesDictionaryId().isNull());
    EXPECT_EQ(names(), Texts());
    EXPECT_EQ(saved(), before);
    EXPECT_FALSE(database->isModified());

    step(L"save", [this] { ASSERT_EQ(save(L"Evening"), Hx::eOk); });
    const HxDbObjectId dictionary = states().layerStatesDictionaryId();
    const HxDbObjectId state = states().layerStateId(L"EVENING");
    const std::string owner =
        "330 " + std::string(record(dictionary).substr(record(dictionary).find("| 5 ") + 4, 3));
    EXPECT_EQ(dictionary, states().layerStatesDictionaryId(true));
    EXPECT_EQ(at<HxDbObject>(dictionary)->ownerId(),
              at<HxDbObject>(database->layerTableId())->extensionDictionary());
    EXPECT_TRUE(has(record(state), "102 {ACAD_REACTORS | " + owner)) << record(state);
    EXPECT_TRUE(has(record(state), "91 2047 | 301  | 290 0 | 302 0 | 8 0 | 90 8 | 62 7 |")) << record(state);
    EXPECT_EQ(entriesOf(state).size(), 6U);
    EXPECT_EQ(entriesOf(state)[2], "DOORS 8 c3 w50 DASHED Bold a255");
    EXPECT_EQ(entriesOf(state)[4], "Defpoints 0 c7 w-3 Continuous Normal a255");

    const std::string after = saved();
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(names(), Texts());
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_EQ(saved(), after);
    EXPECT_EQ(names(), Texts{"Evening"});
}

TEST_F(PlanWithoutStates, BadNamesMakeNothing) {
    const std::string before = saved();
    for (const wchar_t c : std::wstring(L"<>/?'\"\\|;:=*,\t\n\x7f")) {
        EXPECT_EQ(save((L"a" + std::wstring(1, c)).c_str()), Hx::eInvalidInput) << static_cast<int>(c);
    }
    for (const wchar_t* const name : {L"", L" ", L" a", L"a "}) {
        EXPECT_EQ(save(name), Hx::eInvalidInput);
    }
    EXPECT_EQ(save(nullptr), Hx::eInvalidInput);
    EXPECT_EQ(states().deleteLayerState(L"none"), Hx::eKeyNotFound);
    EXPECT_EQ(states().renameLayerState(L"none", L"some"), Hx::eKeyNotFound);
    EXPECT_EQ(states().restoreLayerState(L"none", {}), Hx::eKeyNotFound);
    EXPECT_EQ(states().importLayerStateFromDb(L"none", database.get()), Hx::eKeyNotFound);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(save(L"~ [\u00e4] #1 (b) & `c."), Hx::eOk);
}

TEST_F(StatesOfR12, HaveNoPlace) {
    const std::string before = saved();
    EXPECT_TRUE(states().layerStatesDictionaryId(true).isNull());
    EXPECT_EQ(save(L"Evening"), Hx::eNotApplicable);
    EXPECT_EQ(names(true), Texts());
    EXPECT_FALSE(states().hasLayerState(L"Evening"));
    EXPECT_EQ(saved(), before);
}

TEST_F(LayerStates, SavingOverAStateKeepsItsRecord) {
    change<HxDbObject>(id(0xA2), [](HxDbObject& object) {
        const Chain data(hxutBuildList(1001, L"TOOLS", 1000, L"mine", 0));
        ASSERT_EQ(object.setXData(data.get()), Hx::eOk);
    });
    const std::string before = saved();
    step(L"save", [this] { ASSERT_EQ(save(L"names"), Hx::eOk); });
    EXPECT_EQ(states().layerStateId(L"Names"), id(0xA2));
    EXPECT_EQ(names(), (Texts{"Names", "Handles", "Mixed"}));
    EXPECT_TRUE(has(record(0xA2), "280 1 | 91 2047 | 301 by names | 290 0 | 302 0 | 8 0 | 90 8"))
        << record(0xA2);
    EXPECT_TRUE(has(record(0xA2), "1001 TOOLS | 1000 mine"));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(states().saveLayerState(L"Names", 1, {}, L"new"), Hx::eOk);
    EXPECT_TRUE(has(record(0xA2), "91 1 | 301 new"));
    EXPECT_EQ(save(L"None"), Hx::eDuplicateKey) << "something else has the name";
    EXPECT_TRUE(has(record(0xA5), "301 no mask | 8 WALLS | 90 8"));
}

TEST_F(LayerStates, HeadersChangeAlone) {
    const std::string before = saved();
    const std::string handles = record(0xA3);
    ASSERT_EQ(states().setLayerStateMask(L"handles", HxLyState::kHidden | 7), Hx::eOk);
    ASSERT_EQ(states().setLayerStateDescription(L"Handles", L"\u00e4 b"), Hx::eOk);
    std::string expected = handles;
    expected.replace(expected.find("91 1023 | 301 "), 14, "91 32775 | 301 \u00e4 b");
    EXPECT_EQ(record(0xA3), expected);
    EXPECT_EQ(names(), (Texts{"Names", "Mixed"}));
    EXPECT_EQ(names(true), (Texts{"Names", "Handles", "Mixed"}));
    HxLyStateHeader header;
    EXPECT_EQ(states().getLayerStateHeader(header, L"HANDLES"), Hx::eOk);
    EXPECT_EQ(toUtf8(header.description), "\u00e4 b");
    EXPECT_EQ(states().setLayerStateMask(L"None", 1), Hx::eKeyNotFound);
    ASSERT_EQ(states().setLayerStateMask(L"Handles", 1023), Hx::eOk);
    ASSERT_EQ(states().setLayerStateDescription(L"Handles", nullptr), Hx::eOk);
    EXPECT_EQ(saved(), before);
}

TEST_F(LayerStates, RenameAndDelete) {
    const std::string before = saved();
    step(L"rename", [this] {
        EXPECT_EQ(states().renameLayerState(L"names", L"Handles"), Hx::eDuplicateKey);
        EXPECT_EQ(states().renameLayerState(L"names", L"a*"), Hx::eInvalidInput);
        EXPECT_EQ(states().renameLayerState(L"names", L"NAMES"), Hx::eOk);
        EXPECT_EQ(states().renameLayerState(L"Mixed", L"Other"), Hx::eOk);
        EXPECT_EQ(states().deleteLayerState(L"handles"), Hx::eOk);
        EXPECT_EQ(states().deleteLayerState(L"handles"), Hx::eKeyNotFound);
        EXPECT_EQ(states().deleteLayerState(L"None"), Hx::eKeyNotFound);
    });
    EXPECT_EQ(names(), (Texts{"NAMES", "Other"}));
    EXPECT_EQ(states().layerStateId(L"Other"), id(0xA4));
    EXPECT_TRUE(id(0xA3).isErased());
    EXPECT_EQ(record(0xA3), "");
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(names(), (Texts{"Names", "Handles", "Mixed"}));
}

TEST_F(LayerStates, LayersOfAStateAndTheOthers) {
    HxArray<CStdStr<wchar_t>> layers;
    EXPECT_EQ(states().getLayerStateLayers(layers, L"Names"), Hx::eOk);
    EXPECT_EQ(texts(layers), (Texts{"Walls", "GONE", "PIPE|VALVE"}));
    EXPECT_EQ(states().getLayerStateLayers(layers, L"Names", true), Hx::eOk);
    EXPECT_EQ(texts(layers), (Texts{"0", "DOORS", "Defpoints", "EMPTY"}));
    EXPECT_EQ(states().getLayerStateLayers(layers, L"None"), Hx::eKeyNotFound);
    EXPECT_TRUE(layers.isEmpty());
}

TEST_F(LayerStates, RestoreBringsEverythingBackAndTouchesNothingElse) {
    ASSERT_EQ(save(L"Evening"), Hx::eOk);
    const std::string before = saved();
    for (const wchar_t* const name : {L"0", L"WALLS", L"PIPE|VALVE", L"Defpoints"}) {
        changeAll(name);
    }
    EXPECT_EQ(differences(L"Evening").size(), 9U + 10U + 10U + 9U) << "0 is current, DEFPOINTS never plots";
    Log log;
    DrawingRecorder recorder(log);
    database->addReactor(&recorder);
    step(L"restore", [this] { EXPECT_EQ(restore(L"evening"), Texts()); });
    database->removeReactor(&recorder);
    EXPECT_EQ(std::count_if(log.begin(), log.end(), [](auto& l) { return has(l, "drawing modified"); }), 4);
    EXPECT_EQ(differences(L"Evening"), Texts());
    EXPECT_EQ(at<HxDbLayerTableRecord>(layer(L"WALLS"))->color(), HxCmColor::byIndex(1));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(at<HxDbLayerTableRecord>(layer(L"WALLS"))->color().getDictionaryKey(), L"BOOK$Sky");
    ASSERT_EQ(journal().redo(), Hx::eOk);
    log.clear();
    database->addReactor(&recorder);
    EXPECT_EQ(restore(L"Evening"), Texts());
    database->removeReactor(&recorder);
    EXPECT_EQ(log, Log());
    EXPECT_EQ(record(layer(L"WALLS")).find("430"), std::string::npos);
}

TEST_F(LayerStates, RestoreReadsBothSpellings) {
    EXPECT_EQ(restore(L"Handles"), Texts());
    const auto* walls = at<HxDbLayerTableRecord>(layer(L"WALLS"));
    EXPECT_EQ(walls->color(), HxCmColor::byRgb(0xFF, 0, 0));
    EXPECT_EQ(walls->linetypeObjectId(), id(0x33));
    EXPECT_EQ(walls->plotStyleName(), L"Normal") << "Color_1 is no style of the drawing";
    const auto* empty = at<HxDbLayerTableRecord>(layer(L"EMPTY"));
    EXPECT_TRUE(empty->isFrozen());
    EXPECT_EQ(empty->color(), HxCmColor::byRgb(1, 2, 3));
    EXPECT_EQ(restore(L"Names"), Texts());
    EXPECT_EQ(walls->color().getDictionaryKey(), L"BOOK$Red");
    EXPECT_EQ(walls->plotStyleName(), L"Bold");
    EXPECT_EQ(walls->transparency().alpha(), 127);
    EXPECT_TRUE(at<HxDbLayerTableRecord>(layer(L"PIPE|VALVE"))->isLocked());
    EXPECT_EQ(differences(L"Names"), (Texts{"GONE 1: off, now ", "PIPE|VALVE 64: LOST, now Continuous"}));
}

TEST_F(LayerStates, MaskAndCurrentLayerLimitARestore) {
    ASSERT_EQ(save(L"Evening"), Hx::eOk);
    changeAll(L"WALLS");
    const std::int32_t mask = HxLyState::kColor | HxLyState::kFrozen;
    EXPECT_EQ(restore(L"Evening", {}, 0, &mask), Texts());
    const auto* walls = at<HxDbLayerTableRecord>(layer(L"WALLS"));
    EXPECT_EQ(walls->color(), HxCmColor::byIndex(1));
    EXPECT_FALSE(walls->isFrozen());
    EXPECT_TRUE(walls->isOff());
    ASSERT_EQ(states().setLayerStateMask(L"Evening", HxLyState::kHidden | HxLyState::kOn), Hx::eOk);
    EXPECT_EQ(restore(L"Evening"), Texts());
    EXPECT_FALSE(walls->isOff());
    EXPECT_TRUE(walls->isLocked());

    change<HxDbLayerTableRecord>(layer(L"EMPTY"), [](auto& l) { ASSERT_EQ(l.setIsFrozen(true), Hx::eOk); });
    ASSERT_EQ(save(L"Night"), Hx::eOk);
    change<HxDbLayerTableRecord>(layer(L"EMPTY"), [](auto& l) { l.setIsFrozen(false); });
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    EXPECT_EQ(restore(L"Night"), Texts()) << "no refusal: the current layer stays thawed";
    EXPECT_FALSE(at<HxDbLayerTableRecord>(layer(L"EMPTY"))->isFrozen());
}

TEST_F(LayerStates, LayersThatAStateDoesNotName) {
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    const int flags =
        HxDbLayerStateManager::kUndefinedLayersOff | HxDbLayerStateManager::kUndefinedLayersFrozen;
    EXPECT_EQ(restore(L"Names", {}, flags), Texts());
    for (const wchar_t* const name : {L"0", L"DOORS", L"EMPTY", L"Defpoints"}) {
        const auto* record = at<HxDbLayerTableRecord>(layer(name));
        EXPECT_TRUE(record->isOff()) << toUtf8(name);
        EXPECT_EQ(record->isFrozen(), name != std::wstring(L"EMPTY")) << "the current one stays thawed";
    }
    EXPECT_FALSE(at<HxDbLayerTableRecord>(layer(L"WALLS"))->isOff());
}

TEST_F(LayerStates, FreezingInAViewport) {
    ASSERT_EQ(database->setTilemode(false), Hx::eOk);
    ASSERT_EQ(save(L"Sheet", id(0x61)), Hx::eOk);
    EXPECT_EQ(entriesOf(states().layerStateId(L"Sheet"))[2], "DOORS 40 c3 w50 DASHED Bold a255");
    EXPECT_EQ(differences(L"Sheet", id(0x61)), Texts());
    HxLyStateHeader header;
    ASSERT_EQ(save(L"Paper"), Hx::eOk);
    EXPECT_EQ(states().getLayerStateHeader(header, L"Paper"), Hx::eOk);
    EXPECT_EQ(header.space, HxLyState::kLayout) << "also without a viewport";
    EXPECT_EQ(differences(L"Sheet", id(0x62)),
              (Texts{"WALLS 32: Red, now Blue", "WALLS 128: 0.50 mm, now Default",
                     "DOORS 512: frozen, now thawed"}))
        << "each viewport has an override of its own";
    EXPECT_EQ(differences(L"Sheet"), Texts{"WALLS 128: 0.50 mm, now Default"});
    change<HxDbViewport>(id(0x62), [this](HxDbViewport& viewport) {
        HxArray<HxDbObjectId> layers;
        layers.append(layer(L"WALLS"));
        EXPECT_EQ(viewport.setLayer(layer(L"EMPTY")), Hx::eOk);
        EXPECT_EQ(viewport.freezeLayersInViewport(layers), Hx::eOk);
    });
    lock(layer(L"EMPTY"));
    const std::int32_t mask = HxLyState::kCurrentViewportFrozen;
    const std::string walls = record(layer(L"WALLS"));
    EXPECT_EQ(restore(L"Sheet", id(0x62), 0, &mask), Texts());
    EXPECT_TRUE(at<HxDbViewport>(id(0x62))->isLayerFrozenInViewport(layer(L"DOORS")));
    EXPECT_FALSE(at<HxDbViewport>(id(0x62))->isLayerFrozenInViewport(layer(L"WALLS")));
    EXPECT_TRUE(at<HxDbLayerTableRecord>(layer(L"EMPTY"))->isLocked());
    EXPECT_EQ(record(layer(L"WALLS")), walls);
    const std::string before = saved();
    EXPECT_EQ(restore(L"Sheet", {}, 0, &mask), Texts());
    EXPECT_EQ(restore(L"Sheet", id(0x40), 0, &mask), Texts()) << "a line is no viewport";
    EXPECT_EQ(saved(), before);
    ASSERT_EQ(restore(L"Handles", id(0x61)), Texts());
    EXPECT_TRUE(at<HxDbViewport>(id(0x61))->isLayerFrozenInViewport(layer(L"DOORS")))
        << "a state of model space says nothing of viewports";
}

TEST_F(LayerStates, AppearanceAsOverrides) {
    ASSERT_EQ(save(L"Evening"), Hx::eOk);
    change<HxDbLayerTableRecord>(layer(L"EMPTY"), [this](HxDbLayerTableRecord& l) {
        l.setColor(HxCmColor::byIndex(6));
        l.setLinetypeObjectId(id(0x33));
        l.setIsOff(true);
    });
    EXPECT_EQ(restore(L"Evening", id(0x61), HxDbLayerStateManager::kPropertiesAsViewportOverrides), Texts());
    const auto* empty = at<HxDbLayerTableRecord>(layer(L"EMPTY"));
    bool isOverride = false;
    EXPECT_EQ(empty->color(), HxCmColor::byIndex(6)) << "its own stays";
    EXPECT_EQ(empty->color(id(0x61), isOverride), HxCmColor::byIndex(5));
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(empty->linetypeObjectId(id(0x61), isOverride), id(0x32));
    EXPECT_FALSE(empty->isOff()) << "states are no overrides";
    empty->lineWeight(id(0x61), isOverride);
    EXPECT_FALSE(isOverride) << "what is the same needs none";
}

TEST_F(LayerStates, WorkWhoeverHasObjectsOpen) {
    HxDbTransactionManager& transactions = *database->transactionManager();
    HxDbObject* held = nullptr;
    transactions.startTransaction();
    ASSERT_EQ(transactions.getObject(held, states().layerStatesDictionaryId(), HxDb::kForWrite), Hx::eOk);
    ASSERT_EQ(transactions.getObject(held, layer(L"WALLS"), HxDb::kForRead), Hx::eOk);
    {
        const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
        const HxDbObjectPointer<HxDbLayerTableRecord> doors(layer(L"DOORS"), HxDb::kForRead);
        const HxDbObjectPointer<HxDbLayerTableRecord> empty(layer(L"EMPTY"), HxDb::kForWrite);
        const HxDbObjectPointer<HxDbXrecord> state(id(0xA2), HxDb::kForRead);
        ASSERT_EQ(save(L"Evening"), Hx::eOk);
        EXPECT_EQ(states().setLayerStateMask(L"Names", HxLyState::kAllProperties), Hx::eOk);
        EXPECT_EQ(restore(L"Names"), Texts());
        EXPECT_EQ(restore(L"Handles"), Texts());
        EXPECT_EQ(restore(L"Mixed"), Texts());
        EXPECT_EQ(states().deleteLayerState(L"Names"), Hx::eOk);
        EXPECT_TRUE(doors->isReadEnabled());
        EXPECT_FALSE(doors->isWriteEnabled());
        EXPECT_TRUE(empty->isWriteEnabled());
    }
    EXPECT_EQ(at<HxDbLayerTableRecord>(layer(L"WALLS"))->color().getDictionaryKey(), L"BOOK$Red");
    EXPECT_EQ(names(), (Texts{"Handles", "Mixed", "Evening"}));
    EXPECT_EQ(transactions.endTransaction(), Hx::eOk);
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"WALLS"), HxDb::kForRead);
    const HxDbObjectPointer<HxDbLayerTableRecord> again(layer(L"WALLS"), HxDb::kForRead);
    EXPECT_EQ(restore(L"Evening"), Texts{"WALLS"}) << "two others read it";
    EXPECT_EQ(walls->color().getDictionaryKey(), L"BOOK$Red");
}

TEST_F(PlanWithoutStates, DictionariesAreMadeUnderAnOpenTable) {
    for (const HxDb::OpenMode mode : {HxDb::kForRead, HxDb::kForWrite}) {
        step(L"save", [&] {
            const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), mode);
            EXPECT_EQ(save(L"Evening"), Hx::eOk);
            EXPECT_EQ(table->isWriteEnabled(), mode == HxDb::kForWrite);
        });
        EXPECT_EQ(names(), Texts{"Evening"});
        ASSERT_EQ(journal().undo(), Hx::eOk);
    }
}

TEST_F(LayerStates, ComparisonsReadAsUsersDo) {
    ASSERT_EQ(save(L"Evening"), Hx::eOk);
    ASSERT_EQ(database->setClayer(layer(L"EMPTY")), Hx::eOk);
    for (const wchar_t* const name : {L"0", L"Defpoints"}) {
        changeAll(name);
    }
    EXPECT_EQ(differences(L"Evening"),
              (Texts{"0 1: on, now off", "0 2: thawed, now frozen", "0 4: unlocked, now locked",
                     "0 8: plotted, now not plotted", "0 32: White, now Sky (BOOK)",
                     "0 64: Continuous, now DASHED", "0 128: Default, now 0.70 mm", "0 1024: 0 %, now 50 %",
                     "0 256: Normal, now Bold", "0 16: thawed, now frozen", "Defpoints 1: on, now off",
                     "Defpoints 2: thawed, now frozen", "Defpoints 4: unlocked, now locked",
                     "Defpoints 32: White, now Sky (BOOK)", "Defpoints 64: Continuous, now DASHED",
                     "Defpoints 128: Default, now 0.70 mm", "Defpoints 1024: 0 %, now 50 %",
                     "Defpoints 256: Normal, now Bold", "Defpoints 16: thawed, now frozen"}));
    EXPECT_EQ(restore(L"Evening"), Texts());
    change<HxDbLayerTableRecord>(layer(L"0"), [](auto& l) { l.setTransparency(HxCmTransparency(254)); });
    change<HxDbLayerTableRecord>(layer(L"WALLS"), [](auto& l) { l.setColor(HxCmColor::byRgb(1, 2, 3)); });
    EXPECT_EQ(differences(L"Evening"), Texts{"WALLS 32: Red, now 1,2,3"})
        << "0 differs by less than a per cent";
}

TEST_F(LayerStates, ImportFromADrawingWithOtherPlotStyles) {
    const std::unique_ptr<HxDbDatabase> other = opened(sheetDrawing());
    HxDbLayerStateManager& others = *other->getLayerStateManager();
    EXPECT_EQ(others.importLayerStateFromDb(L"names", database.get()), Hx::eOk);
    const HxDbObjectId made = others.layerStateId(L"Names");
    EXPECT_EQ(entriesOf(made), (Texts{"Walls 8 c1 t0000FF BOOK$Red w25 Dashed  a127",
                                      "GONE 3 c3 w-3 Continuous  a255", "PIPE|VALVE 12 c4 w-3 LOST  a0"}));
    EXPECT_EQ(others.saveLayerState(L"Here", HxLyState::kAllProperties, {}, L"of the other"), Hx::eOk);
    EXPECT_EQ(states().importLayerStateFromDb(L"here", other.get()), Hx::eOk);
    EXPECT_EQ(names(), (Texts{"Names", "Handles", "Mixed", "Here"}));
    EXPECT_EQ(entriesOf(states().layerStateId(L"Here"))[1], "WALLS 8 c1 w-3 Continuous  a255");
    EXPECT_EQ(others.renameLayerState(L"Here", L"Names"), Hx::eDuplicateKey);
    EXPECT_EQ(others.deleteLayerState(L"Names"), Hx::eOk);
    EXPECT_EQ(others.renameLayerState(L"Here", L"nameS"), Hx::eOk);
    EXPECT_EQ(states().importLayerStateFromDb(L"Names", other.get()), Hx::eOk);
    EXPECT_EQ(states().layerStateId(L"Names"), id(0xA2)) << "the record that was there";
    EXPECT_TRUE(has(record(0xA2), "301 of the other"));
    EXPECT_EQ(restore(L"Names"), Texts());
    EXPECT_EQ(differences(L"Names", {}, other.get()), differences(L"Names"));
    written(*other);
}

TEST_F(LayerStates, FollowLayersThatAreRenamed) {
    ASSERT_EQ(save(L"Evening"), Hx::eOk);
    const std::string before = saved();
    step(L"rename", [this] {
        ASSERT_EQ(rename(layer(L"WALLS"), L"Masonry"), Hx::eOk);
        ASSERT_EQ(rename(id(0x33), L"HIDDEN"), Hx::eOk);
    });
    EXPECT_EQ(differences(L"Evening"), Texts());
    HxArray<CStdStr<wchar_t>> layers;
    EXPECT_EQ(states().getLayerStateLayers(layers, L"Evening"), Hx::eOk);
    EXPECT_TRUE(layers.contains(L"Masonry"));
    ASSERT_EQ(states().setLayerStateDescription(L"Names", L"after"), Hx::eOk);
    EXPECT_TRUE(
        has(record(0xA2), "301 after | 290 1 | 302 Masonry | 8 Masonry | 90 8 | 62 1 | 370 25 | 6 HIDDEN"))
        << record(0xA2);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(saved(), before);
}

}  // namespace korvex::test
