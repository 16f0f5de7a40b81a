// The commands of the layer manager: what the host is told, how the palette first comes, and how all of it
// goes.
#include "tests/module/manager_ui/palette_fixture.h"
#include "tests/module/model/recording_palette.h"

#include "frame/entry/frame_app.h"
#include "frame/module_state.h"
#include "frame/palette_commands.h"
#include "host/editor/editor_notices.h"
#include "manager_ui/grid/layer_column.h"
#include "model/palette_doc_reactor.h"

#include "sdk/hxdialog.h"

#include <QTest>
#include <QTextEdit>
#include <QWindow>

namespace korvex::test {
namespace {

class ClassicLayer : public PaletteTest {
protected:
    /// What the editor tells of CLAYER, and how often the host hears of changed layers.
    Lines tellsOfCurrentLayer(const std::wstring& answers) {
        Recorder recorder;
        const int before = layerTableChangeCount();
        run(L"CLASSICLAYER\n" + answers);
        published = layerTableChangeCount() - before;
        Lines told;
        std::copy_if(recorder.log.begin(), recorder.log.end(), std::back_inserter(told),
                     [](const std::wstring& line) { return contains(line, L" CLAYER"); });
        return told;
    }
    int published = 0;
};

TEST_F(ClassicLayer, OkPublishesTheLayersAndTheCurrentOne) {
    const Lines changed{L"will CLAYER", L"did CLAYER"};
    EXPECT_EQ(tellsOfCurrentLayer(L"CLICK IDOK\n"), changed) << "also when nothing was changed";
    EXPECT_EQ(published, 1);
    EXPECT_EQ(tellsOfCurrentLayer(L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Lock\"\nCLICK IDCANCEL\n"), Lines());
    EXPECT_EQ(published, 0);
    EXPECT_EQ(variable(L"CLAYER"), L"\"SPARE\"");
    EXPECT_EQ(failures, Lines());
}

using FirstPalette = PaletteTest;

TEST_F(FirstPalette, IsDockedInItsFirstWidthAndMayFloat) {
    frame().setCentralWidget(new QTextEdit);
    QCoreApplication::processEvents();
    showPalette();
    EXPECT_EQ(panel()->dockingStyle(), kHxDockAndFloat);
    EXPECT_EQ(panel()->width(), 500) << "as high as the frame";
    panel()->setCurrentDockPosition(kHxDockNone);
    EXPECT_EQ(panel()->width(), 500);
}

TEST_F(FirstPalette, TheMouseMakesNoColumnTooNarrowToFind) {
    frame().setCentralWidget(new QTextEdit);
    showPalette();
    QHeaderView& header = *grid()->horizontalHeader();
    const auto drag = [&](int to) {
        const auto inWindow = [&](int x) {
            return header.viewport()->mapTo(&frame(), QPoint(x, header.height() / 2));
        };
        const int border = header.sectionViewportPosition(kColName) + header.sectionSize(kColName) - 1;
        QWindow* const window = frame().windowHandle();
        QTest::mouseMove(window, inWindow(border));
        QTest::mousePress(window, Qt::LeftButton, {}, inWindow(border));
        for (int x = border; x > to; x -= 10) {
            QTest::mouseMove(window, inWindow(x));
        }
        QTest::mouseMove(window, inWindow(to));
        QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(to));
        QCoreApplication::processEvents();
    };
    drag(80);
    EXPECT_LT(header.sectionSize(kColName), 60) << "dragged at all";
    drag(0);
    EXPECT_EQ(header.sectionSize(kColName), 16);
}

TEST_F(FirstPalette, CellsThatNobodyHasPaintedAreInTheUsersLanguage) {
    std::wstring names = L"Z0";
    for (int i = 1; i < 100; ++i) {
        names += L",Z" + std::to_wstring(i);
    }
    run(L"-LAYER New " + names + L"\n\n");
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    showPalette();
    ASSERT_EQ(hxGetResourceHandle(), nullptr);
    EXPECT_EQ(row("Z99")[kColLineweight], "Vorgabe") << "below what is shown";
    qputenv("LC_ALL", "C");
}

TEST_F(FirstPalette, MoreThanTheMostTransparencyIsToldAndCutDown) {
    showPalette();
    const std::wstring shown = run(L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Name\"\n"
                                   L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Transparency\"\n"
                                   L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE 95\nLOOK\n"
                                   L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE 85\nLOOK\n"
                                   L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE 950\nCLICK IDOK\n");
    const std::wstring hint = L"No more than 90 per cent is possible.";
    EXPECT_TRUE(contains(shown, hint)) << shown;
    EXPECT_EQ(shown.find(hint), shown.rfind(hint)) << "gone with the next value";
    idle();
    EXPECT_EQ(row("WALLS")[kColTransparency], "90");
    EXPECT_EQ(failures, Lines());
}

/// Commands called as functions, with a palette that writes down what it is told.
class PaletteFunctions : public EditorTest {
protected:
    void SetUp() override { needApplication(); }
    void TearDown() override {
        setLayerPalette(nullptr);
        delete existingMainWindow();
        setMainWindowMaker(nullptr);
    }
    template <class Window>
    void useMainWindow() {
        delete existingMainWindow();
        setMainWindowMaker([] { return new Window; });
        palette = new RecordingPalette;
        setLayerPalette(palette);
        palette->window.show();
        palette->told();
    }
    RecordingPalette* palette = nullptr;
};

TEST_F(PaletteFunctions, NothingIsShownOrHiddenInAWindowThatPanelsCannotDockIn) {
    useMainWindow<QMainWindow>();
    const int notices = hxuiMainAppService()->layerPaletteNotices();
    LayerCloseCmd();
    EXPECT_EQ(hxuiMainAppService()->layerPaletteNotices(), notices + 1)
        << "the host hears of it all the same";
    LayerPaletteCmd();
    EXPECT_EQ(palette->shows, 0);
    EXPECT_TRUE(palette->window.isVisible());
    EXPECT_EQ(palette->told(), RecordingPalette::Told());
    setLayerPalette(nullptr);
    LayerPaletteCmd(false);
    EXPECT_EQ(layerPalette(), nullptr);

    useMainWindow<HxUiDockFrameWindow>();
    LayerCloseCmd();
    EXPECT_EQ(palette->shows, 1);
    EXPECT_FALSE(palette->window.isVisible());
    LayerCloseCmd();
    EXPECT_EQ(palette->shows, 1) << "hidden already";
    LayerPaletteCmd();
    EXPECT_TRUE(palette->window.isVisible());
    EXPECT_EQ(palette->told(), RecordingPalette::Told{"show layers"});
}

/// What is still there, in the order in which it goes.
std::string remaining() {
    std::string parts;
    auto* const palette = dynamic_cast<RecordingPalette*>(layerPalette());
    if (palette) {  // it is the editor's reactor that tells of the current layer
        palette->told();
        resbuf layer = {};
        hxedGetVar(L"CLAYER", &layer);
        hxedSetVar(L"CLAYER", &layer);
        hxutFreeString(layer.resval.rstring);
        const RecordingPalette::Told told = palette->told();
        if (std::count(told.begin(), told.end(), "current layer")) parts += "editor ";
    }
    if (paletteDocReactor()) parts += "documents ";
    if (GetCuixManagerUtil()) parts += "interface ";
    if (hxrxServiceIsRegistered(L"KvLayerApps")) parts += "service ";
    if (palette) parts += "palette ";
    if (editor().commands().find(L"LAYFRZ")) parts += "commands";
    return parts;
}

std::vector<std::string> g_remained;

template <class Base>
class TellsWhatRemains : public Base {
public:
    using Base::Base;
    ~TellsWhatRemains() override { g_remained.push_back(remaining()); }
};

using TearDownOrder = PaletteFunctions;

TEST_F(TearDownOrder, IsReactorsInterfaceServicePaletteCommands) {
    initLayerManagerFrameApp();
    useMainWindow<HxUiDockFrameWindow>();
    palette = new TellsWhatRemains<RecordingPalette>;
    palette->database = &database();
    setLayerPalette(palette);
    setPaletteDocReactor(new TellsWhatRemains<KvLayerPaletteDocReactor>(curDoc()));
    auto* const services = HxRxServiceDictionary::cast(hxrxSysRegistry()->at(L"ServiceDictionary"));
    delete services->remove(L"KvLayerApps");
    services->atPut(L"KvLayerApps", new TellsWhatRemains<HxRxService>);
    ASSERT_EQ(remaining(), "editor documents interface service palette commands");
    g_remained.clear();
    EXPECT_EQ(unloadLayerManagerFrameApp(), Hx::eOk);
    EXPECT_EQ(g_remained, (std::vector<std::string>{"interface service palette commands", "palette commands",
                                                    "commands"}))
        << "when the documents' reactor, the service and the palette go";
    EXPECT_EQ(remaining(), "");
    EXPECT_FALSE(hxuiRegisterWidget("CSearchEdit", nullptr)) << "it is taken back already";
}

}  // namespace
}  // namespace korvex::test
