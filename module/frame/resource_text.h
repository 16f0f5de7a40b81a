// Texts from the resource library.
#pragma once

#include "resources/string_numbers.h"

#include "hxresource.h"
#include "hxstring.h"

#include <QString>

/// A string, cut to 1,023 characters, from the current resource library; `fallback` (empty for null) when
/// there is none of that number.
CStdStr<wchar_t> ResourceString(int id, const wchar_t* fallback = nullptr);

/// The same for widgets, without a fallback.
QString resourceText(int id);

/// The local name of a command, from the module's resource library, or from the current one while that is not
/// loaded. Empty when there is none.
CStdStr<wchar_t> LoadLocalCmd(unsigned resourceId);

/// Makes the module's resource library current while it lives.
class ModuleResources {
public:
    ModuleResources();

private:
    HxResourceOverride m_override;
};
