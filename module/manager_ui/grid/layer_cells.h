// What the cells of one layer's row show.
#pragma once

#include "frame/util/column_settings.h"

#include "hxcm.h"
#include "hxdbsymtb.h"

#include <QString>

#include <array>

class HxDbViewport;

/// One cell. Colour and lineweight cells have their payload beside.
struct KvLayerCell {
    QString text;
    int icon = -1;            ///< KvLayerIcon; -1 none
    int whyGrey = 0;          ///< number of the text that tells why it is greyed; 0: it is not
    bool overridden = false;  ///< highlighted as an override of the active viewport
    HxCmColor color;          ///< of colour cells
    int lineweight = 0;       ///< of lineweight cells
};

using KvLayerCells = std::array<KvLayerCell, kColumnCount>;

/// What all rows of a grid depend on besides their layers; read from the drawing and the host once for many
/// rows.
struct KvLayerCellContext {
    /// Null: an empty context.
    explicit KvLayerCellContext(HxDbDatabase* database);

    HxDbDatabase* database = nullptr;
    HxDbObjectId currentLayer;
    bool isLayout = false;
    bool highlightsOverrides = false;
    bool usesNamedPlotStyles = false;
    HxDbObjectId viewport;        ///< the active viewport of a layout; null in model space
    bool isPaperCurrent = false;  ///< of a layout: no viewport's overrides can be changed
};

/// The cells of a layer whose record is open; viewport cells are made in a layout only.
KvLayerCells makeLayerCells(const HxDbLayerTableRecord& layer, const KvLayerCellContext& context);

/// The icon of the status cell.
int layerStatusIcon(const HxDbLayerTableRecord& layer, const KvLayerCellContext& context);

/// "0" for opaque to "100": the part of the alpha that is missing, in whole per cent.
unsigned long long transparencyPercent(const HxCmTransparency& transparency);
/// An alpha that shows as the percentage again.
std::uint8_t alphaOfPercent(int percent);
