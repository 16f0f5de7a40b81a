// What a half-typed answer may become.
#pragma once

#include "host/editor/input_source.h"

#include <QString>

#include <vector>

namespace korvex {

/// A word that the command line offers.
struct Completion {
    QString word;
    bool isVariable = false;  ///< a system variable, and not a command or keyword
};

/// At the command prompt, and after "'" at others: commands, then system variables, that begin with the text;
/// else the prompt's keywords. Case is ignored.
std::vector<Completion> completionsOf(const QString& typed, const InputRequest& request);
/// The longest beginning that all share.
QString commonBeginning(const std::vector<Completion>& completions);

}  // namespace korvex
