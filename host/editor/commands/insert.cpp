// INSERT: draws a block at a place.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/place_block.h"
#include "sdk/hxdbentity.h"

#include <memory>

namespace korvex {

namespace {

/// The blocks that can be inserted: definitions, no layouts and no parts of external references.
void listBlocks() {
    const HxDbObjectPointer<HxDbBlockTable> table(drawing().blockTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) {
        return;
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    std::size_t count = 0;
    for (; !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbBlockTableRecord> block(steps->getRecordId(), HxDb::kForRead);
        if (block && !block->isLayout() && !block->isDependent() && block->name()[0] != L'*') {
            say(std::wstring(L"  ") + block->name() +
                (block->isFromExternalReference() ? L"  (external reference)" : L""));
            ++count;
        }
    }
    say(std::to_wstring(count) + L" block(s).");
}

/// The block's id by name; a message and null when it cannot be inserted.
HxDbObjectId blockOf(const std::wstring& name) {
    const HxDbObjectPointer<HxDbBlockTable> table(drawing().blockTableId(), HxDb::kForRead);
    HxDbObjectId id;
    if (!table || table->getAt(name.c_str(), id) != Hx::eOk) {
        refuse(L"There is no block " + quoted(name) + L" in this drawing: INSERT ? lists them.");
        return {};
    }
    const HxDbObjectPointer<HxDbBlockTableRecord> block(id, HxDb::kForRead);
    if (!block || block->isLayout()) {
        refuse(quoted(name) + L" is no block that can be inserted.");
        return {};
    }
    return id;
}

}  // namespace

void insertCommand() {
    const Answer name = askName({L"Enter block name or [?]:"});
    if (!name.isValue()) {
        return;
    }
    if (name.text == L"?") {
        listBlocks();
        return;
    }
    if (blockOf(name.text).isNull()) {
        return;
    }
    askAndPlaceBlock(name.text);
}

}  // namespace korvex
