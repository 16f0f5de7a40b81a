// Layer states on their way between the map, files and other drawings.
#include "tests/module/layer_states/file/recording_questions.h"
#include "tests/module/module_fixture.h"

#include "layer_states/file/layer_state_files.h"

#include "sdk/hxdbdatabase.h"

#include <QDir>
#include <QFileInfo>

namespace korvex::test {
namespace {

using Log = std::vector<std::wstring>;
using Overwrite = LayerStateQuestions::Overwrite;

class LayerStateFiles : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        qputenv("KORVEX_ANSI_CODEPAGE", "1252");
        SmallDrawing drawing;
        drawing.useNamedPlotStyles();
        write("named.dxf", drawing.text());
        write("colors.dxf", SmallDrawing().text());
    }
    void TearDown() override {
        qunsetenv("KORVEX_ANSI_CODEPAGE");
        ModuleTest::TearDown();
    }

    /// A state of the map with one layer "A"; `layer` fills its entry.
    CKvLayerState* add(const std::wstring& name, const std::function<void(HxLyStateEntry&)>& layer = {}) {
        auto* const state = new CKvLayerState;
        state->SetLayerStateName(name);
        state->SetCurrentLayerName(L"A");
        map.add(state, entriesOf(layer));
        return state;
    }
    static KvLayerStateInfoArray* entriesOf(const std::function<void(HxLyStateEntry&)>& layer) {
        HxLyStateEntry values;
        values.layer = L"A";
        if (layer) layer(values);
        auto* const entries = new KvLayerStateInfoArray;
        entries->Add(new CKvLayerStateInfo(values, 0, true));
        return entries;
    }
    KvLayerStateFiles files() { return KvLayerStateFiles(map, questions); }
    /// Imports a file of a state of that name with a layer "NEW" and what these lines say of it.
    CKvLayerState* import(const std::string& name, const std::string& lines = "",
                          HxDbDatabase* database = nullptr) {
        write("in.las", "0\nLAYERSTATEDICTIONARY\n0\nLAYERSTATE\n1\n" + name +
                            "\n91\n2047\n290\n0\n302\nNEW\n8\nNEW\n" + lines);
        return files().importState(path("in.las"), database);
    }
    const HxLyStateEntry& entry(const CKvLayerState* state, int at = 0) {
        static const HxLyStateEntry none;
        const KvLayerStateInfoArray* const entries = map.entries(state);
        const bool isThere = entries && at < entries->GetSize();
        EXPECT_TRUE(isThere);
        return isThere ? entries->GetAt(at)->values() : none;
    }
    /// The names in the map and their first layers: "evening A".
    Log states() {
        Log all;
        for (std::size_t i = 0; i < map.size(); ++i) {
            all.push_back(map.at(i)->GetLayerStateName() + L" " + entry(map.at(i)).layer);
        }
        return all;
    }
    QByteArray bytesOf(const char* name) {
        QFile file(QString::fromStdWString(path(name)));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
        return file.readAll();
    }

    KvLayerStateMap map;
    RecordingQuestions questions;
};

TEST_F(LayerStateFiles, WhatIsExportedIsImported) {
    const CKvLayerState* const state = add(L"evening", [](HxLyStateEntry& layer) {
        layer.linetype = L"Continuous";
        layer.plotStyle = L"Color_7";
        layer.trueColor = 0x123456;
    });
    ASSERT_TRUE(files().exportState(path("out.las"), state));
    map.clear();
    open("colors.dxf");
    const CKvLayerState* const back = files().importState(path("out.las"), &database());
    ASSERT_TRUE(back);
    EXPECT_EQ(entry(back).linetype, L"Continuous");
    EXPECT_EQ(entry(back).plotStyle, L"Color_7");
    EXPECT_EQ(entry(back).trueColor, 0x123456);
    EXPECT_EQ(map.entries(back)->GetAt(0)->GetCurrentLayer(), 1);
    EXPECT_EQ(back->IsLasFileType(), 1);
    EXPECT_EQ(questions.log, Log()) << "there is nothing to ask";
    EXPECT_TRUE(map.record(back).isNull());
    EXPECT_FALSE(files().exportState(path("out.las"), nullptr));
    const CKvLayerState stranger;
    EXPECT_FALSE(files().exportState(path("out.las"), &stranger));
}

