// LINE: a chain of straight lines.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"

namespace korvex {

namespace {

/// Takes back the last of the lines that this command drew.
void undoLast(std::vector<HxGePoint3d>& points) {
    zds_name last = {0, 0};
    if (points.size() < 2 || hxdbEntLast(last) != RTNORM) {
        say(L"All lines are undone already.");
        return;
    }
    hxdbEntDel(last);
    points.pop_back();
}

}  // namespace

void lineCommand() {
    const Answer first = askPoint({L"Specify first point:"});
    if (!first.isValue()) {
        return;
    }
    std::vector<HxGePoint3d> points{first.point};
    for (;;) {
        const bool closes = points.size() > 2;
        const Answer next =
            askPoint({closes ? L"Specify next point or [Close/Undo]:" : L"Specify next point or [Undo]:",
                      closes ? L"Close Undo" : L"Undo"},
                     &points.back());
        if (next.isKeywordOf(L"Undo")) {
            undoLast(points);
            continue;
        }
        const bool close = next.isKeywordOf(L"Close");
        if (!next.isValue() && !close) {
            return;
        }
        const HxGePoint3d end = close ? points.front() : next.point;
        if (!NewEntity(L"LINE").point(10, points.back()).point(11, end).make() || close) {
            return;
        }
        points.push_back(end);
    }
}

}  // namespace korvex
