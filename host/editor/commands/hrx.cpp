// HRX: loads, unloads and lists modules.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "sdk/hxrx.h"

namespace korvex {

namespace {

HxRxDynamicLinker& linker() { return *HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker")); }

void list() {
    for (int i = 0; i < linker().moduleCount(); ++i) {
        const std::wstring name = linker().moduleName(i);
        say(L"  " + name + (linker().isApplicationLocked(name.c_str()) ? L"  (stays loaded)" : L"") + L"  " +
            linker().modulePath(i));
    }
    say(std::to_wstring(linker().moduleCount()) + L" module(s) loaded.");
}

void load() {
    const Answer path = askName({L"Enter module file to load:"});
    if (!path.isValue()) {
        return;
    }
    CStdStr<wchar_t> error;
    if (linker().loadModule(path.text.c_str(), &error) == Hx::eOk) {
        say(quoted(path.text) + L" loaded.");
    } else {
        refuse(error);
    }
}

void unload() {
    const Answer name = askName({L"Enter name of module to unload:"});
    if (!name.isValue()) {
        return;
    }
    CStdStr<wchar_t> error;
    if (linker().unloadModule(name.text.c_str(), &error) == Hx::eOk) {
        say(quoted(name.text) + L" unloaded.");
    } else {
        refuse(error);
    }
}

}  // namespace

void moduleCommand() {
    const Answer option = askKeyword({L"Enter an option [?/Load/Unload] <?>:", L"? Load Unload"});
    if (option.isKeywordOf(L"Load")) {
        load();
    } else if (option.isKeywordOf(L"Unload")) {
        unload();
    } else if (!option.isCancelled()) {
        list();
    }
}

}  // namespace korvex
