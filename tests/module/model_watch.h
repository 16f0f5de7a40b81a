// Checks what the models of all views tell, in every test.
#pragma once

#include <QStringList>

namespace korvex::test {

/// From now on each model that a view shows is watched: what it tells of its rows, columns and indexes must
/// fit, else the running test fails. Call it when there is an application; once is enough.
void watchModels();

/// The classes of the models that have been watched since the program began.
QStringList watchedModels();

}  // namespace korvex::test
