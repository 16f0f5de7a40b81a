// A drawing whose layers have all kinds of values, and the engine of layer states on it.
#pragma once

#include "tests/module/module_fixture.h"

#include "layer_states/manager/layer_state_man_dlg.h"
#include "layer_states/storage/layer_state_storage.h"

#include "sdk/hxdbdict.h"
#include "sdk/hxtext.h"

namespace korvex::test {

/// Says yes to everything.
class Agreeing : public LayerStateQuestions {
public:
    Overwrite mayOverwrite(const Names&) override { return Overwrite::yes; }
    bool mayRestore(const CStdStr<wchar_t>&) override { return true; }
    void tellMissingLinetypes(const Names&) override {}
    void tellUnusablePlotStyles(const Names&) override {}
    void tellPlotStylesLeftOut(const Names&) override {}
    void tellChangedNames(const Names&) override {}
    void tellNotImported(const CStdStr<wchar_t>&, const KvLasFailure&) override { ADD_FAILURE() << "failed"; }
    void tellNotExported(const CStdStr<wchar_t>&, const CStdStr<wchar_t>&) override {
        ADD_FAILURE() << "failed";
    }
    void tellBrokenName(const CStdStr<wchar_t>&) override { ADD_FAILURE() << "failed"; }
    void tellNoStates(const CStdStr<wchar_t>&, const CStdStr<wchar_t>&) override { ++m_noStates; }

    int m_noStates = 0;
};

class LayerStatesTest : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        // the module's texts, for its objects that are linked into the tests
        m_library = LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str());
        m_resources = std::make_unique<HxResourceOverride>(m_library);
    }
    void TearDown() override {
        m_resources.reset();
        hxFreeResourceDll(m_library);
        ModuleTest::TearDown();
    }
    /// Layers WALLS, NOTES, SPARE (current) and VIEWS; Layout1 with viewport 2, which lies on VIEWS.
    static SmallDrawing drawing() {
        SmallDrawing drawing("SPARE");
        drawing.useVersion("AC1027");
        drawing.model(drawing.line("WALLS", 0, 0, 10, 0) + drawing.line("NOTES", 0, 2, 10, 2) +
                      drawing.line("SPARE", 0, 8, 10, 8));
        drawing.layer("VIEWS");
        drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) +
                      drawing.viewport(2, 100, 100, 100, 5, 0));
        return drawing;
    }
    void openDrawing(SmallDrawing drawing) {
        write("states.dxf", drawing.text());
        open("states.dxf");
    }
    std::wstring currentLayer() {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(database().clayer(), HxDb::kForRead);
        return record->name();
    }
    void goToLayout() { run(L"LAYOUT\nSet\nLayout1\nMSPACE\n"); }

    /// "Freeze" or "Thaw" in the current viewport.
    void inViewport(const wchar_t* what, const std::wstring& layerName) {
        run(std::wstring(L"VPLAYER\n") + what + L"\n" + layerName + L"\n\n\n");
    }
    /// Changes a layer in an undo step of its own.
    void change(const wchar_t* name, const std::function<void(HxDbLayerTableRecord&)>& edit) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        ASSERT_EQ(record.openStatus(), Hx::eOk) << "layer is there";
        edit(*record.object());
    }
    HxLyStateEntry now(const wchar_t* name, HxDbObjectId viewport = {}) {
        HxLyStateEntry entry;
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        if (record) {
            readLayerEntry(entry, *record.object(), viewport);
        }
        return entry;
    }
    HxDbObjectId linetype(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLinetypeTable> table(database().linetypeTableId(), HxDb::kForRead);
        HxDbObjectId id;
        table->getAt(name, id);
        return id;
    }

    /// An engine with the drawing's states, told where the user is.
    std::unique_ptr<CKvLayerStateManDlg> engine() {
        auto made = std::make_unique<CKvLayerStateManDlg>(&database());
        made->SetIsModelSpace(database().tilemode() ? 1 : 0);
        made->SetCurrentLayerName(currentLayer());
        made->LoadHxLayerState(&database());
        return made;
    }
    /// Saves all layers as they are now into the drawing.
    void saveState(const wchar_t* name, const wchar_t* description = L"") {
        const auto states = engine();
        ASSERT_NE(states->CmdNew(name, description), nullptr);
        ASSERT_EQ(states->BuildLayerStateExtensionDictionary(), 1);
    }
    static const HxLyStateEntry* entryOf(const KvLayerStateMap& states, const CKvLayerState* state,
                                         const wchar_t* layerName) {
        const KvLayerStateInfoArray* const entries = states.entries(state);
        for (int i = 0; entries && i < entries->GetSize(); ++i) {
            if (entries->GetAt(i)->GetLayerName() == layerName) {
                return &entries->GetAt(i)->values();
            }
        }
        return nullptr;
    }
    HxDbObjectId recordOf(const wchar_t* state) {
        const HxDbObjectPointer<HxDbDictionary> dictionary(layerStatesDictionary(&database(), false),
                                                           HxDb::kForRead);
        HxDbObjectId id;
        if (dictionary) {
            dictionary->getAt(state, id);
        }
        return id;
    }
    /// The groups of a state's record as text, one a line.
    static std::wstring groupsOf(HxDbObjectId record) {
        std::wstring text;
        HxDbXrecordWalk walk(record);
        while (walk.next()) {
            const int code = walk.code();
            const bool isText = code < 10 || code == 300 || code == 301 || code == 302;
            const bool isName = code == 330 || code == 331 || code == 390;
            text += std::to_wstring(code) + L" " +
                    (isText   ? walk.text()
                     : isName ? (walk.objectId().isNull() ? L"none" : L"object")
                              : std::to_wstring(walk.integer())) +
                    L"\n";
        }
        return text;
    }
    static std::wstring restoreFailures(const KvRestoreResult& result) {
        std::wstring names;
        for (const CStdStr<wchar_t>& name : result.refused) {
            names += name + L" ";
        }
        return names;
    }
    std::string fileNow() { return written(database()); }

private:
    HxModuleHandle m_library = nullptr;
    std::unique_ptr<HxResourceOverride> m_resources;
};

}  // namespace korvex::test
