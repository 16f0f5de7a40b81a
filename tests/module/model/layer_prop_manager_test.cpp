// The layer manager's model: the listed layers, making and deleting them, filters, and the dialog's bracket.
#include "tests/module/model/recording_palette.h"
#include "tests/module/module_fixture.h"

#include "frame/module_state.h"
#include "frame/util/module_handles.h"
#include "host/db/kernel/database_imp.h"
#include "host/io/drawing_writer.h"
#include "model/auto_layer_record.h"
#include "model/layer_prop_manager.h"
#include "sdk/hxdbdict.h"

#include <regex>

namespace korvex::test {
namespace {

using LayerNames = std::vector<std::wstring>;

class LayerManager : public DrawingTest {
protected:
    void SetUp() override {
        DrawingTest::SetUp();
        setGlobalResInstance(LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str()));
    }
    void TearDown() override {
        hxFreeResourceDll(globalResInstance());
        setGlobalResInstance(nullptr);
        setLayerPalette(nullptr);
        DrawingTest::TearDown();
    }

    static LayerNames namesOf(const HxArray<KvLayerData*>& layers) {
        LayerNames names;
        for (KvLayerData* data : layers) {
            const KvAutoLayerRecordPtr record(data, true);
            names.emplace_back(record ? record->name() : L"(none)");
        }
        return names;
    }
    static std::wstring lastName(const KvLayerPropManager& manager) {
        return namesOf(manager.GetAllLayersRef()).back();
    }
    bool isAnythingOpen() {
        for (const HxDbStub& stub : database().imp()->stubs) {
            if (stub.readers > 0 || stub.writer) {
                return true;
            }
        }
        return false;
    }
    std::string bytes() { return written(database()); }
    std::size_t steps() { return journal(database()).undoCount(); }
    bool isOnLayer(const KvLayerPropManager& manager, HxDbObjectId id) {
        for (const KvLayerData* data : manager.GetAllLayersRef()) {
            if (data->layerId() == id) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(LayerManager, ListsTheTableInItsOrder) {
    run(L"-LAYER New MIDWAY,ALPHA\n\n");
    const LayerNames inOrder{L"0",           L"INNER",        L"MIDDLE", L"NOTES",
                             L"OUTER",       L"SPARE",        L"TOP",    L"TURNED",
                             L"WALLS",       L"W\u00E4nde 2", L"XREFS",  L"PLAN|DOORS",
                             L"PLAN|FRAMES", L"PLAN|WALLS",   L"MIDWAY", L"ALPHA"};
    for (const bool isPalette : {true, false}) {
        KvLayerPropManager manager(&database(), isPalette);
        manager.Initialize();
        manager.ReloadLayers();
        EXPECT_EQ(isAnythingOpen(), !isPalette) << "the dialog's transaction holds them";
        EXPECT_EQ(namesOf(manager.GetAllLayers()), inOrder);
        EXPECT_EQ(namesOf(manager.GetAllLayersRef()), inOrder);
        for (const KvLayerData* data : manager.GetAllLayersRef()) {
            EXPECT_TRUE(data->isValid());
            EXPECT_EQ(data->layerRec(), hxdbObjectPointer(data->layerId()));
        }
        manager.Cancel();
        EXPECT_FALSE(isAnythingOpen());
    }
    run(L"CLAYER 0\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"NOTES"), HxDb::kForWrite);
    KvLayerPropManager manager(&database(), true);
    manager.ReloadLayers();
    EXPECT_TRUE(isOnLayer(manager, layer(L"NOTES"))) << "also what a command has open";
}

TEST_F(LayerManager, ErasedLayersAreNotListed) {
    const HxDbObjectId notes = layer(L"NOTES");
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(notes, HxDb::kForWrite);
        record->erase();
    }
    KvLayerPropManager manager(&database(), true);
    manager.ReloadLayers();
    EXPECT_FALSE(isOnLayer(manager, notes));
}

TEST_F(LayerManager, KeepsItsListByHand) {
    KvLayerPropManager manager(&database(), true);
    manager.ReloadLayers();
    const auto before = manager.GetAllLayersRef().length();
    const auto* const walls = HxDbLayerTableRecord::cast(hxdbObjectPointer(layer(L"WALLS")));
    EXPECT_FALSE(manager.AddToLayers(walls)) << "listed already";
    EXPECT_FALSE(manager.AddToLayers(nullptr));
    manager.setMgrLayerDataValid(walls, false);
    for (KvLayerData* data : manager.GetAllLayersRef()) {
        EXPECT_EQ(data->isValid(), data->layerRec() != walls);
    }
    manager.setMgrLayerDataValid(nullptr, false);
    manager.RemoveFromLayers(walls);
    EXPECT_FALSE(isOnLayer(manager, walls->objectId()));
    manager.RemoveFromLayers(walls);
    EXPECT_EQ(manager.GetAllLayersRef().length(), before - 1);
    EXPECT_TRUE(manager.AddToLayers(walls));
    EXPECT_EQ(lastName(manager), L"WALLS");
    KvLayerData* const last = manager.GetAllLayersRef()[before - 1];
    manager.RemoveLayerData(last);
    manager.RemoveLayerData(nullptr);
    EXPECT_EQ(manager.GetAllLayersRef().length(), before - 1);
    manager.ClearData();
    EXPECT_TRUE(manager.GetAllLayersRef().isEmpty());
    editor().documents().closeDocument(curDoc());
    while (curDoc()) {
        editor().documents().closeDocument(curDoc());
    }
    EXPECT_FALSE(manager.AddNewLayer(nullptr));
    EXPECT_EQ(manager.RemoveLayer(HxDbObjectId()), Hx::eNoDatabase);
    EXPECT_EQ(manager.SetCurrentLayer(HxDbObjectId()), Hx::eNoDatabase);
    EXPECT_EQ(manager.SaveLayerFilters(true), Hx::eNoDatabase);
    EXPECT_EQ(manager.Commit(true), Hx::eNoDatabase);
    manager.procLayerUsageData();
    manager.ReloadLayers();
    manager.ReloadFilters();
    manager.Cancel();
    EXPECT_EQ(manager.GetRootFilter(), nullptr);
    EXPECT_EQ(manager.GetViewport(), nullptr);
}

TEST_F(LayerManager, NamesNewLayersByTheNextFreeNumber) {
    run(L"-LAYER New layer2\n\n");
    for (const bool isPalette : {true, false}) {
        KvLayerPropManager manager(&database(), isPalette);
        manager.Initialize();
        manager.ReloadLayers();
        EXPECT_TRUE(manager.AddNewLayer(nullptr));
        EXPECT_EQ(lastName(manager), L"Layer1");
        EXPECT_TRUE(manager.AddNewLayer(nullptr));
        EXPECT_EQ(lastName(manager), L"Layer3") << "names are taken in any case";
        EXPECT_TRUE(manager.AddNewLayer(L"Mine"));
        EXPECT_EQ(lastName(manager), L"Mine");
        const auto count = manager.GetAllLayersRef().length();
        for (const wchar_t* const bad : {L"mine", L"", L"a|b", L"WALLS"}) {
            EXPECT_FALSE(manager.AddNewLayer(bad)) << bad;
        }
        EXPECT_EQ(manager.GetAllLayersRef().length(), count);
        const auto* const made = manager.GetAllLayersRef()[count - 1]->layerRec();
        EXPECT_EQ(made->color(), HxCmColor::byIndex(7));
        EXPECT_FALSE(made->isOff() || made->isFrozen() || made->isLocked());
        manager.Cancel();
        EXPECT_EQ(hasLayer(L"Mine"), isPalette);
        if (isPalette) {
            run(L"U\n");
        }
    }
    EXPECT_FALSE(isAnythingOpen());
}

TEST_F(LayerManager, NamesOfListedLayersAreTakenTooWhileTheyAreErased) {
    KvLayerPropManager manager(&database(), true);
    manager.ReloadLayers();
    ASSERT_TRUE(manager.AddNewLayer(nullptr));
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(L"Layer1"), HxDb::kForWrite);
        record->erase();
    }
    ASSERT_TRUE(manager.AddNewLayer(nullptr));
    EXPECT_EQ(lastName(manager), L"Layer2") << "undo may bring the other one back";
}

TEST_F(LayerManager, NewLayersCountAsUsedUnlessUsageIsShown) {
    KvLayerPropManager manager(&database(), true);
    manager.ReloadLayers();
    const auto isNewUsed = [&](const wchar_t* shown) {
        run(std::wstring(L"SHOWLAYERUSAGE ") + shown + L"\n");
        EXPECT_TRUE(manager.AddNewLayer(nullptr));
        return manager.GetAllLayersRef()[manager.GetAllLayersRef().length() - 1]->layerRec()->isInUse();
    };
    EXPECT_TRUE(isNewUsed(L"0"));
    EXPECT_FALSE(isNewUsed(L"1"));
}

TEST_F(LayerManager, ATableThatOthersHoldGivesNoLayer) {
    KvLayerPropManager palette(&database(), true);
    palette.ReloadLayers();
    KvLayerPropManager dialog(&database(), false);
    dialog.Initialize();
    dialog.ReloadLayers();
    {
        const HxDbObjectPointer<HxDbLayerTable> reader(database().layerTableId(), HxDb::kForRead);
        EXPECT_FALSE(palette.AddNewLayer(nullptr));
        EXPECT_FALSE(dialog.AddNewLayer(nullptr));
    }
    EXPECT_TRUE(dialog.AddNewLayer(nullptr));
    dialog.Cancel();
    KvLayerPropManager unopened(&database(), false);
    EXPECT_FALSE(unopened.AddNewLayer(nullptr)) << "no transaction";
}

TEST_F(LayerManager, DeletesNothingThatADrawingNeeds) {
    run(L"-LAYER New defPoints,FREE\n\n");
    const std::string before = bytes();
    for (const bool isPalette : {true, false}) {
        KvLayerPropManager manager(&database(), isPalette);
        manager.Initialize();
        manager.ReloadLayers();
        run(L"SHOWLAYERUSAGE 0\n");
        manager.procLayerUsageData();
        const auto count = manager.GetAllLayersRef().length();
        for (const wchar_t* const name : {L"0", L"SPARE", L"DEFPOINTS", L"WALLS", L"PLAN|WALLS"}) {
            EXPECT_EQ(manager.RemoveLayer(layer(name)), Hx::eRefused) << name;
        }
        EXPECT_EQ(manager.GetAllLayersRef().length(), count);
        EXPECT_EQ(bytes(), before);
        EXPECT_EQ(manager.RemoveLayer(HxDbObjectId()), Hx::eNullObjectId);
        EXPECT_EQ(manager.RemoveLayer(database().layerTableId()), Hx::eWrongClass);

        const HxDbObjectId free = layer(L"FREE");
        if (isPalette) {
            {
                const HxDbObjectPointer<HxDbLayerTableRecord> reader(free, HxDb::kForRead);
                EXPECT_EQ(manager.RemoveLayer(free), Hx::eWasOpenForRead);
            }
            EXPECT_TRUE(isOnLayer(manager, free));
        }
        EXPECT_EQ(manager.RemoveLayer(free), Hx::eOk);
        EXPECT_FALSE(isOnLayer(manager, free));
        EXPECT_TRUE(free.isErased());
        EXPECT_EQ(manager.RemoveLayer(free), Hx::eWasErased);
        if (isPalette) {
            EXPECT_FALSE(isAnythingOpen());
            run(L"U\n");
        } else {
            manager.Cancel();
        }
        EXPECT_FALSE(free.isErased());
        EXPECT_EQ(bytes(), before);
    }
    const HxDbObjectId here = layer(L"NOTES");
    editor().documents().newDocument();
    KvLayerPropManager manager(&database(), true);
    EXPECT_EQ(manager.RemoveLayer(here), Hx::eNotInDatabase) << "of the drawing that was current before";
}

TEST_F(LayerManager, UsageIsFoundOutByMode) {
    const auto isWallsUsed = [&] {
        return HxDbLayerTableRecord::cast(hxdbObjectPointer(layer(L"WALLS")))->isInUse();
    };
    const auto forget = [&] {
        HxDbLayerTableRecord::cast(hxdbObjectPointer(layer(L"WALLS")))->setIsInUse(false);
    };
    KvLayerPropManager palette(&database(), true);
    for (const wchar_t* const shown : {L"0", L"1"}) {
        run(std::wstring(L"SHOWLAYERUSAGE ") + shown + L"\n");
        for (int i = 0; i < 2; ++i) {
            forget();
            palette.procLayerUsageData();
            EXPECT_TRUE(isWallsUsed()) << "always anew";
        }
    }
    {
        forget();
        const HxDbObjectPointer<HxDbLayerTable> reader(database().layerTableId(), HxDb::kForRead);
        palette.procLayerUsageData();
        EXPECT_FALSE(isWallsUsed()) << "the table is not to be had";
    }
    KvLayerPropManager dialog(&database(), false);
    dialog.Initialize();
    dialog.ReloadLayers();
    dialog.procLayerUsageData();
    EXPECT_FALSE(isWallsUsed()) << "with SHOWLAYERUSAGE 1 the host has found out";
    run(L"SHOWLAYERUSAGE 0\n");
    dialog.procLayerUsageData();
    EXPECT_FALSE(isWallsUsed()) << "and that is that";
    dialog.setFirstUsage(false);
    dialog.procLayerUsageData();
    EXPECT_TRUE(isWallsUsed());
    forget();
    dialog.procLayerUsageData();
    EXPECT_FALSE(isWallsUsed()) << "once only";
    EXPECT_TRUE(dialog.AddNewLayer(nullptr));
    dialog.procLayerUsageData();
    EXPECT_TRUE(isWallsUsed()) << "but again after a new layer";
}

TEST_F(LayerManager, CancelTakesEverythingBack) {
    auto* const palette = new RecordingPalette;
    setLayerPalette(palette);
    const std::string before = bytes();
    const std::size_t stepsBefore = steps();
    {
        KvLayerPropManager dialog(&database(), false);
        dialog.Initialize();
        dialog.Initialize();
        dialog.ReloadFilters();
        dialog.ReloadLayers();
        EXPECT_EQ(database().transactionManager()->numActiveTransactions(), 1);
        EXPECT_TRUE(dialog.AddNewLayer(nullptr));
        EXPECT_TRUE(dialog.AddNewLayer(L"Other"));
        EXPECT_EQ(dialog.SetCurrentLayer(layer(L"Other")), Hx::eOk);
        EXPECT_EQ(dialog.RemoveLayer(layer(L"Wände 2")), Hx::eOk);
        const HxDbObjectId layer1 = layer(L"Layer1");
        dialog.GetAllLayersRef()[1]->layerRec()->upgradeOpen();
        dialog.GetAllLayersRef()[1]->layerRec()->setIsLocked(true);
        EXPECT_NE(bytes(), before);
        dialog.Cancel();
        EXPECT_TRUE(layer1.isErased());
        EXPECT_EQ(bytes(), before);
        dialog.Cancel();
    }
    EXPECT_FALSE(isAnythingOpen());
    EXPECT_FALSE(database().isModified());
    EXPECT_EQ(steps(), stepsBefore);
    {
        KvLayerPropManager forgotten(&database(), false);
        forgotten.Initialize();
        forgotten.ReloadLayers();
        forgotten.AddNewLayer(nullptr);
    }
    EXPECT_EQ(database().transactionManager()->numActiveTransactions(), 0);
    EXPECT_EQ(bytes(), before);
}

TEST_F(LayerManager, CommitKeepsAndReopens) {
    auto* const palette = new RecordingPalette;
    setLayerPalette(palette);
    define(L"CLASSIC", [&] {
        KvLayerPropManager dialog(&database(), false);
        EXPECT_EQ(dialog.Commit(false), Hx::eNoActiveTransactions);
        dialog.Initialize();
        dialog.ReloadFilters();
        dialog.ReloadLayers();
        dialog.AddNewLayer(L"First");
        palette->told();
        EXPECT_EQ(dialog.Commit(true), Hx::eOk);
        const RecordingPalette::Told told = palette->told();
        EXPECT_EQ(std::count(told.begin(), told.end(), "filter"), 1);
        EXPECT_EQ(database().transactionManager()->numActiveTransactions(), 1);
        EXPECT_EQ(lastName(dialog), L"First");
        dialog.AddNewLayer(L"Second");
        palette->visible = false;
        EXPECT_EQ(dialog.Commit(false), Hx::eOk);
        EXPECT_EQ(palette->told(), RecordingPalette::Told{});
        dialog.Initialize();
        dialog.ReloadLayers();
        dialog.AddNewLayer(L"Third");
        dialog.Cancel();
    });
    run(L"CLASSIC\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(hasLayer(L"First"));
    EXPECT_TRUE(hasLayer(L"Second"));
    EXPECT_FALSE(hasLayer(L"Third"));
    EXPECT_FALSE(isAnythingOpen());
    run(L"U\n");
    EXPECT_FALSE(hasLayer(L"First")) << "one step";
}

TEST_F(LayerManager, OnlyTheTopTransactionIsEnded) {
    KvLayerPropManager dialog(&database(), false);
    dialog.Initialize();
    dialog.ReloadLayers();
    dialog.AddNewLayer(L"Kept");
    HxDbTransactionManager& transactions = *database().transactionManager();
    transactions.startTransaction();
    EXPECT_EQ(dialog.Commit(false), Hx::eNotTopTransaction);
    dialog.Cancel();
    EXPECT_EQ(transactions.numActiveTransactions(), 2);
    EXPECT_TRUE(hasLayer(L"Kept"));
    transactions.endTransaction();
    EXPECT_EQ(dialog.Commit(false), Hx::eOk);
    EXPECT_EQ(transactions.numActiveTransactions(), 0);
    EXPECT_TRUE(hasLayer(L"Kept"));
}

TEST_F(LayerManager, GivesTheCurrentViewport) {
    KvLayerPropManager palette(&database(), true);
    EXPECT_EQ(palette.GetViewport(), nullptr);
    run(L"LAYOUT S Layout1\nMSPACE\n");
    HxDbViewport* const viewport = palette.GetViewport();
    ASSERT_TRUE(viewport);
    EXPECT_EQ(viewport->objectId(), hxedGetCurViewportObjectId());
    EXPECT_EQ(viewport->close(), Hx::eOk);
    KvLayerPropManager dialog(&database(), false);
    EXPECT_EQ(dialog.GetViewport(), nullptr) << "no transaction";
    dialog.Initialize();
    EXPECT_EQ(dialog.GetViewport(), viewport);
    EXPECT_EQ(dialog.GetViewport(), viewport);
    dialog.Cancel();
    EXPECT_FALSE(isAnythingOpen());
}

/// With filters: "Walls" (NAME=="W*"), in it "Walls on", and the group "Picked" with NOTES.
class LayerFilters : public LayerManager {
protected:
    void SetUp() override {
        LayerManager::SetUp();
        manager = std::make_unique<KvLayerPropManager>(&database(), true);
        manager->ReloadLayers();
        manager->ReloadFilters();
        ASSERT_TRUE(manager->GetRootFilter());
    }
    void TearDown() override {
        manager.reset();
        LayerManager::TearDown();
    }
    void addFilters() {
        add(*manager->GetRootFilter(), L"Walls", L"NAME==\"W*\"");
        add(*manager->FindFilter(L"Walls"), L"Walls on", L"ON==\"True\"");
        auto* const group = new HxLyLayerGroup;
        ASSERT_EQ(group->setName(L"Picked"), Hx::eOk);
        ASSERT_EQ(group->addLayerId(layer(L"NOTES")), Hx::eOk);
        ASSERT_EQ(manager->GetRootFilter()->addNested(group), Hx::eOk);
        ASSERT_EQ(manager->SaveLayerFilters(false), Hx::eOk);
    }
    static void add(HxLyLayerFilter& parent, const wchar_t* name, const wchar_t* expression) {
        auto* const filter = new HxLyLayerFilter;
        ASSERT_EQ(filter->setName(name), Hx::eOk);
        ASSERT_EQ(filter->setFilterExpression(expression), Hx::eOk);
        ASSERT_EQ(parent.addNested(filter), Hx::eOk);
    }
    LayerNames accepted(const wchar_t* name) {
        return namesOf(manager->GetFilteredLayers(manager->FindFilter(name)));
    }
    /// The name that the drawing keeps for the selected filter.
    std::wstring selected() {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        if (!table) return L"(held by someone else)";
        const std::unique_ptr<resbuf, decltype(&hxutRelRb)> data(table->xData(L"ACAD"), hxutRelRb);
        for (const resbuf* node = data.get(); node; node = node->rbnext) {
            if (node->restype == 1000) {
                return node->resval.rstring;
            }
        }
        return L"(none)";
    }
    /// What a fresh reader of the drawing finds selected.
    std::wstring selectedForOthers() {
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* current = nullptr;
        EXPECT_EQ(database().layerFilterManager()->getFilters(root, current), Hx::eOk);
        const std::unique_ptr<HxLyLayerFilter> owner(root);
        return current->name();
    }
    /// Groups 290 with value 1 right behind a 280, in the drawing's bytes.
    std::size_t marks() {
        static const std::regex pair("\n *280\\r?\n *1\\r?\n *290\\r?\n *1\\r?\n");
        const std::string text = bytes();
        return static_cast<std::size_t>(
            std::distance(std::sregex_iterator(text.begin(), text.end(), pair), std::sregex_iterator()));
    }

    std::unique_ptr<KvLayerPropManager> manager;
};

TEST_F(LayerFilters, AreFoundAndNamed) {
    EXPECT_EQ(manager->GetCurrentFilter(), manager->GetRootFilter());
    EXPECT_EQ(manager->GetNextFilterName(L"Filter"), L"Filter1");
    addFilters();
    add(*manager->GetRootFilter(), L"filter1", L"");
    add(*manager->FindFilter(L"Walls"), L"Filter2", L"");
    EXPECT_EQ(manager->GetNextFilterName(L"Filter"), L"Filter3");
    EXPECT_EQ(manager->FindFilter(L"WALLS ON"), manager->FindFilter(L"Walls")->getNestedFilters()[0]);
    EXPECT_EQ(manager->FindFilter(L"Nothing"), nullptr);
    EXPECT_EQ(manager->FindFilter(nullptr), nullptr);

    HxLyLayerFilter* const walls = manager->FindFilter(L"Walls");
    manager->SetCurrentFilter(walls);
    EXPECT_EQ(manager->GetCurrentFilter(), walls);
    EXPECT_EQ(manager->GetPreviousFilter(), manager->GetRootFilter());
    manager->SetCurrentFilter(walls);
    manager->SetCurrentFilter(nullptr);
    EXPECT_EQ(manager->GetCurrentFilter(), walls);
    EXPECT_EQ(manager->GetPreviousFilter(), manager->GetRootFilter());
}

TEST_F(LayerFilters, AcceptLayersInListOrder) {
    run(L"-LAYER New WOOD,WATER\n\n");
    manager->ReloadLayers();
    addFilters();
    EXPECT_EQ(accepted(L"Picked"), LayerNames{L"NOTES"});
    EXPECT_EQ(manager->GetFilteredLayers(manager->GetRootFilter()).length(),
              manager->GetAllLayersRef().length());
    const LayerNames inOrder{L"WALLS", L"W\u00E4nde 2", L"WOOD", L"WATER"};
    EXPECT_EQ(accepted(L"Walls"), inOrder);
    const HxArray<KvLayerData*> some = manager->GetFilteredLayers(manager->FindFilter(L"Walls"));
    HxArray<KvLayerData*> backwards;
    for (auto at = manager->GetAllLayersRef().length(); at > 0; --at) {
        backwards.append(manager->GetAllLayersRef()[at - 1]);
    }
    EXPECT_EQ(namesOf(manager->GetFilteredLayers(backwards, manager->FindFilter(L"Walls"))),
              LayerNames(inOrder.rbegin(), inOrder.rend()));
    EXPECT_TRUE(manager->GetFilteredLayers(some, manager->FindFilter(L"Picked")).isEmpty());
    EXPECT_TRUE(manager->GetFilteredLayers(nullptr).isEmpty());
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> writer(layer(L"NOTES"), HxDb::kForWrite);
        EXPECT_EQ(accepted(L"Picked"), LayerNames{L"NOTES"}) << "also what a command has open";
        writer->erase();
    }
    EXPECT_EQ(accepted(L"Picked"), LayerNames{});
    EXPECT_FALSE(isAnythingOpen());
}

TEST_F(LayerFilters, TheSelectedOneIsRecordedWithoutRewritingTheTree) {
    addFilters();
    const auto select = [&](const wchar_t* name) {
        manager->SetCurrentFilter(name ? manager->FindFilter(name) : manager->GetRootFilter());
        EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eOk) << (name ? name : L"root");
        EXPECT_FALSE(isAnythingOpen());
    };
    select(L"Picked");
    EXPECT_EQ(selected(), L"Picked");
    EXPECT_EQ(marks(), 1U);
    EXPECT_EQ(selectedForOthers(), L"Picked");
    const std::string once = bytes();
    EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eOk);
    EXPECT_EQ(bytes(), once) << "marked already";
    select(L"Walls on");
    EXPECT_EQ(selected(), L"Walls on");
    EXPECT_EQ(marks(), 1U) << "the mark has moved, into what is nested too";
    EXPECT_EQ(selectedForOthers(), L"Walls on");
    select(L"<AllUsed");
    EXPECT_EQ(selected(), L"<AllUsed");
    EXPECT_EQ(marks(), 0U);
    select(L"<AllNonXref");
    EXPECT_EQ(selected(), L"<AllNonXref");
    select(L"<XrefRoot");
    EXPECT_EQ(selected(), L"<XrefRoot");
    EXPECT_EQ(selectedForOthers(), L"<XrefRoot");
    select(nullptr);
    EXPECT_EQ(selected(), L"<All");
}

