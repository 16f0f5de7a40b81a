// Commands during which layers are not edited in the palette and the dialog.
#include "blocking_commands.h"

#include "palette_doc_reactor.h"

#include "frame/module_state.h"
#include "frame/util/resource_text.h"

#include "hxdialog.h"

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

bool isBlockingCommandRunning() {
    const KvLayerPaletteDocReactor* const documents = paletteDocReactor();
    HxApDocument* const document = curDoc();
    return documents && document && documents->blockingCommands(document) > 0;
}

bool isNeedBlockCmdRuning(CWnd* parent) {
    if (!parent || !isBlockingCommandRunning()) return false;
    const ModuleResources resources;
    parent->MessageBox(ResourceString(kStrBlockedMessage).c_str(), ResourceString(kStrBlockedCaption).c_str(),
                       MB_ICONEXCLAMATION | MB_OK);
    return true;
}
