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

/// Of all states that are not hidden.
std::vector<CKvLayerState*> CKvLayerStateListCtrl::foundStates() const {
    const QString text = QString::fromStdWString(m_search);
    const QRegExp pattern(text, Qt::CaseSensitive, QRegExp::Wildcard);
    const auto fits = [&](const CStdStr<wchar_t>& part) {
        const QString where = folded(part);
        return pattern.isValid() ? pattern.indexIn(where) >= 0 : where.contains(text);
    };
    const KvLayerStateMap& states = m_engine.states();
    std::vector<CKvLayerState*> found;
    for (std::size_t i = 0; i < states.size(); ++i) {
        CKvLayerState* const state = states.at(i);
        if (state->isHidden()) continue;
        if (text.isEmpty() || fits(state->GetLayerStateName()) || fits(state->GetDescription())) {
            found.push_back(state);
        }
    }
    return found;
}

void CKvLayerStateListCtrl::showStates() {
    const std::vector<CKvLayerState*> selected = selectedStates();
    const CKvLayerState* const current = m_model->stateAt(currentIndex().row());
    m_isShowing = true;
    m_model->setStates(foundStates());
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
