// An entity list taken apart: what names the object, its subclasses, its extended data.
#pragma once

#include "sdk/hxads.h"

#include <string>
#include <vector>

namespace korvex {

/// The nodes that follow a "100" marker; the nodes before the first have an empty one.
struct ListSection {
    std::wstring marker;
    std::vector<const resbuf*> nodes;
};

/// Views into a chain, which must outlive it.
struct ListParts {
    const resbuf* name = nullptr;         ///< -1
    const resbuf* type = nullptr;         ///< 0
    const resbuf* handle = nullptr;       ///< 5, of dimension styles 105
    const resbuf* owner = nullptr;        ///< 330 before the first marker
    std::vector<const resbuf*> reactors;  ///< the run of "102 {ACAD_REACTORS", its braces included
    std::vector<ListSection> sections;    ///< at least one
    const resbuf* xdata = nullptr;        ///< the first node of the extended data; it goes on to the end

    bool hasMarkers() const { return sections.size() > 1; }
    /// The first node of a code in any subclass; null when there is none.
    const resbuf* find(int code) const;
};

/// Takes a list apart. Other runs of "102 {...}" before the first marker are left out: what hangs on an
/// object is not given by lists.
ListParts partsOfList(const resbuf* list, int handleCode = 5);

}  // namespace korvex
