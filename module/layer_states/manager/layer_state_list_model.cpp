#include "layer_states/manager/layer_state_list_model.h"

#include "frame/resource_text.h"
#include "hxtext.h"

#include <algorithm>

KvLayerStateListModel::KvLayerStateListModel(CKvLayerStateManDlg& engine, QObject* parent)
    : QAbstractTableModel(parent), m_engine(engine) {}

void KvLayerStateListModel::setStates(std::vector<CKvLayerState*> states) {
    beginResetModel();
    m_states = std::move(states);
    endResetModel();
}

CKvLayerState* KvLayerStateListModel::stateAt(int row) const {
    CKvLayerState* const state =
        row >= 0 && row < rowCount() ? m_states[static_cast<std::size_t>(row)] : nullptr;
    return m_engine.states().contains(state) ? state : nullptr;
}

int KvLayerStateListModel::rowOf(const CKvLayerState* state) const {
    const auto found = std::find(m_states.begin(), m_states.end(), state);
    return found == m_states.end() ? -1 : static_cast<int>(found - m_states.begin());
}

void KvLayerStateListModel::refresh(const CKvLayerState* state) {
    m_seen.erase(state);
    const int row = rowOf(state);
    if (row >= 0) emit dataChanged(index(row, 0), index(row, kStatesColumnCount - 1));
}

int KvLayerStateListModel::layerCount(const CKvLayerState* state) const {
    int& layers = m_seen[state].layers;
    if (layers < 0) {
        layers = 0;
        m_engine.states().visitEntries(state, [&layers](const HxLyStateEntry&) {
            ++layers;
            return true;
        });
    }
    return layers;
}

bool KvLayerStateListModel::isSameAsDrawing(CKvLayerState* state) const {
    int& isSame = m_seen[state].isSame;
    if (isSame < 0) isSame = m_engine.IsSameAsDWG(state);
    return isSame != 0;
}

QString KvLayerStateListModel::spaceOf(const CKvLayerState* state) const {
    if (state->isOfReference()) return QString::fromStdWString(m_engine.states().referenceOf(state));
    return resourceText(state->GetSpace() == HxLyState::kModel ? kStrStatesModel : kStrStatesLayout);
}

bool KvLayerStateListModel::isMarked(const CKvLayerState* state) const {
    const CStdStr<wchar_t>& restored = m_engine.restoredName();
    return !restored.empty() && hxutEqualNames(restored.c_str(), state->GetLayerStateName().c_str());
}

QString KvLayerStateListModel::textOf(CKvLayerState* state, int column) const {
    switch (column) {
    case kStatesName: return QString::fromStdWString(state->GetLayerStateName());
    case kStatesSpace: return spaceOf(state);
    case kStatesSame: return resourceText(isSameAsDrawing(state) ? kStrStatesYes : kStrStatesNo);
    case kStatesLayers: return QString::number(layerCount(state));
    case kStatesDescription: return QString::fromStdWString(state->GetDescription());
    default: return isMarked(state) ? resourceText(kStrStatesMark) : QString();
    }
}

int KvLayerStateListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_states.size());
}

int KvLayerStateListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kStatesColumnCount;
}

QVariant KvLayerStateListModel::data(const QModelIndex& index, int role) const {
    CKvLayerState* const state = stateAt(index.row());
    if (!state) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return index.column() == kStatesMark ? QVariant() : QVariant(textOf(state, index.column()));
    case Qt::AccessibleTextRole: return textOf(state, index.column());
    case Qt::DecorationRole:
        return index.column() == kStatesMark && isMarked(state) ? QVariant(m_mark) : QVariant();
    default: return {};
    }
}

QVariant KvLayerStateListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= kStatesColumnCount) return {};
    const QString text = resourceText(kStrStatesMark + section);
    if (role == Qt::ToolTipRole || role == Qt::AccessibleTextRole) return text;
    return role == Qt::DisplayRole && section != kStatesMark ? QVariant(text) : QVariant();
}

Qt::ItemFlags KvLayerStateListModel::flags(const QModelIndex& index) const {
    const CKvLayerState* const state = stateAt(index.row());
    if (!state) return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.column() == kStatesName && !state->isOfReference() ? flags | Qt::ItemIsEditable : flags;
}
