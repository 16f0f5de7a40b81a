// Places a block reference.
#include "host/editor/commands/place_block.h"

#include "host/editor/commands/command_support.h"
#include "host/editor/number_text.h"

namespace korvex {

namespace {

/// A number with a default; false when the user gave up.
bool askNumber(const std::wstring& what, double fallback, int bits, double& number) {
    const Answer answer = askReal({what + L" <" + realText(fallback) + L">:", nullptr, bits});
    number = answer.isValue() ? answer.real : fallback;
    return !answer.isCancelled();
}

}  // namespace

bool askAndPlaceBlock(const std::wstring& name) {
    const Answer place = askPoint({L"Specify insertion point:", nullptr, RSG_NONULL});
    double x = 1;
    double y = 1;
    double rotation = 0;
    if (!place.isValue() || !askNumber(L"Enter X scale factor", 1, RSG_NOZERO, x) ||
        !askNumber(L"Enter Y scale factor", x, RSG_NOZERO, y) ||
        !askNumber(L"Specify rotation angle", 0, 0, rotation)) {
        return false;
    }
    return NewEntity(L"INSERT")
        .text(2, name)
        .point(10, place.point)
        .real(41, x)
        .real(42, y)
        .real(43, x)
        .real(50, rotation)
        .make();
}

}  // namespace korvex
