#include "layer_states/manager/layer_state_list_model.h"

#include "frame/util/resource_text.h"
#include "hxtext.h"

#include <algorithm>
#include <set>

KvLayerStateListModel::KvLayerStateListModel(CKvLayerStateManDlg& engine, QObject* parent)
    : KvSortedRows({resourceText(kStrStatesName), resourceText(kStrStatesMark), resourceText(kStrStatesSpace),
                    resourceText(kStrStatesSame), resourceText(kStrStatesLayers),
                    resourceText(kStrStatesDescription)},
                   parent),
      m_engine(engine) {}

void KvLayerStateListModel::setStates(std::vector<CKvLayerState*> states) {
    m_states = std::move(states);
    reload();
}

CKvLayerState* KvLayerStateListModel::stateAt(int row) const {
    const int place = placeAt(row);
    CKvLayerState* const state = place < 0 ? nullptr : m_states[static_cast<std::size_t>(place)];
    return m_engine.states().contains(state) ? state : nullptr;
}

int KvLayerStateListModel::rowOf(const CKvLayerState* state) const {
    const auto found = std::find(m_states.begin(), m_states.end(), state);
    const std::vector<int> rows = rowsOf({static_cast<int>(found - m_states.begin())});
    return rows.empty() ? -1 : rows.front();
}

std::wstring_view KvLayerStateListModel::nameAt(int place) const {
    return m_states[static_cast<std::size_t>(place)]->GetLayerStateName();
}

/// States that nobody has looked at are looked into for two of the columns.
std::vector<std::int64_t> KvLayerStateListModel::keysOf(int column) const {
    if (column == kStatesSpace || column == kStatesDescription) return textKeys(column);
    std::vector<std::int64_t> keys;
    keys.reserve(m_states.size());
    for (CKvLayerState* const state : m_states) {
        switch (column) {
        case kStatesMark: keys.push_back(isMarked(state) ? 0 : 1); break;
        case kStatesSame: keys.push_back(isSameAsDrawing(state) ? 0 : 1); break;
        default: keys.push_back(layerCount(state)); break;
        }
    }
    return keys;
}

/// Of columns that show texts. Those are looked at where they stand; of references there are few.
std::vector<std::int64_t> KvLayerStateListModel::textKeys(int column) const {
    const std::wstring model = moduleString(kStrStatesModel);
    const std::wstring layout = moduleString(kStrStatesLayout);
    std::set<std::wstring> references;
    std::vector<std::wstring_view> texts;
    texts.reserve(m_states.size());
    for (const CKvLayerState* const state : m_states) {
        if (column == kStatesDescription) {
            texts.push_back(state->GetDescription());
        } else if (state->isOfReference()) {
            texts.push_back(*references.insert(m_engine.states().referenceOf(state)).first);
        } else {
            texts.push_back(state->GetSpace() == HxLyState::kModel ? model : layout);
        }
    }
    return naturalRanks(texts);
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

/// What is shown needs both: the layers are counted on the way.
bool KvLayerStateListModel::isSameAsDrawing(CKvLayerState* state) const {
    Seen& seen = m_seen[state];
    if (seen.isSame < 0) seen.isSame = m_engine.IsSameAsDWG(state, &seen.layers);
    return seen.isSame != 0;
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

/// The mark's column is too narrow for a text.
QVariant KvLayerStateListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (section == kStatesMark && role == Qt::DisplayRole) return {};
    return KvSortedRows::headerData(section, orientation,
                                    role == Qt::AccessibleTextRole ? Qt::ToolTipRole : role);
}

Qt::ItemFlags KvLayerStateListModel::flags(const QModelIndex& index) const {
    const CKvLayerState* const state = stateAt(index.row());
    if (!state) return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.column() == kStatesName && !state->isOfReference() ? flags | Qt::ItemIsEditable : flags;
}
