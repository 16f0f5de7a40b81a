// The dialog that asks for a new layer state's name and description.
#pragma once

#include "layer_states/save/save_state.h"

#include "hxdialog.h"

class QComboBox;
class QLineEdit;

/// Saves all layers into the states that it is given. OK waits for a name; one that is there already is
/// overwritten after a question.
class CKvSaveLayerStateDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    CKvSaveLayerStateDlg(QWidget* parent, KvLayerStateMap& states, HxDbDatabase* database,
                         const CStdStr<wchar_t>& currentLayerName);

    /// HxLyState::kModel (before it is set) or kLayout.
    void SetSpace(int space) { m_space = space; }
    /// What the user typed, trimmed.
    const CStdStr<wchar_t>& GetLayerStateName() const { return m_name; }
    /// 1 when the last save made a new state, 0 when it overwrote one.
    int GetIsCreate() const { return m_isCreate; }

    /// Saves without asking whether to overwrite; names are refused with a message. 1, or 0 when nothing was
    /// saved.
    int DoNewState(const wchar_t* name, const wchar_t* description, int);

public Q_SLOTS:
    void OnComboSelchange();

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnOK() override;

private:
    void FillLayerStateCombo();
    void bindSingals();
    void enableOk();
    bool LayerStateIsExist(const CStdStr<wchar_t>& name) const {
        return FindExistLayerState(name) != nullptr;
    }
    CKvLayerState* FindExistLayerState(const CStdStr<wchar_t>& name) const { return m_states.find(name); }
    CKvLayerState* CreateLayerState(const CStdStr<wchar_t>& name, const CStdStr<wchar_t>& description);
    bool OverwriteLayerState(CKvLayerState* state, const CStdStr<wchar_t>& name,
                             const CStdStr<wchar_t>& description, bool headerOnly);
    /// Whether a state can have the name; the user is told if not.
    bool CheckInvalidCharacters(const CStdStr<wchar_t>& name);
    bool refuse(const CStdStr<wchar_t>& text);

    KvLayerStateMap& m_states;
    HxDbDatabase* m_database;
    CStdStr<wchar_t> m_currentLayerName;
    int m_space = HxLyState::kModel;
    CStdStr<wchar_t> m_name;
    int m_isCreate = 0;
    QComboBox* m_combo = nullptr;
    QLineEdit* m_description = nullptr;
};
