// A stand-in for the layer manager's part in isolation. TRIAL_ISOLATION makes it fail: "record" makes no
// record, "restore" restores nothing, "place" says nothing of where the user is.
#include "hxads.h"
#include "hxdbentity.h"
#include "hxdoc.h"
#include "hxlystate.h"
#include "hxmodule.h"

#include <QByteArray>

namespace {

constexpr wchar_t kState[] = L"_LAYISO_STATE";

bool fails(const char* what) { return qgetenv("TRIAL_ISOLATION") == what; }

HxDbObjectId viewport(const HxDbDatabase& database) {
    return !database.tilemode() && database.cvport() > 1 ? hxedGetCurViewportObjectId() : HxDbObjectId();
}

void writePlace(const HxDbDatabase& database) {
    zds_name dictionary = {0, 0};
    hxdbGetZdsName(dictionary, database.getLayerStateManager()->layerStatesDictionaryId(false));
    hxdbRegApp(L"AcLayerTools");
    resbuf* const list = hxdbEntGet(dictionary);
    resbuf* last = list;
    while (last->rbnext) {
        last = last->rbnext;
    }
    last->rbnext = hxutBuildList(-3, 1001, L"AcLayerTools", 1000, L"1F", 1000, L"0", 0);
    hxdbEntMod(list);
    hxutRelRb(list);
}

}  // namespace

HX_EXPORT int hxrxEntryPoint(int message, void* packet) {
    if (message == kInitAppMsg) {
        auto* const linker = HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker"));
        linker->prepareApp(packet);
        linker->unlockApplication(packet);
    }
    return kRetOK;
}

HX_EXPORT std::uint32_t hxrxGetApiVersion() { return kHxApiVersion; }

HX_EXPORT void LayIso() {
    HxDbDatabase& database = *curDocDatabase();
    if (!fails("record")) {
        database.getLayerStateManager()->saveLayerState(kState, HxLyState::kAllProperties,
                                                        viewport(database));
        if (!fails("place")) {
            writePlace(database);
        }
    }
}

HX_EXPORT int LayUnisoNew() {
    HxDbDatabase& database = *curDocDatabase();
    HxDbLayerStateManager& states = *database.getLayerStateManager();
    if (fails("restore") || !states.hasLayerState(kState)) {
        return 0;
    }
    const std::int32_t mask = HxLyState::kOn | HxLyState::kFrozen | HxLyState::kLocked |
                              HxLyState::kNewViewportFrozen | HxLyState::kCurrentViewportFrozen;
    states.restoreLayerState(kState, viewport(database), 0, &mask);
    states.deleteLayerState(kState);
    return 1;
}
