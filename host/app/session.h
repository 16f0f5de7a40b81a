// One run of the program: modules, drawings, scripts, and the end.
#pragma once

#include "host/app/options.h"

namespace korvex {

/// Loads the modules, opens the files, runs the scripts and takes all down again. The exit status: 1 when a
/// module or file could not be loaded, opened or saved, or a script failed.
int runSession(const Options& options);

/// A line on the standard error, with the program's name.
void printError(const QString& text);

}  // namespace korvex
