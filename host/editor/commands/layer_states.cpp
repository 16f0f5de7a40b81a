// -LAYERSTATE: saves how all layers are under a name, and puts them back.
#include "host/db/kernel/text_fold.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/layer_state_support.h"
#include "host/editor/editor.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbsymtb.h"

#include <algorithm>

namespace korvex {

namespace {

/// How the option was given. When its line goes on with the state, nothing is asked that has a default: the
/// next line is another command.
enum class Given { inOneLine, alone };

// ---- the list ----

std::wstring comparedText(const std::wstring& name) {
    HxArray<HxLyStateDifference> differences;
    layerStates().compareLayerStateToDb(differences, name.c_str(), layerStateViewport());
    return differences.isEmpty() ? L"same" : L"differs";
}

void listOption() {
    HxArray<CStdStr<wchar_t>> names;
    layerStates().getLayerStateNames(names);
    say(column(L"Layer state", 32) + column(L"Layers", 8) + column(L"Space", 8) + column(L"Drawing", 9) +
        L"Description");
    for (const CStdStr<wchar_t>& name : names) {
        HxLyStateHeader header;
        HxArray<CStdStr<wchar_t>> layers;
        layerStates().getLayerStateHeader(header, name.c_str());
        layerStates().getLayerStateLayers(layers, name.c_str());
        say(column(name, 32) + column(std::to_wstring(layers.length()), 8) +
            column(header.space == HxLyState::kModel ? L"Model" : L"Layout", 8) +
            column(comparedText(name), 9) + header.description);
    }
    say(std::to_wstring(names.length()) + L" layer state(s).");
}

// ---- saving ----

/// The description, as it is for Enter; false when the user gave up.
bool askDescription(Given given, const std::wstring& now, std::wstring& description) {
    description = now;
    if (given == Given::inOneLine) {
        return true;
    }
    const Answer answer =
        askText({now.empty() ? L"Enter description:" : L"Enter description <" + now + L">:"});
    if (answer.isValue()) {
        description = answer.text;
    }
    return !answer.isCancelled();
}

void saveOption(Given given) {
    const Answer name = askName({L"Enter name of layer state to save:"});
    if (!name.isValue()) {
        return;
    }
    HxLyStateHeader header;
    const bool isThere = layerStates().getLayerStateHeader(header, name.text.c_str()) == Hx::eOk;
    if (isThere && !askYesNo(L"Layer state " + quoted(name.text) + L" exists. Replace it?", false)) {
        say(L"No layer state was saved.");
        return;
    }
    std::wstring description;
    if (!askDescription(given, header.description, description)) {
        return;
    }
    const HxDbObjectId viewport = layerStateViewport();
    const std::int32_t mask = header.mask & ~(viewport.isNull() ? HxLyState::kCurrentViewportFrozen : 0);
    const UndoStep step(L"Save layer state " + name.text);
    const Hx::ErrorStatus status =
        layerStates().saveLayerState(name.text.c_str(), mask, viewport, description.c_str());
    if (status != Hx::eOk) {
        refuse(L"Layer state " + quoted(name.text) + L" was not saved" + stateRefusal(status));
        return;
    }
    HxArray<CStdStr<wchar_t>> layers;
    layerStates().getLayerStateLayers(layers, name.text.c_str());
    say(L"Layer state " + quoted(name.text) + L" saved: " + std::to_wstring(layers.length()) + L" layer(s).");
}

// ---- restoring ----

struct MaskLetter {
    wchar_t letter;
    HxLyState::Property property;
};
constexpr MaskLetter kLetters[] = {
    {L'O', HxLyState::kOn},
    {L'F', HxLyState::kFrozen},
    {L'L', HxLyState::kLocked},
    {L'P', HxLyState::kPlot},
    {L'N', HxLyState::kNewViewportFrozen},
    {L'C', HxLyState::kColor},
    {L'T', HxLyState::kLinetype},
    {L'W', HxLyState::kLineweight},
    {L'S', HxLyState::kPlotStyle},
    {L'V', HxLyState::kCurrentViewportFrozen},
    {L'R', HxLyState::kTransparency},
};
constexpr wchar_t kMaskPrompt[] =
    L"Enter properties to restore as letters (O on/off, F freeze, L lock, P plot, N new viewports, C color, "
    L"T linetype, W lineweight, S plot style, V current viewport, R transparency) <";

std::wstring lettersOf(std::int32_t mask) {
    std::wstring letters;
    for (const MaskLetter& one : kLetters) {
        letters += (mask & one.property) != 0 ? std::wstring(1, one.letter) : L"";
    }
    return letters;
}

/// False for a text with another character; blanks and commas do not count.
bool readLetters(const std::wstring& text, std::int32_t& mask) {
    mask = 0;
    for (const wchar_t c : text) {
        const auto known = std::find_if(std::begin(kLetters), std::end(kLetters), [c](const MaskLetter& one) {
            return foldCharacter(one.letter) == foldCharacter(c);
        });
        if (known != std::end(kLetters)) {
            mask |= known->property;
        } else if (c != L' ' && c != L',') {
            return false;
        }
    }
    return true;
}

/// The state's own for Enter; false when the user gave up.
bool askMask(Given given, std::int32_t own, std::int32_t& mask) {
    mask = own;
    while (given == Given::alone) {
        const Answer answer = askName({kMaskPrompt + lettersOf(own) + L">:"});
        if (answer.isCancelled()) {
            return false;
        }
        if (answer.isNone() || readLetters(answer.text, mask)) {
            break;
        }
        refuse(quoted(answer.text) + L" is no list of properties: give letters such as " +
               lettersOf(HxLyState::kOn | HxLyState::kFrozen | HxLyState::kColor) + L".");
    }
    return true;
}

/// The state's current layer becomes current, where it can. True when another one was.
bool makeCurrent(const std::wstring& name) {
    const HxDbObjectPointer<HxDbLayerTable> table(drawing().layerTableId(), HxDb::kForRead);
    HxDbObjectId id;
    return table && table->getAt(name.c_str(), id) == Hx::eOk && id != drawing().clayer() &&
           drawing().setClayer(id) == Hx::eOk;
}

/// Restores; anew when the layer that was current, and so was not frozen, is no longer.
Hx::ErrorStatus restore(const std::wstring& name, std::int32_t mask, const std::wstring& currentLayer,
                        HxArray<CStdStr<wchar_t>>& refused) {
    const HxDbObjectId viewport = layerStateViewport();
    const auto once = [&] {
        refused.removeAll();
        return layerStates().restoreLayerState(name.c_str(), viewport, 0, &mask, &refused);
    };
    const Hx::ErrorStatus status = once();
    return status == Hx::eOk && makeCurrent(currentLayer) ? once() : status;
}

void restoreOption(Given given) {
    const Answer name = askName({L"Enter name of layer state to restore:"});
    if (!name.isValue()) {
        return;
    }
    HxLyStateHeader header;
    if (layerStates().getLayerStateHeader(header, name.text.c_str()) != Hx::eOk) {
        refuse(L"There is no layer state " + quoted(name.text) + L": -LAYERSTATE ? lists them.");
        return;
    }
    std::int32_t mask = 0;
    if (!askMask(given, header.mask, mask)) {
        return;
    }
    HxArray<CStdStr<wchar_t>> refused;
    const UndoStep step(L"Restore layer state " + name.text);
    const Hx::ErrorStatus status = restore(name.text, mask, header.currentLayer, refused);
    for (const CStdStr<wchar_t>& layer : refused) {
        refuse(L"Layer " + quoted(layer) +
               L" did not take all that the state says: it is open elsewhere, or a "
               L"drawing of version " +
               drawing().version() + L" does not have it.");
    }
    if (status != Hx::eOk) {
        refuse(L"What is frozen in the viewport was not changed" + because(status) + L".");
    }
    say(L"Layer state " + quoted(name.text) + L" restored.");
    hxedRedraw(nullptr, 1);
}

// ---- deleting and renaming ----

void deleteOption() {
    const Answer list = askName({L"Enter name(s) of layer state(s) to delete:"});
    if (!list.isValue()) {
        return;
    }
    const StateSelection selection = selectStates(layerStates(), list.text);
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer state that fits " + quoted(name) + L": -LAYERSTATE ? lists them.");
    }
    if (selection.states.empty()) {
        return;
    }
    const UndoStep step(L"Delete " + statesText(selection.states));
    for (const std::wstring& name : selection.states) {
        const Hx::ErrorStatus status = layerStates().deleteLayerState(name.c_str());
        if (status == Hx::eOk) {
            say(L"Layer state " + quoted(name) + L" deleted.");
        } else {
            refuse(L"Layer state " + quoted(name) + L" was not deleted" + stateRefusal(status));
        }
    }
}

void renameOption() {
    const Answer from = askName({L"Enter name of layer state to rename:"});
    if (!from.isValue()) {
        return;
    }
    if (!layerStates().hasLayerState(from.text.c_str())) {
        refuse(L"There is no layer state " + quoted(from.text) + L": -LAYERSTATE ? lists them.");
        return;
    }
    const Answer to = askName({L"Enter new name:"});
    if (!to.isValue()) {
        return;
    }
    const UndoStep step(L"Rename layer state " + from.text);
    const Hx::ErrorStatus status = layerStates().renameLayerState(from.text.c_str(), to.text.c_str());
    if (status == Hx::eOk) {
        say(L"Layer state " + quoted(from.text) + L" renamed to " + quoted(to.text) + L".");
    } else {
        refuse(L"Layer state " + quoted(from.text) + L" was not renamed to " + quoted(to.text) +
               stateRefusal(status));
    }
}

constexpr CommandOption kOptions[] = {
    {L"?", listOption},
    {L"Delete", deleteOption},
    {L"reName", renameOption},
    {L"Import", importStatesOption},
    {L"Compare", compareStatesOption},
};

}  // namespace

void layerStatesCommand() {
    const Answer answer = askKeyword({L"Enter an option [?/Save/Restore/Delete/reName/Import/Compare]:",
                                      L"? Save Restore Delete reName Import Compare"});
    const Given given = answer.endsLine ? Given::alone : Given::inOneLine;
    if (answer.isKeywordOf(L"Save")) {
        saveOption(given);
    } else if (answer.isKeywordOf(L"Restore")) {
        restoreOption(given);
    }
    for (const CommandOption& option : kOptions) {
        if (answer.isKeywordOf(option.keyword)) {
            option.run();
        }
    }
}

}  // namespace korvex
