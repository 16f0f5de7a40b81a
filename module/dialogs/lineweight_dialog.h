// Choosing a lineweight.
#pragma once

#include "list_dialog.h"

/// The default and all lineweights of the host, each with a sample of the line.
class CVrexLWListDia : public KvListDialog {
    Q_OBJECT
public:
    /// `lineweight` in hundredths of a millimetre or one of the special values; it is marked at first.
    CVrexLWListDia(int lineweight, CWnd* parent);

    /// The chosen one after IDOK; before, the one given.
    int lineweight() const { return m_lineweight; }

protected:
    bool OnInitDialog() override;
    void OnOK() override;

private:
    void add(int lineweight);

    int m_lineweight;
};
