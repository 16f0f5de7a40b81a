// Choosing layers of the drawing that a state is to hold, too.
#pragma once

#include "layer_states/records/layer_state.h"

#include "hxdialog.h"

#include <vector>

class HxDbDatabase;
class CKvListCtrl;

class CKvSelectAddLayerDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    /// IDOK takes out of `candidates`, and deletes, those that the user did not choose; they must outlive the
    /// dialog. `database` (may be null) has their descriptions.
    CKvSelectAddLayerDlg(QWidget* parent, std::vector<CKvLayerStateInfo*>& candidates,
                         const HxDbDatabase* database);

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private Q_SLOTS:
    void selectionChanged();

private:
    std::vector<CKvLayerStateInfo*>& m_candidates;
    CKvListCtrl* m_list;
};
