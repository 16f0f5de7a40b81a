// The commands that show and hide the layer manager.
#pragma once

/// LAYER: the palette, or the dialog when the system variable LayerDlgMode is 0.
void LayerCmd2();
/// CLASSICLAYER: the dialog.
void ClassicLayerDlgCmd();
/// Shows the palette; `loadSettings` puts a new one where the last one stood.
void LayerPaletteCmd(bool loadSettings);
/// LAYERPALETTE.
void LayerPaletteCmd();
/// LAYERCLOSE: hides the palette and tells the host so, also when there is none.
void LayerCloseCmd();
