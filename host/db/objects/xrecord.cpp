// Xrecords.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/lists/group_chain.h"
#include "host/db/objects/xrecord_imp.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbXrecord, HxDbObject)

namespace korvex {

void XrecordImp::clearFields() {
    data.clear();
    m_flag.clear();
}

void XrecordImp::readField(const ReadContext& context, const GroupCursor& group) {
    if (context.subclass != "AcDbXrecord") {
        return;
    }
    if (group.code() == kDuplicatesCode && data.empty() && m_flag.empty()) {
        m_flag = std::string(group.bytes());
    } else {
        data.append(group.bytes());
    }
}

void XrecordImp::writeFields(FieldWriter& out) const {
    out.replaceSubclass("AcDbXrecord");
    if (!m_flag.empty()) {
        GroupCursor flag(m_flag, out.format());
        flag.next();
        out.copy(flag);
    } else {
        out.integer(kDuplicatesCode, 1);
    }
    out.copyAll(data);
}

}  // namespace korvex

using namespace korvex;

namespace {

/// Codes that mean something else in an object's groups.
bool canHold(int code) { return code > 0 && code < 1000 && code != 5 && code != 100 && code != 105; }

}  // namespace

HxDbXrecord::HxDbXrecord() : HxDbObject(new XrecordImp) {}

resbuf* HxDbXrecord::rbChain() const {
    const HxDbDatabase* database = this->database();
    return database ? chainOfGroups(fields<XrecordImp>(this).data, database->imp()->format, *database)
                    : nullptr;
}

Hx::ErrorStatus HxDbXrecord::setFromRbChain(const resbuf* chain) {
    const HxDbDatabase* database = this->database();
    if (!database) {
        return Hx::eNotInDatabase;
    }
    for (const resbuf* node = chain; node; node = node->rbnext) {
        if (!canHold(node->restype)) {
            return Hx::eInvalidDxfCode;
        }
    }
    GroupWriter out(database->imp()->format);
    if (!appendChain(out, chain, *database)) {
        return Hx::eInvalidDxfCode;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        fields<XrecordImp>(this).data = out.take();
    }
    return status;
}
