// hxdbEntMake and hxdbEntMakeX: a list becomes the groups of a new entity of the current space, or of a new
// object that has no owner yet.
#include "host/db/entities/entity_cursor.h"
#include "host/db/kernel/header.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/kernel/write_access.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/current_space.h"
#include "host/db/lists/list_change.h"
#include "host/db/lists/list_merge.h"
#include "host/db/lists/node_codec.h"
#include "host/db/lists/object_types.h"
#include "host/db/lists/record_type.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxdbsymtb.h"

#include <algorithm>
#include <memory>

using namespace korvex;

namespace {

constexpr const wchar_t* kGeneralMarker = L"AcDbEntity";
constexpr int kLayer = 8;
constexpr int kPaperFlag = 67;
constexpr int kLayoutName = 410;
constexpr int kAttributesFollow = 66;
constexpr int kCloning = 280;
constexpr int kVertexCount = 90;
constexpr int kRecordName = 2;

std::wstring wide(std::string_view text) { return std::wstring(text.begin(), text.end()); }

std::string typeOf(const resbuf* list) {
    const ListParts parts = partsOfList(list);
    return parts.type ? recordTypeOf(textOf(*parts.type)) : std::string();
}

/// A current property of the drawing that new entities take.
struct CurrentValue {
    const wchar_t* header;
    int code;
};
constexpr CurrentValue kCurrentValues[] = {
    {L"$CELTYPE", 6}, {L"$CECOLOR", 62}, {L"$CELTSCALE", 48}, {L"$CELWEIGHT", 370}};

/// The value as an entity's node; null when it is the one that entities have without a group.
Chain currentValue(const HxDbDatabase& database, const CurrentValue& current) {
    std::vector<HeaderGroup> groups;
    if (!headerValue(database, current.header, groups) || groups.empty()) {
        return nullptr;
    }
    const HeaderGroup& value = groups.front();
    switch (current.code) {
    case 6: return equalNames(value.text, L"ByLayer") ? nullptr : textNode(current.code, value.text);
    case 48: {
        Chain node = newNode(current.code);
        node->resval.rreal = value.real;
        return value.real == 1 ? nullptr : std::move(node);
    }
    default: break;
    }
    const long long byLayer = current.code == 62 ? +HxCmColor::kIndexByLayer : +HxDb::kLnWtByLayer;
    Chain node = newNode(current.code);
    node->resval.rint = static_cast<short>(value.integer);
    return value.integer == byLayer ? nullptr : std::move(node);
}

/// A list that is to become an object of a type.
class NewObject {
public:
    NewObject(const HxDbDatabase& database, const ObjectType& type, const resbuf* list)
        : m_database(database), m_type(type),
          m_list(partsOfList(list, recordClass(type.type, placeOf(type)).handleCode)),
          m_checks(database, type.type, type.isEntity) {}

    static RecordPlace placeOf(const ObjectType& type) {
        return type.isEntity ? RecordPlace::entity : RecordPlace::object;
    }

    /// Sorts the list's values into the subclasses; false when the list is not whole or not acceptable.
    bool prepare() {
        const HxDbDatabase::Imp& drawing = *m_database.imp();
        if (!m_type.since.empty() &&
            (!drawing.traits().hasSubclassMarkers || drawing.version < m_type.since)) {
            return false;
        }
        return sortNodes() && hasRequired() && hasSoundCounts() && acceptsAll();
    }

    const resbuf* xdata() const { return m_list.xdata; }

    /// The groups of the object with the head that it got; false when a value cannot be stored.
    bool groups(const HxDbStub& stub, std::string& groups) const {
        GroupWriter out(m_database.imp()->format);
        const bool good = writeHead(out, stub) && (!m_type.isEntity || writeGeneral(out, stub)) &&
                          writeOwn(out, 0, m_type.marker) && writeOwn(out, 1, m_type.secondMarker);
        groups = out.take();
        return good;
    }

private:
    bool sortNodes() {
        std::size_t ownSeen = 0;
        for (const ListSection& section : m_list.sections) {
            const bool general = section.marker == kGeneralMarker;
            const bool second = section.marker == wide(m_type.secondMarker) &&
                                (ownSeen > 0 || m_type.secondMarker != m_type.marker);
            const bool own = section.marker == wide(m_type.marker) || second;
            if (!section.marker.empty() && !own && !(general && m_type.isEntity)) {
                return false;
            }
            for (const resbuf* node : section.nodes) {
                sortNode(*node, general,
                         section.marker.empty() ? m_type.subclassOf(node->restype)
                         : second               ? 1
                                                : 0);
            }
            ownSeen += own && !section.marker.empty() ? 1 : 0;
        }
        return true;
    }
    void sortNode(const resbuf& node, bool general, std::size_t own) {
        if (!m_type.isEntity) {
            m_own[0].push_back(&node);
        } else if (node.restype != kPaperFlag && node.restype != kLayoutName) {  // the space decides these
            (general || isSharedCode(node.restype) ? m_general : m_own[own]).push_back(&node);
        }
    }

