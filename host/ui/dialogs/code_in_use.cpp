// Keeps the list of libraries that wait in dialogs and tells the dynamic linker of them.
#include "host/ui/dialogs/code_in_use.h"

#include "host/base/dynamic_linker.h"
#include "host/base/library.h"
#include "host/editor/command_processor.h"
#include "host/editor/command_stack.h"
#include "host/editor/editor.h"
#include "host/ui/dialogs/widget_classes.h"

#include <cstring>
#include <vector>

namespace korvex {

namespace {

struct Use {
    const link_map* library;
    std::wstring window;
};

std::vector<Use>& uses() {
    static auto& all = *new std::vector<Use>;
    return all;
}

/// A command of the library that waits for a dialog to end; null when there is none.
const Command* runningCommandOf(const link_map* library) {
    const std::wstring names = editor().processor().runningNames();
    for (std::size_t at = 0; at < names.size();) {
        const std::size_t end = std::min(names.find(L'\'', at), names.size());
        const Command* const command = editor().commands().find(names.substr(at, end - at));
        if (command && libraryAt(reinterpret_cast<const void*>(command->function)) == library) {
            return command;
        }
        at = end + 1;
    }
    return nullptr;
}

std::wstring whyInUse(const link_map* library) {
    for (const Use& use : uses()) {
        if (use.library == library) {
            return L"its window \"" + use.window + L"\" is open. Close that first.";
        }
    }
    const Command* const command = runningCommandOf(library);
    return command ? L"its command " + command->global + L" is running. End that first." : L"";
}

}  // namespace

void watchCode() {
    static const bool isWatching = [] {
        addCodeWatch({whyInUse, forgetWidgetClassesOf});
        return true;
    }();
    (void)isWatching;
}

const link_map* libraryOfClass(const void* object) {
    const void* functions = nullptr;
    std::memcpy(&functions, object, sizeof functions);
    return libraryAt(functions);
}

ModalUse::ModalUse(const link_map* library, const QString& window) {
    watchCode();
    uses().push_back({library, toWide(window)});
}

ModalUse::~ModalUse() { uses().pop_back(); }

}  // namespace korvex
