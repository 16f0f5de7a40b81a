// Keeps what it found as long as the database's change counter stands.
#include "host/db/filters/active_viewport.h"

#include "host/db/kernel/entity_access.h"
#include "sdk/hxdbentity.h"

#include <algorithm>

namespace korvex {

void ActiveViewport::update(const HxDbDatabase* database) {
    const std::uint64_t changes = database ? database->imp()->changes : 0;
    if (database == m_database && changes == m_changes) {
        return;
    }
    m_database = database;
    m_changes = changes;
    m_id = hxdbGetCurVportId(database);
    m_frozen = m_id.isNull() ? std::vector<HxDbStub*>() : layersFrozenIn(*m_id.stub());
    m_namedPlotStyles = database && !database->plotStyleMode();
}

bool ActiveViewport::freezes(const HxDbStub* layer) const {
    return std::binary_search(m_frozen.begin(), m_frozen.end(), layer);
}

}  // namespace korvex
