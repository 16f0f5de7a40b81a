// Helpers of -LAYERSTATE.
#include "host/editor/commands/layer_state_support.h"

#include "host/db/kernel/text_fold.h"
#include "host/db/values/wildcard.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <unordered_set>

namespace korvex {

namespace {

/// Collects states, each once.
class Collector {
public:
    explicit Collector(StateNames& states) : m_states(states) {}
    void add(const std::wstring& name) {
        if (m_seen.insert(foldName(name)).second) {
            m_states.push_back(name);
        }
    }

private:
    StateNames& m_states;
    std::unordered_set<std::wstring> m_seen;
};

bool addMatching(const HxArray<CStdStr<wchar_t>>& names, const std::wstring& element, Collector& into) {
    const Pattern pattern(element);
    bool found = false;
    for (const CStdStr<wchar_t>& name : names) {
        if (pattern.matches(name)) {
            into.add(name);
            found = true;
        }
    }
    return found;
}

}  // namespace

HxDbLayerStateManager& layerStates() { return *drawing().getLayerStateManager(); }

HxDbObjectId layerStateViewport() {
    return !drawing().tilemode() && drawing().cvport() > 1 ? hxedGetCurViewportObjectId() : HxDbObjectId();
}

StateSelection selectStates(const HxDbLayerStateManager& manager, const std::wstring& list) {
    StateSelection selection;
    Collector collector(selection.states);
    HxArray<CStdStr<wchar_t>> names;
    manager.getLayerStateNames(names);
    for (const std::wstring& element : splitNames(list)) {
        if (manager.hasLayerState(element.c_str())) {
            collector.add(element);
        } else if (!addMatching(names, element, collector)) {
            selection.unmatched.push_back(element);
        }
    }
    return selection;
}

std::wstring statesText(const StateNames& states) {
    return states.size() == 1 ? L"layer state " + states.front()
                              : std::to_wstring(states.size()) + L" layer states";
}

std::wstring stateRefusal(Hx::ErrorStatus status) {
    switch (status) {
    case Hx::eNotApplicable:
        return L": drawings older than R13 cannot hold layer states. Open it in a program that saves newer "
               L"versions, and save them there.";
    case Hx::eInvalidInput:
        return L": a name has at least one character, none of < > / ? ' \" \\ | ; : = * ,.";
    case Hx::eDuplicateKey: return L": the name is taken. Choose another one, or delete what has it.";
    default: return because(status) + L".";
    }
}

std::unique_ptr<HxDbDatabase> readStatesOf(const std::wstring& path) {
    auto database = std::make_unique<HxDbDatabase>(false);
    const Hx::ErrorStatus status = database->readDwgFile(path.c_str());
    if (status == Hx::eOk) {
        return database;
    }
    if (status == Hx::eCancelled) {
        say(quoted(path) + L" was not read.");
    } else {
        refuse(quoted(path) + L" was not read: " + database->readError());
    }
    return nullptr;
}

StateNames askStatesOf(const HxDbLayerStateManager& manager, const std::wstring& prompt,
                       const std::wstring& path) {
    HxArray<CStdStr<wchar_t>> all;
    manager.getLayerStateNames(all);
    const Answer list = askName({prompt});
    if (list.isCancelled()) {
        return {};
    }
    const StateSelection selection = selectStates(manager, list.isNone() ? L"*" : list.text);
    if (all.isEmpty() && selection.states.empty()) {
        refuse(quoted(path) + L" has no layer states.");
        return {};
    }
    for (const std::wstring& name : selection.unmatched) {
        refuse(quoted(path) + L" has no layer state that fits " + quoted(name) + L".");
    }
    return selection.states;
}

}  // namespace korvex
