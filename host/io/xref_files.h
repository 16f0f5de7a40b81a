// External references: the drawings that blocks name, found and loaded.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <memory>
#include <string>
#include <vector>

namespace korvex {

/// How deep references of references go, and how much all of a drawing's together may take.
constexpr std::size_t kMostXrefLevels = 32;
constexpr long long kMostXrefBytes = 1LL << 30U;  ///< of the files
constexpr std::size_t kMostXrefLayers = 50000;    ///< that are listed without being written

/// Loads what the drawing's blocks name, and what those attach in turn; overlays of references are not
/// followed. A file that several blocks name is loaded once. A reference that cannot be loaded is left
/// unloaded; `messages` gets a sentence for each.
void loadXrefs(HxDbDatabase& host, std::vector<std::wstring>& messages);

/// The drawing of a reference that is to be attached to `host`: the path as stored, then beside the host
/// drawing, then in the search folders (environment variable KORVEX_SEARCH_PATH, folders parted by ":"). One
/// that another block of the host names already is shared. Null with the reason in `error`, without a full
/// stop: eXrefNotFound, eXrefCircular, eRefused (too deep, too large) or the statuses of reading.
/// `messages` as above, for what that drawing refers to itself.
std::shared_ptr<HxDbDatabase> loadXref(HxDbDatabase& host, const std::wstring& path, Hx::ErrorStatus& status,
                                       std::wstring& error, std::vector<std::wstring>& messages);

/// Reads the file of a block of `host` again, and those that it attaches; every block of the host and of its
/// references that names one of these files has it afterwards. The drawings that were there before live until
/// the next reload, since ids of their objects may be about. False with nothing changed: reasons as above.
bool reloadXrefFile(HxDbStub& blockRecord, const std::wstring& path, Hx::ErrorStatus& status,
                    std::wstring& error, std::vector<std::wstring>& messages);

/// Makes a loaded drawing that of a block record.
void setXref(HxDbStub& blockRecord, std::shared_ptr<HxDbDatabase> drawing);

/// Adds the layers that the host drawing lacks of a loaded reference, as "NAME|LAYER", as records of the
/// drawing.
void addXrefLayers(HxDbStub& blockRecord);

}  // namespace korvex
