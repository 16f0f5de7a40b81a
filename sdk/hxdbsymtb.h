// Symbol tables and their records: layers, linetypes, text styles, blocks and the rest.
#pragma once

#include "hxcm.h"
#include "hxdbobject.h"

namespace HxDb {

/// The host's lineweights by their place, 0 (the thinnest, 0.00 mm) to 23 (2.11 mm). The special values -1 to
/// -3 stand for themselves; any other place gives the default.
HXSDK_API LineWeight lineWeightByIndex(signed char index);

}  // namespace HxDb

/// A named record of a symbol table.
class HXSDK_API HxDbSymbolTableRecord : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbSymbolTableRecord)
    /// The name; for a record of an external reference "XREF|NAME".
    Hx::ErrorStatus getName(CStdStr<wchar_t>& name) const;
    /// The same without a copy: valid until the record changes or is closed.
    const wchar_t* name() const;
    /// eInvalidInput for a name that a symbol cannot have, eDuplicateRecordName when another record of the
    /// table has it, eRefused for what must keep its name (layer "0", records of an external reference).
    Hx::ErrorStatus setName(const wchar_t* name);
    /// It belongs to an external reference.
    bool isDependent() const;
    /// Dependent, and the external reference is loaded.
    bool isResolved() const;

protected:
    explicit HxDbSymbolTableRecord(HxDbObjectImp* imp) : HxDbObject(imp) {}
};

/// Steps through the records of a table in drawing order. Made by HxDbSymbolTable::newIterator; the caller
/// deletes it.
class HXSDK_API HxDbSymbolTableIterator {
public:
    void start(bool atBeginning = true, bool skipErased = true);
    bool done() const;
    void step(bool forward = true, bool skipErased = true);
    /// Null id when done.
    HxDbObjectId getRecordId() const;
    Hx::ErrorStatus getRecordId(HxDbObjectId& id) const;
    /// Opens the record: statuses of hxdbOpenObject.
    Hx::ErrorStatus getRecord(HxDbSymbolTableRecord*& record, HxDb::OpenMode mode,
                              bool openErased = false) const;

private:
    friend class HxDbSymbolTable;
    HxDbSymbolTableIterator(HxDbStub* table, bool atBeginning, bool skipErased);
    HxDbStub* m_table;
    std::ptrdiff_t m_at = 0;
};

class HXSDK_API HxDbSymbolTable : public HxDbObject {
public:
    HX_DECLARE_MEMBERS(HxDbSymbolTable)
    /// The id of the record of that name (case ignored). eKeyNotFound; eWasErased when only an erased one has
    /// it and `getErased` is false.
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbObjectId& id, bool getErased = false) const;
    /// Opens the record: besides the above the statuses of hxdbOpenObject.
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbSymbolTableRecord*& record, HxDb::OpenMode mode,
                          bool openErased = false) const;
    bool has(const wchar_t* name) const;
    bool has(HxDbObjectId id) const;
    /// Number of records that are not erased.
    std::size_t numRecords() const;
    Hx::ErrorStatus newIterator(HxDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                bool skipErased = true) const;
    /// Adds a record made with new; the table must be open for write. The database then owns the record,
    /// which stays open for write: close it. eDuplicateRecordName, eInvalidInput for a bad name or the wrong
    /// class of record.
    Hx::ErrorStatus add(HxDbObjectId& id, HxDbSymbolTableRecord* record);
    Hx::ErrorStatus add(HxDbSymbolTableRecord* record);

protected:
    explicit HxDbSymbolTable(HxDbObjectImp* imp) : HxDbObject(imp) {}
};

/// A layer: its properties and, per viewport, what overrides them.
///
/// The getters that take a viewport give the value in effect there and tell whether it is an override; a null
/// viewport id means none. Viewport ids are of HxDbViewport objects; setting an override fails with
/// eInvalidInput for others.
class HXSDK_API HxDbLayerTableRecord : public HxDbSymbolTableRecord {
public:
    HX_DECLARE_MEMBERS(HxDbLayerTableRecord)
    /// On, thawed, unlocked, white, "Continuous" (when it is added), plotting.
    HxDbLayerTableRecord();

    bool isOff() const;
    void setIsOff(bool off);
    bool isFrozen() const;
    /// eRefused for the current layer of the drawing. eOk also when nothing changes.
    Hx::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const;
    void setIsLocked(bool locked);
    /// Frozen in viewports that are made from now on.
    bool VPDFLT() const;
    void setVPDFLT(bool frozen);
    bool isPlottable() const;
    /// eRefused for layer "DEFPOINTS", which never plots.
    Hx::ErrorStatus setIsPlottable(bool plottable);

