// Which states are listed, in which order, and typing their names.
#include "layer_states/manager/layer_state_list_ctrl.h"

#include "hxtext.h"
#include "manager_ui/grid/collation.h"
#include "manager_ui/grid/natural_keys.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QRegExp>

#include <numeric>
#include <utility>

namespace {

constexpr int kLongestName = 255;
constexpr int kWidths[kStatesColumnCount] = {24, 150, 80, 100, 60, 120};

QString folded(const CStdStr<wchar_t>& text) { return QString::fromStdWString(hxutFoldName(text.c_str())); }

}  // namespace

QWidget* KvLayerStateListItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                                    const QModelIndex& index) const {
    QWidget* const editor = KvLayerListCtrlItemDelegate::createEditor(parent, option, index);
    if (auto* const line = qobject_cast<QLineEdit*>(editor)) line->setMaxLength(kLongestName);
    return editor;
}

CKvLayerStateListCtrl::CKvLayerStateListCtrl(QWidget* parent) : QTreeView(parent) {
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setItemsExpandable(false);
    setAllColumnsShowFocus(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setItemDelegate(new KvLayerStateListItemDelegate(this));
    connect(itemDelegate(), SIGNAL(closeEditor(QWidget*, QAbstractItemDelegate::EndEditHint)),
            SLOT(OnLvnEndlabeledit(QWidget*, QAbstractItemDelegate::EndEditHint)));
}

void CKvLayerStateListCtrl::setEngine(CKvLayerStateManDlg& engine) {
    m_engine = &engine;
    m_model = new KvLayerStateListModel(engine, this);
    setModel(m_model);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_isShowing) emit selectionMade();
    });
    initHeader();
}

void CKvLayerStateListCtrl::initHeader() {
    for (int column = 0; column < kStatesColumnCount; ++column) {
        setColumnWidth(column, std::max(kWidths[column], header()->sectionSizeHint(column)));
    }
    header()->setMinimumSectionSize(kWidths[kStatesMark]);
    setColumnWidth(kStatesMark, kWidths[kStatesMark]);
    header()->setSectionsClickable(true);
    header()->setSortIndicatorShown(true);
    header()->setSortIndicator(m_sortColumn, Qt::AscendingOrder);
    connect(header(), SIGNAL(sectionClicked(int)), SLOT(slotSectionClicked(int)));
}

void CKvLayerStateListCtrl::setMark(const QIcon& mark) { m_model->setMark(mark); }

// ---- which states, in which order ----

bool CKvLayerStateListCtrl::isFound(const CKvLayerState& state) const {
    if (state.isHidden()) return false;
    if (m_search.empty()) return true;
    const QString text = QString::fromStdWString(m_search);
    const QRegExp pattern(text, Qt::CaseSensitive, QRegExp::Wildcard);
    for (const CStdStr<wchar_t>* const part : {&state.GetLayerStateName(), &state.GetDescription()}) {
        const QString where = folded(*part);
        if (pattern.isValid() ? pattern.indexIn(where) >= 0 : where.contains(text)) return true;
    }
    return false;
}

void CKvLayerStateListCtrl::showStates() {
    const std::vector<CKvLayerState*> selected = selectedStates();
    const CKvLayerState* const current = m_model->stateAt(currentIndex().row());
    std::vector<CKvLayerState*> shown;
    const KvLayerStateMap& states = m_engine->states();
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (isFound(*states.at(i))) shown.push_back(states.at(i));
    }
    sort(shown);
    for (std::size_t row = 0; row < shown.size(); ++row) {
        shown[row]->SetLayerStateIndex(static_cast<int>(row));
    }
    m_isShowing = true;
    m_model->setStates(std::move(shown));
    selectStates(selected, current);
    m_isShowing = false;
    emit selectionMade();
}

void CKvLayerStateListCtrl::selectStates(const std::vector<CKvLayerState*>& states,
                                         const CKvLayerState* current) {
    QItemSelection rows;
    for (const CKvLayerState* const state : states) {
        const int row = m_model->rowOf(state);
        if (row >= 0) rows.select(m_model->index(row, 0), m_model->index(row, kStatesColumnCount - 1));
    }
    const int row = m_model->rowOf(current);
    if (row >= 0) {
        selectionModel()->setCurrentIndex(m_model->index(row, kStatesName), QItemSelectionModel::NoUpdate);
        scrollTo(m_model->index(row, kStatesName));
    }
    selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
}

