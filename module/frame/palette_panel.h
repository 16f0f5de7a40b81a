// The layer palette as the module's frame sees it.
#pragma once

#include "model/layer_shower.h"
#include "model/palette_marks.h"

class QWidget;

/// A widget in a dock panel of the host's main window. Dock positions are the host's numbers.
class KvPalettePanel : public KvLayerPaletteMarks, public KvLayerShower {
public:
    /// Never null; its geometry is the palette's, in pixels.
    virtual QWidget* widget() = 0;
    virtual bool isFloating() const = 0;
    virtual int dockPosition() const = 0;
    virtual void setDockPosition(int position) = 0;
    /// Takes the panel off the main window, its top-left corner to a place on the screen.
    virtual void floatAt(int left, int top) = 0;
    /// Shows or hides the panel, and the main window lays itself out anew.
    virtual void showPanel(bool visible) = 0;
    /// Shows the layers of a drawing at once; `changed` tells that it is another than before.
    virtual void refreshWndLayers(HxDbDatabase* database, bool changed) = 0;
    /// Takes over the host's colours and fonts.
    virtual void UpdateUIStyle() = 0;
};
