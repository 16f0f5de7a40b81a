// ERASE: erases picked objects, the last one, or all of the current space.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/selection.h"
#include "host/editor/view.h"
#include "sdk/hxdbentity.h"

#include <memory>
#include <unordered_set>

namespace korvex {

namespace {

std::vector<HxDbObjectId> allOfSpace() {
    std::vector<HxDbObjectId> ids;
    const HxDbObjectPointer<HxDbBlockTableRecord> space(currentSpace(drawing()), HxDb::kForRead);
    HxDbBlockTableRecordIterator* steps = nullptr;
    if (space && space->newIterator(steps) == Hx::eOk) {
        const std::unique_ptr<HxDbBlockTableRecordIterator> owner(steps);
        for (; !steps->done(); steps->step()) {
            HxDbObjectId id;
            steps->getEntityId(id);
            const HxDbObjectPointer<HxDbEntity> entity(id, HxDb::kForRead);
            const bool isPaper = entity && entity->isKindOf(HxDbViewport::desc()) &&
                                 static_cast<const HxDbViewport*>(entity.object())->number() == 1;
            if (entity && !isPaper) {
                ids.push_back(id);
            }
        }
    }
    return ids;
}

bool isLocked(const HxDbEntity& entity) {
    const HxDbObjectPointer<HxDbLayerTableRecord> layer(entity.layerId(), HxDb::kForRead);
    return layer && layer->isLocked();
}

/// What the answer adds to the selection; a message when it is nothing.
std::vector<HxDbObjectId> selectedBy(const Answer& answer) {
    if (answer.isKeywordOf(L"All")) {
        return allOfSpace();
    }
    if (answer.isKeywordOf(L"Last")) {
        zds_name name = {0, 0};
        HxDbObjectId id;
        if (hxdbEntLast(name) == RTNORM && hxdbGetObjectId(id, name) == Hx::eOk) {
            return {id};
        }
        return {};
    }
    return answer.isValue() ? std::vector<HxDbObjectId>{answer.entity} : std::vector<HxDbObjectId>();
}

void eraseAll(const std::vector<HxDbObjectId>& ids) {
    std::size_t locked = 0;
    std::size_t failed = 0;
    for (const HxDbObjectId& id : ids) {
        const HxDbObjectPointer<HxDbEntity> entity(id, HxDb::kForWrite);
        if (entity && isLocked(*entity.object())) {
            ++locked;
        } else if (!entity || entity->erase() != Hx::eOk) {
            ++failed;
        }
    }
    if (locked > 0) {
        say(std::to_wstring(locked) + L" on a locked layer, not erased.");
    }
    if (failed > 0) {
        refuse(std::to_wstring(failed) + L" could not be erased.");
    }
}

}  // namespace

void eraseCommand() {
    Selection& pickFirst = selectionOf(drawing());
    std::vector<HxDbObjectId> selection = pickFirst.objects();
    if (!selection.empty()) {
        pickFirst.clear();
        say(std::to_wstring(selection.size()) + L" found");
        eraseAll(selection);
        return;
    }
    std::unordered_set<HxDbObjectId> known;
    for (;;) {
        const Answer answer = askEntity({L"Select objects or [Last/All]:", L"Last All"}, false);
        if (answer.isNone()) {
            break;
        }
        if (answer.isCancelled()) {
            return;
        }
        std::size_t added = 0;
        for (const HxDbObjectId& id : selectedBy(answer)) {
            if (known.insert(id).second) {
                selection.push_back(id);
                ++added;
            }
        }
        say(std::to_wstring(added) + L" found, " + std::to_wstring(selection.size()) + L" in all");
    }
    eraseAll(selection);
}

}  // namespace korvex
