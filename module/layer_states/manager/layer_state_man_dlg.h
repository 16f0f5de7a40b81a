// The layer states manager: the named operations on a drawing's states.
#pragma once

#include "layer_states/capture/drawing_layers.h"
#include "layer_states/capture/layer_lists.h"
#include "layer_states/compare/state_differences.h"
#include "layer_states/file/layer_state_questions.h"
#include "layer_states/records/layer_state_map.h"
#include "layer_states/records/vp_layer_info.h"
#include "layer_states/restore/layer_restore.h"
#include "layer_states/save/save_state.h"
#include "layer_states/storage/layer_state_writer.h"
#include "layer_states/storage/older_states.h"

#include <set>

class QWidget;

/// Works on copies: the drawing's states are read into the state map, and what was made of them is brought
/// back by BuildLayerStateExtensionDictionary. Layers are changed by the restore alone. Without a drawing
/// every operation fails.
class CKvLayerStateManDlg {
public:
    explicit CKvLayerStateManDlg(HxDbDatabase* database = hxdbWorkingDatabase()) : m_database(database) {}
    CKvLayerStateManDlg(const CKvLayerStateManDlg&) = delete;
    CKvLayerStateManDlg& operator=(const CKvLayerStateManDlg&) = delete;

    HxDbDatabase* database() const { return m_database; }
    KvLayerStateMap& states() { return m_states; }

    // ---- the window

    /// Reads the states of the drawing and of its references.
    void InitCreateLayerState();
    /// Shows the states in the manager's window until the user closes it; IDCANCEL, or kRestored when a state
    /// was restored. Records of states are not written.
    int DoModal(QWidget* parent = nullptr);
    static constexpr int kRestored = 3061;

    // ---- where the user is; told by the command

    void SetIsModelSpace(int isModelSpace) { m_isModelSpace = isModelSpace; }
    int GetIsModelSpace() const { return m_isModelSpace; }
    void SetCurrentLayerName(const CStdStr<wchar_t>& name) { m_currentLayerName = name; }
    const CStdStr<wchar_t>& GetCurrentLayerName() const { return m_currentLayerName; }
    /// Names compare as the host compares names.
    bool IsCurrentLayerName(const CStdStr<wchar_t>& name) const;

    // ---- states of the drawing, of its references and of earlier versions

    /// The layer-states dictionary, made when it is missing; null id without a drawing, and in one that has
    /// no dictionaries.
    static HxDbObjectId HxLayerStateIsExist(HxDbDatabase* database);
    void LoadHxLayerState(HxDbDatabase* database);
    /// Nothing while states of references are not to be listed.
    void LoadXrefLayerState(HxDbDatabase* database);
    /// Takes the states of references out of the list.
    void removeXrefLayerStates();
    /// The states of one reference's drawing.
    void ReadXrefLayerState(HxDbDatabase* reference, const CStdStr<wchar_t>& xrefName);
    /// Adds the states of earlier versions; the next write makes records of them.
    void ConvertLMANLayerstate(std::vector<KvOlderState> older);

    /// Brings the drawing's dictionary in line with the state map, in one undo step: 1, also when there was
    /// nothing to do; 0 when there is no dictionary or a record could not be written.
    int BuildLayerStateExtensionDictionary();
    /// What the last write did.
    const KvLayerStatesWritten& written() const { return m_written; }

    // ---- making, changing, removing states

    /// Takes both over. False for null.
    bool AddLayerState(CKvLayerState* state, KvLayerStateInfoArray* entries);
    /// Gives `old` the header and entries of `replacement`, which it takes over; `old` keeps its place. False
    /// when `old` is not in the map.
    bool OverwriteLayerState(CKvLayerState* old, CKvLayerState* replacement, KvLayerStateInfoArray* entries);
    /// Saves all layers under a name; a state of that name is overwritten. Null for a name that a state
    /// cannot have, and for one that cannot be saved over. With a null name the user chooses both in a
    /// dialog; null on Cancel.
    CKvLayerState* CmdNew(const wchar_t* name, const wchar_t* description, QWidget* parent = nullptr);
    /// Captures all layers again; name, description and mask stay.
    bool SaveasLayerState(CKvLayerState* state);
    /// Removes a state; one of an earlier version also from the layers, at the next write.
    bool removeLayerState(CKvLayerState* state);
    /// What a state is called from now on; also the one that was restored last.
    void renameLayerState(CKvLayerState& state, const CStdStr<wchar_t>& name);

    // ---- files and other drawings; what the user must decide or hear goes to the questions

