// XREF: attaches other drawings, lets them go, reads them again.
#include "host/db/values/wildcard.h"
#include "host/editor/commands/command_support.h"
#include "host/editor/commands/host_commands.h"
#include "host/editor/commands/place_block.h"
#include "host/editor/documents.h"
#include "host/editor/editor.h"
#include "host/editor/editor_notices.h"
#include "host/editor/layer_names.h"
#include "host/editor/xrefs.h"
#include "sdk/hxdbentity.h"

#include <QFileInfo>

#include <memory>

namespace korvex {

namespace {

using Ids = std::vector<HxDbObjectId>;

Ids allXrefs() {
    Ids ids;
    const HxDbObjectPointer<HxDbBlockTable> table(drawing().blockTableId(), HxDb::kForRead);
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps) != Hx::eOk) {
        return ids;
    }
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    for (; !steps->done(); steps->step()) {
        const HxDbObjectPointer<HxDbBlockTableRecord> block(steps->getRecordId(), HxDb::kForRead);
        if (block && block->isFromExternalReference()) {
            ids.push_back(steps->getRecordId());
        }
    }
    return ids;
}

std::wstring blockName(HxDbObjectId id) {
    const HxDbObjectPointer<HxDbBlockTableRecord> block(id, HxDb::kForRead);
    return block ? block->name() : L"";
}

/// The external references of a list of names; none, with a message, when nothing fits.
Ids askXrefs(const wchar_t* prompt) {
    const Answer list = askName({prompt});
    Ids ids;
    for (const HxDbObjectId& id : allXrefs()) {
        if (list.isValue() && matchesPattern(blockName(id), list.text)) {
            ids.push_back(id);
        }
    }
    if (list.isValue() && ids.empty()) {
        refuse(L"There is no external reference that fits " + quoted(list.text) + L": XREF ? lists them.");
    }
    return ids;
}

void list() {
    const Ids ids = allXrefs();
    for (const HxDbObjectId& id : ids) {
        const HxDbObjectPointer<HxDbBlockTableRecord> block(id, HxDb::kForRead);
        if (block) {
            const wchar_t* state = block->isUnloaded() || !block->xrefDatabase() ? L"not loaded" : L"loaded";
            say(std::wstring(L"  ") + block->name() + L"  " + block->pathName() + L"  (" +
                (block->isFromOverlayReference() ? L"overlay, " : L"attached, ") + state + L")");
        }
    }
    say(std::to_wstring(ids.size()) + L" external reference(s).");
}

/// What was not done: a failure, unless the user gave it up.
void tell(Hx::ErrorStatus status, const std::wstring& message) {
    status == Hx::eCancelled ? say(message) : refuse(message);
}

void tellAttach(int activity, const std::wstring& path) {
    tellEditorReactors(
        [&](HxEditorReactor& r) { r.xrefSubcommandAttachItem(&drawing(), activity, path.c_str()); });
}

void tellDetach(int activity, HxDbObjectId id) {
    tellEditorReactors([&](HxEditorReactor& r) { r.xrefSubcommandDetachItem(&drawing(), activity, id); });
}

void attach(bool overlay) {
    const Answer path = askName({L"Enter name of file to attach:"});
    if (!path.isValue()) {
        return;
    }
    const std::wstring name = QFileInfo(QString::fromStdWString(path.text)).completeBaseName().toStdWString();
    tellAttach(kXrefStart, L"");
    tellAttach(kXrefStartItem, path.text);
    HxDbObjectId block;
    std::wstring error;
    const Hx::ErrorStatus status = attachXref(drawing(), path.text, name, overlay, block, error);
    tellAttach(status == Hx::eOk ? kXrefEndItem : kXrefAborted, path.text);
    tellAttach(kXrefEnd, L"");
    if (status != Hx::eOk) {
        tell(status, quoted(path.text) + L" was not attached: " + error + L".");
        return;
    }
    say(quoted(blockName(block)) + L" attached.");
    askAndPlaceBlock(blockName(block));
}

void attachOption() { attach(false); }
void overlayOption() { attach(true); }

void detachOption() {
    const Ids ids = askXrefs(L"Enter xref name(s) to detach:");
    if (ids.empty()) {
        return;
    }
    tellDetach(kXrefStart, {});
    for (const HxDbObjectId& id : ids) {
        const std::wstring name = blockName(id);
        tellDetach(kXrefStartItem, id);
        const Hx::ErrorStatus status = detachXref(drawing(), id);
        tellDetach(status == Hx::eOk ? kXrefEndItem : kXrefAborted, id);
        if (status == Hx::eOk) {
            say(quoted(name) + L" detached.");
        } else {
            refuse(quoted(name) + L" was not detached" + because(status) + L".");
        }
    }
    tellDetach(kXrefEnd, {});
}

void reloadOption() {
    for (const HxDbObjectId& id : askXrefs(L"Enter xref name(s) to reload:")) {
        std::wstring error;
        const Hx::ErrorStatus status = reloadXref(drawing(), id, error);
        if (status == Hx::eOk) {
            say(quoted(blockName(id)) + L" reloaded.");
        } else {
            tell(status, quoted(blockName(id)) + L" was not reloaded: " + error + L".");
        }
    }
}

constexpr CommandOption kOptions[] = {{L"?", list},
                                      {L"Detach", detachOption},
                                      {L"Reload", reloadOption},
                                      {L"Attach", attachOption},
                                      {L"Overlay", overlayOption}};

}  // namespace

void xrefCommand() {
    const Answer answer = askKeyword(
        {L"Enter an option [?/Detach/Reload/Attach/Overlay] <Attach>:", L"? Detach Reload Attach Overlay"});
    if (answer.isNone()) {
        attachOption();
    }
    for (const CommandOption& option : kOptions) {
        if (answer.isKeywordOf(option.keyword)) {
            option.run();
        }
    }
}

}  // namespace korvex
