// Linetypes of files become records of the drawing.
#include "host/editor/linetype_file_loader.h"

#include "host/db/kernel/journal.h"
#include "sdk/hxdbsymtb.h"
#include "sdk/hxdoc.h"

#include <memory>

namespace korvex {

namespace {

using LinetypeForRead = HxDbObjectPointer<HxDbLinetypeTableRecord>;

HxDbObjectId linetypeNamed(HxDbDatabase& database, const std::wstring& name) {
    const HxDbObjectPointer<HxDbSymbolTable> table(database.linetypeTableId(), HxDb::kForRead);
    HxDbObjectId id;
    if (table) {
        table->getAt(name.c_str(), id);
    }
    return id;
}

/// The document's lock, when the drawing is one that is open, and an undo step.
class EditScope {
public:
    explicit EditScope(HxDbDatabase& database)
        : m_database(database), m_document(hxDocManager()->document(&database)) {
        if (m_document) {
            hxDocManager()->lockDocument(m_document);
        }
        journal(m_database).beginGroup(L"LINETYPE");
    }
    ~EditScope() {
        journal(m_database).endGroup();
        if (m_document) {
            hxDocManager()->unlockDocument(m_document);
        }
    }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

private:
    HxDbDatabase& m_database;
    HxApDocument* m_document;
};

Hx::ErrorStatus setPattern(HxDbLinetypeTableRecord& record, const LinetypeDefinition& definition) {
    HxArray<double> dashes;
    for (const double dash : definition.dashes) {
        dashes.append(dash);
    }
    return record.setPattern(definition.description.c_str(), dashes);
}

Hx::ErrorStatus add(HxDbDatabase& database, const LinetypeDefinition& definition, HxDbObjectId& id) {
    const HxDbObjectPointer<HxDbLinetypeTable> table(database.linetypeTableId(), HxDb::kForWrite);
    if (!table) {
        return table.openStatus();
    }
    auto record = std::make_unique<HxDbLinetypeTableRecord>();
    Hx::ErrorStatus status = record->setName(definition.name.c_str());
    if (status == Hx::eOk) {
        status = setPattern(*record, definition);
    }
    if (status == Hx::eOk) {
        status = table->add(id, record.get());
    }
    if (status == Hx::eOk) {
        record.release()->close();  // the drawing has taken it
    }
    return status;
}

Hx::ErrorStatus redefine(HxDbObjectId id, const LinetypeDefinition& definition) {
    const HxDbObjectPointer<HxDbLinetypeTableRecord> record(id, HxDb::kForWrite);
    return record ? setPattern(*record.object(), definition) : record.openStatus();
}

}  // namespace

LinetypePresence linetypePresence(HxDbDatabase& database, const LinetypeDefinition& definition) {
    const HxDbObjectId id = linetypeNamed(database, definition.name);
    if (id.isNull()) {
        return LinetypePresence::absent;
    }
    const LinetypeForRead record(id, HxDb::kForRead);
    bool isSame = record && record->comments() == definition.description &&
                  record->numDashes() == static_cast<int>(definition.dashes.size());
    for (int i = 0; isSame && i < record->numDashes(); ++i) {
        isSame = record->dashLengthAt(i) == definition.dashes[static_cast<std::size_t>(i)];
    }
    return isSame ? LinetypePresence::same : LinetypePresence::different;
}

LoadedLinetypes loadLinetypes(HxDbDatabase& database, const std::vector<LinetypeDefinition>& definitions) {
    LoadedLinetypes loaded;
    const EditScope scope(database);
    for (const LinetypeDefinition& definition : definitions) {
        HxDbObjectId id = linetypeNamed(database, definition.name);
        const Hx::ErrorStatus status = id.isNull() ? add(database, definition, id) : redefine(id, definition);
        if (status == Hx::eOk) {
            loaded.ids.push_back(id);
        } else {
            loaded.failures.push_back(L"Linetype \"" + definition.name + L"\" cannot be loaded (" +
                                      Hx::errorText(status) + L").");
        }
    }
    return loaded;
}

}  // namespace korvex