TEST_F(LayerStateFiles, NamesThatDoNotComeBackAreToldAndWritten) {
    EXPECT_TRUE(files().exportState(path("out.las"), add(L"W\u00E4nde")));
    EXPECT_EQ(questions.log, Log{L"changed W\u00E4nde"});
    EXPECT_TRUE(bytesOf("out.las").contains("\r\nW\xE4nde\r\n"));
}

TEST_F(LayerStateFiles, AFailedExportLeavesTheFileThatWasThere) {
    write("out.las", "old");
    const CKvLayerState* const broken = add(L"a", [](HxLyStateEntry& layer) { layer.layer = L"B\nC"; });
    EXPECT_FALSE(files().exportState(path("out.las"), broken));
    EXPECT_FALSE(files().exportState(path("none/out.las"), add(L"b")));
    QDir(QString::fromStdWString(path(""))).mkdir("folder.las");
    EXPECT_FALSE(files().exportState(path("folder.las"), map.find(L"b")));
    EXPECT_EQ(questions.log, (Log{L"broken B\nC", L"not exported", L"not exported"}));
    EXPECT_EQ(bytesOf("out.las"), "old");
    EXPECT_EQ(QDir(QString::fromStdWString(path(""))).entryList({"out*"}, QDir::Files),
              QStringList("out.las"));
}

TEST_F(LayerStateFiles, ATakenNameIsOverwrittenInItsPlaceOrNotAtAll) {
    add(L"a");
    CKvLayerState* const taken = add(L"EVENING");
    add(L"c");
    open("colors.dxf");
    map.setStored(taken, database().layerTableId());
    map.replaceEntries(taken, entriesOf({}));
    taken->SetLayerStateIndex(4);
    taken->LayerStateCannotRestore();
    taken->SetSameAsDWG(1);
    questions.overwrite = Overwrite::no;
    EXPECT_FALSE(import("A"));
    EXPECT_EQ(states(), (Log{L"a A", L"EVENING A", L"c A"}));
    EXPECT_EQ(questions.log, Log{L"overwrite a"}) << "as it is spelled in the drawing; no failure is told";
    questions.overwrite = Overwrite::yes;
    EXPECT_EQ(import("Evening", "90\n3\n"), taken);
    EXPECT_EQ(states(), (Log{L"a A", L"Evening NEW", L"c A"}));
    EXPECT_EQ(map.record(taken), database().layerTableId());
    EXPECT_EQ(map.storedName(taken), L"EVENING");
    EXPECT_EQ(taken->GetLayerStateIndex(), 4);
    EXPECT_EQ(taken->IsLayerStateRestore(), 1);
    EXPECT_EQ(taken->GetSameAsDWG(), 0);
    EXPECT_EQ(taken->GetCurrentLayerName(), L"NEW");
}

TEST_F(LayerStateFiles, AStateOfAReferenceGivesWay) {
    add(L"PLAN_a")->SetSpace(HxLyState::kExternalReference);
    add(L"b");
    ASSERT_TRUE(import("plan_A"));
    EXPECT_EQ(states(), (Log{L"b A", L"plan_A NEW"}));
    EXPECT_TRUE(map.record(map.at(1)).isNull()) << "the reference's record is none of this drawing";
}

