// Asking about one of several states that are to be deleted.
#include "layer_states/edit/delete_layer_state_dlg.h"

#include <QLabel>
#include <QPushButton>

CKvDeleteLayerStateDlg::CKvDeleteLayerStateDlg(QWidget* parent)
    : HxUiBaseDialog("IDD_DELLAYERSTATE_DLG", parent) {}

bool CKvDeleteLayerStateDlg::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    if (auto* const label = GetDlgItem<QLabel>("IDC_DELLAYERSTATE_STATIC")) {
        label->setText(QString::fromStdWString(m_name));
    }
    const auto bind = [this](const char* id, const char* slot) {
        if (QWidget* const button = GetDlgItem(id)) connect(button, SIGNAL(clicked()), slot);
    };
    bind("IDC_DELLAYERSTATE_YES", SLOT(OnButtonYes()));
    bind("IDC_DELLAYERSTATE_YESALL", SLOT(OnButtonYesAll()));
    bind("IDC_DELLAYERSTATE_NO", SLOT(OnButtonNo()));
    if (QWidget* const yes = GetDlgItem("IDC_DELLAYERSTATE_YES")) yes->setFocus();
    return true;
}