namespace {

/// What rows are sorted by, before their names.
struct SortKey {
    int number = 0;
    std::wstring text;
};

}  // namespace

void CKvLayerStateListCtrl::sort(std::vector<CKvLayerState*>& states) const {
    const KvCollation collation;
    std::vector<std::wstring_view> names;
    std::vector<SortKey> keys;
    for (CKvLayerState* const state : states) {
        names.emplace_back(state->GetLayerStateName());
        SortKey key;
        const bool isMarked =
            m_sortColumn == kStatesMark && state->GetLayerStateName() == m_engine->restoredName();
        switch (m_sortColumn) {
        case kStatesMark: key.number = isMarked ? 0 : 1; break;
        case kStatesSpace: key.text = collation.lowered(m_model->spaceOf(state).toStdWString()); break;
        case kStatesSame: key.number = m_model->isSameAsDrawing(state) ? 0 : 1; break;
        case kStatesLayers: key.number = m_model->layerCount(state); break;
        case kStatesDescription: key.text = collation.lowered(state->GetDescription()); break;
        default: break;
        }
        keys.push_back(std::move(key));
    }
    const KvNaturalKeys natural(collation, names);
    const auto compare = [&](std::size_t a, std::size_t b) {
        if (keys[a].number != keys[b].number) return keys[a].number < keys[b].number ? -1 : 1;
        const int byText = collation.compareLowered(keys[a].text, keys[b].text);
        return byText != 0 ? byText : natural.compare(a, b);
    };
    std::vector<std::size_t> order(states.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
        return m_isDescending ? compare(a, b) > 0 : compare(a, b) < 0;
    });
    const std::vector<CKvLayerState*> before = states;
    std::transform(order.begin(), order.end(), states.begin(),
                   [&before](std::size_t place) { return before[place]; });
}

void CKvLayerStateListCtrl::slotSectionClicked(int column) {
    m_isDescending = column == m_sortColumn && !m_isDescending;
    m_sortColumn = column;
    header()->setSortIndicator(column, m_isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
    showStates();
}

void CKvLayerStateListCtrl::setSearch(const QString& text) {
    m_search = hxutFoldName(text.trimmed().toStdWString().c_str());
    showStates();
}

// ---- what is selected ----

std::vector<CKvLayerState*> CKvLayerStateListCtrl::selectedStates() const {
    QModelIndexList rows = selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    std::vector<CKvLayerState*> states;
    for (const QModelIndex& row : rows) {
        if (CKvLayerState* const state = m_model->stateAt(row.row())) states.push_back(state);
    }
    return states;
}

CKvLayerState* CKvLayerStateListCtrl::selectedState() const {
    const std::vector<CKvLayerState*> states = selectedStates();
    return states.size() == 1 ? states.front() : nullptr;
}

void CKvLayerStateListCtrl::SetLastSelectItem(const CKvLayerState* state) {
    const QModelIndex index = m_model->index(m_model->rowOf(state), kStatesName);
    if (!index.isValid()) {
        clearSelection();
        return;
    }
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

/// Letters typed go to names, whichever column the focus is in.
void CKvLayerStateListCtrl::keyboardSearch(const QString& text) {
    if (currentIndex().isValid() && currentIndex().column() != kStatesName) {
        selectionModel()->setCurrentIndex(currentIndex().sibling(currentIndex().row(), kStatesName),
                                          QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyboardSearch(text);
}

// ---- names ----

void CKvLayerStateListCtrl::editName(const CKvLayerState* state) {
    const int row = m_model->rowOf(state);
    if (row < 0 || this->state() == EditingState) return;
    SetLastSelectItem(state);
    m_edited = m_model->stateAt(row);
    edit(m_model->index(row, kStatesName));
}

/// The text is taken here and nowhere else, so that one that is given up changes nothing.
void CKvLayerStateListCtrl::OnLvnEndlabeledit(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    CKvLayerState* const state = std::exchange(m_edited, nullptr);
    const auto* const line = qobject_cast<QLineEdit*>(editor);
    if (!state || !line || hint == QAbstractItemDelegate::RevertModelCache) return;
    emit nameTyped(state, line->text());
}
