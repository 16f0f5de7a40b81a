// Objects as the SDK shows them: identity, state, extension dictionary, extended data, reactors.
#include "sdk/hxdbobject.h"

#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/reactor_list.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/lists/group_chain.h"
#include "sdk/hxads.h"
#include "sdk/hxdbdict.h"

HX_DEFINE_MEMBERS(HxDbObjectReactor, HxRxObject)
HX_DEFINE_MEMBERS(HxDbObject, HxRxObject)

using namespace korvex;

namespace {

constexpr int kApplicationName = 1001;
constexpr std::size_t kMostXData = 16383;

/// Extended data by application, in the object's order.
struct ApplicationData {
    std::wstring application;
    std::string groups;  ///< with the 1001 group
};

std::vector<ApplicationData> splitXData(std::string_view xdata, const GroupFormat& format) {
    std::vector<ApplicationData> parts;
    GroupCursor cursor(xdata, format);
    while (cursor.next()) {
        if (cursor.code() == kApplicationName) {
            parts.push_back({cursor.asText(), {}});
        }
        if (!parts.empty()) {
            parts.back().groups.append(cursor.bytes());
        }
    }
    return parts;
}

/// The part of an application, made when it is not there.
ApplicationData& partOf(std::vector<ApplicationData>& parts, const std::wstring& application) {
    for (ApplicationData& part : parts) {
        if (equalNames(part.application, application)) {
            return part;
        }
    }
    parts.push_back({application, {}});
    return parts.back();
}

/// Puts a chain's data in place of what the applications had.
Hx::ErrorStatus mergeXData(std::vector<ApplicationData>& parts, const resbuf* data,
                           const HxDbDatabase& database) {
    const GroupFormat& format = database.imp()->format;
    while (data) {
        if (data->restype != kApplicationName || !data->resval.rstring) {
            return Hx::eInvalidInput;
        }
        if (!findRecord(database, TableKind::appId, data->resval.rstring)) {
            return Hx::eKeyNotFound;
        }
        ApplicationData& part = partOf(parts, data->resval.rstring);
        GroupWriter out(format);
        out.text(kApplicationName, part.application);
        const std::size_t empty = out.data().size();
        resbuf node{};
        for (data = data->rbnext; data && data->restype != kApplicationName; data = data->rbnext) {
            node = *data;
            node.rbnext = nullptr;
            if (node.restype < 1000 || !appendChain(out, &node, database)) {
                return Hx::eInvalidDxfCode;
            }
        }
        part.groups = out.data().size() > empty ? out.take() : std::string();
    }
    return Hx::eOk;
}

}  // namespace

HxDbObject::HxDbObject(HxDbObjectImp* imp) : m_imp(imp) {
    imp->object = this;
    if (imp->dxfName.empty()) {
        imp->dxfName.assign(imp->type.begin(), imp->type.end());
    }
}

HxDbObject::~HxDbObject() { delete m_imp; }

HxDbObjectId HxDbObject::objectId() const { return HxDbObjectId(m_imp->stub); }

HxDbObjectId HxDbObject::ownerId() const {
    return HxDbObjectId(m_imp->newOwner ? m_imp->newOwner : m_imp->stub ? ownerOf(*m_imp->stub) : nullptr);
}

HxDbDatabase* HxDbObject::database() const { return m_imp->stub ? m_imp->stub->database : nullptr; }

void HxDbObject::getHxDbHandle(HxDbHandle& handle) const { handle = objectId().handle(); }

const wchar_t* HxDbObject::dxfName() const { return m_imp->dxfName.c_str(); }

bool HxDbObject::isReadEnabled() const {
    const HxDbStub* stub = m_imp->stub;
    return !stub || stub->writer || stub->readers > 0 || isNotifyEnabled();
}

bool HxDbObject::isWriteEnabled() const { return !m_imp->stub || m_imp->stub->writer; }

bool HxDbObject::isNotifyEnabled() const {
    const HxDbStub* stub = m_imp->stub;
    return stub && (stub->notifying > 0 || stub->notifyOpens > 0 || stub->undoing);
}

bool HxDbObject::isErased() const { return m_imp->stub && m_imp->stub->erased; }
bool HxDbObject::isModified() const { return m_imp->stub && m_imp->stub->changedInOpen; }
bool HxDbObject::isUndoing() const { return m_imp->stub && m_imp->stub->undoing; }
bool HxDbObject::isTransactionResident() const { return m_imp->stub && m_imp->stub->resident; }

std::uint32_t HxDbObject::openSerial() const { return m_imp->stub ? m_imp->stub->openSerial : 0; }

HxDbObjectId HxDbObject::extensionDictionary() const {
    const HxDbStub* dictionary = m_imp->extensionDictionary;
    return HxDbObjectId(dictionary && !dictionary->erased ? m_imp->extensionDictionary : nullptr);
}

Hx::ErrorStatus HxDbObject::createExtensionDictionary() {
    if (!m_imp->stub) {
        return Hx::eNotInDatabase;
    }
    if (!extensionDictionary().isNull()) {
        return Hx::eOk;
    }
    if (!m_imp->stub->database->imp()->traits().hasSubclassMarkers) {
        return Hx::eNotApplicable;
    }
    const Hx::ErrorStatus status = beginChange(this);
    if (status == Hx::eOk) {
        auto* dictionary = new HxDbDictionary;
        m_imp->extensionDictionary = &addToDatabase(*m_imp->stub->database, dictionary, m_imp->stub);
        dictionary->close();
    }
    return status;
}

resbuf* HxDbObject::xData(const wchar_t* application) const {
    if (!m_imp->stub || m_imp->xdata.empty()) {
        return nullptr;
    }
    const HxDbDatabase& database = *m_imp->stub->database;
    refreshXData(*m_imp);
    if (!application || !*application) {
        return chainOfGroups(m_imp->xdata, database.imp()->format, database);
    }
    for (const ApplicationData& part : splitXData(m_imp->xdata, database.imp()->format)) {
        if (equalNames(part.application, application)) {
            return chainOfGroups(part.groups, database.imp()->format, database);
        }
    }
    return nullptr;
}

Hx::ErrorStatus HxDbObject::setXData(const resbuf* data) {
    if (!m_imp->stub) {
        return Hx::eNotInDatabase;
    }
    if (!data) {
        return Hx::eInvalidInput;
    }
    HxDbDatabase& database = *m_imp->stub->database;
    refreshXData(*m_imp);
    std::vector<ApplicationData> parts = splitXData(m_imp->xdata, database.imp()->format);
    Hx::ErrorStatus status = mergeXData(parts, data, database);
    std::string merged;
    for (const ApplicationData& part : parts) {
        merged += part.groups;
    }
    if (status == Hx::eOk && merged.size() > kMostXData) {
        status = Hx::eXdataSizeExceeded;
    }
    if (status == Hx::eOk) {
        status = beginChange(this);
    }
    if (status == Hx::eOk) {
        m_imp->xdata = std::move(merged);
        m_imp->xdataChanged = m_imp->xdataChangedInOpen = true;
        m_imp->xdataRead(database);
    }
    return status;
}

void HxDbObject::addReactor(HxDbObjectReactor* reactor) const { addOnce(m_imp->reactors, reactor); }
void HxDbObject::removeReactor(HxDbObjectReactor* reactor) const { removeFrom(m_imp->reactors, reactor); }

bool HxDbObject::hasReactor(const HxDbObjectReactor* reactor) const {
    return std::find(m_imp->reactors.begin(), m_imp->reactors.end(), reactor) != m_imp->reactors.end();
}
