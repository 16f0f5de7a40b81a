// The kinds of objects that lists can make: their subclasses and the values that they cannot be without.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace korvex {

struct ObjectType {
    std::string_view type;
    /// "100" markers of its own after an entity's general one; empty where there is none.
    std::string_view marker;
    std::string_view secondMarker;
    std::array<int, 3> secondCodes;  ///< codes of the second subclass; 0 is none
    std::array<int, 4> required;     ///< 0 is none
    bool isEntity = true;
    std::string_view since = {};  ///< the first version that knows it; empty for all

    /// Which of its own subclasses a value belongs to that the list gives without a marker: 0 or 1.
    std::size_t subclassOf(int code) const;
};

/// Null for a type that lists cannot make.
const ObjectType* objectType(std::string_view type);

}  // namespace korvex
