// What the window shows of isolated layers: the button of the status bar, the entries of the menu.
#include "host/base/dynamic_linker.h"
#include "tests/ui/workbench/workbench_fixture.h"

namespace korvex::test {
namespace {

class IsolationWindow : public WorkbenchOver<ModuleTest> {
protected:
    /// The stand-in for what the layer manager exports comes first.
    void SetUp() override {
        const QString file = KORVEX_BINARY_DIR "/tests/trial_modules/Isolation.hrx";
        ASSERT_EQ(dynamicLinker().loadModule(file.toStdWString().c_str()), Hx::eOk);
        WorkbenchOver<ModuleTest>::SetUp();
    }
    void TearDown() override {
        WorkbenchOver<ModuleTest>::TearDown();
        dynamicLinker().unloadModule(L"Isolation.hrx");
    }
    void expectShown(bool isIsolated, const char* after) {
        QCoreApplication::processEvents();
        EXPECT_EQ(widget("StatusIsolated").isVisible(), isIsolated) << after;
        EXPECT_EQ(window->findChild<QAction*>("ActionLayuniso")->isEnabled(), isIsolated) << after;
    }
};

TEST_F(IsolationWindow, ShownAsLongAsTheDrawingIsIsolated) {
    run(L"-LAYER N WALLS,DOORS\n\n");
    expectShown(false, "the start");
    run(L"LAYISO\nNames\nWALLS\n");
    expectShown(true, "LAYISO");
    run(L"U\n");
    expectShown(false, "undo");
    run(L"REDO\n");
    expectShown(true, "redo");
    const std::wstring file = path("isolated.dxf");
    run(L"SAVEAS " + file + L"\nNEW\n");
    expectShown(false, "another drawing");
    run(L"CLOSE\n");
    expectShown(true, "back in this one");
    run(L"CLOSE\n");
    expectShown(false, "no drawing");
    run(L"OPEN " + file + L"\n");
    expectShown(true, "opening");
    run(L"-LAYERSTATE Delete _LAYISO_STATE\n");
    expectShown(false, "deleting the record");
    run(L"U\n");
    expectShown(true, "undo");
    user->atCommandPrompt([this] { QTest::mouseClick(&widget("StatusIsolated"), Qt::LeftButton); });
    user->atCommandPrompt([] {});
    user->work();
    expectShown(false, "a click");
    EXPECT_TRUE(history().contains("Layers are as before LAYISO"));
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
