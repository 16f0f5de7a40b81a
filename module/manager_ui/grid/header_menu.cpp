// The context menu of the grid's header: which columns are shown, and how wide.
#include "layer_column.h"
#include "layer_list_ctrl.h"
#include "layer_list_model.h"

#include "frame/util/resource_text.h"

#include <QHeaderView>
#include <QMenu>

/// A column that is hidden is stored with the width 0.
void KvLayerListCtrl::showColumn(int column, bool show) {
    QHeaderView* const header = horizontalHeader();
    header->setSectionHidden(column, !show);
    if (show && header->sectionSize(column) <= kLeastColumnWidth) {
        const bool isModel = header->count() <= static_cast<int>(kModelColumnCount);
        const auto defaults = defaultColumns(isModel ? KvColumnSet::modelSpace : KvColumnSet::layout);
        header->resizeSection(column, defaults[static_cast<std::size_t>(column)].width);
    }
    emit horizontalHeader()->sectionResized(column, 0, header->sectionSize(column));
}

void KvLayerListCtrl::showHeaderMenu(const QPoint& at) {
    const ModuleResources resources;
    QHeaderView* const header = horizontalHeader();
    QMenu menu(this);
    menu.setObjectName("LayerListHeaderMenu");
    const int clicked = header->logicalIndexAt(at);
    QAction* const fit = menu.addAction(resourceText(kStrHeaderMenuFit), this, [this, clicked] {
        if (clicked >= 0) resizeColumnToContents(clicked);
    });
    fit->setEnabled(clicked >= 0);
    menu.addAction(resourceText(kStrHeaderMenuFitAll), this, [this] { resizeColumnsToContents(); });
    menu.addAction(resourceText(kStrHeaderMenuReset), this, [this] { emit columnsReset(); });
    menu.addSeparator();
    for (int position = 0; position < header->count(); ++position) {
        const int column = header->logicalIndex(position);
        QAction* const shown =
            menu.addAction(m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        shown->setCheckable(true);
        shown->setChecked(!header->isSectionHidden(column));
        shown->setEnabled(column != kColName);
        connect(shown, &QAction::toggled, this, [this, column](bool show) { showColumn(column, show); });
    }
    menu.exec(header->mapToGlobal(at));
}
