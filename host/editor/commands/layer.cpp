// -LAYER: makes layers and sets their properties from the command line.
#include "host/db/values/wildcard.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/layer_values.h"
#include "host/editor/layer_names.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

#include <functional>
#include <memory>

namespace korvex {

namespace {

std::wstring current() { return layerName(drawing().clayer()); }

/// Changes one layer that is open for write; the status says what came of it.
using Change = std::function<Hx::ErrorStatus(HxDbLayerTableRecord&)>;

Hx::ErrorStatus changeOne(HxDbObjectId id, const Change& change) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
    return layer ? change(*layer.object()) : layer.openStatus();
}

/// What keeps a layer from being changed, before it is opened.
using May = bool (*)(HxDbObjectId layer);

/// Asks for layers and changes each. With `currentByEnter` Enter means the current layer, else none.
void changeLayers(const std::wstring& what, bool currentByEnter, const Change& change, May may = nullptr) {
    const std::wstring prompt =
        L"Enter name list of layer(s) " + what + (currentByEnter ? L" <" + current() + L">:" : L":");
    const Answer list = askName({prompt});
    if (list.isCancelled() || (list.isNone() && !currentByEnter)) {
        return;
    }
    LayerSelection selection;
    if (list.isNone()) {
        selection.layers.push_back(drawing().clayer());
    } else {
        selection = selectLayers(drawing(), list.text);
    }
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer that fits " + quoted(name) + L".");
    }
    for (const HxDbObjectId& id : selection.layers) {
        const Hx::ErrorStatus status = may && !may(id) ? Hx::eOk : changeOne(id, change);
        if (status != Hx::eOk) {
            refuse(L"Layer " + quoted(layerName(id)) + L" was not changed" + because(status) + L".");
        }
    }
}

// ---- making layers ----

/// Null when there is none of that name.
HxDbObjectId findLayer(const std::wstring& name) {
    const HxDbObjectPointer<HxDbLayerTable> table(drawing().layerTableId(), HxDb::kForRead);
    HxDbObjectId id;
    return table && table->getAt(name.c_str(), id) == Hx::eOk ? id : HxDbObjectId();
}

/// Adds a layer; false with a message when the drawing does not take the name.
bool addLayer(const std::wstring& name) {
    HxDbLayerTable* table = nullptr;
    Hx::ErrorStatus status = drawing().getLayerTable(table, HxDb::kForWrite);
    if (status == Hx::eOk) {
        auto layer = std::make_unique<HxDbLayerTableRecord>();
        status = layer->setName(name.c_str());
        status = status == Hx::eOk ? table->add(layer.get()) : status;
        if (status == Hx::eOk) {
            layer.release()->close();
        }
        table->close();
    }
    if (status == Hx::eDuplicateRecordName) {
        say(L"Layer " + quoted(name) + L" already exists.");
    } else if (status != Hx::eOk) {
        refuse(L"Layer " + quoted(name) + L" can not be made" + because(status) +
               L": a name has 1 to 255 characters, none of them < > / \\ \" : ; ? * | , = `.");
    }
    return status == Hx::eOk;
}

void setCurrentLayerByName(const std::wstring& name) {
    const std::wstring why = setVariable(*findSystemVariable(L"CLAYER"), VariableValue::ofText(name));
    if (!why.empty()) {
        refuse(why);
    }
}

void makeOption() {
    const Answer name =
        askName({L"Enter name for new layer (becomes the current layer) <" + current() + L">:"});
    if (!name.isValue()) {
        return;
    }
    if (!findLayer(name.text).isNull() || addLayer(name.text)) {
        setCurrentLayerByName(name.text);
    }
}

void newOption() {
    const Answer list = askName({L"Enter name list for new layer(s):"});
    for (const std::wstring& name : splitNames(list.isValue() ? list.text : L"")) {
        addLayer(name);
    }
}

void setOption() {
    const Answer name = askName({L"Enter layer name to make current or <select object>:"});
    if (name.isValue()) {
        setCurrentLayerByName(name.text);
        return;
    }
    if (!name.isNone()) {
        return;
    }
    const Answer picked = askEntity({L"Select object:"}, false);
    const HxDbObjectPointer<HxDbEntity> entity(picked.entity, HxDb::kForRead);
    if (entity) {
        setCurrentLayerByName(entity->layer());
    } else if (!picked.isCancelled()) {
        refuse(L"Nothing is there.");
    }
}

void renameOption() {
    const Answer from = askName({L"Enter layer name to be renamed:"});
    if (!from.isValue()) {
        return;
    }
    const HxDbObjectId id = findLayer(from.text);
    if (id.isNull()) {
        refuse(L"There is no layer " + quoted(from.text) + L".");
        return;
    }
    const Answer to = askName({L"Enter new layer name:"});
    if (!to.isValue()) {
        return;
    }
    const Hx::ErrorStatus status =
        changeOne(id, [&](HxDbLayerTableRecord& layer) { return layer.setName(to.text.c_str()); });
    if (status != Hx::eOk) {
        refuse(L"Layer " + quoted(from.text) + L" can not be renamed to " + quoted(to.text) +
               because(status) + L".");
    }
}

// ---- properties ----

void onOption() {
    changeLayers(L"to turn on", false, [](HxDbLayerTableRecord& layer) {
        layer.setIsOff(false);
        return Hx::eOk;
    });
}

bool mayTurnOff(HxDbObjectId id) {
    return id != drawing().clayer() ||
           askYesNo(L"Layer " + quoted(layerName(id)) + L" is current. Turn it off?", false);
}

