// The editor with the built module loaded, and a drawing with blocks, an external reference and a layout.
#pragma once

#include "tests/editor/editor_fixture.h"
#include "tests/module/model_watch.h"
#include "tests/module/small_drawing.h"

#include "host/ui/script/ui_commands.h"

#include "sdk/hxconfig.h"
#include "sdk/hxmodule.h"

#include <QApplication>

#include <set>

namespace korvex::test {

constexpr wchar_t kModule[] = L"KvLayerManager.hrx";

inline std::wstring builtFile(const char* name) {
    return (QString(KORVEX_BINARY_DIR) + "/module/" + name).toStdWString();
}

inline HxRxDynamicLinker& linker() {
    return *HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker"));
}

/// Widgets need it; one for the process, which it outlives: the offscreen platform leaks its screen when it
/// is taken down.
inline void needApplication() {
    if (QCoreApplication::instance()) {
        return;
    }
    static int count = 1;
    static char name[] = "module_test";
    static char* arguments[] = {name, nullptr};
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static const QApplication* const application = new QApplication(count, arguments);
    Q_UNUSED(application);
    startUiCommands();
}

class ModuleTest : public EditorTest {
protected:
    void SetUp() override {
        needApplication();
        watchModels();
        qputenv("LC_ALL", "C");
        load();
    }
    void TearDown() override { linker().unloadModule(kModule); }

    void load() {
        CStdStr<wchar_t> error;
        ASSERT_EQ(linker().loadModule(builtFile("KvLayerManager.hrx").c_str(), &error), Hx::eOk)
            << error.c_str();
    }
    /// An exported function of the loaded module.
    template <class Function>
    Function* exported(const char* name) {
        return reinterpret_cast<Function*>(linker().functionOf(kModule, name));
    }
    void open(const char* name) {
        HxApDocument* document = nullptr;
        CStdStr<wchar_t> error;
        ASSERT_EQ(editor().documents().openDocument(path(name).c_str(), document, &error), Hx::eOk)
            << error.c_str();
    }
    VrexVariant setting(const wchar_t* settingPath) {
        VrexVariant value;
        vrexConfig()->getValue(kHxConfigUser, settingPath, value);
        return value;
    }
};

using Names = std::set<std::wstring>;

/// With the drawing open. What lies where, each line 10 long and level:
///   WALLS at 0,0; NOTES at 0,2; SPARE, the current layer, at 0,8; layer "Wände 2" at 0,6
///   100,0: block A on TOP, in it block B on OUTER, in it block C on MIDDLE, in it the line on INNER
///   200,0: block C on TURNED, twice as large, turned by 90 degrees
///   300,0: the external reference PLAN on XREFS: lines on its WALLS at 0,0 and its 0 at 0,2; at 0,4 its
///   block
///          DOOR on FRAMES with a line on DOORS
///   400,0: block WRAP on TOP, in it PLAN on OUTER
/// Layout1 has the viewport 2 with its centre, 100,100, on 5,0 of model space, in scale 1.
class DrawingTest : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        SmallDrawing plan;
        plan.block("DOOR", plan.line("DOORS", 0, 0, 10, 0));
        plan.model(plan.line("WALLS", 0, 0, 10, 0) + plan.line("0", 0, 2, 10, 2) +
                   plan.insert("DOOR", "FRAMES", 0, 4));
        write("plan.dxf", plan.text());

        SmallDrawing floor("SPARE");
        floor.block("C", floor.line("INNER", 0, 0, 10, 0));
        floor.block("B", floor.insert("C", "MIDDLE", 0, 0));
        floor.block("A", floor.insert("B", "OUTER", 0, 0));
        floor.xref("PLAN", "plan.dxf");
        floor.block("WRAP", floor.insert("PLAN", "OUTER", 0, 0));
        floor.model(floor.line("WALLS", 0, 0, 10, 0) + floor.line("NOTES", 0, 2, 10, 2) +
                    floor.line("W\\U+00E4nde 2", 0, 6, 10, 6) + floor.line("SPARE", 0, 8, 10, 8) +
                    floor.insert("A", "TOP", 100, 0) + floor.insert("C", "TURNED", 200, 0, 2, 90) +
                    floor.insert("PLAN", "XREFS", 300, 0) + floor.insert("WRAP", "TOP", 400, 0));
        floor.paper(floor.viewport(1, 150, 100, 300, 150, 100) + floor.viewport(2, 100, 100, 100, 5, 0));
        write("floor.dxf", floor.text());
        open("floor.dxf");
    }

    /// All frozen layers of the drawing.
    Names frozen() {
        Names names;
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        HxDbSymbolTableIterator* steps = nullptr;
        table->newIterator(steps);
        const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
        for (; !steps->done(); steps->step()) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(steps->getRecordId(), HxDb::kForRead);
            if (record->isFrozen()) {
                names.insert(record->name());
            }
        }
        return names;
    }
    /// The layers frozen in the current viewport.
    Names frozenHere() {
        Names names;
        const HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForRead);
        HxArray<HxDbObjectId> layers;
        if (viewport) {
            viewport->getFrozenLayers(layers);
        }
        for (const HxDbObjectId& id : layers) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForRead);
            names.insert(record->name());
        }
        return names;
    }
};

}  // namespace korvex::test
