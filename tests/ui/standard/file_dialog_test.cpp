// File dialogs remember folder and filter, complete names, and ask before they replace.
#include "tests/ui/standard/dialog_fixture.h"

#include "sdk/hxconfig.h"
#include "sdk/hxregistry.h"
#include "sdk/hxstddlg.h"

#include <QAbstractButton>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>

namespace korvex::test {
namespace {

class FileDialogTest : public StandardDialogTest {
protected:
    void make(const QString& file) {
        QFile made(folder(file));
        ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    }
    QString folder(const QString& below) { return QString::fromStdWString(path("")) + '/' + below; }
    static void enter(QDialog& dialog, const QString& name) {
        type(dialog, "fileNameEdit", name);
        QTest::keyClick(&control<QLineEdit>(dialog, "fileNameEdit"), Qt::Key_Return);
    }
    /// The text that the profile keeps for the dialogs of the layer states.
    static QString stored(const wchar_t* name) {
        const std::wstring path = std::wstring(hxdbHostApplicationServices()->getRegistryProductRootKey()) +
                                  L"\\Profiles\\Default\\UserInterfaceSettings\\KvLayerStateManDlg";
        HxRegKey key = nullptr;
        EXPECT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, path.c_str(), KEY_READ, key), kRegOk);
        std::uint32_t type = REG_NONE;
        wchar_t text[500] = {};
        std::uint32_t size = sizeof(text) - sizeof(wchar_t);
        EXPECT_EQ(hxRegQueryValue(key, name, &type, text, &size), kRegOk);
        EXPECT_EQ(type, static_cast<std::uint32_t>(REG_SZ));
        hxRegCloseKey(key);
        return QString::fromWCharArray(text);
    }
    const QStringList filters{"Layer states (*.las)", "Drawings (*.dxf *.dwg)", "All files (*)"};
};

TEST_F(FileDialogTest, RemembersFolderAndFilter) {
    QDir().mkpath(folder("states"));
    make("states/one.dxf");
    HxUiFileDialog first(L"Import", L"KvLayerStateManDlg", filters);
    QString chosen;
    inDialog(
        "FileDialog",
        [this](QDialog& dialog) {
            auto& files = dynamic_cast<QFileDialog&>(dialog);
            files.selectNameFilter(filters[1]);
            enter(dialog, folder("states/one.dxf"));
        },
        [&] { chosen = first.getOpenFile(); });
    EXPECT_EQ(chosen, QDir::cleanPath(folder("states/one.dxf")));
    EXPECT_EQ(first.filterIndex(), 2);
    EXPECT_EQ(stored(L"InitialDirectory"), chosen.section('/', 0, -2));
    EXPECT_EQ(stored(L"InitialFilterIndex"), "2");
    inDialog(
        "FileDialog", [](QDialog& dialog) { dialog.reject(); },
        [&] { EXPECT_EQ(first.getOpenFile(), QString()); });
    EXPECT_EQ(first.filterIndex(), 0);
    const auto look = [&](const QString& expected) {
        HxUiFileDialog again(L"Import", L"KvLayerStateManDlg", filters);
        inDialog(
            "FileDialog",
            [&](QDialog& dialog) {
                auto& files = dynamic_cast<QFileDialog&>(dialog);
                EXPECT_EQ(files.directory().absolutePath(), expected);
                EXPECT_EQ(files.selectedNameFilter(), filters[1]);
            },
            [&] { EXPECT_EQ(again.getOpenFile(), QString()); });
    };
    look(QDir::cleanPath(folder("states")));
    QDir(folder("states")).removeRecursively();
    look(QDir::currentPath());
}

TEST_F(FileDialogTest, CompletesNamesAndAsksBeforeItReplaces) {
    make("old.las");
    const auto save = [this](const QString& name, const char* answer) {
        HxUiFileDialog files(L"Export", L"ExportTest", filters);
        QString chosen;
        inDialog(
            "FileDialog",
            [&](QDialog& dialog) {
                if (answer) {
                    QTimer::singleShot(50, [answer] {
                        QWidget* const box = QApplication::activeModalWidget();
                        for (auto* button : box->findChildren<QAbstractButton*>()) {
                            if (button->text().remove('&') == answer) {
                                button->click();
                                return;
                            }
                        }
                        ADD_FAILURE() << "no question";
                    });
                }
                enter(dialog, folder(name));
            },
            [&] { chosen = files.getSaveFile(); });
        return chosen;
    };
    EXPECT_EQ(save("new", nullptr), QDir::cleanPath(folder("new.las")));
    EXPECT_EQ(save("new.txt", nullptr), QDir::cleanPath(folder("new.txt")));
    EXPECT_EQ(save("old.las", "No"), QString());
    EXPECT_EQ(save("old", "No"), QString());
    EXPECT_EQ(save("old.las", "Yes"), QDir::cleanPath(folder("old.las")));
}

}  // namespace
}  // namespace korvex::test
