// Every message box about layer states: what leads to it, what it says in each language, its buttons.
#include "tests/module/layer_states/manager/states_window_fixture.h"

#include "layer_states/file/layer_state_boxes.h"

#include "sdk/hxdbdict.h"

namespace korvex::test {
namespace {

enum class Before {
    aState,      ///< the drawing has the state "A %1 %d"
    references,  ///< besides, its reference PLAN has the state "Doors"
    heldState,   ///< the layers have changed since, and somebody has the record of the state open
    earlyDrawing
};

struct Situation {
    const char* name;
    Before before;
    std::wstring script;
    void (*ask)(LayerStateQuestions&);  ///< what the script's command ASK does
    const wchar_t* buttons;             ///< empty: the text stands in a dialog
    const wchar_t* english;
    const wchar_t* german;
};

void PrintTo(const Situation& situation, std::ostream* out) { *out << situation.name; }

std::wstring manager(const std::wstring& actions) {
    return L"LAYERSTATE\n" + actions + L"CLICK IDC_LAYERMAN_CLOSE\n";
}
std::wstring rename(const std::wstring& typed) {
    return L"PRESS IDC_LAYERMAN_LIST F2\nPRESS focus Ctrl+A Del\n" + typed + L"PRESS focus Enter\nOK\n";
}
std::wstring save(const std::wstring& name, const std::wstring& answers) {
    return L"LAYERSTATESAVE\nTYPE IDC_LAYERSTATESAVE_COMBO " + name + L"\nCLICK IDOK\n" + answers;
}
/// In the edit dialog, columns by their number.
std::wstring edit(const std::wstring& actions) {
    return manager(L"CLICK IDC_LAYERMAN_EDIT\n" + actions + L"PRESS window Esc\n");
}

/// What the user is asked and told about files and other drawings.
std::vector<Situation> questions() {
    const auto of = [](const char* name, const wchar_t* answer, void (*ask)(LayerStateQuestions&),
                       const wchar_t* buttons, const wchar_t* english, const wchar_t* german) {
        return Situation{name,    Before::aState, std::wstring(L"ASK\n") + answer + L"\n", ask, buttons,
                         english, german};
    };
    return {
        of(
            "ImportOverOne", L"No", [](LayerStateQuestions& user) { user.mayOverwrite({L"a%d"}); },
            L"[Yes/No] <Yes>", L"There is a layer state \"a%d\" already. Overwrite it?",
            L"Es gibt schon einen Layerstatus \"a%d\". Überschreiben?"),
        of(
            "ImportOverSeveral", L"Cancel",
            [](LayerStateQuestions& user) {
                user.mayOverwrite({L"a", L"b"});
            },
            L"[Yes/No/Cancel] <Yes>",
            L"2 layer states of these names are there already: \"a\", \"b\".\n\nYes overwrites them, No "
            L"imports only the others, Cancel imports nothing.",
            L"2 Layerstatus mit diesen Namen gibt es schon: \"a\", \"b\".\n\nJa überschreibt sie, Nein "
            L"importiert nur die anderen, Abbrechen importiert nichts."),
        of(
            "RestoreImported", L"No", [](LayerStateQuestions& user) { user.mayRestore(L"a"); },
            L"[Yes/No] <Yes>", L"Layer state \"a\" was imported. Restore it now?",
            L"Der Layerstatus \"a\" wurde importiert. Jetzt wiederherstellen?"),
        of(
            "MissingLinetypes", L"OK",
            [](LayerStateQuestions& user) {
                user.tellMissingLinetypes({L"1", L"2", L"3", L"4", L"%1", L"6", L"7"});
            },
            L"[OK] <OK>",
            L"The drawing lacks these linetypes: \"1\", \"2\", \"3\", \"4\", \"%1\" and 2 more.\n\n"
            L"\"Continuous\" stands in for them. To have them, load them and import the layer state again.",
            L"Der Zeichnung fehlen diese Linientypen: \"1\", \"2\", \"3\", \"4\", \"%1\" und 2 weitere.\n\n"
            L"\"Continuous\" steht für sie. Um sie zu erhalten, laden Sie sie und importieren Sie den "
            L"Layerstatus erneut."),
        of(
            "UnusablePlotStyles", L"OK",
            [](LayerStateQuestions& user) { user.tellUnusablePlotStyles({L"Ghost"}); }, L"[OK] <OK>",
            L"The drawing cannot use these plot styles of the layer state: \"Ghost\".\n\nRestoring it leaves "
            L"the plot styles of their layers as they are.",
            L"Die Zeichnung kann diese Plotstile des Layerstatus nicht verwenden: \"Ghost\".\n\nBeim "
            L"Wiederherstellen bleiben die Plotstile der betroffenen Layer, wie sie sind."),
        of(
            "PlotStylesLeftOut", L"OK",
            [](LayerStateQuestions& user) {
                user.tellPlotStylesLeftOut({L"Ghost", L"Pale"});
            },
            L"[OK] <OK>",
            L"The drawing cannot use these plot styles of the imported layer states: \"Ghost\", "
            L"\"Pale\".\n\nRestoring them leaves the plot styles of their layers as they are.",
            L"Die Zeichnung kann diese Plotstile der importierten Layerstatus nicht verwenden: \"Ghost\", "
            L"\"Pale\".\n\nBeim Wiederherstellen bleiben die Plotstile der betroffenen Layer, wie sie sind."),
        of(
            "ChangedNames", L"OK", [](LayerStateQuestions& user) { user.tellChangedNames({L"Wände"}); },
            L"[OK] <OK>",
            L"The file was written, but 1 name(s) will not come back from it as they are: "
            L"\"Wände\".\n\nImporting from the drawing itself keeps them.",
            L"Die Datei wurde geschrieben, aber 1 Name(n) kommen nicht unverändert aus ihr zurück: "
            L"\"Wände\".\n\nDer Import aus der Zeichnung selbst erhält sie."),
        of(
            "FileTooLarge", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/a.las", {KvLasFailure::tooLarge, 0, L""});
            },
            L"[OK] <OK>",
            L"No layer state was imported from \"/x/a.las\": The file is larger than 1 GB. A layer-state "
            L"file is text of a few hundred bytes for each layer.",
            L"Aus \"/x/a.las\" wurde kein Layerstatus importiert: Die Datei ist größer als 1 GB. Eine "
            L"Layerstatusdatei ist Text mit einigen hundert Byte für jeden Layer."),
        of(
            "NullCharacter", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/a.las", {KvLasFailure::nullCharacter, 7, L""});
            },
            L"[OK] <OK>",
            L"No layer state was imported from \"/x/a.las\": Line 7 holds a null character. This is not a "
            L"layer-state file; choose one that was exported from a drawing.",
            L"Aus \"/x/a.las\" wurde kein Layerstatus importiert: Zeile 7 enthält ein Nullzeichen. Das ist "
            L"keine Layerstatusdatei; wählen Sie eine, die aus einer Zeichnung exportiert wurde."),
        of(
            "FileEndsEarly", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/a.las", {KvLasFailure::endsEarly, 12, L""});
            },
            L"[OK] <OK>",
            L"No layer state was imported from \"/x/a.las\": The file ends too early, after line 12. Export "
            L"the layer state again.",
            L"Aus \"/x/a.las\" wurde kein Layerstatus importiert: Die Datei endet zu früh, nach Zeile 12. "
            L"Exportieren Sie den Layerstatus erneut."),
        of(
            "OtherLine", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/a.las", {KvLasFailure::otherLine, 3, L"91"});
            },
            L"[OK] <OK>",
            L"No layer state was imported from \"/x/a.las\": Line 3 should be \"91\". This is not a "
            L"layer-state file, or it is damaged.",
            L"Aus \"/x/a.las\" wurde kein Layerstatus importiert: Zeile 3 müsste \"91\" sein. Das ist keine "
            L"Layerstatusdatei, oder sie ist beschädigt."),
        of(
            "NoNameInFile", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/a.las", {KvLasFailure::noName, 4, L""});
            },
            L"[OK] <OK>",
            L"No layer state was imported from \"/x/a.las\": Line 4, the name of the layer state, is empty.",
            L"Aus \"/x/a.las\" wurde kein Layerstatus importiert: Zeile 4, der Name des Layerstatus, ist "
            L"leer."),
        of(
            "FileNotRead", L"OK",
            [](LayerStateQuestions& user) {
                user.tellNotImported(L"/x/100 %2.las", {KvLasFailure::cannotRead, 0, L"No such file"});
            },
            L"[OK] <OK>", L"No layer state was imported from \"/x/100 %2.las\": No such file",
            L"Aus \"/x/100 %2.las\" wurde kein Layerstatus importiert: No such file"),
        of(
            "NotExported", L"OK",
            [](LayerStateQuestions& user) { user.tellNotExported(L"/x/d.las", L"Permission denied"); },
            L"[OK] <OK>",
            L"The file \"/x/d.las\" was not written: Permission denied\n\nWhat was there before is "
            L"unchanged. Choose another folder, or look to free space and permissions.",
            L"Die Datei \"/x/d.las\" wurde nicht geschrieben: Permission denied\n\nWas vorher da war, ist "
            L"unverändert. Wählen Sie einen anderen Ordner, oder sorgen Sie für freien Platz und "
            L"Schreibrechte."),
        of(
            "BrokenName", L"OK", [](LayerStateQuestions& user) { user.tellBrokenName(L"A\nB"); },
            L"[OK] <OK>",
            L"No file was written: the name \"A B\" holds a line break, which layer-state files have no "
            L"place for. Rename it first.",
            L"Es wurde keine Datei geschrieben: Der Name \"A B\" enthält einen Zeilenumbruch, für den "
            L"Layerstatusdateien keinen Platz haben. Benennen Sie ihn zuerst um."),
        of(
            "DrawingWithoutStates", L"OK",
            [](LayerStateQuestions& user) { user.tellNoStates(L"/x/c.dxf", L""); }, L"[OK] <OK>",
            L"No layer states can be imported from \"/x/c.dxf\": The drawing has none.",
            L"Aus \"/x/c.dxf\" können keine Layerstatus importiert werden: Die Zeichnung hat keine."),
        of(
            "DrawingNotRead", L"OK",
            [](LayerStateQuestions& user) { user.tellNoStates(L"/x/c.dxf", L"Line 3 is cut off"); },
            L"[OK] <OK>", L"No layer states can be imported from \"/x/c.dxf\": Line 3 is cut off",
            L"Aus \"/x/c.dxf\" können keine Layerstatus importiert werden: Line 3 is cut off"),
    };
}

