// Choosing which states of another drawing are imported.
#pragma once

#include "layer_states/choose/import_needs.h"

#include "hxdialog.h"

#include <vector>

class KvChooseStatesModel;
class CKvListCtrl;

/// Tells of each state whether it is new here, and of the ticked ones what the drawing lacks. Nothing is
/// imported and nothing asked here.
class CKvSelectLayerStateDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    /// `ours` are the states that the others come to, `theirs` those to choose from; both must outlive the
    /// dialog. `database` (null: any) is the drawing of ours.
    CKvSelectLayerStateDlg(QWidget* parent, const KvLayerStateMap& ours, const KvLayerStateMap& theirs,
                           HxDbDatabase* database);

    /// The ticked ones, in the order of `theirs`; after IDOK at least one.
    std::vector<CKvLayerState*> chosen() const;

protected:
    bool OnInitDialog() override;

private Q_SLOTS:
    void OnButtonAll();
    void OnButtonNone();
    void ticksChanged();
    void countOn();

private:
    void tickAll(bool isTicked);
    void showSummary();

    KvChooseStatesModel* m_model;
    CKvListCtrl* m_list;
    KvImportNeeds m_needs;
    std::vector<char> m_isCounted;  ///< by place: it is among those that m_needs counts
};
