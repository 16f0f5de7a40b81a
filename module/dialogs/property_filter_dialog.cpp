// Making and changing a property filter.
#include "property_filter_dialog.h"

#include "filter_cell_delegate.h"

#include "frame/util/format_message.h"
#include "frame/util/resource_text.h"
#include "frame/util/symbol_name.h"
#include "model/layer_data.h"
#include "model/layer_prop_manager.h"

#include "hxlyfilter.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStringListModel>
#include <QTableWidget>

namespace {

/// So many names are listed; the number below counts all.
constexpr int kMostListed = 1000;
constexpr int kNameWidth = 130;
constexpr int kColumnWidth = 84;

}  // namespace

KvPropertyFilterDialog::KvPropertyFilterDialog(const KvLayerPropManager& manager, const QString& name,
                                               const QString& expression, const HxLyLayerFilter* around,
                                               QWidget* parent)
    : HxUiBaseDialog("IDD_PROPFILTER_DLG", parent), m_manager(manager), m_name(name),
      m_expression(expression), m_nameBefore(name), m_matches(new QStringListModel(this)) {
    const HxArray<KvLayerData*> layers =
        around ? manager.GetFilteredLayers(around) : manager.GetAllLayersRef();
    for (const KvLayerData* const data : layers) {
        m_layers.push_back(data->layerId());
    }
}

void KvPropertyFilterDialog::DoDataExchange(CDataExchange* exchange) {
    DDX_Control(exchange, "IDC_PROPFILTER_NAME", m_nameField);
    DDX_Control(exchange, "IDC_PROPFILTER_TABLE", m_table);
    DDX_Control(exchange, "IDC_PROPFILTER_EXPRESSION", m_expressionField);
    DDX_Control(exchange, "IDC_PROPFILTER_NOTE", m_note);
    DDX_Control(exchange, "IDC_PROPFILTER_COUNT", m_count);
}

bool KvPropertyFilterDialog::OnInitDialog() {
    const ModuleResources resources;
    HxUiBaseDialog::OnInitDialog();
    if (!m_nameField || !m_table || !m_expressionField || !m_note || !m_count) return true;
    m_nameField->setText(m_name);
    m_nameField->selectAll();
    m_expressionField->setText(m_expression);
    if (auto* const preview = GetDlgItem<QListView>("IDC_PROPFILTER_PREVIEW")) {
        preview->setModel(m_matches);
        preview->setUniformItemSizes(true);
    }
    prepareTable();
    showTable();
    showMatches();
    connect(m_table, SIGNAL(cellChanged(int, int)), SLOT(tableChanged()));
    connect(m_expressionField, SIGNAL(textEdited(QString)), SLOT(expressionTyped(QString)));
    connect(GetDlgItem("IDC_PROPFILTER_REMOVE"), SIGNAL(clicked()), SLOT(removeRow()));
    m_nameField->setFocus();
    return true;
}

// ---- the table: an empty row at its end takes the next alternative ----

void KvPropertyFilterDialog::prepareTable() {
    const std::vector<KvFilterProperty>& properties = filterProperties();
    m_table->setColumnCount(static_cast<int>(properties.size()));
    QStringList headers;
    for (const KvFilterProperty& property : properties) {
        headers << resourceText(property.header);
    }
    m_table->setHorizontalHeaderLabels(headers);
    m_table->horizontalHeader()->setDefaultSectionSize(kColumnWidth);
    m_table->setColumnWidth(0, kNameWidth);
    m_table->verticalHeader()->hide();
    m_table->setItemDelegate(new KvFilterCellDelegate(m_table));
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                             QAbstractItemView::EditKeyPressed | QAbstractItemView::AnyKeyPressed);
}

void KvPropertyFilterDialog::addEmptyRow() {
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    for (int column = 0; column < m_table->columnCount(); ++column) {
        m_table->setItem(row, column, new QTableWidgetItem);
    }
}

