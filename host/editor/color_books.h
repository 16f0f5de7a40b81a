// Colours of colour books: which value belongs to a book's colour name.
#pragma once

#include "sdk/hxcm.h"
#include "sdk/hxdbdatabase.h"

#include <optional>
#include <string>

namespace korvex {

/// A colour with both names, as a dialog gave it, is known from now on. Others are left alone.
void rememberBookColor(const HxCmColor& color);
/// A colour that is known or that a layer of the drawing has; names compare without case.
std::optional<HxCmColor> findBookColor(HxDbDatabase& database, const std::wstring& book,
                                       const std::wstring& name);

}  // namespace korvex
