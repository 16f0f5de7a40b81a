// What the layer palette is told of what happens in documents, drawings and the editor.
#include "tests/module/model/recording_palette.h"
#include "tests/module/module_fixture.h"

#include "frame/module_state.h"
#include "frame/util/module_handles.h"
#include "host/db/kernel/database_imp.h"
#include "model/blocking_commands.h"
#include "model/palette_doc_reactor.h"
#include "model/palette_editor_reactor.h"
#include "sdk/hxconfig.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdialog.h"

namespace korvex::test {
namespace {

using Told = RecordingPalette::Told;

class DrawingWithOther : public DrawingTest {
protected:
    /// The command that attaches another drawing with layers of its own.
    std::wstring attachOther() {
        SmallDrawing other;
        other.model(other.line("PIPES", 0, 0, 10, 0));
        write("other.dxf", other.text());
        return L"XREF Attach " + path("other.dxf") + L"\n0,0\n1\n1\n0\n";
    }
};

class PaletteReactors : public DrawingWithOther {
protected:
    void SetUp() override {
        DrawingTest::SetUp();
        palette = new RecordingPalette;
        setLayerPalette(palette);
        palette->database = &database();
        setPaletteDocReactor(new KvLayerPaletteDocReactor(curDoc()));
        editorReactor = std::make_unique<KvLayerPaletteEditorReactor>();
    }
    void TearDown() override {
        editorReactor.reset();
        setPaletteDocReactor(nullptr);
        setLayerPalette(nullptr);
        DrawingTest::TearDown();
    }
    /// What the palette is told while commands run.
    Told tellsOf(const std::wstring& commands) {
        palette->told();
        run(commands);
        return palette->told();
    }
    int blocking() { return paletteDocReactor()->blockingCommands(curDoc()); }
    bool isFollowed(HxDbObjectId id) {
        return hxdbObjectPointer(id)->hasReactor(
            paletteDocReactor()->context()->GetLayerPaletteObjectReactor());
    }
    void erase(HxDbObjectId id, bool erasing = true) {
        hxedBeginUndoGroup(curDoc(), L"ERASE");
        {
            const HxDbObjectPointer<HxDbObject> object(id, HxDb::kForWrite, true);
            EXPECT_EQ(object->erase(erasing), Hx::eOk);
        }
        hxedEndUndoGroup(curDoc());
    }

