#include "layer_states/storage/older_states.h"

#include "frame/util/result_buffers.h"
#include "hxads.h"
#include "hxdbdatabase.h"
#include "hxdbdict.h"
#include "hxdbsymtb.h"
#include "hxtext.h"
#include "model/visit_records.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kApplication = L"LMAN";
constexpr int kMask = HxLyState::kAllProperties & ~HxLyState::kTransparency;
constexpr int kText = 1000;
constexpr int kApplicationName = 1001;
constexpr int kHandle = 1005;
constexpr int kShort = 1070;
constexpr int kLong = 1071;

/// Calls `visit` with each piece of a layer's data: the nodes of one state.
template <class Visitor>
void visitPieces(const resbuf* data, Visitor&& visit) {
    const resbuf* node = data && data->restype == kApplicationName ? data->rbnext : nullptr;
    while (node) {
        const resbuf* end = node->rbnext;
        if (end && end->restype == kText) end = end->rbnext;  // the description
        while (end && end->restype != kText) {
            end = end->rbnext;
        }
        if (node->restype == kText) visit(node, end);
        node = end;
    }
}

CStdStr<wchar_t> nameOfHandle(const HxDbDatabase& database, const wchar_t* handle, bool isLinetype) {
    HxDbObjectId id;
    database.getHxDbObjectId(id, false, HxDbHandle(handle));
    if (isLinetype) {
        const OpenedOrHeld<HxDbLinetypeTableRecord> linetype(id, HxDb::kForRead);
        return linetype ? CStdStr<wchar_t>(linetype->name()) : CStdStr<wchar_t>();
    }
    CStdStr<wchar_t> name;
    const OpenedOrHeld<HxDbDictionary> styles(database.getPlotStyleNameDictionaryId(), HxDb::kForRead);
    if (styles && styles->nameAt(id, name) != Hx::eOk) name.clear();
    return name;
}

/// Reads the values of one piece.
HxLyStateEntry entryOf(const HxDbDatabase& database, const resbuf* first, const resbuf* end) {
    HxLyStateEntry entry;
    int shorts = 0;
    int handles = 0;
    for (const resbuf* node = first; node != end; node = node->rbnext) {
        if (node->restype == kShort) {
            const int value = node->resval.rint;
            if (shorts == 0) entry.flags = value;
            if (shorts == 1) entry.colorIndex = value;
            if (shorts == 2) entry.lineweight = value;
            ++shorts;
        } else if (node->restype == kLong) {
            entry.trueColor = node->resval.rlong;
        } else if (node->restype == kHandle && node->resval.rstring) {
            const bool isLinetype = handles++ == 0;
            (isLinetype ? entry.linetype : entry.plotStyle) =
                nameOfHandle(database, node->resval.rstring, isLinetype);
        }
    }
    return entry;
}

KvOlderState& stateNamed(const wchar_t* name, std::vector<KvOlderState>& states) {
    const auto found = std::find_if(states.begin(), states.end(), [&](const KvOlderState& state) {
        return hxutEqualNames(state.oldName.c_str(), name);
    });
    if (found != states.end()) return *found;
    KvOlderState older;
    older.oldName = name;
    older.state = std::make_unique<CKvLayerState>();
    older.state->SetLayerStateMake(kMask);
    older.state->SetSpace(HxLyState::kModel);
    states.push_back(std::move(older));
    return states.back();
}

bool isApplicationKnown(const HxDbDatabase& database) {
    const OpenedOrHeld<HxDbSymbolTable> applications(database.regAppTableId(), HxDb::kForRead);
    return applications && applications->has(kApplication);
}

/// The layer's data without one state; null when that is not in it.
ListPtr dataWithout(const resbuf* data, const CStdStr<wchar_t>& oldName) {
    ListPtr rest(hxutBuildList(kApplicationName, kApplication, 0));
    resbuf* tail = rest.get();
    bool isFound = false;
    visitPieces(data, [&](const resbuf* first, const resbuf* end) {
        if (hxutEqualNames(first->resval.rstring, oldName.c_str())) {
            isFound = true;
            return;
        }
        for (const resbuf* node = first; tail && node != end; node = node->rbnext) {
            const bool isText = node->restype == kText || node->restype == kHandle;
            resbuf* const copy = hxutNewRb(node->restype);
            if (copy) copy->resval = node->resval;
            if (copy && isText) copy->resval.rstring = hxutNewString(node->resval.rstring);
            tail = tail->rbnext = copy;
        }
    });
    return isFound ? std::move(rest) : nullptr;
}

}  // namespace

void ReadLayerStateFromXDataFormat(const HxDbDatabase& database, const resbuf* data,
                                   const CStdStr<wchar_t>& layerName, std::vector<KvOlderState>& states) {
    visitPieces(data, [&](const resbuf* first, const resbuf* end) {
        if (!first->resval.rstring || !*first->resval.rstring) return;
        KvOlderState& older = stateNamed(first->resval.rstring, states);
        const resbuf* const second = first->rbnext;
        if (second != end && second->restype == kText) older.state->SetDescription(second->resval.rstring);
        older.entries.push_back(entryOf(database, first, end));
        older.entries.back().layer = layerName;
    });
}

std::vector<KvOlderState> ReadLayerFromXData(const HxDbDatabase* database) {
    std::vector<KvOlderState> states;
    if (!database || !isApplicationKnown(*database)) return states;
    visitRecords(database->layerTableId(), [&](HxDbObjectId id) {
        const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
        if (!layer) return;
        const ListPtr data(layer->xData(kApplication));
        ReadLayerStateFromXDataFormat(*database, data.get(), layer->name(), states);
    });
    return states;
}

CStdStr<wchar_t> FindLMANLayerstateName(const CStdStr<wchar_t>& name, const KvLayerStateMap& states) {
    CStdStr<wchar_t> plain;
    plain.Format(L"LMAN_%ls", name.c_str());
    CStdStr<wchar_t> unique = plain;
    for (int number = 1; states.find(unique); ++number) {
        unique.Format(L"%ls(%d)", plain.c_str(), number);
    }
    return unique;
}

bool DeleteLayerFromXData(HxDbDatabase& database, const CStdStr<wchar_t>& oldName) {
    bool isDone = true;
    visitRecords(database.layerTableId(), [&](HxDbObjectId id) {
        ListPtr rest;
        {
            const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
            const ListPtr data(layer ? layer->xData(kApplication) : nullptr);
            rest = dataWithout(data.get(), oldName);
        }
        if (!rest) return;
        const OpenedOrHeld<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
        isDone = layer && layer->setXData(rest.get()) == Hx::eOk && isDone;
    });
    return isDone;
}
