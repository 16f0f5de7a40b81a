// A saved layer state and its layers' entries.
#pragma once

#include "hxlystate.h"

/// What a state says beside its layers, and how it stands in the manager.
class CKvLayerState {
public:
    CKvLayerState() = default;
    virtual ~CKvLayerState() = default;

    /// Row in the manager's list; -1 in none.
    int GetLayerStateIndex() const { return m_layerStateIndex; }
    void SetLayerStateIndex(int index) { m_layerStateIndex = index; }
    /// Spare.
    int GetLayerState() const { return m_layerState; }
    void SetLayerState(int state) { m_layerState = state; }
    /// Restore mask: bits of HxLyState::Property.
    int GetLayerStateMake() const { return m_mask; }
    void SetLayerStateMake(int mask) { m_mask = mask; }
    /// The layer that was current.
    const CStdStr<wchar_t>& GetCurrentLayerName() const { return m_currentLayerName; }
    void SetCurrentLayerName(const CStdStr<wchar_t>& name) { m_currentLayerName = name; }
    const CStdStr<wchar_t>& GetLayerStateName() const { return m_layerStateName; }
    void SetLayerStateName(const CStdStr<wchar_t>& name) { m_layerStateName = name; }
    /// A HxLyState::Space.
    int GetSpace() const { return m_space; }
    void SetSpace(int space) { m_space = space; }
    /// 1 when every layer is in the drawing as it is in the state.
    int GetSameAsDWG() const { return m_sameAsDwg; }
    void SetSameAsDWG(int same) { m_sameAsDwg = same; }
    const CStdStr<wchar_t>& GetDescription() const { return m_description; }
    void SetDescription(const CStdStr<wchar_t>& description) { m_description = description; }
    int IsLayerStateRestore() const { return m_canRestore; }
    /// The state must not be restored.
    void LayerStateCannotRestore() { m_canRestore = 0; }
    /// 1 when it came from a layer-state file.
    int IsLasFileType() const { return m_isLasFile; }
    void SetLasFileType(int isLasFile) { m_isLasFile = isLasFile; }

    /// What its record says of it.
    HxLyStateHeader header() const;
    void setHeader(const HxLyStateHeader& header);
    bool isHidden() const { return (m_mask & HxLyState::kHidden) != 0; }
    bool isOfReference() const { return m_space == HxLyState::kExternalReference; }

private:
    int m_layerStateIndex = -1;
    int m_layerState = 0;
    int m_mask = HxLyState::kAllProperties;
    CStdStr<wchar_t> m_currentLayerName;
    CStdStr<wchar_t> m_layerStateName;
    int m_space = HxLyState::kLayout;
    int m_sameAsDwg = 0;
    CStdStr<wchar_t> m_description;
    int m_canRestore = 1;
    int m_isLasFile = 0;
};

/// One layer's entry in a state.
class CKvLayerStateInfo {
public:
    CKvLayerStateInfo() = default;
    CKvLayerStateInfo(HxLyStateEntry values, int index, bool isCurrent);
    virtual ~CKvLayerStateInfo() = default;

    /// Position in the state.
    int GetLayerIndex() const { return m_layerIndex; }
    void SetLayerIndex(int index) { m_layerIndex = index; }
    /// 1 for the state's current layer.
    int GetCurrentLayer() const { return m_currentLayer; }
    void SetCurrentLayer(int isCurrent) { m_currentLayer = isCurrent; }
    /// Of a layer of an external reference the full name, "XREF|NAME".
    const CStdStr<wchar_t>& GetLayerName() const { return m_values.layer; }
    void SetLayerName(const CStdStr<wchar_t>& name) { m_values.layer = name; }
    /// Bits of HxLyState::LayerFlag.
    int GetLayerFlag() const { return m_values.flags; }
    void SetLayerFlag(int flags) { m_values.flags = flags; }
    int GetColorIndex() const { return m_values.colorIndex; }
    void SetColorIndex(int index) { m_values.colorIndex = index; }
    /// 0x00BBGGRR; -1 none.
    std::int64_t GetRGBColor() const { return m_values.trueColor; }
    void SetRGBColor(std::int64_t color) { m_values.trueColor = color; }
    /// "book$colour"; empty none.
    const CStdStr<wchar_t>& GetColorBook() const { return m_values.colorBook; }
    void SetColorBook(const CStdStr<wchar_t>& key) { m_values.colorBook = key; }
    const CStdStr<wchar_t>& GetLineType() const { return m_values.linetype; }
    void SetLineType(const CStdStr<wchar_t>& name) { m_values.linetype = name; }
    /// Hundredths of a millimetre, or HxDb::LineWeight's negative values.
    int GetLineWeight() const { return m_values.lineweight; }
    void SetLineWeight(int weight) { m_values.lineweight = weight; }
    const CStdStr<wchar_t>& GetPlotStyle() const { return m_values.plotStyle; }
    void SetPlotStyle(const CStdStr<wchar_t>& name) { m_values.plotStyle = name; }
    /// Alpha; 255 also for none.
    int GetTransparency() const { return m_values.transparency; }
    void SetTransparency(int alpha) { m_values.transparency = alpha; }

    const HxLyStateEntry& values() const { return m_values; }

private:
    int m_layerIndex = -1;
    int m_currentLayer = 0;
    HxLyStateEntry m_values;
};

/// The entries of a state, which whoever holds the array owns, in the order of capturing or reading.
using KvLayerStateInfoArray = CArray<CKvLayerStateInfo*, CKvLayerStateInfo*>;

/// A layer's name and description in lists.
struct CKvLayerInfo {
    CStdStr<wchar_t> LayerName;
    CStdStr<wchar_t> Description;
};

/// A linetype's in lists.
struct CKvLTypeInfo {
    int LTypeIndex = -1;
    CStdStr<wchar_t> LTypeName;
    CStdStr<wchar_t> Description;
};
