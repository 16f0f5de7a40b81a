// The English strings: the default table.
#include "string_numbers.h"
#include "string_tables.h"

#include <iterator>

namespace {

constexpr HxResourceString kStrings[] = {
    {kStrInvalidKeyword, L"\nInvalid option keyword."},
    {kStrExpectsPoint, L"\nExpects a point or Settings"},
    {kStrViewportPrompt, L"\nIn paper space viewport use [Freeze/Vpfreeze] <%ls>:"},
    {kStrViewportKeywords, L"Freeze Vpfreeze"},
    {kStrSettingsPrompt, L"\nSetting to change [Viewports/Block] <none>:"},
    {kStrSettingsKeywords, L"Viewports Block"},
    {kStrNestingPromptNo, L"\nLayer to freeze for objects in blocks [Block/Entity/No] <No>:"},
    {kStrLayerIsCurrent, L"\nLayer \"%ls\" is the current layer and was not frozen."},
    {kStrLayerFrozen, L"\nLayer \"%ls\" is frozen."},
    {kStrLayerFrozenInViewport, L"\nLayer \"%ls\" is frozen in the current viewport."},
    {kStrNestingPromptBlock, L"\nLayer to freeze for objects in blocks [Block/Entity/No] <Block>:"},
    {kStrNestingPromptEntity, L"\nLayer to freeze for objects in blocks [Block/Entity/No] <Entity>:"},
    {kStrNestingKeywords, L"Block Entity No"},
    {kStrNewLayerName, L"Layer%d"},
    {kStrWordFreeze, L"Freeze"},
    {kStrWordVpfreeze, L"Vpfreeze"},
    {kStrCommandLayerState, L"LAYERSTATE"},
    {kStrCommandLayerStateSave, L"LAYERSTATESAVE"},
    {kStrCommandLayFrz, L"LAYFRZ"},
    {kStrCommandLayer, L"LAYER"},
    {kStrPickKeywords, L"Settings Undo eXit"},
    {kStrPickPrompt, L"\nPick an object on the layer to freeze or [Settings/Undo/eXit]:"},
    {kStrNothingToUndo, L"\nEverything has been undone."},
    {kStrCommandLayerClose, L"LAYERCLOSE"},
    {kStrCommandClassicLayer, L"CLASSICLAYER"},
    {kStrCommandLayerPalette, L"LAYERPALETTE"},
    {kStrNotAvailable, L"\n%ls is not available in this version.\n"},
    {kStrFreezeCurrentQuestion,
     L"\nLayer \"%ls\" is the current layer. Freeze it in the current viewport? [Yes/No] <No>:"},
    {kStrFreezeCurrentKeywords, L"Yes No"},
    {kStrPaletteTitle, L"Layer Properties Manager"},
    {kStrBlockedCaption, L"Layer Properties Manager"},
    {kStrBlockedMessage,
     L"A command is running in this drawing. End or cancel it before you change layers here."},
};

}  // namespace

const HxResourceTable kEnglishStrings = {kStrings, std::size(kStrings)};
