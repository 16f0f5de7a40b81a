// COLOR and LINETYPE.
#include "host/ui/standard/standard_commands.h"

#include "host/editor/command_stack.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/editor.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxed.h"
#include "sdk/hxstddlg.h"

namespace korvex {

namespace {

std::wstring textVariable(const wchar_t* name) { return variableValue(*findSystemVariable(name)).text; }

void setTextVariable(const wchar_t* name, const std::wstring& text) {
    resbuf value = {};
    std::wstring copy = text;
    value.restype = RTSTR;
    value.resval.rstring = copy.data();
    if (hxedSetVar(name, &value) != RTNORM) {
        refuse(std::wstring(name) + L" does not take \"" + text + L"\".");
    }
}

HxCmColor currentColor() {
    const std::wstring text = textVariable(L"CECOLOR");
    const std::int16_t standard = HxCmColor::standardColorIndex(text.c_str());
    const int number =
        text.empty() || text.front() < L'0' || text.front() > L'9' ? standard : std::stoi(text);
    return HxCmColor::byIndex(static_cast<std::int16_t>(number));
}

/// Drawings keep the colour of new objects as an index only.
void colorCommand() {
    HxCmColor color = currentColor();
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(hxdbWorkingDatabase()->clayer(), HxDb::kForRead);
    if (!hxedSetColorDialogTrueColor(color, true, layer ? layer->color() : HxCmColor())) {
        return;
    }
    const std::int16_t index = color.colorIndex();
    setTextVariable(L"CECOLOR", color.isByLayer()   ? L"BYLAYER"
                                : color.isByBlock() ? L"BYBLOCK"
                                                    : std::to_wstring(index));
    if (color.isByColor()) {
        say(L"New objects can have an index color only: " + std::to_wstring(index) + L" is the nearest to " +
            std::wstring(color.colorNameForDisplay()) + L".");
    }
}

HxDbObjectId linetypeNamed(const HxDbDatabase& database, const std::wstring& name) {
    const HxDbObjectPointer<HxDbSymbolTable> table(database.linetypeTableId(), HxDb::kForRead);
    HxDbObjectId id;
    if (table) {
        table->getAt(name.c_str(), id);
    }
    return id;
}

void linetypeCommand() {
    HxDbDatabase& database = *hxdbWorkingDatabase();
    HxDbObjectId linetype = linetypeNamed(database, textVariable(L"CELTYPE"));
    if (!hxuiSelectLinetype(&database, linetype, true)) {
        return;
    }
    const HxDbObjectPointer<HxDbLinetypeTableRecord> record(linetype, HxDb::kForRead);
    if (record) {
        setTextVariable(L"CELTYPE", record->name());
    }
}

}  // namespace

void startStandardCommands() {
    CommandStack& stack = editor().commands();
    stack.addCommand(kHostCommandGroup, L"COLOR", nullptr, HXCMD_MODAL, colorCommand, nullptr, -1, nullptr);
    stack.addCommand(kHostCommandGroup, L"LINETYPE", nullptr, HXCMD_MODAL, linetypeCommand, nullptr, -1,
                     nullptr);
}

}  // namespace korvex
