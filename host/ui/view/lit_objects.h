// The objects that are lit, and why.
#pragma once

#include "host/ui/view/scene_layers.h"

#include <algorithm>

namespace korvex {

/// What commands have asked for, what modules have asked for, what is under the cursor.
struct LitObjects {
    ObjectPath given;
    ObjectPath hovered;
    std::vector<ObjectPath> redrawn;

    /// A null id unlights all that modules have lit.
    void redraw(HxDbObjectId object, bool lit) {
        if (object.isNull()) {
            redrawn.clear();
            return;
        }
        const ObjectPath path{object};
        redrawn.erase(std::remove(redrawn.begin(), redrawn.end(), path), redrawn.end());
        if (lit) {
            redrawn.push_back(path);
        }
    }
    std::vector<ObjectPath> all() const {
        std::vector<ObjectPath> paths = redrawn;
        for (const ObjectPath* one : {&given, &hovered}) {
            if (!one->empty()) {
                paths.push_back(*one);
            }
        }
        return paths;
    }
};

}  // namespace korvex
