// Typing names and descriptions of layers into their cells.
#include "layer_change.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "frame/util/symbol_name.h"
#include "frame/util/system_variable.h"
#include "manager_ui/grid/layer_column.h"
#include "manager_ui/grid/layer_list_ctrl.h"
#include "manager_ui/grid/layer_list_model.h"
#include "model/auto_layer_record.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxdbdatabase.h"
#include "hxdialog.h"

#include <QLineEdit>

#include <utility>

namespace {

void warn(KvLayerListCtrl& grid, int text, const QString& value) {
    const ModuleResources resources;
    CWnd(&grid).MessageBox(formatMessage(resourceText(text), {value}).toStdWString().c_str(), nullptr,
                           MB_OK | MB_ICONWARNING);
}

/// The longest name that drawings of this setting hold; 0 for any length.
int longestName() {
    switch (shortVariable(L"EXTNAMES", -1)) {
    case 0: return 31;
    case 1: return 255;
    default: return 0;
    }
}

bool hasFixedName(const HxDbLayerTableRecord& layer) {
    return layer.isDependent() || layer.objectId() == layer.objectId().database()->layerZero();
}

}  // namespace

// ---- opening the editor ----

/// A slow click on the only selected row opens the editor, as F2 does.
bool KvLayerListCtrl::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool isSlowClick = isPressed() && selectionModel()->selectedRows().size() == 1;
    if (trigger == SelectedClicked && !isSlowClick) return false;
    if (trigger == AllEditTriggers && (isEditing() || !OnLvnBeginlabeledit(index.row(), index.column()))) {
        return true;  // the user has been told why
    }
    if (trigger == AllEditTriggers) QTableView::edit(index, DoubleClicked, nullptr);  // no slow click waits
    return QTableView::edit(index, trigger, event);
}

bool KvLayerListCtrl::OnLvnBeginlabeledit(int row, int column) {
    KvLayerData* const layer = m_model->layerAt(row);
    if (!layer || (column != kColName && column != kColDescription) || !canEdit()) return false;
    bool isFixed = false;
    QString name;
    {
        const KvAutoLayerRecordPtr record(transactions(), layer, true);
        if (!record.object()) return false;
        isFixed = column == kColName && hasFixedName(*record.object());
        name = QString::fromWCharArray(record->name());
    }
    if (isFixed) {
        warn(*this, kStrNameFixed, name);
        return false;
    }
    m_edited = layer->layerId();
    m_editedColumn = column;
    return true;
}

void KvLayerListCtrl::editCell(const HxDbLayerTableRecord* layer, int column) {
    const int row = layer ? m_model->rowOf(layer->objectId()) : -1;
    if (row < 0) return;
    const QModelIndex index = m_model->index(row, column);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
    edit(index, AllEditTriggers, nullptr);
}

void KvLayerListCtrl::EditLayerName(HxDbLayerTableRecord* layer) { editCell(layer, kColName); }

void KvLayerListCtrl::EditLayerDescription(HxDbLayerTableRecord* layer) { editCell(layer, kColDescription); }

void KvLayerListCtrl::SetEditLayerName() {
    const QModelIndexList selected = selectionModel()->selectedRows(kColName);
    const bool hasFocus = ItemIsSelected(currentIndex().row());
    if (!hasFocus && selected.isEmpty()) return;
    const QModelIndex name = hasFocus ? m_model->index(currentIndex().row(), kColName) : selected.front();
    edit(name, AllEditTriggers, nullptr);
}

// ---- taking what was typed ----

/// The text is taken from the editor here and nowhere else, so that one that is given up changes nothing.
void KvLayerListCtrl::OnLvnEndlabeledit(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
    const ModuleResources resources;
    const HxDbObjectId layer = std::exchange(m_edited, HxDbObjectId());
    const int column = std::exchange(m_editedColumn, -1);
    const auto* const line = qobject_cast<QLineEdit*>(editor);
    if (!line || layer.isNull() || hint == QAbstractItemDelegate::RevertModelCache || !canEdit()) return;
    if (column == kColName) {
        renameLayer(layer, line->text().trimmed());
    } else {
        describeLayer(layer, line->text());
    }
}

void KvLayerListCtrl::renameLayer(HxDbObjectId layer, const QString& name) {
    const std::wstring wanted = name.toStdWString();
    {
        const KvAutoLayerRecordPtr record(transactions(), m_manager->FindLayer(layer), true);
        if (!record.object() || wanted == record->name()) return;
    }
    const int longest = longestName();
    if (longest > 0 && static_cast<int>(wanted.size()) > longest) {
        warn(*this, kStrNameTooLong, QString::number(longest));
        return;
    }
    if (!kv_isvalidname(wanted.c_str())) {
        warn(*this, kStrNameInvalid, name);
        return;
    }
    Hx::ErrorStatus status = Hx::eOk;
    const QString step = formatMessage(resourceText(kStrUndoRename), {name});
    changeLayers(*this, {layer}, step,
                 [&](HxDbLayerTableRecord& record) { status = record.setName(wanted.c_str()); });
    if (status != Hx::eOk) warn(*this, kStrNameDuplicate, name);
}

void KvLayerListCtrl::describeLayer(HxDbObjectId layer, const QString& description) {
    const std::wstring wanted = description.toStdWString();
    changeLayers(*this, {layer}, resourceText(kStrUndoDescription), [&](HxDbLayerTableRecord& record) {
        if (record.description() != wanted.c_str()) record.setDescription(wanted.c_str());
    });
}
