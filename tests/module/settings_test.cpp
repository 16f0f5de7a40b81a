// Settings in the registry hive and the configuration service: what is written under which name, and what
// becomes of damaged values.
#include "tests/module/model/recording_palette.h"
#include "tests/module/module_fixture.h"

#include "frame/module_state.h"
#include "frame/palette_properties.h"
#include "frame/palette_settings.h"
#include "frame/util/column_settings.h"
#include "frame/util/module_handles.h"
#include "frame/util/registry_settings.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"
#include "model/palette_doc_reactor.h"

#include "host/base/settings_store.h"
#include "sdk/hxregistry.h"
#include "sdk/hxui.h"

#include <QTimer>
#include <QWidget>

namespace korvex::test {
namespace {

constexpr wchar_t kKey[] = L"Software\\Test";

class RegistrySettings : public EditorTest {
protected:
    CStdStr<wchar_t> profilesKey() {
        return CStdStr<wchar_t>(hxdbHostApplicationServices()->getRegistryProductRootKey()) + L"\\Profiles";
    }
    /// Type and bytes of a value as they are stored; "" for none.
    std::wstring stored(const std::wstring& key, const wchar_t* name) {
        HxRegKey open = nullptr;
        if (hxRegOpenKey(HKEY_CURRENT_USER, key.c_str(), KEY_READ, open) != kRegOk) {
            return L"";
        }
        std::uint32_t type = 0;
        wchar_t text[600] = {};
        std::uint32_t size = sizeof text - sizeof(wchar_t);
        const HxRegStatus status = hxRegQueryValue(open, name, &type, text, &size);
        hxRegCloseKey(open);
        return status != kRegOk
                   ? L""
                   : std::to_wstring(type) + L":" + std::to_wstring(size / sizeof(wchar_t)) + L":" + text;
    }
    static std::vector<std::wstring> keysBelow(const std::wstring& path) {
        std::vector<std::wstring> names;
        HxRegKey open = nullptr;
        if (hxRegOpenKey(HKEY_CURRENT_USER, path.c_str(), KEY_READ, open) != kRegOk) return names;
        wchar_t name[300] = {};
        std::uint32_t size = 300;
        while (hxRegEnumKey(open, static_cast<std::uint32_t>(names.size()), name, &size) == kRegOk) {
            names.emplace_back(name);
            size = 300;
        }
        hxRegCloseKey(open);
        return names;
    }
    void store(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
        ASSERT_TRUE(WriteRegString(HKEY_CURRENT_USER, key, name, text));
    }
};

TEST_F(RegistrySettings, TextsAreWrittenWithTheirNullAndReadBack) {
    CStdStr<wchar_t> text = L"untouched";
    EXPECT_FALSE(ReadRegString(HKEY_CURRENT_USER, kKey, L"Name", text));
    EXPECT_TRUE(WriteRegString(HKEY_CURRENT_USER, kKey, L"", L"ignored"));
    EXPECT_FALSE(ReadRegString(HKEY_CURRENT_USER, kKey, L"", text));
    EXPECT_FALSE(ReadRegString(HKEY_CURRENT_USER, kKey, L"Name", text));
    EXPECT_EQ(text, L"untouched");

    EXPECT_TRUE(WriteRegString(HKEY_CURRENT_USER, kKey, L"Name", L"W\u00E4nde"));
    EXPECT_EQ(stored(kKey, L"Name"), L"1:6:W\u00E4nde");
    EXPECT_TRUE(ReadRegString(HKEY_CURRENT_USER, kKey, L"Name", text));
    EXPECT_EQ(text, L"W\u00E4nde");
    EXPECT_TRUE(WriteRegString(HKEY_CURRENT_USER, kKey, L"Name", L""));
    EXPECT_TRUE(ReadRegString(HKEY_CURRENT_USER, kKey, L"Name", text));
    EXPECT_EQ(text, L"");
    EXPECT_FALSE(WriteRegString(HKEY_CURRENT_USER, L"a\\\\b", L"Name", L"x"));
}

TEST_F(RegistrySettings, ReadingStopsAt256Characters) {
    for (const std::size_t length : {255U, 256U, 400U}) {
        CStdStr<wchar_t> text;
        store(kKey, L"Long", std::wstring(length, L'x'));
        EXPECT_TRUE(ReadRegString(HKEY_CURRENT_USER, kKey, L"Long", text));
        EXPECT_EQ(text.size(), std::min<std::size_t>(length, 256));
    }
}

TEST_F(RegistrySettings, TheSettingsKeyIsThatOfTheCurrentProfile) {
    ASSERT_EQ(hxdbHostApplicationServices()->setCurrentProfile(L"Drafting"), Hx::eOk);
    const CStdStr<wchar_t> path = GetUserInterfaceSettingsRegKey();
    EXPECT_EQ(path, profilesKey() + L"\\Drafting\\UserInterfaceSettings");
    HxRegKey key = nullptr;
    EXPECT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, path.c_str(), KEY_READ, key), kRegOk);
    hxRegCloseKey(key);
}

