// Texts from the resource library.
#pragma once

#include "resources/string_numbers.h"

#include "hxresource.h"
#include "hxstring.h"

#include <QString>

/// A string, cut to 1,023 characters, from the current resource library; `fallback` (empty for null) when
/// there is none of that number. For code that runs with the module's library as the current one: commands,
/// and what they and event handlers call.
CStdStr<wchar_t> ResourceString(int id, const wchar_t* fallback = nullptr);

/// The same from the module's resource library whichever is current, for what anyone may ask at any time: a
/// view for a cell, the host for a header. From the current one while the module's is not loaded.
CStdStr<wchar_t> moduleString(int id, const wchar_t* fallback = nullptr);
QString resourceText(int id);

/// The local name of a command, found as by moduleString. Empty when there is none.
CStdStr<wchar_t> LoadLocalCmd(unsigned resourceId);

/// Makes the module's resource library current while it lives.
class ModuleResources {
public:
    ModuleResources();

private:
    HxResourceOverride m_override;
};
