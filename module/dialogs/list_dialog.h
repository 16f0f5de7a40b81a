// A dialog that offers a list of which one item is chosen.
#pragma once

#include "hxdialog.h"

class QListWidget;
class QListWidgetItem;

/// Enter and a double click take the item with the focus. The layout has the list and OK.
class KvListDialog : public HxUiBaseDialog {
    Q_OBJECT
public:
    KvListDialog(const char* layout, const char* list, QWidget* parent);

protected:
    /// Null when the layout could not be loaded.
    QListWidget* list() const { return m_list; }
    /// Marks an item and brings it into view; null leaves the first one.
    void mark(QListWidgetItem* item);

private:
    QListWidget* m_list = nullptr;
};
