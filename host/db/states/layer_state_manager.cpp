// Layer states in a drawing's dictionary: finding, saving, copying, renaming and deleting them.
#include "host/db/states/layer_state_manager.h"

#include "host/base/text.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/object_names.h"
#include "host/db/objects/dictionary_access.h"
#include "host/db/states/state_codes.h"
#include "host/db/states/state_records.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <unordered_set>

namespace korvex {

namespace {

constexpr int kMarkerCode = 100;

bool isState(HxDbStub& record) { return HxLyStateReader(HxDbObjectId(&record)).status() == Hx::eOk; }

/// The drawing's dictionary of states, made when it is missing.
Hx::ErrorStatus makeStateDictionary(HxDbDatabase& database, HxDbStub*& dictionary) {
    dictionary = nullptr;
    HxDbStub* table = database.layerTableId().stub();
    return table && database.imp()->traits().hasSubclassMarkers
               ? makeExtensionDictionaryEntry(*table, kStateDictionary, WriteAccess::Upgrade::anyone,
                                              dictionary)
               : Hx::eNotApplicable;
}

/// Collects the list of a state's record.
class StateList {
public:
    StateList(HxDbDatabase& database, HxDbStub& dictionary, const HxLyStateHeader& header)
        : m_builder(&database, HxDbObjectId(&dictionary), header) {}
    /// A plot style that the drawing lacks is left out.
    void add(HxLyStateEntry& entry) {
        if (!m_builder.add(entry)) {
            entry.plotStyle.clear();
            m_builder.add(entry);
        }
    }
    Chain take() { return Chain(m_builder.take()); }

private:
    HxLyStateListBuilder m_builder;
};

/// The xrecord's own groups in a list that makes one.
const resbuf* contentOf(const resbuf* list) {
    while (list && list->restype != kMarkerCode) {
        list = list->rbnext;
    }
    return list ? list->rbnext : nullptr;
}

/// A record of the list becomes the entry of a name.
Hx::ErrorStatus addRecord(HxDbDatabase& database, HxDbStub& dictionary, const wchar_t* name,
                          const resbuf* list) {
    const StateWriteAccess open(dictionary);
    auto* entries = HxDbDictionary::cast(open.object());
    if (!entries) {
        return open.object() ? Hx::eWrongClass : open.status();
    }
    const HxDbWorkingDatabaseScope scope(&database);
    zds_name made = {0, 0};
    if (hxdbEntMakeX(list, made) != RTNORM) {
        return Hx::eInvalidInput;
    }
    const WriteAccess record(*stubOfName(database, made));
    HxDbObjectId id;
    return entries->setAt(name, record.object(), id);
}

/// A state of a name gets what the list says. Its record keeps handle and extended data.
Hx::ErrorStatus putState(HxDbDatabase& database, HxDbStub& dictionary, const wchar_t* name,
                         const Chain& list) {
    HxDbStub* record = dictionaryEntry(&dictionary, name);
    if (!list) {
        return Hx::eOutOfMemory;
    }
    if (!record) {
        return addRecord(database, dictionary, name, list.get());
    }
    if (!isState(*record)) {
        return Hx::eDuplicateKey;  // something else has the name
    }
    const StateWriteAccess open(*record);
    auto* xrecord = HxDbXrecord::cast(open.object());
    return xrecord ? xrecord->setFromRbChain(contentOf(list.get())) : open.status();
}

/// Changes the content of a record by its list; the record keeps everything else.
template <class Change>
Hx::ErrorStatus changeContent(HxDbStub& record, Change change) {
    const StateWriteAccess open(record);
    auto* xrecord = HxDbXrecord::cast(open.object());
    if (!xrecord) {
        return open.object() ? Hx::eWrongClass : open.status();
    }
    const Chain list(xrecord->rbChain());
    resbuf* mask = list.get();
    while (mask && mask->restype != state_group::kMask) {
        mask = mask->rbnext;
    }
    return mask && change(*mask) ? xrecord->setFromRbChain(list.get()) : Hx::eOutOfMemory;
}

/// The description behind a mask, made when there is none; null when memory runs out.
resbuf* descriptionNode(resbuf& mask) {
    for (resbuf* node = mask.rbnext; node; node = node->rbnext) {
        if (node->restype == state_group::kDescription) {
            return node;
        }
    }
    resbuf* made = hxutNewRb(state_group::kDescription);
    if (made) {
        made->rbnext = mask.rbnext;
        mask.rbnext = made;
    }
    return made;
}

bool setText(resbuf* node, const wchar_t* text) {
    Chain fresh(node ? hxutNewRb(node->restype) : nullptr);
    if (fresh) {
        fresh->resval.rstring = hxutNewString(text);
        std::swap(fresh->resval, node->resval);
    }
    return fresh != nullptr;
}

/// All layers as they are now.
void addLayers(const HxDbDatabase& database, HxDbObjectId viewport, StateList& list) {
    HxLyStateEntry entry;
    for (HxDbStub* stub : members(*database.layerTableId().stub())) {
        const auto* layer = stub->erased ? nullptr : HxDbLayerTableRecord::cast(materialise(*stub));
        if (layer) {
            hxlyEntryOfLayer(entry, *layer, viewport);
            list.add(entry);
        }
    }
}

}  // namespace

HxDbStub* layerStateDictionary(const HxDbDatabase& database) {
    HxDbStub* table = database.layerTableId().stub();
    HxDbStub* found = table ? extensionEntry(*table, kStateDictionary) : nullptr;
    return found && HxDbDictionary::cast(materialise(*found)) ? found : nullptr;
}

HxDbStub* layerStateRecord(const HxDbDatabase& database, const wchar_t* name) {
    HxDbStub* record = name ? dictionaryEntry(layerStateDictionary(database), name) : nullptr;
    return record && isState(*record) ? record : nullptr;
}

HxDbStub* viewportOf(const HxDbDatabase& database, HxDbObjectId id) {
    const bool isOurs = !id.isNull() && id.database() == &database && !id.isErased();
    return isOurs && HxDbViewport::cast(hxdbObjectPointer(id)) ? id.stub() : nullptr;
}

}  // namespace korvex

