// Records of an external reference bear its name in front of their own: "NAME|LAYER".
#pragma once

#include "host/db/kernel/write_access.h"

#include <deque>
#include <string>

namespace korvex {

/// The records that bear a reference's name, held open for write, to be renamed together with it.
class DependentNames {
public:
    /// Of a block record that is an external reference; there are none of any other record.
    DependentNames(HxDbStub& record, const std::wstring& newName);

    /// What keeps them from their new names: that one is taken, or that someone else has a record open.
    Hx::ErrorStatus status() const { return m_status; }
    /// Gives them their new names. The status must be eOk.
    void rename();

private:
    struct Dependent {
        Dependent(HxDbStub& record, std::wstring name) : access(record), newName(std::move(name)) {}
        WriteAccess access;
        std::wstring newName;
    };
    void collect(HxDbStub& table, const std::wstring& oldPrefix, const std::wstring& newPrefix);

    std::deque<Dependent> m_dependents;
    Hx::ErrorStatus m_status = Hx::eOk;
};

}  // namespace korvex
