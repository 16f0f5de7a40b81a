// The table object: of which kind it is. Its records are in the stub's contents.
#pragma once

#include "host/db/kernel/name_log.h"
#include "host/db/kernel/object_imp.h"

namespace korvex {

class SymbolTableImp : public HxDbObjectImp {
public:
    explicit SymbolTableImp(TableKind of) : HxDbObjectImp("TABLE"), kind(of) {}
    Hx::ErrorStatus mayErase() const override { return Hx::eCannotBeErasedByCaller; }

    TableKind kind;
};

}  // namespace korvex
