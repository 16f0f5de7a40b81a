// Looks for the record of an isolation.
#include "host/editor/layer_isolation.h"

#include "sdk/hxdbdatabase.h"
#include "sdk/hxlystate.h"

namespace korvex {

bool isIsolated(HxDbDatabase& database) {
    const HxDbLayerStateManager* const states = database.getLayerStateManager();
    return states && states->hasLayerState(kIsolationState);
}

}  // namespace korvex
