// Stepping through the members of a table or block, sub-entities left out.
#pragma once

#include "host/db/kernel/stub.h"

#include <cstddef>

namespace korvex {

/// Before the first or behind the last member.
bool isPast(const HxDbStub& container, std::ptrdiff_t at);
/// The first member, or the last one; past the end when there is none.
std::ptrdiff_t firstMember(const HxDbStub& container, bool atBeginning, bool skipErased);
/// From a place that is not past the end.
std::ptrdiff_t nextMember(const HxDbStub& container, std::ptrdiff_t at, bool forward, bool skipErased);

}  // namespace korvex
