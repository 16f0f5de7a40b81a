// A dialog that offers a list of which one item is chosen.
#include "list_dialog.h"

#include <QListWidget>

KvListDialog::KvListDialog(const char* layout, const char* list, QWidget* parent)
    : HxUiBaseDialog(layout, parent), m_list(GetDlgItem<QListWidget>(list)) {
    if (m_list) connect(m_list, &QListWidget::itemDoubleClicked, this, [this] { OnOK(); });
}

void KvListDialog::mark(QListWidgetItem* item) {
    if (!m_list) return;
    m_list->setCurrentItem(item ? item : m_list->item(0));
    m_list->scrollToItem(m_list->currentItem(), QAbstractItemView::PositionAtCenter);
    m_list->setFocus();
}
