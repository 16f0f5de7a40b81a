// Entities: the properties that they share.
#include "host/db/entities/entity_cursor.h"
#include "host/db/entities/entity_imp.h"
#include "host/db/kernel/database_imp.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbEntity, HxDbObject)

namespace korvex {

namespace {

constexpr std::int16_t kByLayerWeight = -1;

}  // namespace

void EntityImp::clearFields() {
    layer.clear();
    linetype.clear();
    color = HxCmColor::byIndex(HxCmColor::kIndexByLayer);
    lineWeight = kByLayerWeight;
    visible = true;
    m_color.clear();
}

void EntityImp::readGroups(std::string_view groups, const GroupFormat& format) {
    for (EntityCursor cursor(groups, format); cursor.nextShared();) {
        switch (cursor.code()) {
        case shared_group::kLayer: layer.setName(cursor->asText()); break;
        case shared_group::kLinetype: linetype.setName(cursor->asText()); break;
        case shared_group::kLineWeight: lineWeight = static_cast<std::int16_t>(cursor->asInteger()); break;
        case shared_group::kVisibility: visible = cursor->asInteger() == 0; break;
        default: m_color.read(*cursor);
        }
    }
}

void EntityImp::fieldsRead(HxDbDatabase& database) {
    layer.record(&database);
    linetype.record(&database);
    color = m_color.color();
}

void EntityImp::added(HxDbDatabase& database) {
    if (layer.empty()) {
        HxDbStub* current = database.clayer().stub();
        current ? layer.setRecord(*current) : layer.setName(L"0");
    }
}

void EntityImp::writeFields(FieldWriter& out) const {
    const VersionTraits traits = stub->database->imp()->traits();
    out.subclass("AcDbEntity");
    for (EntityCursor cursor(stub->blob.groups(), out.format()); cursor.nextShared();) {
        out.standsAt(cursor->offset(), cursor.code());
    }
    if (stub->blob.empty() && stub->owner && stub->owner == paperSpace(*stub->database)) {
        out.integer(shared_group::kPaper, 1);
    }
    out.text(shared_group::kLayer, layer.name());
    if (linetype.empty()) {
        out.absent(shared_group::kLinetype);
    } else {
        out.text(shared_group::kLinetype, linetype.name());
    }
    const long long index = m_color.indexOf(color);
    index == HxCmColor::kIndexByLayer ? out.defaultInteger(shared_group::kColorIndex, index)
                                      : out.integer(shared_group::kColorIndex, index);
    if (traits.hasLineWeights && lineWeight != kByLayerWeight) {
        out.integer(shared_group::kLineWeight, lineWeight);
    } else {
        out.defaultInteger(shared_group::kLineWeight, lineWeight);
    }
    visible ? out.defaultInteger(shared_group::kVisibility, 0) : out.integer(shared_group::kVisibility, 1);
    ColorGroups::writeTrueColor(out, color);
}

}  // namespace korvex

using namespace korvex;

namespace {

std::string narrowed(const wchar_t* name) {
    const std::wstring wide(name ? name : L"");
    return {wide.begin(), wide.end()};
}

}  // namespace

HxDbEntity::HxDbEntity(const wchar_t* type) : HxDbObject(new EntityImp(narrowed(type))) {}

HxDbObjectId HxDbEntity::layerId() const {
    HxDbStub* layer = fields<EntityImp>(this).layer.record(database());
    return layer || !database() ? HxDbObjectId(layer) : database()->layerZero();
}

CStdStr<wchar_t> HxDbEntity::layer() const { return fields<EntityImp>(this).layer.name(); }

Hx::ErrorStatus HxDbEntity::setLayer(HxDbObjectId layer) {
    const HxDbDatabase* mine = database();
    if (layer.isNull() || layer.isErased() || (mine && layer.database() != mine) ||
        !HxDbLayerTableRecord::cast(hxdbObjectPointer(layer))) {
        return Hx::eWrongClass;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<EntityImp>(this).layer.setRecord(*layer.stub());
        if (imp()->stub) {
            imp()->stub->layer = nullptr;
        }
    }
    return status;
}

Hx::ErrorStatus HxDbEntity::setLayer(const wchar_t* name) {
    const HxDbDatabase* mine = database() ? database() : hxdbWorkingDatabase();
    HxDbStub* layer = mine && name ? findRecord(*mine, TableKind::layer, name) : nullptr;
    return layer ? setLayer(HxDbObjectId(layer)) : Hx::eKeyNotFound;
}

HxCmColor HxDbEntity::color() const { return fields<EntityImp>(this).color; }

Hx::ErrorStatus HxDbEntity::setColor(const HxCmColor& color) {
    if (color.isByColor() && database() && !database()->imp()->traits().hasTrueColors) {
        return Hx::eNotApplicable;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<EntityImp>(this).color = color;
    }
    return status;
}

HxDbObjectId HxDbEntity::linetypeId() const {
    const RecordRef& linetype = fields<EntityImp>(this).linetype;
    return linetype.empty() ? HxDbObjectId() : HxDbObjectId(linetype.record(database()));
}

HxDb::LineWeight HxDbEntity::lineWeight() const {
    return static_cast<HxDb::LineWeight>(fields<EntityImp>(this).lineWeight);
}

bool HxDbEntity::isVisible() const { return fields<EntityImp>(this).visible; }

HxDbObjectId HxDbEntity::blockId() const {
    const HxDbStub* stub = imp()->stub;
    HxDbStub* owner = stub ? stub->owner : nullptr;
    while (owner && !owner->contents) {
        owner = owner->owner;
    }
    return HxDbObjectId(owner);
}