    RecordingPalette* palette = nullptr;
    std::unique_ptr<KvLayerPaletteEditorReactor> editorReactor;
};

TEST(BlockingCommands, AreKnownByTheirExactNames) {
    for (const wchar_t* const name :
         {L"-LAYER", L"-INSERT", L"-WBLOCK", L"3DORBIT", L"DWFATTACH", L"DXFIN", L"DXFOUT", L"EXPORT",
          L"IMPORT", L"INSERT", L"NEW", L"OPEN", L"PAN", L"VPLAYER", L"WBLOCK", L"ZOOM"}) {
        EXPECT_TRUE(isNeedBlockCommand(name)) << name;
    }
    for (const wchar_t* const name : {L"insert", L"Zoom", L"LAYER", L"LINE", L"INSERTX", L"", L" NEW"}) {
        EXPECT_FALSE(isNeedBlockCommand(name)) << name;
    }
    EXPECT_FALSE(isNeedBlockCommand(nullptr));
}

TEST_F(PaletteReactors, BlockWhileSomeCommandsRun) {
    int inside = -1;
    define(L"INSERT", [&] { inside = blocking(); });
    define(L"ZOOM", [] { throw HxErrorStatusException(Hx::eOutOfMemory); });
    define(L"PAN", [] { editor().cancelled = true; });
    define(L"LINE", [&] { inside = blocking(); });
    run(L"INSERT\n");
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(blocking(), 0);
    run(L"LINE\n");
    EXPECT_EQ(inside, 0);
    run(L"PAN\n");
    EXPECT_EQ(blocking(), 0) << "the user gave up, and edits again";
    run(L"ZOOM\n");
    EXPECT_EQ(blocking(), 1) << "a command that failed goes on blocking";
    run(L"INSERT\n");
    EXPECT_EQ(inside, 2);
    EXPECT_EQ(blocking(), 1);
}

TEST_F(PaletteReactors, RefuseEditsWithAMessageWhileACommandBlocksThem) {
    setGlobalResInstance(LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str()));
    QWidget window;
    CWnd parent(&window);
    bool blocked = false;
    bool blockedWithoutParent = false;
    define(L"INSERT", [&] {
        blockedWithoutParent = isNeedBlockCmdRuning(nullptr);
        blocked = isNeedBlockCmdRuning(&parent);
    });
    define(L"LINE", [&] { blocked = isNeedBlockCmdRuning(&parent); });
    const std::wstring shown = run(L"INSERT\nOK\n");
    EXPECT_TRUE(contains(shown, L"A command is running in this drawing.")) << shown;
    EXPECT_TRUE(blocked);
    EXPECT_FALSE(blockedWithoutParent);
    EXPECT_FALSE(contains(run(L"LINE\n"), L"A command is running"));
    EXPECT_FALSE(blocked);
    EXPECT_EQ(failures, Lines());
    hxFreeResourceDll(globalResInstance());
    setGlobalResInstance(nullptr);
}

TEST_F(PaletteReactors, CountCommandsForTheDocumentThatTheyBeganIn) {
    HxApDocument* const first = curDoc();
    run(L"NEW\n");
    ASSERT_NE(curDoc(), first);
    EXPECT_EQ(blocking(), 0);
    EXPECT_EQ(paletteDocReactor()->blockingCommands(first), 0);
    run(L"-LAYER New X\n\n");
    EXPECT_EQ(blocking(), 0);
    editor().documents().closeDocument(curDoc());
}

TEST_F(PaletteReactors, KeepThePalettesOwnCommandQuietAndPutThatBack) {
    std::wstring inside;
    bool fails = false;
    define(L"VPLAYER", [&] {
        inside = variable(L"NOMUTT");
        if (fails) {
            throw HxErrorStatusException(Hx::eRefused);
        }
    });
    run(L"VPLAYER\n");
    EXPECT_EQ(inside, L"0") << "somebody else's";
    for (const bool failing : {false, true}) {
        fails = failing;
        palette->nomutt = 0;
        run(L"VPLAYER\n");
        EXPECT_EQ(inside, L"1");
        EXPECT_EQ(variable(L"NOMUTT"), L"0");
        EXPECT_EQ(palette->nomutt, -1);
    }
    palette->nomutt = 0;
    define(L"VPLAYER2", [] {});
    run(L"VPLAYER2\n");
    EXPECT_EQ(palette->nomutt, 0);
}

TEST_F(PaletteReactors, TellOfTheCurrentLayerSpaceAndViewport) {
    EXPECT_EQ(tellsOf(L"CLAYER WALLS\n"), Told{"current layer"});
    EXPECT_EQ(tellsOf(L"LAYEROVERRIDEHIGHLIGHT 1\n"), Told{}) << "there are no overrides in model space";
    Told told = tellsOf(L"LAYOUT S Layout1\n");
    EXPECT_EQ((Told{told.end() - 2, told.end()}), (Told{"space", "all"}));
    EXPECT_EQ(palette->refreshDatabase, &database());
    EXPECT_TRUE(isFollowed(hxedGetCurViewportObjectId()));
    palette->refreshDatabase = nullptr;
    told = tellsOf(L"MSPACE\n");
    EXPECT_EQ(told, (Told{"list", "all"}));
    EXPECT_EQ(palette->refreshDatabase, &database());
    EXPECT_EQ(tellsOf(L"LAYEROVERRIDEHIGHLIGHT 0\n"), Told{"list"});
    EXPECT_EQ(tellsOf(L"LTSCALE 2\n"), Told{});
    palette->database = nullptr;
    EXPECT_EQ(tellsOf(L"LAYEROVERRIDEHIGHLIGHT 1\n"), Told{});

    palette->visible = false;
    EXPECT_EQ(tellsOf(L"CLAYER NOTES\nTILEMODE 1\nCVPORT 2\nLAYEROVERRIDEHIGHLIGHT 0\n"), Told{});
}

TEST_F(PaletteReactors, FollowTheViewportOfALayoutAlsoWhileThePaletteIsHidden) {
    palette->visible = false;
    EXPECT_EQ(tellsOf(L"LAYOUT S Layout1\nMSPACE\nPSPACE\n"), Told{});
    EXPECT_TRUE(isFollowed(hxedGetCurViewportObjectId()));
    EXPECT_EQ(tellsOf(L"MSPACE\nVPLAYER Freeze WALLS\nCurrent\n\n"), Told{"list"});
    EXPECT_TRUE(isFollowed(hxedGetCurViewportObjectId()));
    run(L"TILEMODE 1\nTILEMODE 0\nMSPACE\nTILEMODE 1\n");
}

TEST_F(PaletteReactors, TellOfLayersThatCome) {
    EXPECT_EQ(tellsOf(L"-LAYER New FRESH\n\n"), (Told{"disable", "item FRESH", "enable"}));
    const HxDbObjectId fresh = layer(L"FRESH");
    EXPECT_TRUE(isFollowed(fresh));
    EXPECT_EQ(tellsOf(L"-LAYER LOck FRESH\n\n"), Told{"item FRESH"});
    EXPECT_EQ(tellsOf(L"U\n"), Told{"item FRESH"});
    EXPECT_EQ(tellsOf(L"U\n"), (Told{"item FRESH", "invalid FRESH"})) << "its creation is undone";
    EXPECT_FALSE(isFollowed(fresh));
    EXPECT_EQ(tellsOf(L"REDO\n1\n"), (Told{"item FRESH", "valid FRESH"}));
    EXPECT_TRUE(isFollowed(fresh));

    palette->visible = false;
    EXPECT_EQ(tellsOf(L"-LAYER New HIDDEN\n\n"), Told{}) << "the whole is read when it is shown";
    EXPECT_EQ(tellsOf(L"-LAYER LOck HIDDEN\n\n"), Told{"item HIDDEN"}) << "but marks add up";
    EXPECT_EQ(tellsOf(L"U\nU\n"), Told{"item HIDDEN"});
}

TEST_F(PaletteReactors, TellOfLayersThatGo) {
    const HxDbObjectId notes = layer(L"NOTES");
    palette->told();
    erase(notes);
    EXPECT_EQ(palette->told(), (Told{"item NOTES", "invalid NOTES"}));
    EXPECT_FALSE(isFollowed(notes));
    EXPECT_EQ(tellsOf(L"U\n"), (Told{"item NOTES", "valid NOTES"}));
    EXPECT_TRUE(isFollowed(notes));
    EXPECT_EQ(tellsOf(L"-LAYER LOck NOTES\n\n"), Told{"item NOTES"});
    erase(notes);
    palette->told();
    erase(notes, false);
    EXPECT_EQ(palette->told(), (Told{"item NOTES", "valid NOTES"})) << "un-erased by hand";
}

TEST_F(PaletteReactors, SwitchThePaletteOffWhileTheTableIsChanged) {
    HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForWrite);
    EXPECT_EQ(palette->told(), Told{});
    auto* const made = new HxDbLayerTableRecord;
    made->setName(L"MADE");
    ASSERT_EQ(table->add(made), Hx::eOk);
    made->close();
    EXPECT_FALSE(palette->enabled);
    EXPECT_EQ(table->downgradeOpen(), Hx::eOk);
    EXPECT_FALSE(palette->enabled);
    table.close();
    EXPECT_TRUE(palette->enabled);

