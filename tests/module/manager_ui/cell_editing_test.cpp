// Editing layers in the cells of the palette's grid, with mouse, keys and answers of a script.
#include "tests/module/manager_ui/palette_fixture.h"

#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_model.h"

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>

namespace korvex::test {
namespace {

class CellEditing : public PaletteTest {
protected:
    void SetUp() override {
        PaletteTest::SetUp();
        showPalette();
        grid()->setFocus();
    }

    QPoint place(const QString& layer, int column) {
        const QModelIndex at = grid()->model()->index(static_cast<int>(names().indexOf(layer)), column);
        grid()->scrollTo(at);
        return grid()->visualRect(at).center();
    }
    void click(const QString& layer, int column, Qt::KeyboardModifiers keys = Qt::NoModifier) {
        QTest::mouseClick(grid()->viewport(), Qt::LeftButton, keys, place(layer, column));
    }
    void select(const QStringList& layers) {
        Qt::KeyboardModifiers keys = Qt::NoModifier;
        for (const QString& layer : layers) {
            click(layer, kColName, keys);
            keys = Qt::ControlModifier;
        }
        ASSERT_EQ(selected(), layers);
    }
    QStringList selected() {
        QStringList all;
        for (const QModelIndex& at : grid()->selectionModel()->selectedRows(kColName)) {
            all << at.data().toString();
        }
        all.sort();
        return all;
    }
    QStringList cells(const QStringList& layers, int column) {
        QStringList all;
        for (const QString& layer : layers) {
            all << row(layer)[column];
        }
        return all;
    }
    /// A click whose box or picker the script's next lines answer; what the dialogue showed comes back.
    std::wstring clickAnd(const std::wstring& cell, const std::wstring& answers) {
        return run(L"CLICK IDC_LIST_LAYERS_LIST \"" + cell + L"\"\n" + answers);
    }
    /// Null when none is open.
    QLineEdit* openEditor() {
        for (QLineEdit* const editor : grid()->viewport()->findChildren<QLineEdit*>()) {
            if (editor->isVisible()) return editor;
        }
        return nullptr;
    }
    /// Types into the editor that is open.
    void type(const QString& text, Qt::Key end = Qt::Key_Return) {
        QLineEdit* const editor = openEditor();
        ASSERT_TRUE(editor);
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, end);
        QCoreApplication::processEvents();  // the editor closes after the key
    }
    void rename(const QString& layer, const QString& text, Qt::Key end = Qt::Key_Return) {
        click(layer, kColName);
        QTest::keyClick(grid(), Qt::Key_F2);
        type(text, end);
        idle();
    }
};

TEST_F(CellEditing, SelectedLayersGetWhatTheClickedOneIsNot) {
    run(L"-LAYER OFF NOTES\n\n");
    idle();
    const QStringList three{"INNER", "NOTES", "WALLS"};
    select(three);
    click("NOTES", kColOn);
    EXPECT_EQ(cells(three, kColOn), (QStringList{"On", "On", "On"}));
    EXPECT_EQ(selected(), three) << "a click on a cell keeps the rows";
    click("NOTES", kColLock);
    click("NOTES", kColPlot);
    click("NOTES", kColNewVpFreeze);
    EXPECT_EQ(cells(three, kColLock), (QStringList{"Locked", "Locked", "Locked"}));
    EXPECT_EQ(cells(three, kColPlot), (QStringList{"Does not plot", "Does not plot", "Does not plot"}));
    EXPECT_EQ(row("WALLS")[kColNewVpFreeze], "Frozen in new viewports");
    EXPECT_EQ(row("OUTER")[kColLock], "Unlocked");
    click("OUTER", kColLock);
    EXPECT_EQ(selected(), QStringList{"OUTER"}) << "a row that is not selected is selected by the click";
    click("OUTER", kColOn, Qt::ControlModifier);
    EXPECT_EQ(row("OUTER")[kColOn], "On") << "Ctrl selects";
}

TEST_F(CellEditing, EachClickIsOneStepWithAName) {
    select({"INNER", "NOTES", "WALLS"});
    click("WALLS", kColLock);
    click("WALLS", kColFreeze);
    const std::wstring undone = run(L"U\n");
    EXPECT_TRUE(contains(undone, L"Layers: Freeze")) << QString::fromStdWString(undone).toStdString();
    idle();
    EXPECT_EQ(cells({"INNER", "NOTES", "WALLS"}, kColFreeze), (QStringList{"Thawed", "Thawed", "Thawed"}));
    EXPECT_EQ(cells({"INNER", "NOTES", "WALLS"}, kColLock), (QStringList{"Locked", "Locked", "Locked"}));
    EXPECT_TRUE(contains(run(L"U\n"), L"Layers: Lock"));
    idle();
    EXPECT_EQ(row("WALLS")[kColLock], "Unlocked");
}

TEST_F(CellEditing, TheCurrentLayerStaysThawedAndIsAskedAbout) {
    select({"NOTES", "SPARE"});
    std::wstring told = clickAnd(L"NOTES,Freeze", L"OK\n");
    EXPECT_TRUE(contains(told, L"KORVEX: Layer \"SPARE\" is the current layer and cannot be frozen. Make "
                               L"another layer current first. [OK]"));
    EXPECT_EQ(cells({"NOTES", "SPARE"}, kColFreeze), (QStringList{"Frozen", "Thawed"}));
    told = clickAnd(L"NOTES,On", L"No\n");
    EXPECT_TRUE(contains(told, L"KORVEX: Layer \"SPARE\" is the current layer. Do you want to turn it off? "
                               L"[Yes/No]"));
    EXPECT_EQ(cells({"NOTES", "SPARE"}, kColOn), (QStringList{"Off", "On"}));
    clickAnd(L"SPARE,On", L"Yes\n");
    EXPECT_EQ(cells({"NOTES", "SPARE"}, kColOn), (QStringList{"Off", "Off"}));
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, FreezingDropsWhatIsSelectedInTheDrawing) {
    const HxDbObjectPointer<HxDbBlockTableRecord> space(database().modelSpaceId(), HxDb::kForRead);
    HxDbBlockTableRecordIterator* steps = nullptr;
    space->newIterator(steps);
    const std::unique_ptr<HxDbBlockTableRecordIterator> owner(steps);
    HxDbObjectId line;
    ASSERT_EQ(steps->getEntityId(line), Hx::eOk);
    HxArray<HxDbObjectId> picked;
    picked.append(line);
    const auto count = [] {
        HxArray<HxDbObjectId> now;
        hxedPickFirstProcessor()->getSelection(now);
        return now.length();
    };
    hxedPickFirstProcessor()->setSelection(picked);
    click("WALLS", kColLock);
    EXPECT_EQ(count(), 1);
    click("WALLS", kColFreeze);
    EXPECT_EQ(count(), 0);
}

TEST_F(CellEditing, PickersSetAllSelectedLayers) {
    select({"NOTES", "WALLS"});
    clickAnd(L"WALLS,Color", L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT green\nCLICK IDOK\n");
    EXPECT_EQ(cells({"NOTES", "WALLS"}, kColColor), (QStringList{"Green", "Green"}));
    clickAnd(L"WALLS,Color", L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT red\nCLICK IDCANCEL\n");
    EXPECT_EQ(row("WALLS")[kColColor], "Green");
    clickAnd(L"WALLS,Lineweight", L"CHOOSE IDC_LW_LIST \"0.50 mm\"\nCLICK IDOK\n");
    EXPECT_EQ(cells({"NOTES", "WALLS"}, kColLineweight), (QStringList{"0.50 mm", "0.50 mm"}));
    const std::wstring shown =
        clickAnd(L"WALLS,Lineweight", L"LOOK IDC_LW_LIST\nPRESS IDC_LW_LIST Home\nPRESS IDC_LW_LIST Enter\n");
    EXPECT_TRUE(contains(shown, L"0.50 mm  (selected)")) << QString::fromStdWString(shown).toStdString();
    EXPECT_EQ(row("NOTES")[kColLineweight], "Default");
    for (const wchar_t* const percent : {L"0", L"50", L"90"}) {
        clickAnd(L"WALLS,Transparency", std::wstring(L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE ") +
                                            percent + L"\nCLICK IDOK\n");
        EXPECT_EQ(row("NOTES")[kColTransparency], QString::fromWCharArray(percent));
    }
    const HxDbObjectPointer<HxDbLayerTableRecord> notes(layer(L"NOTES"), HxDb::kForRead);
    EXPECT_EQ(notes->transparency().alpha(), 25);
    EXPECT_TRUE(
        contains(clickAnd(L"WALLS,Linetype", L"LOOK IDC_LINETYPE_LIST\nCLICK IDOK\n"), L"Continuous"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, PlotStylesThatFollowColorsHaveNoPicker) {
    clickAnd(L"WALLS,Plot Style", L"");
    EXPECT_EQ(row("WALLS")[kColPlotStyle], "Color_7");
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, NamedPlotStylesArePicked) {
    SmallDrawing drawing;
    drawing.useNamedPlotStyles();
    drawing.model(drawing.line("A", 0, 0, 1, 0) + drawing.line("B", 0, 1, 1, 1));
    drawing.paper(drawing.viewport(1, 150, 100, 300, 150, 100) + drawing.viewport(2, 100, 100, 100, 5, 0));
    write("styles.dxf", drawing.text());
    open("styles.dxf");
    run(L"LAYOUT S Layout1\nMSPACE\n");
    idle();
    select({"A", "B"});
    EXPECT_EQ(row("A")[kColPlotStyle], "Normal");
    clickAnd(L"B,Plot Style", L"CHOOSE IDC_PLOTSTYLE_LIST Screened\nCLICK IDOK\n");
    EXPECT_EQ(cells({"A", "B", "0"}, kColPlotStyle), (QStringList{"Screened", "Screened", "Normal"}));
    clickAnd(L"B,VP Plot Style", L"CHOOSE IDC_PLOTSTYLE_LIST Normal\nCLICK IDOK\n");
    idle();
    EXPECT_EQ(cells({"A", "B"}, kColVpPlotStyle), (QStringList{"Normal", "Normal"}));
    EXPECT_EQ(cells({"A", "B"}, kColPlotStyle), (QStringList{"Screened", "Screened"}));
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, LayersThatOthersHaveOpenAreLeftOut) {
    select({"NOTES", "WALLS"});
    {
        const HxDbObjectPointer<HxDbLayerTableRecord> held(layer(L"NOTES"), HxDb::kForWrite);
        click("WALLS", kColLock);
    }
    idle();
    EXPECT_EQ(cells({"NOTES", "WALLS"}, kColLock), (QStringList{"Unlocked", "Locked"}));
}

TEST_F(CellEditing, NothingIsEditedWhileACommandNeedsTheLayers) {
    const std::wstring told = run(L"-LAYER\n'CLICK IDC_LIST_LAYERS_LIST \"WALLS,Lock\"\nOK\n\n");
    EXPECT_TRUE(contains(told, L"[OK]")) << QString::fromStdWString(told).toStdString();
    idle();
    EXPECT_EQ(row("WALLS")[kColLock], "Unlocked");
    click("WALLS", kColLock);
    EXPECT_EQ(row("WALLS")[kColLock], "Locked");
}

TEST_F(CellEditing, NoEditorOpensWhileACommandNeedsTheLayers) {
    click("WALLS", kColName);
    std::wstring told = run(L"-LAYER\n'PRESS IDC_LIST_LAYERS_LIST F2\nOK\n\n");
    EXPECT_TRUE(contains(told, L"[OK]"));
    EXPECT_FALSE(openEditor());
    told = run(L"-LAYER\n'CLICK IDC_LIST_LAYERS_LIST double \"NOTES,Name\"\nOK\n\n");
    EXPECT_TRUE(contains(told, L"[OK]"));
    EXPECT_EQ(variable(L"CLAYER"), L"\"SPARE\"");
    told = run(L"-LAYER\n'CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\nOK\n\n");
    EXPECT_TRUE(contains(told, L"[OK]")) << "nor a menu";
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, BoxesSpeakGerman) {
    linker().unloadModule(kModule);
    qputenv("LC_ALL", "de_DE.UTF-8");
    load();
    showPalette();
    EXPECT_TRUE(
        contains(clickAnd(L"SPARE,Frieren", L"OK\n"),
                 L"Der Layer \"SPARE\" ist der aktuelle Layer und kann nicht gefroren werden. Setzen Sie "
                 L"zuerst einen anderen Layer aktuell. [OK]"));
    EXPECT_TRUE(contains(clickAnd(L"SPARE,Ein", L"No\n"),
                         L"Der Layer \"SPARE\" ist der aktuelle Layer. Soll er "
                         L"ausgeschaltet werden? [Yes/No]"));
    const auto rename = [this](const std::wstring& name) {
        return run(
            L"CLICK IDC_LIST_LAYERS_LIST WALLS,Name\nPRESS IDC_LIST_LAYERS_LIST F2\nPRESS focus Ctrl+A\n"
            L"TYPE focus " +
            name + L"\nPRESS focus Enter\nOK\n");
    };
    EXPECT_TRUE(contains(rename(L"A*"), L"\"A*\" kann kein Layername sein."));
    EXPECT_TRUE(contains(rename(L"NOTES"),
                         L"Der Layer kann nicht \"NOTES\" hei\u00dfen: Ein anderer Layer hat "
                         L"diesen Namen. W\u00e4hlen Sie einen anderen Namen. [OK]"));
    EXPECT_TRUE(contains(rename(std::wstring(256, L'A')), L"h\u00f6chstens 255 Zeichen lang sein. [OK]"));
    EXPECT_TRUE(contains(run(L"-LAYER\n'CLICK IDC_LIST_LAYERS_LIST \"WALLS,Sperren\"\nOK\n\n"), L"[OK]"));
    EXPECT_EQ(failures, Lines());
    qputenv("LC_ALL", "C");
}

TEST_F(CellEditing, CutCellsAndIconsHaveToolTips) {
    const auto tip = [this](const QString& layer, int column) {
        const QPoint at = place(layer, column);
        QHelpEvent event(QEvent::ToolTip, at, grid()->viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid()->viewport(), &event);
        return QToolTip::text();
    };
    EXPECT_EQ(tip("TOP", kColName), "") << "it is all there";
    EXPECT_EQ(tip("WALLS", kColFreeze), "Thawed");
    grid()->setColumnWidth(kColName, 30);
    EXPECT_EQ(tip("WALLS", kColName), "WALLS");
    QToolTip::hideText();
    QHeaderView& header = *grid()->horizontalHeader();
    const QPoint border(header.sectionViewportPosition(kColName) + 29, header.height() / 2);
    QTest::mouseMove(header.viewport(), border);
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, Qt::NoModifier, border);
    EXPECT_GT(grid()->columnWidth(kColName), 60) << "a double click on the border fits the column";
}

TEST_F(CellEditing, ADoubleClickMakesTheLayerCurrent) {
    const auto twice = [&](const QString& layer) {
        click(layer, kColName);
        QTest::mouseDClick(grid()->viewport(), Qt::LeftButton, Qt::NoModifier, place(layer, kColName));
    };
    twice("WALLS");
    EXPECT_EQ(row("WALLS")[kColStatus], "Current layer");
    EXPECT_NE(row("SPARE")[kColStatus], "Current layer");
    twice("PLAN|WALLS");
    EXPECT_EQ(row("WALLS")[kColStatus], "Current layer");
    run(L"-LAYER FREEZE NOTES\n\n");
    idle();
    twice("NOTES");
    EXPECT_EQ(row("WALLS")[kColStatus], "Current layer");
    EXPECT_TRUE(contains(run(L"U\nU\n"), L"Make Layer WALLS Current"));
    idle();
    EXPECT_EQ(row("SPARE")[kColStatus], "Current layer");
}

TEST_F(CellEditing, NamesAreTypedIntoTheirCells) {
    rename("WALLS", "  Stein  ");
    EXPECT_TRUE(hasLayer(L"Stein"));
    EXPECT_EQ(row("Stein")[kColName], "Stein");
    EXPECT_EQ(row("WALLS"), Row());
    rename("Stein", "Other", Qt::Key_Escape);
    EXPECT_TRUE(hasLayer(L"Stein"));
    rename("Stein", "stein", Qt::Key_Tab);
    EXPECT_EQ(row("stein")[kColName], "stein");
    EXPECT_TRUE(contains(run(L"U\nU\n"), L"Rename Layer to Stein"));
    idle();
    EXPECT_NE(row("WALLS"), Row());
    click("WALLS", kColDescription);
    QTest::keyClick(grid(), Qt::Key_F2);
    type("Bearing walls", Qt::Key_Return);
    EXPECT_EQ(row("WALLS")[kColDescription], "Bearing walls");
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, ASlowSecondClickOpensTheEditor) {
    click("WALLS", kColName);
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    EXPECT_FALSE(openEditor());
    click("WALLS", kColName);
    QTest::qWait(QApplication::doubleClickInterval() + 100);
    type("Mauer");
    EXPECT_TRUE(hasLayer(L"Mauer"));
}

TEST_F(CellEditing, NamesThatCannotBeAreRefused) {
    const auto refused = [this](const wchar_t* layer, const std::wstring& name) {
        return run(std::wstring(L"CLICK IDC_LIST_LAYERS_LIST ") + layer +
                   L",Name\nPRESS IDC_LIST_LAYERS_LIST F2\nPRESS focus Ctrl+A\nTYPE focus " + name +
                   L"\nPRESS focus Enter\nOK\n");
    };
    EXPECT_TRUE(contains(refused(L"WALLS", L"A*B"), L"\"A*B\" cannot be the name of a layer."));
    EXPECT_TRUE(contains(refused(L"WALLS", L"Notes"),
                         L"The layer cannot be named \"Notes\": another layer has that name."));
    run(L"EXTNAMES 0\n");
    EXPECT_TRUE(contains(refused(L"WALLS", std::wstring(32, L'A')), L"at most 31 characters"));
    rename("WALLS", QString(31, 'A'));
    EXPECT_TRUE(hasLayer(std::wstring(31, L'A').c_str()));
    run(L"U\nEXTNAMES 1\n");
    idle();
    EXPECT_TRUE(contains(refused(L"WALLS", std::wstring(256, L'A')), L"at most 255 characters"));
    EXPECT_TRUE(hasLayer(L"WALLS"));
    const auto fixed = [this](const wchar_t* layer) {
        return run(std::wstring(L"CLICK IDC_LIST_LAYERS_LIST ") + layer +
                   L",Name\nPRESS IDC_LIST_LAYERS_LIST F2\nOK\n");
    };
    EXPECT_TRUE(contains(fixed(L"0"), L"Layer \"0\" cannot be renamed: layer 0 and the layers of external "
                                      L"references keep their names."));
    EXPECT_TRUE(contains(fixed(L"PLAN|WALLS"), L"Layer \"PLAN|WALLS\" cannot be renamed"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(CellEditing, WhatIsTypedOutlivesChangesElsewhere) {
    click("WALLS", kColName);
    QTest::keyClick(grid(), Qt::Key_F2);
    QTest::keyClicks(openEditor(), "Mauer");
    run(L"-LAYER N Another\nLOCK WALLS\n\n");
    idle();
    EXPECT_EQ(row("Another"), Row()) << "waits for the editor";
    type("Mauer");
    idle();
    EXPECT_TRUE(hasLayer(L"Mauer"));
    EXPECT_EQ(row("Another")[kColName], "Another");
    EXPECT_EQ(row("Mauer")[kColLock], "Locked");
}

TEST_F(CellEditing, SpaceClicksTheCellWithTheFocus) {
    click("WALLS", kColName);
    QTest::keyClick(grid(), Qt::Key_Right);
    QTest::keyClick(grid(), Qt::Key_Right);
    QTest::keyClick(grid(), Qt::Key_Space);
    EXPECT_EQ(row("WALLS")[kColFreeze], "Frozen");
    EXPECT_EQ(selected(), QStringList{"WALLS"});
}

TEST_F(CellEditing, CopiesRowsAsText) {
    select({"NOTES", "WALLS"});
    QTest::keyClick(grid(), Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QApplication::clipboard()->text().split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_TRUE(lines[1].startsWith("In use\tWALLS\tOn\tThawed\tUnlocked\tWhite\tContinuous\tDefault\t0\t"))
        << lines[1].toStdString();
}

class ViewportEditing : public CellEditing {
protected:
    void SetUp() override {
        CellEditing::SetUp();
        run(L"LAYOUT S Layout1\nMSPACE\n");
        idle();
    }
};

TEST_F(ViewportEditing, AViewportOnALockedLayerWorks) {
    run(L"-LAYER LOCK 0\n\n");  // both viewports are on it
    idle();
    click("WALLS", kColVpFreeze);
    EXPECT_EQ(frozenHere(), Names{L"WALLS"});
}

TEST_F(ViewportEditing, WithThePaperCurrentItsCellsAreGreyAndSayWhy) {
    const auto isGrey = [this](int column) {
        return grid()->model()->index(1, column).data(kRoleGreyed).toBool();
    };
    const auto tip = [this](int column) {
        return grid()->model()->index(1, column).data(Qt::ToolTipRole).toString();
    };
    for (int column = kColVpFreeze; column <= kColVpTransparency; ++column) {
        EXPECT_EQ(isGrey(column), column == kColVpPlotStyle) << column;
    }
    EXPECT_TRUE(tip(kColVpPlotStyle).contains("plot styles follow the colors"));
    run(L"PSPACE\n");
    idle();
    for (int column = kColVpFreeze; column <= kColVpTransparency; ++column) {
        EXPECT_TRUE(isGrey(column)) << column;
        EXPECT_TRUE(tip(column).startsWith("The paper is current.")) << column;
    }
    EXPECT_FALSE(isGrey(kColColor));
    const QByteArray before = bytes();
    click("WALLS", kColVpFreeze);
    EXPECT_EQ(bytes(), before);
    const QPoint at = place("WALLS", kColVpFreeze);
    QHelpEvent event(QEvent::ToolTip, at, grid()->viewport()->mapToGlobal(at));
    QApplication::sendEvent(grid()->viewport(), &event);
    EXPECT_TRUE(QToolTip::text().startsWith("Thawed in the viewport\nThe paper is current."));
    QToolTip::hideText();
}

TEST_F(ViewportEditing, EveryPropertyHasItsCommand) {
    select({"NOTES", "WALLS"});
    const auto both = [this](int column) {
        idle();
        const Row notes = row("NOTES");
        EXPECT_EQ(notes[column], row("WALLS")[column]);
        EXPECT_NE(notes[kColStatus].indexOf("overrides"), -1);
        EXPECT_EQ(row("TOP")[kColStatus], "In use");
        return notes[column];
    };
    clickAnd(L"WALLS,VP Color", L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT 42\nCLICK IDOK\n");
    EXPECT_EQ(both(kColVpColor), "Color 42");
    clickAnd(L"WALLS,VP Color", L"CLICK IDC_COLOR_TABS Color Books\nCLICK IDC_COLOR_BOOK_COLORS 3\n"
                                L"CLICK IDOK\n");
    EXPECT_EQ(both(kColVpColor), "209,209,209");  // drawings keep no book names of overrides
    clickAnd(L"WALLS,VP Lineweight", L"CHOOSE IDC_LW_LIST Default\nCLICK IDOK\n");
    EXPECT_EQ(both(kColVpLineweight), "Default");
    run(L"LWUNITS 0\n");
    clickAnd(L"WALLS,VP Lineweight", L"CLICK IDC_LW_LIST 9\nCLICK IDOK\n");
    EXPECT_EQ(both(kColVpLineweight), "0.010 \"");
    run(L"LWUNITS 1\nREGEN\n");
    const HxDbObjectPointer<HxDbLayerTableRecord> walls(layer(L"WALLS"), HxDb::kForRead);
    bool isOverride = false;
    EXPECT_EQ(walls->lineWeight(hxedGetCurViewportObjectId(), isOverride), 25);
    clickAnd(L"WALLS,VP Linetype", L"CLICK IDC_LINETYPE_LOAD\nCLICK IDC_LINETYPE_AVAILABLE 2\nCLICK IDOK\n"
                                   L"CLICK IDC_LINETYPE_LIST 2\nCLICK IDOK\n");
    EXPECT_NE(both(kColVpLinetype), "Continuous");
    EXPECT_EQ(failures, Lines());
}

TEST_F(ViewportEditing, ViewportItemsOfTheMenuWorkOnTheSelectedLayers) {
    const auto pick = [this](const wchar_t* item) {
        run(std::wstring(L"CLICK IDC_LIST_LAYERS_LIST right \"WALLS,Name\"\nCHOOSE menu \"Viewport/") + item +
            L"\"\n");
        idle();
    };
    run(L"-LAYER N Odd\u0020one#\n\nVPLAYER COLOR 1 WALLS,NOTES\n\n\n");
    idle();
    select({"Odd one#", "WALLS"});
    pick(L"Freeze in All Viewports");
    EXPECT_EQ(frozenHere(), (Names{L"Odd one#", L"WALLS"}));
    run(L"U\n");
    EXPECT_EQ(frozenHere(), Names()) << "one step";
    pick(L"Freeze in All Viewports Except Current");
    EXPECT_EQ(frozenHere(), Names());
    pick(L"Remove Overrides in Current Viewport");
    EXPECT_EQ(row("WALLS")[kColVpColor], "White");
    EXPECT_EQ(row("NOTES")[kColVpColor], "Red");
    run(L"VPLAYER COLOR 1 WALLS\n\n\n");
    idle();
    EXPECT_EQ(row("WALLS")[kColVpColor], "Red");
    pick(L"Remove Overrides in All Viewports");
    EXPECT_EQ(row("WALLS")[kColVpColor], "White");
    EXPECT_EQ(failures, Lines());
}

TEST_F(ViewportEditing, FreezesInTheActiveViewport) {
    select({"NOTES", "WALLS"});
    click("WALLS", kColVpFreeze);
    EXPECT_EQ(frozenHere(), (Names{L"NOTES", L"WALLS"}));
    EXPECT_EQ(frozen(), Names());
    EXPECT_EQ(row("NOTES")[kColVpFreeze], "Frozen in the viewport");
    click("WALLS", kColVpFreeze);
    EXPECT_EQ(frozenHere(), Names());
    EXPECT_TRUE(contains(run(L"U\n"), L"Layers: VP Freeze"));
    EXPECT_EQ(frozenHere(), (Names{L"NOTES", L"WALLS"}));
    run(L"U\nPSPACE\n");
    idle();
    click("WALLS", kColVpFreeze);
    EXPECT_EQ(frozenHere(), Names()) << "the paper has no viewport to freeze in";
}

TEST_F(ViewportEditing, OverridesComeByOneCommandForAllLayers) {
    run(L"-LAYER N Odd#@~[1]-\u00e4 b\n\n");
    idle();
    const QString odd = "Odd#@~[1]-\u00e4 b";
    ASSERT_TRUE(hasLayer(odd.toStdWString().c_str()));
    select({odd, "WALLS"});
    clickAnd(L"WALLS,VP Color", L"CLICK IDC_COLOR_TABS True Color\nPRESS IDC_COLOR_RGB Ctrl+A\n"
                                L"TYPE IDC_COLOR_RGB 250,3,2\nCLICK IDOK\n");
    idle();
    EXPECT_EQ(cells({odd, "WALLS", "NOTES"}, kColVpColor), (QStringList{"250,3,2", "250,3,2", "White"}));
    EXPECT_EQ(row("WALLS")[kColColor], "White");
    clickAnd(L"WALLS,VP Lineweight", L"CHOOSE IDC_LW_LIST \"0.50 mm\"\nCLICK IDOK\n");
    idle();
    EXPECT_EQ(cells({odd, "WALLS", "NOTES"}, kColVpLineweight),
              (QStringList{"0.50 mm", "0.50 mm", "Default"}));
    clickAnd(L"WALLS,VP Transparency",
             L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE 40\nCLICK IDOK\n");
    idle();
    EXPECT_EQ(cells({odd, "WALLS", "NOTES"}, kColVpTransparency), (QStringList{"40", "40", "0"}));
    EXPECT_EQ(variable(L"NOMUTT"), L"0");
    EXPECT_EQ(failures, Lines());
    run(L"U\n");
    idle();
    EXPECT_EQ(row("WALLS")[kColVpTransparency], "0");
    EXPECT_EQ(row("WALLS")[kColVpLineweight], "0.50 mm");
}

}  // namespace
}  // namespace korvex::test
