// Looks for the record of an isolation.
#include "host/editor/layer_isolation.h"

#include "sdk/hxads.h"
#include "sdk/hxdbdatabase.h"
#include "sdk/hxlystate.h"

namespace korvex {

bool isIsolated(HxDbDatabase& database) {
    const HxDbLayerStateManager* const states = database.getLayerStateManager();
    return states && states->hasLayerState(kIsolationState);
}

bool isIsolationPlaceKnown(HxDbDatabase& database) {
    zds_name dictionary = {0, 0};
    const HxDbObjectId id = database.getLayerStateManager()->layerStatesDictionaryId(false);
    if (hxdbGetZdsName(dictionary, id) != Hx::eOk) {
        return false;
    }
    resbuf* const applications = hxutBuildList(RTSTR, L"AcLayerTools", 0);
    resbuf* const list = hxdbEntGetX(dictionary, applications);
    constexpr short kExtendedData = -3;
    bool isKnown = false;
    for (const resbuf* group = list; group; group = group->rbnext) {
        isKnown = isKnown || group->restype == kExtendedData;
    }
    hxutRelRb(list);
    hxutRelRb(applications);
    return isKnown;
}

}  // namespace korvex
