// Xrecords.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/lists/group_chain.h"
#include "host/db/objects/xrecord_cursor.h"
#include "host/db/objects/xrecord_imp.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbXrecord, HxDbObject)

namespace korvex {

void XrecordImp::clearFields() {
    m_groups.clear();
    m_flag.clear();
}

void XrecordImp::readGroups(std::string_view groups, const GroupFormat& format) {
    XrecordCursor cursor(groups, format);
    while (cursor.next()) {
        m_groups.append(cursor->bytes());
    }
    m_flag = std::string(cursor.flag());
    m_generation = stub->blob.generation();
}

void XrecordImp::added(HxDbDatabase& database) { m_generation = database.imp()->names.size(); }

void XrecordImp::writeFields(FieldWriter& out) const {
    out.replaceSubclass("AcDbXrecord");
    if (!m_flag.empty()) {
        GroupCursor flag(m_flag, out.format());
        flag.next();
        out.copy(flag);
    } else {
        out.integer(XrecordCursor::kDuplicatesCode, 1);
    }
    out.copyAll(m_groups);
}

std::uint32_t XrecordImp::namesGeneration(std::uint32_t) const { return m_generation; }

const std::string& XrecordImp::groups() const { return m_groups; }

void XrecordImp::setGroups(std::string groups) {
    m_groups = std::move(groups);
    m_generation = stub ? stub->database->imp()->names.size() : 0;
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
    return database ? chainOfGroups(fields<XrecordImp>(this).groups(), database->imp()->format, *database)
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
        fields<XrecordImp>(this).setGroups(out.take());
    }
    return status;
}
