// Layer states: how a drawing describes one, reading and making such records, and the host's manager of them.
//
// A state is an xrecord in the drawing's layer-states dictionary, under the state's name. Its groups: 91
// mask, 301 description, 290 space, 302 current layer; then for each layer 8 name, 90 flags, 62 colour index,
// 370 lineweight, 6 linetype, 2 (or 390) plot style, 92 true colour, 300 colour-book key, 440 transparency.
// Drawings from elsewhere name layers (330) and linetypes (331) by handle, plot styles by 1, true colours by
// 420 or with a method in the top byte of 92; both spellings may be mixed, in any order within an entry.
#pragma once

#include "hxads.h"
#include "hxcm.h"

class HxDbDatabase;
class HxDbLayerTableRecord;

namespace HxLyState {

/// Bits of a state's mask: what a restore applies.
enum Property : std::int32_t {
    kOn = 0x001,
    kFrozen = 0x002,
    kLocked = 0x004,
    kPlot = 0x008,
    kNewViewportFrozen = 0x010,
    kColor = 0x020,
    kLinetype = 0x040,
    kLineweight = 0x080,
    kPlotStyle = 0x100,
    kCurrentViewportFrozen = 0x200,
    kTransparency = 0x400,
    kAllProperties = 0x7FF,
    kHidden = 0x8000,  ///< no property: the state is kept, but not listed
};

/// Bits of an entry's flags.
enum LayerFlag : std::int32_t {
    kLayerOff = 0x01,
    kLayerFrozen = 0x02,
    kLayerLocked = 0x04,
    kLayerPlots = 0x08,
    kLayerNewViewportFrozen = 0x10,
    kLayerCurrentViewportFrozen = 0x20,
};

/// Values of a state's space.
enum Space : int { kModel = 0, kLayout = 1, kExternalReference = 2 /**< never in a record */ };

}  // namespace HxLyState

/// What a state says beside its layers.
struct HxLyStateHeader {
    std::int32_t mask = HxLyState::kAllProperties;
    CStdStr<wchar_t> description;
    int space = HxLyState::kLayout;
    CStdStr<wchar_t> currentLayer;
};

/// One layer in a state.
struct HxLyStateEntry {
    CStdStr<wchar_t> layer;
    std::int32_t flags = 0;
    std::int32_t colorIndex = HxCmColor::kIndexWhite;
    /// 0x00BBGGRR, red in the low byte; -1 none.
    std::int64_t trueColor = -1;
    CStdStr<wchar_t> colorBook;  ///< "book$colour"; empty none
    CStdStr<wchar_t> linetype;   ///< empty: the state says nothing of it
    std::int32_t lineweight = -3;
    CStdStr<wchar_t> plotStyle;       ///< empty: the state says nothing of it
    std::int32_t transparency = 255;  ///< alpha; 255 also for none
};

/// Reads a state's record as it stands in the drawing, in both spellings and without making the object. The
/// record must not be changed meanwhile.
class HXSDK_API HxLyStateReader {
public:
    /// `record` may be open in any mode, or not at all.
    explicit HxLyStateReader(HxDbObjectId record);
    ~HxLyStateReader();
    HxLyStateReader(const HxLyStateReader&) = delete;
    HxLyStateReader& operator=(const HxLyStateReader&) = delete;

    /// eOk; eNullObjectId, eWasErased, eWrongClass for what is no xrecord, eKeyNotFound for an xrecord
    /// without a mask, which is no state.
    Hx::ErrorStatus status() const;
    /// Cheap: reads no further than it must. Defaults unless status() is eOk.
    const HxLyStateHeader& header() const;
    /// The next entry; false at the end. Texts of `entry` are reused, so that reading many costs no memory.
    /// Entries whose layer's handle is dead are passed over: skippedEntries() counts them.
    bool next(HxLyStateEntry& entry);
    int skippedEntries() const;
    /// Begins again with the first entry.
    void rewind();

private:
    class Imp;
    Imp* m_imp;
};

/// Makes the entity list of a state's record, for hxdbEntMakeX.
class HXSDK_API HxLyStateListBuilder {
public:
    /// `dictionary` is the one that will own the record.
    HxLyStateListBuilder(const HxDbDatabase* database, HxDbObjectId dictionary,
                         const HxLyStateHeader& header);
    ~HxLyStateListBuilder();
    HxLyStateListBuilder(const HxLyStateListBuilder&) = delete;
    HxLyStateListBuilder& operator=(const HxLyStateListBuilder&) = delete;

    /// False, and nothing is added, for an entry whose plot style is none of a drawing with named ones.
    bool add(const HxLyStateEntry& entry);
    /// The list, which the caller releases; null when memory runs out. Once.
    resbuf* take();

private:
    class Imp;
    Imp* m_imp;
};

/// A layer as an entry of a state: its own values or, with a viewport, those in effect there, and whether it
/// is frozen there. The layer must be open; null viewport: none. Texts of `entry` are reused.
HXSDK_API void hxlyEntryOfLayer(HxLyStateEntry& entry, const HxDbLayerTableRecord& layer,
                                HxDbObjectId viewport);

