// A block record's fields.
#pragma once

#include "host/db/tables/symbol_record_imp.h"

namespace korvex {

class BlockRecordImp : public SymbolRecordImp {
public:
    BlockRecordImp() : SymbolRecordImp("BLOCK_RECORD", "AcDbBlockTableRecord") {}
    void clearFields() override;
    void readField(const ReadContext& context, const GroupCursor& group) override;
    void fieldsRead(HxDbDatabase& database) override;
    void writeFields(FieldWriter& out) const override;
    Hx::ErrorStatus mayErase() const override;
    Hx::ErrorStatus mayRename() const override;

    bool isLayout() const;

    HxDbStub* layout = nullptr;
};

}  // namespace korvex
