// The states of another drawing, with ticks.
#include "layer_states/choose/choose_states_model.h"

#include "frame/util/resource_text.h"

#include "hxtext.h"

#include <unordered_map>

KvChooseStatesModel::KvChooseStatesModel(const KvLayerStateMap& ours, const KvLayerStateMap& theirs)
    : KvSortedRows({resourceText(kStrChooseName), resourceText(kStrChooseLayers),
                    resourceText(kStrChooseImport), resourceText(kStrChooseDescription)},
                   nullptr),
      m_theirs(theirs) {
    std::unordered_map<std::wstring, const CKvLayerState*> taken;
    for (std::size_t i = 0; i < ours.size(); ++i) {
        taken.emplace(hxutFoldName(ours.at(i)->GetLayerStateName().c_str()), ours.at(i));
    }
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        CKvLayerState* const state = theirs.at(i);
        if (state->isHidden()) continue;
        Row row;
        row.state = state;
        const auto found = taken.find(hxutFoldName(state->GetLayerStateName().c_str()));
        if (found != taken.end())
            row.import = found->second->isOfReference() ? Import::hidesReference : Import::replaces;
        m_states.push_back(row);
    }
    reload();
}

void KvChooseStatesModel::tick(const std::vector<int>& places, bool isTicked) {
    for (const int place : places) {
        m_states[static_cast<std::size_t>(place)].isTicked = isTicked;
    }
    emitChanged();
    emit ticked();
}

std::wstring_view KvChooseStatesModel::nameAt(int place) const { return stateAt(place)->GetLayerStateName(); }

int KvChooseStatesModel::layersOf(const Row& row) const {
    if (row.layers < 0) {
        row.layers = 0;
        m_theirs.visitEntries(row.state, [&row](const HxLyStateEntry&) {
            ++row.layers;
            return true;
        });
    }
    return row.layers;
}

std::vector<std::int64_t> KvChooseStatesModel::keysOf(int column) const {
    std::vector<std::int64_t> keys;
    std::vector<std::wstring_view> descriptions;
    for (const Row& row : m_states) {
        if (column == kChooseColDescription) descriptions.push_back(row.state->GetDescription());
        keys.push_back(column == kChooseColLayers ? layersOf(row) : static_cast<int>(row.import));
    }
    return column == kChooseColDescription ? naturalRanks(descriptions) : keys;
}

QString KvChooseStatesModel::textOf(const Row& row, int column) const {
    switch (column) {
    case kChooseColName: return QString::fromStdWString(row.state->GetLayerStateName());
    case kChooseColLayers: return QString::number(layersOf(row));
    case kChooseColDescription: return QString::fromStdWString(row.state->GetDescription()).simplified();
    default: break;
    }
    switch (row.import) {
    case Import::replaces: return resourceText(kStrChooseReplaces);
    case Import::hidesReference: return resourceText(kStrChooseBesideReference);
    default: return resourceText(kStrChooseNew);
    }
}

QVariant KvChooseStatesModel::data(const QModelIndex& index, int role) const {
    const int place = placeAt(index.row());
    if (place < 0) return {};
    const Row& row = m_states[static_cast<std::size_t>(place)];
    const bool isName = index.column() == kChooseColName;
    switch (role) {
    case Qt::DisplayRole: return textOf(row, index.column());
    case Qt::ToolTipRole:
        return tipOf(index.column() == kChooseColDescription
                         ? QString::fromStdWString(row.state->GetDescription())
                         : textOf(row, index.column()));
    case Qt::CheckStateRole:
        return isName ? QVariant(row.isTicked ? Qt::Checked : Qt::Unchecked) : QVariant();
    default: return {};
    }
}

bool KvChooseStatesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    const int place = placeAt(index.row());
    if (place < 0 || role != Qt::CheckStateRole || index.column() != kChooseColName) return false;
    tick({place}, value.toInt() == Qt::Checked);
    return true;
}

Qt::ItemFlags KvChooseStatesModel::flags(const QModelIndex& index) const {
    if (placeAt(index.row()) < 0) return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    return index.column() == kChooseColName ? flags | Qt::ItemIsUserCheckable : flags;
}
