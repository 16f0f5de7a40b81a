// External references: the drawings that blocks name, found and loaded.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <memory>
#include <string>
#include <vector>

namespace korvex {

/// Loads what the drawing's blocks name, and what those name in turn. A reference that cannot be loaded is
/// left unloaded; `messages` gets a sentence for each.
void loadXrefs(HxDbDatabase& host, std::vector<std::wstring>& messages);

/// Reads one referenced drawing: the path as stored, then beside the host drawing, then in the search folders
/// (environment variable KORVEX_SEARCH_PATH, folders parted by ":"). Null with the reason in `error`, without
/// a full stop: eXrefNotFound, eXrefCircular, or the statuses of reading.
/// `messages` as above, for what that drawing refers to itself.
std::unique_ptr<HxDbDatabase> loadXref(const HxDbDatabase& host, const std::wstring& path,
                                       Hx::ErrorStatus& status, std::wstring& error,
                                       std::vector<std::wstring>& messages);

/// Makes a loaded drawing that of a block record. A drawing that was there before stays alive as long as the
/// host, since ids of its objects may be about.
void setXref(HxDbStub& blockRecord, std::unique_ptr<HxDbDatabase> drawing);

/// Adds the layers that the host drawing lacks of a loaded reference, as "NAME|LAYER".
/// With `asRecords` they become part of the drawing, else they are written only when they are changed.
void addXrefLayers(HxDbStub& blockRecord, bool asRecords);

}  // namespace korvex
