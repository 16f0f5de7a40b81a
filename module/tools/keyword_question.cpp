// Questions that are answered by a keyword.
#include "keyword_question.h"

#include "frame/util/resource_text.h"
#include "frame/util/text_utilities.h"

#include "hxed.h"

#include <algorithm>

namespace {

constexpr std::size_t kWordSize = 512;

}  // namespace

int askForKeyword(const CStdStr<wchar_t>& prompt, int keywords, std::initializer_list<const wchar_t*> words,
                  std::size_t& chosen) {
    for (;;) {
        if (hxedInitGet(RSG_OTHER, ResourceString(keywords).c_str()) != RTNORM) return RTERROR;
        wchar_t word[kWordSize] = {};
        const int result = hxedGetKword(prompt.c_str(), word, kWordSize);
        if (result == RTNONE || result == RTCAN) return result;
        if (result != RTNORM) continue;
        const auto* const found = std::find_if(words.begin(), words.end(), [&word](const wchar_t* wanted) {
            return strings_i_compare(wanted, word) == 0;
        });
        if (found != words.end()) {
            chosen = static_cast<std::size_t>(found - words.begin());
            return RTNORM;
        }
        hxutPrintf(L"%ls", ResourceString(kStrInvalidKeyword, L"\nInvalid option keyword.").c_str());
    }
}