/// An expression that a table has no place for disables the table.
void KvPropertyFilterDialog::showTable() {
    const QSignalBlocker silence(m_table);
    KvFilterTable rows;
    const bool fits = tableOf(m_expression, rows);
    m_table->setRowCount(0);
    for (const KvFilterRow& row : rows) {
        addEmptyRow();
        for (int column = 0; column < row.size(); ++column) {
            m_table->item(m_table->rowCount() - 1, column)->setData(Qt::EditRole, row[column]);
        }
    }
    if (fits) addEmptyRow();
    m_table->setEnabled(fits);
    if (QWidget* const remove = GetDlgItem("IDC_PROPFILTER_REMOVE")) remove->setEnabled(fits);
}

KvFilterTable KvPropertyFilterDialog::readTable() const {
    KvFilterTable rows;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        KvFilterRow values;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            values << m_table->item(row, column)->data(Qt::EditRole).toString().trimmed();
        }
        rows.push_back(values);
    }
    return rows;
}

void KvPropertyFilterDialog::tableChanged() {
    const ModuleResources resources;
    const KvFilterTable rows = readTable();
    m_expression = expressionOf(rows);
    m_expressionField->setText(m_expression);
    const bool lastIsUsed = !rows.empty() && !rows.back().join(QString()).isEmpty();
    if (lastIsUsed) {
        const QSignalBlocker silence(m_table);
        addEmptyRow();
    }
    showMatches();
}

void KvPropertyFilterDialog::removeRow() {
    const int row = m_table->currentRow();
    if (row < 0) return;
    {
        const QSignalBlocker silence(m_table);
        m_table->removeRow(row);
        if (m_table->rowCount() == 0) addEmptyRow();
    }
    tableChanged();
}

// ---- the expression and what it accepts ----

void KvPropertyFilterDialog::expressionTyped(const QString& text) {
    const ModuleResources resources;
    m_expression = text;
    showTable();
    showMatches();
}

void KvPropertyFilterDialog::showMatches() {
    HxLyLayerFilter filter;
    HxLyExpressionError error;
    filter.setFilterExpression(m_expression.toStdWString().c_str(), &error);
    m_trouble.clear();
    if (error.position >= 0) {
        m_trouble = formatMessage(resourceText(kStrFilterTrouble), {QString::number(error.position + 1),
                                                                    QString::fromStdWString(error.reason)});
    }
    QStringList names;
    int count = 0;
    for (const HxDbObjectId id : m_layers) {
        const HxDbObjectPointer<HxDbLayerTableRecord> layer(id, HxDb::kForRead);
        if (!layer || !filter.filter(layer.object())) continue;
        if (++count <= kMostListed) names << QString::fromWCharArray(layer->name());
    }
    names.sort(Qt::CaseInsensitive);
    m_matches->setStringList(names);
    m_count->setText(formatMessage(resourceText(kStrFilterMatches),
                                   {QString::number(count), QString::number(m_layers.size())}));
    const QString hint = m_table->isEnabled() ? QString() : resourceText(kStrFilterNoTable);
    m_note->setText(m_trouble.isEmpty() ? hint : m_trouble);
}

// ---- OK ----

QString KvPropertyFilterDialog::nameTrouble(const QString& name) const {
    if (!kv_isvalidname(name.toStdWString().c_str())) {
        return formatMessage(resourceText(kStrFilterNameInvalid), {name});
    }
    const bool isSame = name.compare(m_nameBefore, Qt::CaseInsensitive) == 0;
    const bool isTaken = !isSame && m_manager.FindFilter(name.toStdWString().c_str());
    return isTaken ? formatMessage(resourceText(kStrFilterNameDuplicate), {name}) : QString();
}

void KvPropertyFilterDialog::OnOK() {
    const ModuleResources resources;
    const QString name = m_nameField ? m_nameField->text().trimmed() : QString();
    const QString badName = nameTrouble(name);
    const QString trouble = badName.isEmpty() ? m_trouble : badName;
    if (!trouble.isEmpty()) {
        MessageBox(trouble.toStdWString().c_str(), nullptr, MB_OK | MB_ICONWARNING);
        (badName.isEmpty() ? m_expressionField : m_nameField)->setFocus();
        return;
    }
    m_name = name;
    HxUiBaseDialog::OnOK();
}
