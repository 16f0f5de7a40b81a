// Dialogs from layouts: texts, exchange, keys, ends, and layouts that are not there.
#include "tests/ui/dialogs/trial_dialog.h"

#include "host/base/dynamic_linker.h"

#include <QLabel>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>

namespace korvex::test {
namespace {

class BaseDialogTest : public DialogTest {
protected:
    /// Shows the dialog and does something when it is idle.
    int show(TrialDialog& dialog, const std::function<void()>& whenShown) {
        QTimer::singleShot(0, &dialog, whenShown);
        return dialog.DoModal();
    }
    static void press(QWidget* widget, Qt::Key key) { QTest::keyClick(widget, key); }
};

TEST_F(BaseDialogTest, TakesLayoutAndTextsFromTheResourceLibrary) {
    TrialDialog dialog;
    ASSERT_TRUE(dialog.hasLayout());
    EXPECT_EQ(dialog.windowTitle(), "Trial Layers");
    EXPECT_EQ(dialog.objectName(), "IDD_TRIAL");
    EXPECT_EQ(dialog.width(), 460);
    EXPECT_EQ(dialog.GetDlgItem<QLabel>("IDC_NAME_LABEL")->text(), "&Name:");
    EXPECT_EQ(dialog.GetDlgItem<QLabel>("IDC_NAME_LABEL")->buddy(), dialog.GetDlgItem("IDC_NAME"));
    EXPECT_EQ(dialog.GetDlgItem<QLabel>("IDC_KIND_LABEL")->text(), "Plain text");
    EXPECT_EQ(dialog.GetDlgItem<QLineEdit>("IDC_NAME")->placeholderText(), "a name");
    EXPECT_EQ(dialog.GetDlgItem<QComboBox>("IDC_KIND")->itemText(1), "Windows");
    EXPECT_EQ(dialog.GetDlgItem<QTabWidget>("IDC_TABS")->tabText(1), "Tree");
    const auto* const table = dialog.GetDlgItem<QTableWidget>("IDC_TABLE");
    EXPECT_EQ(table->horizontalHeaderItem(2)->text(), "Colour");
    EXPECT_EQ(table->horizontalHeaderItem(0)->toolTip(), "a name");
    const auto* const tree = dialog.GetDlgItem<QTreeWidget>("IDC_TREE");
    EXPECT_EQ(tree->headerItem()->text(0), "Name");
    EXPECT_EQ(tree->topLevelItem(0)->child(0)->text(0), "Windows");
    EXPECT_EQ(dialog.GetDlgItem("IDC_NAME")->toolTip(), "@999") << "a number that is missing is seen";
    EXPECT_TRUE(wasLogged(L"no string 999"));
}

TEST_F(BaseDialogTest, SpeaksTheUsersLanguage) {
    loadResources("de");
    const TrialDialog dialog;
    EXPECT_EQ(dialog.windowTitle(), "Probelayer");
    EXPECT_EQ(dialog.GetDlgItem<QCheckBox>("IDC_FROZEN")->text(), "Ge&froren");
    EXPECT_EQ(dialog.GetDlgItem<QPushButton>("IDHELP")->text(), "Help");
    const std::unique_ptr<QMenu> menu(hxuiLoadMenu("IDR_TRIAL_MENU"));
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->findChild<QAction*>("ID_RENAME")->text(), "&Umbenennen");
    EXPECT_EQ(menu->findChild<QMenu*>("ID_NEW")->title(), "&New");
}

TEST_F(BaseDialogTest, RefusesLayoutsThatAreMissingOrDamaged) {
    for (const char* layout : {"IDD_NONE", "IDD_DAMAGED"}) {
        logged.clear();
        TrialDialog dialog(layout);
        EXPECT_FALSE(dialog.hasLayout());
        EXPECT_EQ(dialog.DoModal(), -1);
        EXPECT_TRUE(wasLogged(QString(layout).toStdWString()));
    }
    EXPECT_EQ(hxuiLoadMenu("IDD_TRIAL"), nullptr);
    EXPECT_TRUE(wasLogged(L"is no menu"));
    hxSetResourceHandle(nullptr);
    EXPECT_FALSE(TrialDialog().hasLayout());
}

TEST_F(BaseDialogTest, ExchangesDataBothWays) {
    TrialDialog dialog;
    dialog.frozen = 2;
    EXPECT_EQ(show(dialog,
                   [&] {
                       auto* const box = dialog.GetDlgItem<QCheckBox>("IDC_FROZEN");
                       EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
                       box->setCheckState(Qt::Checked);
                       dialog.GetDlgItem<QPushButton>("IDOK")->click();
                   }),
              IDOK);
    EXPECT_EQ(dialog.frozen, 1);
    EXPECT_EQ(dialog.oks, 1) << "OK was connected once";
}

TEST_F(BaseDialogTest, NamesControlsThatAreMissingOrOfAnotherClass) {
    TrialDialog dialog;
    dialog.asksForAbsent = true;
    EXPECT_FALSE(dialog.UpdateData(false));
    EXPECT_EQ(dialog.absent, nullptr);
    EXPECT_TRUE(wasLogged(L"\"IDC_ABSENT\" of the dialog \"IDD_TRIAL\" is missing"));
    EXPECT_TRUE(wasLogged(L"\"IDC_NAME\" of the dialog \"IDD_TRIAL\" is a QLineEdit"));
}

TEST_F(BaseDialogTest, EndsWithAnyResult) {
    for (const int wanted : {3061, 0, -7}) {
        TrialDialog dialog;
        EXPECT_EQ(show(dialog, [&] { dialog.end(wanted); }), wanted);
        EXPECT_FALSE(dialog.isVisible());
    }
    TrialDialog dialog;
    dialog.initialise = [&] { dialog.end(3044); };
    bool wasShown = false;
    EXPECT_EQ(show(dialog, [&] { wasShown = dialog.isVisible(); }), 3044);
    EXPECT_FALSE(wasShown);
    dialog.initialise = nullptr;
    EXPECT_EQ(show(dialog, [&] { dialog.close(); }), IDCANCEL) << "it can be shown again";
    EXPECT_EQ(show(dialog,
                   [&] {
                       EXPECT_EQ(dialog.DoModal(), -1) << "it is open";
                       dialog.end(5);
                   }),
              5);
}

TEST_F(BaseDialogTest, SurvivesItsParent) {
    auto* const parent = new QWidget;
    auto* const dialog = new TrialDialog("IDD_TRIAL", parent);
    EXPECT_EQ(show(*dialog, [&] { delete parent; }), IDCANCEL);
}

TEST_F(BaseDialogTest, HeedsEscEnterAndHelp) {
    TrialDialog dialog;
    EXPECT_EQ(show(dialog, [&] { press(dialog.name, Qt::Key_Escape); }), IDCANCEL);
    EXPECT_EQ(show(dialog, [&] { press(dialog.name, Qt::Key_Return); }), IDOK);
    dialog.GetDlgItem("IDOK")->setEnabled(false);
    EXPECT_EQ(show(dialog,
                   [&] {
                       press(dialog.name, Qt::Key_Return);
                       EXPECT_TRUE(dialog.isVisible()) << "the default button is disabled";
                       dialog.end(9);
                   }),
              9);
    runDialog(dialog, L"PRESS IDC_NAME F1\nLOOK MessageText\nOK\nCLICK IDHELP\nOK\nEND 4\n");
    EXPECT_EQ(result, 4);
    EXPECT_TRUE(failures.empty());
}

TEST_F(BaseDialogTest, StaysWhenItIsTheContentOfAnotherWindow) {
    QWidget palette;
    auto* const content = new TrialDialog("IDD_TRIAL", &palette);
    content->setWindowFlags(Qt::Widget);
    palette.show();
    press(content->GetDlgItem("IDC_NAME"), Qt::Key_Escape);
    EXPECT_TRUE(content->isVisible());
}

TEST_F(BaseDialogTest, SeesMessagesBeforeItsWidgets) {
    TrialDialog dialog;
    QStringList seen;
    dialog.translate = [&](QObject* receiver, QEvent* event) {
        if (event->type() == QEvent::KeyPress) {
            seen << receiver->objectName() + " " + static_cast<QKeyEvent*>(event)->text();
            return static_cast<QKeyEvent*>(event)->text() == "x";
        }
        return false;
    };
    EXPECT_EQ(show(dialog,
                   [&] {
                       QTest::keyClicks(dialog.name, "axb");
                       EXPECT_EQ(dialog.name->text(), "ab");
                       EXPECT_EQ(seen, (QStringList{"IDC_NAME a", "IDC_NAME x", "IDC_NAME b"}));
                       dialog.end(1);
                   }),
              1);
}

TEST_F(BaseDialogTest, SeesMessagesOfItsPopupsButNotOfOtherWindows) {
    TrialDialog dialog;
    int seen = 0;
    dialog.translate = [&](QObject*, QEvent* event) {
        seen += event->type() == QEvent::KeyPress ? 1 : 0;
        return false;
    };
    dialog.more = [&] { dialog.MessageBox(L"Another window"); };
    show(dialog, [&] {
        auto* const combo = dialog.GetDlgItem<QComboBox>("IDC_KIND");
        combo->showPopup();
        press(combo->view(), Qt::Key_Down);
        EXPECT_GE(seen, 1);
        combo->hidePopup();
        seen = 0;
        QTimer::singleShot(0, [&] { press(QApplication::activeModalWidget(), Qt::Key_Escape); });
        dialog.GetDlgItem<QPushButton>("IDC_NESTED")->click();
        EXPECT_EQ(seen, 0);
        dialog.end(1);
    });
}

TEST_F(BaseDialogTest, LiesInTheMiddle) {
    TrialDialog alone;
    show(alone, [&] {
        const QPoint off =
            alone.frameGeometry().center() - QGuiApplication::primaryScreen()->geometry().center();
        EXPECT_LE(off.manhattanLength(), 4);
        alone.end(1);
    });
    QWidget parent;
    parent.setGeometry(0, 0, 200, 100);
    parent.show();
    TrialDialog dialog("IDD_TRIAL", &parent);
    show(dialog, [&] {
        EXPECT_GE(dialog.geometry().top(), 0) << "it stays on the screen";
        EXPECT_GE(dialog.geometry().left(), 0);
        dialog.end(1);
    });
}

class ModuleDialogTest : public DialogTest {
protected:
    static constexpr const wchar_t* kName = L"DialogTrial.hrx";
    ModuleDialogTest() {
        const QString file = KORVEX_BINARY_DIR "/tests/trial_modules/DialogTrial.hrx";
        EXPECT_EQ(dynamicLinker().loadModule(file.toStdWString().c_str(), nullptr), Hx::eOk);
    }
    ~ModuleDialogTest() override { dynamicLinker().unloadModule(kName, nullptr); }
};

TEST_F(ModuleDialogTest, BringsWidgetClassesThatGoWithTheModule) {
    const std::wstring shown = run(L"TRIALDIALOG\nLOOK IDC_OWN_SWATCH\nEND\n");
    EXPECT_TRUE(contains(shown, L"IDC_OWN_SWATCH:")) << "the layout's widget is the module's";
    EXPECT_TRUE(failures.empty());
    EXPECT_FALSE(hxuiRegisterWidget("TrialSwatch", [](QWidget* p) { return new QWidget(p); }));
    ASSERT_EQ(dynamicLinker().unloadModule(kName, nullptr), Hx::eOk);
    const HxUiBaseDialog dialog("IDD_SWATCH");
    EXPECT_STREQ(dialog.GetDlgItem("IDC_SWATCH")->metaObject()->className(), "QFrame");
}

TEST_F(ModuleDialogTest, KeepsTheModuleWhileItsDialogsAreOpen) {
    for (const wchar_t* command : {L"TRIALDIALOG", L"TRIALBOX"}) {
        Hx::ErrorStatus status = Hx::eOk;
        CStdStr<wchar_t> error;
        QTimer::singleShot(0, [&] { status = dynamicLinker().unloadModule(kName, &error); });
        run(std::wstring(command) + L"\nDELAY 20\nEND 7\n");
        EXPECT_EQ(status, Hx::eRefused);
        EXPECT_TRUE(contains(error, L"is in use: its ")) << error.c_str();
    }
    EXPECT_EQ(dynamicLinker().unloadModule(kName, nullptr), Hx::eOk);
}

}  // namespace
}  // namespace korvex::test
