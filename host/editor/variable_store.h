// The three places that keep system variables: the drawing's header, the user's settings, the session.
#pragma once

#include "host/editor/system_variables.h"

namespace korvex {

// Reading leaves the value alone when the place has none of the variable's type.

bool readFromHeader(const HxDbDatabase& database, const SystemVariable& variable, VariableValue& value);
bool readFromProfile(const SystemVariable& variable, VariableValue& value);
bool readFromSession(const SystemVariable& variable, VariableValue& value);

/// Empty when it is stored, else a sentence that says why not.
std::wstring storeInHeader(HxDbDatabase& database, const SystemVariable& variable,
                           const VariableValue& value);
std::wstring storeInProfile(const SystemVariable& variable, const VariableValue& value);
void storeInSession(const SystemVariable& variable, const VariableValue& value);

}  // namespace korvex
