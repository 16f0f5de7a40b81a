// INSERT: draws a block at a place.
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/number_text.h"
#include "host/editor/wildcard.h"
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

/// A number with a default; false when the user gave up.
bool askNumber(const std::wstring& what, double fallback, int bits, double& number) {
    const Answer answer = askReal({what + L" <" + realText(fallback) + L">:", nullptr, bits});
    number = answer.isValue() ? answer.real : fallback;
    return !answer.isCancelled();
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
    const Answer place = askPoint({L"Specify insertion point:", nullptr, RSG_NONULL});
    double x = 1;
    double y = 1;
    double rotation = 0;
    if (!place.isValue() || !askNumber(L"Enter X scale factor", 1, RSG_NOZERO, x) ||
        !askNumber(L"Enter Y scale factor", x, RSG_NOZERO, y) ||
        !askNumber(L"Specify rotation angle", 0, 0, rotation)) {
        return;
    }
    NewEntity(L"INSERT")
        .text(2, name.text)
        .point(10, place.point)
        .real(41, x)
        .real(42, y)
        .real(43, x)
        .real(50, rotation)
        .make();
}

}  // namespace korvex
