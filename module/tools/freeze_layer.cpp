// Freezing a layer by its name.
#include "freeze_layer.h"

#include "frame/util/resource_text.h"
#include "frame/util/system_variable.h"
#include "frame/util/text_utilities.h"
#include "freeze_options.h"
#include "keyword_question.h"

#include "hxdbdatabase.h"
#include "hxdbentity.h"
#include "hxdoc.h"
#include "hxed.h"

namespace {

constexpr int kNothingFrozen = -1;

/// CMDECHO off while it lives.
class QuietCommands {
public:
    QuietCommands() : m_known(hxedGetVar(L"CMDECHO", &m_saved) == RTNORM) {
        resbuf off = {};
        off.restype = RTSHORT;
        hxedSetVar(L"CMDECHO", &off);
    }
    ~QuietCommands() {
        if (m_known) hxedSetVar(L"CMDECHO", &m_saved);
    }
    QuietCommands(const QuietCommands&) = delete;
    QuietCommands& operator=(const QuietCommands&) = delete;

private:
    resbuf m_saved = {};
    bool m_known;
};

void say(KvString message, const wchar_t* layerName) {
    hxutPrintf(ResourceString(message).c_str(), layerName);
}

/// RTNORM for yes, kNothingFrozen for no.
int confirmFreezingCurrent(const wchar_t* layerName) {
    CStdStr<wchar_t> question;
    question.Format(ResourceString(kStrFreezeCurrentQuestion).c_str(), layerName);
    std::size_t answer = 0;
    const int result = askForKeyword(question, kStrFreezeCurrentKeywords, {L"Yes", L"No"}, answer);
    if (result == RTNONE || (result == RTNORM && answer != 0)) return kNothingFrozen;
    return result;
}

HxDbObjectId layerId(const wchar_t* layerName) {
    HxDbObjectId id;
    HxDbDatabase* const database = curDocDatabase();
    if (!database) return id;
    const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForRead);
    if (table) table->getAt(layerName, id);
    return id;
}

int freezeInViewport(const wchar_t* layerName) {
    HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForWrite);
    if (!viewport) return RTNORM;
    HxArray<HxDbObjectId> layers;
    layers.append(layerId(layerName));
    if (layers[0].isNull()) return kNothingFrozen;
    const Hx::ErrorStatus status = viewport->freezeLayersInViewport(layers);
    if (status == Hx::eOk) say(kStrLayerFrozenInViewport, layerName);
    viewport.close();
    if (status == Hx::eOk) hxedRedraw(nullptr, 1);
    return RTNORM;
}

/// eRefused when the layer is one that must not be frozen, as the current one.
Hx::ErrorStatus freezeInDrawing(const wchar_t* layerName) {
    HxDbDatabase* const database = hxdbWorkingDatabase();
    if (!layerName) return Hx::eInvalidInput;
    if (!database) return Hx::eNoDatabase;
    const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForRead);
    if (!table) return table.openStatus();
    HxDbLayerTableRecord* layer = nullptr;
    const Hx::ErrorStatus opened = table->getAt(layerName, layer, HxDb::kForWrite);
    if (opened != Hx::eOk) return opened;
    const Hx::ErrorStatus status = layer->isFrozen() ? Hx::eOk : layer->setIsFrozen(true);
    layer->close();
    return status;
}

}  // namespace

int FrzLayerByName(const wchar_t* layerName) {
    return freezeInDrawing(layerName) == Hx::eOk ? RTNORM : RTERROR;
}

int FrzOneLayer(const wchar_t* layerName, int viewportMode, const zds_name /*pickedEntity*/) {
    const bool isInViewport = shortVariable(L"TILEMODE", 1) == 0 && shortVariable(L"CVPORT", 1) != 1;
    const bool isCurrent = strings_i_compare(layerName, textVariable(L"CLAYER", L"0").c_str()) == 0;
    if (isCurrent && !isInViewport) {
        say(kStrLayerIsCurrent, layerName);
        return kNothingFrozen;
    }
    if (isInViewport && viewportMode == static_cast<int>(FreezeOptions::kCurrentViewport)) {
        const int confirmed = isCurrent ? confirmFreezingCurrent(layerName) : RTNORM;
        return confirmed == RTNORM ? freezeInViewport(layerName) : confirmed;
    }
    const QuietCommands quiet;
    const Hx::ErrorStatus status = freezeInDrawing(layerName);
    if (status == Hx::eOk) {
        say(kStrLayerFrozen, layerName);
    } else if (status == Hx::eRefused && isCurrent) {
        say(kStrLayerIsCurrent, layerName);
    }
    return RTNORM;
}