TEST_F(LayerFilters, ModifyRefusesWhatIsMissing) {
    HxLyLayerFilter* const root = manager->GetRootFilter();
    HxDbDatabase* const drawing = &database();
    EXPECT_EQ(KvLayerPropManager::ModifyFilters(drawing, nullptr, root, root), Hx::eInvalidInput);
    EXPECT_EQ(KvLayerPropManager::ModifyFilters(drawing, root, nullptr, root), Hx::eInvalidInput);
    EXPECT_EQ(KvLayerPropManager::ModifyFilters(drawing, root, root, nullptr), Hx::eInvalidInput);
    EXPECT_EQ(KvLayerPropManager::ModifyFilters(nullptr, root, root, root), Hx::eNoDatabase);
    const std::string before = bytes();
    EXPECT_EQ(KvLayerPropManager::ModifyFilters(drawing, root, root, root), Hx::eOk);
    EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eInvalidInput) << "nothing was selected before";
    EXPECT_EQ(bytes(), before);
    addFilters();
    manager->SetCurrentFilter(manager->FindFilter(L"Walls"));
    const HxDbObjectPointer<HxDbLayerTable> reader(database().layerTableId(), HxDb::kForRead);
    EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eWasOpenForRead);
}

TEST_F(LayerFilters, WithRecordsThatSomeoneElseHoldsNothingIsSelected) {
    addFilters();
    const std::string before = bytes();
    manager->SetCurrentFilter(manager->FindFilter(L"Picked"));
    HxDbObjectId records;
    {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        const HxDbObjectPointer<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForRead);
        ASSERT_EQ(extension->getAt(L"ACLYDICTIONARY", records), Hx::eOk);
    }
    {
        const HxDbObjectPointer<HxDbDictionary> reader(records, HxDb::kForRead);
        EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eWasOpenForRead);
    }
    {
        const HxDbObjectPointer<HxDbDictionary> writer(records, HxDb::kForWrite);
        EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eWasOpenForWrite);
    }
    EXPECT_FALSE(isAnythingOpen());
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(manager->SaveLayerFilters(true), Hx::eOk);
    EXPECT_EQ(selected(), L"Picked");
}

