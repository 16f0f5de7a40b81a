// Fills the cells of a row from its layer.
#include "layer_cells.h"

#include "layer_column.h"
#include "layer_icons.h"
#include "lineweight_text.h"

#include "frame/util/resource_text.h"
#include "manager_ui/editing/viewport_overrides.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"
#include "hxed.h"

#include <algorithm>

namespace {

QString toQt(const CStdStr<wchar_t>& text) {
    return QString::fromWCharArray(text.c_str(), static_cast<int>(text.size()));
}

bool overridesAreHighlighted() {
    resbuf value = {};
    return hxedGetVar(L"LAYEROVERRIDEHIGHLIGHT", &value) == RTNORM && value.restype == RTSHORT &&
           value.resval.rint == 1;
}

QString linetypeName(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> linetype(id, HxDb::kForRead);
    return linetype ? QString::fromWCharArray(linetype->name()) : QString();
}

KvLayerCell iconCell(int icon) {
    KvLayerCell cell;
    cell.icon = icon;
    return cell;
}

KvLayerCell textCell(const QString& text) {
    KvLayerCell cell;
    cell.text = text;
    return cell;
}

KvLayerCell colorCell(const HxCmColor& color) {
    KvLayerCell cell = textCell(toQt(color.colorNameForDisplay()));
    cell.color = color;
    return cell;
}

KvLayerCell lineweightCell(int lineweight) {
    KvLayerCell cell = textCell(toQt(StringByLineWeight(lineweight, false)));
    cell.lineweight = lineweight;
    return cell;
}

KvLayerCell transparencyCell(const HxCmTransparency& transparency) {
    return textCell(QString::number(transparencyPercent(transparency)));
}

KvLayerCell plotStyleCell(const CStdStr<wchar_t>& name, const KvLayerCellContext& context) {
    KvLayerCell cell = textCell(toQt(name));
    if (!context.usesNamedPlotStyles) cell.whyGrey = kStrStylesFollowColors;
    return cell;
}

void fillViewportCells(KvLayerCells& cells, const HxDbLayerTableRecord& layer,
                       const KvLayerCellContext& context) {
    const HxDbObjectPointer<HxDbViewport> viewport(context.viewport, HxDb::kForRead);
    const bool frozen = viewport && viewport->isLayerFrozenInViewport(layer.objectId());
    cells[kColVpFreeze] = iconCell(frozen ? kIconVpFrozen : kIconVpThawed);
    std::array<bool, 5> overridden{};
    cells[kColVpColor] = colorCell(layer.color(context.viewport, overridden[0]));
    cells[kColVpLinetype] = textCell(linetypeName(layer.linetypeObjectId(context.viewport, overridden[1])));
    cells[kColVpLineweight] = lineweightCell(layer.lineWeight(context.viewport, overridden[2]));
    cells[kColVpPlotStyle] = plotStyleCell(layer.plotStyleName(context.viewport, overridden[3]), context);
    cells[kColVpTransparency] = transparencyCell(layer.transparency(context.viewport, overridden[4]));
    for (std::size_t i = 0; i < overridden.size(); ++i) {
        cells[kColVpColor + i].overridden = overridden[i] && context.highlightsOverrides;
    }
    if (context.isPaperCurrent) {
        std::for_each(cells.begin() + kColVpFreeze, cells.end(),
                      [](KvLayerCell& cell) { cell.whyGrey = kStrNeedsViewport; });
    }
}

}  // namespace

KvLayerCellContext::KvLayerCellContext(HxDbDatabase* drawing) : database(drawing) {
    if (!drawing) return;
    currentLayer = drawing->clayer();
    isLayout = !drawing->tilemode();
    highlightsOverrides = isLayout && overridesAreHighlighted();
    usesNamedPlotStyles = !drawing->plotStyleMode();
    if (!isLayout) return;
    viewport = hxdbGetCurVportId(drawing);
    isPaperCurrent = activeViewport(drawing).isNull();
}

int layerStatusIcon(const HxDbLayerTableRecord& layer, const KvLayerCellContext& context) {
    const bool overrides = context.isLayout && layer.hasOverrides(context.viewport);
    if (layer.objectId() == context.currentLayer) return overrides ? kIconVpCurrent : kIconCurrent;
    if (layer.isInUse()) return overrides ? kIconVpUsed : kIconUsed;
    return overrides ? kIconVpUnused : kIconUnused;
}

unsigned long long transparencyPercent(const HxCmTransparency& transparency) {
    return static_cast<unsigned long long>(100.0 - transparency.alpha() * 100.0 / 255.0);
}

/// 255.5 is taken here because 255 is taken there.
std::uint8_t alphaOfPercent(int percent) { return static_cast<std::uint8_t>(255 - percent * 255.5 / 100); }

KvLayerCells makeLayerCells(const HxDbLayerTableRecord& layer, const KvLayerCellContext& context) {
    KvLayerCells cells;
    cells[kColStatus] = iconCell(layerStatusIcon(layer, context));
    cells[kColName] = textCell(QString::fromWCharArray(layer.name()));
    cells[kColOn] = iconCell(layer.isOff() ? kIconOff : kIconOn);
    cells[kColFreeze] = iconCell(layer.isFrozen() ? kIconFrozen : kIconThawed);
    cells[kColLock] = iconCell(layer.isLocked() ? kIconLocked : kIconUnlocked);
    cells[kColColor] = colorCell(layer.color());
    cells[kColLinetype] = textCell(linetypeName(layer.linetypeObjectId()));
    cells[kColLineweight] = lineweightCell(layer.lineWeight());
    cells[kColTransparency] = transparencyCell(layer.transparency());
    cells[kColPlotStyle] = plotStyleCell(layer.plotStyleName(), context);
    cells[kColPlot] = iconCell(layer.isPlottable() ? kIconPlot : kIconNoPlot);
    cells[kColNewVpFreeze] = iconCell(layer.VPDFLT() ? kIconNewVpFrozen : kIconNewVpThawed);
    cells[kColDescription] = textCell(toQt(layer.description()));
    if (context.isLayout) fillViewportCells(cells, layer, context);
    return cells;
}
