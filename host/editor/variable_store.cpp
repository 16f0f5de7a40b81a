// Moves values of system variables to and from the places that keep them.
#include "host/editor/variable_store.h"

#include "host/db/kernel/header.h"
#include "sdk/hxconfig.h"

#include <map>

namespace korvex {

namespace {

std::map<std::wstring, VariableValue>& session() {
    static std::map<std::wstring, VariableValue> values;
    return values;
}

std::wstring widened(const char* text) { return {text, text + std::char_traits<char>::length(text)}; }

HeaderGroup headerGroup(int code, const VariableValue& value) {
    HeaderGroup group;
    group.code = code;
    group.text = value.text;
    group.real = value.real;
    group.integer = value.integer;
    return group;
}

/// The groups of a value; a point has three.
std::vector<HeaderGroup> headerGroups(int code, const VariableValue& value) {
    if (value.type != RTPOINT) {
        return {headerGroup(code, value)};
    }
    std::vector<HeaderGroup> groups;
    for (const double coordinate : {value.point.x, value.point.y, value.point.z}) {
        groups.push_back(headerGroup(code, VariableValue::ofReal(coordinate)));
        code += 10;
    }
    return groups;
}

}  // namespace

bool readFromHeader(const HxDbDatabase& database, const SystemVariable& variable, VariableValue& value) {
    std::vector<HeaderGroup> groups;
    if (!headerValue(database, variable.place, groups) || groups.empty()) {
        return false;
    }
    value.type = variable.type;
    value.text = groups[0].text;
    value.real = groups[0].real;
    value.integer = groups[0].integer;
    if (value.type == RTPOINT) {
        value.point = {groups[0].real, groups.size() > 1 ? groups[1].real : 0,
                       groups.size() > 2 ? groups[2].real : 0};
    }
    return true;
}

bool readFromProfile(const SystemVariable& variable, VariableValue& value) {
    KorvexConfig* config = vrexConfig();
    VrexVariant stored;
    if (!config || config->getValue(kHxConfigUser, variable.place, stored) != 0) {
        return false;
    }
    const wchar_t* text = nullptr;
    std::int32_t integer = 0;
    if (variable.type == RTSTR && stored.getString(text)) {
        value = VariableValue::ofText(text);
        return true;
    }
    if (variable.type == RTREAL) {
        return stored.getDouble(value.real);
    }
    if (!stored.getInt32(integer)) {
        return false;
    }
    value = VariableValue::ofInteger(integer, variable.type);
    return true;
}

bool readFromSession(const SystemVariable& variable, VariableValue& value) {
    const auto found = session().find(variable.name);
    if (found == session().end()) {
        return false;
    }
    value = found->second;
    return true;
}

std::wstring storeInHeader(HxDbDatabase& database, const SystemVariable& variable,
                           const VariableValue& value) {
    const std::wstring since = widened(variable.since ? variable.since : "");
    if (database.version() < since) {
        return std::wstring(variable.name) + L" can not be set: drawings of version " + database.version() +
               L" do not have it.";
    }
    setHeaderValue(database, variable.place, headerGroups(variable.code, value));
    return {};
}

std::wstring storeInProfile(const SystemVariable& variable, const VariableValue& value) {
    KorvexConfig* config = vrexConfig();
    VrexVariant variant;
    switch (variable.type) {
    case RTSTR: variant.setString(value.text.c_str()); break;
    case RTREAL: variant.setDouble(value.real); break;
    default: variant.setInt32(static_cast<std::int32_t>(value.integer)); break;
    }
    if (!config || config->setValue(kHxConfigUser, variable.place, variant) != 0) {
        return std::wstring(variable.name) + L" could not be stored in your settings: see the host's log.";
    }
    return {};
}

void storeInSession(const SystemVariable& variable, const VariableValue& value) {
    session()[variable.name] = value;
}

void resetSessionVariables() { session().clear(); }

}  // namespace korvex