/// Whether a state can have a name: not empty, without blanks at its ends, control characters and
/// < , > / ? ' " \ | ; : = *. Null is no name.
HXSDK_API bool hxlyIsStateName(const wchar_t* name);

/// The properties of `mask` in which two entries differ. Names compare as the host compares names; book
/// colours by key, then by the colour; what one of them says nothing of (linetype, plot style) does not
/// differ.
HXSDK_API std::int32_t hxlyDifferences(const HxLyStateEntry& a, const HxLyStateEntry& b, std::int32_t mask);

/// One property of one layer that is otherwise in the drawing than in a state.
struct HxLyStateDifference {
    CStdStr<wchar_t> layer;
    HxLyState::Property property = HxLyState::kOn;
    CStdStr<wchar_t> inState;    ///< as texts for the user
    CStdStr<wchar_t> inDrawing;  ///< empty: the drawing lacks the layer
};

/// The layer states of a drawing. Names compare as the host compares names. Changes are made at once, under
/// the document's lock and undo of the caller.
class HXSDK_API HxDbLayerStateManager {
public:
    HxDbDatabase* getDatabase() const;
    /// The dictionary that holds the states; null id when there is none and none is wanted, or the drawing is
    /// older than R13 and has no dictionaries.
    HxDbObjectId layerStatesDictionaryId(bool createIfNotPresent = false);

    bool hasLayerState(const wchar_t* name) const;
    /// In the dictionary's order; hidden ones only when asked for. eOk also when there are none.
    Hx::ErrorStatus getLayerStateNames(HxArray<CStdStr<wchar_t>>& names, bool includeHidden = false) const;
    /// The layers that a state names; `invert`: those of the drawing that it does not name. eKeyNotFound.
    Hx::ErrorStatus getLayerStateLayers(HxArray<CStdStr<wchar_t>>& layers, const wchar_t* name,
                                        bool invert = false) const;
    /// The record's id; null id when there is no such state.
    HxDbObjectId layerStateId(const wchar_t* name) const;
    /// eKeyNotFound.
    Hx::ErrorStatus getLayerStateHeader(HxLyStateHeader& header, const wchar_t* name) const;
    Hx::ErrorStatus setLayerStateMask(const wchar_t* name, std::int32_t mask);
    Hx::ErrorStatus setLayerStateDescription(const wchar_t* name, const wchar_t* description);

    /// Saves all layers as they are now, `viewport`'s overrides and frozen layers included (null id: none),
    /// in place of a state of that name. eInvalidInput for a name that a state cannot have, eNotApplicable in
    /// a drawing without dictionaries.
    Hx::ErrorStatus saveLayerState(const wchar_t* name, std::int32_t mask, HxDbObjectId viewport,
                                   const wchar_t* description = nullptr);

    /// Bits of restoreLayerState.
    enum RestoreFlag : int {
        kUndefinedLayersOff = 1,            ///< layers that the state does not name are turned off
        kUndefinedLayersFrozen = 2,         ///< and frozen
        kPropertiesAsViewportOverrides = 4  ///< colour, linetype, lineweight, transparency, plot style
    };
    /// Gives the layers what the state says, as far as `mask` (null: the state's own) allows; freezing in the
    /// current viewport goes to `viewport`, if there is one. The current layer is never frozen; layers that
    /// the drawing lacks are passed over. Layers that refuse are named in `refused`. eKeyNotFound.
    Hx::ErrorStatus restoreLayerState(const wchar_t* name, HxDbObjectId viewport, int restoreFlags = 0,
                                      const std::int32_t* mask = nullptr,
                                      HxArray<CStdStr<wchar_t>>* refused = nullptr);
    /// eKeyNotFound.
    Hx::ErrorStatus deleteLayerState(const wchar_t* name);
    /// eKeyNotFound, eDuplicateKey, eInvalidInput. Another case of the same name is allowed.
    Hx::ErrorStatus renameLayerState(const wchar_t* oldName, const wchar_t* newName);
    /// Copies a state of another drawing, in place of one of that name. eKeyNotFound, eNotApplicable.
    Hx::ErrorStatus importLayerStateFromDb(const wchar_t* name, HxDbDatabase* source);
    /// What the drawing's layers have otherwise than the state, in the properties of `mask` (null: its own);
    /// `source` (null: this drawing) is the drawing whose state it is. eKeyNotFound.
    Hx::ErrorStatus compareLayerStateToDb(HxArray<HxLyStateDifference>& differences, const wchar_t* name,
                                          HxDbObjectId viewport, const std::int32_t* mask = nullptr,
                                          HxDbDatabase* source = nullptr) const;

private:
    friend class HxDbDatabase;
    explicit HxDbLayerStateManager(HxDbDatabase* database) : m_database(database) {}
    HxDbDatabase* m_database;
};
