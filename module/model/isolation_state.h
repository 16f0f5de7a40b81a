// The layer state that says how layers were before an isolation.
#pragma once

#include "hxdbdatabase.h"
#include "hxlystate.h"

inline constexpr wchar_t kIsolationState[] = L"_LAYISO_STATE";

/// From the recording of the layers until they are brought back.
inline bool isIsolated(const HxDbDatabase& database) {
    const HxDbLayerStateManager* const states = database.getLayerStateManager();
    return states && states->hasLayerState(kIsolationState);
}
