// The output functions and system variables of the SDK.
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"
#include "sdk/hxads.h"

#include <algorithm>
#include <cstdarg>
#include <cwchar>

namespace {

constexpr std::size_t kLongest = 2048;
constexpr std::size_t kRoom = 1U << 22U;

using korvex::VariableValue;

void fill(resbuf& node, const VariableValue& value) {
    node.restype = value.type;
    switch (value.type) {
    case RTSTR: node.resval.rstring = hxutNewString(value.text.c_str()); break;
    case RTREAL: node.resval.rreal = value.real; break;
    case RTLONG: node.resval.rlong = static_cast<std::int32_t>(value.integer); break;
    case RTPOINT:
        node.resval.rpoint[0] = value.point.x;
        node.resval.rpoint[1] = value.point.y;
        node.resval.rpoint[2] = value.point.z;
        break;
    default: node.resval.rint = static_cast<short>(value.integer); break;
    }
}

/// False for a node that holds no variable's value.
bool read(const resbuf& node, VariableValue& value) {
    switch (node.restype) {
    case RTSTR: value = VariableValue::ofText(node.resval.rstring ? node.resval.rstring : L""); return true;
    case RTREAL: value = VariableValue::ofReal(node.resval.rreal); return true;
    case RTLONG: value = VariableValue::ofInteger(node.resval.rlong, RTLONG); return true;
    case RTSHORT: value = VariableValue::ofInteger(node.resval.rint); return true;
    case RTPOINT:
        value = VariableValue::ofPoint({node.resval.rpoint[0], node.resval.rpoint[1], node.resval.rpoint[2]});
        return true;
    default: return false;
    }
}

}  // namespace

/// A text that is too long is cut, one that cannot be formatted is left out.
int hxutPrintf(const wchar_t* format, ...) {
    if (!format) {
        return RTERROR;
    }
    va_list arguments;
    va_start(arguments, format);
    std::wstring text;
    int length = -1;
    for (std::size_t room = kLongest + 1; length < 0 && room <= kRoom; room *= 4) {
        text.assign(room, L'\0');
        va_list again;
        va_copy(again, arguments);
        length = std::vswprintf(&text[0], room, format, again);
        va_end(again);
    }
    va_end(arguments);
    text.resize(length < 0 ? 0 : std::min(static_cast<std::size_t>(length), kLongest));
    korvex::editor().console().print(text);
    return length < 0 ? RTERROR : RTNORM;
}

bool hxedIsQuiet() { return korvex::integerVariable(L"NOMUTT") == 1; }

int hxedRetVoid() { return RTNORM; }

int hxedGetVar(const wchar_t* name, resbuf* result) {
    const korvex::SystemVariable* variable = korvex::findSystemVariable(name);
    if (!variable || !result) {
        return RTERROR;
    }
    fill(*result, korvex::variableValue(*variable));
    return RTNORM;
}

int hxedSetVar(const wchar_t* name, const resbuf* value) {
    const korvex::SystemVariable* variable = korvex::findSystemVariable(name);
    if (!variable || !value) {
        return RTERROR;
    }
    VariableValue wanted;
    return read(*value, wanted) && korvex::setVariable(*variable, wanted).empty() ? RTNORM : RTREJ;
}
