// The command LAYFRZ.
#pragma once

/// Freezes the layers of objects that the user picks.
void LayFrz();
