// The German strings.
#include "string_numbers.h"
#include "string_tables.h"

#include <iterator>

namespace {

constexpr HxResourceString kStrings[] = {
    {kStrInvalidKeyword, L"\nUngültige Option."},
    {kStrExpectsPoint, L"\nEin Punkt oder Einstellungen wird erwartet"},
    {kStrViewportPrompt, L"\nIm Ansichtsfenster des Papierbereichs [Frieren/AFfrieren] <%ls>:"},
    {kStrViewportKeywords, L"Frieren AFfrieren _ Freeze Vpfreeze"},
    {kStrSettingsPrompt, L"\nZu ändernde Einstellung [Ansichtsfenster/Block] <keine>:"},
    {kStrSettingsKeywords, L"Ansichtsfenster Block _ Viewports Block"},
    {kStrNestingPromptNo, L"\nZu frierender Layer bei Objekten in Blöcken [Block/Objekt/Nein] <Nein>:"},
    {kStrLayerIsCurrent, L"\nLayer \"%ls\" ist der aktuelle Layer und wurde nicht gefroren."},
    {kStrLayerFrozen, L"\nLayer \"%ls\" ist gefroren."},
    {kStrLayerFrozenInViewport, L"\nLayer \"%ls\" ist im aktuellen Ansichtsfenster gefroren."},
    {kStrNestingPromptBlock, L"\nZu frierender Layer bei Objekten in Blöcken [Block/Objekt/Nein] <Block>:"},
    {kStrNestingPromptEntity, L"\nZu frierender Layer bei Objekten in Blöcken [Block/Objekt/Nein] <Objekt>:"},
    {kStrNestingKeywords, L"Block Objekt Nein _ Block Entity No"},
    {kStrNewLayerName, L"Layer%d"},
    {kStrWordFreeze, L"Frieren"},
    {kStrWordVpfreeze, L"AFfrieren"},
    {kStrCommandLayerState, L"LAYERSTATUS"},
    {kStrCommandLayerStateSave, L"LAYERSTATUSSICHERN"},
    {kStrCommandLayFrz, L"LAYERFRIEREN"},
    {kStrCommandLayer, L"LAYER"},
    {kStrPickKeywords, L"Einstellungen Rückgängig Beenden _ Settings Undo eXit"},
    {kStrPickPrompt, L"\nObjekt auf dem zu frierenden Layer wählen oder [Einstellungen/Rückgängig/Beenden]:"},
    {kStrNothingToUndo, L"\nAlles wurde rückgängig gemacht."},
    {kStrCommandLayerClose, L"LAYERSCHLIESSEN"},
    {kStrCommandClassicLayer, L"LAYERKLASSISCH"},
    {kStrCommandLayerPalette, L"LAYERPALETTE"},
    {kStrNotAvailable, L"\n%ls steht in dieser Version nicht zur Verfügung.\n"},
    {kStrFreezeCurrentQuestion,
     L"\nLayer \"%ls\" ist der aktuelle Layer. Im aktuellen Ansichtsfenster frieren? [Ja/Nein] <Nein>:"},
    {kStrFreezeCurrentKeywords, L"Ja Nein _ Yes No"},
    {kStrPaletteTitle, L"Layereigenschaften-Manager"},
    {kStrBlockedCaption, L"Layereigenschaften-Manager"},
    {kStrBlockedMessage, L"In dieser Zeichnung läuft ein Befehl. Beenden Sie ihn oder brechen Sie ihn ab, "
                         L"bevor Sie hier Layer ändern."},
};

}  // namespace

const HxResourceTable kGermanStrings = {kStrings, std::size(kStrings)};