    for (const bool keeps : {true, false}) {
        HxDbTransactionManager& transactions = *database().transactionManager();
        transactions.startTransaction();
        HxDbObject* held = nullptr;
        ASSERT_EQ(transactions.getObject(held, database().layerTableId(), HxDb::kForWrite), Hx::eOk);
        auto* const other = new HxDbLayerTableRecord;
        other->setName(keeps ? L"KEPT" : L"DROPPED");
        ASSERT_EQ(HxDbLayerTable::cast(held)->add(other), Hx::eOk);
        other->close();
        EXPECT_FALSE(palette->enabled);
        keeps ? transactions.endTransaction() : transactions.abortTransaction();
        EXPECT_TRUE(palette->enabled);
    }
}

TEST_F(PaletteReactors, TellOfFilterDictionaries) {
    HxDbObjectId filters;
    {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForWrite);
        ASSERT_EQ(table->createExtensionDictionary(), Hx::eOk);
        const HxDbObjectPointer<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForWrite);
        auto* const made = new HxDbDictionary;
        ASSERT_EQ(extension->setAt(L"ACLYDICTIONARY", made, filters), Hx::eOk);
        made->close();
    }
    palette->told();
    erase(filters);
    EXPECT_EQ(palette->told(), Told{"filter"});
    EXPECT_EQ(tellsOf(L"U\n"), Told{"filter"});
    EXPECT_TRUE(isFollowed(filters));
    EXPECT_EQ(tellsOf(L"REDO\n"), Told{"filter"});
    EXPECT_FALSE(isFollowed(filters));
    run(L"U\n");
    palette->visible = false;
    palette->told();
    erase(filters);
    EXPECT_EQ(palette->told(), Told{});
    EXPECT_FALSE(isFollowed(filters));
    // A dictionary elsewhere is none of theirs.
    palette->visible = true;
    HxDbObjectId other;
    {
        const HxDbObjectPointer<HxDbDictionary> root(database().namedObjectsDictionaryId(), HxDb::kForWrite);
        auto* const made = new HxDbDictionary;
        ASSERT_EQ(root->setAt(L"OTHER", made, other), Hx::eOk);
        made->close();
    }
    palette->told();
    erase(other);
    EXPECT_EQ(palette->told(), Told{});
    // Nor are the layer states beside them.
    HxDbObjectId states;
    {
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        const HxDbObjectPointer<HxDbDictionary> extension(table->extensionDictionary(), HxDb::kForWrite);
        auto* const made = new HxDbDictionary;
        ASSERT_EQ(extension->setAt(L"ACAD_LAYERSTATES", made, states), Hx::eOk);
        made->close();
    }
    palette->told();
    {
        const HxDbObjectPointer<HxDbDictionary> opened(states, HxDb::kForWrite);
        HxDbObjectId state;
        auto* const made = new HxDbXrecord;
        ASSERT_EQ(opened->setAt(L"evening", made, state), Hx::eOk);
        made->close();
    }
    EXPECT_EQ(palette->told(), Told{});
    erase(states);
    EXPECT_EQ(palette->told(), Told{});
    EXPECT_EQ(tellsOf(L"U\n"), Told{});
}

