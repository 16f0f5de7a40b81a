// Names with a meaning of their own, in drawings and in users' languages.
#include "host/base/language.h"
#include "sdk/hxtext.h"

#include <string_view>

namespace korvex {
namespace {

/// What plot-style tables call it.
constexpr struct {
    std::wstring_view language;
    const wchar_t* normal;
} kNormal[] = {
    {L"de", L"Normal"}, {L"es", L"Normal"},   {L"fr", L"Normal"},  {L"nl", L"Normal"},  {L"pt", L"Normal"},
    {L"sv", L"Normal"}, {L"cs", L"Normální"}, {L"hu", L"Normál"},  {L"it", L"Normale"}, {L"ja", L"標準"},
    {L"ko", L"일반"},   {L"pl", L"Normalny"}, {L"ru", L"Обычный"}, {L"zh", L"普通"},
};

const wchar_t* localNormal() {
    for (const std::wstring& language : preferredLanguages()) {
        for (const auto& entry : kNormal) {
            if (entry.language == language) {
                return entry.normal;
            }
        }
    }
    return L"Normal";
}

}  // namespace
}  // namespace korvex

CStdStr<wchar_t> hxdbGetReservedString(int kind, bool localised) {
    if (kind != kHxReservedNormal) {
        return {};
    }
    return localised ? korvex::localNormal() : L"Normal";
}