void offOption() {
    const auto turnOff = [](HxDbLayerTableRecord& layer) {
        layer.setIsOff(true);
        return Hx::eOk;
    };
    changeLayers(L"to turn off", false, turnOff, mayTurnOff);
}

void colorOption() {
    const std::optional<ColorAnswer> answer = askColor(HxCmColor::kIndexWhite);
    if (!answer) {
        return;
    }
    changeLayers(L"for color " + answer->color.colorNameForDisplay(), true, [&](HxDbLayerTableRecord& layer) {
        const Hx::ErrorStatus status = layer.setColor(answer->color);
        layer.setIsOff(answer->turnsOff);
        return status;
    });
}

void linetypeOption() {
    const std::optional<HxDbObjectId> linetype = askLinetype();
    if (linetype) {
        changeLayers(L"for the linetype", true,
                     [&](HxDbLayerTableRecord& layer) { return layer.setLinetypeObjectId(*linetype); });
    }
}

void lineweightOption() {
    const std::optional<HxDb::LineWeight> weight = askLineweight();
    if (weight) {
        changeLayers(L"for lineweight " + lineweightText(*weight), true,
                     [&](HxDbLayerTableRecord& layer) { return layer.setLineWeight(*weight); });
    }
}

void transparencyOption() {
    const std::optional<HxCmTransparency> transparency = askTransparency();
    if (transparency) {
        changeLayers(L"for transparency " + std::to_wstring(transparency->percent()), true,
                     [&](HxDbLayerTableRecord& layer) { return layer.setTransparency(*transparency); });
    }
}

void plotOption() {
    const Answer answer = askKeyword({L"Enter a plotting preference [Plot/No] <Plot>:", L"Plot No"});
    if (answer.isCancelled()) {
        return;
    }
    const bool plots = !answer.isKeywordOf(L"No");
    changeLayers(plots ? L"to plot" : L"not to plot", true,
                 [plots](HxDbLayerTableRecord& layer) { return layer.setIsPlottable(plots); });
}

void plotStyleOption() {
    const std::optional<HxDbObjectId> style = askPlotStyle();
    if (style) {
        changeLayers(L"for the plot style", true,
                     [&](HxDbLayerTableRecord& layer) { return layer.setPlotStyleName(*style); });
    }
}

bool mayFreeze(HxDbObjectId id) {
    if (id == drawing().clayer()) {
        refuse(L"Layer " + quoted(layerName(id)) +
               L" is current and can not be frozen: make another layer current first.");
        return false;
    }
    return true;
}

void freezeOption() {
    const auto freeze = [](HxDbLayerTableRecord& layer) { return layer.setIsFrozen(true); };
    changeLayers(L"to freeze", false, freeze, mayFreeze);
}

void thawOption() {
    changeLayers(L"to thaw", false, [](HxDbLayerTableRecord& layer) { return layer.setIsFrozen(false); });
}

void setLocked(const std::wstring& what, bool locked) {
    changeLayers(what, false, [locked](HxDbLayerTableRecord& layer) {
        layer.setIsLocked(locked);
        return Hx::eOk;
    });
}

void lockOption() { setLocked(L"to lock", true); }
void unlockOption() { setLocked(L"to unlock", false); }

void descriptionOption() {
    const Answer text = askText({L"Enter layer description:"});
    if (text.isCancelled()) {
        return;
    }
    changeLayers(L"for the description", true,
                 [&](HxDbLayerTableRecord& layer) { return layer.setDescription(text.text.c_str()); });
}

// ---- the list ----

std::wstring stateText(const HxDbLayerTableRecord& layer) {
    std::wstring state = layer.isOff() ? L"off" : L"on";
    state += layer.isFrozen() ? L" frozen" : L"";
    state += layer.isLocked() ? L" locked" : L"";
    state += layer.isPlottable() ? L"" : L" no-plot";
    state += layer.isDependent() ? L" xref" : L"";
    return state;
}

std::wstring linetypeText(const HxDbLayerTableRecord& layer) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> linetype(layer.linetypeObjectId(), HxDb::kForRead);
    return linetype ? linetype->name() : L"";
}

void listOption() {
    const Answer which = askName({L"Enter layer name(s) to list <*>:"});
    if (which.isCancelled()) {
        return;
    }
    const LayerSelection selection = selectLayers(drawing(), which.isNone() ? L"*" : which.text);
    say(column(L"Layer", 32) + column(L"State", 20) + column(L"Color", 14) + column(L"Linetype", 16) +
        L"Lineweight");
    for (const HxDbObjectId& id : selection.layers) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
        if (layer) {
            say(column(layer->name(), 32) + column(stateText(*layer.object()), 20) +
                column(layer->color().colorNameForDisplay(), 14) + column(linetypeText(*layer.object()), 16) +
                lineweightText(layer->lineWeight()));
        }
    }
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer that fits " + quoted(name) + L".");
    }
    say(L"Current layer: " + quoted(current()));
}

const std::vector<CommandOption> kOptions = {
    {L"?", listOption},
    {L"Make", makeOption},
    {L"Set", setOption},
    {L"New", newOption},
    {L"Rename", renameOption},
    {L"ON", onOption},
    {L"OFF", offOption},
    {L"Color", colorOption},
    {L"Ltype", linetypeOption},
    {L"LWeight", lineweightOption},
    {L"TRansparency", transparencyOption},
    {L"Plot", plotOption},
    {L"PStyle", plotStyleOption},
    {L"Freeze", freezeOption},
    {L"Thaw", thawOption},
    {L"LOck", lockOption},
    {L"Unlock", unlockOption},
    {L"Description", descriptionOption},
};

}  // namespace

void layerCommand() {
    say(L"Current layer: " + quoted(current()));
    runOptions(kOptions);
}

}  // namespace korvex
