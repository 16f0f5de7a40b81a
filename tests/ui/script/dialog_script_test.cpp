// Scripts that work in dialogs, as a user would with mouse and keyboard.
#include "tests/ui/dialogs/trial_dialog.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QTimer>

namespace korvex::test {
namespace {

class DialogScriptTest : public DialogTest {
protected:
    void expectFailure(const std::wstring& part) {
        ASSERT_FALSE(failures.empty()) << "expected: " << QString::fromStdWString(part).toStdString();
        EXPECT_TRUE(contains(failures.front(), part))
            << QString::fromStdWString(failures.front()).toStdString();
        failures.clear();
    }
    TrialDialog dialog;
};

#define EXPECT_CONTAINS(text, part) \
    EXPECT_TRUE(contains(text, part)) << QString::fromStdWString(text).toStdString()

TEST_F(DialogScriptTest, ClicksCellsByNumbersAndTexts) {
    dialog.initialise = [&] { dialog.table->setEditTriggers(QAbstractItemView::NoEditTriggers); };
    runDialog(dialog, L"CLICK IDC_TABLE 2,3\n"
                      L"CLICK IDC_TABLE A-DOOR,Colour\n"
                      L"CLICK IDC_TABLE Wände\n"
                      L"CLICK IDC_TABLE double 1,1\n"
                      L"CLICK IDC_TABLE left 1,Name\n"
                      L"CLICK IDC_TABLE shift 3,1\n"
                      L"LOOK IDC_TABLE\n"
                      L"CLICK IDC_TABLE ctrl 2,1\n"
                      L"CLICK IDCANCEL\n");
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(dialog.clicks, (QStringList{"cell 1 2", "cell 1 2", "cell 2 0", "cell 0 0", "double 0 0",
                                          "cell 0 0", "cell 2 0", "cell 1 0"}));
    EXPECT_EQ(dialog.table->selectionModel()->selectedRows().size(), 2);
}

TEST_F(DialogScriptTest, CountsWhatIsShown) {
    dialog.initialise = [&] {
        dialog.table->setRowHidden(0, true);
        dialog.table->setColumnHidden(1, true);
        dialog.table->horizontalHeader()->moveSection(2, 0);
    };
    const std::wstring shown =
        runDialog(dialog, L"CLICK IDC_TABLE 1,1\nLOOK IDC_TABLE\nLOOK IDC_TABLE 2,Name\nEND\n");
    EXPECT_EQ(dialog.clicks, QStringList("cell 1 2"));
    EXPECT_CONTAINS(shown,
                    L"IDC_TABLE: Colour | Name\n  1: colour 2 | A-DOOR  (selected)\n  2: colour 3 | Wände\n");
    EXPECT_CONTAINS(shown, L"IDC_TABLE 2,Name: \"Wände\"");
}

TEST_F(DialogScriptTest, ClicksHeadersTabsAndPixels) {
    dialog.initialise = [&] {
        dialog.table->setSortingEnabled(true);
        dialog.table->sortByColumn(1, Qt::AscendingOrder);
    };
    const std::wstring shown = runDialog(dialog, L"CLICK IDC_TABLE/header Name\n"
                                                 L"LOOK IDC_TABLE/header\n"
                                                 L"CLICK IDC_TABLE @5,5\n"
                                                 L"CLICK IDC_TABS Tree\n"
                                                 L"CHOOSE IDC_TREE Walls/Doors\n"
                                                 L"LOOK IDC_TREE\n"
                                                 L"CLICK IDC_TABS 1\n"
                                                 L"LOOK IDC_TABS\n"
                                                 L"END\n");
    EXPECT_TRUE(failures.empty());
    EXPECT_CONTAINS(shown, L"Name (ascending) | On | Colour");
    EXPECT_EQ(dialog.clicks, QStringList("cell 0 0"));
    EXPECT_CONTAINS(shown, L"IDC_TREE: Name\n  1: Walls\n  2:   Windows\n  3:   Doors  (selected)\n");
    EXPECT_CONTAINS(shown, L"IDC_TABS: \"Table\" of \"Table\" | \"Tree\"");
}

TEST_F(DialogScriptTest, TypesAndPressesKeys) {
    QString seen;
    dialog.translate = [&](QObject*, QEvent* event) {
        seen += event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->text() : QString();
        return false;
    };
    const std::wstring shown = runDialog(dialog, L"TYPE IDC_NAME Plan  B, größer \n"
                                                 L"LOOK IDC_NAME\n"
                                                 L"PRESS IDC_NAME Home Del Del Shift+End Ctrl+C\n"
                                                 L"PRESS focus End Space\n"
                                                 L"TYPE focus 😀\n"
                                                 L"LOOK IDC_NAME\n"
                                                 L"TYPE IDC_KIND  x\n"
                                                 L"LOOK IDC_KIND\n"
                                                 L"PRESS IDC_NAME Enter\n");
    EXPECT_EQ(result, IDOK);
    EXPECT_TRUE(failures.empty());
    EXPECT_CONTAINS(shown, L"IDC_NAME: \"Plan  B, größer \"");
    EXPECT_CONTAINS(shown, L"IDC_NAME: \"an  B, größer  \U0001F600\"");
    EXPECT_TRUE(seen.startsWith("Plan  B, gr"));
    EXPECT_CONTAINS(shown, L"IDC_KIND: \"Walls x\"");
}

TEST_F(DialogScriptTest, UsesMnemonics) {
    runDialog(dialog, L"PRESS window Alt+F\nPRESS window Alt+N\nTYPE focus ab\nCLICK IDOK\n");
    EXPECT_EQ(dialog.frozen, 1);
    EXPECT_EQ(dialog.name->text(), "ab");
}

TEST_F(DialogScriptTest, TicksAndChooses) {
    std::vector<int> changes;
    dialog.initialise = [&] {
        QObject::connect(dialog.GetDlgItem<QComboBox>("IDC_KIND"), QOverload<int>::of(&QComboBox::activated),
                         [&](int at) { changes.push_back(at); });
    };
    const std::wstring shown = runDialog(dialog, L"TICK IDC_FROZEN 1\n"
                                                 L"TICK IDC_FROZEN 1\n"
                                                 L"LOOK IDC_FROZEN\n"
                                                 L"TICK IDC_TABLE A-DOOR,On 1\n"
                                                 L"LOOK IDC_TABLE\n"
                                                 L"CHOOSE IDC_KIND windows\n"
                                                 L"LOOK IDC_KIND\n"
                                                 L"CLICK IDOK\n");
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(dialog.frozen, 1);
    EXPECT_EQ(dialog.table->item(1, 1)->checkState(), Qt::Checked);
    EXPECT_EQ(changes, std::vector<int>{1});
    EXPECT_CONTAINS(shown, L"IDC_FROZEN: \"Frozen\" ticked");
    EXPECT_CONTAINS(shown, L"2: A-DOOR | [x] | colour 2");
    EXPECT_CONTAINS(shown, L"IDC_KIND: \"Windows\" of \"Walls\" | \"Windows\"");
}

TEST_F(DialogScriptTest, AnswersContextMenus) {
    const std::wstring shown = runDialog(dialog, L"CLICK IDC_TABLE right 2,1\n"
                                                 L"LOOK menu\n"
                                                 L"CHOOSE menu Delete\n"
                                                 L"CHOOSE menu Rename\n"
                                                 L"CLICK IDC_TABLE right 2,1\n"
                                                 L"CHOOSE menu New/Group filter\n"
                                                 L"CLICK IDC_TABLE right 2,1\n"
                                                 L"CLICK ID_RENAME\n"
                                                 L"CLICK IDC_TABLE right 2,1\n"
                                                 L"\x1b\n"
                                                 L"CLICK IDC_TABLE right 2,1\n"
                                                 L"PRESS menu Down Enter\n"
                                                 L"END 8\n");
    EXPECT_EQ(result, 8);
    QStringList menus = dialog.clicks;
    EXPECT_EQ(menus.filter("menu"), (QStringList{"menu ID_RENAME", "menu ID_NEW_GROUP", "menu ID_RENAME",
                                                 "menu nothing", "menu ID_RENAME"}));
    EXPECT_CONTAINS(shown, L"\"Rename\" | \"Delete\" disabled | \"New\"");
    EXPECT_EQ(failures.size(), 1U);
    expectFailure(L"\"Delete\" is disabled");
}

TEST_F(DialogScriptTest, GoesIntoNestedDialogsAndBoxes) {
    TrialDialog inner("IDD_TRIAL", &dialog);
    QList<int> results;
    inner.more = [&] { results << inner.MessageBox(L"Really?", nullptr, MB_YESNO); };
    dialog.more = [&] {
        results << inner.DoModal();
        results << dialog.MessageBox(L"Done.");
    };
    const std::wstring shown = runDialog(dialog, L"CLICK IDC_NESTED\n"
                                                 L"TYPE IDC_NAME inner\n"
                                                 L"CLICK IDC_NESTED\n"
                                                 L"Yes\n"
                                                 L"CLICK IDOK\n"
                                                 L"\n"
                                                 L"TYPE IDC_NAME outer\n"
                                                 L"\n"
                                                 L"CLICK IDOK\n"
                                                 L"CIRCLE 5,5 2\n");
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(results, (QList<int>{IDYES, IDOK, IDOK}));
    EXPECT_EQ(inner.name->text(), "inner");
    EXPECT_EQ(dialog.name->text(), "outer");
    EXPECT_EQ(result, IDOK);
    EXPECT_EQ(entities(), 1) << "commands go on after the dialog";
    EXPECT_CONTAINS(shown, L"Trial Layers: CLICK IDC_NESTED");
}

TEST_F(DialogScriptTest, WaitsForWorkThatShowsItsProgress) {
    dialog.more = [&] {
        QDialog progress(&dialog);
        progress.setModal(true);
        progress.show();
        for (int i = 0; i < 5; ++i) {
            QTest::qSleep(10);
            QCoreApplication::processEvents();
        }
        dialog.name->setText("done");
    };
    const std::wstring shown = runDialog(dialog, L"CLICK IDC_NESTED\nLOOK IDC_NAME\nEND\n");
    EXPECT_TRUE(failures.empty());
    EXPECT_CONTAINS(shown, L"IDC_NAME: \"done\"");
}

TEST_F(DialogScriptTest, ClosesWhatIsOpenWhenTheScriptEnds) {
    dialog.more = [&] { dialog.MessageBox(L"Really?", nullptr, MB_YESNO); };
    runDialog(dialog, L"CLICK IDC_NESTED\n");
    EXPECT_EQ(result, IDCANCEL);
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_TRUE(contains(failures[0], L"No is taken"));
    EXPECT_TRUE(contains(failures[1], L"while the dialog \"Trial Layers\" was open"));

    class Stubborn : public TrialDialog {
        void OnCancel() override {}
    } stubborn;
    failures.clear();
    runDialog(stubborn, L"");
    EXPECT_EQ(result, IDCANCEL);
    EXPECT_EQ(failures.size(), 1U);
}

TEST_F(DialogScriptTest, TellsWhatCannotBeDone) {
    dialog.initialise = [&] {
        dialog.GetDlgItem("IDHELP")->setEnabled(false);
        dialog.GetDlgItem("IDC_KIND_LABEL")->hide();
        auto* const twin = new QLineEdit(dialog.GetDlgItem("IDC_TABS"));
        twin->setObjectName("IDC_FROZEN");
        twin->show();
    };
    const struct {
        const wchar_t* line;
        const wchar_t* part;
    } cases[] = {
        {L"CLICK IDC_NAM", L"Names that are near: IDC_NAME"},
        {L"CLICK nonsense", L"There is no control \"nonsense\" in Trial Layers. LOOK alone lists the names."},
        {L"CLICK IDHELP", L"IDHELP is disabled"},
        {L"CLICK IDC_KIND_LABEL", L"IDC_KIND_LABEL is not shown"},
        {L"CLICK IDC_FROZEN", L"Put a parent before it: IDD_TRIAL/IDC_FROZEN, "},
        {L"CLICK IDC_TABLE 4,1", L"shows no cell \"4,1\""},
        {L"CLICK IDC_TABLE 1,Size", L"shows no cell"},
        {L"CLICK IDC_NAME 900,1", L"900,1 is outside of IDC_NAME"},
        {L"CLICK IDC_NAME here", L"\"here\" is no place in IDC_NAME"},
        {L"CLICK", L"The name of a control is missing"},
        {L"CHOOSE IDC_KIND Roofs", L"IDC_KIND has no item \"Roofs\""},
        {L"TICK IDC_NAME 1", L"IDC_NAME cannot be ticked"},
        {L"TICK IDC_TABLE 1,Name 1", L"cannot be ticked"},
        {L"TICK IDC_TABLE yes", L"is no tick"},
        {L"PRESS IDC_NAME Hyper", L"There is no key \"Hyper\""},
        {L"PICTURE", L"The name of the picture file is missing"},
        {L"PICTURE /nowhere/a.png", L"cannot be written"},
        {L"DELAY soon", L"is no time to wait"},
        {L"END soon", L"is no result"},
        {L"LINE 0,0 1,1", L"\"LINE 0,0 1,1\" is nothing that can be done while the dialog \"Trial Layers\" "
                          L"is open. Use one of PICTURE"},
    };
    for (const auto& [line, part] : cases) {
        runDialog(dialog, std::wstring(line) + L"\nEND\n");
        expectFailure(part);
    }
}

TEST_F(DialogScriptTest, DoesNotReachWindowsThatADialogBlocks) {
    QWidget palette;
    QPushButton button("Delete", &palette);
    button.setObjectName("IDC_PALETTE_BUTTON");
    palette.show();
    runDialog(dialog, L"CLICK IDC_PALETTE_BUTTON\nEND\n");
    expectFailure(L"There is no control \"IDC_PALETTE_BUTTON\"");
}

TEST_F(DialogScriptTest, TakesPictures) {
    const std::wstring whole = path("whole.png");
    const std::wstring part = path("a table.png");
    const std::wstring shown =
        runDialog(dialog, L"PICTURE " + whole + L"\nPICTURE \"" + part + L"\" IDC_TABLE\nLOOK\nEND\n");
    const QImage image(QString::fromStdWString(whole));
    EXPECT_EQ(image.size(), dialog.size() * dialog.devicePixelRatioF());
    EXPECT_TRUE(hasContent(image));
    const QImage table(QString::fromStdWString(part));
    EXPECT_EQ(table.size(), dialog.table->size() * dialog.devicePixelRatioF());
    EXPECT_TRUE(hasContent(table));
    EXPECT_CONTAINS(shown, L"Trial Layers\n");
    EXPECT_CONTAINS(shown, L"  IDC_NAME_LABEL: \"&Name:\"\n");
}

TEST_F(DialogScriptTest, WorksInDialogsThatAreNotTheHosts) {
    QStringList files;
    define(L"SHOW", [&] {
        QFileDialog chooser(nullptr, "Import", QString::fromStdWString(path("")));
        chooser.setOption(QFileDialog::DontUseNativeDialog);
        chooser.setFileMode(QFileDialog::AnyFile);
        files = chooser.exec() ? chooser.selectedFiles() : QStringList();
    });
    run(L"SHOW\nTYPE fileNameEdit plan.las\nCLICK Open\n");
    EXPECT_TRUE(failures.empty());
    ASSERT_EQ(files.size(), 1);
    EXPECT_TRUE(files[0].endsWith("/plan.las"));
    run(L"SHOW\nCLICK Cancel\n");
    EXPECT_TRUE(files.isEmpty());
}

TEST_F(DialogScriptTest, LeavesDialogsToAUserWhoSitsThere) {
    QTimer::singleShot(60, &dialog, [&] { dialog.end(5); });
    EXPECT_EQ(dialog.DoModal(), 5);
    EXPECT_TRUE(failures.empty());
}

class WindowScriptTest : public DialogTest {
protected:
    WindowScriptTest() : button("&Freeze", &window), edit(&window) {
        button.setObjectName("IDC_FREEZE");
        edit.setObjectName("IDC_FILTER");
        edit.move(0, 60);
        window.setObjectName("Palette");
        window.resize(300, 200);
        window.show();
    }
    QWidget window;
    QPushButton button;
    QLineEdit edit;
};

TEST_F(WindowScriptTest, WorksInWindowsFromTheCommandPrompt) {
    QObject::connect(&button, &QPushButton::clicked, [&] {
        edit.setText(hxuiMessageBox(nullptr, L"Freeze?", nullptr, MB_YESNO) == IDYES ? "y" : "n");
    });
    const std::wstring shown =
        run(L"CLICK Palette/IDC_FREEZE\nYes\nLOOK IDC_FILTER\nPICTURE " + path("p.png") +
            L"\nTYPE IDC_FILTER es\nLOOK IDC_FILTER\nCIRCLE 5,5 'CLICK freeze\nNo\n2\n");
    EXPECT_TRUE(failures.empty());
    EXPECT_CONTAINS(shown, L"IDC_FILTER: \"y\"");
    EXPECT_CONTAINS(shown, L"IDC_FILTER: \"yes\"");
    EXPECT_EQ(edit.text(), "n");
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(QImage(picture("p.png")).size(), window.size() * window.devicePixelRatioF());
    run(L"U\n");
    EXPECT_EQ(entities(), 0) << "actions are no undo steps";
}

TEST_F(WindowScriptTest, FailsAtTheCommandPromptWithNearNames) {
    run(L"CLICK IDC_FREZE\n");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"Names that are near: IDC_FREEZE."));
    run(L"END 1\n");
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_TRUE(contains(failures[1], L"No dialog or menu is open"));
}

}  // namespace
}  // namespace korvex::test