/// The columns as profiles name them, each with "Width" or "Index" behind it.
constexpr std::array<const wchar_t*, 19> kColumnNames = {
    L"Status",     L"Name",         L"On",           L"Freeze",      L"Lock",          L"Color", L"LineType",
    L"LineWeight", L"Transparency", L"PlotStyle",    L"Plot",        L"NewVpFreeze",   L"Descr", L"VpFreeze",
    L"VpColor",    L"VpLineType",   L"VpLineWeight", L"VpPlotStyle", L"VpTransparency"};

class ColumnSettings : public RegistrySettings {
protected:
    static std::vector<tagKvLayerListInfo> columns(std::size_t count, int base) {
        std::vector<tagKvLayerListInfo> all(count);
        for (std::size_t i = 0; i < count; ++i) {
            all[i].widthName = std::wstring(kColumnNames[i]) + L"Width";
            all[i].indexName = std::wstring(kColumnNames[i]) + L"Index";
            all[i].width = base + static_cast<int>(i);
            all[i].index = static_cast<int>(count - 1 - i);
        }
        return all;
    }
    static std::vector<int> numbers(const std::vector<tagKvLayerListInfo>& all) {
        std::vector<int> out;
        for (const tagKvLayerListInfo& column : all) {
            out.insert(out.end(), {column.width, column.index});
        }
        return out;
    }
    void goToLayout() {
        run(L"LAYOUT S Layout1\n");
        ASSERT_FALSE(database().tilemode());
    }
};

TEST_F(ColumnSettings, PaletteAndDialogKeepASetForEachSpace) {
    const auto none = columns(kColumnCount, 0);
    auto read = none;
    EXPECT_FALSE(GetColInfoFromReg(KvGridKind::palette, read.data(), read.size()));
    EXPECT_TRUE(SaveColInfoInReg(KvGridKind::palette, columns(13, 100), columns(19, 200)));
    EXPECT_FALSE(GetColInfoFromReg(KvGridKind::dialog, read.data(), read.size()));
    EXPECT_EQ(numbers(read), numbers(none));
    EXPECT_TRUE(SaveColInfoInReg(KvGridKind::dialog, columns(13, 300), columns(19, 400)));

    for (const bool isLayout : {false, true}) {  // the set that is asked for counts, not the drawing's space
        auto model = columns(13, 0);
        EXPECT_TRUE(GetColInfoFromReg(KvGridKind::palette, model.data(), model.size()));
        EXPECT_EQ(numbers(model), numbers(columns(13, 100)));
        EXPECT_TRUE(GetColInfoFromReg(KvGridKind::dialog, model.data(), model.size()));
        EXPECT_EQ(numbers(model), numbers(columns(13, 300)));
        EXPECT_TRUE(GetColInfoFromReg(KvGridKind::palette, read.data(), read.size()));
        EXPECT_EQ(numbers(read), numbers(columns(19, 200)));
        EXPECT_EQ(shownColumnCount(&database()), isLayout ? 19U : 13U);
        EXPECT_EQ(shownColumnCount(nullptr), 13U);
        goToLayout();
    }
}

TEST_F(ColumnSettings, ValuesAreDecimalTextsWithoutTheirNullInKeysOfClassRegSz) {
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::palette, columns(13, 100), columns(19, 200)));
    const std::wstring key = GetUserInterfaceSettingsRegKey() + L"\\KvLayerPropManagerPalette";
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"NewVpFreezeWidth"), L"1:3:111");
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"DescrIndex"), L"1:1:0");
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"VpFreezeWidth"), L"");
    EXPECT_EQ(stored(key + L"\\ViewportColumnSets", L"VpTransparencyWidth"), L"1:3:218");
    for (const wchar_t* const set : {L"", L"\\GlobalColumnSets", L"\\ViewportColumnSets"}) {
        HxRegKey open = nullptr;
        ASSERT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, (key + set).c_str(), KEY_READ, open), kRegOk);
        wchar_t keyClass[16] = {};
        std::uint32_t size = 16;
        EXPECT_EQ(hxRegQueryClass(open, keyClass, &size), kRegOk);
        EXPECT_STREQ(keyClass, L"REG_SZ");
        hxRegCloseKey(open);
    }
}

