// A closure over the references between records.
#include "host/io/referenced_records.h"

#include "host/db/kernel/entity_access.h"
#include "host/io/named_handles.h"

namespace korvex {

void ReferencedRecords::follow(std::string_view groups) {
    if (!m_db.writesHandles) {
        return;
    }
    const auto takeAll = [this](std::string_view of) {
        forEachReference(of, m_db.format, [this](int, std::uint64_t handle) { take(handle); });
    };
    takeAll(groups);
    while (!m_toFollow.empty()) {
        HxDbStub* added = m_toFollow.back();
        m_toFollow.pop_back();
        takeAll(blobForSaving(*added).groups());
    }
}

void ReferencedRecords::take(std::uint64_t handle) {
    HxDbStub* stub = handle != 0 ? m_db.handles.find(handle) : nullptr;
    if (!stub || !isAlive(*stub)) {
        return;
    }
    if (stub->implicit && m_added.insert(stub).second) {
        m_toFollow.push_back(stub);
    } else if (!stub->inFile || stub->handleInFile || !m_withHandle.insert(stub).second) {
        return;
    }
    m_highest = std::max(m_highest, handle);
}

}  // namespace korvex
