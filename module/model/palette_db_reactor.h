// Follows what comes to and goes from drawings for the layer palette.
#pragma once

#include "hxdbdatabase.h"

class KvLayerDocContext;

/// One for all drawings.
class KvLayerPaletteDbReactor : public HxDbDatabaseReactor {
public:
    explicit KvLayerPaletteDbReactor(KvLayerDocContext* context) : m_context(context) {}

    void objectAppended(const HxDbDatabase* database, const HxDbObject* object) override;
    void objectUnAppended(const HxDbDatabase* database, const HxDbObject* object) override;
    void objectReAppended(const HxDbDatabase* database, const HxDbObject* object) override;
    /// Filters that are stored, and filters that undo brings back; objects that come to another layer.
    void objectModified(const HxDbDatabase* database, const HxDbObject* object) override;
    void objectErased(const HxDbDatabase* database, const HxDbObject* object, bool erased) override;

private:
    KvLayerDocContext* m_context;
};
