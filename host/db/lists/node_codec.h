// One group, or the two or three groups of a point, as a node of a chain, and back.
#pragma once

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"
#include "host/db/lists/chain.h"

class HxDbDatabase;

namespace korvex {

/// Walks groups node by node.
class NodeReader {
public:
    NodeReader(std::string_view groups, const GroupFormat& format, const HxDbDatabase& database);
    /// The next node; null at the end.
    Chain next();
    /// The groups of the node that came last. Empty for a part of a chunk that is too long for one node.
    std::string_view bytes() const { return m_bytes; }
    /// Of a point: how many of x, y and z there are in the groups; 0 for other values.
    int coordinates() const { return m_coordinates; }

private:
    Chain takePoint();
    Chain takeChunk();
    void step() { m_has = m_cursor.next(); }

    std::string_view m_groups;
    const HxDbDatabase& m_database;
    GroupCursor m_cursor;
    bool m_has = false;
    std::string m_chunk;  ///< what is left of a chunk
    int m_chunkCode = 0;
    std::string_view m_bytes;
    int m_coordinates = 0;
};

/// Writes a node; false when no group of this database's form can hold it. Of a point only the first
/// `coordinates`.
bool writeNode(GroupWriter& out, const resbuf& node, const HxDbDatabase& database, int coordinates = 3);

}  // namespace korvex
