// Freezing a layer by its name.
#pragma once

#include "hxads.h"

/// Freezes the layer of a pick and reports it: in the current floating viewport when there is one and
/// `viewportMode` is 1 (FreezeOptions::Viewport), otherwise in the whole drawing. The current layer is
/// refused, but in a viewport the user is asked. RTNORM when the pick is dealt with; RTCAN when the user gave
/// up; RTERROR when the question cannot be put; -1 when nothing was frozen: refused, answered No, no such
/// layer.
int FrzOneLayer(const wchar_t* layerName, int viewportMode, const zds_name pickedEntity);

/// Freezes a layer of the working database. RTNORM, also when it was frozen; RTERROR for a null name, without
/// a database, or when the layer cannot be opened or must not be frozen.
int FrzLayerByName(const wchar_t* layerName);
