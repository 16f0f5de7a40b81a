// Telling the editor's reactors: commands, system variables, external references, the layer table, redraws.
#pragma once

#include "sdk/hxdbdatabase.h"
#include "sdk/hxed.h"

#include <functional>
#include <string>

namespace korvex {

/// Calls every reactor of the editor.
void tellEditorReactors(const std::function<void(HxEditorReactor&)>& call);

/// While it lives, changes of one header variable are not passed on: whoever makes it tells of the variable
/// itself, also when its value stays the same.
class OwnVariableChange {
public:
    explicit OwnVariableChange(std::wstring name);
    ~OwnVariableChange();
    OwnVariableChange(const OwnVariableChange&) = delete;
    OwnVariableChange& operator=(const OwnVariableChange&) = delete;

private:
    std::wstring m_before;
};

/// A header value of a document's drawing will change (`success` null) or did: known system variables of the
/// current document are passed on.
void forwardHeaderChange(const HxDbDatabase* database, const wchar_t* name, const bool* success);

/// What the screen is told, for views that follow it. Handlers may be null; the modes are those of
/// hxedRedraw.
struct ScreenHooks {
    std::function<void(int mode)> redrawAll;
    std::function<void(HxDbObjectId, int mode)> redrawOne;
    std::function<void()> layerTableChanged;
};
/// Gives a number by which the hooks are removed again; they may be removed from inside of one.
int addScreenHooks(ScreenHooks hooks);
void removeScreenHooks(int number);
/// Times that something was redrawn, and times that the layer table was reported as changed.
int redrawCount();
int layerTableChangeCount();

}  // namespace korvex
