// One row a type. Entities that are made of several records, or whose groups count each other, are left out.
#include "host/db/lists/object_types.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr std::string_view kR13 = "AC1012";
constexpr std::string_view kR14 = "AC1014";

constexpr ObjectType kTypes[] = {
    {"LINE", "AcDbLine", "", {}, {10, 11}},
    {"POINT", "AcDbPoint", "", {}, {10}},
    {"CIRCLE", "AcDbCircle", "", {}, {10, 40}},
    {"ARC", "AcDbCircle", "AcDbArc", {50, 51}, {10, 40, 50, 51}},
    {"TEXT", "AcDbText", "AcDbText", {73}, {1, 10, 40}},
    {"SOLID", "AcDbTrace", "", {}, {10, 11, 12, 13}},
    {"TRACE", "AcDbTrace", "", {}, {10, 11, 12, 13}},
    {"3DFACE", "AcDbFace", "", {}, {10, 11, 12, 13}},
    {"INSERT", "AcDbBlockReference", "", {}, {2, 10}},
    {"LWPOLYLINE", "AcDbPolyline", "", {}, {10, 90}, true, kR14},
    {"ELLIPSE", "AcDbEllipse", "", {}, {10, 11, 40}, true, kR13},
    {"MTEXT", "AcDbMText", "", {}, {1, 10, 40}, true, kR13},
    {"RAY", "AcDbRay", "", {}, {10, 11}, true, kR13},
    {"XLINE", "AcDbXline", "", {}, {10, 11}, true, kR13},
    {"VIEWPORT", "AcDbViewport", "", {}, {10, 40, 41}, true, kR13},
    {"XRECORD", "AcDbXrecord", "", {}, {}, false, kR13},
    {"DICTIONARY", "AcDbDictionary", "", {}, {}, false, kR13},
    {"ACDBPLACEHOLDER", "", "", {}, {}, false, kR13},
    {"DICTIONARYVAR", "DictionaryVariables", "", {}, {1}, false, kR13},
};

}  // namespace

std::size_t ObjectType::subclassOf(int code) const {
    const bool second = std::find(secondCodes.begin(), secondCodes.end(), code) != secondCodes.end();
    return code != 0 && second ? 1 : 0;
}

const ObjectType* objectType(std::string_view type) {
    const auto* const found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                           [type](const ObjectType& row) { return row.type == type; });
    return found != std::end(kTypes) ? found : nullptr;
}

}  // namespace korvex
