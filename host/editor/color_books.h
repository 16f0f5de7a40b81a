// Colours of colour books: which value belongs to a book's colour name.
#pragma once

#include "sdk/hxcm.h"
#include "sdk/hxdbdatabase.h"

#include <optional>
#include <string>

namespace korvex {

/// The colour of that name that a layer of the drawing has; names compare without case.
std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name);

}  // namespace korvex