/// What is asked and told in the windows.
std::vector<Situation> inWindows() {
    constexpr const wchar_t* kBadName =
        L"The name of a layer state has no control characters and none of these:\n\n< , > / ? ' \" \\ | ; : "
        L"= *\n\nType a name without them.";
    constexpr const wchar_t* kBadNameGerman =
        L"Der Name eines Layerstatus hat keine Steuerzeichen und keines von diesen:\n\n< , > / ? ' \" \\ | ; "
        L": = *\n\nGeben Sie einen Namen ohne sie ein.";
    const std::wstring other = save(L"Other", L"");
    return {
        {"SaveOver", Before::aState, save(L"a %1 %D", L"Cancel\nPRESS window Esc\n"), nullptr,
         L"[OK/Cancel] <OK>", L"There is a layer state \"a %1 %D\" already. Overwrite it?",
         L"Es gibt schon einen Layerstatus \"a %1 %D\". Überschreiben?"},
        {"SaveUnderABadName", Before::aState, save(L"a*b", L"OK\nPRESS window Esc\n"), nullptr, L"[OK] <OK>",
         kBadName, kBadNameGerman},
        {"SaveOverAReferencesState", Before::references, save(L"plan_doors", L"OK\nPRESS window Esc\n"),
         nullptr, L"[OK] <OK>",
         L"The name \"plan_doors\" belongs to a layer state that cannot be saved over: one of an external "
         L"reference, or one that another program keeps hidden. Type another name.",
         L"Der Name \"plan_doors\" gehört zu einem Layerstatus, der nicht überschrieben werden kann: dem "
         L"einer externen Referenz, oder einem, den ein anderes Programm verborgen hält. Geben Sie einen "
         L"anderen Namen ein."},
        {"SaveAgain", Before::aState, manager(L"CLICK IDC_LAYERMAN_SAVE\nCancel\n"), nullptr,
         L"[OK/Cancel] <OK>",
         L"Save all layers as they are now in layer state \"A %1 %d\"?\n\nWhat it holds is overwritten.",
         L"Alle Layer, wie sie jetzt sind, im Layerstatus \"A %1 %d\" speichern?\n\nWas er enthält, wird "
         L"überschrieben."},
        {"Delete", Before::aState, manager(L"CLICK IDC_LAYERMAN_DEL\nCancel\n"), nullptr, L"[OK/Cancel] <OK>",
         L"Delete layer state \"A %1 %d\"?", L"Layerstatus \"A %1 %d\" löschen?"},
        {"DeleteSeveral", Before::aState,
         other + manager(L"PRESS IDC_LAYERMAN_LIST Ctrl+A\nCLICK IDC_LAYERMAN_DEL\nLOOK\nPRESS window Esc\n"),
         nullptr, L"", L"Delete this layer state? Esc keeps it and all that are left.",
         L"Diesen Layerstatus löschen? Esc behält ihn und alle übrigen."},
        {"RenameToNothing", Before::aState, manager(rename(L"")), nullptr, L"[OK] <OK>",
         L"A layer state needs a name. It keeps the one that it has.",
         L"Ein Layerstatus braucht einen Namen. Er behält den, den er hat."},
        {"RenameToABadName", Before::aState, manager(rename(L"TYPE focus a:b\n")), nullptr, L"[OK] <OK>",
         kBadName, kBadNameGerman},
        {"RenameToATakenName", Before::aState, other + manager(rename(L"TYPE focus OTHER\n")), nullptr,
         L"[OK] <OK>", L"There is a layer state \"OTHER\" already. Type another name.",
         L"Es gibt schon einen Layerstatus \"OTHER\". Geben Sie einen anderen Namen ein."},
        {"RenameAReferencesState", Before::references,
         manager(L"CLICK IDC_LAYERMAN_LIST \"PLAN_Doors\"\nPRESS IDC_LAYERMAN_LIST F2\nOK\n"), nullptr,
         L"[OK] <OK>",
         L"Layer state \"PLAN_Doors\" belongs to an external reference and keeps its name. Open the drawing "
         L"of the reference to rename it.",
         L"Der Layerstatus \"PLAN_Doors\" gehört zu einer externen Referenz und behält seinen Namen. Um ihn "
         L"umzubenennen, öffnen Sie die Zeichnung der Referenz."},
        {"RestoreOfAnEmptyState", Before::aState,
         manager(L"CLICK IDC_LAYERMAN_EDIT\nPRESS IDC_LAYERSTATE_LIST Ctrl+A Del\nCLICK IDOK\n"
                 L"CLICK IDC_LAYERMAN_RESTORE\nOK\n"),
         nullptr, L"[OK] <OK>",
         L"Layer state \"A %1 %d\" names no layers: there is nothing to restore. Save it again to fill it.",
         L"Der Layerstatus \"A %1 %d\" nennt keine Layer: Es gibt nichts wiederherzustellen. Speichern Sie "
         L"ihn erneut, um ihn zu füllen."},
        {"MissingLayersAdded", Before::aState,
         L"-LAYER\nNew\nlater,last\n\n" + manager(L"CLICK IDC_LAYERMAN_LIST right \"A %1 %d\"\n"
                                                  L"CHOOSE menu \"{Add Missing Layers}\"\nOK\n"),
         nullptr, L"[OK] <OK>", L"Layers added: 2, to 1 layer state(s). They are as in the drawing now.",
         L"Ergänzte Layer: 2, in 1 Layerstatus. Sie sind wie jetzt in der Zeichnung."},
        {"FreezeTheCurrentLayer", Before::aState, edit(L"CLICK IDC_LAYERSTATE_LIST \"SPARE,3\"\nOK\n"),
         nullptr, L"[OK] <OK>",
         L"Layer \"SPARE\" is the current layer of the state and was not frozen. To freeze it, make another "
         L"one current first: double-click its name.",
         L"Der Layer \"SPARE\" ist der aktuelle des Layerstatus und wurde nicht gefroren. Um ihn zu frieren, "
         L"setzen Sie zuerst einen anderen aktuell: Doppelklick auf dessen Namen."},
        {"MakeAFrozenLayerCurrent", Before::aState,
         edit(L"CLICK IDC_LAYERSTATE_LIST \"NOTES,3\"\nCLICK IDC_LAYERSTATE_LIST double \"NOTES,1\"\nOK\n"),
         nullptr, L"[OK] <OK>",
         L"Layer \"NOTES\" is frozen in the state and cannot be made current. Thaw it first.",
         L"Der Layer \"NOTES\" ist im Layerstatus gefroren und kann nicht aktuell gesetzt werden. Tauen Sie "
         L"ihn zuerst."},
        {"MakeAReferencesLayerCurrent", Before::aState,
         edit(L"CLICK IDC_LAYERSTATE_LIST double \"PLAN|WALLS,1\"\nOK\n"), nullptr, L"[OK] <OK>",
         L"Layer \"PLAN|WALLS\" belongs to an external reference and cannot be made current. Choose a layer "
         L"of the drawing itself.",
         L"Der Layer \"PLAN|WALLS\" gehört zu einer externen Referenz und kann nicht aktuell gesetzt werden. "
         L"Wählen Sie einen Layer der Zeichnung selbst."},
        {"NoLayerToAdd", Before::aState, edit(L"CLICK IDC_LAYERSTATE_ADD\nOK\n"), nullptr, L"[OK] <OK>",
         L"The state holds all layers of the drawing already.",
         L"Der Layerstatus enthält schon alle Layer der Zeichnung."},
        {"SaveInAnEarlyDrawing", Before::earlyDrawing, L"LAYERSTATESAVE\nOK\n", nullptr, L"[OK] <OK>",
         L"Drawings older than R13 have no place for layer states, so none can be saved. Open the drawing in "
         L"a program that saves newer versions.",
         L"Zeichnungen älter als R13 haben keinen Platz für Layerstatus, darum kann keiner gespeichert "
         L"werden. Öffnen Sie die Zeichnung in einem Programm, das neuere Versionen speichert."},
        {"ManagerInAnEarlyDrawing", Before::earlyDrawing, L"LAYERSTATE\nOK\nCLICK IDC_LAYERMAN_CLOSE\n",
         nullptr, L"[OK] <OK>",
         L"Drawings older than R13 have no place for layer states: what you make here is gone when the "
         L"window is closed. Export it to a file, or open the drawing in a program that saves newer "
         L"versions.",
         L"Zeichnungen älter als R13 haben keinen Platz für Layerstatus: Was Sie hier anlegen, ist weg, wenn "
         L"das Fenster geschlossen wird. Exportieren Sie es in eine Datei, oder öffnen Sie die Zeichnung in "
         L"einem Programm, das neuere Versionen speichert."},
        {"NotWritten", Before::heldState, manager(L"CLICK IDC_LAYERMAN_SAVE\nOK\n") + L"OK\n", nullptr,
         L"[OK] <OK>",
         L"These layer states could not be written into the drawing: \"A %1 %d\".\n\nAnother program part is "
         L"working on them. Try again.",
         L"Diese Layerstatus konnten nicht in die Zeichnung geschrieben werden: \"A %1 %d\".\n\nEin anderer "
         L"Programmteil arbeitet an ihnen. Versuchen Sie es erneut."},
    };
}

