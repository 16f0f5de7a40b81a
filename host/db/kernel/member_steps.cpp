// Steps of iterators.
#include "host/db/kernel/member_steps.h"

#include "host/db/kernel/entity_access.h"

namespace korvex {

namespace {

/// From a place on to the next one where an iterator may rest.
std::ptrdiff_t resting(const HxDbStub& container, std::ptrdiff_t at, bool forward, bool skipErased) {
    while (!isPast(container, at)) {
        const HxDbStub* member = members(container)[static_cast<std::size_t>(at)];
        if (!member->subEntity && !(skipErased && member->erased)) {
            break;
        }
        at += forward ? 1 : -1;
    }
    return at;
}

}  // namespace

bool isPast(const HxDbStub& container, std::ptrdiff_t at) {
    return at < 0 || at >= static_cast<std::ptrdiff_t>(members(container).size());
}

std::ptrdiff_t firstMember(const HxDbStub& container, bool atBeginning, bool skipErased) {
    const std::ptrdiff_t last = static_cast<std::ptrdiff_t>(members(container).size()) - 1;
    return resting(container, atBeginning ? 0 : last, atBeginning, skipErased);
}

std::ptrdiff_t nextMember(const HxDbStub& container, std::ptrdiff_t at, bool forward, bool skipErased) {
    return resting(container, at + (forward ? 1 : -1), forward, skipErased);
}

}  // namespace korvex
