// The string tables of the resource library, one for each language.
#pragma once

#include "hxresource.h"

extern const HxResourceTable kEnglishStrings;
extern const HxResourceTable kGermanStrings;
