// The trial dialog and its fixture.
#include "tests/ui/dialogs/trial_dialog.h"

#include <set>

namespace korvex::test {

TrialDialog::TrialDialog(const char* layout, QWidget* parent) : HxUiBaseDialog(layout, parent) {}

void TrialDialog::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, "IDC_NAME", name);
    DDX_Control(exchange, "IDC_TABLE", table);
    DDX_Control(exchange, "IDC_TREE", tree);
    DDX_Check(exchange, "IDC_FROZEN", frozen);
    if (asksForAbsent) {
        DDX_Control(exchange, "IDC_ABSENT", absent);
        DDX_Control(exchange, "IDC_NAME", absent);
    }
}

bool TrialDialog::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    CenterWindow();
    fillTable();
    connect(GetDlgItem("IDC_NESTED"), SIGNAL(clicked()), SLOT(OnMore()));
    connect(table, SIGNAL(cellClicked(int, int)), SLOT(OnCell(int, int)));
    connect(table, SIGNAL(cellDoubleClicked(int, int)), SLOT(OnDouble(int, int)));
    table->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(table, SIGNAL(customContextMenuRequested(QPoint)), SLOT(OnMenu(QPoint)));
    if (initialise) {
        initialise();
    }
    return true;
}

void TrialDialog::fillTable() {
    const QStringList names = {"A-WALL", "A-DOOR", "Wände"};
    table->setRowCount(names.size());
    for (int row = 0; row < names.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(names[row]));
        auto* const on = new QTableWidgetItem;
        on->setFlags(Qt::ItemIsUserCheckable | Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        on->setCheckState(Qt::Unchecked);
        table->setItem(row, 1, on);
        table->setItem(row, 2, new QTableWidgetItem(QString("colour %1").arg(row + 1)));
    }
}

bool TrialDialog::PreTranslateMessage(QObject* receiver, QEvent* event) {
    return (translate && translate(receiver, event)) || HxUiBaseDialog::PreTranslateMessage(receiver, event);
}

void TrialDialog::OnOK() {
    ++oks;
    HxUiBaseDialog::OnOK();
}

void TrialDialog::OnMore() {
    if (more) {
        more();
    }
}

void TrialDialog::OnCell(int row, int column) { clicks << QString("cell %1 %2").arg(row).arg(column); }
void TrialDialog::OnDouble(int row, int column) { clicks << QString("double %1 %2").arg(row).arg(column); }

void TrialDialog::OnMenu(const QPoint& at) {
    const std::unique_ptr<QMenu> menu(hxuiLoadMenu("IDR_TRIAL_MENU", this));
    const QAction* const chosen = menu->exec(table->viewport()->mapToGlobal(at));
    clicks << "menu " + (chosen ? chosen->objectName() : QString("nothing"));
}

DialogTest::DialogTest() {
    qunsetenv("LANGUAGE");
    startUiCommands();
    setLogHook([this](Severity, const std::wstring& message) { logged.push_back(message); });
    loadResources("C");
}

DialogTest::~DialogTest() {
    hxFreeResourceDll(m_resources);
    setLogHook({});
    qunsetenv("LC_ALL");
}

void DialogTest::loadResources(const char* language) {
    hxFreeResourceDll(m_resources);
    qputenv("LC_ALL", language);
    m_resources = LoadResourceDll(
        QString(KORVEX_BINARY_DIR "/tests/trial_modules/DialogTrialRes.dll").toStdWString().c_str());
    hxSetResourceHandle(m_resources);
}

std::wstring DialogTest::runDialog(TrialDialog& dialog, const std::wstring& lines) {
    define(L"SHOW", [&] { result = dialog.DoModal(); });
    std::wstring shown = run(L"SHOW\n" + lines);
    editor().commands().removeGroup(L"TEST");
    return shown;
}

bool DialogTest::wasLogged(const std::wstring& part) const {
    return std::any_of(logged.begin(), logged.end(),
                       [&part](const std::wstring& message) { return contains(message, part); });
}

bool hasContent(const QImage& image) {
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colors.insert(image.pixel(x, y));
        }
    }
    return colors.size() > 8;
}

}  // namespace korvex::test
