// Follows the open documents for the layer palette.
#include "palette_doc_reactor.h"

#include "visible_palette.h"

KvLayerPaletteDocReactor::KvLayerPaletteDocReactor(HxApDocument* current) {
    hxDocManager()->addReactor(this);
    AppendLayerDocContext(current);
}

KvLayerPaletteDocReactor::~KvLayerPaletteDocReactor() {
    hxDocManager()->removeReactor(this);
    const std::unique_ptr<HxApDocumentIterator> open(hxDocManager()->newHxApDocumentIterator());
    for (; !open->done(); open->step()) {
        RemoveLayerDocContext(open->document());
    }
}

void KvLayerPaletteDocReactor::AppendLayerDocContext(HxApDocument* document) {
    const HxDbDatabase* const database = document ? document->database() : nullptr;
    if (!database) return;
    if (m_context && database->hasReactor(m_context->GetLayerPaletteDbReactor())) return;
    if (!m_context) m_context = std::make_unique<KvLayerDocContext>();
    m_context->AppendLayerReactor(document);
}

void KvLayerPaletteDocReactor::RemoveLayerDocContext(HxApDocument* document) {
    if (m_context) m_context->RemoveLayerReactor(document);
}

void KvLayerPaletteDocReactor::blockingCommandEnded(HxApDocument* document) {
    const auto found = m_blockingCommands.find(document);
    if (found != m_blockingCommands.end()) --found->second;
}

int KvLayerPaletteDocReactor::blockingCommands(HxApDocument* document) const {
    const auto found = m_blockingCommands.find(document);
    return found == m_blockingCommands.end() ? 0 : found->second;
}

KvLayerSortInfo KvLayerPaletteDocReactor::sortInfo(HxApDocument* document) const {
    const auto found = m_orders.find(document);
    return found == m_orders.end() ? KvLayerSortInfo() : found->second;
}

KvLayerFilterInfo KvLayerPaletteDocReactor::filterInfo(HxApDocument* document) const {
    const auto found = m_filters.find(document);
    return found == m_filters.end() ? KvLayerFilterInfo() : found->second;
}

CStdStr<wchar_t> KvLayerPaletteDocReactor::restoredState(HxApDocument* document) const {
    const auto found = m_restoredStates.find(document);
    return found == m_restoredStates.end() ? CStdStr<wchar_t>() : found->second;
}

void KvLayerPaletteDocReactor::documentCreated(HxApDocument* document) { AppendLayerDocContext(document); }

void KvLayerPaletteDocReactor::documentActivated(HxApDocument* document) {
    m_blockingCommands.insert({document, 0});
    AppendLayerDocContext(document);
    KvLayerPaletteMarks* const palette = visiblePalette();
    if (palette && document && document->database() != palette->GetDatabase()) {
        palette->SetDirtyNeedRefreshAll(document->database());
    }
}

void KvLayerPaletteDocReactor::documentToBeDestroyed(HxApDocument* document) {
    if (KvLayerPaletteMarks* const palette = layerPalette()) {
        palette->clearDocData(document);
        palette->setRefreshDb(nullptr);
        if (document == curDoc()) palette->setDatabase(nullptr);
    }
    m_blockingCommands.erase(document);
    m_orders.erase(document);
    m_filters.erase(document);
    m_restoredStates.erase(document);
    RemoveLayerDocContext(document);
}
