// The layers of a state in the edit dialog's list.
#include "layer_states/edit/edit_layer_state_model.h"

#include "frame/format_message.h"
#include "frame/resource_text.h"
#include "layer_states/edit/layer_state_infos.h"
#include "manager_ui/cells/cell_roles.h"
#include "manager_ui/grid/layer_cells.h"
#include "manager_ui/grid/layer_sort.h"
#include "manager_ui/grid/lineweight_text.h"

namespace {

struct FlagColumn {
    int flag;
    int iconWith, iconWithout;
};

/// Null for columns without icons.
const FlagColumn* flagColumn(int column) {
    static constexpr FlagColumn kOn = {HxLyState::kLayerOff, kIconOff, kIconOn};
    static constexpr FlagColumn kFreeze = {HxLyState::kLayerFrozen, kIconFrozen, kIconThawed};
    static constexpr FlagColumn kLock = {HxLyState::kLayerLocked, kIconLocked, kIconUnlocked};
    static constexpr FlagColumn kPlot = {HxLyState::kLayerPlots, kIconPlot, kIconNoPlot};
    static constexpr FlagColumn kNewVp = {HxLyState::kLayerNewViewportFrozen, kIconVpFrozen, kIconVpThawed};
    switch (column) {
    case kStateColOn: return &kOn;
    case kStateColFreeze: return &kFreeze;
    case kStateColLock: return &kLock;
    case kStateColPlot: return &kPlot;
    case kStateColNewVpFreeze: return &kNewVp;
    default: return nullptr;
    }
}

int iconOf(const CKvLayerStateInfo& entry, const FlagColumn& column) {
    return (entry.GetLayerFlag() & column.flag) != 0 ? column.iconWith : column.iconWithout;
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

int flagOfColumn(int column) {
    const FlagColumn* const flag = flagColumn(column);
    return flag ? flag->flag : 0;
}

int percentOf(const CKvLayerStateInfo& entry) {
    return static_cast<int>(
        transparencyPercent(HxCmTransparency(static_cast<std::uint8_t>(entry.GetTransparency()))));
}

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
    switch (column) {
    case kStateColName: return QString::fromStdWString(entry.GetLayerName());
    case kStateColColor:
        return QString::fromStdWString(GetKvColorFromLayerState(entry).colorNameForDisplay());
    case kStateColLinetype: return QString::fromStdWString(entry.GetLineType());
    case kStateColLineweight:
        return QString::fromStdWString(PrintDisplayLWeightString(entry.GetLineWeight(), m_inInches));
    case kStateColTransparency: return QString::number(percentOf(entry));
    case kStateColPlotStyle: return QString::fromStdWString(entry.GetPlotStyle());
    default: return {};
    }
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
    const FlagColumn* const flag = flagColumn(index.column());
    switch (role) {
    case Qt::DisplayRole: return flag ? QVariant() : QVariant(textOf(*entry, index.column()));
    case Qt::DecorationRole:
        return flag ? QVariant(m_icons[static_cast<std::size_t>(iconOf(*entry, *flag))]) : QVariant();
    case Qt::AccessibleTextRole: {
        if (flag) return iconText(iconOf(*entry, *flag));
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
