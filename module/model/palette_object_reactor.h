// Follows the layer table, its layers and the viewports for the layer palette.
#pragma once

#include "hxdbobject.h"

#include <unordered_set>

class KvLayerDocContext;

/// One for all drawings. It goes on hanging on viewports and filter dictionaries when a document is let go;
/// its end takes it off those that are left.
class KvLayerPaletteObjectReactor : public HxDbObjectReactor {
public:
    explicit KvLayerPaletteObjectReactor(KvLayerDocContext* context) : m_context(context) {}
    ~KvLayerPaletteObjectReactor() override;
    KvLayerPaletteObjectReactor(const KvLayerPaletteObjectReactor&) = delete;
    KvLayerPaletteObjectReactor& operator=(const KvLayerPaletteObjectReactor&) = delete;

    KvLayerDocContext* context() const { return m_context; }
    /// Objects in any open state.
    void follow(const HxDbObject* object);
    void leave(const HxDbObject* object);

    void openedForModify(const HxDbObject* object) override;
    void modified(const HxDbObject* object) override;
    void objectClosed(HxDbObjectId id) override;
    void goodbye(const HxDbObject* object) override;

private:
    KvLayerDocContext* m_context;
    std::unordered_set<HxDbObjectId> m_strays;  ///< followed and neither layer table nor layer
};
