// What layers look like in the active viewport: the commands that set it, and freezing in it.
#pragma once

#include "hxcm.h"
#include "hxdbdatabase.h"
#include "hxdbsymtb.h"

#include <string>
#include <vector>

class KvLayerListCtrl;
class KvLayerPropManager;

/// The floating viewport of a layout that is current; null in model space and on the paper.
HxDbObjectId activeViewport(const HxDbDatabase* database);

/// A layer's name as commands take it in lists. Names with commas, which other programs allow, stay one.
std::wstring listElement(const std::wstring& name);

/// The layers' names, parted by commas, as commands take them.
CStdStr<wchar_t> layerNames(const KvLayerListCtrl& grid, const std::vector<HxDbObjectId>& layers);

// ---- commands that set overrides of these layers in the current viewport ----

CStdStr<wchar_t> colorOverrideCommand(const HxCmColor& color, const CStdStr<wchar_t>& layers);
CStdStr<wchar_t> linetypeOverrideCommand(HxDbObjectId linetype, const CStdStr<wchar_t>& layers);
/// In inches when LWUNITS says so.
CStdStr<wchar_t> lineweightOverrideCommand(HxDb::LineWeight weight, const CStdStr<wchar_t>& layers);
CStdStr<wchar_t> plotStyleOverrideCommand(const wchar_t* style, const CStdStr<wchar_t>& layers);

/// Sends it to the current document, which runs it, without its prompts, when the host is idle.
void sendViewportCommand(const CStdStr<wchar_t>& command);

// ---- at once ----

/// Thaws the layers in the active viewport when the first one named is frozen in it, else freezes them. True
/// when they are frozen now; false, and nothing changed, without a viewport that can be written.
bool toggleInViewport(KvLayerPropManager& manager, HxDbObjectId clicked,
                      const std::vector<HxDbObjectId>& layers);

/// Freezes or thaws the layers in the active viewport; false when it cannot be written.
bool setFrozenInViewport(KvLayerPropManager& manager, bool freeze, const std::vector<HxDbObjectId>& layers);

/// Null when the drawing has no plot style of that name.
HxDbObjectId plotStyleId(const HxDbDatabase* database, const wchar_t* name);
