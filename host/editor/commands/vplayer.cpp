// VPLAYER: what layers look like in single viewports of a layout.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/layer_values.h"
#include "host/editor/editor.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>

namespace korvex {

namespace {

using Ids = std::vector<HxDbObjectId>;

// ---- which layers, which viewports ----

/// The layers of a list that is asked for; nothing when the user gave up. Names that fit no layer are told;
/// the next question comes all the same, since whoever wrote its answer down expects it.
std::optional<Ids> askLayers(const std::wstring& what) {
    const Answer list = askName({L"Enter layer name(s) " + what + L":"});
    if (!list.isValue()) {
        return {};
    }
    LayerSelection selection = selectLayers(drawing(), list.text);
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer that fits " + quoted(name) + L".");
    }
    return selection.layers;
}

Ids currentViewport() {
    if (drawing().cvport() > 1) {
        return {hxedGetCurViewportObjectId()};
    }
    refuse(L"No floating viewport is current: go into one with MSPACE, or use Select or All.");
    return {};
}

Ids pickViewports() {
    Ids ids;
    for (;;) {
        const Answer picked = askEntity({L"Select viewports:"}, false);
        if (picked.isCancelled()) {
            return {};
        }
        if (picked.isNone()) {
            return ids;
        }
        const HxDbObjectPointer<HxDbViewport> viewport(picked.entity, HxDb::kForRead);
        if (!viewport) {
            say(L"0 found: pick the border of a viewport.");
        } else if (std::find(ids.begin(), ids.end(), picked.entity) == ids.end()) {
            ids.push_back(picked.entity);
            say(L"1 found, " + std::to_wstring(ids.size()) + L" in all");
        }
    }
}

Ids allButCurrent() {
    Ids ids = floatingViewports(drawing(), true);
    const Ids current = currentViewport();
    if (current.empty()) {
        return {};
    }
    ids.erase(std::remove(ids.begin(), ids.end(), current.front()), ids.end());
    return ids;
}

/// "All" means the viewports of all layouts.
Ids askViewports() {
    const Answer answer = askKeyword({L"Specify viewport(s) [All/Select/Current/eXcept current] <Current>:",
                                      L"All Select Current eXcept"});
    if (answer.isCancelled()) {
        return {};
    }
    if (answer.isKeywordOf(L"All")) {
        return floatingViewports(drawing(), true);
    }
    if (answer.isKeywordOf(L"Select")) {
        return pickViewports();
    }
    return answer.isKeywordOf(L"eXcept") ? allButCurrent() : currentViewport();
}

// ---- freezing ----

using ViewportChange = std::function<Hx::ErrorStatus(HxDbViewport&)>;

void changeViewports(const Ids& viewports, const ViewportChange& change) {
    for (const HxDbObjectId& id : viewports) {
        const HxDbObjectPointer<HxDbViewport> viewport(id, HxDb::kForWrite);
        const Hx::ErrorStatus status = viewport ? change(*viewport.object()) : viewport.openStatus();
        if (status != Hx::eOk) {
            refuse(L"A viewport was not changed" + because(status) + L".");
        }
    }
    hxedRedraw(nullptr, 1);
}

HxArray<HxDbObjectId> arrayOf(const Ids& ids) {
    HxArray<HxDbObjectId> array;
    for (const HxDbObjectId& id : ids) {
        array.append(id);
    }
    return array;
}

void freezeOption() {
    if (const std::optional<Ids> ids = askLayers(L"to freeze")) {
        const HxArray<HxDbObjectId> layers = arrayOf(*ids);
        changeViewports(askViewports(), [&](HxDbViewport& v) { return v.freezeLayersInViewport(layers); });
    }
}

void thawOption() {
    if (const std::optional<Ids> ids = askLayers(L"to thaw")) {
        const HxArray<HxDbObjectId> layers = arrayOf(*ids);
        changeViewports(askViewports(), [&](HxDbViewport& v) { return v.thawLayersInViewport(layers); });
    }
}

bool isFrozenInNew(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
    return layer && layer->VPDFLT();
}

/// Each layer becomes in the viewports what it is in new ones.
void resetOption() {
    const std::optional<Ids> layers = askLayers(L"to reset");
    if (!layers) {
        return;
    }
    Ids frozen = *layers;
    const auto thawed = std::stable_partition(frozen.begin(), frozen.end(), isFrozenInNew);
    const HxArray<HxDbObjectId> toThaw = arrayOf(Ids(thawed, frozen.end()));
    frozen.erase(thawed, frozen.end());
    const HxArray<HxDbObjectId> toFreeze = arrayOf(frozen);
    changeViewports(askViewports(), [&](HxDbViewport& viewport) {
        const Hx::ErrorStatus status = viewport.thawLayersInViewport(toThaw);
        return status == Hx::eOk ? viewport.freezeLayersInViewport(toFreeze) : status;
    });
}

HxDbObjectId makeFrozenLayer(const std::wstring& name) {
    HxDbLayerTable* table = nullptr;
    HxDbObjectId id;
    Hx::ErrorStatus status = drawing().getLayerTable(table, HxDb::kForWrite);
    if (status == Hx::eOk) {
        auto layer = std::make_unique<HxDbLayerTableRecord>();
        status = layer->setName(name.c_str());
        status = status == Hx::eOk ? table->add(id, layer.get()) : status;
        if (status == Hx::eOk) {
            layer->setVPDFLT(true);
            layer.release()->close();
        }
        table->close();
    }
    if (status != Hx::eOk) {
        refuse(L"Layer " + quoted(name) + L" can not be made" + because(status) + L".");
    }
    return status == Hx::eOk ? id : HxDbObjectId();
}

void newFrozenOption() {
    const Answer list = askName({L"Enter name(s) of new layers frozen in all viewports:"});
    Ids made;
    for (const std::wstring& name : splitNames(list.isValue() ? list.text : L"")) {
        const HxDbObjectId id = makeFrozenLayer(name);
        if (!id.isNull()) {
            made.push_back(id);
        }
    }
    if (!made.empty()) {
        const HxArray<HxDbObjectId> layers = arrayOf(made);
        changeViewports(floatingViewports(drawing(), true),
                        [&](HxDbViewport& v) { return v.freezeLayersInViewport(layers); });
    }
}

void defaultOption() {
    const std::optional<Ids> layers = askLayers(L"to change viewport visibility");
    if (!layers) {
        return;
    }
    const Answer answer =
        askKeyword({L"Enter a viewport visibility option [Frozen/Thawed] <Thawed>:", L"Frozen Thawed"});
    if (answer.isCancelled()) {
        return;
    }
    for (const HxDbObjectId& id : *layers) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
        if (layer) {
            layer->setVPDFLT(answer.isKeywordOf(L"Frozen"));
        } else {
            refuse(L"Layer " + quoted(layerName(id)) + L" was not changed" + because(layer.openStatus()) +
                   L".");
        }
    }
}