TEST_F(LayerFilters, WithoutRecordsTheTreeIsStored) {
    manager->SetCurrentFilter(manager->FindFilter(L"<AllUsed"));
    ASSERT_EQ(manager->SaveLayerFilters(true), Hx::eOk);
    EXPECT_EQ(selectedForOthers(), L"<AllUsed");
}

TEST_F(LayerFilters, OneThatWasDeletedIsForgotten) {
    addFilters();
    manager->SetCurrentFilter(manager->FindFilter(L"Picked"));
    manager->SetCurrentFilter(manager->FindFilter(L"Walls"));
    delete manager->FindFilter(L"Picked");
    delete manager->FindFilter(L"Walls");
    EXPECT_EQ(manager->SaveLayerFilters(false), Hx::eOk);
    EXPECT_EQ(manager->GetCurrentFilter(), manager->GetRootFilter());
    EXPECT_EQ(manager->GetPreviousFilter(), nullptr);
    EXPECT_EQ(selectedForOthers(), manager->GetRootFilter()->name());
}

TEST_F(LayerFilters, TheDialogStoresThemAtItsCommit) {
    addFilters();
    const std::string before = bytes();
    for (const bool keeps : {false, true}) {
        KvLayerPropManager dialog(&database(), false);
        dialog.Initialize();
        dialog.ReloadFilters();
        dialog.ReloadLayers();
        add(*dialog.GetRootFilter(), L"Fresh", L"NAME==\"N*\"");
        dialog.SetCurrentFilter(dialog.FindFilter(L"Fresh"));
        if (keeps) {
            EXPECT_EQ(dialog.Commit(true), Hx::eOk);
            EXPECT_EQ(dialog.GetCurrentFilter(), dialog.FindFilter(L"Fresh"));
            dialog.SetCurrentFilter(dialog.FindFilter(L"Picked"));
            EXPECT_EQ(dialog.SaveLayerFilters(true), Hx::eOk) << "the table is the transaction's";
            EXPECT_EQ(selected(), L"Picked") << "and others can read it";
            dialog.Cancel();
            EXPECT_EQ(selectedForOthers(), L"Fresh");
        } else {
            dialog.Cancel();
            EXPECT_EQ(dialog.FindFilter(L"Fresh"), nullptr);
            EXPECT_EQ(bytes(), before);
        }
    }
    EXPECT_FALSE(isAnythingOpen());
}

}  // namespace
}  // namespace korvex::test
