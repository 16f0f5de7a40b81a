// Choosing a linetype, loading some from files.
#include "tests/ui/standard/dialog_fixture.h"

#include "host/editor/linetype_file_loader.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxstddlg.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>

namespace korvex::test {
namespace {

class LinetypeDialogTest : public StandardDialogTest {
protected:
    HxDbObjectId linetype(const wchar_t* name) {
        const HxDbObjectPointer<HxDbSymbolTable> table(database().linetypeTableId(), HxDb::kForRead);
        HxDbObjectId id;
        table->getAt(name, id);
        return id;
    }
    HxDbObjectId choose(HxDbObjectId given, bool allowMeta, const std::function<void(QDialog&)>& work) {
        HxDbObjectId chosen = given;
        inDialog("IDD_LINETYPE", work,
                 [&] { m_ok = hxuiSelectLinetype(&database(), chosen, allowMeta, nullptr); });
        return chosen;
    }
    static QStringList names(QWidget& dialog, const char* list) {
        QStringList all;
        auto& tree = control<QTreeWidget>(dialog, list);
        for (int row = 0; row < tree.topLevelItemCount(); ++row) {
            all << tree.topLevelItem(row)->text(0);
        }
        return all;
    }
    static void select(QWidget& dialog, const char* list, const QString& name,
                       Qt::KeyboardModifiers modifiers = {}) {
        auto& tree = control<QTreeWidget>(dialog, list);
        const QList<QTreeWidgetItem*> found = tree.findItems(name, Qt::MatchExactly);
        if (found.isEmpty()) {
            throw std::runtime_error("no linetype " + name.toStdString());
        }
        tree.scrollToItem(found.front());
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, modifiers,
                          tree.visualItemRect(found.front()).center());
    }
    /// Has the load dialog show a file of the test's folder.
    void browse(QDialog& load, const char* file) {
        later("FileDialog", [this, file](QDialog& files) {
            type(files, "fileNameEdit", QString::fromStdWString(path(file)));
            QTest::keyClick(&control<QLineEdit>(files, "fileNameEdit"), Qt::Key_Return);
        });
        click(load, "IDC_LINETYPE_BROWSE");
    }

    bool m_ok = false;
};

TEST_F(LinetypeDialogTest, MarksTheGivenOneAndHidesMetaLinetypes) {
    const HxDbObjectId continuous = database().continuousLinetype();
    choose(continuous, false, [](QDialog& dialog) {
        EXPECT_EQ(control<QTreeWidget>(dialog, "IDC_LINETYPE_LIST").currentItem()->text(0), "Continuous");
        EXPECT_FALSE(names(dialog, "IDC_LINETYPE_LIST").contains("ByLayer", Qt::CaseInsensitive));
        click(dialog, "IDCANCEL");
    });
    EXPECT_FALSE(m_ok);
    const HxDbObjectId chosen = choose(continuous, true, [](QDialog& dialog) {
        select(dialog, "IDC_LINETYPE_LIST", "ByBlock");
        QTest::keyClick(&control<QTreeWidget>(dialog, "IDC_LINETYPE_LIST"), Qt::Key_Return);
    });
    EXPECT_TRUE(m_ok);
    EXPECT_EQ(chosen, linetype(L"ByBlock"));
}

TEST_F(LinetypeDialogTest, ListsTheStandardOnesFirstThenByName) {
    const std::vector<double> dashes{1, -1};
    ASSERT_EQ(
        loadLinetypes(database(),
                      {{L"ZIGZAG", L"", dashes, 1}, {L"beam", L"", dashes, 1}, {L"AXIS", L"", dashes, 1}})
            .ids.size(),
        3U);
    choose({}, true, [](QDialog& dialog) {
        EXPECT_EQ(names(dialog, "IDC_LINETYPE_LIST"),
                  (QStringList{"ByLayer", "ByBlock", "Continuous", "AXIS", "beam", "ZIGZAG"}));
    });
}

TEST_F(LinetypeDialogTest, LoadsSeveralAsOneStep) {
    const HxDbObjectId chosen = choose({}, false, [this](QDialog& dialog) {
        EXPECT_FALSE(control<QWidget>(dialog, "IDOK").isEnabled());
        later("IDD_LINETYPE_LOAD", [](QDialog& load) {
            select(load, "IDC_LINETYPE_AVAILABLE", "CENTER");
            select(load, "IDC_LINETYPE_AVAILABLE", "CENTERX2", Qt::ControlModifier);
            click(load, "IDOK");
        });
        click(dialog, "IDC_LINETYPE_LOAD");
        EXPECT_EQ(control<QTreeWidget>(dialog, "IDC_LINETYPE_LIST").currentItem()->text(0), "CENTER");
        click(dialog, "IDOK");
    });
    EXPECT_EQ(chosen, linetype(L"CENTER"));
    const HxDbObjectPointer<HxDbLinetypeTableRecord> wide(linetype(L"CENTERX2"), HxDb::kForRead);
    ASSERT_TRUE(wide);
    EXPECT_EQ(wide->numDashes(), 4);
    EXPECT_EQ(wide->patternLength(), 48);
    run(L"U\n");
    EXPECT_TRUE(linetype(L"CENTER").isNull());
    EXPECT_TRUE(linetype(L"CENTERX2").isNull());
}

TEST_F(LinetypeDialogTest, AsksBeforeItRedefinesAndTellsOfDamage) {
    QFile good(QString::fromStdWString(path("own.lin")));
    ASSERT_TRUE(good.open(QIODevice::WriteOnly));
    good.write("*Center,Other\nA,1,-1\n*Mine,Mine\nA,2,-1\n");
    good.close();
    QFile bad(QString::fromStdWString(path("bad.lin")));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("*Fine,Fine\nA,1,-1\n*Broken,Broken\nA,1,x\n");
    bad.close();
    choose({}, false, [&](QDialog& dialog) {
        later("IDD_LINETYPE_LOAD", [&](QDialog& load) {
            select(load, "IDC_LINETYPE_AVAILABLE", "CENTER");
            click(load, "IDOK");
        });
        click(dialog, "IDC_LINETYPE_LOAD");
        later("IDD_LINETYPE_LOAD", [&](QDialog& load) {
            browse(load, "bad.lin");
            const QString fault = control<QLabel>(load, "IDC_LINETYPE_FAULT").text();
            EXPECT_TRUE(fault.contains("bad.lin") && fault.contains("4")) << fault.toStdString();
            EXPECT_EQ(names(load, "IDC_LINETYPE_AVAILABLE"), QStringList());
            EXPECT_FALSE(control<QWidget>(load, "IDOK").isEnabled());
            browse(load, "own.lin");
            EXPECT_EQ(names(load, "IDC_LINETYPE_AVAILABLE"), (QStringList{"Center", "Mine"}));
            select(load, "IDC_LINETYPE_AVAILABLE", "Center");
            select(load, "IDC_LINETYPE_AVAILABLE", "Mine", Qt::ControlModifier);
            later("MessageBox", [](QDialog& box) { click(box, "IDNO"); });
            click(load, "IDOK");
        });
        click(dialog, "IDC_LINETYPE_LOAD");
        click(dialog, "IDOK");
    });
    EXPECT_FALSE(linetype(L"Mine").isNull());
    const HxDbObjectPointer<HxDbLinetypeTableRecord> kept(linetype(L"CENTER"), HxDb::kForRead);
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->numDashes(), 4);
}

