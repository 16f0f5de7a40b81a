// The strings of the trial dialog in English and German.
#include "hxmodule.h"

#include <cwchar>
#include <iterator>

namespace {

constexpr HxResourceString kEnglish[] = {
    {100, L"Trial Layers"}, {101, L"This dialog tries everything out."},
    {102, L"&Name:"},       {103, L"a name"},
    {104, L"Walls"},        {105, L"Windows"},
    {106, L"&Frozen"},      {107, L"Name"},
    {108, L"On"},           {109, L"Colour"},
    {110, L"Table"},        {111, L"Tree"},
    {112, L"&More..."},     {113, L"OK"},
    {114, L"Cancel"},       {115, L"Help"},
    {120, L"&Rename"},      {121, L"&Delete"},
    {122, L"&New"},         {123, L"&Group filter"},
};
constexpr HxResourceString kGerman[] = {
    {100, L"Probelayer"}, {106, L"Ge&froren"}, {107, L"Name"},       {108, L"Ein"},
    {109, L"Farbe"},      {113, L"OK"},        {114, L"A&bbrechen"}, {120, L"&Umbenennen"},
};
constexpr HxResourceTable kEnglishTable = {kEnglish, std::size(kEnglish)};
constexpr HxResourceTable kGermanTable = {kGerman, std::size(kGerman)};

}  // namespace

HX_EXPORT const HxResourceTable* hxresGetTable(const wchar_t* language) {
    return std::wcscmp(language, L"de") == 0 ? &kGermanTable : *language == 0 ? &kEnglishTable : nullptr;
}