TEST_F(PaletteReactors, TellOfViewports) {
    run(L"LAYOUT S Layout1\nMSPACE\nTILEMODE 1\nTILEMODE 0\nMSPACE\n");
    const HxDbObjectId viewport = hxedGetCurViewportObjectId();
    ASSERT_FALSE(viewport.isNull());
    paletteDocReactor()->context()->followViewport(&database());
    EXPECT_TRUE(isFollowed(viewport));
    EXPECT_EQ(tellsOf(L"VPLAYER Freeze WALLS\nCurrent\n\n"), Told{"list"});
    palette->told();
    {
        const HxDbObjectPointer<HxDbBlockTableRecord> paper(database().paperSpaceId(), HxDb::kForWrite);
        auto* const made = new HxDbViewport;
        HxDbObjectId id;
        ASSERT_EQ(paper->appendHxDbEntity(id, made), Hx::eOk);
        made->close();
        EXPECT_TRUE(isFollowed(id));
    }
}

TEST_F(PaletteReactors, TellOfExternalReferences) {
    Told told = tellsOf(attachOther());
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(std::count(told.begin(), told.end(), "filter"), 1);
    told = tellsOf(L"XREF Detach *\n");
    EXPECT_EQ(std::count(told.begin(), told.end(), "filter"), 1);
    palette->visible = false;
    told = tellsOf(attachOther());
    EXPECT_EQ(std::count(told.begin(), told.end(), "filter"), 0);
}

