// Asking about one of several states that are to be deleted.
#pragma once

#include "hxdialog.h"
#include "hxstring.h"

/// Its own results; IDCANCEL when it is closed in another way: nothing more is deleted.
enum KvDeleteStateResult : int {
    kDeleteState = 3069,
    kDeleteAllStates = 3070,  ///< this one and the others that are left
    kKeepState = 3071,
};

class CKvDeleteLayerStateDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    explicit CKvDeleteLayerStateDlg(QWidget* parent = nullptr);

    /// The state's name; before DoModal.
    void SetDelString(const CStdStr<wchar_t>& name) { m_name = name; }

protected:
    bool OnInitDialog() override;

private Q_SLOTS:
    void OnButtonYes() { EndDialog(kDeleteState); }
    void OnButtonYesAll() { EndDialog(kDeleteAllStates); }
    void OnButtonNo() { EndDialog(kKeepState); }

private:
    CStdStr<wchar_t> m_name;
};
