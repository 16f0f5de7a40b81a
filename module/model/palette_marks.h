// The layer palette as notifications see it.
#pragma once

#include "hxdbsymtb.h"
#include "hxdoc.h"

/// What notifications may do to the layer palette: mark what has to be shown anew, which it does when the
/// host is idle and it is visible; and switch it on and off. Marks add up: an id is kept once, and a mark for
/// everything covers the others.
class KvLayerPaletteMarks {
public:
    virtual ~KvLayerPaletteMarks() = default;

    virtual bool isPaletteVisible() const = 0;
    /// While it is off, nothing is shown anew but the whole.
    virtual bool isWndEnabled() const = 0;
    virtual void setWndEnabled(bool enabled) = 0;

    /// Everything, of that drawing (null for none).
    virtual void SetDirtyNeedRefreshAll(HxDbDatabase* database) = 0;
    virtual void SetDirtyNeedRefreshList() = 0;
    virtual void SetDirtyNeedRefreshListItem(HxDbObjectId layer) = 0;
    virtual void SetDirtyNeedRefreshFilter() = 0;
    /// Objects have come, gone or changed their layer: other layers may be in use now.
    virtual void SetDirtyUsage() {}
    /// The drawing of the mark for everything, without setting it.
    virtual void setRefreshDb(HxDbDatabase* database) = 0;
    virtual void clearDirtyFlag() = 0;

    /// The drawing's current layer, space, or one entry's validity has changed.
    virtual void updateCurLayer() = 0;
    virtual void updateTileMode() = 0;
    virtual void setLayerDataValid(const HxDbLayerTableRecord* record, bool valid) = 0;

    /// The drawing that it shows; null for none.
    virtual HxDbDatabase* GetDatabase() const = 0;
    virtual void setDatabase(HxDbDatabase* database) = 0;
    /// Lets go of all entries and filters; of those of a document, and of marks for its layers.
    virtual void clearDlgData() = 0;
    virtual void clearDocData(HxApDocument* document) = 0;

    /// NOMUTT as it was before the palette sent VPLAYER; -1 when none is kept.
    virtual std::int16_t savedNomutt() const = 0;
    virtual void setSavedNomutt(std::int16_t value) = 0;
};
