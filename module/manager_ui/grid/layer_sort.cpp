// Keys and comparison of the grid's rows.
#include "layer_sort.h"

#include "layer_cells.h"
#include "layer_column.h"
#include "layer_list_ctrl.h"
#include "merge_sort.h"

#include "model/auto_layer_record.h"
#include "model/layer_data.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"

#include <algorithm>

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
    case kColStatus:
        key.number = layer.isInUse();
        key.second = m_isLayout && layer.hasOverrides(m_viewport);
        break;
    case kColOn: key.number = !layer.isOff(); break;
    case kColFreeze: key.number = layer.isFrozen(); break;
    case kColLock: key.number = layer.isLocked(); break;
    case kColColor: key.color = layer.color(); break;
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
    case kColVpColor: key.color = layer.color(m_viewport, overridden); break;
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

int MyComp::compare(const KvLayerSortKey& a, const KvLayerSortKey& b) const {
    if (!a.isComparable || !b.isComparable) return 0;
    switch (m_column) {
    case kColName: return m_collation->compareNatural(a.name, b.name);
    case kColColor:
    case kColVpColor: return colorComp(a.color, b.color);
    default: break;
    }
    if (a.number != b.number) return threeWay(a.number, b.number);
    return a.second != b.second ? threeWay(a.second, b.second) : threeWay(a.text, b.text);
}

bool MyComp::lessthan(const KvLayerSortKey& a, const KvLayerSortKey& b) const {
    if (!a.isOpened || !b.isOpened) return true;
    const int order = compare(a, b);
    const int decides = order ? order : m_collation->compareTexts(a.name, b.name);
    return m_ascending ? decides < 0 : decides > 0;
}

bool MyComp::lessthan(KvLayerData* a, KvLayerData* b) const { return lessthan(keyOf(a), keyOf(b)); }

void sortLayers(std::vector<KvLayerData*>& layers, const MyComp& order) {
    struct Entry {
        KvLayerSortKey key;
        KvLayerData* layer = nullptr;
    };
    std::vector<Entry> entries(layers.size());
    std::vector<const Entry*> places(layers.size());
    for (std::size_t i = 0; i < layers.size(); ++i) {
        entries[i] = {order.keyOf(layers[i]), layers[i]};
        places[i] = &entries[i];
    }
    mergeSort(places, [&order](const Entry* a, const Entry* b) { return order.lessthan(a->key, b->key); });
    std::transform(places.begin(), places.end(), layers.begin(), [](const Entry* e) { return e->layer; });
}
