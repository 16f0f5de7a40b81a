// Pictures of a drawing as it would look if its layers were otherwise. The drawing is not touched: nothing is
// opened for change, nobody is notified, nothing comes into its undo list.
#pragma once

#include "hxcm.h"
#include "hxdbid.h"
#include "hxlystate.h"

#include <vector>

class HxDbDatabase;
class QImage;
class QSize;

/// What a layer is taken to be.
struct HxUiLayerAs {
    HxDbObjectId layer;
    /// Null: the layer's own values, seen wherever no viewport overrides them. Else what a floating viewport
    /// overrides, seen in this one alone.
    HxDbObjectId viewport;
    /// Bits of HxLyState::Property: what of the values below counts; the rest is as in the drawing. Of the
    /// layer's own kOn, kFrozen, kLocked, kColor, kLinetype, kLineweight, kTransparency; in a viewport
    /// kCurrentViewportFrozen and the last four. A value that a layer of the drawing cannot have does not
    /// count.
    std::int32_t properties = 0;
    bool isOff = false;
    bool isFrozen = false;  ///< kFrozen, or kCurrentViewportFrozen
    bool isLocked = false;
    HxCmColor color;
    HxDbObjectId linetype;
    int lineweight = -3;  ///< hundredths of a millimetre, or HxDb::kLnWtByLwDefault
    HxCmTransparency transparency;
};

/// Draws what the drawing's window shows. Make one for each place that shows such pictures, and let it go
/// when that is closed: it keeps what it has read of the drawing from one picture to the next, apart from
/// what the drawing's window keeps. The drawing may be closed meanwhile.
class HXSDK_API HxUiLayerPreview {
public:
    HxUiLayerPreview();
    ~HxUiLayerPreview();
    HxUiLayerPreview(const HxUiLayerPreview&) = delete;
    HxUiLayerPreview& operator=(const HxUiLayerPreview&) = delete;

    /// A picture of an open document's drawing: the current space, model space or the layout with what its
    /// viewports show, in the drawing window's colours. All that the window shows is in it; in a picture of
    /// another shape some more at two of its sides. Lines are as wide in it as the rest is large.
    ///
    /// `layers`: of entries for one layer (and viewport) the last counts; layers that are not named are as
    /// they are. `size` in device-independent pixels, `pixelRatio` device pixels in one of those.
    ///
    /// After `milliseconds` (0 or less: at once) the picture is given up and drawn anew coarsely: at half the
    /// resolution, with solid lines without width and edges in place of fillings; what is large comes first,
    /// and what is left out after the same time again, at least a twentieth of a second, is left out all over
    /// the drawing. So it takes about twice as long at most, once the window has shown the drawing.
    ///
    /// eOk. Otherwise `image` is null: eNoDatabase for a null drawing, eNoDocument for one that is no open
    /// document's, eInvalidInput for a size or ratio that no picture has, eNotApplicable in a program without
    /// windows, eOutOfMemory.
    Hx::ErrorStatus draw(QImage& image, HxDbDatabase* database, const std::vector<HxUiLayerAs>& layers,
                         const QSize& size, double pixelRatio = 1, int milliseconds = 250);
    /// The last picture was drawn coarsely.
    bool isCoarse() const;
    /// False when the last picture leaves something out.
    bool isComplete() const;

private:
    class Imp;
    Imp* m_imp;
};
