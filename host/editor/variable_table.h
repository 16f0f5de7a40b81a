// The table of system variables.
#pragma once

#include "host/editor/system_variables.h"

namespace korvex {

const std::vector<SystemVariable>& variableTable();

}  // namespace korvex
