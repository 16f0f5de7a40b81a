// Loading linetypes from a file.
#include "host/ui/standard/linetype_load_dialog.h"

#include "host/base/text.h"
#include "host/editor/linetype_file_loader.h"
#include "host/ui/standard/linetype_list.h"
#include "sdk/hxstddlg.h"

#include <QBoxLayout>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace korvex {

namespace {

constexpr char kFile[] = "LinetypeFile";
constexpr wchar_t kFilesKey[] = L"HxLinetypeFileDlg";

/// The program's own file is a resource: it goes by a name instead of its path.
QString shownPath(const QString& path) {
    return path == ownLinetypeFile() ? QObject::tr("KORVEX linetypes") : path;
}

}  // namespace

LinetypeLoadDialog::LinetypeLoadDialog(HxDbDatabase& database, QWidget* parent)
    : StandardDialog("IDD_LINETYPE_LOAD", tr("Load Linetypes"), "HxLinetypeLoadDlg", parent),
      m_database(database), m_pathField(new QLineEdit(this)), m_list(new LinetypeList(this)),
      m_fault(makeFaultLine("IDC_LINETYPE_FAULT")) {
    auto* const label = new QLabel(tr("&File:"), this);
    label->setBuddy(m_pathField);
    m_pathField->setObjectName("IDC_LINETYPE_FILE");
    m_pathField->setReadOnly(true);
    m_standard = addButton("IDC_LINETYPE_STANDARD", tr("&Standard"),
                           tr("Show the linetypes that come with the program"));
    connect(m_standard, &QPushButton::clicked, this, [this] {
        showFile(ownLinetypeFile());
        m_list->setFocus();
    });
    QPushButton* const browse =
        addButton("IDC_LINETYPE_BROWSE", tr("&Browse..."), tr("Show the linetypes of another file"));
    connect(browse, &QPushButton::clicked, this, [this] { this->browse(); });
    auto* const listLabel = new QLabel(tr("&Available linetypes:"), this);
    listLabel->setBuddy(m_list);
    m_list->setObjectName("IDC_LINETYPE_AVAILABLE");
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this,
            [this] { enableOk(!m_list->selectedItems().isEmpty()); });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { onOk(); });
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_pathField, 1);
    row->addWidget(browse);
    row->addWidget(m_standard);
    auto* const layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(listLabel);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_fault);
    addButtons(layout);
    setMinimumSize(480, 360);
    const QString last = settings().text(kFile);
    showFile(QFileInfo(last).isFile() ? last : ownLinetypeFile());
    m_list->setFocus();
}

QPushButton* LinetypeLoadDialog::addButton(const char* name, const QString& text, const QString& toolTip) {
    auto* const button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

/// A file that can not be read leaves the list empty, and says why.
void LinetypeLoadDialog::showFile(const QString& path) {
    FileFault fault;
    m_file = LinetypeFile();
    m_path = path;
    m_pathField->setText(shownPath(path));
    m_standard->setEnabled(path != ownLinetypeFile());
    m_list->clear();
    enableOk(false);
    if (!loadLinetypeFile(path, m_file, fault)) {
        showFault(m_fault, toQString(fault.text()));
        return;
    }
    for (const LinetypeDefinition& definition : m_file.linetypes) {
        m_list->add(toQString(definition.name), definition.dashes, toQString(definition.description));
    }
    if (QTreeWidgetItem* const first = m_list->topLevelItem(0)) {
        m_list->setCurrentItem(first);
    }
    QStringList notes;
    for (const FileFault& leftOut : m_file.leftOut) {
        notes << toQString(leftOut.text());
    }
    showFault(m_fault, notes.join('\n'));
    settings().setText(kFile, path == ownLinetypeFile() ? QString() : path);
}

void LinetypeLoadDialog::browse() {
    HxUiFileDialog files(toWide(tr("Linetype File")).c_str(), kFilesKey,
                         {tr("Linetype files (*.lin)"), tr("All files (*)")});
    const QString path = files.getOpenFile(this);
    if (!path.isEmpty()) {
        showFile(path);
    }
}

std::vector<LinetypeDefinition> LinetypeLoadDialog::selection() const {
    std::vector<LinetypeDefinition> chosen;
    for (std::size_t i = 0; i < m_file.linetypes.size(); ++i) {
        if (m_list->topLevelItem(static_cast<int>(i))->isSelected()) {
            chosen.push_back(m_file.linetypes[i]);
        }
    }
    return chosen;
}

bool LinetypeLoadDialog::confirm(std::vector<LinetypeDefinition>& definitions) {
    std::vector<LinetypeDefinition> wanted;
    for (const LinetypeDefinition& definition : definitions) {
        Reply reply = Reply::yes;
        if (linetypePresence(m_database, definition) == LinetypePresence::different) {
            reply = askYesNo(this,
                             tr("The drawing has a linetype \"%1\" that looks different. Redefine it?")
                                 .arg(toQString(definition.name)),
                             true);
        }
        if (reply == Reply::cancel) {
            return false;
        }
        if (reply == Reply::yes) {
            wanted.push_back(definition);
        }
    }
    definitions = std::move(wanted);
    return true;
}

void LinetypeLoadDialog::onOk() {
    std::vector<LinetypeDefinition> definitions = selection();
    if (definitions.empty() || !confirm(definitions)) {
        return;
    }
    LoadedLinetypes result;
    if (!definitions.empty()) {
        result = loadLinetypes(m_database, definitions);
    }
    m_loaded = result.ids;
    QStringList failures;
    for (const std::wstring& failure : result.failures) {
        failures << toQString(failure);
    }
    if (!failures.isEmpty()) {
        tell(this, failures.join('\n'));
    }
    accept();
}

}  // namespace korvex
