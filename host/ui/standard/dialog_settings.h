// What dialogs remember for the user, below the profile's key for user interface settings.
#pragma once

#include <QString>

namespace korvex {

/// The values of one dialog: texts by name below "UserInterfaceSettings\<key>" of the current profile.
class DialogSettings {
public:
    /// An empty key remembers nothing.
    explicit DialogSettings(QString key) : m_key(std::move(key)) {}

    /// Empty when there is none.
    QString text(const char* name) const;
    /// A decimal number; `fallback` when there is none or it is no number.
    int number(const char* name, int fallback) const;
    /// Does nothing when the store cannot be written; the reason is in the log then.
    void setText(const char* name, const QString& value) const;
    void setNumber(const char* name, int value) const { setText(name, QString::number(value)); }

private:
    QString m_key;
};

}  // namespace korvex
