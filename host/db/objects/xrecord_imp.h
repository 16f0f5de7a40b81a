// An xrecord's fields.
#pragma once

#include "host/db/kernel/object_imp.h"

namespace korvex {

class XrecordImp : public HxDbObjectImp {
public:
    XrecordImp() : HxDbObjectImp("XRECORD") {}
    void clearFields() override;
    void readGroups(std::string_view groups, const GroupFormat& format) override;
    void added(HxDbDatabase& database) override;
    void writeFields(FieldWriter& out) const override;
    std::uint32_t namesGeneration(std::uint32_t renames) const override;

    /// All groups after the duplicates flag, in the drawing's form, with names of now.
    const std::string& groups() const;
    /// Between beginChange and the next look at the object's groups.
    void setGroups(std::string groups);

private:
    std::string m_groups;            ///< as they were written or set
    std::uint32_t m_generation = 0;  ///< renames that had happened by then
    mutable std::string m_followed;  ///< with names of later; empty when they are the same
    mutable std::uint32_t m_followedTo = 0;
    std::string m_flag;  ///< the duplicates flag's group; empty when there is none
};

}  // namespace korvex
