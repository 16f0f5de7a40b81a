// INSERT: a block drawn at a place.
#include "host/db/entities/entity_imp.h"
#include "host/db/kernel/database_imp.h"
#include "sdk/hxdbentity.h"

HX_DEFINE_MEMBERS(HxDbBlockReference, HxDbEntity)

namespace korvex {

class BlockReferenceImp : public EntityImp {
public:
    BlockReferenceImp() : EntityImp("INSERT") {}
    void clearFields() override {
        EntityImp::clearFields();
        block.clear();
        position = {};
    }
    void readField(const ReadContext& context, const GroupCursor& group) override {
        if (isCommon(context)) {
            return;
        }
        switch (group.code()) {
        case 2: block.setName(group.asText()); break;
        case 10: position.x = group.asReal(); break;
        case 20: position.y = group.asReal(); break;
        case 30: position.z = group.asReal(); break;
        default: break;
        }
    }
    void fieldsRead(HxDbDatabase& database) override {
        EntityImp::fieldsRead(database);
        block.record(&database);
    }
    void writeFields(FieldWriter& out) const override {
        EntityImp::writeFields(out);
        out.subclass("AcDbBlockReference");
        out.text(2, block.name());
        out.real(10, position.x);
        out.real(20, position.y);
        out.real(30, position.z);
    }

    RecordRef block{TableKind::block};
    HxGePoint3d position;
};

}  // namespace korvex

using namespace korvex;

HxDbBlockReference::HxDbBlockReference() : HxDbEntity(new BlockReferenceImp) {}

HxDbObjectId HxDbBlockReference::blockTableRecord() const {
    return HxDbObjectId(fields<BlockReferenceImp>(this).block.record(database()));
}

Hx::ErrorStatus HxDbBlockReference::setBlockTableRecord(HxDbObjectId block) {
    if (block.isNull() || !HxDbBlockTableRecord::cast(hxdbObjectPointer(block))) {
        return Hx::eWrongClass;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<BlockReferenceImp>(this).block.setRecord(*block.stub());
    }
    return status;
}

HxGePoint3d HxDbBlockReference::position() const { return fields<BlockReferenceImp>(this).position; }

Hx::ErrorStatus HxDbBlockReference::setPosition(const HxGePoint3d& position) {
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<BlockReferenceImp>(this).position = position;
    }
    return status;
}