std::vector<Situation> situations() {
    std::vector<Situation> all = questions();
    for (Situation& one : inWindows()) {
        all.push_back(std::move(one));
    }
    return all;
}

class LayerStateMessages : public StatesWindowTest,
                           public ::testing::WithParamInterface<std::tuple<Situation, bool>> {
protected:
    static const Situation& situation() { return std::get<0>(GetParam()); }
    static bool isGerman() { return std::get<1>(GetParam()); }

    void SetUp() override {
        StatesWindowTest::SetUp();
        if (isGerman()) {
            linker().unloadModule(kModule);
            qputenv("LC_ALL", "de_DE.UTF-8");
            load();
        }
        m_library = LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str());
        prepare();
    }
    void TearDown() override {
        m_held.reset();
        hxFreeResourceDll(m_library);
        StatesWindowTest::TearDown();
        qputenv("LC_ALL", "C");
    }
    /// In the language of the run.
    std::wstring script() const {
        std::wstring script = situation().script;
        const std::wstring word = L"{Add Missing Layers}";
        const std::size_t at = script.find(word);
        if (at != std::wstring::npos) {
            script.replace(at, word.size(), isGerman() ? L"Fehlende Layer ergänzen" : L"Add Missing Layers");
        }
        return script;
    }
    std::wstring ask() {
        define(L"ASK", [this] {
            const HxResourceOverride resources(m_library);
            KvLayerStateBoxes boxes;
            situation().ask(boxes);
        });
        return run(script());
    }

