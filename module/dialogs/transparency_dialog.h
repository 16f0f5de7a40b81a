// Choosing a transparency.
#pragma once

#include "hxdialog.h"

class QLabel;
class QSlider;
class QSpinBox;

/// 0 to 90 per cent by a number, a slider and a preview of both.
class CLayerTransDlg : public HxUiBaseDialog {
    Q_OBJECT
public:
    /// `percent` is shown at first, cut to what can be chosen.
    CLayerTransDlg(int percent, CWnd* parent);

    /// The chosen one after IDOK; before, the one given.
    int percent() const { return m_percent; }

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void resizeEvent(QResizeEvent* event) override;

private Q_SLOTS:
    void keepInRange(int percent);
    void showPreview();

private:
    int m_percent;
    QSpinBox* m_value = nullptr;
    QSlider* m_slider = nullptr;
    QLabel* m_preview = nullptr;
    QLabel* m_hint = nullptr;
};