// ---- overrides ----

using LayerChange = std::function<Hx::ErrorStatus(HxDbLayerTableRecord&, HxDbObjectId viewport)>;

/// Asks for layers and viewports and changes every layer in every viewport.
void changeOverrides(const std::wstring& what, const LayerChange& change) {
    const std::optional<Ids> layers = askLayers(what);
    if (!layers) {
        return;
    }
    const Ids viewports = askViewports();
    for (const HxDbObjectId& id : *layers) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
        Hx::ErrorStatus status = layer.openStatus();
        for (std::size_t i = 0; i < viewports.size() && status == Hx::eOk; ++i) {
            status = change(*layer.object(), viewports[i]);
        }
        if (status != Hx::eOk) {
            refuse(L"Layer " + quoted(layerName(id)) + L" was not changed" + because(status) + L".");
        }
    }
    hxedRedraw(nullptr, 1);
}

void colorOption() {
    if (const std::optional<ColorAnswer> color = askColor(HxCmColor::kIndexWhite)) {
        changeOverrides(
            L"for color " + color->color.colorNameForDisplay(),
            [&](HxDbLayerTableRecord& layer, HxDbObjectId v) { return layer.setColor(color->color, v); });
    }
}

void linetypeOption() {
    if (const std::optional<HxDbObjectId> linetype = askLinetype()) {
        changeOverrides(L"for the linetype", [&](HxDbLayerTableRecord& layer, HxDbObjectId v) {
            return layer.setLinetypeObjectId(*linetype, v);
        });
    }
}

