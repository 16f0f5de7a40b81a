// Commands during which layers are not edited in the palette and the dialog.
#include "blocking_commands.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace {

constexpr std::wstring_view kBlocking[] = {
    L"-INSERT", L"-LAYER", L"-WBLOCK", L"3DORBIT", L"DWFATTACH", L"DXFIN",   L"DXFOUT", L"EXPORT",
    L"IMPORT",  L"INSERT", L"NEW",     L"OPEN",    L"PAN",       L"VPLAYER", L"WBLOCK", L"ZOOM",
};

}  // namespace

bool isNeedBlockCommand(const wchar_t* globalCommandName) {
    return globalCommandName &&
           std::find(std::begin(kBlocking), std::end(kBlocking), globalCommandName) != std::end(kBlocking);
}
