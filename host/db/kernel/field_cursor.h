// Walks an object's groups as far as they are fields of its class.
#pragma once

#include "host/db/groups/group_cursor.h"

namespace korvex {

/// Steps through an object's groups outside of "102 {...}" runs before the first marker, without type,
/// handle, markers and extended data. The groups must outlive it.
class FieldCursor {
public:
    static constexpr int kFirstXData = 1000;

    FieldCursor(std::string_view groups, const GroupFormat& format, int handleCode = 5)
        : m_groups(groups), m_cursor(groups, format), m_handleCode(handleCode) {}

    /// Steps to the next field; false at the end.
    bool next();
    const GroupCursor& operator*() const { return m_cursor; }
    const GroupCursor* operator->() const { return &m_cursor; }
    /// The "100" marker that the group follows; empty before the first.
    std::string_view subclass() const { return m_subclass; }
    /// Handle of the extension dictionary, as far as it was passed; 0 none.
    std::uint64_t extensionDictionary() const { return m_extensionDictionary; }
    /// After the end: all extended data.
    std::string_view xdata() const { return m_xdata; }

private:
    bool isField();

    std::string_view m_groups;
    GroupCursor m_cursor;
    int m_handleCode;
    std::string_view m_subclass;
    std::string_view m_xdata;
    std::uint64_t m_extensionDictionary = 0;
    bool m_inBrace = false;
    bool m_inDictionary = false;
};

}  // namespace korvex
