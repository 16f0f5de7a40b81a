// Numbers in group values: read from text tolerantly, written in the spelling that drawings use. No locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvex::groups {

/// The whole number in a text, blanks around it allowed; a number with a fraction or exponent is cut to its
/// whole part, one too large for the type gives the nearest end of it, anything else 0.
long long parseInteger(std::string_view text);

/// The real in a text, blanks around it allowed; "nan" and "inf" in their spellings too; 0 when it is no
/// number.
double parseReal(std::string_view text);

/// True for what the C libraries of the world print in place of a finite number ("nan", "-inf", "1.#QNAN"
/// ...).
bool isNonFinite(std::string_view text);

/// Hexadecimal of up to 16 digits, blanks around it allowed; 0 when it is none.
std::uint64_t parseHandle(std::string_view text);

/// The bytes of a hexadecimal text, up to the first character that is no hexadecimal digit.
std::string parseHex(std::string_view text);

/// The whole part of a real, held within the type; 0 for one that is not a number.
long long wholePart(double value);

/// The shortest text that reads back as the same value, always with a decimal point: "0.0", "2.5", "1.0E+20".
std::string realText(double value);
std::string handleText(std::uint64_t value);

}  // namespace korvex::groups
