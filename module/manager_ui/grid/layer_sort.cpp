// Keys and comparison of the grid's rows.
#include "layer_sort.h"

#include "layer_cells.h"
#include "layer_column.h"
#include "layer_list_ctrl.h"
#include "merge_sort.h"
#include "natural_keys.h"

#include "model/auto_layer_record.h"
#include "model/layer_data.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"

#include <algorithm>
#include <numeric>

namespace {

int threeWay(int a, int b) { return (a > b) - (a < b); }

int threeWay(const std::wstring& a, const std::wstring& b) {
    const int order = a.compare(b);
    return (order > 0) - (order < 0);
}

/// Folds what the host folds in names, so that the keys may be compared as they are.
void readLinetype(HxDbObjectId id, KvLayerSortKey& key) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> linetype(id, HxDb::kForRead);
    key.isComparable = static_cast<bool>(linetype);
    if (!linetype) return;
    CStdStr<wchar_t> name = linetype->name();
    name.MakeLower();
    key.text = name;
}

int percentOf(const HxCmTransparency& transparency) {
    return static_cast<int>(transparencyPercent(transparency));
}

}  // namespace

std::int64_t colorSortNumber(const HxCmColor& color) {
    constexpr std::int64_t kBehindTrueColors = std::int64_t{1} << 32;
    return color.isByIndex() ? kBehindTrueColors + static_cast<std::uint16_t>(color.colorIndex())
                             : color.red() << 16 | color.green() << 8 | color.blue();
}

MyComp::MyComp(int column, bool ascending, const KvLayerListCtrl* grid)
    : MyComp(column, ascending, grid->GetDatabase(), grid->transactions()) {}

MyComp::MyComp(int column, bool ascending, HxDbDatabase* database, HxDbTransactionManager* transactions)
    : m_column(column), m_ascending(ascending), m_database(database), m_transactions(transactions),
      m_isLayout(database && !database->tilemode()), m_collation(std::make_shared<KvCollation>()) {
    if (m_isLayout) m_viewport = hxdbGetCurVportId(database);
}

KvLayerSortKey MyComp::keyOf(KvLayerData* layer) const {
    KvLayerSortKey key;
    const KvAutoLayerRecordPtr record(m_transactions, layer, true);
    if (!record.object()) return key;
    key.isOpened = true;
    key.name = record->name();
    readKey(*record.object(), key);
    return key;
}

void MyComp::readKey(const HxDbLayerTableRecord& layer, KvLayerSortKey& key) const {
    bool overridden = false;
    switch (m_column) {
    case kColStatus: key.number = 2 * layer.isInUse() + (m_isLayout && layer.hasOverrides(m_viewport)); break;
    case kColOn: key.number = !layer.isOff(); break;
    case kColFreeze: key.number = layer.isFrozen(); break;
    case kColLock: key.number = layer.isLocked(); break;
    case kColColor: key.number = colorSortNumber(layer.color()); break;
    case kColLinetype: readLinetype(layer.linetypeObjectId(), key); break;
    case kColLineweight: key.number = layer.lineWeight(); break;
    case kColTransparency: key.number = percentOf(layer.transparency()); break;
    case kColPlotStyle: key.text = layer.plotStyleName(); break;
    case kColPlot: key.number = layer.isPlottable(); break;
    case kColNewVpFreeze: key.number = layer.VPDFLT(); break;
    case kColDescription: key.text = layer.description(); break;
    case kColVpFreeze: {
        const HxDbObjectPointer<HxDbViewport> viewport(m_viewport, HxDb::kForRead);
        key.isComparable = static_cast<bool>(viewport);
        key.number = viewport && viewport->isLayerFrozenInViewport(layer.objectId());
        break;
    }
    case kColVpColor: key.number = colorSortNumber(layer.color(m_viewport, overridden)); break;
    case kColVpLinetype: readLinetype(layer.linetypeObjectId(m_viewport, overridden), key); break;
    case kColVpLineweight: key.number = layer.lineWeight(m_viewport, overridden); break;
    case kColVpPlotStyle: key.text = layer.plotStyleName(m_viewport, overridden); break;
    case kColVpTransparency: key.number = percentOf(layer.transparency(m_viewport, overridden)); break;
    default: break;
    }
}

int MyComp::colorComp(const HxCmColor& x, const HxCmColor& y) {
    if (x.isByIndex() && y.isByIndex()) {
        return threeWay(static_cast<std::uint16_t>(x.colorIndex()),
                        static_cast<std::uint16_t>(y.colorIndex()));
    }
    if (x.isByIndex() || y.isByIndex()) return x.isByIndex() ? 1 : -1;
    const int red = threeWay(x.red(), y.red());
    const int green = threeWay(x.green(), y.green());
    return red ? red : green ? green : threeWay(x.blue(), y.blue());
}