    void setQuestions(LayerStateQuestions* questions) { m_questions = questions; }
    /// Writes a state into a layer-state file. False when it is not in the map or could not be written.
    bool ExportLayerStateFile(const CStdStr<wchar_t>& path, CKvLayerState* state);
    /// Reads a layer-state file into the map: 1 when a state was added or replaced.
    int ImportLayerStateFile(const CStdStr<wchar_t>& path);
    /// Which of another drawing's states are to be copied; false to copy none.
    using Chooser = std::function<bool(KvLayerStateMap& theirs, std::vector<CKvLayerState*>& chosen)>;
    /// Copies states out of a drawing or template that is not open. Returns how many.
    int ImportDrawingFile(const CStdStr<wchar_t>& path, const Chooser& choose);
    /// Copies states of another map. Returns how many.
    int ImportToLayerState(const std::vector<CKvLayerState*>& chosen, const KvLayerStateMap& theirs);
    /// The state that the last import brought; null when it brought none.
    CKvLayerState* imported() const { return m_imported; }

    // ---- restoring

    /// Restores a state by its own mask, in one undo step; `viewport` is where layers are frozen (null: the
    /// current one). False for a name that is none, and for a state without entries.
    bool CmdRestore(const wchar_t* name, HxDbObjectId viewport);
    /// The same with the mask that the user chose, which the state keeps.
    bool restoreLayerState(CKvLayerState& state, std::int32_t mask, HxDbObjectId viewport);
    const KvRestoreResult& restored() const { return m_restored; }
    int isRestore() const { return m_bIsRestore; }
    /// The state that was restored last; empty for none.
    const CStdStr<wchar_t>& restoredName() const { return m_restoredName; }
    void setRestoredName(const CStdStr<wchar_t>& name) { m_restoredName = name; }

    /// Whether the drawing is as the state has it: 1 or 0, which the state keeps. `layers` (null: not wanted)
    /// becomes how many layers the state names.
    int IsSameAsDWG(CKvLayerState* state, int* layers = nullptr);
    /// What a restore with a mask would change.
    KvStateDifferences differencesOf(const CKvLayerState& state, std::int32_t mask);
    int FindLayerStateSameAsDwg(const CStdStr<wchar_t>& name);
    /// Layers were changed by somebody else.
    void layersChanged();

    // ---- layers of the drawing

    void FillLayerResbuf() { m_layerLists.fill(); }
    resbuf* FindLayerResbuf(const CStdStr<wchar_t>& name) { return m_layerLists.find(name); }
    /// Takes the list over.
    void AddLayerResbuf(const CStdStr<wchar_t>& name, resbuf* list) { m_layerLists.add(name, list); }
    KvLayerLists& GetLayerResbufMap() { return m_layerLists; }
    void ClearLayerResbufMap() { m_layerLists.clear(); }
    void ClearAllLayerStateMap();
    /// A layer's values in the current viewport, read when they are first asked for; null outside of
    /// viewports, and for a layer that there is not.
    const CKvVpLayerInfo* FindVpLayerInfo(const CStdStr<wchar_t>& name);
    void AddVpLayerInfo(HxDbLayerTableRecord* layer);
    void RemoveAllVplayerInofMap() { m_vpLayers.clear(); }
    /// 1 for a layer that the current viewport of a layout freezes.
    static int IsLayerNameVpLayerFrozen(HxDbDatabase* database, const CStdStr<wchar_t>& layerName);
    HxDbObjectId GetViewPortId() const;

    // What the boxes of the dialog say, kept from one opening to the next.
    static inline int m_bNoDisplayXrefChecked = 0;
    static inline int m_bCloseNoFindChecked = 0;
    static inline int m_bViewportReplaceChecked = 0;
    /// m_bCloseNoFindChecked is kept in the user's settings besides.
    static void readOptions();
    static void storeOptions();

private:
    LayerStateQuestions& questions();
    KvDrawingLayers& layersNow();
    int space() const { return m_isModelSpace != 0 ? HxLyState::kModel : HxLyState::kLayout; }
    void makeCurrent(const CStdStr<wchar_t>& layer);

    HxDbDatabase* m_database;
    KvLayerStateMap m_states;
    std::map<const CKvLayerState*, CStdStr<wchar_t>> m_olderNames;  ///< of states of earlier versions
    std::set<CStdStr<wchar_t>> m_olderToDelete;
    KvLayerLists m_layerLists;
    std::map<CStdStr<wchar_t>, CKvVpLayerInfo> m_vpLayers;
    std::unique_ptr<KvDrawingLayers> m_layersNow;  ///< null when they are to be read again
    LayerStateQuestions* m_questions = nullptr;    ///< null: message boxes
    CKvLayerState* m_imported = nullptr;
    int m_isModelSpace = 1;
    CStdStr<wchar_t> m_currentLayerName;
    KvLayerStatesWritten m_written;
    KvRestoreResult m_restored;
    int m_bIsRestore = 0;
    CStdStr<wchar_t> m_restoredName;
};