TEST_F(LinetypeDialogTest, EnterAsksOnceAndCancelGoesBackToTheFile) {
    ASSERT_EQ(loadLinetypes(database(), {{L"CENTER", L"Center", {9, -3}, 1}}).ids.size(), 1U);
    QFile other(QString::fromStdWString(path("other.lin")));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write("*Center,Other\nA,1,-1\n");
    other.close();
    int questions = 0;
    const auto cancel = [&](QDialog& box) {
        ++questions;
        click(box, "IDCANCEL");
    };
    choose({}, false, [&](QDialog& dialog) {
        later("IDD_LINETYPE_LOAD", [&](QDialog& load) {
            browse(load, "other.lin");
            later("MessageBox", [&](QDialog& box) {
                later("MessageBox", cancel, 20);
                cancel(box);
            });
            QTest::keyClick(&control<QTreeWidget>(load, "IDC_LINETYPE_AVAILABLE"), Qt::Key_Return);
            QTest::qWait(50);
            EXPECT_TRUE(load.isVisible());
        });
        click(dialog, "IDC_LINETYPE_LOAD");
    });
    EXPECT_EQ(questions, 1);
}

TEST_F(LinetypeDialogTest, GoesBackToTheProgramsOwnFile) {
    const auto write = [this] {
        QFile other(QString::fromStdWString(path("other.lin")));
        ASSERT_TRUE(other.open(QIODevice::WriteOnly));
        other.write("*Mine,Mine\nA,1,-1\n");
    };
    const auto inLoadDialog = [this](const std::function<void(QDialog&)>& work) {
        choose({}, false, [&](QDialog& dialog) {
            later("IDD_LINETYPE_LOAD", work);
            click(dialog, "IDC_LINETYPE_LOAD");
        });
    };
    write();
    inLoadDialog([this](QDialog& load) {
        EXPECT_FALSE(control<QWidget>(load, "IDC_LINETYPE_STANDARD").isEnabled());
        browse(load, "other.lin");
    });
    inLoadDialog([](QDialog& load) {
        EXPECT_EQ(names(load, "IDC_LINETYPE_AVAILABLE"), QStringList{"Mine"});  // remembered
        click(load, "IDC_LINETYPE_STANDARD");
        EXPECT_TRUE(names(load, "IDC_LINETYPE_AVAILABLE").contains("CENTER"));
    });
    inLoadDialog([this](QDialog& load) {
        EXPECT_TRUE(names(load, "IDC_LINETYPE_AVAILABLE").contains("CENTER"));
        browse(load, "other.lin");
    });
    QFile::remove(QString::fromStdWString(path("other.lin")));
    inLoadDialog([](QDialog& load) {
        EXPECT_TRUE(names(load, "IDC_LINETYPE_AVAILABLE").contains("CENTER"));
        EXPECT_TRUE(control<QLabel>(load, "IDC_LINETYPE_FAULT").isHidden());
    });
}

}  // namespace
}  // namespace korvex::test