    HxCmColor color() const;
    Hx::ErrorStatus setColor(const HxCmColor& color);
    HxDbObjectId linetypeObjectId() const;
    /// eWrongClass for anything but a linetype of this drawing.
    Hx::ErrorStatus setLinetypeObjectId(HxDbObjectId linetype);
    HxDb::LineWeight lineWeight() const;
    /// eInvalidInput for a value that is not one of the host's lineweights.
    Hx::ErrorStatus setLineWeight(HxDb::LineWeight weight);
    HxCmTransparency transparency() const;
    Hx::ErrorStatus setTransparency(const HxCmTransparency& transparency);
    /// The name of the plot style: with colour-dependent plot styles "Color_7" and the like.
    CStdStr<wchar_t> plotStyleName() const;
    HxDbObjectId plotStyleNameId() const;
    /// eKeyNotFound for a style that the drawing does not have, eNotApplicable with colour-dependent plot
    /// styles.
    Hx::ErrorStatus setPlotStyleName(const wchar_t* name);
    Hx::ErrorStatus setPlotStyleName(HxDbObjectId style);
    CStdStr<wchar_t> description() const;
    Hx::ErrorStatus setDescription(const wchar_t* description);

    /// Something was on it when HxDbLayerTable::generateUsageData ran last, or setIsInUse said so since; also
    /// for the current layer, "0" and "DEFPOINTS", whatever is on them.
    bool isInUse() const;
    /// Sets the mark until generateUsageData runs next. It is not part of the drawing: no undo, no
    /// notifications, and the record may be open in any mode or in no database yet.
    void setIsInUse(bool inUse);

    HxCmColor color(HxDbObjectId viewport, bool& isOverride) const;
    Hx::ErrorStatus setColor(const HxCmColor& color, HxDbObjectId viewport);
    HxDbObjectId linetypeObjectId(HxDbObjectId viewport, bool& isOverride) const;
    Hx::ErrorStatus setLinetypeObjectId(HxDbObjectId linetype, HxDbObjectId viewport);
    HxDb::LineWeight lineWeight(HxDbObjectId viewport, bool& isOverride) const;
    Hx::ErrorStatus setLineWeight(HxDb::LineWeight weight, HxDbObjectId viewport);
    HxCmTransparency transparency(HxDbObjectId viewport, bool& isOverride) const;
    Hx::ErrorStatus setTransparency(const HxCmTransparency& transparency, HxDbObjectId viewport);
    CStdStr<wchar_t> plotStyleName(HxDbObjectId viewport, bool& isOverride) const;
    Hx::ErrorStatus setPlotStyleName(HxDbObjectId style, HxDbObjectId viewport);
    Hx::ErrorStatus removeColorOverride(HxDbObjectId viewport);
    Hx::ErrorStatus removeLinetypeOverride(HxDbObjectId viewport);
    Hx::ErrorStatus removeLineWeightOverride(HxDbObjectId viewport);
    Hx::ErrorStatus removeTransparencyOverride(HxDbObjectId viewport);
    Hx::ErrorStatus removePlotStyleOverride(HxDbObjectId viewport);
    /// Any override in the viewport; frozen in it is none.
    bool hasOverrides(HxDbObjectId viewport) const;
    bool hasAnyOverrides() const;
    Hx::ErrorStatus removeViewportOverrides(HxDbObjectId viewport);
    Hx::ErrorStatus removeAllOverrides();
};

class HXSDK_API HxDbLayerTable : public HxDbSymbolTable {
public:
    HX_DECLARE_MEMBERS(HxDbLayerTable)
    HxDbLayerTable();
    /// Finds out which layers have objects on them, in all spaces and blocks; read by isInUse.
    void generateUsageData();
    using HxDbSymbolTable::getAt;
    Hx::ErrorStatus getAt(const wchar_t* name, HxDbLayerTableRecord*& record, HxDb::OpenMode mode,
                          bool openErased = false) const;
};

class HXSDK_API HxDbLinetypeTableRecord : public HxDbSymbolTableRecord {
public:
    HX_DECLARE_MEMBERS(HxDbLinetypeTableRecord)
    HxDbLinetypeTableRecord();
    CStdStr<wchar_t> comments() const;
    /// Length of one repetition in drawing units; 0 for a solid line.
    double patternLength() const;
    int numDashes() const;
    /// Positive a dash, negative a gap, 0 a dot.
    double dashLengthAt(int index) const;
    Hx::ErrorStatus setPattern(const wchar_t* comments, const HxArray<double>& dashes);
};

class HXSDK_API HxDbLinetypeTable : public HxDbSymbolTable {
public:
    HX_DECLARE_MEMBERS(HxDbLinetypeTable)
    HxDbLinetypeTable();
};

/// Records of tables that the host keeps without modelling more than the name: text styles, dimension styles,
/// views, coordinate systems, viewport configurations, applications.
class HXSDK_API HxDbOtherTableRecord : public HxDbSymbolTableRecord {
public:
    HX_DECLARE_MEMBERS(HxDbOtherTableRecord)
    /// `dxfName` is that of the table: "STYLE", "APPID" ...
    explicit HxDbOtherTableRecord(const wchar_t* dxfName);
};

class HXSDK_API HxDbOtherTable : public HxDbSymbolTable {
public:
    HX_DECLARE_MEMBERS(HxDbOtherTable)
    explicit HxDbOtherTable(const wchar_t* dxfName);
};
