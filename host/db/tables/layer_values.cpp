// Rules for the values of layers.
#include "host/db/tables/layer_values.h"

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/objects/dictionary_access.h"

#include <algorithm>
#include <cwchar>

namespace korvex {

namespace {

constexpr int kDefaultWeight = -3;
constexpr int kWeights[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                            53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
/// Stored places count two more before the weights, and the default behind them.
constexpr int kFirstPlace = 2;
constexpr int kDefaultPlace = 31;

}  // namespace

bool isLinetype(HxDbObjectId id, const HxDbDatabase* database) {
    return !id.isNull() && id.database() == database && !id.isErased() &&
           HxDbLinetypeTableRecord::cast(hxdbObjectPointer(id));
}

bool isPlotStyle(const HxDbDatabase& database, HxDbObjectId id) {
    std::wstring name;
    HxDbStub* styles = database.getPlotStyleNameDictionaryId().stub();
    return styles && !id.isNull() && entryName(*styles, *id.stub(), name);
}

std::wstring plotStyleNameOf(const HxDbDatabase& database, HxDbStub* style) {
    std::wstring name;
    HxDbStub* styles = database.getPlotStyleNameDictionaryId().stub();
    return styles && style && entryName(*styles, *style, name) ? name : L"Normal";
}

bool isLayerLineWeight(int weight) {
    return weight == kDefaultWeight || std::binary_search(std::begin(kWeights), std::end(kWeights), weight);
}

Hx::ErrorStatus colorStatus(const HxDbDatabase* database, const HxCmColor& color) {
    if (color.isByLayer() || color.isByBlock()) {
        return Hx::eInvalidInput;
    }
    const bool hasPlace = !color.isByColor() || !database || database->imp()->traits().hasTrueColors;
    return hasPlace ? Hx::eOk : Hx::eNotApplicable;
}

Hx::ErrorStatus lineWeightStatus(const HxDbDatabase* database, int weight) {
    if (!isLayerLineWeight(weight)) {
        return Hx::eInvalidInput;
    }
    return !database || database->imp()->traits().hasLineWeights ? Hx::eOk : Hx::eNotApplicable;
}

std::wstring lineWeightInMillimetres(int weight) {
    if (weight < 0) {
        return weight == HxDb::kLnWtByLayer   ? L"ByLayer"
               : weight == HxDb::kLnWtByBlock ? L"ByBlock"
                                              : L"Default";
    }
    constexpr int kHundredths = 100;  // of a millimetre
    constexpr std::size_t kRoom = 32;
    wchar_t text[kRoom];
    std::swprintf(text, kRoom, L"%d.%02d mm", weight / kHundredths, weight % kHundredths);
    return text;
}

int lineWeightPlace(int weight) {
    const auto found = std::lower_bound(std::begin(kWeights), std::end(kWeights), weight);
    return found != std::end(kWeights) && *found == weight
               ? static_cast<int>(found - std::begin(kWeights)) + kFirstPlace
               : kDefaultPlace;
}

int lineWeightAtPlace(long long place) {
    const long long at = place - kFirstPlace;
    return at >= 0 && at < static_cast<long long>(std::size(kWeights)) ? kWeights[at] : kDefaultWeight;
}

Hx::ErrorStatus registerApplication(HxDbDatabase& database, const wchar_t* name) {
    if (findRecord(database, TableKind::appId, name)) {
        return Hx::eOk;
    }
    HxDbOtherTable* table = nullptr;
    Hx::ErrorStatus status = hxdbOpenObject(table, database.regAppTableId(), HxDb::kForWrite);
    if (status != Hx::eOk) {
        return status;
    }
    auto record = std::make_unique<HxDbOtherTableRecord>(L"APPID");
    status = record->setName(name);
    if (status == Hx::eOk) {
        status = table->add(record.get());
    }
    if (status == Hx::eOk) {
        record.release()->close();
    }
    table->close();
    return status;
}

}  // namespace korvex

HxDb::LineWeight HxDb::lineWeightByIndex(signed char index) {
    if (index >= kLnWtByLwDefault && index < 0) {
        return static_cast<LineWeight>(index);
    }
    return static_cast<LineWeight>(korvex::lineWeightAtPlace(index + korvex::kFirstPlace));
}
