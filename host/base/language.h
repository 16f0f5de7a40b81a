// The user's languages as the environment names them.
#pragma once

#include <string>
#include <vector>

namespace korvex {

/// The languages that texts are wanted in, the most wanted first, each before its general form: "pt_BR",
/// "pt". Ends before the first English one, since the default texts are English; empty for no language.
std::vector<std::wstring> preferredLanguages();

}  // namespace korvex
