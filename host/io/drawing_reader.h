// Reads drawing files: text and binary with group codes of every version, and what the converter makes of
// others.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>

namespace korvex {

/// Reads a drawing into an empty database. Objects come to life when they are first opened; until then they
/// are slices of the bytes, which the database keeps.
/// eBadDxfSequence for damage, eFilerError for bytes that are no drawing; `error` tells the place and the
/// remedy; eCancelled when the user gives up. The database is empty then, and fit for nothing but being
/// deleted. `warning` (may be null) gets what is odd but harms nothing.
Hx::ErrorStatus readDrawing(HxDbDatabase& database, std::string bytes, std::wstring& error,
                            std::wstring* warning = nullptr);

/// The same from a file, judged by its content and not by its name. Also eFileNotFound, eFileAccessErr; and
/// eFilerError for a compressed drawing that there is no converter for. Warnings go to the log.
Hx::ErrorStatus readDrawingFile(HxDbDatabase& database, const std::wstring& path, std::wstring& error);

}  // namespace korvex
