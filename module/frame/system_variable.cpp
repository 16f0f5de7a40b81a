// Reading system variables.
#include "system_variable.h"

#include "hxed.h"

int shortVariable(const wchar_t* name, int fallback) {
    resbuf value = {};
    return hxedGetVar(name, &value) == RTNORM && value.restype == RTSHORT ? value.resval.rint : fallback;
}
