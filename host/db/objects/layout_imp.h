// A layout's fields.
#pragma once

#include "host/db/kernel/object_imp.h"

namespace korvex {

class LayoutImp : public HxDbObjectImp {
public:
    LayoutImp() : HxDbObjectImp("LAYOUT") {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void writeFields(FieldWriter& out) const override;

    std::wstring name;
    long long tabOrder = 0;
    HxDbStub* block = nullptr;
};

}  // namespace korvex
