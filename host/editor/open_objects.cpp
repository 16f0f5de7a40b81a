// Looks through a drawing for objects that are open.
#include "host/editor/open_objects.h"

#include "host/db/kernel/database_imp.h"

#include <algorithm>

namespace korvex {

namespace {

constexpr std::size_t kShown = 5;

std::wstring described(HxDbStub& stub) {
    wchar_t handle[17] = L"";
    HxDbHandle(stub.handle).getIntoAsciiBuffer(handle);
    const std::wstring type = stub.object ? stub.object->dxfName() : L"object";
    return type + L" " + handle + (stub.writer ? L" (for write)" : L" (for read)");
}

}  // namespace

std::wstring newlyOpenObjects(const HxDbDatabase& database, std::vector<HxDbStub*>& known) {
    std::vector<HxDbStub*> open;
    std::wstring text;
    std::size_t news = 0;
    for (HxDbStub& stub : database.imp()->stubs) {
        if (!stub.writer && stub.readers == 0) {
            continue;
        }
        open.push_back(&stub);
        if (std::find(known.begin(), known.end(), &stub) == known.end() && ++news <= kShown) {
            text += (text.empty() ? L"" : L", ") + described(stub);
        }
    }
    known = std::move(open);
    return news > kShown ? text + L" and " + std::to_wstring(news - kShown) + L" more" : text;
}

}  // namespace korvex
