// MODEL, LAYOUT, MSPACE and PSPACE: which space is worked in.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

/// Goes through the variable, so that everyone who follows it hears of the change.
bool set(const wchar_t* variable, const VariableValue& value) {
    const std::wstring why = setVariable(*findSystemVariable(variable), value);
    if (!why.empty()) {
        refuse(why);
        return false;
    }
    hxedRedraw(nullptr, 1);
    return true;
}

bool setNumber(const wchar_t* variable, int value) { return set(variable, VariableValue::ofInteger(value)); }

void listLayouts() {
    HxArray<HxDbObjectId> ids;
    hxdbLayoutManager()->layouts(&drawing(), ids);
    const std::wstring current = hxdbLayoutManager()->getActiveLayoutName();
    for (const HxDbObjectId& id : ids) {
        const HxDbObjectPointer<HxDbLayout> layout(id, HxDb::kForRead);
        if (layout) {
            const std::wstring name = layout->getLayoutName();
            say(L"  " + name + (name == current ? L"  (current)" : L""));
        }
    }
}

}  // namespace

void modelCommand() { setNumber(L"TILEMODE", 1); }

void layoutCommand() {
    const Answer option = askKeyword({L"Enter layout option [Set/New/Delete/?] <Set>:", L"Set New Delete ?"});
    if (option.isCancelled()) {
        return;
    }
    if (option.isKeywordOf(L"?")) {
        listLayouts();
        return;
    }
    if (option.isKeywordOf(L"New") || option.isKeywordOf(L"Delete")) {
        refuse(L"This host changes no layouts: it shows those that the drawing has.");
        return;
    }
    const std::wstring current = hxdbLayoutManager()->getActiveLayoutName();
    const Answer name = askName({L"Enter layout to make current <" + current + L">:"});
    if (name.isValue()) {
        set(L"CTAB", VariableValue::ofText(name.text));
    }
}

void modelSpaceCommand() {
    if (drawing().tilemode()) {
        refuse(L"MSPACE works in a layout only: go to one with LAYOUT first.");
        return;
    }
    if (drawing().cvport() > 1) {
        say(L"You are in model space already.");
        return;
    }
    for (const HxDbObjectId& id : floatingViewports(drawing(), false)) {
        const HxDbObjectPointer<HxDbViewport> viewport(id, HxDb::kForRead);
        const int number = viewport ? viewport->number() : -1;
        if (viewport && viewport->isOn() && number > 1) {
            setNumber(L"CVPORT", number);
            return;
        }
    }
    refuse(L"There is no floating viewport that is on in this layout.");
}

void paperSpaceCommand() {
    if (drawing().tilemode()) {
        refuse(L"PSPACE works in a layout only: go to one with LAYOUT first.");
    } else if (drawing().cvport() == 1) {
        say(L"You are in paper space already.");
    } else {
        setNumber(L"CVPORT", 1);
    }
}

}  // namespace korvex
