// The dialogue of SETVAR for one variable, which typing the variable's name leads to as well.
#pragma once

#include "host/editor/system_variables.h"

namespace korvex {

void askSystemVariable(const SystemVariable& variable);

}  // namespace korvex
