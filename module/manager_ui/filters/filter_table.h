// Filter expressions as a table of conditions.
#pragma once

#include "resources/string_numbers.h"

#include <QString>
#include <QStringList>

#include <vector>

/// A property that filters ask for.
struct KvFilterProperty {
    const char* name;                  ///< in expressions
    KvString header;                   ///< what users read
    std::vector<const char*> values;   ///< in expressions, those that there are; empty: any text
    std::vector<KvString> valueTexts;  ///< what users read for them
};

/// The columns of the table, in its order.
const std::vector<KvFilterProperty>& filterProperties();

/// Rows that are alternatives; a row holds for each property a value or an empty text, and all that it has
/// must be true.
using KvFilterRow = QStringList;
using KvFilterTable = std::vector<KvFilterRow>;

/// An expression that says the same; rows without a value say nothing. Quotes in values are left out.
QString expressionOf(const KvFilterTable& table);

/// False when the expression says more than a table can: NOT, other comparisons than ==, a property twice in
/// one alternative, AND of alternatives, or when it cannot be understood. An empty one is an empty table.
bool tableOf(const QString& expression, KvFilterTable& table);
