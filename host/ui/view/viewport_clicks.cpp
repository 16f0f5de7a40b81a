// Finds the viewport and sends what a user would type.
#include "host/ui/view/viewport_clicks.h"

#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/pick/floating_windows.h"
#include "host/editor/system_variables.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

/// The number of the topmost viewport there that is not the present one; 0 when there is none.
int otherViewportAt(const HxDbDatabase& database, Point2 sheet) {
    HxDbStub* paper = database.tilemode() ? nullptr : paperSpace(database);
    if (!paper) {
        return 0;
    }
    const std::vector<FloatingWindow> windows = floatingWindowsAt(database, *paper, sheet);
    if (windows.empty()) {
        return 0;
    }
    const HxDbObjectPointer<HxDbViewport> viewport(HxDbObjectId(windows.back().viewport), HxDb::kForRead);
    const int number = viewport ? viewport->number() : 0;
    return number > 1 && number != database.cvport() ? number : 0;
}

}  // namespace

void workInViewportAt(Document& document, Point2 sheet) {
    const int number = otherViewportAt(*document.database(), sheet);
    if (number == 0 || editor().documents().current() != &document) {
        return;
    }
    const std::wstring why = setVariable(*findSystemVariable(L"CVPORT"), VariableValue::ofInteger(number));
    if (!why.empty()) {
        editor().console().message(why);
    }
}

bool changeSpaceByDoubleClick(Document& document, Point2 sheet) {
    const HxDbDatabase& database = *document.database();
    const FloatingWindow present = currentFloatingWindow(database);
    if (database.tilemode() || (present && showsAt(database, *present.window, sheet))) {
        return false;
    }
    const int number = otherViewportAt(database, sheet);
    if (number == 0 && !present) {
        return false;
    }
    DocumentManager& documents = editor().documents();
    if (number == 0) {
        documents.sendStringToExecute(&document, L"_PSPACE", true, false, true);
        return true;
    }
    if (!present) {
        documents.sendStringToExecute(&document, L"_MSPACE", true, false, true);
    }
    const std::wstring viewport = L"CVPORT " + std::to_wstring(number);
    documents.sendStringToExecute(&document, viewport.c_str(), true, false, false);
    return true;
}

}  // namespace korvex
