// PAN: moves the view.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/view.h"

namespace korvex {

void panCommand() {
    const Answer base = askPoint({L"Specify base point or displacement:", nullptr, RSG_NONULL});
    if (!base.isValue()) {
        return;
    }
    const Answer second = askPoint({L"Specify second point:"}, &base.point);
    if (second.isCancelled()) {
        return;
    }
    const HxGeVector3d move = second.isNone() ? base.point - HxGePoint3d() : second.point - base.point;
    View view = currentView(drawing());
    view.center = view.center - move;
    const Hx::ErrorStatus status = setCurrentView(drawing(), view);
    if (status != Hx::eOk) {
        refuse(L"The view can not be changed" + because(status) + L".");
    }
    hxedRedraw(nullptr, 1);
}

}  // namespace korvex
