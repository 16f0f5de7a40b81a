// A resource library with an English, a German and a very small Austrian table.
#include "hxmodule.h"

#include <cwchar>

namespace {

#ifdef TRIAL_UNSORTED
constexpr HxResourceString kEnglish[] = {{7, L"seven"}, {3, L"three"}};
#else
constexpr HxResourceString kEnglish[] = {{1, L"layer"}, {2, L"January"}, {3, L"only English"}, {900, L""}};
#endif
constexpr HxResourceString kGerman[] = {{1, L"Layer (gefr\u00FCllt)"}, {2, L"Januar"}, {4, L"nur deutsch"}};
constexpr HxResourceString kAustrian[] = {{2, L"J\u00E4nner"}};

template <std::size_t count>
const HxResourceTable* tableOf(const HxResourceString (&strings)[count]) {
    static const HxResourceTable table = {strings, count};
    return &table;
}

}  // namespace

HX_EXPORT const HxResourceTable* hxresGetTable(const wchar_t* language) {
    if (std::wcscmp(language, L"de") == 0) {
        return tableOf(kGerman);
    }
    if (std::wcscmp(language, L"de_AT") == 0) {
        return tableOf(kAustrian);
    }
#ifdef TRIAL_WITHOUT_DEFAULT
    return nullptr;
#else
    return *language == 0 ? tableOf(kEnglish) : nullptr;
#endif
}
