// The classic layer dialog: an object that carries the engine of layer states. It is never shown.
#pragma once

#include "hxdialog.h"
#include "layer_states/manager/layer_state_man_dlg.h"

#include <array>

/// A linetype in the dialog's box.
struct cboLinetype {
    CStdStr<wchar_t> name;
    HxDbObjectId id;
};

/// Made on the stack by commands that work with layer states: they fill the engine by InitLayerStateInfo and
/// drive it. Of the dialog itself only what concerns layer states and the list of layers does anything.
class CVrexLayerP : public CWnd {
public:
    explicit CVrexLayerP(CWnd* parent = nullptr);
    ~CVrexLayerP() override;

    CKvLayerStateManDlg& layerStates() { return m_layerStates; }

    /// Tells the engine the layers of the current drawing and what overrides them in the current viewport.
    void InitLayerStateInfo();
    /// Saves all layers as they are now under a name that the user chooses, into the drawing.
    void OnButtonSavestate();
    /// Shows the layer states manager and writes what was made of the states into the drawing.
    void OnButtonStateman();
    /// Writes entity lists of the engine that differ from the drawing's, and makes layers that only the lists
    /// have. Returns how many layers were changed or made.
    int UpdateLayerStateToLayerList();

    /// Columns of the list; of those up to kLinetypeColumn rows compare by what kind of picture they show.
    enum Column {
        kNameColumn,
        kOnColumn,
        kFrozenColumn,
        kLockedColumn,
        kColorColumn,
        kLinetypeColumn,
        kLineweightColumn,
        kPlotColumn,
        kColumns
    };
    /// The layers that the filter lets through, in the order of the sort column.
    void FillLayerList();
    void OnSelchangeFilter() { FillLayerList(); }
    void OnCheckInvertFilter() { OnSelchangeFilter(); }
    /// The row of a layer; -1 when it is not in the list.
    int FindLayerNameToRow(const CStdStr<wchar_t>& name) const;
    /// A click on a column's header: sorts by it, the second time the other way round.
    void sortBy(int column);
    int rowCount() const { return static_cast<int>(m_rows.size()); }
    const CStdStr<wchar_t>& text(int row, int column) const;
    /// Compares two rows of a list in its sort column: negative, 0 or positive. `list` is the dialog.
    static int ListSortProc(long row1, long row2, long list);
    /// Only layers whose names fit are listed; empty: all.
    void setFilter(const CStdStr<wchar_t>& part, bool isInverted);

    /// The name typed in the edit box.
    void setName(const CStdStr<wchar_t>& name) { m_name = name; }
    /// Trims the name and finds its row: that becomes the selected one.
    void OnKillfocusEditName();
    int selectedRow() const { return m_selectedRow; }

    /// A layer that the current viewport freezes.
    int IsLayerVpLayerFrozen(const CStdStr<wchar_t>& name) const;
    /// Takes the mark "referenced when the drawing was saved" off the lists of layers of external references,
    /// so that it makes no difference to the drawing.
    void prepare_xreflayer_64();

    /// Leaves everything as it is; edited lists are given up.
    void OnButtonCancel();
    void OnClose() { OnButtonCancel(); }
    /// The boxes for the state of a layer and for what the list shows.
    enum Check { kOff, kLock, kPlot, kAll, kCurrent, kNew, kInvertFilter, kChecks = 9 };
    int check(Check box) const { return m_checks[box]; }

    // These do nothing.
    void OnButtonOk() {}
    void OnButtonCurrent() {}
    void OnButtonDelete() {}
    void OnButtonHelp() {}
    void OnButtonHidedetail() {}
    void OnButtonNew() {}
    void OnButtonSetfilter() {}
    void OnCheckOff() {}
    void OnCheckLock() {}
    void OnCheckPlot() {}
    void OnCheckAll() {}
    void OnCheckCurrent() {}
    void OnCheckNew() {}
    void OnChangeName() {}
    void OnSelchangeLinetype() {}
    void OnSelchangelweight() {}
    void UpdateLTypeList() {}
    void AddLinetype() {}
    void AddExploreLinetypes() {}
    void EnableDetail() {}
    void UpdateDetail() {}
    void OnDropDownLinetype() { UpdateLTypeList(); }

private:
    bool prepareStates();
    void writeStates();
    struct Row {
        std::array<CStdStr<wchar_t>, kColumns> texts;
        std::array<int, kColumns> images{};
    };
    static Row rowOf(const resbuf* layer);

    CKvLayerStateManDlg m_layerStates;
    std::vector<Row> m_rows;
    CArray<cboLinetype, cboLinetype> m_linetypes;
    std::array<int, kChecks> m_checks{};
    CStdStr<wchar_t> m_filter;
    CStdStr<wchar_t> m_name;
    int m_selectedRow = -1;
    int m_sortColumn = kNameColumn;
    bool m_isDescending = false;
};
