// Blocks and what is drawn: block table, block references, viewports, entities of every kind.
#pragma once

#include "hxdbsymtb.h"
#include "hxge.h"

/// Anything that is drawn. Kinds that the host does not model further are of this class.
class HXSDK_API HxDbEntity : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbEntity)
    /// A new entity of a record type such as "LINE"; its values come in by hxdbEntMod or hxdbEntMakeX.
    explicit HxDbEntity(const wchar_t* dxfName);

    HxDbObjectId layerId() const;
    CStdStr<wchar_t> layer() const;
    /// eWrongClass for anything but a layer of this drawing.
    Hx::ErrorStatus setLayer(HxDbObjectId layer);
    Hx::ErrorStatus setLayer(const wchar_t* name);
    HxCmColor color() const;
    /// eNotApplicable for a true colour in a drawing older than R2004.
    Hx::ErrorStatus setColor(const HxCmColor& color);
    /// Null id means by layer.
    HxDbObjectId linetypeId() const;
    HxDb::LineWeight lineWeight() const;
    /// Group 60.
    bool isVisible() const;
    /// The block record that it is in; its owner but for sub-entities (vertices, attributes).
    HxDbObjectId blockId() const;

protected:
    explicit HxDbEntity(HxDbObjectImp* imp) : HxDbObject(imp) {}
};

/// INSERT: a block drawn at a place.
class HXSDK_API HxDbBlockReference : public HxDbEntity {
public:
    HX_DECLARE_MEMBERS(HxDbBlockReference)
    HxDbBlockReference();
    /// Null id when the drawing lacks the block.
    HxDbObjectId blockTableRecord() const;
    Hx::ErrorStatus setBlockTableRecord(HxDbObjectId block);
    HxGePoint3d position() const;
    Hx::ErrorStatus setPosition(const HxGePoint3d& position);
};

/// VIEWPORT: a window on paper through which model space is seen.
class HXSDK_API HxDbViewport : public HxDbEntity {
public:
    HX_DECLARE_MEMBERS(HxDbViewport)
    HxDbViewport();
    /// The number that CVPORT takes: 1 for the paper's own overall viewport, 2 and up for floating ones; -1
    /// when it is off or of another layout.
    std::int16_t number() const;
    bool isOn() const;
    /// Model seen on paper: units of paper per unit of model.
    double customScale() const;

    bool isLayerFrozenInViewport(HxDbObjectId layer) const;
    /// Freezes the layers in this viewport only; those that are frozen already stay. eInvalidInput for an id
    /// that is no layer of this drawing, eNotApplicable in a drawing older than R13 whose viewport has no
    /// place for them; nothing is changed then.
    Hx::ErrorStatus freezeLayersInViewport(const HxArray<HxDbObjectId>& layers);
    Hx::ErrorStatus thawLayersInViewport(const HxArray<HxDbObjectId>& layers);
    Hx::ErrorStatus thawAllLayersInViewport();
    void getFrozenLayers(HxArray<HxDbObjectId>& layers) const;
};

/// Steps through the entities of a block in drawing order. Made by newIterator; the caller deletes it.
class HXSDK_API HxDbBlockTableRecordIterator {
public:
    void start(bool atBeginning = true, bool skipErased = true);
    bool done() const;
    void step(bool forward = true, bool skipErased = true);
    Hx::ErrorStatus getEntityId(HxDbObjectId& id) const;
    Hx::ErrorStatus getEntity(HxDbEntity*& entity, HxDb::OpenMode mode, bool openErased = false) const;

private:
    friend class HxDbBlockTableRecord;
    HxDbBlockTableRecordIterator(HxDbStub* block, bool atBeginning, bool skipErased);
    HxDbStub* m_block;
    std::ptrdiff_t m_at = 0;
};

/// A block: model space, a paper space, or a definition that block references draw.
class HXSDK_API HxDbBlockTableRecord : public HxDbSymbolTableRecord {
public:
    HX_DECLARE_MEMBERS(HxDbBlockTableRecord)
    HxDbBlockTableRecord();

    Hx::ErrorStatus newIterator(HxDbBlockTableRecordIterator*& iterator, bool atBeginning = true,
                                bool skipErased = true) const;
    /// Adds an entity made with new; the block must be open for write. The entity stays open for write: close
    /// it. It goes on the current layer when it has none.
    Hx::ErrorStatus appendHxDbEntity(HxDbObjectId& id, HxDbEntity* entity);

    bool isLayout() const;
    /// Null id for a block that is no layout.
    HxDbObjectId getLayoutId() const;
    HxGePoint3d origin() const;
    bool isFromExternalReference() const;
    bool isFromOverlayReference() const;
    bool isUnloaded() const;
    /// The external reference's path as the drawing stores it; empty for other blocks.
    CStdStr<wchar_t> pathName() const;
    /// The drawing that the external reference was loaded from; null when it is not loaded or no external
    /// reference.
    HxDbDatabase* xrefDatabase() const;
};

class HXSDK_API HxDbBlockTable : public HxDbSymbolTable {
public:
    HX_DECLARE_MEMBERS(HxDbBlockTable)
    HxDbBlockTable();
    using HxDbSymbolTable::getAt;
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbBlockTableRecord*& record, HxDb::OpenMode mode,
                          bool openErased = false) const;
};

/// The viewport that commands work in: in a layout the floating viewport or, with the paper current, the
/// paper's overall one; null id in model space.
HXSDK_API HxDbObjectId hxedGetCurViewportObjectId();
/// The same for a drawing.
HXSDK_API HxDbObjectId hxdbGetCurVportId(const HxDbDatabase* database);
