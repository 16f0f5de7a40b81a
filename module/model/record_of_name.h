// Records of symbol tables by their names.
#pragma once

#include "model/opened_or_held.h"

#include "hxdbdatabase.h"
#include "hxdbsymtb.h"

/// The record of that name in a table of class `Table`; null id when there is none or the table is held by
/// somebody else.
template <class Table>
HxDbObjectId recordOfName(HxDbObjectId tableId, const CStdStr<wchar_t>& name) {
    const OpenedOrHeld<Table> table(tableId, HxDb::kForRead);
    HxDbObjectId id;
    return table && table->getAt(name.c_str(), id) == Hx::eOk ? id : HxDbObjectId();
}

inline HxDbObjectId layerOfName(const HxDbDatabase& database, const CStdStr<wchar_t>& name) {
    return recordOfName<HxDbLayerTable>(database.layerTableId(), name);
}

inline HxDbObjectId linetypeOfName(const HxDbDatabase& database, const CStdStr<wchar_t>& name) {
    return recordOfName<HxDbLinetypeTable>(database.linetypeTableId(), name);
}
