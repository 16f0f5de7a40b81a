// The list of the editor's reactors and what is passed on to them.
#include "host/editor/editor_notices.h"

#include "host/db/kernel/reactor_list.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"

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
    ScreenHooks hooks;
    int redraws = 0;
    int layerTableChanges = 0;
};

Screen& screen() {
    static Screen state;
    return state;
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

void setScreenHooks(ScreenHooks hooks) { screen().hooks = std::move(hooks); }
int redrawCount() { return screen().redraws; }
int layerTableChangeCount() { return screen().layerTableChanges; }

}  // namespace korvex

int hxedRedraw(const zds_name name, int) {
    korvex::Screen& screen = korvex::screen();
    ++screen.redraws;
    HxDbObjectId id;
    if (name && hxdbGetObjectId(id, name) == Hx::eOk) {
        if (screen.hooks.redrawOne) {
            screen.hooks.redrawOne(id);
        }
    } else if (screen.hooks.redrawAll) {
        screen.hooks.redrawAll();
    }
    return RTNORM;
}

void kvSetLayerTableChanges() {
    korvex::Screen& screen = korvex::screen();
    ++screen.layerTableChanges;
    if (screen.hooks.layerTableChanged) {
        screen.hooks.layerTableChanged();
    }
}