    std::size_t count(int code) const {
        const auto in = [code](const std::vector<const resbuf*>& nodes) {
            return static_cast<std::size_t>(std::count_if(
                nodes.begin(), nodes.end(), [code](const resbuf* node) { return node->restype == code; }));
        };
        return in(m_general) + in(m_own[0]) + in(m_own[1]);
    }
    bool hasRequired() const {
        return std::all_of(m_type.required.begin(), m_type.required.end(),
                           [this](int code) { return code == 0 || count(code) > 0; });
    }
    /// Nothing may announce records that do not follow, nor another number of vertices than there are.
    bool hasSoundCounts() const {
        if (m_type.type == "INSERT" && m_list.find(kAttributesFollow)) {
            return m_list.find(kAttributesFollow)->resval.rint == 0;
        }
        if (m_type.type == "LWPOLYLINE") {
            return static_cast<std::size_t>(m_list.find(kVertexCount)->resval.rlong) == count(10);
        }
        return true;
    }
    bool acceptsAll() const {
        const auto accepts = [this](const std::vector<const resbuf*>& nodes) {
            return std::all_of(nodes.begin(), nodes.end(),
                               [this](const resbuf* node) { return acceptsNode(*node); });
        };
        return accepts(m_general) && accepts(m_own[0]) && accepts(m_own[1]);
    }
    bool acceptsNode(const resbuf& node) const {
        const bool head =
            node.restype == 0 || node.restype == RTDXF0 || node.restype == 5 || node.restype == 105;
        return !head && m_checks.accepts(node);
    }

    bool write(GroupWriter& out, const std::vector<const resbuf*>& nodes) const {
        return std::all_of(nodes.begin(), nodes.end(), [&](const resbuf* node) {
            return writeNode(out, *node, m_database, isFlatPoint(m_type.type, node->restype) ? 2 : 3);
        });
    }

    bool writeHead(GroupWriter& out, const HxDbStub& stub) const {
        const FieldWriter::Frame frame = frameOf(stub);
        out.text(0, wide(m_type.type));
        if (frame.handle != 0) {
            out.handle(frame.handleCode, frame.handle);
        }
        if (!frame.subclassMarkers) {
            return true;
        }
        if (!m_type.isEntity) {
            return write(out, m_list.reactors) &&
                   (!m_list.owner || writeNode(out, *m_list.owner, m_database));
        }
        if (stub.owner) {
            out.handle(330, stub.owner->handle);
        }
        return true;
    }

    void writeMarker(GroupWriter& out, const std::wstring& marker) const {
        if (m_database.imp()->traits().hasSubclassMarkers) {
            out.text(100, marker);
        }
    }
    bool writeGeneral(GroupWriter& out, const HxDbStub& stub) const {
        writeMarker(out, kGeneralMarker);
        if (stub.owner == paperSpace(m_database)) {
            out.integer(kPaperFlag, 1);
        }
        if (count(kLayer) == 0) {
            const std::wstring layer = headerText(m_database, L"$CLAYER", L"0");
            out.text(kLayer, findRecord(m_database, TableKind::layer, layer) ? layer : L"0");
        }
        return writeCurrentValues(out) && write(out, m_general);
    }
    bool writeCurrentValues(GroupWriter& out) const {
        for (const CurrentValue& current : kCurrentValues) {
            const bool hasColor = current.code == 62 && count(420) > 0;
            const Chain node =
                count(current.code) == 0 && !hasColor ? currentValue(m_database, current) : nullptr;
            if (node && m_checks.accepts(*node) && !writeNode(out, *node, m_database)) {
                return false;
            }
        }
        return true;
    }
    bool writeOwn(GroupWriter& out, std::size_t which, std::string_view marker) const {
        if (!marker.empty()) {
            writeMarker(out, wide(marker));
        }
        const bool content = m_type.type == "XRECORD" && which == 0;
        if (content && (m_own[0].empty() || m_own[0].front()->restype != kCloning)) {
            out.integer(kCloning, 1);
        }
        return write(out, m_own[which]);
    }