TEST_F(PaletteReactors, FollowEachDocumentOnce) {
    HxApDocument* const first = curDoc();
    HxDbDatabase* const firstDrawing = &database();
    palette->told();
    HxApDocument* const second = editor().documents().newDocument();
    EXPECT_EQ(palette->told(), Told{"all"});
    EXPECT_EQ(palette->refreshDatabase, second->database());
    EXPECT_EQ(tellsOf(L"-LAYER New X\n\n"), (Told{"disable", "item X", "enable"}));

    palette->database = firstDrawing;
    editor().documents().activateDocument(first);
    EXPECT_EQ(palette->told(), Told{}) << "it shows that drawing already";
    palette->visible = false;
    editor().documents().activateDocument(second);
    EXPECT_EQ(palette->told(), Told{});
    EXPECT_EQ(second->database()->imp()->reactors.size(), firstDrawing->imp()->reactors.size());

    editor().documents().closeDocument(first);
    EXPECT_EQ(palette->told(), (Told{"clear document", "refresh database"}));
    EXPECT_EQ(palette->cleared, first);
    editor().documents().closeDocument(second);
    EXPECT_EQ(palette->told(), (Told{"clear document", "refresh database", "database"}));
    EXPECT_EQ(palette->database, nullptr);
}

/// Reactors that hang on a drawing's objects; the host has none of its own.
std::size_t objectReactors(const HxApDocument* document) {
    std::size_t count = 0;
    for (const HxDbStub& stub : document->database()->imp()->stubs) {
        count += stub.object ? stub.object->imp()->reactors.size() : 0;
    }
    return count;
}
std::size_t drawingReactors(const HxApDocument* document) {
    return document->database()->imp()->reactors.size();
}

using ReactorsOfTheModule = DrawingWithOther;

TEST_F(ReactorsOfTheModule, AreGoneWithIt) {
    run(L"-LAYER New A,B\n\n-LAYER LOck A\n\nU\nU\nLAYOUT S Layout1\nMSPACE\nPSPACE\nTILEMODE 1\n");
    HxApDocument* const first = curDoc();
    HxApDocument* const second = editor().documents().newDocument();
    run(L"-LAYER New A\n\n" + attachOther());
    EXPECT_GE(objectReactors(first), 10U);
    EXPECT_GE(objectReactors(second), 3U);
    const std::size_t before[] = {drawingReactors(first), drawingReactors(second)};
    ASSERT_EQ(linker().unloadModule(kModule), Hx::eOk);
    EXPECT_EQ(objectReactors(first), 0U);
    EXPECT_EQ(objectReactors(second), 0U);
    EXPECT_EQ(drawingReactors(first), before[0] - 1);
    EXPECT_EQ(drawingReactors(second), before[1] - 1);
    // Nothing that is left leads into code that is gone.
    run(L"-LAYER New B\n\nU\nREDO\n");
    editor().documents().activateDocument(first);
    run(L"LAYOUT S Layout1\nMSPACE\nVPLAYER Freeze WALLS\nCurrent\n\nU\n");
    EXPECT_EQ(failures, Lines());
    load();
    EXPECT_GE(objectReactors(curDoc()), 10U);
}

}  // namespace
}  // namespace korvex::test