void lineweightOption() {
    if (const std::optional<HxDb::LineWeight> weight = askLineweight()) {
        changeOverrides(
            L"for lineweight " + lineweightText(*weight),
            [&](HxDbLayerTableRecord& layer, HxDbObjectId v) { return layer.setLineWeight(*weight, v); });
    }
}

void transparencyOption() {
    if (const std::optional<HxCmTransparency> transparency = askTransparency()) {
        changeOverrides(L"for transparency " + std::to_wstring(transparency->percent()),
                        [&](HxDbLayerTableRecord& layer, HxDbObjectId v) {
                            return layer.setTransparency(*transparency, v);
                        });
    }
}

void plotStyleOption() {
    if (const std::optional<HxDbObjectId> style = askPlotStyle()) {
        changeOverrides(L"for the plot style", [&](HxDbLayerTableRecord& layer, HxDbObjectId v) {
            return layer.setPlotStyleName(*style, v);
        });
    }
}

struct Override {
    const wchar_t* keyword;
    Hx::ErrorStatus (HxDbLayerTableRecord::*remove)(HxDbObjectId);
};
constexpr Override kOverrides[] = {
    {L"Color", &HxDbLayerTableRecord::removeColorOverride},
    {L"LType", &HxDbLayerTableRecord::removeLinetypeOverride},
    {L"LWeight", &HxDbLayerTableRecord::removeLineWeightOverride},
    {L"TRansparency", &HxDbLayerTableRecord::removeTransparencyOverride},
    {L"PStyle", &HxDbLayerTableRecord::removePlotStyleOverride},
    {L"All", &HxDbLayerTableRecord::removeViewportOverrides},
};

void removeOption() {
    const Answer which =
        askKeyword({L"Enter the override to remove [Color/LType/LWeight/TRansparency/PStyle/All] <All>:",
                    L"Color LType LWeight TRansparency PStyle All"});
    if (which.isCancelled()) {
        return;
    }
    const std::wstring wanted = which.isNone() ? L"All" : which.text;
    const auto found = std::find_if(std::begin(kOverrides), std::end(kOverrides),
                                    [&](const Override& o) { return wanted == o.keyword; });
    changeOverrides(L"to remove overrides from", [found](HxDbLayerTableRecord& layer, HxDbObjectId viewport) {
        return (layer.*found->remove)(viewport);
    });
}

// ---- the list ----

void listOption() {
    const Answer picked = askEntity({L"Select a viewport:"}, false);
    if (picked.isCancelled()) {
        return;
    }
    const Ids ids = picked.isValue() ? Ids{picked.entity} : currentViewport();
    const HxDbObjectPointer<HxDbViewport> viewport(ids.empty() ? HxDbObjectId() : ids.front(),
                                                   HxDb::kForRead);
    if (!viewport) {
        say(L"No viewport is there.");
        return;
    }
    HxArray<HxDbObjectId> frozen;
    viewport->getFrozenLayers(frozen);
    say(L"Layers frozen in viewport " + std::to_wstring(viewport->number()) + L":");
    for (const HxDbObjectId& id : frozen) {
        say(L"  " + layerName(id));
    }
    if (frozen.isEmpty()) {
        say(L"  none");
    }
}

const std::vector<CommandOption> kOptions = {
    {L"?", listOption},
    {L"Color", colorOption},
    {L"LType", linetypeOption},
    {L"LWeight", lineweightOption},
    {L"PStyle", plotStyleOption},
    {L"TRansparency", transparencyOption},
    {L"Freeze", freezeOption},
    {L"Thaw", thawOption},
    {L"Reset", resetOption},
    {L"Newfrz", newFrozenOption},
    {L"Vpvisdflt", defaultOption},
    {L"reMove", removeOption},
};

}  // namespace

void viewportLayerCommand() {
    if (drawing().tilemode()) {
        refuse(L"VPLAYER works in a layout only: go to one with LAYOUT first.");
        editor().input().dropSent();
        return;
    }
    runOptions(kOptions);
}

}  // namespace korvex
