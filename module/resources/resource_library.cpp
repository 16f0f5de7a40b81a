// What the resource library gives to the host.
#include "string_tables.h"

#include "hxtypes.h"

#include <string_view>

namespace {

struct Language {
    std::wstring_view name;
    const HxResourceTable& strings;
};
const Language kLanguages[] = {{L"de", kGermanStrings}, {L"en", kEnglishStrings}};

/// "de" for "de", "de_AT", "de-CH".
std::wstring_view primaryLanguage(std::wstring_view name) {
    return name.substr(0, name.find_first_of(L"_-"));
}

}  // namespace

HX_EXPORT const HxResourceTable* hxresGetTable(const wchar_t* language) {
    if (!language || *language == 0) return &kEnglishStrings;
    for (const Language& row : kLanguages) {
        if (row.name == primaryLanguage(language)) return &row.strings;
    }
    return nullptr;
}
