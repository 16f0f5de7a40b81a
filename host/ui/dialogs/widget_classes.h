// Widget classes that layouts may name besides Qt's own.
#pragma once

#include <QString>

class QWidget;
struct link_map;

namespace korvex {

/// A new widget of a class that was registered with hxuiRegisterWidget; null when it was not.
QWidget* makeRegisteredWidget(const QString& className, QWidget* parent);

/// Takes back the classes whose factories lie in the library.
void forgetWidgetClassesOf(const link_map* library);

}  // namespace korvex