TEST_F(LayerStateFiles, ARefusedFileChangesNothing) {
    add(L"a");
    write("bad.las", "0\nLAYERSTATEDICTIONARY\n0\nLAYERSTATE\n1\na\n90\n1\n");
    EXPECT_FALSE(files().importState(path("bad.las"), nullptr));
    EXPECT_EQ(questions.kind, KvLasFailure::otherLine);
    EXPECT_FALSE(files().importState(path("none.las"), nullptr));
    EXPECT_EQ(questions.kind, KvLasFailure::cannotRead);
    EXPECT_FALSE(files().importState(L"", nullptr));
    EXPECT_FALSE(files().importState(path(""), nullptr)) << "a folder";
    EXPECT_EQ(questions.log,
              (Log{L"not imported 7", L"not imported 0", L"not imported 0", L"not imported 0"}));
    EXPECT_EQ(states(), Log{L"a A"});
}

TEST_F(LayerStateFiles, MissingLinetypesAndPlotStylesAreToldOnce) {
    open("named.dxf");
    const std::string lines = "6\nNONE\n2\nScreened\n8\nB\n6\nnone\n2\nGone\n8\nC\n6\nOTHER\n2\nGone\n"
                              "8\nD\n6\ncontinuous\n2\nNORMAL\n";
    const CKvLayerState* state = import("a", lines, &database());
    ASSERT_TRUE(state);
    EXPECT_EQ(questions.log, (Log{L"linetypes NONE,OTHER", L"plot styles Gone"}));
    EXPECT_EQ(entry(state, 0).linetype, L"Continuous");
    EXPECT_EQ(entry(state, 2).linetype, L"Continuous");
    EXPECT_EQ(entry(state, 3).linetype, L"continuous");
    EXPECT_EQ(entry(state, 0).plotStyle, L"Screened");
    EXPECT_EQ(entry(state, 1).plotStyle, L"") << "the record could not hold the layer otherwise";
    EXPECT_EQ(entry(state, 3).plotStyle, L"NORMAL");

    questions.log.clear();
    open("colors.dxf");
    state = import("b", "2\nNormal\n8\nB\n2\nColor_255\n8\nC\n2\nColor_256\n8\nD\n2\nColor_\n", &database());
    EXPECT_EQ(questions.log, Log{L"plot styles Normal,Color_256,Color_"});
    EXPECT_EQ(entry(state).plotStyle, L"Normal") << "such records hold any name";
}

TEST_F(LayerStateFiles, StatesOfAnotherMapAskOnceForAllTakenNames) {
    KvLayerStateMap from;
    std::vector<CKvLayerState*> chosen;
    for (const wchar_t* const name : {L"a", L"b", L"c"}) {
        auto* const state = new CKvLayerState;
        state->SetLayerStateName(name);
        state->SetSpace(HxLyState::kExternalReference);
        HxLyStateEntry values;
        values.layer = L"NEW";
        values.plotStyle = L"Color_1";
        auto* const entries = new KvLayerStateInfoArray;
        entries->Add(new CKvLayerStateInfo(values, 0, false));
        from.add(state, entries);
        chosen.push_back(state);
    }
    const CKvLayerState stranger;
    add(L"C");
    add(L"A");
    open("named.dxf");
    questions.overwrite = Overwrite::cancel;
    EXPECT_TRUE(files().importStates(chosen, from, &database()).empty());
    questions.overwrite = Overwrite::no;
    EXPECT_EQ(files().importStates(chosen, from, &database()).size(), 1U);
    EXPECT_EQ(states(), (Log{L"C A", L"A A", L"b NEW"}));
    questions.overwrite = Overwrite::yes;
    chosen.pop_back();
    chosen.push_back(nullptr);
    EXPECT_EQ(files().importStates(chosen, from, &database()).size(), 2U);
    EXPECT_EQ(states(), (Log{L"C A", L"a NEW", L"b NEW"}));
    EXPECT_EQ(questions.log, (Log{L"overwrite a,c", L"overwrite a,c", L"left out Color_1", L"overwrite a,b",
                                  L"left out Color_1"}));
    EXPECT_FALSE(map.at(2)->isOfReference()) << "it would never be stored";
    from.clear();
    EXPECT_EQ(entry(map.at(1)).layer, L"NEW") << "nothing hangs on the other map";
}

}  // namespace
}  // namespace korvex::test
