// Which states are listed, in which order, and typing their names.
#include "layer_states/manager/layer_state_list_ctrl.h"

#include "hxtext.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QRegExp>

#include <utility>

namespace {

constexpr int kLongestName = 255;
constexpr int kLetters[kStatesColumnCount] = {26, 0, 11, 10, 8, 20};
constexpr int kMarkWidth = 24;

QString folded(const CStdStr<wchar_t>& text) { return QString::fromStdWString(hxutFoldName(text.c_str())); }

}  // namespace

QWidget* KvLayerStateListItemDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                                    const QModelIndex& index) const {
    QWidget* const editor = KvLayerListCtrlItemDelegate::createEditor(parent, option, index);
    if (auto* const line = qobject_cast<QLineEdit*>(editor)) line->setMaxLength(kLongestName);
    return editor;
}

CKvLayerStateListCtrl::CKvLayerStateListCtrl(CKvLayerStateManDlg& engine, QWidget* parent)
    : CKvListCtrl(new KvLayerStateListModel(engine, nullptr), parent), m_engine(engine),
      m_model(qobject_cast<KvLayerStateListModel*>(model())) {
    setItemDelegate(new KvLayerStateListItemDelegate(this));
    connect(itemDelegate(), SIGNAL(closeEditor(QWidget*, QAbstractItemDelegate::EndEditHint)),
            SLOT(OnLvnEndlabeledit(QWidget*, QAbstractItemDelegate::EndEditHint)));
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_isShowing) emit selectionMade();
    });
    initHeader();
}

void CKvLayerStateListCtrl::initHeader() {
    setColumnLetters({kLetters, kLetters + kStatesColumnCount}, kStatesDescription);
    horizontalHeader()->setMinimumSectionSize(kMarkWidth);
    horizontalHeader()->resizeSection(kStatesMark, kMarkWidth);
    horizontalHeader()->moveSection(kStatesMark, 0);
}

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
    const KvLayerStateMap& states = m_engine.states();
    for (std::size_t i = 0; i < states.size(); ++i) {
        if (isFound(*states.at(i))) shown.push_back(states.at(i));
    }
    m_isShowing = true;
    m_model->setStates(std::move(shown));
    std::vector<int> rows;
    for (const CKvLayerState* const state : selected) {
        const int row = m_model->rowOf(state);
        if (row >= 0) rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    const int row = m_model->rowOf(current);
    if (row >= 0) makeCurrent(m_model->index(row, kStatesName), QItemSelectionModel::NoUpdate);
    selectRowNumbers(rows);
    m_isShowing = false;
    emit selectionMade();
}

void CKvLayerStateListCtrl::setSearch(const QString& text) {
    m_search = hxutFoldName(text.trimmed().toStdWString().c_str());
    showStates();
}

// ---- what is selected ----

std::vector<CKvLayerState*> CKvLayerStateListCtrl::selectedStates() const {
    std::vector<CKvLayerState*> states;
    for (const int row : selectedRowNumbers()) {
        if (CKvLayerState* const state = m_model->stateAt(row)) states.push_back(state);
    }
    return states;
}

CKvLayerState* CKvLayerStateListCtrl::selectedState() const {
    const int row = GetNextItem(-1);
    return row >= 0 && GetNextItem(row) < 0 ? m_model->stateAt(row) : nullptr;
}

void CKvLayerStateListCtrl::SetLastSelectItem(const CKvLayerState* state) {
    CKvListCtrl::SetLastSelectItem(m_model->rowOf(state));
}

void CKvLayerStateListCtrl::cellDoubleClicked(int row, int) {
    if (row >= 0) emit rowChosen();
}

// ---- names ----

void CKvLayerStateListCtrl::editName(const CKvLayerState* state) {
    const int row = m_model->rowOf(state);
    if (row < 0 || isEditing()) return;
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
