// Gets and sets system variables by their table.
#include "host/editor/system_variables.h"

#include "host/db/kernel/text_fold.h"
#include "host/editor/editor_notices.h"
#include "host/editor/number_text.h"
#include "host/editor/variable_store.h"
#include "host/editor/variable_table.h"

#include <algorithm>
#include <cmath>

namespace korvex {

namespace {

bool isWhole(short type) { return type == RTSHORT || type == RTLONG; }

/// The value in the variable's type; false when it does not go.
bool convert(const VariableValue& from, short type, VariableValue& to) {
    to = from;
    to.type = type;
    if (from.type == type || (isWhole(from.type) && isWhole(type))) {
        return true;
    }
    if (type == RTREAL && isWhole(from.type)) {
        to.real = static_cast<double>(from.integer);
        return true;
    }
    if (isWhole(type) && from.type == RTREAL && std::fabs(from.real) < 2e9 &&
        std::floor(from.real) == from.real) {
        to.integer = static_cast<long long>(from.real);
        return true;
    }
    if (type == RTSTR && isWhole(from.type)) {
        to.text = std::to_wstring(from.integer);
        return true;
    }
    return false;
}

std::wstring rangeProblem(const SystemVariable& variable, const VariableValue& value) {
    const double low =
        variable.low == 0 && variable.high == 0 && variable.type == RTSHORT ? -32768 : variable.low;
    const double high =
        variable.low == 0 && variable.high == 0 && variable.type == RTSHORT ? 32767 : variable.high;
    const double number = isWhole(value.type) ? static_cast<double>(value.integer) : value.real;
    if (value.type == RTSTR || value.type == RTPOINT || (low == 0 && high == 0) ||
        (number >= low && number <= high)) {
        return {};
    }
    return std::wstring(variable.name) + L" takes values from " + realText(low) + L" to " + realText(high) +
           L".";
}

VariableValue initialValue(const SystemVariable& variable) {
    VariableValue value;
    if (!valueFromText(variable, variable.initial, value)) {
        value.type = variable.type;
    }
    return value;
}

std::wstring store(const SystemVariable& variable, const VariableValue& value) {
    HxDbDatabase* database = hxdbWorkingDatabase();
    if (!database && (variable.keep == Keep::header || variable.keep == Keep::own)) {
        return std::wstring(variable.name) +
               L" belongs to a drawing, and none is open: use NEW or OPEN first.";
    }
    if (variable.set) {
        return variable.set(database, value);
    }
    switch (variable.keep) {
    case Keep::header: return storeInHeader(*database, variable, value);
    case Keep::profile: return storeInProfile(variable, value);
    default: storeInSession(variable, value); return {};
    }
}

}  // namespace

VariableValue VariableValue::ofInteger(long long value, short type) {
    VariableValue result;
    result.type = type;
    result.integer = value;
    return result;
}

VariableValue VariableValue::ofReal(double value) {
    VariableValue result;
    result.type = RTREAL;
    result.real = value;
    return result;
}

VariableValue VariableValue::ofText(std::wstring value) {
    VariableValue result;
    result.type = RTSTR;
    result.text = std::move(value);
    return result;
}

VariableValue VariableValue::ofPoint(const HxGePoint3d& value) {
    VariableValue result;
    result.type = RTPOINT;
    result.point = value;
    return result;
}

std::vector<const SystemVariable*> systemVariables() {
    std::vector<const SystemVariable*> all;
    for (const SystemVariable& variable : variableTable()) {
        all.push_back(&variable);
    }
    std::sort(all.begin(), all.end(), [](const SystemVariable* a, const SystemVariable* b) {
        return std::wcscmp(a->name, b->name) < 0;
    });
    return all;
}

const SystemVariable* findSystemVariable(const wchar_t* name) {
    for (const SystemVariable& variable : variableTable()) {
        if (name && equalNames(variable.name, name)) {
            return &variable;
        }
    }
    return nullptr;
}

VariableValue variableValue(const SystemVariable& variable) {
    const HxDbDatabase* database = hxdbWorkingDatabase();
    if (variable.get) {
        return variable.get(database);
    }
    VariableValue value = initialValue(variable);
    switch (variable.keep) {
    case Keep::header:
        if (database) {
            readFromHeader(*database, variable, value);
        }
        break;
    case Keep::profile: readFromProfile(variable, value); break;
    default: readFromSession(variable, value); break;
    }
    return value;
}

std::wstring setVariable(const SystemVariable& variable, const VariableValue& value) {
    if (variable.readOnly) {
        return std::wstring(variable.name) + L" is read-only.";
    }
    VariableValue converted;
    if (!convert(value, variable.type, converted)) {
        return std::wstring(variable.name) + L" takes values of another type.";
    }
    std::wstring problem = rangeProblem(variable, converted);
    if (!problem.empty()) {
        return problem;
    }
    const OwnVariableChange own(variable.name);
    tellEditorReactors([&](HxEditorReactor& r) { r.sysVarWillChange(variable.name); });
    std::wstring why = store(variable, converted);
    tellEditorReactors([&](HxEditorReactor& r) { r.sysVarChanged(variable.name, why.empty()); });
    return why;
}

bool valueFromText(const SystemVariable& variable, const std::wstring& text, VariableValue& value) {
    VariableValue read;
    read.type = variable.type;
    int integer = 0;
    bool good = true;
    switch (variable.type) {
    case RTSTR: read.text = text; break;
    case RTPOINT: good = readPoint(text, HxGePoint3d(), read.point); break;
    case RTREAL: good = readReal(text, read.real); break;
    default:
        good = readInteger(text, integer);
        read.integer = integer;
        break;
    }
    if (good) {
        value = read;
    }
    return good;
}

std::wstring valueText(const VariableValue& value) {
    switch (value.type) {
    case RTSTR: return L"\"" + value.text + L"\"";
    case RTPOINT: return pointText(value.point);
    case RTREAL: return realText(value.real, 8);
    default: return std::to_wstring(value.integer);
    }
}

int integerVariable(const wchar_t* name) {
    const SystemVariable* variable = findSystemVariable(name);
    return variable ? static_cast<int>(variableValue(*variable).integer) : 0;
}

}  // namespace korvex
