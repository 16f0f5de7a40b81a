// Kinds of values: as group codes have them, but that points are one value and pointers are names.
#include "host/db/lists/value_kind.h"

#include "host/db/groups/group_types.h"
#include "sdk/hxads.h"

namespace korvex {

namespace {

constexpr int kFirstPointer = 320;
constexpr int kFirstXData = 1000;

ValueKind kindOfGroup(int code) {
    switch (groupType(code)) {
    case GroupType::real: return isPointCode(code) ? ValueKind::point : ValueKind::real;
    case GroupType::int16:
    case GroupType::boolean: return ValueKind::int16;
    case GroupType::int32: return ValueKind::int32;
    case GroupType::int64: return ValueKind::int64;
    case GroupType::binary: return ValueKind::chunk;
    case GroupType::handle:
        return code >= kFirstPointer && code < kFirstXData ? ValueKind::name : ValueKind::text;
    case GroupType::text: break;
    }
    return ValueKind::text;
}

}  // namespace

bool isPointCode(int code) {
    return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || (code >= 210 && code <= 219) ||
           (code >= 1010 && code <= 1013);
}

ValueKind valueKind(int restype) {
    if (restype >= 0 && restype <= kLastGroupCode) {
        return kindOfGroup(restype);
    }
    switch (restype) {
    case -1:
    case -2:
    case -5:
    case RTENAME: return ValueKind::name;
    case RTREAL:
    case RTANG: return ValueKind::real;
    case RTPOINT: return ValueKind::point;
    case RTSHORT: return ValueKind::int16;
    case RTLONG: return ValueKind::int32;
    case RTINT64: return ValueKind::int64;
    case -4:
    case RTSTR:
    case RTDXF0: return ValueKind::text;
    default: return ValueKind::none;
    }
}

}  // namespace korvex