TEST_F(ColumnSettings, ReadingEndsAtTheFirstMissingValueAndWordsAreZero) {
    const std::wstring key = GetUserInterfaceSettingsRegKey() + L"\\KvLayerPropManagerDlg\\GlobalColumnSets";
    store(key, L"StatusWidth", L"wide");
    store(key, L"StatusIndex", L" 4x");
    store(key, L"NameWidth", L"99999999999");
    auto read = columns(13, 70);
    EXPECT_FALSE(GetColInfoFromReg(KvGridKind::dialog, read.data(), read.size()));
    EXPECT_EQ(read[0].width, 0);
    EXPECT_EQ(read[0].index, 4);
    EXPECT_EQ(read[1].width, std::numeric_limits<int>::max());
    EXPECT_EQ(read[1].index, 11);
    EXPECT_EQ(read[2].width, 72);
    // A value beyond the room for one counts as missing.
    store(key, L"StatusWidth", std::wstring(2000, L'1'));
    EXPECT_FALSE(GetColInfoFromReg(KvGridKind::dialog, read.data(), read.size()));
    EXPECT_EQ(read[0].width, 0);
}

TEST_F(ColumnSettings, WithoutAProfileNothingIsReadOrWritten) {
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::dialog, columns(13, 100), columns(19, 200)));
    const auto expectNothing = [&] {
        auto read = columns(13, 70);
        EXPECT_EQ(GetUserInterfaceSettingsRegKey(), L"");
        EXPECT_FALSE(GetColInfoFromReg(KvGridKind::dialog, read.data(), read.size()));
        EXPECT_FALSE(SaveColInfoInReg(KvGridKind::dialog, read, columns(19, 300)));
        EXPECT_EQ(numbers(read), numbers(columns(13, 70)));
    };
    const std::wstring profiles = profilesKey();
    const std::vector<std::wstring> before = keysBelow(profiles);
    HxRegKey key = nullptr;
    ASSERT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, profiles.c_str(), KEY_WRITE, key), kRegOk);
    ASSERT_EQ(hxRegDeleteValue(key, L""), kRegOk) << "none is current; the store works";
    hxRegCloseKey(key);
    expectNothing();
    EXPECT_EQ(keysBelow(profiles), before);

    qputenv("KORVEX_PROFILE_DIR", "/dev/null/none");  // and now it does not
    expectNothing();
}

TEST_F(ColumnSettings, ASetIsWrittenUpToItsFirstFailure) {
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::palette, columns(13, 100), columns(19, 200)));
    const std::wstring key = GetUserInterfaceSettingsRegKey() + L"\\KvLayerPropManagerPalette";
    ASSERT_EQ(settingsStore()->database().execute("CREATE TEMP TRIGGER full BEFORE INSERT ON key_values"
                                                  " WHEN NEW.name = 'NameWidth'"
                                                  " BEGIN SELECT RAISE(ABORT, 'full'); END"),
              0);
    EXPECT_FALSE(SaveColInfoInReg(KvGridKind::palette, columns(13, 300), columns(19, 400)));
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"StatusWidth"), L"1:3:300");
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"StatusIndex"), L"1:2:12");
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"NameWidth"), L"1:3:101");
    EXPECT_EQ(stored(key + L"\\GlobalColumnSets", L"OnWidth"), L"1:3:102") << "not tried any more";
    EXPECT_EQ(stored(key + L"\\ViewportColumnSets", L"StatusWidth"), L"1:3:400") << "a set of its own";
    EXPECT_EQ(stored(key + L"\\ViewportColumnSets", L"OnWidth"), L"1:3:202");
}

/// A layer manager in palette form on the current drawing, made by the test itself.
class ColumnsOfTheManager : public ColumnSettings {
protected:
    void SetUp() override {
        needApplication();
        setGlobalResInstance(LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str()));
    }
    void TearDown() override {
        manager.reset();
        hxFreeResourceDll(globalResInstance());
        setGlobalResInstance(nullptr);
    }
    void openManager() {
        manager = std::make_unique<KvLayerPropManagerDlg>(&database(), nullptr);
        manager->setIsPalette(true);
        manager->InitPalette();
    }
    std::vector<int> kept(std::size_t count) {
        auto read = columns(count, 0);
        EXPECT_TRUE(GetColInfoFromReg(KvGridKind::palette, read.data(), read.size()));
        return numbers(read);
    }

    std::unique_ptr<KvLayerPropManagerDlg> manager;
};

