// The layers and layer filters that a layer manager shows, and the bracket in which it changes them.
#pragma once

#include "layer_data.h"

#include "hxdbentity.h"
#include "hxdbtransaction.h"
#include "hxlyfilter.h"

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

/// The model of one layer manager: in palette mode every change is made on records that are opened and closed
/// at once; in dialog mode all changes lie in one transaction, which Initialize begins and Commit or Cancel
/// ends. It works on the current document, whichever that is. Nothing is shown to the user here: results are
/// statuses.
///
/// It owns the entries and the filters; pointers to them are good until they are reloaded, cleared or
/// removed.
class KvLayerPropManager {
public:
    KvLayerPropManager(HxDbDatabase* database, bool paletteMode);
    /// Aborts a transaction that is still open.
    ~KvLayerPropManager();
    KvLayerPropManager(const KvLayerPropManager&) = delete;
    KvLayerPropManager& operator=(const KvLayerPropManager&) = delete;

    /// Dialog mode: begins the transaction, unless it is open. Nothing without a document.
    void Initialize();
    void LoadSettings() {}
    void SaveSettings() {}
    bool isPaletteMode() const { return m_isPalette; }
    /// The current document's; null when there is none.
    HxDbDatabase* GetDatabase();
    /// The one that the entries and filters are of; null when there are none. Another than the current
    /// document's between a switch of documents and the next reload.
    HxDbDatabase* listedDatabase() const { return m_listed; }

    // ---- filters ----

    /// Reads the tree that the drawing holds; the one before is deleted. Without a selected filter the root
    /// is current.
    void ReloadFilters();
    HxLyLayerFilter* GetRootFilter() const { return m_root.get(); }
    HxLyLayerFilter* GetCurrentFilter() const { return m_current; }
    /// The current one before the last SetCurrentFilter; null when there was none.
    HxLyLayerFilter* GetPreviousFilter() const { return m_previous; }
    /// Null and the current filter itself are ignored.
    void SetCurrentFilter(HxLyLayerFilter* filter);
    /// Below the root, without regard to case; null when there is none of that name.
    HxLyLayerFilter* FindFilter(const wchar_t* name) const;
    /// The prefix and the first number from 1 that make a name which no filter has.
    CStdStr<wchar_t> GetNextFilterName(const wchar_t* prefix) const;
    /// Stores the tree; with `modify` only which filter is current (ModifyFilters). eNoDatabase, statuses of
    /// HxLyLayerFilterManager::setFilters.
    Hx::ErrorStatus SaveLayerFilters(bool modify);
    /// Records in the drawing which filter is current: marks on the filters' records, the name in the layer
    /// table's extended data. eInvalidInput for null filters, eNoDatabase, eRefused when a record is not
    /// written, statuses of hxdbOpenObject and of storing the tree, which happens in drawings without records
    /// of filters.
    static Hx::ErrorStatus ModifyFilters(HxDbDatabase* database, HxLyLayerFilter* root,
                                         HxLyLayerFilter* current, HxLyLayerFilter* previous);

    // ---- layers ----

    /// Reads the layer table anew, in its order.
    void ReloadLayers();
    HxArray<KvLayerData*> GetAllLayers() const { return m_layers; }
    const HxArray<KvLayerData*>& GetAllLayersRef() const { return m_layers; }
    /// Those that the filter accepts, of all or of a list, in its order; none for null. With an `invert`
    /// other than 0 those that it does not accept. Erased layers are left out.
    HxArray<KvLayerData*> GetFilteredLayers(const HxLyLayerFilter* filter, int invert = 0) const;
    HxArray<KvLayerData*> GetFilteredLayers(const HxArray<KvLayerData*>& layers,
                                            const HxLyLayerFilter* filter, int invert = 0) const;

    /// The entry of a layer; null when it is not listed.
    KvLayerData* FindLayer(HxDbObjectId layer) const;
    /// Entries that may be used, of layers that are not erased.
    int validLayerCount() const;

