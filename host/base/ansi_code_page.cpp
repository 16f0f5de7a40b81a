// Which code page desktops of a language call "ANSI".
#include "host/base/language.h"
#include "sdk/hxtext.h"

#include <QtGlobal>

#include <string_view>

namespace korvex {
namespace {

constexpr int kWestern = 1252;

/// A country counts before the language alone.
constexpr struct {
    std::wstring_view language;
    int page;
} kPages[] = {
    {L"zh_TW", 950}, {L"zh_HK", 950}, {L"zh_MO", 950}, {L"zh", 936},  {L"ja", 932},  {L"ko", 949},
    {L"th", 874},    {L"vi", 1258},   {L"bs", 1250},   {L"cs", 1250}, {L"hr", 1250}, {L"hu", 1250},
    {L"pl", 1250},   {L"ro", 1250},   {L"sk", 1250},   {L"sl", 1250}, {L"sq", 1250}, {L"be", 1251},
    {L"bg", 1251},   {L"kk", 1251},   {L"mk", 1251},   {L"ru", 1251}, {L"sr", 1251}, {L"uk", 1251},
    {L"el", 1253},   {L"az", 1254},   {L"tr", 1254},   {L"he", 1255}, {L"iw", 1255}, {L"ar", 1256},
    {L"fa", 1256},   {L"ur", 1256},   {L"et", 1257},   {L"lt", 1257}, {L"lv", 1257},
};

/// "zh_TW" is meant by "zh_TW", "zh" by every "zh_...".
bool isMeant(std::wstring_view language, std::wstring_view entry) {
    return language.substr(0, entry.size()) == entry &&
           (language.size() == entry.size() || language[entry.size()] == L'_');
}

}  // namespace
}  // namespace korvex

int hxutAnsiCodePage() {
    bool isNumber = false;
    const int wanted = qEnvironmentVariableIntValue("KORVEX_ANSI_CODEPAGE", &isNumber);
    if (isNumber && wanted > 0) {
        return wanted;
    }
    const std::wstring language = korvex::environmentLanguage("LC_CTYPE");
    for (const auto& entry : korvex::kPages) {
        if (korvex::isMeant(language, entry.language)) {
            return entry.page;
        }
    }
    return korvex::kWestern;
}
