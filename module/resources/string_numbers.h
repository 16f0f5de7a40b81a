// The strings of the resource library by number.
#pragma once

#include <cstdint>

/// "keywords" are lists for hxedInitGet, the global ones after "_" where the language has its own; the prompt
/// before such a list shows the same words, in the same order, in brackets. "%ls" takes what is said behind
/// it.
enum KvString : std::uint32_t {
    kStrInvalidKeyword = 1196,    ///< after a word that a question does not know
    kStrExpectsPoint = 1197,      ///< after a word that the prompt for picks does not know
    kStrViewportPrompt = 1198,    ///< where layers are frozen in a viewport; %ls the word in force
    kStrViewportKeywords = 1199,  ///< keywords: Freeze, Vpfreeze
    kStrSettingsPrompt = 1201,    ///< which setting to change
    kStrSettingsKeywords = 1202,  ///< keywords: Viewports, Block
    kStrNestingPromptNo = 1204,   ///< what counts of objects in blocks, when the outermost reference does
    kStrLayerIsCurrent = 1205,    ///< refusal; %ls the layer
    kStrLayerFrozen = 1206,       ///< report; %ls the layer
    kStrLayerFrozenInViewport = 1207,  ///< report; %ls the layer
    kStrNestingPromptBlock = 1208,     ///< as 1204, when the innermost reference counts
    kStrNestingPromptEntity = 1209,    ///< as 1204, when the object itself counts
    kStrNestingKeywords = 1210,        ///< keywords: Block, Entity, No
    kStrNewLayerName = 1855,           ///< names of new layers; %d counts from 1
    kStrWordFreeze = 1890,             ///< for 1198: the whole drawing
    kStrWordVpfreeze = 1891,           ///< for 1198: the current viewport
    kStrLineweightDefault = 1895,      ///< the default lineweight in lists
    kStrCommandLayerState = 6120,      ///< local command names, 6120 to 6123 and 6127 to 6129
    kStrCommandLayerStateSave = 6121,
    kStrCommandLayFrz = 6122,
    kStrCommandLayer = 6123,
    kStrPickKeywords = 6124,  ///< keywords: Settings, Undo, eXit
    kStrPickPrompt = 6125,
    kStrNothingToUndo = 6126,
    kStrCommandLayerClose = 6127,
    kStrCommandClassicLayer = 6128,
    kStrCommandLayerPalette = 6129,
    kStrNotAvailable = 6130,            ///< a command that this version lacks; %ls its global name
    kStrFreezeCurrentQuestion = 10118,  ///< freeze the current layer in the viewport?; %ls the layer
    kStrFreezeCurrentKeywords = 10119,  ///< keywords: Yes, No
    kStrPaletteTitle = 10121,
    kStrBlockedCaption = 10122,  ///< caption of 10123
    kStrBlockedMessage = 10123,  ///< refusal of edits while a command runs that layers must stay for
    kStrHeaderStatus = 10200,    ///< column headers of the layer grid, 10200 to 10218
    kStrHeaderName = 10201,
    kStrHeaderOn = 10202,
    kStrHeaderFreeze = 10203,
    kStrHeaderLock = 10204,
    kStrHeaderColor = 10205,
    kStrHeaderLinetype = 10206,
    kStrHeaderLineweight = 10207,
    kStrHeaderTransparency = 10208,
    kStrHeaderPlotStyle = 10209,
    kStrHeaderPlot = 10210,
    kStrHeaderNewVpFreeze = 10211,
    kStrHeaderDescription = 10212,
    kStrHeaderVpFreeze = 10213,
    kStrHeaderVpColor = 10214,
    kStrHeaderVpLinetype = 10215,
    kStrHeaderVpLineweight = 10216,
    kStrHeaderVpPlotStyle = 10217,
    kStrHeaderVpTransparency = 10218,
    kStrStateOn = 10220,  ///< what icon cells mean, 10220 to 10235
    kStrStateOff = 10221,
    kStrStateFrozen = 10222,
    kStrStateThawed = 10223,
    kStrStateLocked = 10224,
    kStrStateUnlocked = 10225,
    kStrStatePlots = 10226,
    kStrStateNoPlot = 10227,
    kStrStateCurrent = 10228,
    kStrStateUsed = 10229,
    kStrStateUnused = 10230,
    kStrStateUsedOverride = 10231,
    kStrStateUnusedOverride = 10232,
    kStrStateVpFrozen = 10233,
    kStrStateVpThawed = 10234,
    kStrStateCurrentOverride = 10235,
    kStrHeaderMenuFit = 10240,  ///< the grid header's context menu, 10240 to 10242
    kStrHeaderMenuFitAll = 10241,
    kStrHeaderMenuReset = 10242,
    kStrFilterAll = 10250,  ///< what the system filters are called, 10250 to 10254
    kStrFilterAllUsed = 10251,
    kStrFilterAllNonXref = 10252,
    kStrFilterXref = 10253,
    kStrFilterViewportOverrides = 10254,
    kStrFilterTitle = 10255,       ///< over the filter tree
    kStrGridName = 10256,          ///< the grid, for screen readers
    kStrStatistics = 10257,        ///< %1 the filter, %2!d! shown layers, %3!d! all layers
    kStrCurrentLayerLine = 10258,  ///< %1 the current layer
    kStrLineweightTitle = 10300,   ///< the lineweight picker, 10300 and 10301
    kStrLineweightLabel = 10301,
    kStrTransparencyTitle = 10302,  ///< the transparency picker, 10302 to 10304
    kStrTransparencyLabel = 10303,
    kStrTransparencyPreview = 10304,
    kStrPlotStyleTitle = 10305,  ///< the plot style picker, 10305 and 10306
    kStrPlotStyleLabel = 10306,
    kStrOriginalValue = 10307,  ///< what a picker was opened with; %1 the value
    kStrButtonOk = 10320,       ///< buttons of dialogs, 10320 and 10321
    kStrButtonCancel = 10321,
};
