// Choosing a linetype.
#include "host/ui/standard/linetype_dialog.h"

#include "host/base/text.h"
#include "host/db/kernel/text_fold.h"
#include "host/ui/standard/linetype_list.h"
#include "host/ui/standard/linetype_load_dialog.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxstddlg.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <memory>

namespace korvex {

namespace {

bool isMeta(const std::wstring& name) { return equalNames(name, L"ByLayer") || equalNames(name, L"ByBlock"); }

std::vector<double> dashesOf(const HxDbLinetypeTableRecord& record) {
    std::vector<double> dashes;
    for (int i = 0; i < record.numDashes(); ++i) {
        dashes.push_back(record.dashLengthAt(i));
    }
    return dashes;
}

}  // namespace

LinetypeDialog::LinetypeDialog(HxDbDatabase& database, HxDbObjectId linetype, bool allowMeta, QWidget* parent)
    : StandardDialog("IDD_LINETYPE", tr("Select Linetype"), "HxLinetypeDlg", parent), m_database(database),
      m_allowMeta(allowMeta), m_list(new LinetypeList(this)) {
    auto* const label = new QLabel(tr("&Loaded linetypes:"), this);
    label->setBuddy(m_list);
    m_list->setObjectName("IDC_LINETYPE_LIST");
    connect(m_list, &QTreeWidget::itemSelectionChanged, this,
            [this] { enableOk(!this->linetype().isNull()); });
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this] { onOk(); });
    auto* const load = new QPushButton(tr("L&oad..."), this);
    load->setObjectName("IDC_LINETYPE_LOAD");
    load->setAutoDefault(false);
    load->setToolTip(tr("Take linetypes from a file into the drawing"));
    connect(load, &QPushButton::clicked, this, [this] { this->load(); });
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(m_list, 1);
    addButtons(layout, load);
    setMinimumSize(460, 320);
    fill(linetype);
    m_list->setFocus();
}

void LinetypeDialog::fill(HxDbObjectId marked) {
    m_list->clear();
    m_ids.clear();
    const HxDbObjectPointer<HxDbLinetypeTable> table(m_database.linetypeTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) {
        return;
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        const HxDbObjectId id = steps->getRecordId();
        const HxDbObjectPointer<HxDbLinetypeTableRecord> record(id, HxDb::kForRead);
        if (!record || record->isDependent() || (!m_allowMeta && isMeta(record->name()))) {
            continue;
        }
        QTreeWidgetItem* const item =
            m_list->add(toQString(record->name()), dashesOf(*record.object()), toQString(record->comments()));
        m_ids.push_back(id);
        if (id == marked) {
            m_list->setCurrentItem(item);
        }
    }
    m_list->scrollToItem(m_list->currentItem());
    enableOk(!linetype().isNull());
}

HxDbObjectId LinetypeDialog::linetype() const {
    const QList<QTreeWidgetItem*> chosen = m_list->selectedItems();
    return chosen.isEmpty() ? HxDbObjectId()
                            : m_ids[static_cast<std::size_t>(m_list->indexOfTopLevelItem(chosen.front()))];
}

void LinetypeDialog::load() {
    const HxDbObjectId before = linetype();
    LinetypeLoadDialog dialog(m_database, this);
    if (dialog.run()) {
        fill(dialog.loaded().empty() ? before : dialog.loaded().front());
    }
}

}  // namespace korvex

bool hxuiSelectLinetype(HxDbDatabase* database, HxDbObjectId& linetype, bool allowMeta, QWidget* parent) {
    if (!database) {
        return false;
    }
    korvex::LinetypeDialog dialog(*database, linetype, allowMeta, parent);
    if (!dialog.run() || dialog.linetype().isNull()) {
        return false;
    }
    linetype = dialog.linetype();
    return true;
}
