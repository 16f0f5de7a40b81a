// CIRCLE: by centre and radius or diameter.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"

namespace korvex {

void circleCommand() {
    const Answer center = askPoint({L"Specify center point:"});
    if (!center.isValue()) {
        return;
    }
    constexpr int kPositive = RSG_NONULL | RSG_NOZERO | RSG_NONEG;
    Answer radius = askDistance({L"Specify radius or [Diameter]:", L"Diameter", kPositive}, center.point);
    if (radius.isKeywordOf(L"Diameter")) {
        radius = askDistance({L"Specify diameter:", nullptr, kPositive}, center.point);
        radius.real /= 2;
    }
    if (radius.isValue()) {
        NewEntity(L"CIRCLE").point(10, center.point).real(40, radius.real).make();
    }
}

}  // namespace korvex
