// A drawing: its tables and dictionaries, its header values, its notifications, reading and saving.
#pragma once

#include "hxcm.h"
#include "hxdbobject.h"

class HxDbBlockTable;
class HxDbDictionaryWithDefault;
class HxDbLayerStateManager;
class HxDbLayerTable;
class HxDbTransactionManager;
class HxLyLayerFilterManager;

/// Receives what happens to the objects of a database and to its header values. Same rules as
/// HxDbObjectReactor.
class HXSDK_API HxDbDatabaseReactor : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbDatabaseReactor)
    virtual void objectAppended(const HxDbDatabase*, const HxDbObject*) {}
    /// The creation was undone, or the transaction that made the object was aborted.
    virtual void objectUnAppended(const HxDbDatabase*, const HxDbObject*) {}
    virtual void objectReAppended(const HxDbDatabase*, const HxDbObject*) {}
    virtual void objectOpenedForModify(const HxDbDatabase*, const HxDbObject*) {}
    virtual void objectModified(const HxDbDatabase*, const HxDbObject*) {}
    virtual void objectErased(const HxDbDatabase*, const HxDbObject*, bool /*erased*/) {}
    /// `name` without the "$" of the file.
    virtual void headerSysVarWillChange(const HxDbDatabase*, const wchar_t* /*name*/) {}
    virtual void headerSysVarChanged(const HxDbDatabase*, const wchar_t* /*name*/, bool /*success*/) {}
    virtual void goodbye(const HxDbDatabase*) {}
};

/// A drawing in memory. The database owns all its objects.
class HXSDK_API HxDbDatabase : public HxRxObject {
public:
    HX_DECLARE_MEMBERS(HxDbDatabase)
    /// With `buildDefault` an empty drawing (layer "0", the standard linetypes, model space and one layout),
    /// otherwise nothing: then readDwgFile must follow.
    explicit HxDbDatabase(bool buildDefault = true);
    ~HxDbDatabase() override;
    HxDbDatabase(const HxDbDatabase&) = delete;
    HxDbDatabase& operator=(const HxDbDatabase&) = delete;

    /// The file that it was read from or saved to last; empty for a drawing that has none.
    const wchar_t* getFilename() const;
    /// "AC1027" and the like, as the file names it.
    const wchar_t* version() const;

    HxDbObjectId layerTableId() const;
    HxDbObjectId linetypeTableId() const;
    HxDbObjectId blockTableId() const;
    HxDbObjectId regAppTableId() const;
    HxDbObjectId textStyleTableId() const;
    HxDbObjectId dimStyleTableId() const;
    HxDbObjectId viewportTableId() const;
    HxDbObjectId viewTableId() const;
    HxDbObjectId UCSTableId() const;
    /// The named-object dictionary. Null id in drawings older than R13, which have no dictionaries.
    HxDbObjectId namedObjectsDictionaryId() const;
    /// Open the table, as hxdbOpenObject does.
    Hx::ErrorStatus getLayerTable(HxDbLayerTable*& table, HxDb::OpenMode mode);
    Hx::ErrorStatus getBlockTable(HxDbBlockTable*& table, HxDb::OpenMode mode);

    HxDbObjectId layerZero() const;
    HxDbObjectId continuousLinetype() const;
    HxDbObjectId modelSpaceId() const;
    /// The block record of the active paper space; null id when the drawing has none.
    HxDbObjectId paperSpaceId() const;
    /// "ACAD_LAYOUT"; null id when there is none.
    HxDbObjectId getLayoutDictionaryId() const;
    /// "ACAD_PLOTSTYLENAME"; null id when there is none.
    HxDbObjectId getPlotStyleNameDictionaryId() const;
    /// Opens it, as hxdbOpenObject does; eNullObjectId when there is none.
    Hx::ErrorStatus getPlotStyleNameDictionary(HxDbDictionaryWithDefault*& dictionary, HxDb::OpenMode mode);

    /// The current layer.
    HxDbObjectId clayer() const;
    /// eNullObjectId, eWrongClass for no layer of this database, eWasErased, eRefused for a layer of an
    /// external reference or a frozen one.
    Hx::ErrorStatus setClayer(HxDbObjectId layer);
    /// True in model space.
    bool tilemode() const;
    /// eNotApplicable for paper space in a drawing without one.
    Hx::ErrorStatus setTilemode(bool modelSpace);
    /// The number of the current viewport in paper space: 1 for the paper itself, else a floating viewport's.
    std::int16_t cvport() const;
    Hx::ErrorStatus setCvport(std::int16_t number);
    /// True when plot styles depend on colours; false when they are named.
    bool plotStyleMode() const;

    /// eUnknownHandle when no object ever had the handle. `id` may be of an erased object.
    Hx::ErrorStatus getHxDbObjectId(HxDbObjectId& id, bool createIfNotFound, const HxDbHandle& handle) const;

    /// Never null; belongs to the database.
    HxDbTransactionManager* transactionManager() const;
    /// Never null; belongs to the database.
    HxLyLayerFilterManager* layerFilterManager() const;
    /// Never null; belongs to the database.
    HxDbLayerStateManager* getLayerStateManager() const;

    /// Reads a drawing file into an empty database (made with buildDefault false). eFileNotFound,
    /// eFileAccessErr, eBadDxfSequence for a damaged file, eFilerError for one that cannot be read;
    /// readError() tells where and why; eCancelled when the user gave up the reading.
    Hx::ErrorStatus readDwgFile(const wchar_t* path);
    /// Saves in the version that was read, whole or not at all; the previous file stays beside it as ".bak".
    /// eFileAccessErr, readError() tells why; eCancelled when the user gave it up, the file is as it was
    /// then.
    Hx::ErrorStatus saveAs(const wchar_t* path);
    /// What the last readDwgFile or saveAs of this database ran into; empty after success.
    const wchar_t* readError() const;
    /// True when something was changed since it was read or saved.
    bool isModified() const;

    void addReactor(HxDbDatabaseReactor* reactor) const;
    void removeReactor(HxDbDatabaseReactor* reactor) const;
    bool hasReactor(const HxDbDatabaseReactor* reactor) const;

    class Imp;
    Imp* imp() const { return m_imp; }  ///< the host's own side; of no use to modules

private:
    Imp* m_imp;
};

/// The database that commands work on: the current document's, unless the host has set another for a while;
/// null when there is none.
HXSDK_API HxDbDatabase* hxdbWorkingDatabase();
HXSDK_API void hxdbSetWorkingDatabase(HxDbDatabase* database);

/// Makes a database the working one while it lives. Reading and saving files do not need it and must not
/// happen meanwhile: they may wait for the user.
class HxDbWorkingDatabaseScope {
public:
    explicit HxDbWorkingDatabaseScope(HxDbDatabase* database) : m_before(hxdbWorkingDatabase()) {
        hxdbSetWorkingDatabase(database);
    }
    ~HxDbWorkingDatabaseScope() { hxdbSetWorkingDatabase(m_before); }
    HxDbWorkingDatabaseScope(const HxDbWorkingDatabaseScope&) = delete;
    HxDbWorkingDatabaseScope& operator=(const HxDbWorkingDatabaseScope&) = delete;

private:
    HxDbDatabase* m_before;
};