    const HxDbDatabase& m_database;
    const ObjectType& m_type;
    ListParts m_list;
    ValueChecks m_checks;
    std::vector<const resbuf*> m_general;
    std::vector<const resbuf*> m_own[2];
};

/// Gives a new object, open for write, what the list says; takes its creation back when it does not go.
int fill(HxDbObject& object, const NewObject& wanted, zds_name result) {
    HxDbStub& stub = *object.objectId().stub();
    std::string groups;
    bool good = wanted.groups(stub, groups);
    if (good) {
        replaceGroups(stub, std::move(groups));
        good = !wanted.xdata() || object.setXData(wanted.xdata()) == Hx::eOk;
    }
    if (!good) {
        object.cancel();
        return RTREJ;
    }
    hxdbGetZdsName(result, object.objectId());
    object.close();
    return RTNORM;
}

int makeEntity(HxDbDatabase& database, const ObjectType& type, const NewObject& wanted, zds_name result) {
    HxDbStub* space = currentSpaceRecord(database);
    const HxDbObjectPointer<HxDbBlockTableRecord> block(HxDbObjectId(space), HxDb::kForWrite);
    if (!block) {
        return RTREJ;
    }
    std::unique_ptr<HxDbObject> object(recordClass(type.type, RecordPlace::entity).make(type.type));
    HxDbObjectId id;
    auto* entity = HxDbEntity::cast(object.get());
    if (!entity || block->appendHxDbEntity(id, entity) != Hx::eOk) {
        return RTREJ;
    }
    return fill(*object.release(), wanted, result);
}

int makeObject(HxDbDatabase& database, const ObjectType& type, const NewObject& wanted, zds_name result) {
    HxDbObject* object = recordClass(type.type, RecordPlace::object).make(type.type);
    addToDatabase(database, object, nullptr);
    return fill(*object, wanted, result);
}

/// Layers and linetypes; others have no use for lists.
TableKind tableOfRecords(const std::string& type) {
    const bool isMade = type == "LAYER" || type == "LTYPE";
    return isMade ? tableKind(type) : TableKind::count;
}

int makeTableRecord(HxDbDatabase& database, TableKind kind, const resbuf* list, zds_name result) {
    const resbuf* name = partsOfList(list).find(kRecordName);
    HxDbStub* stub = database.imp()->table(kind);
    if (!name || !stub) {
        return RTREJ;
    }
    const WriteAccess open(*stub);
    HxDbSymbolTable* table = open.object() ? HxDbSymbolTable::cast(open.object()) : nullptr;
    std::unique_ptr<HxDbObject> object(
        recordClass(typeOf(list), RecordPlace::tableRecord).make(typeOf(list)));
    HxDbSymbolTableRecord* record = HxDbSymbolTableRecord::cast(object.get());
    if (!table || !record || record->setName(std::wstring(textOf(*name)).c_str()) != Hx::eOk ||
        table->add(record) != Hx::eOk) {
        return RTREJ;
    }
    object.release();
    if (applyList(*record->objectId().stub(), list) != RTNORM) {
        record->cancel();
        return RTREJ;
    }
    hxdbGetZdsName(result, record->objectId());
    record->close();
    return RTNORM;
}

/// `anyObject` also for what is no entity.
int make(const resbuf* list, bool anyObject, zds_name result) {
    HxDbDatabase* database = hxdbWorkingDatabase();
    if (database && tableOfRecords(typeOf(list)) != TableKind::count) {
        return makeTableRecord(*database, tableOfRecords(typeOf(list)), list, result);
    }
    const ObjectType* type = objectType(typeOf(list));
    if (!database || !type || (!type->isEntity && !anyObject)) {
        return RTREJ;
    }
    NewObject wanted(*database, *type, list);
    if (!wanted.prepare()) {
        return RTREJ;
    }
    return type->isEntity ? makeEntity(*database, *type, wanted, result)
                          : makeObject(*database, *type, wanted, result);
}

}  // namespace

int hxdbEntMake(const resbuf* list) {
    zds_name ignored = {0, 0};
    return make(list, false, ignored);
}

int hxdbEntMakeX(const resbuf* list, zds_name result) { return make(list, true, result); }
