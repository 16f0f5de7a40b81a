// Names that differ in nothing but case are the same.
#include "host/db/kernel/text_fold.h"

#include <algorithm>

namespace korvex {

bool equalNames(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return x == y || foldCharacter(x) == foldCharacter(y); });
}

}  // namespace korvex
