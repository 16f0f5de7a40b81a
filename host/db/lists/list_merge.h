// Puts the values of an entity list into the groups that an object has.
#pragma once

#include "host/db/lists/list_parts.h"
#include "host/db/lists/value_checks.h"

#include <string>
#include <string_view>

class HxDbDatabase;

namespace korvex {

/// The object's groups with the values of a list: `merged`. The object's head and extended data stay as they
/// are; a value that does not change keeps its spelling.
///
/// A subclass that the list names by its marker takes the list's values in their order; the groups whose
/// codes the list lacks stay where they were, but for an xrecord, whose content is the list's. Values that
/// the list gives before any marker go to the last subclass that has their code. Of a code that occurs
/// several times the list gives all values.
///
/// False, with `merged` undefined, when a value cannot be stored or is not acceptable, or when the list names
/// a subclass that the object lacks.
bool mergeList(std::string_view groups, const ListParts& list, const HxDbDatabase& database, int handleCode,
               const ValueChecks& checks, std::string& merged);

}  // namespace korvex
