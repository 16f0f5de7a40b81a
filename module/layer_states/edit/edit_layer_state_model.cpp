// The layers of a state in the edit dialog's list.
#include "layer_states/edit/edit_layer_state_model.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "layer_states/edit/entry_cells.h"
#include "layer_states/edit/layer_state_infos.h"
#include "manager_ui/cells/cell_roles.h"
#include "manager_ui/grid/layer_sort.h"

namespace {

constexpr std::int32_t kColumnProperties[kStateColumnCount] = {0,
                                                               HxLyState::kOn,
                                                               HxLyState::kFrozen,
                                                               HxLyState::kLocked,
                                                               HxLyState::kColor,
                                                               HxLyState::kLinetype,
                                                               HxLyState::kLineweight,
                                                               HxLyState::kTransparency,
                                                               HxLyState::kPlotStyle,
                                                               HxLyState::kPlot,
                                                               HxLyState::kNewViewportFrozen};

/// 0 for the name.
std::int32_t propertyOf(int column) {
    const bool isColumn = column >= 0 && column < kStateColumnCount;
    return isColumn ? kColumnProperties[column] : 0;
}

std::vector<QString> headers() {
    constexpr KvString kHeaders[kStateColumnCount] = {
        kStrHeaderName,      kStrHeaderOn,       kStrHeaderFreeze,     kStrHeaderLock,
        kStrHeaderColor,     kStrHeaderLinetype, kStrHeaderLineweight, kStrHeaderTransparency,
        kStrHeaderPlotStyle, kStrHeaderPlot,     kStrHeaderNewVpFreeze};
    std::vector<QString> texts;
    for (const KvString header : kHeaders) {
        texts.push_back(resourceText(header));
    }
    return texts;
}

}  // namespace

int flagOfColumn(int column) { return flagOfProperty(propertyOf(column)); }

KvEditLayerStateModel::KvEditLayerStateModel(QObject* parent) : KvSortedRows(headers(), parent) {}

void KvEditLayerStateModel::setUnits(bool inInches, bool hasNamedPlotStyles) {
    m_inInches = inInches;
    m_hasNamedPlotStyles = hasNamedPlotStyles;
    emitChanged();
}

void KvEditLayerStateModel::setEntries(const KvLayerStateInfoArray* entries) {
    m_entries = entries;
    reload();
}

int KvEditLayerStateModel::placeCount() const { return m_entries ? m_entries->GetSize() : 0; }

std::wstring_view KvEditLayerStateModel::nameAt(int place) const {
    return m_entries->GetAt(place)->GetLayerName();
}

std::vector<std::int64_t> KvEditLayerStateModel::keysOf(int column) const {
    if (!m_entries) return {};
    if (column == kStateColLinetype || column == kStateColPlotStyle) {
        std::vector<std::wstring_view> texts;
        texts.reserve(static_cast<std::size_t>(placeCount()));
        for (const CKvLayerStateInfo* const entry : *m_entries) {
            texts.push_back(column == kStateColLinetype ? entry->GetLineType() : entry->GetPlotStyle());
        }
        return naturalRanks(texts);
    }
    std::vector<std::int64_t> keys;
    keys.reserve(static_cast<std::size_t>(placeCount()));
    const int flag = flagOfColumn(column);
    for (int place = 0; place < placeCount(); ++place) {
        const CKvLayerStateInfo& entry = *m_entries->GetAt(place);
        switch (column) {
        case kStateColColor: keys.push_back(colorSortNumber(GetKvColorFromLayerState(entry))); break;
        case kStateColLineweight: keys.push_back(entry.GetLineWeight()); break;
        case kStateColTransparency: keys.push_back(percentOf(entry)); break;
        case kStateColOn: keys.push_back((entry.GetLayerFlag() & flag) == 0); break;
        default: keys.push_back((entry.GetLayerFlag() & flag) != 0); break;
        }
    }
    return keys;
}

CKvLayerStateInfo* KvEditLayerStateModel::entryAt(int row) const {
    const int place = placeAt(row);
    return place < 0 ? nullptr : m_entries->GetAt(place);
}

// ---- cells ----

QString KvEditLayerStateModel::textOf(const CKvLayerStateInfo& entry, int column) const {
    if (column == kStateColName) return QString::fromStdWString(entry.GetLayerName());
    return entryText(entry, propertyOf(column), m_inInches);
}

QVariant KvEditLayerStateModel::payloadOf(const CKvLayerStateInfo& entry, int column) const {
    switch (column) {
    case kStateColName:
        return QVariant::fromValue(
            KvMarkItemData{entry.GetCurrentLayer() != 0 ? m_icons[kIconCurrent] : QIcon()});
    case kStateColColor: return QVariant::fromValue(LayerListColorItemData{GetKvColorFromLayerState(entry)});
    case kStateColLineweight: return QVariant::fromValue(LayerListLineweightItemData{entry.GetLineWeight()});
    default: return {};
    }
}

QVariant KvEditLayerStateModel::data(const QModelIndex& index, int role) const {
    const CKvLayerStateInfo* const entry = entryAt(index.row());
    if (!entry || index.column() < 0 || index.column() >= kStateColumnCount) return {};
    const int icon = entryIcon(*entry, propertyOf(index.column()));
    switch (role) {
    case Qt::DisplayRole: return icon >= 0 ? QVariant() : QVariant(textOf(*entry, index.column()));
    case Qt::DecorationRole:
        return icon >= 0 ? QVariant(m_icons[static_cast<std::size_t>(icon)]) : QVariant();
    case Qt::AccessibleTextRole: {
        const QString text = textOf(*entry, index.column());
        const bool isMarked = index.column() == kStateColName && entry->GetCurrentLayer() != 0;
        return isMarked ? formatMessage(resourceText(kStrCurrentInState), {text}) : text;
    }
    case Qt::ToolTipRole:
        return isGreyed(index.column()) ? QVariant(resourceText(kStrStylesFollowColors)) : QVariant();
    case kRolePayload: return payloadOf(*entry, index.column());
    case kRoleGreyed: return isGreyed(index.column());
    case kRoleOverridden: return false;
    default: return {};
    }
}

Qt::ItemFlags KvEditLayerStateModel::flags(const QModelIndex& index) const {
    if (!entryAt(index.row())) return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
}
