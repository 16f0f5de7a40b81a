// Bringing linetypes of a file into a drawing.
#pragma once

#include "host/editor/linetype_file.h"
#include "sdk/hxdbdatabase.h"

namespace korvex {

/// How the drawing stands to a linetype of a file.
enum class LinetypePresence { absent, same, different };
LinetypePresence linetypePresence(HxDbDatabase& database, const LinetypeDefinition& definition);

struct LoadedLinetypes {
    std::vector<HxDbObjectId> ids;       ///< those that the drawing has now, in the order given
    std::vector<std::wstring> failures;  ///< the others, each with the reason
};
/// Adds the linetypes, or redefines those that the drawing has, as one undo step.
LoadedLinetypes loadLinetypes(HxDbDatabase& database, const std::vector<LinetypeDefinition>& definitions);

}  // namespace korvex
