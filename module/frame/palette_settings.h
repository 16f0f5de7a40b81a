// Where the layer palette stood, kept in the configuration service. Both do nothing without a palette.
#pragma once

void LoadPaletteSet();
void SavePaletteSet();
