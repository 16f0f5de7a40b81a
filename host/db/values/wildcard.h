// Name patterns of commands and layer filters: "A-*,~*DIM*,L##".
#pragma once

#include <initializer_list>
#include <memory>
#include <string_view>

namespace korvex {

/// True when the name fits one of the pattern's alternatives, which are separated by commas. Case is ignored.
/// # a digit, @ a letter, . any other character than these, * any run of characters, ? any one character,
/// [abc] [a-c] one of these, [~abc] none of these, ~ in front: all but what follows, ` before a character:
/// that character itself. A bracket that does not close stands for itself. The time is at most the product
/// of both lengths.
bool matchesPattern(std::wstring_view name, std::wstring_view pattern);

/// The same for many names.
class Pattern {
public:
    explicit Pattern(std::wstring_view pattern);
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;
    bool matches(std::wstring_view name) const;
    /// Of a thing with several names: one of them fits, or with ~ in front none of them.
    bool matchesAny(std::initializer_list<std::wstring_view> names) const;

private:
    struct Alternative;
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

/// It has a character that means something else than itself in a pattern.
bool isPattern(std::wstring_view text);

}  // namespace korvex
