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
};