using namespace korvex;

bool hxlyIsStateName(const wchar_t* text) {
    const std::wstring_view name = viewOf(text);
    constexpr wchar_t kFirstCharacter = L' ';
    constexpr wchar_t kDelete = 127;
    const auto isBad = [](wchar_t c) {
        return c < kFirstCharacter || c == kDelete ||
               std::wstring_view(L"<>/?'\"\\|;:=*,").find(c) != std::wstring_view::npos;
    };
    return !name.empty() && name.front() != L' ' && name.back() != L' ' &&
           std::none_of(name.begin(), name.end(), isBad);
}

HxDbDatabase* HxDbLayerStateManager::getDatabase() const { return m_database; }

HxDbObjectId HxDbLayerStateManager::layerStatesDictionaryId(bool createIfNotPresent) {
    HxDbStub* dictionary = layerStateDictionary(*m_database);
    if (!dictionary && createIfNotPresent) {
        makeStateDictionary(*m_database, dictionary);
    }
    return HxDbObjectId(dictionary);
}

bool HxDbLayerStateManager::hasLayerState(const wchar_t* name) const { return !layerStateId(name).isNull(); }

HxDbObjectId HxDbLayerStateManager::layerStateId(const wchar_t* name) const {
    return HxDbObjectId(layerStateRecord(*m_database, name));
}

Hx::ErrorStatus HxDbLayerStateManager::getLayerStateNames(HxArray<CStdStr<wchar_t>>& names,
                                                          bool includeHidden) const {
    names.removeAll();
    HxDbStub* dictionary = layerStateDictionary(*m_database);
    if (!dictionary) {
        return Hx::eOk;
    }
    const auto* entries = HxDbDictionary::cast(materialise(*dictionary));
    const std::unique_ptr<HxDbDictionaryIterator> entry(entries->newIterator());
    for (; !entry->done(); entry->next()) {
        const HxLyStateReader reader(entry->objectId());
        const bool isShown = includeHidden || (reader.header().mask & HxLyState::kHidden) == 0;
        if (reader.status() == Hx::eOk && isShown) {
            names.append(entry->name());
        }
    }
    return Hx::eOk;
}

Hx::ErrorStatus HxDbLayerStateManager::getLayerStateLayers(HxArray<CStdStr<wchar_t>>& layers,
                                                           const wchar_t* name, bool invert) const {
    layers.removeAll();
    const HxDbObjectId record = layerStateId(name);
    if (record.isNull()) {
        return Hx::eKeyNotFound;
    }
    HxLyStateReader reader(record);
    HxLyStateEntry entry;
    std::unordered_set<std::wstring> named;
    while (reader.next(entry)) {
        if (invert) {
            named.insert(foldName(entry.layer));
        } else {
            layers.append(entry.layer);
        }
    }
    for (HxDbStub* layer : invert ? members(*m_database->layerTableId().stub()) : std::vector<HxDbStub*>()) {
        if (!layer->erased && named.count(foldName(recordName(*layer))) == 0) {
            layers.append(recordName(*layer));
        }
    }
    return Hx::eOk;
}

