// The system variables: their names and types, where they are kept, what values they take.
#pragma once

#include "sdk/hxads.h"
#include "sdk/hxdbdatabase.h"

#include <string>
#include <vector>

namespace korvex {

/// A value with its type: RTSHORT, RTLONG, RTREAL, RTSTR or RTPOINT.
struct VariableValue {
    short type = RTSHORT;
    long long integer = 0;
    double real = 0;
    std::wstring text;
    HxGePoint3d point;

    static VariableValue ofInteger(long long value, short type = RTSHORT);
    static VariableValue ofReal(double value);
    static VariableValue ofText(std::wstring value);
    static VariableValue ofPoint(const HxGePoint3d& value);
};

/// Where a variable's value lives.
enum class Keep : std::uint8_t {
    session,  ///< until the host ends
    profile,  ///< in the user's settings
    header,   ///< in the drawing's header
    own,      ///< functions get and set it
};

struct SystemVariable {
    const wchar_t* name;
    short type;
    Keep keep;
    bool readOnly;
    double low, high;        ///< numbers; both 0: any
    const wchar_t* initial;  ///< what it is before anyone set it
    const wchar_t* place;    ///< header: "$NAME"; profile: the path of the setting
    int code;                ///< header: the group code
    const char* since;       ///< header: the first drawing version that has it
    VariableValue (*get)(const HxDbDatabase*);
    /// Empty when it was done, else why not.
    std::wstring (*set)(HxDbDatabase*, const VariableValue&);
};

/// Null when there is none of that name; case is ignored.
const SystemVariable* findSystemVariable(const wchar_t* name);
/// All of them by name.
std::vector<const SystemVariable*> systemVariables();

/// The value now, in the current drawing; without a drawing the initial one.
VariableValue variableValue(const SystemVariable& variable);
/// Sets it, telling the editor's reactors before and after. Empty when it was done, else a sentence that says
/// why not.
std::wstring setVariable(const SystemVariable& variable, const VariableValue& value);

/// What a user types and reads.
bool valueFromText(const SystemVariable& variable, const std::wstring& text, VariableValue& value);
std::wstring valueText(const VariableValue& value);

/// The whole number of a variable that has one; 0 for any other.
int integerVariable(const wchar_t* name);

/// Forgets what was set for this session.
void resetSessionVariables();

}  // namespace korvex
