// ZOOM: changes the view that the drawing keeps.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/number_text.h"
#include "host/editor/view.h"

namespace korvex {

namespace {

void apply(const View& view) {
    const Hx::ErrorStatus status = setCurrentView(drawing(), view);
    if (status != Hx::eOk) {
        refuse(L"The view can not be changed" + because(status) + L".");
    }
    hxedRedraw(nullptr, 1);
}

View extents(const View& now) {
    View view = now;
    if (!extentsView(drawing(), view)) {
        say(L"The current space is empty: the view stays.");
    }
    return view;
}

void window(const View& now, const HxGePoint3d& first) {
    const Answer second = askPoint({L"Specify opposite corner:", nullptr, RSG_NONULL}, &first);
    if (second.isValue()) {
        apply(viewOfBox(now, first, second.point));
    }
}

void windowByCorners(const View& now) {
    const Answer first = askPoint({L"Specify first corner:", nullptr, RSG_NONULL});
    if (first.isValue()) {
        window(now, first.point);
    }
}

/// "2" against everything, "2X" against what is seen now.
bool readScale(std::wstring text, bool& relative, double& scale) {
    relative = !text.empty() && (text.back() == L'x' || text.back() == L'X');
    if (relative) {
        text.pop_back();
    }
    return readReal(text, scale) && scale > 0;
}

bool zoomByScale(const View& now, const std::wstring& text) {
    bool relative = false;
    double scale = 0;
    if (!readScale(text, relative, scale)) {
        refuse(quoted(text) +
               L" is no scale: give a number above 0 such as 2, or 0.5X for half of what is seen now.");
        return false;
    }
    View view = relative ? now : extents(now);
    view.center = now.center;
    view.height /= scale;
    apply(view);
    return true;
}

void center(const View& now) {
    const Answer middle = askPoint({L"Specify center point:"});
    if (!middle.isValue()) {
        return;
    }
    View view = now;
    view.center = middle.point;
    const Answer height = askWord({L"Enter magnification or height <" + realText(now.height) + L">:"});
    bool relative = false;
    double number = 0;
    if (height.isCancelled()) {
        return;
    }
    if (height.isValue() && !readScale(height.text, relative, number)) {
        refuse(quoted(height.text) + L" is no height: give a number above 0, or 2X to see half as much.");
        return;
    }
    view.height = height.isNone() ? now.height : relative ? now.height / number : number;
    apply(view);
}

}  // namespace

void zoomCommand() {
    const View now = currentView(drawing());
    const Answer answer = askPoint({L"Specify corner of window, enter a scale factor (n or nX), or\n"
                                    L"[All/Center/Extents/Window] <Extents>:",
                                    L"All Center Extents Window", RSG_OTHER});
    if (answer.isValue()) {
        window(now, answer.point);
    } else if (answer.isNone() || answer.isKeywordOf(L"All") || answer.isKeywordOf(L"Extents")) {
        apply(extents(now));
    } else if (answer.isKeywordOf(L"Window")) {
        windowByCorners(now);
    } else if (answer.isKeywordOf(L"Center")) {
        center(now);
    } else if (answer.result == RTKWORD) {
        zoomByScale(now, answer.text);
    }
}

}  // namespace korvex
