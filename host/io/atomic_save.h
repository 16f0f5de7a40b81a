// Replacing a file as a whole or not at all.
#pragma once

#include "sdk/hxtypes.h"

#include <string>
#include <string_view>

namespace korvex {

/// Writes the bytes to a new file beside `path`, makes sure that they are on disk and puts it in the place of
/// the old file, which stays as "NAME.bak" (an older one gives way). The target of a symbolic link is
/// replaced, not the link; permissions are kept. eCancelled when the user gives up, eFileAccessErr with a
/// reason on any failure; the old file and its backup are then as they were, but for the backup when the very
/// last step fails.
Hx::ErrorStatus saveAtomically(const std::wstring& path, std::string_view bytes, std::wstring& error);

/// Where saveAtomically keeps the previous file: "plan.bak" for "plan.dxf".
std::string backupName(const std::string& file);

}  // namespace korvex
