// Walking the records of a symbol table.
#pragma once

#include "model/opened_or_held.h"

#include "hxdbsymtb.h"

#include <memory>

/// Calls `visit` with the id of each record of a table that is not erased, in drawing order. Nothing for the
/// null id, and while somebody has the table open for write.
template <class Visitor>
void visitRecords(HxDbObjectId tableId, Visitor&& visit) {
    const OpenedOrHeld<HxDbSymbolTable> table(tableId, HxDb::kForRead);
    HxDbSymbolTableIterator* made = nullptr;
    if (!table || table->newIterator(made) != Hx::eOk) return;
    const std::unique_ptr<HxDbSymbolTableIterator> at(made);
    for (; !at->done(); at->step()) {
        visit(at->getRecordId());
    }
}