TEST_F(ColumnsOfTheManager, AreKeptUnderTheNamesOfProfiles) {
    openManager();
    ASSERT_TRUE(manager->SaveColInfoInReg());
    std::vector<int> model;
    for (int id = 0; id < 13; ++id) {
        const int widths[] = {35, 70, 30, 40, 35, 60, 125, 80, 60, 60, 40, 60, 90};
        model.insert(model.end(), {widths[id], id});
    }
    EXPECT_EQ(kept(13), model);
    std::vector<int> layout;
    for (int id = 0; id < 19; ++id) {
        const int widths[] = {35, 70, 30, 40, 35, 60, 80, 80, 80, 60, 40, 60, 60, 90, 60, 80, 80, 60, 80};
        layout.insert(layout.end(), {widths[id], id});
    }
    EXPECT_EQ(kept(19), layout);
}

TEST_F(ColumnsOfTheManager, AreShownAsTheyAreKeptHoweverNarrow) {
    auto narrow = columns(13, 1);
    narrow[5].width = 0;  // hidden
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::palette, narrow, columns(19, 2)));
    openManager();
    EXPECT_EQ(numbers(manager->list().columns()), numbers(narrow));
    ASSERT_TRUE(manager->SaveColInfoInReg());
    EXPECT_EQ(kept(13), numbers(narrow));
    EXPECT_EQ(kept(19), numbers(columns(19, 2)));
    narrow[1].width = 0;
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::palette, narrow, columns(19, 2)));
    openManager();
    EXPECT_GT(manager->list().columns()[1].width, 0) << "the name is always there";
}

TEST_F(ColumnsOfTheManager, AreThoseOfTheSetThatIsAskedForInAnySpace) {
    ASSERT_TRUE(SaveColInfoInReg(KvGridKind::palette, columns(13, 100), columns(19, 200)));
    goToLayout();
    openManager();
    EXPECT_EQ(numbers(manager->list().columns()), numbers(columns(19, 200)));
    manager->InitModelColInfo();
    EXPECT_EQ(numbers(manager->list().columns()), numbers(columns(13, 100)));
    manager->InitPaperColInfo();
    run(L"MODEL\n");
    manager->InitPaperColInfo();
    EXPECT_EQ(numbers(manager->list().columns()), numbers(columns(19, 200)));
}

TEST_F(ColumnsOfTheManager, MergingIsRefusedInSilenceWhileACommandBlocks) {
    run(L"-LAYER New A,B\n\n");
    setPaletteDocReactor(new KvLayerPaletteDocReactor(curDoc()));
    openManager();
    manager->list().selectAll();
    bool asksForTarget = false;
    const auto merge = [&] {
        asksForTarget = false;
        QTimer::singleShot(0, manager.get(), [&] {
            while (QWidget* const window = QApplication::activeModalWidget()) {
                asksForTarget = true;
                window->close();
            }
        });
        manager->MergeSelectLayersTo();
        QCoreApplication::processEvents();
    };
    paletteDocReactor()->blockingCommandStarted(curDoc());
    merge();
    EXPECT_FALSE(asksForTarget);
    EXPECT_EQ(failures, Lines());
    paletteDocReactor()->blockingCommandEnded(curDoc());
    merge();
    EXPECT_TRUE(asksForTarget);
    setPaletteDocReactor(nullptr);
}

class PaletteSettings : public EditorTest {
protected:
    void SetUp() override { needApplication(); }
    void TearDown() override { setLayerPalette(nullptr); }

    RecordingPalette& newPalette() {
        auto* const palette = new RecordingPalette;
        setLayerPalette(palette);
        palette->window.setGeometry(10, 20, 300, 200);
        return *palette;
    }
    static void put(const wchar_t* key, const VrexVariant& value) {
        EXPECT_EQ(vrexConfig()->setValue(kHxConfigUser, key, value), 0);
    }
    static VrexVariant kept(const wchar_t* name) {
        VrexVariant value;
        vrexConfig()->getValue(kHxConfigUser, (L"LayerPalette\\" + std::wstring(name)).c_str(), value);
        return value;
    }
};

TEST_F(PaletteSettings, ADockedPaletteKeepsItsSide) {
    RecordingPalette& docked = newPalette();
    docked.dock = 2;
    docked.window.show();
    SavePaletteSet();
    EXPECT_EQ(kept(L"IsVisible"), VrexVariant(std::int32_t(1)));
    EXPECT_EQ(kept(L"HorDockSize"), VrexVariant(L"300 200"));
    EXPECT_EQ(kept(L"DockStyle"), VrexVariant(std::int32_t(2)));
    EXPECT_EQ(kept(L"IsFloating"), VrexVariant(std::int32_t(0)));
    EXPECT_EQ(kept(L"Position"), VrexVariant(L"10 20 309 219"));

    RecordingPalette& next = newPalette();
    next.window.setGeometry(1, 2, 30, 40);
    LoadPaletteSet();
    EXPECT_FALSE(next.floating);
    EXPECT_EQ(next.window.geometry(), QRect(1, 2, 300, 200));
    EXPECT_EQ(next.dock, 2);
    EXPECT_EQ(next.shows, 1);
    EXPECT_TRUE(next.window.isVisible());
}

