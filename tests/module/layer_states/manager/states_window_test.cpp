// The layer states manager and the save dialog of the built module, by clicks and keys.
#include "tests/module/layer_states/manager/states_window_fixture.h"

#include "frame/util/registry_settings.h"
#include "manager_ui/grid/layer_column.h"

#include "sdk/hxdbdict.h"

#include <sstream>

namespace korvex::test {
namespace {

class StatesWindow : public StatesWindowTest {
protected:
    std::wstring manager(const std::wstring& actions) { return run(L"LAYERSTATE\n" + actions); }
    std::wstring close(const std::wstring& actions) {
        return manager(actions + L"CLICK IDC_LAYERMAN_CLOSE\n");
    }
    void save(const std::wstring& name, const std::wstring& description = L"") {
        run(L"LAYERSTATESAVE\nTYPE IDC_LAYERSTATESAVE_COMBO " + name + L"\n" +
            (description.empty() ? L"" : L"TYPE IDC_LAYERSTATESAVE_EDIT " + description + L"\n") +
            L"CLICK IDOK\n");
    }
    static std::wstring select(const std::wstring& state, const std::wstring& how = L"") {
        return L"CLICK IDC_LAYERMAN_LIST " + how + L" \"" + state + L",Name\"\n";
    }
    static std::wstring rename(const std::wstring& state, const std::wstring& name, const wchar_t* key) {
        return select(state) + L"PRESS IDC_LAYERMAN_LIST F2\nPRESS focus Ctrl+A\nPRESS focus Del\n" +
               (name.empty() ? L"" : L"TYPE focus " + name + L"\n") + L"PRESS focus " + key + L"\n";
    }
    int maskOf(const wchar_t* state) {
        KvLayerStateMap map;
        loadLayerStates(&database(), map);
        return map.find(state) ? map.find(state)->GetLayerStateMake() : -1;
    }
    /// The names in the order in which the list shows them.
    static std::vector<std::wstring> listed(const std::wstring& shown) {
        std::vector<std::wstring> names;
        const std::size_t list = shown.find(L"IDC_LAYERMAN_LIST: ");
        std::wistringstream lines(list == std::wstring::npos ? L"" : shown.substr(list));
        std::wstring line;
        std::getline(lines, line);
        while (std::getline(lines, line) && line.find(L" | ") != std::wstring::npos) {
            const std::size_t name = line.find(L" | ") + 3;
            names.push_back(line.substr(name, line.find(L" | ", name) - name));
        }
        return names;
    }
    int colorOf(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        return record->color().colorIndex();
    }
    bool isOff(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        return record->isOff();
    }
    /// PLAN gets the states Doors and Frames, and the drawing knows it.
    void giveReferenceStates() {
        open("plan.dxf");
        save(L"Doors");
        save(L"Frames");
        run(L"QSAVE\nCLOSE\n");
        run(L"XREF R PLAN\n");
        ASSERT_EQ(failures, Lines());
    }
};

using Texts = std::vector<std::wstring>;

// ---- saving ----

TEST_F(StatesWindow, OneSessionIsOneUndoStep) {
    save(L"Old");
    const QByteArray before = withoutSeed();
    manager(L"CLICK IDC_LAYERMAN_NEW\nTYPE IDC_LAYERSTATESAVE_COMBO Night\nCLICK IDOK\n"
            L"PRESS IDC_LAYERMAN_LIST Insert\nTYPE IDC_LAYERSTATESAVE_COMBO Day\nPRESS focus Enter\n" +
            rename(L"Night", L"Late", L"Enter") + select(L"Old") + L"PRESS IDC_LAYERMAN_LIST Del\nOK\n" +
            select(L"Day") + L"PRESS IDC_LAYERMAN_LIST Enter\n");
    EXPECT_EQ(states(), (Names{L"Day", L"Late"}));
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYERSTATE"));
    EXPECT_TRUE(withoutSeed() == before);
}

TEST_F(StatesWindow, SaveDialogRefusesAsksAndTrims) {
    save(L"Plan A", L"first");
    const std::wstring told = run(
        L"LAYERSTATESAVE\nLOOK IDOK\nTYPE IDC_LAYERSTATESAVE_COMBO    \nLOOK IDOK\nTYPE "
        L"IDC_LAYERSTATESAVE_COMBO a:b\n"
        L"CLICK IDOK\nOK\nPRESS IDC_LAYERSTATESAVE_COMBO Ctrl+A\nTYPE IDC_LAYERSTATESAVE_COMBO   plan a \n"
        L"CLICK IDOK\nCancel\nCHOOSE IDC_LAYERSTATESAVE_COMBO \"Plan A\"\nLOOK IDC_LAYERSTATESAVE_EDIT\n"
        L"PRESS IDC_LAYERSTATESAVE_COMBO Ctrl+A\nTYPE IDC_LAYERSTATESAVE_COMBO   plan a \nPRESS focus "
        L"Enter\nOK\n");
    EXPECT_TRUE(contains(told, L"IDOK: \"OK\", disabled"));
    EXPECT_TRUE(contains(told, L"The name of a layer state has no control characters and none of these:\n\n"
                               L"< , > / ? ' \" \\ | ; : = *\n\nType a name without them. [OK]"));
    EXPECT_TRUE(contains(told, L"There is a layer state \"plan a\" already. Overwrite it? [OK/Cancel]"));
    EXPECT_TRUE(contains(told, L"IDC_LAYERSTATESAVE_EDIT: \"first\""));
    EXPECT_EQ(states(), (Names{L"plan a"}));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, SaveGoesIntoTheSelectedStateAfterAQuestion) {
    save(L"Plan");
    run(L"-LAYER F WALLS\n\n");
    const std::wstring question =
        L"Save all layers as they are now in layer state \"Plan\"?\n\nWhat it holds "
        L"is overwritten. [OK/Cancel]";
    EXPECT_TRUE(contains(close(L"CLICK IDC_LAYERMAN_SAVE\nCancel\nLOOK IDC_LAYERMAN_LIST\n"),
                         L"Plan | Model | No | 14"));
    EXPECT_TRUE(contains(close(L"CLICK IDC_LAYERMAN_SAVE\nOK\nLOOK IDC_LAYERMAN_LIST\n"), question));
    EXPECT_TRUE(contains(close(L"LOOK IDC_LAYERMAN_LIST\n"), L"Plan | Model | Yes"));
    EXPECT_EQ(failures, Lines());
}

// ---- restoring ----

TEST_F(StatesWindow, RestoresWhatIsTickedAndKeepsTheTicks) {
    save(L"Plan");
    run(L"-LAYER\nF\nWALLS\nC\n3\nWALLS\n\n");
    manager(L"CLICK IDC_LAYERMAN_CLEARALL\nTICK IDC_LAYERMAN_CHECK2 1\nCLICK IDC_LAYERMAN_RESTORE\n");
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(colorOf(L"WALLS"), 3) << "not ticked";
    EXPECT_EQ(maskOf(L"Plan"), 0x002);
    const std::wstring shown = close(L"LOOK\n");
    EXPECT_TRUE(contains(shown, L"1: Restored last | Plan | Model | Yes"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_CHECK2: \"Frozen/Thawed\" ticked\n"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_CHECK6: \"Color\" clear\n"));
    manager(L"CLICK IDC_LAYERMAN_SELECTALL\nPRESS IDC_LAYERMAN_LIST Enter\n");
    EXPECT_EQ(colorOf(L"WALLS"), 7);
    EXPECT_EQ(maskOf(L"Plan"), 0x7FF) << "grey boxes, too";
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, FoldsTheRestoreAreaAwayForTheNextOpening) {
    const std::wstring wait = L"DELAY 200\n";  // window managers take their time
    const std::wstring picture = wait + L"PICTURE " + path("window.png") + L"\n";
    const auto size = [](const std::wstring& told) {
        const std::size_t at = told.rfind(L".png\", ");
        return at == std::wstring::npos ? L"" : told.substr(at + 7, told.find(L".\n", at + 7) - at - 7);
    };
    const std::wstring open = size(close(picture));
    const std::wstring folded = close(wait + L"CLICK IDC_LAYERMAN_EXPAND\n" + picture + L"LOOK\n");
    EXPECT_NE(size(folded), open);
    EXPECT_TRUE(contains(folded, L"IDC_LAYERMAN_EXPAND: \"Show what is restored\""));
    EXPECT_FALSE(contains(folded, L"IDC_LAYERMAN_CHECK1:"));
    EXPECT_FALSE(contains(close(L"LOOK\n"), L"IDC_LAYERMAN_CHECK1:"));
    EXPECT_EQ(size(close(wait + L"CLICK IDC_LAYERMAN_EXPAND\n" + picture)), open);
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, TurnsOffOtherLayersAndRemembersTheBox) {
    save(L"Plan");
    run(L"-LAYER N LATER\n\n");
    manager(L"TICK IDC_LAYERMAN_CHECK12 1\nCLICK IDC_LAYERMAN_RESTORE\n");
    std::int16_t kept = 0;
    EXPECT_TRUE(setting(L"LAYSTATEOPTIONS").getInt16(kept));
    EXPECT_EQ(kept, 1);
    EXPECT_TRUE(isOff(L"LATER"));
    EXPECT_TRUE(contains(close(L"LOOK IDC_LAYERMAN_CHECK12\nTICK IDC_LAYERMAN_CHECK12 0\n"), L"ticked"));
    EXPECT_TRUE(contains(close(L"LOOK IDC_LAYERMAN_CHECK12\n"), L"clear"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, TellsWhichLayersCouldNotBeChanged) {
    save(L"Plan");
    run(L"-LAYER\nF\nWALLS,NOTES\n\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"WALLS"), HxDb::kForRead);
    EXPECT_TRUE(contains(manager(L"CLICK IDC_LAYERMAN_RESTORE\n"),
                         L"1 of 14 layers could not be changed: \"WALLS\""));
    EXPECT_EQ(failures.size(), 1U) << "the host tells that the layer is open";
}

TEST_F(StatesWindow, InALayoutFreezesInTheViewport) {
    run(L"LAYOUT S Layout1\nMSPACE\nVPLAYER F WALLS\n\n\n");
    ASSERT_EQ(frozenHere(), Names{L"WALLS"});
    save(L"Sheet");
    run(L"VPLAYER T *\n\n\n");
    ASSERT_EQ(frozenHere(), Names());
    const std::wstring shown = manager(L"LOOK\nCLICK IDC_LAYERMAN_RESTORE\n");
    EXPECT_TRUE(contains(shown, L"Sheet | Layout | No"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_CHECK3: \"Frozen in current viewport\" ticked\n"));
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, GivesPropertiesToTheViewportAlone) {
    save(L"Plan");
    run(L"-LAYER\nC\n3\nWALLS\n\nLAYOUT S Layout1\nMSPACE\n");
    manager(L"TICK IDC_LAYERMAN_CHECK13 1\nCLICK IDC_LAYERMAN_RESTORE\n");
    EXPECT_EQ(colorOf(L"WALLS"), 3);
    bool isOverride = false;
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"WALLS"), HxDb::kForRead);
    EXPECT_EQ(walls->color(hxedGetCurViewportObjectId(), isOverride).colorIndex(), 7);
    EXPECT_TRUE(isOverride);
    EXPECT_EQ(failures, Lines());
}

// ---- names ----

TEST_F(StatesWindow, RenameRefusesWhatIsNoName) {
    save(L"Plan");
    save(L"Other");
    const struct {
        const wchar_t* typed;
        const wchar_t* told;
    } refusals[] = {
        {L"", L"A layer state needs a name. It keeps the one that it has. [OK]"},
        {L"a|b", L"Type a name without them. [OK]"},
        {L"\\U+002A", L"Type a name without them. [OK]"},
        {L"OTHER", L"There is a layer state \"OTHER\" already. Type another name. [OK]"},
    };
    for (const auto& refusal : refusals) {
        EXPECT_TRUE(contains(close(rename(L"Plan", refusal.typed, L"Enter") + L"OK\n"), refusal.told))
            << refusal.typed;
    }
    EXPECT_EQ(states(), (Names{L"Other", L"Plan"}));
    close(rename(L"Plan", L"Given up", L"Esc"));
    close(rename(L"Plan", L"PLAN", L"Enter"));
    EXPECT_EQ(states(), (Names{L"Other", L"PLAN"}));
    close(rename(L"PLAN", L" Gr\\U+00FCn ", L"Tab"));
    EXPECT_EQ(states(), (Names{L"Grün", L"Other"}));
    EXPECT_EQ(failures, Lines());
}

// ---- deleting, selecting ----

TEST_F(StatesWindow, DeletesAfterAQuestionAndEnablesWhatGoes) {
    save(L"A1");
    save(L"A2");
    const std::wstring told =
        close(L"PRESS IDC_LAYERMAN_LIST Del\nCancel\nCLICK IDC_LAYERMAN_DEL\nOK\nLOOK\n");
    EXPECT_TRUE(contains(told, L"Delete layer state \"A1\"? [OK/Cancel]"));
    EXPECT_TRUE(contains(told, L"1:  | A2 | Model | Yes | 14 |   (selected)")) << "what stood behind it";
    EXPECT_EQ(states(), (Names{L"A2"}));
    const std::wstring empty = close(L"CLICK IDC_LAYERMAN_DEL\nOK\nLOOK\n");
    for (const wchar_t* const grey : {L"SAVE: \"Save\"", L"EDIT: \"Edit...\"", L"RENAME: \"Rename\"",
                                      L"DEL: \"Delete\"", L"EXPORT: \"Export...\"", L"RESTORE: \"Restore\"",
                                      L"SELECTALL: \"Select All\"", L"CLEARALL: \"Clear All\""}) {
        EXPECT_TRUE(contains(empty, std::wstring(L"IDC_LAYERMAN_") + grey + L", disabled")) << grey;
    }
    EXPECT_TRUE(contains(empty, L"IDC_LAYERMAN_NEW: \"New...\"\n"));
    EXPECT_TRUE(contains(
        empty, L"IDC_LAYERMAN_CHECK11: \"Do not list layer states of external references\" clear\n"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, SeveralSelectedCanOnlyBeDeleted) {
    save(L"A1");
    save(L"A2");
    const std::wstring shown = close(L"PRESS IDC_LAYERMAN_LIST Ctrl+A\nLOOK\n");
    for (const wchar_t* const grey :
         {L"CHECK1: \"On/Off\" ticked", L"CHECK12: \"Turn off layers that the state does not name\" clear",
          L"CHECK13: \"Apply properties as viewport overrides\" clear", L"RESTORE: \"Restore\"",
          L"RENAME: \"Rename\""}) {
        EXPECT_TRUE(contains(shown, std::wstring(L"IDC_LAYERMAN_") + grey + L", disabled")) << grey;
    }
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_DEL: \"Delete\"\n"));
}

TEST_F(StatesWindow, SortsNaturallyAndSearches) {
    save(L"Plan 10", L"the evening");
    save(L"Plan 9", L"the morning");
    save(L"Evening 1");
    EXPECT_EQ(listed(close(L"LOOK IDC_LAYERMAN_LIST\n")), (Texts{L"Evening 1", L"Plan 9", L"Plan 10"}));
    EXPECT_EQ(listed(close(L"CLICK IDC_LAYERMAN_LIST/header Name\nLOOK IDC_LAYERMAN_LIST\n")),
              (Texts{L"Plan 10", L"Plan 9", L"Evening 1"}));
    EXPECT_EQ(listed(close(L"CLICK IDC_LAYERMAN_LIST/header Description\nLOOK IDC_LAYERMAN_LIST\n")),
              (Texts{L"Evening 1", L"Plan 10", L"Plan 9"}));
    EXPECT_EQ(listed(close(L"PRESS IDC_LAYERMAN_LIST Ctrl+F\nTYPE focus EVEN\nLOOK IDC_LAYERMAN_LIST\n")),
              (Texts{L"Evening 1", L"Plan 10"}));
    EXPECT_EQ(listed(close(L"TYPE IDC_LAYERMAN_SEARCH n ?0\nPRESS focus Enter\nLOOK IDC_LAYERMAN_LIST\n")),
              (Texts{L"Plan 10"}))
        << "Enter goes to what was found and restores nothing";
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, HiddenStatesAreNeverListed) {
    save(L"Seen");
    save(L"Unseen");
    HxDbLayerStateManager& host = *database().getLayerStateManager();
    ASSERT_EQ(host.setLayerStateMask(L"Unseen", 0x87FF), Hx::eOk);
    EXPECT_EQ(listed(close(L"LOOK IDC_LAYERMAN_LIST\n")), (Texts{L"Seen"}));
    const std::wstring told =
        run(L"LAYERSTATESAVE\nLOOK IDC_LAYERSTATESAVE_COMBO\nTYPE IDC_LAYERSTATESAVE_COMBO "
            L"unseen\nCLICK IDOK\nOK\nCLICK IDCANCEL\n");
    EXPECT_TRUE(contains(told, L"The name \"unseen\" belongs to a layer state that cannot be saved over"));
    EXPECT_FALSE(contains(told, L"\"Unseen\""));
    EXPECT_TRUE(contains(close(rename(L"Seen", L"unseen", L"Enter") + L"OK\n"), L"There is a layer state"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, SeveralAreDeletedOneByOneOrAllAtOnce) {
    for (const wchar_t* const name : {L"A1", L"A2", L"A3", L"A4"}) {
        save(name);
    }
    const std::wstring all = L"PRESS IDC_LAYERMAN_LIST Ctrl+A\nPRESS IDC_LAYERMAN_LIST Del\n";
    const std::wstring yes = L"CLICK IDC_DELLAYERSTATE_YES\n";
    const std::wstring no = L"CLICK IDC_DELLAYERSTATE_NO\n";
    const std::wstring told =
        close(all + L"LOOK IDC_DELLAYERSTATE_STATIC\n" + no + yes + L"PRESS window Esc\n");
    EXPECT_TRUE(contains(told, L"IDC_DELLAYERSTATE_STATIC: \"A1\""));
    EXPECT_EQ(states(), (Names{L"A1", L"A3", L"A4"})) << "Esc keeps those that are left";
    close(all + no + L"CLICK IDC_DELLAYERSTATE_YESALL\n");
    EXPECT_EQ(states(), (Names{L"A1"}));
    run(L"U\n");
    EXPECT_EQ(states(), (Names{L"A1", L"A3", L"A4"}));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, EditsTheSelectedState) {
    save(L"Plan");
    const std::wstring edit = L"CLICK IDC_LAYERMAN_EDIT\nCLICK IDC_LAYERSTATE_LIST \"WALLS,Lock\"\n";
    close(edit + L"CLICK IDCANCEL\n");
    const QByteArray before = withoutSeed();
    EXPECT_TRUE(contains(close(edit + L"CLICK IDOK\nLOOK IDC_LAYERMAN_LIST\n"), L"Plan | Model | No | 14"));
    EXPECT_FALSE(withoutSeed() == before);
    manager(L"CLICK IDC_LAYERMAN_RESTORE\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"WALLS"), HxDb::kForRead);
    EXPECT_TRUE(walls->isLocked());
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, ImportsChosenStatesOfAnotherDrawing) {
    giveReferenceStates();
    close(L"CLICK IDC_LAYERMAN_IMPORT\nCHOOSE fileTypeCombo \"Drawings (*.dwg *.dxf)\"\n"
          L"PRESS fileNameEdit Ctrl+A\nTYPE fileNameEdit " +
          path("plan.dxf") +
          L"\nPRESS focus Enter\nCLICK IDC_SELSTATE_NONE\n"
          L"TICK IDC_SELSTATE_LIST Frames 1\nCLICK IDOK\n");
    EXPECT_EQ(states(), (Names{L"Frames"}));
    CStdStr<wchar_t> filter;
    const CStdStr<wchar_t> key =
        CStdStr<wchar_t>(hxdbHostApplicationServices()->getRegistryProductRootKey()) +
        L"\\Profiles\\Default\\UserInterfaceSettings\\KvLayerStateManDlg";
    EXPECT_TRUE(ReadRegString(HKEY_CURRENT_USER, key, L"InitialFilterIndex", filter));
    EXPECT_EQ(filter, L"2");
    EXPECT_EQ(failures, Lines());
}

// ---- references ----

TEST_F(StatesWindow, StatesOfReferencesStayAsTheyAre) {
    giveReferenceStates();
    save(L"Own");
    const QByteArray before = withoutSeed();
    const std::wstring shown =
        close(select(L"PLAN_Doors") + L"LOOK\nPRESS IDC_LAYERMAN_LIST F2\nOK\nPRESS IDC_LAYERMAN_LIST Del\n");
    EXPECT_TRUE(contains(shown, L"PLAN_Doors | PLAN | Yes | 3 |"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_SAVE: \"Save\", disabled"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_EDIT: \"Edit...\", disabled"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_DEL: \"Delete\", disabled"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_EXPORT: \"Export...\"\n"));
    EXPECT_TRUE(contains(shown, L"IDC_LAYERMAN_RESTORE: \"Restore\"\n"));
    EXPECT_TRUE(
        contains(shown, L"Layer state \"PLAN_Doors\" belongs to an external reference and keeps its name."));
    EXPECT_EQ(listed(close(
                  L"PRESS IDC_LAYERMAN_LIST Ctrl+A\nCLICK IDC_LAYERMAN_DEL\nOK\nLOOK IDC_LAYERMAN_LIST\n")),
              (Texts{L"PLAN_Doors", L"PLAN_Frames"}))
        << "only the own one was asked for";
    run(L"U\n");
    EXPECT_TRUE(withoutSeed() == before);
    EXPECT_EQ(listed(close(L"TICK IDC_LAYERMAN_CHECK11 1\nLOOK IDC_LAYERMAN_LIST\n")), (Texts{L"Own"}));
    EXPECT_EQ(listed(close(L"LOOK IDC_LAYERMAN_LIST\n")), (Texts{L"Own"})) << "remembered";
    EXPECT_EQ(listed(close(L"TICK IDC_LAYERMAN_CHECK11 0\nLOOK IDC_LAYERMAN_LIST\n")).size(), 3U);
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, RestoresStatesOfReferences) {
    giveReferenceStates();
    run(L"-LAYER\nLO\nPLAN|DOORS\n\n");
    const std::wstring told =
        manager(select(L"PLAN_Doors") + L"LOOK IDC_LAYERMAN_LIST\nCLICK IDC_LAYERMAN_RESTORE\n");
    EXPECT_TRUE(contains(told, L"PLAN_Doors | PLAN | No | 3 |"));
    EXPECT_FALSE(contains(told, L"could not be changed")) << "layer 0 is the drawing's own";
    EXPECT_TRUE(
        contains(close(L"LOOK IDC_LAYERMAN_LIST\n"), L"Restored last | PLAN_Doors | PLAN | Yes | 3 |"));
    EXPECT_EQ(states(), Names());
    EXPECT_EQ(failures, Lines());
}

// ---- files ----

TEST_F(StatesWindow, ExportsAndImportsAndRestoresAtOnce) {
    save(L"Plan");
    const std::wstring file = path("plan.las");
    const std::wstring offered =
        close(L"CLICK IDC_LAYERMAN_EXPORT\nLOOK fileNameEdit\nPRESS fileNameEdit Ctrl+A\nTYPE fileNameEdit " +
              file + L"\nPRESS focus Enter\nOK\n");
    EXPECT_TRUE(contains(offered, L"fileNameEdit: \"Plan.las\""));
    EXPECT_TRUE(contains(offered, L"1 name(s) will not come back from it as they are: \"Wände 2\"."));
    run(L"-LAYER F WALLS\n\n");
    const std::wstring typed =
        L"PRESS fileNameEdit Ctrl+A\nTYPE fileNameEdit " + file + L"\nPRESS focus Enter\n";
    const std::wstring told =
        close(L"CLICK IDC_LAYERMAN_DEL\nOK\nCLICK IDC_LAYERMAN_IMPORT\n" + typed +
              L"No\nLOOK IDC_LAYERMAN_LIST\nCLICK IDC_LAYERMAN_IMPORT\n" + typed + L"No\n");
    EXPECT_TRUE(contains(told, L"Layer state \"Plan\" was imported. Restore it now? [Yes/No]"));
    EXPECT_TRUE(contains(told, L"1:  | Plan | Model | No | 14 |   (selected)"));
    EXPECT_TRUE(contains(told, L"There is a layer state \"Plan\" already. Overwrite it? [Yes/No]"));
    EXPECT_EQ(frozen(), Names{L"WALLS"});
    manager(L"CLICK IDC_LAYERMAN_IMPORT\n" + typed + L"Yes\nYes\n");
    EXPECT_EQ(frozen(), Names()) << "restored, and the window is closed";
    EXPECT_EQ(failures, Lines());
}

// ---- the layer manager's dialog, and where nothing can be done ----

TEST_F(StatesWindow, CancelOfTheLayerDialogTakesItBack) {
    save(L"Plan");
    run(L"-LAYER\nF\nWALLS\nC\n3\nNOTES\n\n");
    const QByteArray before = withoutSeed();
    const std::wstring work = L"CLASSICLAYER\nCLICK IDC_LIST_LAYERS_LIST \"SPARE,Lock\"\n"
                              L"CLICK IDC_BUTTON_LAYERSTATES\nCLICK IDC_LAYERMAN_NEW\n"
                              L"TYPE IDC_LAYERSTATESAVE_COMBO Later\nCLICK IDOK\n" +
                              select(L"Plan") + L"CLICK IDC_LAYERMAN_RESTORE\nLOOK IDC_LIST_LAYERS_LIST\n";
    const std::wstring shown = run(work + L"CLICK IDCANCEL\n");
    EXPECT_FALSE(contains(shown, L"Frozen")) << "the dialog follows";
    EXPECT_EQ(failures, Lines());
    EXPECT_TRUE(withoutSeed() == before);
    run(work + L"CLICK IDOK\n");
    EXPECT_EQ(states(), (Names{L"Later", L"Plan"}));
    EXPECT_EQ(frozen(), Names());
    EXPECT_TRUE(contains(run(L"U\n"), L"CLASSICLAYER"));
    EXPECT_TRUE(withoutSeed() == before);
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, TellsThatEarlyDrawingsHaveNoPlace) {
    write("early.dxf",
          "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nLINE\n8\nA\n"
          "10\n0\n20\n0\n11\n1\n21\n0\n0\nENDSEC\n0\nEOF\n");
    open("early.dxf");
    EXPECT_TRUE(
        contains(run(L"LAYERSTATESAVE\nOK\n"), L"have no place for layer states, so none can be saved."));
    const std::wstring told =
        close(L"OK\nCLICK IDC_LAYERMAN_NEW\nTYPE IDC_LAYERSTATESAVE_COMBO Now\nCLICK IDOK\n"
              L"LOOK IDC_LAYERMAN_LIST\n");
    EXPECT_TRUE(contains(told, L"what you make here is gone when the window is closed."));
    EXPECT_EQ(listed(told), (Texts{L"Now"}));
    EXPECT_EQ(listed(close(L"OK\nLOOK IDC_LAYERMAN_LIST\n")), Texts());
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, IsRefusedWhileACommandBlocks) {
    define(L"ZOOM", [] { throw HxErrorStatusException(Hx::eOutOfMemory); });
    run(L"ZOOM\n");
    failures.clear();
    EXPECT_TRUE(
        contains(run(L"LAYERSTATE\nOK\nLAYERSTATESAVE\nOK\n"),
                 L"A command is running in this drawing. End or cancel it before you change layers here."));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, ThePaletteWaitsForTheRunningCommand) {
    showPalette();
    const std::wstring told = run(L"CIRCLE\n'CLICK IDC_BUTTON_LAYERSTATES\nOK\n0,0\n1\n");
    EXPECT_TRUE(contains(told, L"A command is running in this drawing."));
    EXPECT_FALSE(contains(told, L"LAYERSTATE\n"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, TheMenuDoesWhatTheButtonsDo) {
    save(L"Plan");
    const std::wstring right = select(L"Plan", L"right");
    const std::wstring told =
        close(right + L"CHOOSE menu \"Rename\"\nTYPE focus Sheet\nPRESS focus Insert F2 Enter\n" +
              select(L"Sheet", L"right") + L"CHOOSE menu \"Delete\"\nOK\n");
    EXPECT_TRUE(contains(told, L"Delete layer state \"Sheet\"? [OK/Cancel]"));
    EXPECT_EQ(states(), Names());
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, TabGoesFromTheSearchThroughTheListToTheButtons) {
    save(L"Plan");
    const std::wstring told =
        close(L"CLICK IDC_LAYERMAN_SEARCH\nPRESS focus Esc Tab\nLOOK focus\nPRESS focus Tab\nLOOK focus\n"
              L"PRESS focus Shift+Tab F2\nTYPE focus Sheet\nPRESS focus Enter\n");
    EXPECT_TRUE(contains(told, L"IDC_LAYERMAN_LIST: Restored last"));
    EXPECT_TRUE(contains(told, L"IDC_LAYERMAN_NEW: \"New...\""));
    EXPECT_EQ(states(), Names{L"Sheet"});
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, StatesAreDuplicatedAndGetLayersThatTheyLack) {
    save(L"Plan", L"of old");
    run(L"-LAYER\nNew\nlater\n\n");
    const std::wstring right = select(L"Plan", L"right");
    std::wstring told = close(right + L"CHOOSE menu \"Duplicate\"\n" + right +
                              L"CHOOSE menu \"Duplicate\"\n" + L"LOOK IDC_LAYERMAN_LIST\n");
    EXPECT_EQ(listed(told), (std::vector<std::wstring>{L"Plan", L"Plan (2)", L"Plan (3)"}));
    told = close(L"LOOK IDC_LAYERMAN_LIST\n" + select(L"Plan (2)") + select(L"Plan (3)", L"Ctrl") +
                 select(L"Plan (3)", L"right") + L"CHOOSE menu \"Add Missing Layers\"\nOK\n" +
                 select(L"Plan (3)") + select(L"Plan (3)", L"right") +
                 L"CHOOSE menu \"Add Missing Layers\"\nOK\n" + L"LOOK IDC_LAYERMAN_LIST\n");
    EXPECT_TRUE(contains(told, L"Layers added: 2, to 2 layer state(s)."));
    const auto rowWith = [](int layers) { return L"Plan (3) | Model | Yes | " + std::to_wstring(layers); };
    KvLayerStateMap before;
    loadLayerStates(&database(), before);
    const int known = before.entries(before.find(L"Plan"))->GetSize();
    EXPECT_TRUE(contains(told, rowWith(known)));
    EXPECT_TRUE(contains(told, rowWith(known + 1))) << "the list tells it at once";
    EXPECT_TRUE(contains(told, L"Layers added: 0, to 1 layer state(s)."));
    KvLayerStateMap map;
    loadLayerStates(&database(), map);
    ASSERT_EQ(map.size(), 3U);
    const int layers = map.entries(map.find(L"Plan"))->GetSize();
    EXPECT_EQ(map.entries(map.find(L"Plan (2)"))->GetSize(), layers + 1);
    EXPECT_EQ(map.find(L"Plan (3)")->GetDescription(), L"of old");
    EXPECT_EQ(map.entries(map.find(L"Plan (3)"))->GetAt(layers)->GetLayerName(), L"later");
    EXPECT_EQ(failures, Lines());
}

TEST_F(StatesWindow, SpeaksGerman) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    save(L"Plan");
    const std::wstring told =
        close(L"LOOK\nCLICK IDC_LAYERMAN_SAVE\nCancel\nCLICK IDC_LAYERMAN_DEL\nCancel\n");
    EXPECT_TRUE(contains(told, L"Layerstatus-Manager"));
    EXPECT_TRUE(
        contains(told, L"Zuletzt wiederhergestellt | Name | Bereich | Wie Zeichnung | Layer | Beschreibung"));
    EXPECT_TRUE(contains(told, L"Alle Layer, wie sie jetzt sind, im Layerstatus \"Plan\" speichern?"));
    EXPECT_TRUE(contains(told, L"Layerstatus \"Plan\" löschen?"));
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
