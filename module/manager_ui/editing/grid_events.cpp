// What mouse and keys edit in the layer grid.
#include "cell_click.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "manager_ui/window/layer_prop_manager_dlg.h"
#include "model/auto_layer_record.h"
#include "model/blocking_commands.h"
#include "model/edit_guard.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include <QApplication>
#include <QClipboard>
#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>

bool KvLayerListCtrl::canEdit() {
    if (!m_manager || !GetDatabase() || GetDatabase() != m_manager->GetDatabase()) return false;
    CWnd window(this);
    return !m_manager->isPaletteMode() || !isNeedBlockCmdRuning(&window);
}

bool KvLayerListCtrl::isClickedColumn(int column) const {
    return column != kColStatus && column != kColName && column != kColDescription;
}

void KvLayerListCtrl::OnClickSubItemLayersList(int row, int column) {
    KvLayerData* const layer = m_model->layerAt(row);
    if (!layer || column < 0 || column >= m_model->columnCount() || !isClickedColumn(column)) return;
    if (canEdit()) KvCellClick(*this, layer->layerId(), column).run();
}

// ---- mouse ----

void KvLayerListCtrl::cellClicked(int row, int column) { OnClickSubItemLayersList(row, column); }

void KvLayerListCtrl::cellDoubleClicked(int row, int /*column*/) {
    KvLayerData* const layer = m_model->layerAt(row);
    if (layer && canEdit()) makeLayerCurrent(layer->layerId());
}

void KvLayerListCtrl::makeLayerCurrent(HxDbObjectId layer) {
    const ModuleResources resources;
    QString name;
    {
        const KvAutoLayerRecordPtr record(transactions(), m_manager->FindLayer(layer), true);
        if (!record.object() || record->isFrozen() || record->isDependent()) return;
        name = QString::fromWCharArray(record->name());
    }
    const QString step = formatMessage(resourceText(kStrUndoSetCurrent), {name});
    const KvLayerUndoAndLockWorker guard(m_manager->isPaletteMode(), step.toStdWString().c_str());
    if (m_manager->SetCurrentLayer(layer) != Hx::eOk) return;
    updateCLayerItemData();
    emit currentLayerSet();
}

/// Whoever takes the drop asks this grid which rows are selected.
void KvLayerListCtrl::startDrag(Qt::DropActions /*actions*/) {
    auto* const data = new QMimeData;
    data->setData("application/x-korvex-layers", QByteArray());

    auto* const drag = new QDrag(this);
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
}

// ---- keys ----

bool KvLayerListCtrl::keyEdits(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
        return true;
    }
    if (event->modifiers() & ~Qt::KeypadModifier) return false;
    const QModelIndex at = currentIndex();
    switch (event->key()) {
    case Qt::Key_Space: OnClickSubItemLayersList(at.row(), at.column()); return true;
    case Qt::Key_F2:
        if (at.column() == kColDescription) {
            edit(at, AllEditTriggers, event);
        } else {
            SetEditLayerName();
        }
        return true;
    case Qt::Key_Delete:
        if (m_dialog) m_dialog->OnButtonDelete();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!m_manager || !m_manager->isPaletteMode() || !m_dialog) return false;
        m_dialog->OnButtonSetCurrent();
        return true;
    default: return false;
    }
}

/// Rows as they are shown, a tab between cells; icons by their meaning.
void KvLayerListCtrl::copySelection() const {
    HxArray<KvLayerData*> layers;
    HxArray<int> rows;
    SelectedLayers(layers, rows);
    QString text;
    for (const int row : rows) {
        QStringList cells;
        for (int position = 0; position < horizontalHeader()->count(); ++position) {
            const int column = horizontalHeader()->logicalIndex(position);
            if (isColumnHidden(column)) continue;
            cells << m_model->index(row, column).data(Qt::AccessibleTextRole).toString();
        }
        text += cells.join('\t') + '\n';
    }
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}
