// -LAYMRG: moves all objects of layers to another layer, and erases the layers.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/layer_names.h"
#include "sdk/hxdbentity.h"

#include <algorithm>
#include <unordered_set>

namespace korvex {

namespace {

/// Why a layer cannot be merged into another; empty when it can.
std::wstring obstacle(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
    if (!layer) {
        return L"it is in use";
    }
    if (id == drawing().clayer()) {
        return L"it is current: make another layer current first";
    }
    if (layer->isDependent()) {
        return L"it belongs to an external reference";
    }
    const std::wstring name = layer->name();
    return equalNames(name, L"0") || equalNames(name, L"DEFPOINTS") ? L"every drawing needs it" : L"";
}

HxDbObjectId layerOfPicked(HxDbObjectId picked) {
    const HxDbObjectPointer<HxDbEntity> entity(picked, HxDb::kForRead);
    return entity ? entity->layerId() : HxDbObjectId();
}

/// The layers of an answer: of the picked object, or after the keyword Name by their names.
std::vector<HxDbObjectId> layersOf(const Answer& answer, const wchar_t* namePrompt) {
    if (answer.isValue()) {
        return {layerOfPicked(answer.entity)};
    }
    const Answer names = answer.isKeywordOf(L"Name") ? askName({namePrompt}) : Answer();
    if (!names.isValue()) {
        return {};
    }
    const LayerSelection selection = selectLayers(drawing(), names.text);
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer that fits " + quoted(name) + L".");
    }
    return selection.layers;
}

/// False when the user gave up.
bool askSources(std::vector<HxDbObjectId>& sources) {
    std::unordered_set<HxDbObjectId> known;
    for (;;) {
        const Answer answer =
            askEntity({L"Select object on layer to merge or [Name/Undo]:", L"Name Undo"}, false);
        if (answer.isCancelled() || answer.isNone()) {
            return answer.isNone();
        }
        if (answer.isKeywordOf(L"Undo")) {
            if (sources.empty()) {
                say(L"There is no layer to leave out.");
            } else {
                known.erase(sources.back());
                sources.pop_back();
            }
            continue;
        }
        for (const HxDbObjectId& id : layersOf(answer, L"Enter name list of layer(s) to merge:")) {
            const std::wstring why = obstacle(id);
            if (!why.empty()) {
                refuse(L"Layer " + quoted(layerName(id)) + L" can not be merged: " + why + L".");
            } else if (known.insert(id).second) {
                sources.push_back(id);
            }
        }
    }
}

/// Null when the user gave up.
HxDbObjectId askTarget() {
    for (;;) {
        const Answer answer = askEntity({L"Select object on target layer or [Name]:", L"Name"}, false);
        if (answer.isCancelled() || answer.isNone()) {
            return {};
        }
        const std::vector<HxDbObjectId> layers = layersOf(answer, L"Enter name of target layer:");
        if (layers.size() == 1) {
            return layers.front();
        }
        if (layers.size() > 1) {
            refuse(L"One layer only can be the target.");
        }
    }
}

std::wstring namesOf(const std::vector<HxDbObjectId>& layers) {
    std::wstring names;
    for (const HxDbObjectId& id : layers) {
        names += (names.empty() ? L"" : L", ") + quoted(layerName(id));
    }
    return names;
}

struct Moves {
    std::size_t done = 0;
    std::size_t failed = 0;
};

/// Moves what is on the layers.
Moves moveObjects(const std::vector<HxDbObjectId>& sources, HxDbObjectId target) {
    Moves moves;
    const std::unordered_set<HxDbObjectId> merged(sources.begin(), sources.end());
    const auto move = [&](HxDbStub* stub) {
        if (stub && isAlive(*stub) && merged.count(HxDbObjectId(layerOf(*stub))) != 0) {
            const HxDbObjectPointer<HxDbEntity> entity(HxDbObjectId(stub), HxDb::kForWrite);
            ++(entity && entity->setLayer(target) == Hx::eOk ? moves.done : moves.failed);
        }
    };
    for (HxDbStub* block : members(*drawing().blockTableId().stub())) {
        if (block->erased) {
            continue;
        }
        for (HxDbStub* part : {block->contents->blockBegin, block->contents->blockEnd}) {
            move(part);
        }
        for (HxDbStub* entity : members(*block)) {
            move(entity);
        }
    }
    return moves;
}

/// False when the layer stays, which is told.
bool eraseLayer(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForWrite);
    const Hx::ErrorStatus status = layer ? layer->erase() : layer.openStatus();
    if (status != Hx::eOk) {
        refuse(L"Layer " + quoted(layerName(id)) + L" was not erased" + because(status) + L".");
    }
    return status == Hx::eOk;
}

}  // namespace

void mergeLayersCommand() {
    std::vector<HxDbObjectId> sources;
    if (!askSources(sources) || sources.empty()) {
        return;
    }
    const HxDbObjectId target = askTarget();
    sources.erase(std::remove(sources.begin(), sources.end(), target), sources.end());
    if (target.isNull() || sources.empty()) {
        return;
    }
    if (!askYesNo(L"Merge " + namesOf(sources) + L" into " + quoted(layerName(target)) + L"?", false)) {
        say(L"No layer was merged.");
        return;
    }
    const Moves moves = moveObjects(sources, target);
    if (moves.failed > 0) {
        refuse(std::to_wstring(moves.failed) + L" object(s) could not be moved, so no layer was erased.");
        return;
    }
    const auto erased = std::count_if(sources.begin(), sources.end(), eraseLayer);
    say(std::to_wstring(erased) + L" layer(s) merged into " + quoted(layerName(target)) + L", " +
        std::to_wstring(moves.done) + L" object(s) moved.");
}

}  // namespace korvex
