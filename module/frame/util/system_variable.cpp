// Reading system variables.
#include "system_variable.h"

#include "hxed.h"

int shortVariable(const wchar_t* name, int fallback) {
    resbuf value = {};
    return hxedGetVar(name, &value) == RTNORM && value.restype == RTSHORT ? value.resval.rint : fallback;
}

bool textVariable(const wchar_t* name, CStdStr<wchar_t>& value) {
    resbuf result = {};
    if (hxedGetVar(name, &result) != RTNORM || result.restype != RTSTR) return false;
    value = result.resval.rstring;
    hxutFreeString(result.resval.rstring);
    return true;
}

CStdStr<wchar_t> textVariable(const wchar_t* name, const wchar_t* fallback) {
    CStdStr<wchar_t> value(fallback);
    textVariable(name, value);
    return value;
}
