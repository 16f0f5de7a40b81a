// Whole runs of groups as chains.
#include "host/db/lists/group_chain.h"

#include "host/db/lists/node_codec.h"

namespace korvex {

resbuf* chainOfGroups(std::string_view groups, const GroupFormat& format, const HxDbDatabase& database) {
    NodeReader reader(groups, format, database);
    ChainBuilder chain;
    while (Chain node = reader.next()) {
        chain.add(std::move(node));
    }
    return chain.release();
}

bool appendChain(GroupWriter& out, const resbuf* chain, const HxDbDatabase& database, int* badCode) {
    for (const resbuf* node = chain; node; node = node->rbnext) {
        if (!writeNode(out, *node, database)) {
            if (badCode) {
                *badCode = node->restype;
            }
            return false;
        }
    }
    return true;
}

}  // namespace korvex
