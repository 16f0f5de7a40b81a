// What the window remembers in the profile.
#pragma once

#include <QByteArray>
#include <QString>

namespace korvex {

/// Settings of the section "Workbench"; empty when they were never kept or cannot be read.
QString uiSetting(const char* name);
void keepUiSetting(const char* name, const QString& value);
QByteArray uiBytes(const char* name);
void keepUiBytes(const char* name, const QByteArray& value);

}  // namespace korvex
