// Writes drawings in the form and version that they were read in.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>

namespace korvex {

/// The drawing's file as of now. What was not changed stands where it stood, byte for byte; new records
/// follow the others of their table, block or section. Besides that, $HANDSEED rises above the handles of new
/// records.
std::string writeDrawing(HxDbDatabase& database);

/// Writes the file as a whole or not at all (saveAtomically). A drawing with changes gets the time of saving
/// in $TDUPDATE and $TDUUPDATE, where it has them. eFileAccessErr, `error` tells why; eCancelled.
Hx::ErrorStatus saveDrawingFile(HxDbDatabase& database, const std::wstring& path, std::wstring& error);

}  // namespace korvex
