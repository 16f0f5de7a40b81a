// Whatever is edited in the layer manager, in whatever order: the grid shows what the drawing holds, and undo
// or Cancel bring back the drawing byte for byte.
#include "tests/module/manager_ui/palette_fixture.h"
#include "tests/walk_seed.h"

#include "manager_ui/grid/layer_column.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeWidget>

#include <map>
#include <random>

namespace korvex::test {
namespace {

class ManagerWalk : public PaletteTest {
protected:
    const std::uint32_t seed = walkSeed(20261126);
    std::mt19937 random{seed};

    std::size_t upTo(std::size_t most) { return 1 + random() % most; }
    std::wstring number(std::size_t most) { return std::to_wstring(upTo(most)); }
    std::wstring cell(std::size_t rows, const wchar_t* column) {
        return L" \"" + number(rows) + L"," + column + L"\"\n";
    }
    const wchar_t* any(std::initializer_list<const wchar_t*> items) {
        return *(items.begin() + random() % items.size());
    }

    /// Lines of a script for one edit of a grid with so many rows. An empty line answers a box with its
    /// default, and is passed over when there is none.
    std::wstring edit(std::size_t rows) {
        const std::wstring click = L"CLICK IDC_LIST_LAYERS_LIST";
        const std::wstring rename =
            L"PRESS focus Ctrl+A\nTYPE focus N" + number(60) + L"\nPRESS focus Tab\n\n";
        switch (rows > 0 ? random() % 20 : 14 + random() % 3) {
        case 0:
        case 1: return click + cell(rows, L"Name") + click + L" ctrl" + cell(rows, L"Name");
        case 2: return click + cell(rows, L"Name") + click + L" shift" + cell(rows, L"Name");
        case 3:
        case 4:
        case 5:
            return click +
                   cell(rows, any({L"On", L"Freeze", L"Lock", L"Plot", L"New VP Freeze", L"VP Freeze"})) +
                   L"\n";
        case 6:
            return click + cell(rows, any({L"Color", L"VP Color"})) +
                   L"PRESS IDC_COLOR_TEXT Ctrl+A\nTYPE IDC_COLOR_TEXT " + number(255) +
                   L"\nCLICK IDD_TRUECOLOR/IDOK\n";
        case 7:
            return click + cell(rows, any({L"Lineweight", L"VP Lineweight"})) + L"CLICK IDC_LW_LIST " +
                   number(8) + L"\nCLICK IDD_LWLIST_DLG/IDOK\n";
        case 8:
            return click + cell(rows, any({L"Transparency", L"VP Transparency"})) +
                   L"PRESS IDC_TRANS_VALUE Ctrl+A\nTYPE IDC_TRANS_VALUE " + number(90) +
                   L"\nCLICK IDD_LAYERTRANS_DLG/IDOK\n";
        case 9: return click + cell(rows, L"Name") + L"PRESS IDC_LIST_LAYERS_LIST F2\n" + rename;
        case 10:
        case 11: return L"CLICK IDC_BUTTON_NEW\n" + rename;
        case 12: return L"CLICK IDC_BUTTON_DELETE\n\n";
        case 13: return click + L" double" + cell(rows, L"Name") + L"\n";
        case 14: return L"TICK IDC_CHECK_INVERTFILTER " + std::to_wstring(random() % 2) + L"\n";
        case 15:
            return L"PRESS IDC_EDIT_SEARCHLAYER Ctrl+A\n"
                   L"TYPE IDC_EDIT_SEARCHLAYER " +
                   std::wstring(any({L"*", L"N*", L"*A*", L"~*1*"})) + L"\n";
        case 16: return L"CHOOSE IDC_LAYER_FILTER_TREE " + std::wstring(any({L"All", L"All/Xref"})) + L"\n";
        case 17:
            return click + L" right" + cell(rows, L"Name") +
                   L"CHOOSE menu \"New Group Filter of Selection\"\nPRESS focus Tab\n\n";
        case 18:
            return click + L" right" + cell(rows, L"Name") + L"CHOOSE menu \"" +
                   any({L"Select All but Current", L"Invert Selection", L"Clear Selection"}) + L"\"\n";
        default: return click + L"/header " + any({L"Name", L"On", L"Color", L"Status"}) + L"\n";
        }
    }
    /// Rows show what a palette that is loaded afresh shows. Those that filter, search or inversion would no
    /// longer choose may be there until these change.
    void expectCurrent(const std::wstring& step) {
        SCOPED_TRACE("after " + QString::fromStdWString(step).toStdString());
        idle();
        const auto shown = [this] {
            std::map<QString, QString> all;
            for (const Row& row : rows()) {
                EXPECT_TRUE(all.insert({row[kColName], row.join('|')}).second) << "twice";
            }
            return all;
        };
        const std::map<QString, QString> now = shown();
        const bool showsAll = frame().findChild<QLineEdit*>("IDC_EDIT_SEARCHLAYER")->text().isEmpty() &&
                              !frame().findChild<QCheckBox*>("IDC_CHECK_INVERTFILTER")->isChecked() &&
                              filter() == "All";
        run(L"LAYERPALETTE\n");
        const std::map<QString, QString> fresh = shown();
        if (showsAll) {
            ASSERT_EQ(now.size(), fresh.size());
        }
        for (const auto& [name, text] : now) {
            const auto same = fresh.find(name);
            if (same != fresh.end()) {
                ASSERT_EQ(text.toStdString(), same->second.toStdString());
            }
        }
    }
    QString filter() {
        const auto* const tree = frame().findChild<QTreeWidget*>("IDC_LAYER_FILTER_TREE");
        return tree->currentItem() ? tree->currentItem()->text(0) : QString();
    }
    void undoAll(const QByteArray& wanted) {
        for (int i = 0; i < 1000 && bytes() != wanted; ++i) {
            run(L"U\n");
        }
        EXPECT_EQ(bytes(), wanted);
    }
};

TEST_F(ManagerWalk, ThePaletteAgreesWithTheDrawingAndUndoTakesAllBack) {
    SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(seed));
    const QByteArray before = bytes();
    run(L"LAYOUT S Layout1\nMSPACE\n");
    showPalette();
    for (int i = 0; i < 250; ++i) {
        const auto rows = static_cast<std::size_t>(grid()->model()->rowCount());
        const std::size_t kind = random() % 12;
        const std::wstring step = kind == 0 ? L"U\n" : kind == 1 ? L"REDO\n" : edit(rows);
        run(step);
        ASSERT_NO_FATAL_FAILURE(expectCurrent(step));
    }
    undoAll(before);
}

TEST_F(ManagerWalk, CancelTakesAllBack) {
    SCOPED_TRACE("KORVEX_WALK_SEED=" + std::to_string(seed));
    run(L"LAYOUT S Layout1\nMSPACE\n");
    const QByteArray before = bytes();
    for (int round = 0; round < 6; ++round) {
        std::wstring edits = L"CLASSICLAYER\n";
        for (int i = 0; i < 40; ++i) {
            edits += edit(12);
        }
        run(edits + L"CLICK IDCANCEL\n");
        ASSERT_EQ(bytes(), before) << "in round " << round;
    }
    std::wstring edits = L"CLASSICLAYER\n";
    for (int i = 0; i < 40; ++i) {
        edits += edit(8);
    }
    run(edits + L"CLICK IDOK\n");
    EXPECT_NE(bytes(), before);
    run(L"U\n");
    EXPECT_EQ(bytes(), before);
}

}  // namespace
}  // namespace korvex::test
