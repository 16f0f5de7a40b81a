// The window of the layer states manager.
#pragma once

#include "layer_states/file/layer_state_boxes.h"
#include "layer_states/manager/layer_state_list_ctrl.h"

#include "hxdialog.h"

#include <QTimer>

#include <array>

class CSearchEdit;
class QCheckBox;
class QToolButton;
class KvDifferencesPane;
class KvRestorePreview;

/// Lists the states of an engine and does with them what the user wants. Ends with
/// CKvLayerStateManDlg::kRestored after a restore, otherwise with IDCANCEL: what was done stays.
class KvLayerStateManWindow : public HxUiBaseDialog {
    Q_OBJECT
public:
    KvLayerStateManWindow(CKvLayerStateManDlg& engine, QWidget* parent);
    ~KvLayerStateManWindow() override;

public Q_SLOTS:
    void OnButtonNew();
    /// All layers as they are now into the selected state, after a question.
    void OnButtonSave();
    void OnButtonEdit();
    void OnButtonRename();
    /// The selected states, but for those of references.
    void OnButtonDel();
    /// A copy of the selected state, which is selected then.
    void duplicate();
    /// Layers of the drawing that the selected states lack, but for states of references.
    void addMissing();
    void OnButtonImport();
    void OnButtonExport();
    /// What the ticked boxes allow of the selected state.
    void OnButtonRestore();
    void OnButtonClose();
    void OnButtonSelectall() { tickAll(true); }
    void OnButtonClearall() { LayerStateClearAll(); }
    void OnButtonExpand();
    void OnCheckNoXrefs(bool isTicked);
    void OnCheckTurnOff(bool isTicked);
    void onSlotListItemChanged();
    void OnLvnEndlabeledit(CKvLayerState* state, const QString& text);
    /// `at` in the list.
    void showMenu(const QPoint& at);

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnCancel() override { OnButtonClose(); }
    bool PreTranslateMessage(QObject* receiver, QEvent* event) override;

private:
    static constexpr int kBoxes = 11;
    static constexpr char kTurnOffOthers[] = "IDC_LAYERMAN_CHECK12";
    static constexpr char kAsOverrides[] = "IDC_LAYERMAN_CHECK13";

    void findControls();
    void placePreview();
    void connectDifferences();
    /// What a restore would do now is told and shown anew.
    void showWhatWould();
    void resizeWithin(int width, int height);
    void goToLayer(const CStdStr<wchar_t>& name);
    void connectControls();
    void selectFirst();
    void EnableButton(int haveSelection, int multiSelection);
    void enableActions(const std::vector<CKvLayerState*>& selected);
    void LayerStateClearAll() { tickAll(false); }
    void tickAll(bool isTicked);
    std::int32_t tickedMask() const;
    void HideRestoreLayerPropArea(int hide, int resize);
    /// It does not fit the screen as it is now.
    bool isTooTall() const;
    bool isListKey(int key, Qt::KeyboardModifiers modifiers);
    void warn(int text, const CStdStr<wchar_t>& name);
    bool isConfirmed(int text, const CStdStr<wchar_t>& name);
    /// Shows all states anew and selects one (null: what was selected).
    void showStates(const CKvLayerState* select = nullptr);
    bool restore(CKvLayerState& state, std::int32_t mask);
    void deleteStates(const std::vector<CKvLayerState*>& states);
    bool FindLayerStateIsExist(const CStdStr<wchar_t>& name, const CKvLayerState* except) const;

    CKvLayerStateManDlg& m_engine;
    KvLayerStateBoxes m_questions;
    CKvLayerStateListCtrl* m_list;
    CSearchEdit* m_search = nullptr;
    QToolButton* m_expand = nullptr;
    std::array<QCheckBox*, kBoxes> m_boxes{};
    KvDifferencesPane* m_differences = nullptr;
    KvRestorePreview* m_preview = nullptr;
    QTimer m_showLater;
};

/// Lets layouts have the search box, and no longer.
void registerLayerStateWidgets();
void forgetLayerStateWidgets();
