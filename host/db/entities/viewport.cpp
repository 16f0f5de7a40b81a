// Viewports: number, scale, the layers frozen in them.
#include "host/db/entities/viewport_imp.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbViewport, HxDbEntity)

namespace korvex {

namespace {

constexpr int kFrozenCode = 331;
constexpr int kFrozenCodeOlder = 341;
constexpr int kXDataText = 1000;
constexpr int kXDataApplication = 1001;
constexpr int kXDataBrace = 1002;
constexpr int kXDataLayer = 1003;

bool usesNames(const HxDbDatabase& database) { return !database.imp()->traits().hasSubclassMarkers; }

}  // namespace

void ViewportImp::clearFields() {
    EntityImp::clearFields();
    status = 1;
    number = flags = 0;
    height = viewHeight = 0;
    m_frozen.clear();
    m_isIndexed = false;
    m_frozenNames.clear();
}

void ViewportImp::readField(const ReadContext& context, const GroupCursor& group) {
    if (isCommon(context)) {
        return;
    }
    switch (group.code()) {
    case 41: height = group.asReal(); break;
    case 45: viewHeight = group.asReal(); break;
    case 68: status = group.asInteger(); break;
    case 69: number = group.asInteger(); break;
    case 90: flags = group.asInteger(); break;
    case kFrozenCode:
    case kFrozenCodeOlder: {
        HxDbStub* found = context.database.imp()->handles.find(group.asHandle());
        const bool isLayer = found && found->owner && found->owner == context.database.layerTableId().stub();
        m_frozen.push_back({group.code(), group.asHandle(), isLayer ? found : nullptr});
        m_isIndexed = false;
        break;
    }
    default: break;
    }
}

namespace {

/// Follows a walk over extended data into the inner braces of the MVIEW data, where frozen layers stand.
class MviewPlace {
public:
    void pass(const GroupCursor& cursor) {
        if (cursor.code() == kXDataApplication) {
            m_isMview = false;
            m_depth = 0;
        } else if (cursor.code() == kXDataText) {
            m_isMview = m_isMview || (m_depth == 0 && cursor.asText() == L"MVIEW");
        } else if (cursor.code() == kXDataBrace) {
            m_depth += cursor.asText() == L"{" ? 1 : -1;
        }
    }
    bool isAmongLayers() const { return m_isMview && m_depth == 2; }

private:
    bool m_isMview = false;
    int m_depth = 0;
};

}  // namespace

void ViewportImp::xdataRead(HxDbDatabase& database) {
    m_frozenNames.clear();
    m_holdsNames = false;
    MviewPlace place;
    GroupCursor cursor(xdata, database.imp()->format);
    while (usesNames(database) && cursor.next()) {
        place.pass(cursor);
        m_holdsNames = m_holdsNames || place.isAmongLayers();
        if (place.isAmongLayers() && cursor.code() == kXDataLayer) {
            m_frozenNames.emplace_back(TableKind::layer);
            m_frozenNames.back().setName(cursor.asText());
            m_frozenNames.back().record(&database);
        }
    }
}

/// Puts the present names between the inner braces of the MVIEW data.
void ViewportImp::namesToXData(const HxDbDatabase& database) {
    refreshXData(*this);
    GroupWriter out(database.imp()->format);
    MviewPlace place;
    bool written = false;
    GroupCursor cursor(xdata, database.imp()->format);
    while (cursor.next()) {
        place.pass(cursor);
        if (place.isAmongLayers() && cursor.code() == kXDataLayer) {
            continue;
        }
        out.copy(cursor);
        if (place.isAmongLayers() && !written) {
            written = true;
            for (const RecordRef& layer : m_frozenNames) {
                out.text(kXDataLayer, layer.name());
            }
        }
    }
    xdata = out.take();
    xdataChanged = true;
}

void ViewportImp::writeFields(FieldWriter& out) const {
    EntityImp::writeFields(out);
    out.subclass("AcDbViewport");
    if (usesNames(*stub->database)) {
        return;
    }
    out.absent(kFrozenCode);
    out.absent(kFrozenCodeOlder);
    for (const Frozen& frozen : m_frozen) {
        if (!(frozen.layer && frozen.layer->erased && out.isForFile())) {
            out.handle(frozen.code, frozen.handle);
        }
    }
    out.integer(90, flags);
}

bool ViewportImp::isStaleForSaving() const {
    return std::any_of(m_frozen.begin(), m_frozen.end(),
                       [](const Frozen& frozen) { return frozen.layer && frozen.layer->erased; });
}

std::vector<HxDbStub*> ViewportImp::frozenLayers(const HxDbDatabase& database) const {
    std::vector<HxDbStub*> layers;
    for (const Frozen& frozen : m_frozen) {
        if (frozen.layer && !frozen.layer->erased) {
            layers.push_back(frozen.layer);
        }
    }
    for (const RecordRef& frozen : m_frozenNames) {
        if (HxDbStub* layer = frozen.record(&database)) {
            layers.push_back(layer);
        }
    }
    return layers;
}

void ViewportImp::freeze(HxDbStub& layer) {
    if (usesNames(*layer.database)) {
        m_frozenNames.emplace_back(TableKind::layer);
        m_frozenNames.back().setRecord(layer);
    } else {
        const int code = m_frozen.empty() ? kFrozenCode : m_frozen.front().code;
        m_frozen.push_back({code, layer.handle, &layer});
        m_isIndexed = false;
    }
}

void ViewportImp::thaw(const std::unordered_set<const HxDbStub*>& layers) {
    m_isIndexed = false;
    m_frozen.erase(std::remove_if(m_frozen.begin(), m_frozen.end(),
                                  [&](const Frozen& frozen) { return layers.count(frozen.layer) != 0; }),
                   m_frozen.end());
    m_frozenNames.erase(std::remove_if(m_frozenNames.begin(), m_frozenNames.end(),
                                       [&](const RecordRef& frozen) {
                                           return layers.count(frozen.record(stub->database)) != 0;
                                       }),
                        m_frozenNames.end());
}

/// Many layers are asked for one after the other: the index is made once.
bool ViewportImp::isFrozen(const HxDbDatabase& database, const HxDbStub& layer) const {
    if (!m_isIndexed) {
        m_isFrozen.clear();
        for (const Frozen& frozen : m_frozen) {
            if (frozen.layer) {
                m_isFrozen.insert(frozen.layer);
            }
        }
        m_isIndexed = true;
    }
    return (m_isFrozen.count(&layer) != 0 && !layer.erased) ||
           std::any_of(m_frozenNames.begin(), m_frozenNames.end(),
                       [&](const RecordRef& frozen) { return frozen.record(&database) == &layer; });
}

namespace {

/// Changes the frozen layers of a viewport in one step.
template <class Change>
Hx::ErrorStatus changeFrozen(const HxDbViewport* viewport, Change change) {
    auto& imp = fields<ViewportImp>(viewport);
    const bool byName = imp.stub && usesNames(*imp.stub->database);
    if (byName && !imp.holdsNames()) {
        return Hx::eNotApplicable;
    }
    const Hx::ErrorStatus status = beginChange(viewport);
    if (status == Hx::eOk) {
        change(imp);
        if (byName) {
            imp.namesToXData(*imp.stub->database);
        }
    }
    return status;
}

bool areLayers(const HxArray<HxDbObjectId>& ids, const HxDbDatabase* database) {
    return std::all_of(ids.begin(), ids.end(), [&](const HxDbObjectId& id) {
        return !id.isNull() && id.database() == database && HxDbLayerTableRecord::cast(hxdbObjectPointer(id));
    });
}

/// Those of the layers whose state in the viewport is the other one, each once.
std::vector<HxDbStub*> toChange(const HxDbViewport* viewport, const HxArray<HxDbObjectId>& ids, bool frozen) {
    std::vector<HxDbStub*> layers;
    std::unordered_set<const HxDbStub*> seen;
    for (const HxDbObjectId& id : ids) {
        if (viewport->isLayerFrozenInViewport(id) == frozen && seen.insert(id.stub()).second) {
            layers.push_back(id.stub());
        }
    }
    return layers;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

HxDbViewport::HxDbViewport() : HxDbEntity(new ViewportImp) {}

std::int16_t HxDbViewport::number() const {
    const auto& imp = fields<ViewportImp>(this);
    const HxDbStub* stub = imp.stub;
    if (!stub || !imp.isOn() || stub->owner != paperSpace(*stub->database)) {
        return -1;
    }
    if (imp.number > 0) {
        return static_cast<std::int16_t>(imp.number);
    }
    std::int16_t place = 0;
    for (const HxDbStub* other : members(*stub->owner)) {
        place = static_cast<std::int16_t>(place + (other->recordClass == stub->recordClass ? 1 : 0));
        if (other == stub) {
            break;
        }
    }
    return place;
}

bool HxDbViewport::isOn() const { return fields<ViewportImp>(this).isOn(); }

double HxDbViewport::customScale() const {
    const auto& imp = fields<ViewportImp>(this);
    return imp.viewHeight > 0 ? imp.height / imp.viewHeight : 1;
}

bool HxDbViewport::isLayerFrozenInViewport(HxDbObjectId layer) const {
    if (!database() || layer.isNull()) {
        return false;
    }
    return fields<ViewportImp>(this).isFrozen(*database(), *layer.stub());
}

Hx::ErrorStatus HxDbViewport::freezeLayersInViewport(const HxArray<HxDbObjectId>& layers) {
    if (!areLayers(layers, database())) {
        return Hx::eInvalidInput;
    }
    const std::vector<HxDbStub*> thawed = toChange(this, layers, false);
    return thawed.empty() ? Hx::eOk : changeFrozen(this, [&](ViewportImp& imp) {
        for (HxDbStub* layer : thawed) {
            imp.freeze(*layer);
        }
    });
}

Hx::ErrorStatus HxDbViewport::thawLayersInViewport(const HxArray<HxDbObjectId>& layers) {
    if (!areLayers(layers, database())) {
        return Hx::eInvalidInput;
    }
    const std::vector<HxDbStub*> frozen = toChange(this, layers, true);
    return frozen.empty() ? Hx::eOk : changeFrozen(this, [&](ViewportImp& imp) {
        imp.thaw({frozen.begin(), frozen.end()});
    });
}

Hx::ErrorStatus HxDbViewport::thawAllLayersInViewport() {
    HxArray<HxDbObjectId> layers;
    getFrozenLayers(layers);
    return thawLayersInViewport(layers);
}

void HxDbViewport::getFrozenLayers(HxArray<HxDbObjectId>& layers) const {
    layers.removeAll();
    if (database()) {
        for (HxDbStub* layer : fields<ViewportImp>(this).frozenLayers(*database())) {
            layers.append(HxDbObjectId(layer));
        }
    }
}

HxDbObjectId hxdbGetCurVportId(const HxDbDatabase* database) {
    HxDbStub* paper = database && !database->tilemode() ? paperSpace(*database) : nullptr;
    HxDbObjectId first;
    for (HxDbStub* entity : paper ? members(*paper) : std::vector<HxDbStub*>()) {
        const auto* viewport = entity->erased ? nullptr : HxDbViewport::cast(materialise(*entity));
        if (viewport && viewport->number() == database->cvport()) {
            return viewport->objectId();
        }
        if (viewport && first.isNull()) {
            first = viewport->objectId();
        }
    }
    return database && database->cvport() <= 1 ? first : HxDbObjectId();
}

HxDbObjectId hxedGetCurViewportObjectId() { return hxdbGetCurVportId(hxdbWorkingDatabase()); }
