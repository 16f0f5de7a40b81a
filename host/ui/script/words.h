// The words behind the name of an action.
#pragma once

#include <QString>

namespace korvex {

struct Word {
    QString text;
    bool isQuoted = false;

    bool is(const char* word) const;  ///< not quoted, in any case of letters
};

/// Takes words off the front of a line. Words are parted by blanks; those with blanks in them stand in double
/// quotes.
class Words {
public:
    explicit Words(const QString& line) : m_rest(line) {}

    bool isEmpty() const { return m_rest.trimmed().isEmpty(); }
    /// The next word; an empty one when there is none.
    Word next();
    /// What is left, behind one blank, as it is.
    QString rest() const { return m_rest; }
    /// What is left without blanks at both ends, and without quotes when they enclose all of it.
    QString restAsWord() const;

private:
    QString m_rest;
};

}  // namespace korvex
