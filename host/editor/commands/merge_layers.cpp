// -LAYMRG: moves all objects of layers to another layer, and erases the layers.
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/editor.h"
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

std::vector<HxDbObjectId> layersNamed(const std::wstring& names) {
    const LayerSelection selection = selectLayers(drawing(), names);
    for (const std::wstring& name : selection.unmatched) {
        refuse(L"There is no layer that fits " + quoted(name) + L".");
    }
    return selection.layers;
}

/// The layers of an answer: of the picked object, or after the keyword Name by their names.
std::vector<HxDbObjectId> layersOf(const Answer& answer, const wchar_t* namePrompt) {
    if (answer.isValue()) {
        return {layerOfPicked(answer.entity)};
    }
    const Answer names = answer.isKeywordOf(L"Name") ? askName({namePrompt}) : Answer();
    return names.isValue() ? layersNamed(names.text) : std::vector<HxDbObjectId>();
}

/// The layers to merge, each once, in the order of choosing.
class Sources {
public:
    /// Those that cannot be merged are told and left out.
    void add(const std::vector<HxDbObjectId>& layers) {
        for (const HxDbObjectId& id : layers) {
            const std::wstring why = obstacle(id);
            if (!why.empty()) {
                refuse(L"Layer " + quoted(layerName(id)) + L" can not be merged: " + why + L".");
            } else if (m_known.insert(id).second) {
                m_layers.push_back(id);
            }
        }
    }
    void removeLast() {
        if (m_layers.empty()) {
            say(L"There is no layer to leave out.");
        } else {
            m_known.erase(m_layers.back());
            m_layers.pop_back();
        }
    }
    void remove(HxDbObjectId id) {
        m_layers.erase(std::remove(m_layers.begin(), m_layers.end(), id), m_layers.end());
    }
    const std::vector<HxDbObjectId>& layers() const { return m_layers; }

private:
    std::vector<HxDbObjectId> m_layers;
    std::unordered_set<HxDbObjectId> m_known;
};

bool isListOfLayers(const std::wstring& text) {
    const LayerSelection selection = selectLayers(drawing(), text);
    return selection.unmatched.empty() && !selection.layers.empty();
}

/// A list of names instead of the first pick is all that is merged. False when the user gave up.
bool askSources(Sources& sources) {
    const Prompt prompt{L"Select object on layer to merge or [Name/Undo]:", L"Name Undo"};
    Answer answer = askEntityOrNames(prompt, false, isListOfLayers);
    if (answer.isValue() && !answer.text.empty()) {
        sources.add(layersNamed(answer.text));
        return true;
    }
    for (; !answer.isCancelled() && !answer.isNone(); answer = askEntity(prompt, false)) {
        if (answer.isKeywordOf(L"Undo")) {
            sources.removeLast();
        } else {
            sources.add(layersOf(answer, L"Enter name list of layer(s) to merge:"));
        }
    }
    return answer.isNone();
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
    Sources chosen;
    if (!askSources(chosen) || chosen.layers().empty()) {
        editor().input().dropSent();  // the rest of what was sent answers this command
        return;
    }
    const HxDbObjectId target = askTarget();
    chosen.remove(target);
    const std::vector<HxDbObjectId>& sources = chosen.layers();
    if (target.isNull() || sources.empty()) {
        editor().input().dropSent();
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
