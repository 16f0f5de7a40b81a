// Choosing a transparency.
#include "transparency_dialog.h"

#include "frame/util/resource_text.h"

#include <QLabel>
#include <QPainter>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>

namespace {

constexpr int kMostPercent = 90;
/// The number field takes what can be typed, so that too much is told and not swallowed digit by digit.
constexpr int kMostTyped = 999;
constexpr int kFieldAlpha = 90;  ///< of the darker fields, so that both themes have light and dark ones

/// Something to see through: a checked ground with a bar on it.
QPixmap previewOf(QSize size, qreal ratio, int percent, const QPalette& palette) {
    constexpr int kField = 12;
    QPixmap preview(size * ratio);
    preview.setDevicePixelRatio(ratio);
    preview.fill(palette.color(QPalette::Base));
    QPainter painter(&preview);
    QColor fields = palette.color(QPalette::Text);
    fields.setAlpha(kFieldAlpha);
    for (int y = 0; y < size.height(); y += kField) {
        for (int x = y / kField % 2 * kField; x < size.width(); x += 2 * kField) {
            painter.fillRect(x, y, kField, kField, fields);
        }
    }
    painter.setOpacity(1 - percent / 100.0);
    painter.fillRect(QRect(QPoint(), size).adjusted(kField, kField / 2, -kField, -kField / 2),
                     palette.color(QPalette::Highlight));
    return preview;
}

}  // namespace

CLayerTransDlg::CLayerTransDlg(int percent, CWnd* parent)
    : HxUiBaseDialog("IDD_LAYERTRANS_DLG", parent ? parent->window() : nullptr),
      m_percent(std::clamp(percent, 0, kMostPercent)) {}

void CLayerTransDlg::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, "IDC_TRANS_VALUE", m_value);
    DDX_Control(exchange, "IDC_TRANS_SLIDER", m_slider);
    DDX_Control(exchange, "IDC_TRANS_PREVIEW", m_preview);
    DDX_Control(exchange, "IDC_TRANS_HINT", m_hint);
    if (!m_value) return;
    if (exchange->m_bSaveAndValidate) {
        m_percent = std::min(m_value->value(), kMostPercent);
    } else {
        m_value->setValue(m_percent);
    }
}

bool CLayerTransDlg::OnInitDialog() {
    HxUiBaseDialog::OnInitDialog();
    if (!m_value || !m_slider || !m_preview || !m_hint) return true;
    m_value->setMaximum(kMostTyped);
    m_value->setSuffix(" %");
    m_slider->setValue(m_percent);
    connect(m_value, SIGNAL(valueChanged(int)), m_slider, SLOT(setValue(int)));
    connect(m_slider, SIGNAL(valueChanged(int)), m_value, SLOT(setValue(int)));
    connect(m_value, SIGNAL(valueChanged(int)), SLOT(keepInRange(int)));
    connect(m_value, SIGNAL(valueChanged(int)), SLOT(showPreview()));
    m_value->setFocus();
    m_value->selectAll();
    return true;
}

/// What is beyond becomes the most, and the hint tells why until the next change.
void CLayerTransDlg::keepInRange(int percent) {
    if (percent <= kMostPercent) {
        m_hint->clear();
        return;
    }
    m_value->setValue(kMostPercent);
    m_hint->setText(resourceText(kStrTransparencyHint).arg(kMostPercent));
}

void CLayerTransDlg::showPreview() {
    if (!m_preview) return;
    m_preview->setPixmap(
        previewOf(m_preview->contentsRect().size(), devicePixelRatioF(), m_value->value(), palette()));
}

void CLayerTransDlg::resizeEvent(QResizeEvent* event) {
    HxUiBaseDialog::resizeEvent(event);
    showPreview();
}
