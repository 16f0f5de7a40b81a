// Xrecords.
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/lists/group_chain.h"
#include "host/db/objects/xrecord_cursor.h"
#include "host/db/objects/xrecord_imp.h"
#include "host/db/states/state_records.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbXrecord, HxDbObject)

namespace korvex {

void XrecordImp::clearFields() {
    m_groups.clear();
    m_followedTo = 0;
    m_flag.clear();
}

void XrecordImp::readGroups(std::string_view, const GroupFormat& format) {
    const Blob written = stub->blob.origin();
    XrecordCursor cursor(written.groups(), format);
    while (cursor.next()) {
        m_groups.append(cursor->bytes());
    }
    m_flag = std::string(cursor.flag());
    m_generation = written.generation();
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
    out.copyAll(xdata.empty() ? m_groups : groups());
}

/// Extended data has names of now: so must have what goes with it.
std::uint32_t XrecordImp::namesGeneration(std::uint32_t renames) const {
    return xdata.empty() ? m_generation : renames;
}

/// What was read or set stays as it was spelled, so that a rename that is undone gives it again.
const std::string& XrecordImp::groups() const {
    if (!stub) {
        return m_groups;
    }
    const HxDbDatabase::Imp& db = *stub->database->imp();
    if (m_generation >= db.names.size() || db.names.isHeld() || !isLayerState(*stub)) {
        return m_groups;
    }
    if (m_followedTo != db.names.size()) {
        Blob old{std::string_view(m_groups)};
        old.setGeneration(m_generation);
        m_followed.clear();
        db.names.refresh(kLayerStateType, false, old, db.format, m_followed);
        m_followedTo = db.names.size();
    }
    return m_followed.empty() ? m_groups : m_followed;
}

void XrecordImp::setGroups(std::string groups) {
    m_groups = std::move(groups);
    m_followedTo = 0;
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
