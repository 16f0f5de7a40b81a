// The list of the editor's reactors and what is passed on to them.
#include "host/editor/editor_notices.h"

#include "host/db/kernel/reactor_list.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"

#include <map>

HX_DEFINE_MEMBERS(HxEditor, HxRxObject)
HX_DEFINE_MEMBERS(HxEditorReactor, HxRxObject)

struct HxEditorAccess {
    static std::vector<HxEditorReactor*>& reactors(HxEditor& editor) { return editor.m_reactors; }
};

void HxEditor::addReactor(HxEditorReactor* reactor) { korvex::addOnce(m_reactors, reactor); }
void HxEditor::removeReactor(HxEditorReactor* reactor) { korvex::removeFrom(m_reactors, reactor); }

HxEditor* hxedEditor() {
    static HxEditor notifier;
    return &notifier;
}

namespace korvex {

namespace {

struct Screen {
    std::map<int, ScreenHooks> hooks;
    int lastHooks = 0;
    int redraws = 0;
    int layerTableChanges = 0;
};

Screen& screen() {
    static Screen state;
    return state;
}

/// Calls what is hooked in when the telling begins and still is when its turn comes.
template <class Call>
void tellScreens(Call call) {
    const std::map<int, ScreenHooks> now = screen().hooks;
    for (const auto& [number, hooks] : now) {
        if (screen().hooks.count(number) > 0) {
            call(hooks);
        }
    }
}

std::wstring& ownVariable() {
    static std::wstring name;
    return name;
}

}  // namespace

void tellEditorReactors(const std::function<void(HxEditorReactor&)>& call) {
    notifyAll(HxEditorAccess::reactors(*hxedEditor()), call);
}

OwnVariableChange::OwnVariableChange(std::wstring name) : m_before(std::move(name)) {
    ownVariable().swap(m_before);
}

OwnVariableChange::~OwnVariableChange() { ownVariable().swap(m_before); }

void forwardHeaderChange(const HxDbDatabase* database, const wchar_t* name, const bool* success) {
    const Document* current = editor().documents().current();
    const SystemVariable* variable = findSystemVariable(name);
    if (!current || current->database() != database || !variable || equalNames(ownVariable(), name)) {
        return;
    }
    tellEditorReactors([&](HxEditorReactor& reactor) {
        if (success) {
            reactor.sysVarChanged(variable->name, *success);
        } else {
            reactor.sysVarWillChange(variable->name);
        }
    });
}

int addScreenHooks(ScreenHooks hooks) {
    screen().hooks.emplace(++screen().lastHooks, std::move(hooks));
    return screen().lastHooks;
}

void removeScreenHooks(int number) { screen().hooks.erase(number); }

int redrawCount() { return screen().redraws; }
int layerTableChangeCount() { return screen().layerTableChanges; }

}  // namespace korvex

int hxedRedraw(const zds_name name, int mode) {
    ++korvex::screen().redraws;
    HxDbObjectId id;
    const bool isOne = name && hxdbGetObjectId(id, name) == Hx::eOk;
    korvex::tellScreens([&](const korvex::ScreenHooks& hooks) {
        if (isOne && hooks.redrawOne) {
            hooks.redrawOne(id, mode);
        } else if (!isOne && hooks.redrawAll) {
            hooks.redrawAll(mode);
        }
    });
    return RTNORM;
}

void kvSetLayerTableChanges() {
    ++korvex::screen().layerTableChanges;
    korvex::tellScreens([](const korvex::ScreenHooks& hooks) {
        if (hooks.layerTableChanged) {
            hooks.layerTableChanged();
        }
    });
}
