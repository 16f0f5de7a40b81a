// The reactors that follow drawings for the layer palette, and hanging them on documents.
#pragma once

#include "palette_db_reactor.h"
#include "palette_object_reactor.h"

#include "hxdoc.h"

/// One for all documents. Whoever made it lets go of all documents before its end.
class KvLayerDocContext {
public:
    KvLayerPaletteObjectReactor* GetLayerPaletteObjectReactor() { return &m_objectReactor; }
    KvLayerPaletteDbReactor* GetLayerPaletteDbReactor() { return &m_dbReactor; }

    /// Hangs the reactors on a document's database, its layer table, its layers and its current viewport;
    /// nothing without a database.
    void AppendLayerReactor(HxApDocument* document);
    /// Takes them off again, but for viewports: those keep theirs until the drawing goes.
    void RemoveLayerReactor(HxApDocument* document);
    /// Follows a drawing's current viewport, if it has one.
    void followViewport(const HxDbDatabase* database);

private:
    KvLayerPaletteObjectReactor m_objectReactor{this};
    KvLayerPaletteDbReactor m_dbReactor{this};
};
