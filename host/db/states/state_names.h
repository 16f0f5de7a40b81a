// What handles in a layer state's record stand for.
#pragma once

#include "host/db/kernel/stub.h"

#include <string>
#include <unordered_map>

namespace korvex {

/// Names of the objects that a record's groups point to. Few objects are named many times: each is looked up
/// once.
class StateNames {
public:
    explicit StateNames(const HxDbDatabase& database) : m_database(database) {}

    /// The present name of a record of the layer table, erased or not; null when the handle is of none.
    const std::wstring* layer(std::uint64_t handle);
    /// The present name of a linetype, erased or not; empty when the handle is of none.
    const std::wstring& linetype(std::uint64_t handle);
    /// The key of a plot style; that of the default for any other handle.
    const std::wstring& plotStyle(std::uint64_t handle);

private:
    /// Names by handle; entries often name the one before again.
    struct Known {
        std::unordered_map<std::uint64_t, std::wstring> names;
        std::uint64_t lastHandle = 0;
        const std::wstring* last = nullptr;
    };
    template <class Find>
    static const std::wstring& lookUp(Known& known, std::uint64_t handle, Find find);

    HxDbStub* findLayer(std::uint64_t handle) const;

    const HxDbDatabase& m_database;
    std::size_t m_nextLayer = 0;  ///< place in the table behind the layer that was asked for last
    Known m_linetypes;
    Known m_plotStyles;
};

}  // namespace korvex
