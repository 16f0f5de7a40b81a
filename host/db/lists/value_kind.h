// Which member of a result buffer's value a restype uses.
#pragma once

#include <cstdint>

namespace korvex {

enum class ValueKind : std::uint8_t { none, real, point, int16, int32, int64, text, name, chunk };

/// The kind of a restype: group code, negative marker or RT type; none for one that carries no value or is
/// not known.
ValueKind valueKind(int restype);

/// True for the x group of a point; its y and z have the codes 10 and 20 above.
bool isPointCode(int code);

}  // namespace korvex
