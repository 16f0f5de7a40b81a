// The reactors that follow drawings for the layer palette, and hanging them on documents.
#include "layer_doc_context.h"

#include "hxdbentity.h"

#include <memory>

namespace {

/// Calls for the layer table and for each of its layers, whoever has them open.
template <class Call>
void forTableAndLayers(const HxDbDatabase& database, bool skipErased, Call call) {
    const HxDbObjectPointer<HxDbLayerTable> opened(database.layerTableId(), HxDb::kForRead);
    const auto* const table = HxDbLayerTable::cast(hxdbObjectPointer(database.layerTableId()));
    HxDbSymbolTableIterator* steps = nullptr;
    if (!table || table->newIterator(steps, true, skipErased) != Hx::eOk) return;
    const std::unique_ptr<HxDbSymbolTableIterator> owner(steps);
    call(table);
    for (; !steps->done(); steps->step(true, skipErased)) {
        const HxDbObjectPointer<HxDbObject> record(steps->getRecordId(), HxDb::kForRead, true);
        if (const HxDbObject* const layer = hxdbObjectPointer(steps->getRecordId())) call(layer);
    }
}

}  // namespace

void KvLayerDocContext::AppendLayerReactor(HxApDocument* document) {
    const HxDbDatabase* const database = document ? document->database() : nullptr;
    if (!database) return;
    database->addReactor(&m_dbReactor);
    forTableAndLayers(*database, true, [this](const HxDbObject* object) { m_objectReactor.follow(object); });
    followViewport(database);
}

void KvLayerDocContext::RemoveLayerReactor(HxApDocument* document) {
    const HxDbDatabase* const database = document ? document->database() : nullptr;
    if (!database) return;
    database->removeReactor(&m_dbReactor);
    forTableAndLayers(*database, false, [this](const HxDbObject* object) { m_objectReactor.leave(object); });
}

void KvLayerDocContext::followViewport(const HxDbDatabase* database) {
    if (!database) return;
    const HxDbObjectPointer<HxDbViewport> viewport(hxdbGetCurVportId(database), HxDb::kForRead);
    if (viewport) m_objectReactor.follow(viewport.object());
}
