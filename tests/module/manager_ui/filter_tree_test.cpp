// The filter tree of the layer manager: choosing, making, renaming, deleting filters, and their layers at
// once.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/filters/filter_table.h"
#include "manager_ui/grid/layer_column.h"

#include "sdk/hxdbdict.h"
#include "sdk/hxlyfilter.h"

#include <QAction>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>

namespace korvex::test {
namespace {

class FilterTree : public PaletteTest {
protected:
    void SetUp() override {
        PaletteTest::SetUp();
        showPalette();
    }
    QTreeWidget& tree() { return *frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE"); }
    QTreeWidgetItem* item(const QString& name) {
        const QList<QTreeWidgetItem*> found = tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
        return found.size() == 1 ? found.front() : nullptr;
    }
    QString current() { return tree().currentItem() ? tree().currentItem()->text(0) : QString(); }
    /// Picks from the context menu of a filter; what the dialogue showed comes back.
    std::wstring pick(const std::wstring& filterPath, const std::wstring& menuItem,
                      const std::wstring& answers = L"") {
        const std::wstring told = run(L"CLICK IDC_LAYER_FILTER_TREE right \"" + filterPath +
                                      L"\"\nCHOOSE menu \"" + menuItem + L"\"\n" + answers);
        idle();
        return told;
    }
    /// A property filter of the dialog, by its expression.
    void addPropertyFilter(const std::wstring& name, const std::wstring& expression) {
        run(L"CLICK IDC_BUTTON_NEW_PROPFILTER\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME " +
            name + L"\nTYPE IDC_PROPFILTER_EXPRESSION " + expression + L"\nCLICK IDOK\n");
        idle();
    }
    QStringList withState(int column, const QString& state) {
        QStringList all;
        for (const Row& row : rows()) {
            if (row[column] == state) all << row[kColName];
        }
        return all;
    }
    /// What the drawing holds, whatever the palette shows.
    std::wstring stored(const wchar_t* name) {
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        database().layerFilterManager()->getFilters(root, selected);
        const std::unique_ptr<HxLyLayerFilter> owner(root);
        std::wstring found = L"none";
        const std::function<void(const HxLyLayerFilter&)> look = [&](const HxLyLayerFilter& filter) {
            if (filter.name() == name) found = filter.filterExpression();
            for (const HxLyLayerFilter* const nested : filter.getNestedFilters()) {
                look(*nested);
            }
        };
        look(*root);
        return found;
    }
    int filterCount() {
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        database().layerFilterManager()->getFilters(root, selected);
        const std::unique_ptr<HxLyLayerFilter> owner(root);
        int count = 0;
        for (const HxLyLayerFilter* const nested : root->getNestedFilters()) {
            count += nested->kind() == HxLyLayerFilter::kProperty || nested->isIdFilter() ? 1 : 0;
        }
        return count;
    }
};

TEST_F(FilterTree, AGroupIsMadeFilledRenamedAndDeleted) {
    run(L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Name\"\nCLICK IDC_LIST_LAYERS_LIST ctrl \"WALLS,Name\"\n"
        L"CLICK IDC_LIST_LAYERS_LIST right \"WALLS,Name\"\nCHOOSE menu \"New Group Filter of Selection\"\n"
        L"PRESS focus Ctrl+A\nTYPE focus Mine\nPRESS focus Enter\n");
    idle();
    EXPECT_EQ(current(), "Mine");
    EXPECT_EQ(names(), (QStringList{"NOTES", "WALLS"}));
    run(L"CHOOSE IDC_LAYER_FILTER_TREE All\nCLICK IDC_LIST_LAYERS_LIST \"TOP,Name\"\n"
        L"CLICK IDC_LIST_LAYERS_LIST right \"TOP,Name\"\nCHOOSE menu \"Add to Group Filter/Mine\"\n"
        L"CLICK IDC_LIST_LAYERS_LIST right \"TOP,Name\"\nCHOOSE menu \"Layer Filters/Mine\"\n");
    idle();
    EXPECT_EQ(names(), (QStringList{"NOTES", "TOP", "WALLS"}));
    run(L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Name\"\nCLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\n"
        L"CHOOSE menu \"Remove From Group Filter\"\n");
    idle();
    EXPECT_EQ(names(), (QStringList{"TOP", "WALLS"}));
    run(L"CLICK IDC_BUTTON_NEW\nPRESS focus Enter\n");
    idle();
    EXPECT_EQ(names(), (QStringList{"Layer1", "TOP", "WALLS"})) << "new layers join the current group";
    const std::wstring asked = pick(L"All/Mine", L"Delete", L"No\n");
    EXPECT_TRUE(
        contains(asked, L"Do you want to delete the filter \"Mine\"? Layers are not deleted. [Yes/No] <No>"));
    EXPECT_TRUE(item("Mine"));
    run(L"PRESS IDC_LAYER_FILTER_TREE Del\nYes\n");
    idle();
    EXPECT_FALSE(item("Mine"));
    EXPECT_EQ(current(), "All");
    EXPECT_EQ(filterCount(), 0);
    EXPECT_TRUE(contains(run(L"U\n"), L"Delete Filter"));
    idle();
    EXPECT_TRUE(item("Mine"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(FilterTree, LayersJoinEveryGroupAroundTheirs) {
    run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Ctrl+A\nTYPE focus Outer\nPRESS focus Enter\n");
    addPropertyFilter(L"W", L"NAME==\"W*\"");
    run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nPRESS focus Ctrl+A\nTYPE focus Inner\nPRESS focus Enter\n");
    idle();
    ASSERT_EQ(item("Inner")->parent(), item("W"));
    ASSERT_EQ(item("W")->parent(), item("Outer"));
    run(L"CLICK IDC_BUTTON_NEW\nPRESS focus Ctrl+A\nTYPE focus Wood\nPRESS focus Enter\n");
    idle();
    tree().setCurrentItem(item("Outer"));
    EXPECT_EQ(names(), QStringList{"Wood"}) << "also beyond the property filter";
    tree().setCurrentItem(item("All"));
    const std::wstring told = run(L"CLICK IDC_LIST_LAYERS_LIST \"NOTES,Name\"\n"
                                  L"CLICK IDC_LIST_LAYERS_LIST ctrl \"WALLS,Name\"\n"
                                  L"CLICK IDC_LIST_LAYERS_LIST right \"WALLS,Name\"\n"
                                  L"CHOOSE menu \"Add to Group Filter/Inner\"\nOK\n");
    EXPECT_TRUE(contains(told,
                         L"1 of 2 layer(s) are in the group \"Inner\" now, but are not shown in it: the "
                         L"filter \"W\" around it leaves them out."));
    idle();
    tree().setCurrentItem(item("Inner"));
    EXPECT_EQ(names(), (QStringList{"WALLS", "Wood"}));
    tree().setCurrentItem(item("Outer"));
    EXPECT_EQ(names(), (QStringList{"NOTES", "WALLS", "Wood"}));
    run(L"U\n");
    idle();
    EXPECT_EQ(names(), QStringList{"Wood"});
    EXPECT_EQ(failures, Lines());
}

TEST_F(FilterTree, WhatCannotBeStoredIsToldAndNotShown) {
    HxApDocument* document = nullptr;
    CStdStr<wchar_t> error;
    ASSERT_EQ(
        editor().documents().openDocument(L"" KORVEX_SOURCE_DIR "/samples/small/r12.dxf", document, &error),
        Hx::eOk);
    idle();
    const std::wstring told = run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nOK\n");
    EXPECT_TRUE(contains(told, L"has no place for layer filters."))
        << QString::fromStdWString(told).toStdString();
    EXPECT_FALSE(item("Group Filter1"));
    editor().documents().activateDocument(editor().documents().all().front());
    idle();
    const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
    EXPECT_TRUE(contains(run(L"CLICK IDC_BUTTON_NEW_GROUPFILTER\nOK\n"), L"[OK]"));
    EXPECT_EQ(filterCount(), 0);
}

TEST_F(FilterTree, BoxesSpeakGerman) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    showPalette();
    addPropertyFilter(L"Eins", L"NAME==\"W*\"");
    run(L"CHOOSE IDC_LAYER_FILTER_TREE Alle\n");
    addPropertyFilter(L"Zwei", L"NAME==\"S*\"");
    EXPECT_TRUE(
        contains(pick(L"Alle/Zwei", L"Sichtbarkeit/Gefroren", L"OK\n"), L"\"SPARE\" ist der aktuelle"));
    EXPECT_TRUE(contains(pick(L"Alle/Eins", L"L\u00f6schen", L"Yes\n"),
                         L"Soll der Filter \"Eins\" gel\u00f6scht werden? Layer werden nicht gel\u00f6scht. "
                         L"[Yes/No] <No>"));
    EXPECT_FALSE(item("Eins"));
    const std::wstring told = run(
        L"CLICK IDC_BUTTON_NEW_PROPFILTER\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME zwei\n"
        L"CLICK IDOK\nOK\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME a:b\nCLICK IDOK\nOK\n"
        L"PRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME Drei\n"
        L"TYPE IDC_PROPFILTER_EXPRESSION NAME==\nCLICK IDOK\nOK\nCLICK IDCANCEL\n");
    EXPECT_TRUE(
        contains(told, L"Ein anderer Filter hat den Namen \"zwei\". W\u00e4hlen Sie einen anderen Namen."));
    EXPECT_TRUE(contains(told, L"\"a:b\" kann kein Filtername sein."));
    EXPECT_TRUE(contains(told, L"Der Ausdruck ist nicht verst\u00e4ndlich ab Zeichen 7: "));
    EXPECT_EQ(failures, Lines());
    qputenv("LC_ALL", "C");
}

TEST_F(FilterTree, EveryStepIsTakenBackByItself) {
    addPropertyFilter(L"W", L"NAME==\"W*\"");
    EXPECT_EQ(names(), (QStringList{"WALLS", "W\u00e4nde 2"}));
    EXPECT_EQ(stored(L"W"), L"NAME==\"W*\"");
    run(L"PRESS IDC_LAYER_FILTER_TREE F2\nPRESS focus Ctrl+A\nTYPE focus Walls only\nPRESS focus Enter\n");
    idle();
    EXPECT_EQ(stored(L"Walls only"), L"NAME==\"W*\"");
    pick(L"All/Walls only", L"Convert to Group Filter", L"PRESS focus Enter\n");
    EXPECT_EQ(filterCount(), 2);
    EXPECT_EQ(names().size(), 2);
    EXPECT_TRUE(contains(run(L"U\n"), L"Convert to Group Filter"));
    EXPECT_TRUE(contains(run(L"U\n"), L"Rename Filter"));
    EXPECT_EQ(stored(L"W"), L"NAME==\"W*\"");
    EXPECT_TRUE(contains(run(L"U\n"), L"New Property Filter"));
    idle();
    EXPECT_EQ(filterCount(), 0);
    EXPECT_FALSE(item("W"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(FilterTree, NamesOfFiltersFollowRules) {
    addPropertyFilter(L"One", L"NAME==\"*\"");
    addPropertyFilter(L"Two", L"NAME==\"*\"");
    const auto rename = [this](const std::wstring& name) {
        return run(L"PRESS IDC_LAYER_FILTER_TREE F2\nPRESS focus Ctrl+A\nTYPE focus " + name +
                   L"\nPRESS focus Enter\nOK\n");
    };
    EXPECT_TRUE(contains(rename(L"one"), L"Another filter has the name \"one\". Choose another name."));
    EXPECT_TRUE(contains(rename(L"a<b"), L"\"a<b\" cannot be the name of a filter."));
    EXPECT_EQ(current(), "Two");
    const std::wstring told = run(
        L"CLICK IDC_BUTTON_NEW_PROPFILTER\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME two\n"
        L"CLICK IDOK\nOK\nPRESS IDC_PROPFILTER_NAME Ctrl+A\nTYPE IDC_PROPFILTER_NAME Three\n"
        L"TYPE IDC_PROPFILTER_EXPRESSION NAME==\nLOOK IDC_PROPFILTER_NOTE\nCLICK IDOK\nOK\nCLICK IDCANCEL\n");
    EXPECT_TRUE(contains(told, L"Another filter has the name \"two\"."));
    EXPECT_TRUE(contains(told, L"The expression cannot be understood at character 7"));
    run(L"CHOOSE IDC_LAYER_FILTER_TREE All\nPRESS IDC_LAYER_FILTER_TREE F2\nPRESS IDC_LAYER_FILTER_TREE "
        L"Del\n");
    EXPECT_TRUE(item("All"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(FilterTree, ChangesAllLayersOfAFilterAtOnce) {
    addPropertyFilter(L"S", L"NAME==\"S*\" OR NAME==\"W*\"");
    pick(L"All/S", L"Lock/Lock");
    EXPECT_EQ(withState(kColLock, "Locked").size(), 3);
    EXPECT_TRUE(contains(pick(L"All/S", L"Visibility/Frozen", L"OK\n"),
                         L"Layer \"SPARE\" is the current layer and cannot be frozen."));
    EXPECT_EQ(withState(kColFreeze, "Frozen"), (QStringList{"WALLS", "W\u00e4nde 2"}));
    pick(L"All/S", L"Visibility/Thawed");
    EXPECT_EQ(withState(kColFreeze, "Frozen"), QStringList());
    EXPECT_TRUE(contains(pick(L"All/S", L"Visibility/Off", L"No\n"), L"\"SPARE\" is the current layer"));
    EXPECT_EQ(withState(kColOn, "Off"), (QStringList{"WALLS", "W\u00e4nde 2"})) << "the current one stays";
    run(L"U\n");
    idle();
    pick(L"All/S", L"Visibility/Off", L"Yes\n");
    EXPECT_EQ(withState(kColOn, "Off").size(), 3);
    EXPECT_TRUE(contains(run(L"U\n"), L"Turn Off Layers of Filter"));
    idle();
    EXPECT_EQ(withState(kColOn, "Off").size(), 0);
    run(L"-LAYER OFF S*\nYes\n\n");
    idle();
    pick(L"All/S", L"Visibility/On");
    EXPECT_EQ(withState(kColOn, "On").size(), 3);
    pick(L"All/S", L"Lock/Unlock");
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(withState(kColLock, "Locked"), QStringList());
}

TEST_F(FilterTree, ViewportItemsNeedALayout) {
    addPropertyFilter(L"W", L"NAME==\"W*\"");
    std::wstring menu = run(L"CLICK IDC_LAYER_FILTER_TREE right All/W\nLOOK\nEND\n");
    EXPECT_TRUE(contains(menu, L"\"Viewport\" disabled")) << QString::fromStdWString(menu).toStdString();
    EXPECT_FALSE(contains(menu, L"Modify"));
    QStringList enabled;
    QTimer::singleShot(0, [&] {
        for (const char* const name : {"IDM_VP_FREEZE", "IDM_VP_THAW", "IDM_VP_ALLISO", "IDM_VP_ACTIVEISO"}) {
            const auto* const action = QApplication::activePopupWidget()->findChild<QAction*>(name);
            if (action && action->isEnabled()) enabled << name;
        }
        QApplication::activePopupWidget()->close();
    });
    emit tree().customContextMenuRequested(tree().visualItemRect(item("W")).center());
    EXPECT_EQ(enabled, QStringList()) << "each by itself, too";
    menu = run(L"CLICK IDC_LAYER_FILTER_TREE right All\nLOOK\nEND\n");
    EXPECT_TRUE(contains(menu, L"\"Rename\" disabled"));
    EXPECT_TRUE(contains(menu, L"\"Delete\" disabled"));
    run(L"LAYOUT S Layout1\nMSPACE\n");
    idle();
    pick(L"All/W", L"Viewport/Freeze");
    EXPECT_EQ(frozenHere(), (Names{L"WALLS", L"W\u00e4nde 2"}));
    EXPECT_EQ(row("WALLS")[kColVpFreeze], "Frozen in the viewport");
    pick(L"All/W", L"Viewport/Thaw");
    EXPECT_EQ(frozenHere(), Names());
    pick(L"All/W", L"Viewport/Isolate in Active Viewport Only");
    EXPECT_EQ(frozenHere().size(), 12U);
    EXPECT_EQ(frozenHere().count(L"WALLS"), 0U);
    run(L"U\n");
    EXPECT_EQ(frozenHere(), Names());
    EXPECT_TRUE(contains(pick(L"All/W", L"Viewport/Isolate in All Viewports", L"OK\n"), L"\"SPARE\""));
    EXPECT_EQ(frozen().size(), 11U) << "all others but the current one";
    EXPECT_EQ(failures, Lines());
}

TEST_F(FilterTree, PropertyFiltersAreEditedAsATable) {
    addPropertyFilter(L"P", L"NAME==\"W*\" AND LOCKED==\"False\" OR NAME==\"S*\"");
    const std::wstring shown = run(
        L"CLICK IDC_LAYER_FILTER_TREE double All/P\nLOOK IDC_PROPFILTER_TABLE\nLOOK IDC_PROPFILTER_COUNT\n"
        L"CLICK IDC_PROPFILTER_TABLE 2,1\nCLICK IDC_PROPFILTER_REMOVE\nLOOK IDC_PROPFILTER_COUNT\n"
        L"CLICK IDC_PROPFILTER_TABLE 2,1\nPRESS IDC_PROPFILTER_TABLE F2\nTYPE focus NO*\nPRESS focus Enter\n"
        L"LOOK IDC_PROPFILTER_COUNT\nLOOK IDC_PROPFILTER_EXPRESSION\nCLICK IDOK\n");
    EXPECT_TRUE(contains(shown, L"1: W* |  |  |  | False"));
    EXPECT_TRUE(contains(shown, L"Layers that pass the filter: 3 of 14"));
    EXPECT_TRUE(contains(shown, L"Layers that pass the filter: 2 of 14"));
    idle();
    EXPECT_EQ(stored(L"P"), L"NAME==\"W*\" AND LOCKED==\"False\" OR NAME==\"NO*\"");
    EXPECT_EQ(names(), (QStringList{"NOTES", "WALLS", "W\u00e4nde 2"}));
    const std::wstring text =
        run(L"CLICK IDC_LAYER_FILTER_TREE double All/P\nPRESS IDC_PROPFILTER_EXPRESSION Ctrl+A\n"
            L"TYPE IDC_PROPFILTER_EXPRESSION NOT NAME==\"W*\"\nLOOK\nCLICK IDOK\n");
    EXPECT_TRUE(contains(text, L"This expression says more than the table can show."));
    idle();
    EXPECT_EQ(names().size(), 12);
    EXPECT_EQ(failures, Lines());
}

TEST(FilterTable, ReadsWhatATableCanSayAndNothingElse) {
    KvFilterTable table;
    for (const char* const said :
         {"NAME==\"A*\"", "NAME==\"A*\" OR NAME==\"B*\"",
          "NAME==\"A\" AND ON==\"True\" AND COLOR==\"1,2,3\" OR FROZEN==\"False\""}) {
        ASSERT_TRUE(tableOf(said, table)) << said;
        EXPECT_EQ(expressionOf(table), said);
    }
    EXPECT_TRUE(tableOf("((name == \"A*\") and (Plot==true)) or (\tSTATUS==used )", table));
    EXPECT_EQ(expressionOf(table), "NAME==\"A*\" AND PLOTTABLE==\"True\" OR STATUS==\"Used\"");
    EXPECT_TRUE(tableOf("  ", table));
    EXPECT_TRUE(table.empty());
    for (const char* const other : {"NOT NAME==\"A\"", "NAME!=\"A\"", "NAME==\"A\" AND NAME==\"B\"",
                                    "(NAME==\"A\" OR NAME==\"B\") AND ON==True", "NAME==\"A",
                                    "NAME==", "==", "(", ")", "NAME==\"A\")", "NAME==\"A\" OR", "WHAT==\"A\"",
                                    "ON==\"Maybe\"", "NAME==\"\"", "NAME=\"A\"", "NAME==\"A\" NAME==\"B\""}) {
        EXPECT_FALSE(tableOf(other, table)) << other;
    }
}

/// Drawings with more filters than layers.
class ExcessFilters : public FilterTree {
protected:
    void SetUp() override { PaletteTest::SetUp(); }
    void addFilters(int count) {
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        database().layerFilterManager()->getFilters(root, selected);
        const std::unique_ptr<HxLyLayerFilter> owner(root);
        for (int i = 0; i < count; ++i) {
            auto* const filter = i % 2 ? new HxLyLayerFilter : new HxLyLayerGroup;
            filter->setName((L"F" + std::to_wstring(i)).c_str());
            root->addNested(filter);
        }
        ASSERT_EQ(database().layerFilterManager()->setFilters(root, root), Hx::eOk);
    }
};

TEST_F(ExcessFilters, AreNoneWhileThereAreFew) {
    addFilters(120);
    showPalette();
    EXPECT_EQ(filterCount(), 120);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ExcessFilters, AnswerDecides) {
    addFilters(200);
    std::wstring asked = run(L"LAYERPALETTE\nNo\n");
    EXPECT_TRUE(
        contains(asked, L"Layer - Excess Layer Filters: There are more layer filters in this drawing"));
    EXPECT_TRUE(contains(asked, L"Choose no to retain all layer filters [Yes/No]"));
    EXPECT_EQ(filterCount(), 200);
    linker().unloadModule(kModule);
    load();
    run(L"LAYERPALETTE\nYes\n");
    EXPECT_EQ(filterCount(), 0);
    run(L"U\n");
    EXPECT_EQ(filterCount(), 200);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ExcessFilters, AreNoneWhenThereAreMoreLayers) {
    addFilters(200);
    std::wstring layers;
    for (int i = 0; i < 300; ++i) {
        layers += (i ? L",L" : L"L") + std::to_wstring(i);
    }
    run(L"-LAYER N " + layers + L"\n\nLAYERPALETTE\n");
    EXPECT_EQ(filterCount(), 200);
    EXPECT_EQ(failures, Lines());
}

TEST_F(ExcessFilters, GoSilentlyOrStayAsTheVariableSays) {
    addFilters(3);
    run(L"LAYERFILTERALERT 0\nLAYERPALETTE\n");
    EXPECT_EQ(filterCount(), 3);
    linker().unloadModule(kModule);
    load();
    run(L"LAYERFILTERALERT 1\nCLASSICLAYER\nCLICK IDCANCEL\n");
    EXPECT_EQ(filterCount(), 3) << "the dialog's Cancel takes back that, too";
    run(L"LAYERPALETTE\n");
    EXPECT_EQ(filterCount(), 0);
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
