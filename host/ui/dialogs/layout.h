// Layouts: Qt Designer files of the current resource library, with texts by number.
#pragma once

#include "sdk/hxresource.h"

#include <QString>

class QObject;
class QWidget;

namespace korvex {

/// Reads the layout of that name. Its top widget is `target` when that is given: it gets the properties, the
/// controls and their layout; else a new widget without a parent. Null, with a line in the log, when the
/// layout is missing or damaged; `target` has no new controls then.
QWidget* loadLayout(const char* name, QWidget* target);

/// Puts the library's strings (null: the current one) in the place of all texts "@<number>" of an object and
/// of those below it. A number that is missing stays, with a line in the log.
void fillInTexts(QObject& top, HxModuleHandle library);

}  // namespace korvex