    /// Makes a layer with default properties and puts it at the end of the list; null for the next free
    /// default name. False without a drawing, when the layer table or the name cannot be had.
    bool AddNewLayer(const wchar_t* name);
    /// Erases a layer and takes it out of the list. eNoDatabase; eRefused for layer "0", the current one,
    /// DEFPOINTS, layers in use and those of external references; eNotInDatabase for another drawing's;
    /// statuses of hxdbOpenObject and of erasing. Usage is as of the last procLayerUsageData.
    Hx::ErrorStatus RemoveLayer(HxDbObjectId id);
    /// RemoveLayer for many; `goesOn` is asked before each (empty: always). How many were erased.
    int RemoveLayers(const std::vector<HxDbObjectId>& ids, const std::function<bool()>& goesOn = {});

    /// Takes over an entry made with new.
    void AddLayerData(KvLayerData* data);
    /// Makes an entry; false without a drawing, for a layer that is listed already, of another drawing, or
    /// never shown.
    bool AddToLayers(const HxDbLayerTableRecord* record);
    /// Takes an entry out and deletes it; nothing for one that is not listed.
    void RemoveLayerData(KvLayerData* data);
    void RemoveFromLayers(const HxDbLayerTableRecord* record);
    void ClearLayers();
    /// Layers and filters.
    void ClearData();
    /// Whether the record's entry may be used; nothing when it has none.
    void setMgrLayerDataValid(const HxDbLayerTableRecord* record, bool valid);

    /// The status of HxDbDatabase::setClayer; eNoDatabase.
    Hx::ErrorStatus SetCurrentLayer(HxDbObjectId id);
    /// The current viewport, open for read; null when there is none. In palette mode the caller closes it, in
    /// dialog mode it is the transaction's.
    HxDbViewport* GetViewport();
    /// Finds out which layers are in use. In dialog mode once, and then not if SHOWLAYERUSAGE is set: the
    /// host has found out already.
    void procLayerUsageData();
    void setFirstUsage(bool computed) { m_isUsageComputed = computed; }

    // ---- the dialog's transaction; both act only while it is the top one ----

    /// Stores the filters and keeps the changes; with `reopen` begins anew with fresh filters and layers.
    /// eNoDatabase, eNoActiveTransactions, eNotTopTransaction; else what storing the filters gave, the
    /// changes being kept anyway.
    Hx::ErrorStatus Commit(bool reopen);
    /// Takes the changes back.
    void Cancel();

private:
    class TableForChange;

    bool ownsTopTransaction() const;
    void forgetTransaction();
    void forgetDeletedFilters();
    template <class T>
    T* got(HxDbObjectId id, HxDb::OpenMode mode, Hx::ErrorStatus* status = nullptr) const;
    void indexEntries() const;
    void listRecord(const HxDbLayerTableRecord* record);
    KvLayerData* entryOf(const HxDbLayerTableRecord* record) const;
    bool hasErasedEntryNamed(const wchar_t* name) const;
    CStdStr<wchar_t> nextLayerName(const HxDbLayerTable& table) const;
    Hx::ErrorStatus eraseLayer(HxDbObjectId id);
    static Hx::ErrorStatus eraseRecord(HxDbLayerTableRecord& record);

    bool m_isPalette;
    bool m_isUsageComputed = false;
    HxDbDatabase* m_database;
    HxDbDatabase* m_listed = nullptr;
    HxTransaction* m_transaction = nullptr;  ///< dialog mode; the transaction manager's
    HxDbLayerTable* m_layerTable = nullptr;  ///< dialog mode: held by the transaction
    HxDbViewport* m_viewport = nullptr;      ///< dialog mode: held by the transaction
    HxArray<KvLayerData*> m_layers;
    mutable std::unordered_map<HxDbObjectId, KvLayerData*> m_entries;  ///< the same by id, while m_isIndexed
    mutable bool m_isIndexed = false;
    std::unique_ptr<HxLyLayerFilter> m_root;
    HxLyLayerFilter* m_current = nullptr;
    HxLyLayerFilter* m_previous = nullptr;
};
