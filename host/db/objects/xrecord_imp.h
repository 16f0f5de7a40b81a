// An xrecord's fields.
#pragma once

#include "host/db/kernel/object_imp.h"

namespace korvex {

class XrecordImp : public HxDbObjectImp {
public:
    static constexpr int kDuplicatesCode = 280;

    XrecordImp() : HxDbObjectImp("XRECORD") {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void writeFields(FieldWriter& out) const override;

    std::string data;  ///< all groups after the duplicates flag, in the drawing's form

private:
    std::string m_flag;  ///< the duplicates flag's group; empty when there is none
};

}  // namespace korvex
