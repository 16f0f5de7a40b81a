// What a click on a cell of the layer grid does.
#pragma once

#include "hxdbid.h"

#include <QString>

#include <functional>
#include <vector>

class HxDbLayerTableRecord;
class KvLayerListCtrl;

/// Changes one property of the selected layers, the new value being made from the clicked one: the opposite,
/// or what the user chooses in a picker. Layers are kept by id: while a picker is open, the grid may be
/// filled anew.
class KvCellClick {
public:
    KvCellClick(KvLayerListCtrl& grid, HxDbObjectId clicked, int column);
    /// Nothing for columns that only show something, and when the clicked record cannot be opened.
    void run();

private:
    using Read = std::function<void(const HxDbLayerTableRecord&)>;
    using Change = std::function<void(HxDbLayerTableRecord&)>;

    bool read(const Read& reader) const;
    void change(const Change& change);
    void toggle(bool (HxDbLayerTableRecord::*is)() const,
                const std::function<void(HxDbLayerTableRecord&, bool)>& set);

    void toggleOn();
    void toggleFrozen();
    void toggleFrozenInViewport();
    void pickColor();
    void pickLinetype();
    void pickLineweight();
    void pickTransparency();
    void pickPlotStyle();

    /// The floating viewport that is current, when the column is one of a viewport's.
    bool hasViewport() const { return !m_viewport.isNull(); }
    bool isOfViewport() const;
    /// Viewport overrides of the palette are made by a command, for all layers at once.
    bool overridesByCommand() const;

    KvLayerListCtrl& m_grid;
    HxDbObjectId m_clicked;
    int m_column;
    QString m_name;  ///< of the undo step
    HxDbObjectId m_viewport;
    std::vector<HxDbObjectId> m_layers;
};
