// What the parts of the layer-state manager share: finding states, what they say of a layer.
#pragma once

#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/write_access.h"
#include "sdk/hxlystate.h"

namespace korvex {

/// Null when the drawing has none.
HxDbStub* layerStateDictionary(const HxDbDatabase& database);
/// Null when there is no such state; other things in the dictionary are none.
HxDbStub* layerStateRecord(const HxDbDatabase& database, const wchar_t* name);

/// The entry as a layer can be: DEFPOINTS never plots, a book colour without a value has that of its index.
void makeAttainable(HxLyStateEntry& entry);
/// The properties that can be compared with a viewport or without, and by the drawing's kind of plot styles.
std::int32_t comparableProperties(const HxDbDatabase& database, const HxLyStateHeader& header,
                                  bool hasViewport);
/// The viewport behind an id; null for anything else.
HxDbStub* viewportOf(const HxDbDatabase& database, HxDbObjectId id);

/// The colour that an entry gives a layer.
HxCmColor colorOf(const HxLyStateEntry& entry);

/// WriteAccess also where the caller only reads the object.
class StateWriteAccess : public WriteAccess {
public:
    explicit StateWriteAccess(HxDbStub& stub) : WriteAccess(stub, false, Upgrade::anyone) {}
};

}  // namespace korvex
