// The module's life in the host: loading, commands, exported functions, unloading, loading again.
#include "tests/module/module_fixture.h"

#include "sdk/hxui.h"

#include <QProcess>

#include <dlfcn.h>

namespace korvex::test {
namespace {

using ModuleLife = ModuleTest;

struct CommandRow {
    const wchar_t* name;
    const wchar_t* german;
    int flags;
};
constexpr CommandRow kCommands[] = {
    {L"LAYERSTATE", L"LAYERSTATUS", 0},     {L"LAYERSTATESAVE", L"LAYERSTATUSSICHERN", 0},
    {L"LAYFRZ", L"LAYERFRIEREN", 0},        {L"LAYER", L"LAYER", 1},
    {L"LAYERCLOSE", L"LAYERSCHLIESSEN", 5}, {L"CLASSICLAYER", L"LAYERKLASSISCH", 1},
    {L"LAYERPALETTE", L"LAYERPALETTE", 1},
};

void expectCommands(bool german) {
    for (const CommandRow& row : kCommands) {
        const Command* const command = editor().commands().find(row.name);
        ASSERT_TRUE(command) << row.name;
        EXPECT_EQ(command->local, german ? row.german : row.name);
        EXPECT_EQ(command->flags, row.flags) << row.name;
        EXPECT_EQ(command->uiContext, nullptr);
        EXPECT_EQ(command->functionCode, -1);
        EXPECT_EQ(command->resourceHandle, nullptr);
    }
}

void expectNothingLeft() {
    for (const CommandRow& row : kCommands) {
        EXPECT_FALSE(editor().commands().find(row.name)) << row.name;
    }
    EXPECT_FALSE(hxrxServiceIsRegistered(L"KvLayerApps"));
}

bool isResourceLibraryLoaded() {
    void* const library =
        dlopen(QString::fromStdWString(builtFile("KvLayerManagerRes.dll")).toUtf8(), RTLD_LAZY | RTLD_NOLOAD);
    if (library) dlclose(library);
    return library != nullptr;
}

TEST_F(ModuleLife, LoadsUnloadsAndLoadsAgain) {
    expectCommands(false);
    EXPECT_TRUE(hxrxServiceIsRegistered(L"KvLayerApps"));
    EXPECT_TRUE(linker().isAppMDIAware(kModule));
    EXPECT_FALSE(linker().isApplicationLocked(kModule));
    for (const char* const locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"}) {
        CStdStr<wchar_t> error;
        ASSERT_EQ(linker().unloadModule(kModule, &error), Hx::eOk) << error.c_str();
        expectNothingLeft();
        qputenv("LC_ALL", locale);
        load();
        expectCommands(locale[0] == 'd');
    }
}

TEST_F(ModuleLife, AnswersTheHostsMessages) {
    auto* const entry = exported<int(int, void*)>("hxrxEntryPoint");
    EXPECT_EQ(exported<std::uint32_t()>("hxrxGetApiVersion")(), 0x07E50000U);
    EXPECT_EQ(exported<int(HxModuleHandle, std::uint32_t, void*)>("DllMain")(nullptr, 2, nullptr), 1);
    EXPECT_EQ(entry(3, nullptr), kRetOK);
    expectCommands(false);
    EXPECT_EQ(entry(kQuitMsg, nullptr), kRetOK);
    expectNothingLeft();
    EXPECT_EQ(exported<IVrexPalettePropManager*()>("GetCuixManager")(), nullptr);
    EXPECT_TRUE(isResourceLibraryLoaded()) << "its texts may still be asked for";
    EXPECT_EQ(entry(kQuitMsg, nullptr), kRetOK);
    expectNothingLeft();
    run(L"-LAYER N AFTER\n\n");  // nobody listens any more
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(linker().unloadModule(kModule), Hx::eOk);
    EXPECT_FALSE(isResourceLibraryLoaded());
}

TEST_F(ModuleLife, WithoutItsResourceLibraryNothingIsRegistered) {
    ASSERT_EQ(linker().unloadModule(kModule), Hx::eOk);
    const std::wstring alone = path("KvLayerManager.hrx");
    ASSERT_TRUE(QFile::copy(QString::fromStdWString(builtFile("KvLayerManager.hrx")),
                            QString::fromStdWString(alone)));
    write("KvLayerManagerRes.dll", "not one");  // found before the one that was built
    CStdStr<wchar_t> error;
    EXPECT_NE(linker().loadModule(alone.c_str(), &error), Hx::eOk);
    EXPECT_TRUE(contains(error, L"it answers with 3")) << error.c_str();
    expectNothingLeft();
    EXPECT_FALSE(isResourceLibraryLoaded());
}

TEST_F(ModuleLife, PaletteCommandsDoNothingWithoutAMainWindow) {
    EXPECT_EQ(run(L"LAYER\nLAYERPALETTE\n"), L"Command: LAYER\nCommand: LAYERPALETTE\n");
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ModuleLife, LayerCloseTellsTheHostAndIsNoUndoStep) {
    hxuiMainAppService()->setLayerPaletteVisible(true);
    const int notices = hxuiMainAppService()->layerPaletteNotices();
    run(L"LINE 0,0 1,1 \nLAYERCLOSE\n");
    EXPECT_EQ(hxuiMainAppService()->layerPaletteNotices(), notices + 1);
    EXPECT_FALSE(hxuiMainAppService()->isLayerPaletteVisible());
    EXPECT_EQ(run(L"U\n"), L"Command: U\nLINE\n");
    // Inside of another command.
    run(L"LINE 0,0 'LAYERCLOSE 1,1 \n");
    EXPECT_EQ(hxuiMainAppService()->layerPaletteNotices(), notices + 2);
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ModuleLife, TellsAboutThePaletteByInterface) {
    IVrexPalettePropManager* const palette = exported<IVrexPalettePropManager*()>("GetCuixManager")();
    ASSERT_TRUE(palette);
    int values[8] = {7, 7, 7, 7, 7, 7, 7, 7};
    EXPECT_EQ(palette->GetPaletteProperties(values[0], values[1], values[2], values[3], values[4], values[5],
                                            values[6], values[7]),
              0);
    EXPECT_EQ(values[0], 0);
    EXPECT_EQ(palette->GetPaletteWnd(), nullptr);
    const int notices = hxuiMainAppService()->layerPaletteNotices();
    EXPECT_EQ(palette->SetPaletteProperties(-1, 0, 0, 0, 0, 0, 0, 0, 0), 1);
    EXPECT_EQ(hxuiMainAppService()->layerPaletteNotices(), notices);
    EXPECT_EQ(palette->SetPaletteProperties(0, 0, 0, 0, 0, 0, 0, 0, 0), 1);
    EXPECT_EQ(hxuiMainAppService()->layerPaletteNotices(), notices + 1);
    exported<void()>("VrexUpdateLayerMgrUIStyle")();
    EXPECT_EQ(exported<int()>("LayUniso")(), 1);
    EXPECT_EQ(exported<int()>("LayUnisoNew")(), 0);
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
}

Names exportsOf(const char* file) {
    QProcess nm;
    nm.start("nm", {"-D", "--defined-only", QString::fromStdWString(builtFile(file))});
    EXPECT_TRUE(nm.waitForFinished());
    Names names;
    for (const QString& line : QString::fromUtf8(nm.readAllStandardOutput()).split('\n')) {
        // What sanitizers and coverage add is none of the module's own.
        const QString name = line.section(' ', -1);
        if (!name.isEmpty() && !name.startsWith("__")) {
            names.insert(name.toStdWString());
        }
    }
    return names;
}

TEST(ModuleFiles, ExportWhatTheHostCallsAndNothingElse) {
    EXPECT_EQ(
        exportsOf("KvLayerManager.hrx"),
        (Names{L"DllMain", L"GetCuixManager", L"LayIso", L"LayUniso", L"LayUnisoNew", L"LayerDialog",
               L"LayerStateSaveCmd", L"VrexUpdateLayerMgrUIStyle", L"hxrxEntryPoint", L"hxrxGetApiVersion"}));
    EXPECT_EQ(exportsOf("KvLayerManagerRes.dll"), Names{L"hxresGetTable"});
}

}  // namespace
}  // namespace korvex::test