bool MyComp::isByName() const { return m_column == kColName; }

int MyComp::compareValues(const KvLayerSortKey& a, const KvLayerSortKey& b) const {
    if (!a.isComparable || !b.isComparable) return 0;
    return a.number != b.number ? (a.number < b.number ? -1 : 1) : threeWay(a.text, b.text);
}

bool MyComp::lessthan(const KvLayerSortKey& a, const KvLayerSortKey& b) const {
    if (!a.isOpened || !b.isOpened) return true;
    const int order = isByName() ? m_collation->compareNatural(a.name, b.name) : compareValues(a, b);
    return goesBefore(order ? order : m_collation->compareTexts(a.name, b.name));
}

bool MyComp::lessthan(KvLayerData* a, KvLayerData* b) const { return lessthan(keyOf(a), keyOf(b)); }

namespace {

/// The keys of layers that are sorted by another column than their names, or some of which can not be opened.
class SortedKeys {
public:
    SortedKeys(const std::vector<KvLayerData*>& layers, const MyComp& order) : m_order(order) {
        m_keys.reserve(layers.size());
        m_ties.reserve(layers.size());
        for (KvLayerData* const layer : layers) {
            m_keys.push_back(order.keyOf(layer));
            m_ties.push_back(order.collation().lowered(m_keys.back().name));
        }
    }

    bool lessthan(std::uint32_t a, std::uint32_t b) const {
        const KvLayerSortKey& x = m_keys[a];
        const KvLayerSortKey& y = m_keys[b];
        if (!x.isOpened || !y.isOpened) return true;
        const int order = m_order.isByName() ? m_order.collation().compareNatural(x.name, y.name)
                                             : m_order.compareValues(x, y);
        return m_order.goesBefore(order ? order : m_order.collation().compareLowered(m_ties[a], m_ties[b]));
    }

private:
    const MyComp& m_order;
    std::vector<KvLayerSortKey> m_keys;
    std::vector<std::wstring> m_ties;
};

void sortByKeys(std::vector<KvLayerData*>& layers, const MyComp& order) {
    const SortedKeys keys(layers, order);
    std::vector<std::uint32_t> places(layers.size());
    std::iota(places.begin(), places.end(), 0U);
    mergeSort(places, [&keys](std::uint32_t a, std::uint32_t b) { return keys.lessthan(a, b); });
    const std::vector<KvLayerData*> before = layers;
    std::transform(places.begin(), places.end(), layers.begin(),
                   [&before](std::uint32_t at) { return before[at]; });
}

/// Names one behind the other.
struct Names {
    std::wstring text;
    std::vector<std::size_t> ends;

    std::vector<std::wstring_view> parts() const {
        std::vector<std::wstring_view> all;
        all.reserve(ends.size());
        std::size_t begin = 0;
        for (const std::size_t end : ends) {
            all.emplace_back(text.data() + begin, end - begin);
            begin = end;
        }
        return all;
    }
};

/// False when some record can not be opened.
bool readNames(const std::vector<KvLayerData*>& layers, const MyComp& order, Names& names) {
    constexpr std::size_t kUsualName = 24;
    constexpr std::size_t kAhead =
        8;  // records lie all over the memory: they are fetched before they are read
    names.text.reserve(layers.size() * kUsualName);
    names.ends.reserve(layers.size());
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (i + kAhead < layers.size()) __builtin_prefetch(layers[i + kAhead]->layerRec());
        const KvAutoLayerRecordPtr record(order.transactions(), layers[i], true);
        if (!record.object()) return false;
        names.text += record->name();
        names.ends.push_back(names.text.size());
    }
    return true;
}

/// What is compared lies together in the order of the sort.
bool sortByName(std::vector<KvLayerData*>& layers, const MyComp& order) {
    Names read;
    if (!readNames(layers, order, read)) return false;
    const std::vector<std::wstring_view> names = read.parts();
    const std::vector<std::uint32_t> places = naturalOrder(order.collation(), names, order.goesBefore(-1));
    const std::vector<KvLayerData*> before = layers;
    std::transform(places.begin(), places.end(), layers.begin(),
                   [&before](std::uint32_t place) { return before[place]; });
    return true;
}

}  // namespace

void sortLayers(std::vector<KvLayerData*>& layers, const MyComp& order) {
    if (!order.isByName() || !sortByName(layers, order)) sortByKeys(layers, order);
}
