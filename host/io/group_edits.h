// Small changes to the groups of records that are no fields of an object.
#pragma once

#include "host/db/groups/group_types.h"

#include <string>
#include <string_view>

namespace korvex {

/// The record with another value in all its groups of a code.
std::string withInteger(std::string_view record, const GroupFormat& format, int code, long long value);
std::string withHandle(std::string_view record, const GroupFormat& format, int code, std::uint64_t value);
/// The record with a handle of its own, in place of the one that it has.
std::string withOwnHandle(std::string_view record, const GroupFormat& format, int handleCode,
                          std::uint64_t handle);
std::string withReal(std::string_view record, const GroupFormat& format, int code, double value);

/// The BLOCK record with another name.
std::string withBlockName(std::string_view record, const GroupFormat& format, std::wstring_view name);

/// The entity with the flag that it lies in paper space, or without; the same bytes if nothing changes.
std::string withPaperFlag(std::string_view record, const GroupFormat& format, bool onPaper);

}  // namespace korvex
