// The dialogue of LAYFRZ: picks, the keywords Settings, Undo and eXit, and the two settings.
#include "layfrz.h"

#include "frame/util/resource_text.h"
#include "frame/util/result_buffers.h"
#include "frame/util/text_utilities.h"
#include "freeze_layer.h"
#include "freeze_options.h"
#include "keyword_question.h"
#include "picked_layer.h"

#include "hxdoc.h"
#include "hxed.h"

#include <memory>

namespace {

constexpr std::size_t kWordSize = 512;

enum class Then { nextPick, endCommand };

using Containers = ListPtr;

void say(KvString message, const wchar_t* fallback) {
    hxutPrintf(L"%ls", ResourceString(message, fallback).c_str());
}

Then askNesting(FreezeOptions& options) {
    const KvString prompt = options.nesting() == FreezeOptions::kInnermost ? kStrNestingPromptBlock
                            : options.nesting() == FreezeOptions::kObject  ? kStrNestingPromptEntity
                                                                           : kStrNestingPromptNo;
    constexpr FreezeOptions::Nesting kNestings[] = {FreezeOptions::kObject, FreezeOptions::kInnermost,
                                                    FreezeOptions::kOutermost};
    std::size_t chosen = 0;
    const int result =
        askForKeyword(ResourceString(prompt), kStrNestingKeywords, {L"Entity", L"Block", L"No"}, chosen);
    if (result == RTCAN) {
        hxedRetVoid();
        return Then::endCommand;
    }
    if (result == RTNORM) options.setNesting(kNestings[chosen]);
    return Then::nextPick;
}

Then askViewport(FreezeOptions& options) {
    const bool isVpfreeze = options.viewport() == FreezeOptions::kCurrentViewport;
    CStdStr<wchar_t> prompt;
    prompt.Format(
        ResourceString(kStrViewportPrompt, L"\nIn paper space viewport use [Freeze/Vpfreeze] <%ls>:").c_str(),
        ResourceString(isVpfreeze ? kStrWordVpfreeze : kStrWordFreeze).c_str());
    constexpr FreezeOptions::Viewport kViewports[] = {FreezeOptions::kEverywhere,
                                                      FreezeOptions::kCurrentViewport};
    std::size_t chosen = 0;
    const int result = askForKeyword(prompt, kStrViewportKeywords, {L"Freeze", L"Vpfreeze"}, chosen);
    if (result == RTCAN) return Then::endCommand;
    if (result == RTNORM) options.setViewport(kViewports[chosen]);
    return Then::nextPick;
}

Then askSettings(FreezeOptions& options) {
    std::size_t chosen = 0;
    const int result = askForKeyword(ResourceString(kStrSettingsPrompt), kStrSettingsKeywords,
                                     {L"Viewports", L"Block"}, chosen);
    if (result == RTCAN) return Then::endCommand;
    if (result != RTNORM) return Then::nextPick;
    return chosen == 0 ? askViewport(options) : askNesting(options);
}

void undoLastPick(VrexUndoController* undo) {
    if (undo && undo->subCommandKnoteCount() > 0) {
        undo->undoInCommand(-1, true);
    } else {
        say(kStrNothingToUndo, L"\nEverything has been undone.");
    }
}

Then obeyKeyword(FreezeOptions& options, VrexUndoController* undo) {
    wchar_t word[kWordSize] = {};
    hxedGetInput(word, kWordSize);
    if (strings_i_compare(word, L"eXit") == 0) {
        hxedRetVoid();
        return Then::endCommand;
    }
    if (strings_i_compare(word, L"Settings") == 0) return askSettings(options);
    if (strings_i_compare(word, L"Undo") == 0) {
        undoLastPick(undo);
    } else {
        say(kStrExpectsPoint, L"Expects a point or Settings");
    }
    return Then::nextPick;
}

Then freezePicked(const zds_name picked, const resbuf* containers, const FreezeOptions& options,
                  VrexUndoController* undo) {
    if (undo) undo->putSubCommandKnote();
    const CStdStr<wchar_t> layer = layerOfPick(picked, containers, options.nesting());
    const int result = FrzOneLayer(layer.c_str(), static_cast<int>(options.viewport()), picked);
    return result == RTCAN ? Then::endCommand : Then::nextPick;
}

bool hasMissed() {
    resbuf error = {};
    return hxedGetVar(L"ERRNO", &error) == RTNORM && error.resval.rint == OL_ENTSELPICK;
}

Then pickOnce(FreezeOptions& options, VrexUndoController* undo) {
    hxedInitGet(RSG_OTHER, ResourceString(kStrPickKeywords).c_str());
    zds_name picked = {0, 0};
    zds_point point = {};
    zds_matrix transform = {};
    resbuf* chain = nullptr;
    const int result =
        hxedNEntSelP(ResourceString(kStrPickPrompt).c_str(), picked, point, 0, transform, &chain);
    const Containers containers(chain);
    switch (result) {
    case RTKWORD: return obeyKeyword(options, undo);
    case RTNORM: return freezePicked(picked, containers.get(), options, undo);
    case RTCAN: return Then::endCommand;
    default: return hasMissed() ? Then::nextPick : Then::endCommand;
    }
}

}  // namespace

void LayFrz() {
    const ModuleResources resources;
    FreezeOptions options;
    VrexUndoController* const undo = curDocUndoController();
    while (pickOnce(options, undo) == Then::nextPick) {
    }
}
