// Where the user was when layers were isolated: extended data of the drawing's layer-states dictionary.
#pragma once

#include "hxdbdatabase.h"

#include <optional>

/// What stands there; handles that the drawing has no more give null ids.
struct KvIsolationPlace {
    HxDbObjectId layout;
    HxDbObjectId viewport;  ///< null when none was current
};

/// The layout that is current; null id when it has no layout object.
HxDbObjectId activeLayout(const HxDbDatabase& database);

/// Keeps the active layout and the current viewport in the dictionary's extended data, in place of what stood
/// there; extended data of others stay. False, and nothing is written, when there is no active layout or the
/// dictionary refuses. The database must be the working one.
bool writeIsolationPlace(const HxDbDatabase& database, HxDbObjectId dictionary);

/// None when the dictionary has no such data.
std::optional<KvIsolationPlace> readIsolationPlace(const HxDbDatabase& database, HxDbObjectId dictionary);

/// False when the dictionary refuses.
bool removeIsolationPlace(HxDbObjectId dictionary);
