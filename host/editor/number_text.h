// Numbers, angles and points as they are typed on the command line.
#pragma once

#include "sdk/hxge.h"

#include <string>
#include <string_view>

namespace korvex {

/// Each reads the whole text, without regard to the locale; false (and the result untouched) for anything
/// else, for what is not finite and for what does not fit.
bool readInteger(std::wstring_view text, int& value);
bool readReal(std::wstring_view text, double& value);

/// "x,y", "x,y,z", "dist<angle" with the angle in degrees, each with "@" before it relative to `last`; "@"
/// alone is `last`. A "*" before it is ignored. Without z it is that of the origin, or of `last`.
bool readPoint(std::wstring_view text, const HxGePoint3d& last, HxGePoint3d& point);

/// A real with as many digits as it needs, at most `decimals` after the point.
std::wstring realText(double value, int decimals = 4);
std::wstring pointText(const HxGePoint3d& point, int decimals = 4);

constexpr double kPi = 3.14159265358979323846;

}  // namespace korvex
