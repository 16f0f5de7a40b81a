// The drawing's header values: "$CLAYER", "$TILEMODE" ... kept as groups, changed under the journal.
#pragma once

#include "host/db/kernel/stub.h"
#include "sdk/hxdbdatabase.h"

namespace korvex {

/// One group of a header value; the code tells which member holds it.
struct HeaderGroup {
    int code = 0;
    std::wstring text;
    double real = 0;
    long long integer = 0;
};

/// The groups of a value; false when the drawing lacks it. Names begin with "$".
bool headerValue(const HxDbDatabase& database, const std::wstring& name, std::vector<HeaderGroup>& groups);

/// Sets or adds a value and tells the database's reactors. Undone like any change.
void setHeaderValue(HxDbDatabase& database, const std::wstring& name, const std::vector<HeaderGroup>& groups);

long long headerInteger(const HxDbDatabase& database, const std::wstring& name, long long fallback);
std::wstring headerText(const HxDbDatabase& database, const std::wstring& name, const std::wstring& fallback);

/// The values in drawing order.
class Header {
public:
    struct Value {
        std::string name;
        Blob groups;  ///< with the 9 group that names it
    };
    std::vector<Value> values;

    Value* find(std::string_view name);
    const Value* find(std::string_view name) const;
    /// Splits the groups of a HEADER section's record (after its 2 group).
    void read(std::string_view groups, const GroupFormat& format);
};

}  // namespace korvex
