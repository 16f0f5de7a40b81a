// What a restore could not do, for the user.
#pragma once

#include "layer_states/restore/layer_restore.h"

#include <QString>

/// How many layers could not be changed, and the first of their names; empty when all could.
QString restoreSummary(const KvRestoreResult& result);
