// The user's languages as the environment names them.
#pragma once

#include <string>
#include <vector>

namespace korvex {

/// The languages that texts are wanted in, the most wanted first, each before its general form: "pt_BR",
/// "pt". Ends before the first English one, since the default texts are English; empty for no language.
std::vector<std::wstring> preferredLanguages();

/// The language that the environment sets for a category ("LC_MESSAGES", "LC_CTYPE"): "pt_BR"; empty for none
/// and for the plain locale ("C").
std::wstring environmentLanguage(const char* category);

}  // namespace korvex
