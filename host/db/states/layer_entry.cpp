// Layers as entries of layer states, and what tells two entries apart.
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/text_fold.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxlystate.h"

#include <string_view>

namespace korvex {

namespace {

using namespace HxLyState;

std::int32_t flagsOf(const HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    const auto* frame = HxDbViewport::cast(hxdbObjectPointer(viewport));
    std::int32_t flags = 0;
    const auto put = [&](LayerFlag flag, bool on) { flags |= on ? flag : 0; };
    put(kLayerOff, layer.isOff());
    put(kLayerFrozen, layer.isFrozen());
    put(kLayerLocked, layer.isLocked());
    put(kLayerPlots, layer.isPlottable());
    put(kLayerNewViewportFrozen, layer.VPDFLT());
    put(kLayerCurrentViewportFrozen, frame && frame->isLayerFrozenInViewport(layer.objectId()));
    return flags;
}

/// Which property a flag is the value of.
constexpr struct {
    Property property;
    LayerFlag flag;
} kFlagged[] = {
    {kOn, kLayerOff},
    {kFrozen, kLayerFrozen},
    {kLocked, kLayerLocked},
    {kPlot, kLayerPlots},
    {kNewViewportFrozen, kLayerNewViewportFrozen},
    {kCurrentViewportFrozen, kLayerCurrentViewportFrozen},
};

/// What one of them says nothing of does not differ.
bool differs(std::wstring_view a, std::wstring_view b) {
    return !a.empty() && !b.empty() && !equalNames(a, b);
}

bool colorDiffers(const HxLyStateEntry& a, const HxLyStateEntry& b) {
    if (differs(a.colorBook, b.colorBook)) {
        return true;
    }
    const bool isTrue = a.trueColor != -1 || b.trueColor != -1;
    return isTrue ? a.trueColor != b.trueColor : a.colorIndex != b.colorIndex;
}

}  // namespace

}  // namespace korvex

using namespace korvex;

void hxlyEntryOfLayer(HxLyStateEntry& entry, const HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
    bool isOverride = false;
    const HxCmColor color = layer.color(viewport, isOverride);
    const HxCmTransparency transparency = layer.transparency(viewport, isOverride);
    HxDbStub* linetype = layer.linetypeObjectId(viewport, isOverride).stub();
    entry.layer.assign(layer.name());
    entry.flags = flagsOf(layer, viewport);
    entry.colorIndex = color.colorIndex();
    entry.trueColor = color.isByColor() ? static_cast<std::int64_t>(color.color() & 0xFFFFFFU) : -1;
    entry.colorBook = color.getDictionaryKey();
    const auto* const pattern =
        linetype ? static_cast<const HxDbSymbolTableRecord*>(materialise(*linetype)) : nullptr;
    entry.linetype.assign(pattern ? pattern->name() : L"");
    entry.lineweight = layer.lineWeight(viewport, isOverride);
    entry.plotStyle = layer.plotStyleName(viewport, isOverride);
    entry.transparency = transparency.method() == HxCmTransparency::kByAlpha ? transparency.alpha() : 255;
}

std::int32_t hxlyDifferences(const HxLyStateEntry& a, const HxLyStateEntry& b, std::int32_t mask) {
    std::int32_t found = 0;
    const auto put = [&](Property property, bool isDifferent) { found |= isDifferent ? property : 0; };
    for (const auto& flagged : kFlagged) {
        put(flagged.property, ((a.flags ^ b.flags) & flagged.flag) != 0);
    }
    put(kColor, colorDiffers(a, b));
    put(kLinetype, differs(a.linetype, b.linetype));
    put(kLineweight, a.lineweight != b.lineweight);
    put(kPlotStyle, differs(a.plotStyle, b.plotStyle));
    put(kTransparency, a.transparency != b.transparency);
    return found & mask;
}
