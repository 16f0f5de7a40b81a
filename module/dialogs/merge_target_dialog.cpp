// Choosing the layer that others are merged into.
#include "merge_target_dialog.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

KvMergeTargetDialog::KvMergeTargetDialog(const QStringList& targets, int mergedCount, QWidget* parent)
    : KvListDialog("IDD_MERGETARGET_DLG", "IDC_MERGE_LIST", parent), m_targets(targets),
      m_mergedCount(mergedCount), m_field(GetDlgItem<QLineEdit>("IDC_MERGE_SEARCH")) {}

bool KvMergeTargetDialog::OnInitDialog() {
    const ModuleResources resources;
    HxUiBaseDialog::OnInitDialog();
    if (auto* const label = GetDlgItem<QLabel>("IDC_MERGE_LABEL")) {
        label->setText(formatMessage(resourceText(kStrMergeTargetLabel), {QString::number(m_mergedCount)}));
        label->setBuddy(list());
    }
    if (!list() || !m_field) return true;
    list()->setUniformItemSizes(true);
    connect(m_field, SIGNAL(textChanged(QString)), SLOT(narrow(QString)));
    narrow(QString());
    m_field->setFocus();
    return true;
}

void KvMergeTargetDialog::narrow(const QString& text) {
    list()->clear();
    list()->addItems(m_targets.filter(text, Qt::CaseInsensitive));
    list()->setCurrentRow(0);
    if (auto* const ok = GetDlgItem<QPushButton>("IDOK")) ok->setEnabled(list()->count() > 0);
}

bool KvMergeTargetDialog::PreTranslateMessage(QObject* receiver, QEvent* event) {
    if (receiver != m_field || event->type() != QEvent::KeyPress || !list()) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down) return false;
    const int row = list()->currentRow() + (key == Qt::Key_Down ? 1 : -1);
    if (row >= 0 && row < list()->count()) list()->setCurrentRow(row);
    return true;
}

void KvMergeTargetDialog::OnOK() {
    if (!list() || !list()->currentItem()) return;
    m_target = list()->currentItem()->text();
    HxUiBaseDialog::OnOK();
}
