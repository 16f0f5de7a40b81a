// Entity lists of the SDK: reading objects, erasing them, the last entity.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/field_writer.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/kernel/write_access.h"
#include "host/db/lists/chain.h"
#include "host/db/lists/current_space.h"
#include "host/db/lists/group_chain.h"
#include "host/db/lists/object_names.h"

#include <algorithm>

using namespace korvex;

namespace {

constexpr int kName = -1;
constexpr int kXDataMarker = -3;
constexpr int kApplication = 1001;

/// Whether the data of an application is asked for.
bool isWanted(const resbuf* applications, const std::wstring& application) {
    for (const resbuf* node = applications; node; node = node->rbnext) {
        const bool isText = valueKind(node->restype) == ValueKind::text;
        if (isText && (textOf(*node) == L"*" || equalNames(textOf(*node), application))) {
            return true;
        }
    }
    return false;
}

/// The extended data of the wanted applications, as groups.
std::string wantedXData(std::string_view xdata, const GroupFormat& format, const resbuf* applications) {
    GroupWriter out(format);
    GroupCursor cursor(xdata, format);
    bool wanted = false;
    while (cursor.next()) {
        if (cursor.code() == kApplication) {
            wanted = isWanted(applications, cursor.asText());
        }
        if (wanted) {
            out.copy(cursor);
        }
    }
    return out.take();
}

resbuf* listOf(HxDbStub& stub, const resbuf* applications) {
    const HxDbDatabase& database = *stub.database;
    const GroupFormat& format = database.imp()->format;
    const Blob blob = currentBlob(stub);
    if (blob.empty()) {
        return nullptr;
    }
    zds_name name = {0, 0};
    hxdbGetZdsName(name, HxDbObjectId(&stub));
    const std::size_t tail = xdataOffset(blob.groups(), format);
    ChainBuilder list;
    list.add(nameNode(kName, name));
    list.add(Chain(chainOfGroups(blob.groups().substr(0, tail), format, database)));
    const std::string xdata = wantedXData(blob.groups().substr(tail), format, applications);
    if (!xdata.empty()) {
        list.add(newNode(kXDataMarker));
        list.add(Chain(chainOfGroups(xdata, format, database)));
    }
    return list.release();
}

}  // namespace

resbuf* hxdbEntGetX(const zds_name name, const resbuf* applications) {
    HxDbStub* stub = stubOfName(name);
    return stub && isAlive(*stub) ? listOf(*stub, applications) : nullptr;
}

resbuf* hxdbEntGet(const zds_name name) { return hxdbEntGetX(name, nullptr); }

int hxdbEntDel(const zds_name name) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    HxDbStub* stub = database && name ? stubOfName(*database, name) : nullptr;
    if (!stub || stub->unappended || stub->subEntity) {
        return RTERROR;
    }
    const bool erasing = !stub->erased;
    const WriteAccess open(*stub, true);
    return open.object() && open.object()->erase(erasing) == Hx::eOk ? RTNORM : RTERROR;
}

int hxdbEntLast(zds_name result) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    const HxDbStub* space = database ? currentSpaceRecord(*database) : nullptr;
    if (!space) {
        return RTERROR;
    }
    const std::vector<HxDbStub*>& all = members(*space);
    const auto last = std::find_if(all.rbegin(), all.rend(),
                                   [](const HxDbStub* stub) { return !stub->subEntity && isAlive(*stub); });
    return last != all.rend() && hxdbGetZdsName(result, HxDbObjectId(*last)) == Hx::eOk ? RTNORM : RTERROR;
}
