// Choosing a lineweight.
#include "lineweight_dialog.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "manager_ui/grid/lineweight_text.h"

#include "hxdbsymtb.h"

#include <QLabel>
#include <QListWidget>
#include <QPainter>

namespace {

constexpr signed char kLineweights = 24;
constexpr int kValueRole = Qt::UserRole;
constexpr QSize kSample(64, 14);

QString textOf(int lineweight) { return QString::fromStdWString(StringByLineWeight(lineweight, false)); }

QIcon sampleOf(int lineweight, const QWidget& on) {
    const qreal ratio = on.devicePixelRatioF();
    QPixmap sample(kSample * ratio);
    sample.setDevicePixelRatio(ratio);
    sample.fill(Qt::transparent);
    const int thickness = getThicknessFromLineweight(lineweight);
    QPainter(&sample).fillRect(0, (kSample.height() - thickness) / 2, kSample.width(), thickness,
                               on.palette().color(QPalette::Text));
    QIcon icon(sample);
    icon.addPixmap(sample, QIcon::Selected);
    return icon;
}

}  // namespace

CVrexLWListDia::CVrexLWListDia(int lineweight, CWnd* parent)
    : KvListDialog("IDD_LWLIST_DLG", "IDC_LW_LIST", parent ? parent->window() : nullptr),
      m_lineweight(lineweight) {}

void CVrexLWListDia::add(int lineweight) {
    auto* const item = new QListWidgetItem(sampleOf(lineweight, *list()), textOf(lineweight), list());
    item->setData(kValueRole, lineweight);
    if (lineweight == m_lineweight) mark(item);
}

bool CVrexLWListDia::OnInitDialog() {
    const ModuleResources resources;
    if (list()) {
        list()->setIconSize(kSample);
        mark(nullptr);
        add(HxDb::kLnWtByLwDefault);
        for (signed char place = 0; place < kLineweights; ++place) {
            add(HxDb::lineWeightByIndex(place));
        }
        if (!list()->currentItem()) mark(nullptr);
    }
    if (auto* const original = GetDlgItem<QLabel>("IDC_LW_ORIGINAL")) {
        original->setText(formatMessage(resourceText(kStrOriginalValue), {textOf(m_lineweight)}));
    }
    return HxUiBaseDialog::OnInitDialog();
}

void CVrexLWListDia::OnOK() {
    if (list() && list()->currentItem()) m_lineweight = list()->currentItem()->data(kValueRole).toInt();
    HxUiBaseDialog::OnOK();
}
