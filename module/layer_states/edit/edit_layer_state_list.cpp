// The rows of the edit dialog's list, and what mouse and keys do there.
#include "layer_states/edit/edit_layer_state_list.h"

#include "frame/util/resource_text.h"
#include "layer_states/records/layer_state_map.h"
#include "manager_ui/grid/lineweight_text.h"

#include "hxdbdatabase.h"
#include "hxtext.h"

#include <QKeyEvent>
#include <QScrollBar>

CKvEditLayerStateListCtrl::CKvEditLayerStateListCtrl(QWidget* parent)
    : CKvListCtrl(new KvEditLayerStateModel(nullptr), parent),
      m_model(static_cast<KvEditLayerStateModel*>(model())) {
    setItemDelegate(new KvEditLayerStateListItemDelegate(this));
    setColumnLetters({20, 6, 8, 7, 13, 13, 14, 8, 10, 6, 10}, kStateColName);
}

CKvEditLayerStateListCtrl::~CKvEditLayerStateListCtrl() { deleteEntries(takeLayerStateInfoArray()); }

void CKvEditLayerStateListCtrl::setDatabase(HxDbDatabase* database) {
    m_database = database;
    m_model->setUnits(lineweightsAreInInches(), database && !database->plotStyleMode());
}

void CKvEditLayerStateListCtrl::SetLayerStateInfoArray(KvLayerStateInfoArray* entries) {
    if (entries == m_entries) return;
    KvLayerStateInfoArray* const before = m_entries;
    m_entries = entries;
    FillLayerList();
    deleteEntries(before);
}

void CKvEditLayerStateListCtrl::FillLayerList() {
    m_foldedNames.clear();
    m_model->setEntries(m_entries);
}

bool CKvEditLayerStateListCtrl::FindLayerIsEqual(const CStdStr<wchar_t>& name) {
    if (m_foldedNames.empty() && m_entries) {
        for (const CKvLayerStateInfo* const entry : *m_entries) {
            m_foldedNames.insert(hxutFoldName(entry->GetLayerName().c_str()));
        }
    }
    return m_foldedNames.count(hxutFoldName(name.c_str())) > 0;
}

KvLayerStateInfoArray* CKvEditLayerStateListCtrl::takeLayerStateInfoArray() {
    KvLayerStateInfoArray* const taken = m_entries;
    m_entries = nullptr;
    FillLayerList();
    return taken;
}

void CKvEditLayerStateListCtrl::append(const std::vector<CKvLayerStateInfo*>& entries) {
    if (entries.empty()) return;
    if (!m_entries) SetLayerStateInfoArray(new KvLayerStateInfoArray);
    std::vector<int> rows;
    for (CKvLayerStateInfo* const entry : entries) {
        entry->SetLayerIndex(m_entries->GetSize());
        rows.push_back(m_entries->Add(entry));
    }
    m_foldedNames.clear();
    m_model->entriesAppended(static_cast<int>(entries.size()));
    makeCurrent(m_model->index(m_model->rowCount() - 1, kStateColName), QItemSelectionModel::NoUpdate);
    selectRowNumbers(rows);
    emit edited();
}

/// The row that takes the place of the first one gets the focus.
void CKvEditLayerStateListCtrl::removeSelected() {
    const std::vector<int> rows = selectedRowNumbers();
    if (rows.empty()) return;
    std::vector<char> isRemoved(static_cast<std::size_t>(m_entries->GetSize()));
    for (const int place : selectedPlaces()) {
        isRemoved[static_cast<std::size_t>(place)] = 1;
    }
    KvLayerStateInfoArray removed;
    KvLayerStateInfoArray staying;
    for (int place = 0; place < m_entries->GetSize(); ++place) {
        CKvLayerStateInfo* const entry = m_entries->GetAt(place);
        const bool goes = isRemoved[static_cast<std::size_t>(place)] != 0;
        if (!goes) entry->SetLayerIndex(staying.GetSize());
        (goes ? removed : staying).Add(entry);
    }
    const int top = verticalScrollBar()->value();
    const int column = std::max(currentIndex().column(), 0);
    *m_entries = staying;
    FillLayerList();
    for (const CKvLayerStateInfo* const entry : removed) {
        delete entry;
    }
    verticalScrollBar()->setValue(top);
    const int next = std::min(rows.front(), m_model->rowCount() - 1);
    if (next >= 0) makeCurrent(m_model->index(next, column), QItemSelectionModel::NoUpdate);
    emit edited();
}

// ---- mouse and keys ----

bool CKvEditLayerStateListCtrl::isClickedColumn(int column) const {
    return column > kStateColName && !m_model->isGreyed(column);
}

void CKvEditLayerStateListCtrl::cellClicked(int /*row*/, int column) { OnClickSubItemLayerstateList(column); }

void CKvEditLayerStateListCtrl::cellDoubleClicked(int row, int column) {
    if (row >= 0 && column == kStateColName) SetCurrentLayer();
}

QString CKvEditLayerStateListCtrl::nameAt(int row) const {
    const CKvLayerStateInfo* const entry = m_model->entryAt(row);
    return entry ? QString::fromStdWString(entry->GetLayerName()) : QString();
}

/// Space and Enter are a click on the cell with the focus; Enter on a name makes the layer current.
bool CKvEditLayerStateListCtrl::keyEdits(QKeyEvent* event) {
    if (event->modifiers() & ~Qt::KeypadModifier) return false;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentIndex().column() == kStateColName) {
            SetCurrentLayer();
            return true;
        }
        [[fallthrough]];
    case Qt::Key_Space: {
        const int row = currentIndex().row();
        if (row >= 0 && !selectionModel()->isRowSelected(row, {})) selectRowNumbers({row});
        OnClickSubItemLayerstateList(currentIndex().column());
        return true;
    }
    case Qt::Key_Delete: emit removeWanted(); return true;
    case Qt::Key_Insert: emit addWanted(); return true;
    default: return false;
    }
}
