// Questions that are answered by a keyword.
#pragma once

#include "hxstring.h"

#include <cstddef>
#include <initializer_list>

/// Asks until the answer is one of `words` (global keywords, case ignored), Enter or a cancel; after another
/// word it says so. `keywords` is the number of the keyword list's string. RTNORM with the word's position in
/// `chosen`, RTNONE, RTCAN; RTERROR when the host does not take the keyword list.
int askForKeyword(const CStdStr<wchar_t>& prompt, int keywords, std::initializer_list<const wchar_t*> words,
                  std::size_t& chosen);
