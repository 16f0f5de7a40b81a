// A dialog with the trial layout that writes down what happens to it, in an editor that runs scripts.
#pragma once

#include "host/base/log.h"
#include "host/ui/script/ui_commands.h"
#include "sdk/hxdialog.h"
#include "sdk/hxresource.h"
#include "tests/editor/editor_fixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>

namespace korvex::test {

class TrialDialog : public HxUiBaseDialog {
    Q_OBJECT
public:
    explicit TrialDialog(const char* layout = "IDD_TRIAL", QWidget* parent = nullptr);

    std::function<void()> initialise;                  ///< at the end of OnInitDialog
    std::function<bool(QObject*, QEvent*)> translate;  ///< PreTranslateMessage
    std::function<void()> more;                        ///< what the button IDC_NESTED does
    QStringList clicks;                                ///< "cell row column", "double ...", "menu item"
    int frozen = 0;
    QLineEdit* name = nullptr;
    QTableWidget* table = nullptr;
    QTreeWidget* tree = nullptr;
    QPushButton* absent = nullptr;
    bool asksForAbsent = false;
    int oks = 0;

    void end(int result) { EndDialog(result); }

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool PreTranslateMessage(QObject* receiver, QEvent* event) override;

protected Q_SLOTS:
    void OnOK() override;

private Q_SLOTS:
    void OnMore();
    void OnCell(int row, int column);
    void OnDouble(int row, int column);
    void OnMenu(const QPoint& at);

private:
    void fillTable();
};

class DialogTest : public EditorTest {
protected:
    DialogTest();
    ~DialogTest() override;

    /// The resource library in the language of LC_ALL.
    void loadResources(const char* language);
    /// Runs a command that shows a dialog as the test has set it up, and the script's lines in it.
    std::wstring runDialog(TrialDialog& dialog, const std::wstring& lines);
    /// What a script's lines did in the trial dialog.
    bool wasLogged(const std::wstring& part) const;
    QString picture(const char* file) { return QString::fromStdWString(path(file)); }

    int result = 0;  ///< of the last runDialog
    Lines logged;

private:
    HxModuleHandle m_resources = nullptr;
};

/// More than one colour.
bool hasContent(const QImage& image);

}  // namespace korvex::test
