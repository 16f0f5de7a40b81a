#include "layer_states/compare/differences_model.h"

#include "frame/util/resource_text.h"
#include "layer_states/edit/entry_cells.h"
#include "manager_ui/grid/lineweight_text.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

struct PropertyName {
    std::int32_t property;
    KvString name;
};

/// In the order of the boxes that choose what is restored; 0: the layer itself.
constexpr PropertyName kPropertyNames[] = {{0, kStrDifferenceLayer},
                                           {HxLyState::kOn, kStrStatesOn},
                                           {HxLyState::kFrozen, kStrStatesFrozen},
                                           {HxLyState::kLocked, kStrStatesLocked},
                                           {HxLyState::kPlot, kStrStatesPlot},
                                           {HxLyState::kCurrentViewportFrozen, kStrStatesVpFrozen},
                                           {HxLyState::kNewViewportFrozen, kStrStatesNewVpFrozen},
                                           {HxLyState::kColor, kStrStatesColor},
                                           {HxLyState::kLinetype, kStrStatesLinetype},
                                           {HxLyState::kLineweight, kStrStatesLineweight},
                                           {HxLyState::kPlotStyle, kStrStatesPlotStyle},
                                           {HxLyState::kTransparency, kStrStatesTransparency}};

const PropertyName* nameOfProperty(std::int32_t property) {
    return std::find_if(std::begin(kPropertyNames), std::end(kPropertyNames),
                        [&](const PropertyName& name) { return name.property == property; });
}

}  // namespace

KvDifferencesModel::KvDifferencesModel(QObject* parent)
    : KvSortedRows({resourceText(kStrDifferenceLayer), resourceText(kStrDifferenceProperty),
                    resourceText(kStrDifferenceInState), resourceText(kStrDifferenceInDrawing)},
                   parent),
      m_inInches(lineweightsAreInInches()) {}

void KvDifferencesModel::setDifferences(std::shared_ptr<const KvStateDifferences> differences) {
    if (!differences && m_rows.empty()) return;
    m_differences = std::move(differences);
    m_rows.clear();
    const std::size_t count = m_differences ? m_differences->layers().size() : 0;
    for (std::uint32_t number = 0; number < count; ++number) {
        const KvStateDifferences::Layer& layer = m_differences->layers()[number];
        if (layer.properties == 0) m_rows.push_back({number, 0});
        for (const PropertyName& name : kPropertyNames) {
            if ((layer.properties & name.property) != 0) m_rows.push_back({number, name.property});
        }
    }
    reload();
}

std::wstring_view KvDifferencesModel::nameAt(int place) const {
    const Row row = m_rows[static_cast<std::size_t>(place)];
    return m_differences->layers()[row.layer].inState.GetLayerName();
}

/// Rows of a layer lie side by side: the layers are sorted, which are fewer.
std::vector<std::uint32_t> KvDifferencesModel::placesByName() const {
    std::vector<std::wstring_view> names;
    std::vector<std::uint32_t> first;  // the place of each layer's first row
    for (std::uint32_t place = 0; place < m_rows.size(); ++place) {
        if (place > 0 && m_rows[place].layer == m_rows[place - 1].layer) continue;
        first.push_back(place);
        names.push_back(nameAt(static_cast<int>(place)));
    }
    std::vector<std::uint32_t> places;
    places.reserve(m_rows.size());
    for (const std::uint32_t number : naturalOrder(names)) {
        const std::uint32_t layer = m_rows[first[number]].layer;
        for (std::uint32_t place = first[number]; place < m_rows.size() && m_rows[place].layer == layer;
             ++place) {
            places.push_back(place);
        }
    }
    return places;
}

CStdStr<wchar_t> KvDifferencesModel::layerAt(int row) const {
    const int place = placeAt(row);
    return place < 0 ? CStdStr<wchar_t>() : CStdStr<wchar_t>(std::wstring(nameAt(place)).c_str());
}

std::vector<std::int64_t> KvDifferencesModel::keysOf(int column) const {
    std::vector<std::int64_t> keys(m_rows.size());
    if (column == kDifferenceProperty) {
        std::transform(m_rows.begin(), m_rows.end(), keys.begin(), [](const Row& row) {
            return std::distance(std::begin(kPropertyNames), nameOfProperty(row.property));
        });
        return keys;
    }
    std::vector<std::wstring> texts(m_rows.size());
    for (std::size_t place = 0; place < texts.size(); ++place) {
        texts[place] = textOf(static_cast<int>(place), column).toStdWString();
    }
    return naturalRanks({texts.begin(), texts.end()});
}

QString KvDifferencesModel::textOf(int place, int column) const {
    const Row row = m_rows[static_cast<std::size_t>(place)];
    const KvStateDifferences::Layer& layer = m_differences->layers()[row.layer];
    const bool isMissing = row.property == 0;
    switch (column) {
    case kDifferenceLayer: return QString::fromStdWString(layer.inState.GetLayerName());
    case kDifferenceProperty: return resourceText(nameOfProperty(row.property)->name).remove('&');
    case kDifferenceInState:
        return isMissing ? resourceText(kStrLayerIsThere)
                         : entryText(layer.inState, row.property, m_inInches);
    case kDifferenceInDrawing:
        return isMissing ? resourceText(kStrLayerIsMissing)
                         : entryText(layer.inDrawing, row.property, m_inInches);
    default: return {};
    }
}

QVariant KvDifferencesModel::data(const QModelIndex& index, int role) const {
    const int place = placeAt(index.row());
    if (place < 0) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: return textOf(place, index.column());
    default: return {};
    }
}

Qt::ItemFlags KvDifferencesModel::flags(const QModelIndex& index) const {
    if (placeAt(index.row()) < 0) return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
}
