// Attaching, detaching and reloading external references.
#include "host/editor/xrefs.h"

#include "host/base/log.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/entity_access.h"
#include "host/db/kernel/text_fold.h"
#include "host/db/tables/record_names.h"
#include "host/io/block_parts.h"
#include "host/io/xref_files.h"
#include "sdk/hxdbentity.h"

namespace korvex {

namespace {

constexpr int kAttachedFlag = 4;
constexpr int kOverlayFlag = 8;

/// What a referenced drawing lacks itself is only a warning.
void warn(const std::vector<std::wstring>& messages) {
    for (const std::wstring& message : messages) {
        log(Severity::Warning, message);
    }
}

Hx::ErrorStatus addBlock(HxDbDatabase& host, const std::wstring& name, HxDbObjectId& id) {
    HxDbObjectPointer<HxDbBlockTable> table(host.blockTableId(), HxDb::kForWrite);
    if (!table) {
        return table.openStatus();
    }
    auto record = std::make_unique<HxDbBlockTableRecord>();
    Hx::ErrorStatus status = record->setName(name.c_str());
    if (status == Hx::eOk) {
        status = table->add(id, record.get());
    }
    if (status == Hx::eOk) {
        record.release()->close();
    }
    return status;
}

Hx::ErrorStatus eraseObject(HxDbStub& stub) {
    HxDbObject* object = nullptr;
    Hx::ErrorStatus status = hxdbOpenObject(object, HxDbObjectId(&stub), HxDb::kForWrite);
    if (status == Hx::eOk) {
        status = object->erase();
        object->close();
    }
    return status;
}

/// Erases the references that draw a block.
Hx::ErrorStatus eraseReferences(HxDbDatabase& host, const HxDbStub& block) {
    for (HxDbStub* container : members(*host.imp()->table(TableKind::block))) {
        for (HxDbStub* entity : members(*container)) {
            const auto* reference =
                isAlive(*entity) && entity->recordClass->type == std::string_view("INSERT")
                    ? HxDbBlockReference::cast(materialise(*entity))
                    : nullptr;
            if (reference && reference->blockTableRecord().stub() == &block) {
                const Hx::ErrorStatus status = eraseObject(*entity);
                if (status != Hx::eOk) {
                    return status;
                }
            }
        }
    }
    return Hx::eOk;
}

/// Erases the records that a reference brought: "NAME|..." of every table.
Hx::ErrorStatus eraseDependents(HxDbDatabase& host, const std::wstring& name) {
    const std::wstring prefix = name + L"|";
    for (HxDbStub* table : host.imp()->tables) {
        for (HxDbStub* record : members(*table)) {
            if (!record->erased && equalNames(recordName(*record).substr(0, prefix.size()), prefix)) {
                const Hx::ErrorStatus status = eraseObject(*record);
                if (status != Hx::eOk) {
                    return status;
                }
            }
        }
    }
    return Hx::eOk;
}

}  // namespace

Hx::ErrorStatus attachXref(HxDbDatabase& host, const std::wstring& path, const std::wstring& name,
                           bool overlay, HxDbObjectId& block, std::wstring& error) {
    block = HxDbObjectId();
    if (!isValidSymbolName(name)) {
        error = L"\"" + name + L"\" cannot be the name of a block";
        return Hx::eInvalidInput;
    }
    if (findRecord(host, TableKind::block, name)) {
        error = L"the drawing has a block \"" + name + L"\" already";
        return Hx::eDuplicateRecordName;
    }
    Hx::ErrorStatus status = Hx::eOk;
    std::vector<std::wstring> messages;
    std::shared_ptr<HxDbDatabase> drawing = loadXref(host, path, status, error, messages);
    warn(messages);
    if (!drawing) {
        return status;
    }
    status = addBlock(host, name, block);
    if (status != Hx::eOk) {
        error = Hx::errorText(status);
        return status;
    }
    addBlockBegin(*block.stub(), {overlay ? kOverlayFlag : kAttachedFlag, path});
    setXref(*block.stub(), std::move(drawing));
    addXrefLayers(*block.stub());
    return Hx::eOk;
}

Hx::ErrorStatus detachXref(HxDbDatabase& host, HxDbObjectId block) {
    const auto* record = HxDbBlockTableRecord::cast(hxdbObjectPointer(block));
    if (!record || !record->isFromExternalReference()) {
        return Hx::eWrongClass;
    }
    const Journal::Mark mark = journal(host).putMark();
    Hx::ErrorStatus status = eraseReferences(host, *block.stub());
    if (status == Hx::eOk) {
        status = eraseDependents(host, record->name());
    }
    if (status == Hx::eOk) {
        status = eraseObject(*block.stub());
    }
    if (status != Hx::eOk) {
        journal(host).rollbackTo(mark);
    }
    return status;
}

Hx::ErrorStatus reloadXref(HxDbDatabase&, HxDbObjectId block, std::wstring& error) {
    const auto* record = HxDbBlockTableRecord::cast(hxdbObjectPointer(block));
    if (!record || !record->isFromExternalReference()) {
        error = L"it is no external reference";
        return Hx::eWrongClass;
    }
    Hx::ErrorStatus status = Hx::eOk;
    std::vector<std::wstring> messages;
    reloadXrefFile(*block.stub(), record->pathName(), status, error, messages);
    warn(messages);
    return status;
}

}  // namespace korvex
