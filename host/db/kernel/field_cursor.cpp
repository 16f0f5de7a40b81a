// Tells fields from what frames them.
#include "host/db/kernel/field_cursor.h"

#include "host/db/groups/group_lexer.h"

namespace korvex {

namespace {

constexpr std::string_view kDictionaryBrace = "{ACAD_XDICTIONARY";

}  // namespace

bool FieldCursor::next() {
    while (m_xdata.empty() && m_cursor.next()) {
        if (m_cursor.code() >= kFirstXData) {
            m_xdata = m_groups.substr(m_cursor.offset());
        } else if (isField()) {
            return true;
        }
    }
    return false;
}

bool FieldCursor::isField() {
    const int code = m_cursor.code();
    if (code == 102 && m_subclass.empty()) {
        const std::string_view name = m_cursor.raw();
        m_inBrace = !name.empty() && name.front() == '{';
        m_inDictionary = name == kDictionaryBrace;
        return false;
    }
    if (m_inBrace) {
        if (m_inDictionary && (code == 360 || code == 350)) {
            m_extensionDictionary = m_cursor.asHandle();
        }
        return false;
    }
    if (code == 100) {
        m_subclass = groups::trimmed(m_cursor.raw());
        return false;
    }
    return code != 0 && !(code == m_handleCode && m_subclass.empty());
}

}  // namespace korvex
