// What LAYISO does to the layers once it knows which stay.
#pragma once

#include "sdk/hxdbdatabase.h"

#include <string>
#include <vector>

namespace korvex {

/// What becomes of the other layers.
enum class OtherLayers { off, lock, viewportFreeze };

struct IsolatedLayers {
    std::vector<HxDbObjectId> layers;  ///< each once, in the order of choosing
    std::vector<HxDbObjectId> around;  ///< of references that hold chosen objects; not frozen in viewports
};

struct IsolationCounts {
    std::size_t changed = 0;
    std::size_t already = 0;  ///< were hidden, or locked, before
    std::size_t failed = 0;
    std::wstring unchanged;      ///< one that could not be changed
    std::wstring because;        ///< why
    std::wstring stayedCurrent;  ///< the current layer, when none of the isolated ones could become it
};

/// Turns the layers on and thaws them, makes the first that can be current so if none is, then hides or locks
/// the others: what is so already is not touched. `viewport` is the floating one that is current, or null.
IsolationCounts isolate(HxDbDatabase& database, const IsolatedLayers& kept, OtherLayers others,
                        HxDbObjectId viewport);

}  // namespace korvex