Hx::ErrorStatus HxDbLayerStateManager::getLayerStateHeader(HxLyStateHeader& header,
                                                           const wchar_t* name) const {
    const HxDbObjectId record = layerStateId(name);
    if (record.isNull()) {
        return Hx::eKeyNotFound;
    }
    header = HxLyStateReader(record).header();
    return Hx::eOk;
}

Hx::ErrorStatus HxDbLayerStateManager::setLayerStateMask(const wchar_t* name, std::int32_t mask) {
    HxLyStateHeader now;
    const Hx::ErrorStatus status = getLayerStateHeader(now, name);
    if (status != Hx::eOk || now.mask == mask) {
        return status;
    }
    return changeContent(*layerStateRecord(*m_database, name), [mask](resbuf& node) {
        node.resval.rlong = mask;
        return true;
    });
}

Hx::ErrorStatus HxDbLayerStateManager::setLayerStateDescription(const wchar_t* name,
                                                                const wchar_t* description) {
    const std::wstring wanted = description ? description : L"";
    HxLyStateHeader now;
    const Hx::ErrorStatus status = getLayerStateHeader(now, name);
    if (status != Hx::eOk || now.description == wanted) {
        return status;
    }
    return changeContent(*layerStateRecord(*m_database, name),
                         [&wanted](resbuf& mask) { return setText(descriptionNode(mask), wanted.c_str()); });
}

Hx::ErrorStatus HxDbLayerStateManager::saveLayerState(const wchar_t* name, std::int32_t mask,
                                                      HxDbObjectId viewport, const wchar_t* description) {
    if (!hxlyIsStateName(name)) {
        return Hx::eInvalidInput;
    }
    HxDbStub* dictionary = nullptr;
    const Hx::ErrorStatus status = makeStateDictionary(*m_database, dictionary);
    if (status != Hx::eOk) {
        return status;
    }
    const HxDbObjectId seenIn(viewportOf(*m_database, viewport));
    HxLyStateHeader header;
    getLayerStateHeader(header, name);
    header.mask = mask;
    if (description) {
        header.description = description;
    }
    header.space = m_database->tilemode() ? HxLyState::kModel : HxLyState::kLayout;
    header.currentLayer = recordName(*m_database->clayer().stub());
    StateList list(*m_database, *dictionary, header);
    addLayers(*m_database, seenIn, list);
    return putState(*m_database, *dictionary, name, list.take());
}

Hx::ErrorStatus HxDbLayerStateManager::deleteLayerState(const wchar_t* name) {
    HxDbStub* record = layerStateRecord(*m_database, name);
    if (!record) {
        return Hx::eKeyNotFound;
    }
    const StateWriteAccess open(*layerStateDictionary(*m_database));
    auto* entries = HxDbDictionary::cast(open.object());
    if (!entries) {
        return open.status();
    }
    const StateWriteAccess entry(*record);
    const Hx::ErrorStatus status = entry.object() ? entry.object()->erase() : entry.status();
    return status == Hx::eOk ? entries->remove(name) : status;
}

Hx::ErrorStatus HxDbLayerStateManager::renameLayerState(const wchar_t* oldName, const wchar_t* newName) {
    if (!layerStateRecord(*m_database, oldName)) {
        return Hx::eKeyNotFound;
    }
    if (!hxlyIsStateName(newName)) {
        return Hx::eInvalidInput;
    }
    const StateWriteAccess open(*layerStateDictionary(*m_database));
    auto* entries = HxDbDictionary::cast(open.object());
    return entries ? entries->setName(oldName, newName) : open.status();
}

Hx::ErrorStatus HxDbLayerStateManager::importLayerStateFromDb(const wchar_t* name, HxDbDatabase* source) {
    HxDbStub* record = source ? layerStateRecord(*source, name) : nullptr;
    if (!record) {
        return Hx::eKeyNotFound;
    }
    HxDbStub* dictionary = nullptr;
    const Hx::ErrorStatus status = makeStateDictionary(*m_database, dictionary);
    if (status != Hx::eOk) {
        return status;
    }
    std::wstring spelling;
    entryName(*layerStateDictionary(*source), *record, spelling);
    HxLyStateReader reader{HxDbObjectId(record)};
    StateList list(*m_database, *dictionary, reader.header());
    const bool keepsPlotStyles = source->plotStyleMode() == m_database->plotStyleMode();
    HxLyStateEntry entry;
    while (reader.next(entry)) {
        if (!keepsPlotStyles) {
            entry.plotStyle.clear();
        }
        list.add(entry);
    }
    return putState(*m_database, *dictionary, spelling.c_str(), list.take());
}