TEST_F(PaletteSettings, AFloatingPaletteKeepsItsPlaceAndIsNeverDocked) {
    RecordingPalette& floating = newPalette();
    floating.floating = true;
    floating.dock = 3;
    SavePaletteSet();
    EXPECT_EQ(kept(L"DockStyle").type(), VrexVariant::kEmpty);
    EXPECT_EQ(kept(L"IsVisible"), VrexVariant(std::int32_t(0)));
    put(L"LayerPalette\\DockStyle", VrexVariant(std::int32_t(4)));

    RecordingPalette& next = newPalette();
    next.window.setGeometry(500, 500, 30, 40);
    next.window.show();
    LoadPaletteSet();
    EXPECT_TRUE(next.floating);
    EXPECT_EQ(next.window.geometry(), QRect(10, 20, 300, 200));
    EXPECT_EQ(next.dock, 0);
    EXPECT_EQ(next.shows, 0);
    EXPECT_FALSE(next.window.isVisible());
}

TEST_F(PaletteSettings, MissingAndDamagedSettings) {
    RecordingPalette& palette = newPalette();
    palette.window.show();
    LoadPaletteSet();
    EXPECT_EQ(palette.window.geometry(), QRect(10, 20, 300, 200));
    EXPECT_TRUE(palette.window.isVisible());
    EXPECT_EQ(palette.shows, 0);

    put(L"LayerPalette\\DockStyle", VrexVariant(std::int32_t(0)));
    put(L"LayerPalette\\HorDockSize", VrexVariant(L"120 x"));
    put(L"LayerPalette\\IsFloating", VrexVariant(L"1"));
    put(L"LayerPalette\\IsVisible", VrexVariant(true));
    put(L"LayerPalette\\Position", VrexVariant(L"7 8"));
    LoadPaletteSet();
    EXPECT_FALSE(palette.floating);
    EXPECT_EQ(palette.window.width(), 120);
    EXPECT_FALSE(palette.window.isVisible());
    EXPECT_EQ(palette.shows, 0);

    // With the visibility unknown a docked palette is hidden.
    vrexConfig()->removeValue(kHxConfigUser, L"LayerPalette\\IsVisible");
    put(L"LayerPalette\\DockStyle", VrexVariant(std::int32_t(1)));
    put(L"LayerPalette\\HorDockSize", VrexVariant(L"2147483647 -2147483648"));
    palette.window.show();
    LoadPaletteSet();
    EXPECT_EQ(palette.shows, 1);
    EXPECT_FALSE(palette.window.isVisible());
}

TEST_F(PaletteSettings, NothingHappensWithoutAPalette) {
    SavePaletteSet();
    LoadPaletteSet();
    EXPECT_EQ(kept(L"IsVisible").type(), VrexVariant::kEmpty);
}

TEST_F(PaletteSettings, TheHostsQuestionGivesTheGeometryAndKeepsIt) {
    RecordingPalette& palette = newPalette();
    palette.dock = 3;
    palette.window.show();
    VrexLayerCuixManager manager;
    int visible = 9;
    int dock = 9;
    int untouched[2] = {9, 9};
    int place[4] = {};
    EXPECT_EQ(manager.GetPaletteProperties(visible, dock, untouched[0], untouched[1], place[0], place[1],
                                           place[2], place[3]),
              1);
    EXPECT_EQ(visible, 1);
    EXPECT_EQ(dock, 3);
    EXPECT_EQ(untouched[0] + untouched[1], 18);
    EXPECT_EQ(std::vector<int>(place, place + 4), (std::vector<int>{299, 199, 10, 20}));
    EXPECT_EQ(kept(L"DockStyle"), VrexVariant(std::int32_t(3)));
    EXPECT_EQ(manager.GetPaletteWnd(), &palette.window);
    palette.floating = true;
    manager.GetPaletteProperties(visible, dock, untouched[0], untouched[1], place[0], place[1], place[2],
                                 place[3]);
    EXPECT_EQ(dock, 0);
}

}  // namespace
}  // namespace korvex::test
