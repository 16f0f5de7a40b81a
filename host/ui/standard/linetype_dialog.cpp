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

#include <algorithm>
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

/// ByLayer, ByBlock and Continuous first, the others by their names.
bool comesBefore(HxDbObjectId left, HxDbObjectId right) {
    const auto key = [](HxDbObjectId id) {
        const HxDbObjectPointer<HxDbLinetypeTableRecord> record(id, HxDb::kForRead);
        const std::wstring name = record->name();
        const int rank = equalNames(name, L"ByLayer")      ? 0
                         : equalNames(name, L"ByBlock")    ? 1
                         : equalNames(name, L"Continuous") ? 2
                                                           : 3;
        return std::pair(rank, toQString(name).toCaseFolded());
    };
    return key(left) < key(right);
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
        const HxDbObjectPointer<HxDbLinetypeTableRecord> record(steps->getRecordId(), HxDb::kForRead);
        if (record && !record->isDependent() && (m_allowMeta || !isMeta(record->name()))) {
            m_ids.push_back(record->objectId());
        }
    }
    std::sort(m_ids.begin(), m_ids.end(), comesBefore);
    for (const HxDbObjectId id : m_ids) {
        addRow(id, id == marked);
    }
    m_list->scrollToItem(m_list->currentItem());
    enableOk(!linetype().isNull());
}

void LinetypeDialog::addRow(HxDbObjectId id, bool isMarked) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> record(id, HxDb::kForRead);
    QTreeWidgetItem* const item =
        m_list->add(toQString(record->name()), dashesOf(*record.object()), toQString(record->comments()));
    if (isMarked) {
        m_list->setCurrentItem(item);
    }
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
