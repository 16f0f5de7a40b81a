// Cells of the table of a property filter.
#include "filter_cell_delegate.h"

#include "frame/util/resource_text.h"
#include "manager_ui/filters/filter_table.h"

#include <QComboBox>

namespace {

const KvFilterProperty& propertyOf(const QModelIndex& index) {
    return filterProperties()[static_cast<std::size_t>(index.column())];
}

/// What users read.
QString textOf(const KvFilterProperty& property, const QString& value) {
    const ModuleResources resources;
    for (std::size_t i = 0; i < property.values.size(); ++i) {
        if (value == QLatin1String(property.values[i])) return resourceText(property.valueTexts[i]);
    }
    return value;
}

}  // namespace

QString KvFilterCellDelegate::displayText(const QVariant& value, const QLocale& /*locale*/) const {
    return value.toString();
}

void KvFilterCellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->text = textOf(propertyOf(index), index.data(Qt::EditRole).toString());
}

QWidget* KvFilterCellDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                            const QModelIndex& index) const {
    const KvFilterProperty& property = propertyOf(index);
    if (property.values.empty()) return QStyledItemDelegate::createEditor(parent, option, index);
    auto* const choice = new QComboBox(parent);
    choice->addItem(QString(), QString());
    for (const char* const value : property.values) {
        choice->addItem(textOf(property, value), QString(value));
    }
    connect(choice, QOverload<int>::of(&QComboBox::activated), this, [this, choice] {
        auto* const self = const_cast<KvFilterCellDelegate*>(this);
        emit self->commitData(choice);
        emit self->closeEditor(choice);
    });
    return choice;
}

void KvFilterCellDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* const choice = qobject_cast<QComboBox*>(editor)) {
        choice->setCurrentIndex(std::max(choice->findData(index.data(Qt::EditRole)), 0));
    } else {
        QStyledItemDelegate::setEditorData(editor, index);
    }
}

void KvFilterCellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                        const QModelIndex& index) const {
    if (const auto* const choice = qobject_cast<QComboBox*>(editor)) {
        model->setData(index, choice->currentData());
    } else {
        QStyledItemDelegate::setModelData(editor, model, index);
    }
}