private:
    void prepare() {
        if (situation().before == Before::earlyDrawing) {
            write("early.dxf", "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n0\nEOF\n");
            open("early.dxf");
            return;
        }
        if (situation().before == Before::references) {
            open("plan.dxf");
            run(save(L"Doors", L"") + L"QSAVE\nCLOSE\nXREF R PLAN\n");
        }
        run(save(L"A %1 %d", L""));
        if (situation().before == Before::heldState) {
            run(L"-LAYER\nF\nNOTES\n\n");
            const HxDbObjectPointer<HxDbDictionary> states(layerStatesDictionary(&database(), false),
                                                           HxDb::kForRead);
            HxDbObjectId record;
            ASSERT_EQ(states->getAt(L"A %1 %d", record), Hx::eOk);
            m_held = std::make_unique<HxDbObjectPointer<HxDbXrecord>>(record, HxDb::kForRead);
        }
        ASSERT_EQ(failures, Lines());
    }
    HxModuleHandle m_library = nullptr;
    std::unique_ptr<HxDbObjectPointer<HxDbXrecord>> m_held;
};

TEST_P(LayerStateMessages, SaysWhatHappenedAndWhatToDo) {
    const std::wstring text = isGerman() ? situation().german : situation().english;
    const std::wstring buttons = situation().buttons;
    const std::wstring told = ask();
    EXPECT_TRUE(contains(told, buttons.empty() ? text : L"KORVEX: " + text + L" " + buttons + L":"))
        << toUtf8(told);
    if (situation().before != Before::heldState) {
        EXPECT_EQ(failures, Lines());
    }
}

INSTANTIATE_TEST_SUITE_P(All, LayerStateMessages,
                         ::testing::Combine(::testing::ValuesIn(situations()), ::testing::Bool()),
                         [](const auto& info) {
                             return std::string(std::get<0>(info.param).name) +
                                    (std::get<1>(info.param) ? "German" : "English");
                         });

}  // namespace
}  // namespace korvex::test
