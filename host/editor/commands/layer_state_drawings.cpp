// Import and Compare of -LAYERSTATE: states of this drawing and of others.
#include "host/editor/commands/layer_state_support.h"

#include <QFileInfo>

namespace korvex {

namespace {

// ---- import ----

/// Without those that the drawing has and the user wants to keep; none when the user gave up.
StateNames askReplacements(const StateNames& states) {
    StateNames wanted;
    bool all = false;
    for (const std::wstring& name : states) {
        if (!all && layerStates().hasLayerState(name.c_str())) {
            const Answer answer = askKeyword(
                {L"Layer state " + quoted(name) + L" exists. Replace it? [Yes/No/All] <No>:", L"Yes No All"});
            if (answer.isCancelled()) {
                return {};
            }
            all = answer.isKeywordOf(L"All");
            if (!all && !answer.isKeywordOf(L"Yes")) {
                say(L"Layer state " + quoted(name) + L" is kept.");
                continue;
            }
        }
        wanted.push_back(name);
    }
    return wanted;
}

}  // namespace

void importStatesOption() {
    const Answer file = askName({L"Enter name of drawing or template to import from:"});
    if (!file.isValue()) {
        return;
    }
    const std::unique_ptr<HxDbDatabase> source = readStatesOf(file.text);
    if (!source) {
        return;
    }
    const StateNames found = askStatesOf(*source->getLayerStateManager(),
                                         L"Enter name(s) of layer state(s) to import <*>:", file.text);
    const StateNames states = askReplacements(found);
    if (states.empty()) {
        say(L"No layer state was imported.");
        return;
    }
    const UndoStep step(L"Import " + statesText(states));
    std::size_t count = 0;
    for (const std::wstring& name : states) {
        const Hx::ErrorStatus status = layerStates().importLayerStateFromDb(name.c_str(), source.get());
        count += status == Hx::eOk ? 1 : 0;
        if (status != Hx::eOk) {
            refuse(L"Layer state " + quoted(name) + L" was not imported" + stateRefusal(status));
        }
    }
    say(std::to_wstring(count) + L" layer state(s) imported from " + quoted(file.text) + L".");
}

namespace {

// ---- comparison ----

struct PropertyLabel {
    HxLyState::Property property;
    const wchar_t* label;
};
constexpr PropertyLabel kLabels[] = {
    {HxLyState::kOn, L"on/off"},
    {HxLyState::kFrozen, L"freeze"},
    {HxLyState::kLocked, L"lock"},
    {HxLyState::kPlot, L"plot"},
    {HxLyState::kNewViewportFrozen, L"new viewports"},
    {HxLyState::kColor, L"color"},
    {HxLyState::kLinetype, L"linetype"},
    {HxLyState::kLineweight, L"lineweight"},
    {HxLyState::kPlotStyle, L"plot style"},
    {HxLyState::kCurrentViewportFrozen, L"current viewport"},
    {HxLyState::kTransparency, L"transparency"},
};

std::wstring lineOf(const HxLyStateDifference& difference) {
    if (difference.inDrawing.empty()) {
        return L"  " + difference.layer + L": missing";
    }
    std::wstring line = L"  " + difference.layer;
    for (const PropertyLabel& label : kLabels) {
        line += label.property == difference.property ? std::wstring(L": ") + label.label : L"";
    }
    return line + L": " + difference.inDrawing + L", should be " + difference.inState;
}

/// `source` null: the state is the drawing's own.
void compare(const std::wstring& name, HxDbDatabase* source) {
    HxArray<HxLyStateDifference> differences;
    const Hx::ErrorStatus status =
        layerStates().compareLayerStateToDb(differences, name.c_str(), layerStateViewport(), nullptr, source);
    if (status != Hx::eOk) {
        refuse(L"Layer state " + quoted(name) + L" was not compared" + because(status) + L".");
        return;
    }
    if (differences.isEmpty()) {
        say(name + L": the same");
        return;
    }
    for (const HxLyStateDifference& difference : differences) {
        say(lineOf(difference));
    }
    refuse(name + L": " + std::to_wstring(differences.length()) + L" difference(s)");
}

void compareWithDrawing(const std::wstring& path) {
    const std::unique_ptr<HxDbDatabase> source = readStatesOf(path);
    if (!source) {
        return;
    }
    for (const std::wstring& name :
         askStatesOf(*source->getLayerStateManager(), L"Enter name(s) of layer state(s) to compare with <*>:",
                     path)) {
        compare(name, source.get());
    }
}

}  // namespace

void compareStatesOption() {
    const Answer answer =
        askName({L"Enter name(s) of layer state(s) to compare with, or of a drawing that holds them:"});
    if (!answer.isValue()) {
        return;
    }
    const bool isState = layerStates().hasLayerState(answer.text.c_str());
    if (!isState && QFileInfo(QString::fromStdWString(answer.text)).isFile()) {
        compareWithDrawing(answer.text);
        return;
    }
    const StateSelection selection = selectStates(layerStates(), answer.text);
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer state that fits " + quoted(name) +
               L", and no drawing file of that name: -LAYERSTATE ? lists the states.");
    }
    for (const std::wstring& name : selection.states) {
        compare(name, nullptr);
    }
}

}  // namespace korvex
