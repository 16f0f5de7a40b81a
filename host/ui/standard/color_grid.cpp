// The grid of colour fields.
#include "host/ui/standard/color_grid.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>

namespace korvex {

namespace {

constexpr int kFaint = 32;  ///< difference of lightness below which a field needs an outline
constexpr int kGap = 6;     ///< pixels before the gap row

/// Paints a field; frames tell which is chosen, which is under the mouse, where the cursor is.
class FieldPainter : public QStyledItemDelegate {
public:
    FieldPainter(int gapRow, QObject* parent) : QStyledItemDelegate(parent), m_gapRow(gapRow) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const auto color = index.data(Qt::DecorationRole).value<QColor>();
        if (!color.isValid()) {
            return;
        }
        QRect cell = option.rect;
        cell.setTop(cell.top() + (index.row() == m_gapRow ? kGap : 0));
        const bool isChosen = option.state & QStyle::State_Selected;
        const bool isPointed = option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus);
        painter->fillRect(cell.adjusted(1, 1, -1, -1), color);
        if (qAbs(color.lightness() - option.palette.color(QPalette::Window).lightness()) < kFaint) {
            frame(*painter, cell.adjusted(1, 1, -1, -1), option.palette.color(QPalette::Mid), 1);
        }
        if (isChosen) {
            frame(*painter, cell, option.palette.color(QPalette::Text), 2);
            frame(*painter, cell.adjusted(2, 2, -2, -2), option.palette.color(QPalette::Base), 1);
        } else if (isPointed) {
            frame(*painter, cell, option.palette.color(QPalette::Text), 1);
        }
    }

private:
    static void frame(QPainter& painter, const QRect& rect, const QColor& color, int width) {
        for (int i = 0; i < width; ++i) {
            painter.setPen(QPen(color, 1));
            painter.drawRect(rect.adjusted(i, i, -i - 1, -i - 1));
        }
    }

    int m_gapRow;
};

}  // namespace

ColorGridModel::ColorGridModel(std::vector<ColorField> fields, int columns, QObject* parent)
    : QAbstractTableModel(parent), m_fields(std::move(fields)), m_columns(columns) {}

int ColorGridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : (static_cast<int>(m_fields.size()) + m_columns - 1) / m_columns;
}

int ColorGridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_columns; }

QVariant ColorGridModel::data(const QModelIndex& index, int role) const {
    const ColorField* const at = field(index);
    if (!at) {
        return {};
    }
    switch (role) {
    case Qt::DecorationRole: return at->color;
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole: return at->name;
    default: return {};
    }
}

const ColorField* ColorGridModel::field(const QModelIndex& index) const {
    const int at = index.isValid() ? index.row() * m_columns + index.column() : -1;
    return at >= 0 && at < static_cast<int>(m_fields.size()) ? &m_fields[static_cast<std::size_t>(at)]
                                                             : nullptr;
}

QModelIndex ColorGridModel::indexOfValue(int value) const {
    for (int i = 0; i < static_cast<int>(m_fields.size()); ++i) {
        if (m_fields[static_cast<std::size_t>(i)].value == value) {
            return index(i / m_columns, i % m_columns);
        }
    }
    return {};
}

ColorGrid::ColorGrid(std::vector<ColorField> fields, int columns, QWidget* parent, int gapRow)
    : QTableView(parent), m_model(new ColorGridModel(std::move(fields), columns, this)) {
    const int side = qMax(18, fontMetrics().height() + 2);
    for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
        header->hide();
        header->setMinimumSectionSize(side);
        header->setDefaultSectionSize(side);
        header->setSectionResizeMode(QHeaderView::Fixed);
    }
    setModel(m_model);
    setItemDelegate(new FieldPainter(gapRow, this));
    if (gapRow >= 0) {
        setRowHeight(gapRow, side + kGap);
    }
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_Hover);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setCornerButtonEnabled(false);
    viewport()->setAutoFillBackground(false);
    setFixedSize(columns * side, m_model->rowCount() * side + (gapRow >= 0 ? kGap : 0));
    connect(this, &QAbstractItemView::entered, this, [this](const QModelIndex& index) {
        if (const ColorField* field = m_model->field(index)) {
            Q_EMIT pointedAt(field->value);
        }
    });
}

void ColorGrid::setChosen(int value) {
    m_isMarking = true;
    const QModelIndex index = m_model->indexOfValue(value);
    if (!index.isValid()) {
        clearSelection();
    } else if (!selectionModel()->isSelected(index)) {
        setCurrentIndex(index);
    }
    m_isMarking = false;
}

void ColorGrid::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    const QModelIndexList indexes = selected.indexes();
    const ColorField* const field = indexes.isEmpty() ? nullptr : m_model->field(indexes.first());
    if (field && !m_isMarking) {
        Q_EMIT chosen(field->value);
    }
}

void ColorGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    const ColorField* const field = m_model->field(current);
    if (field && hasFocus()) {
        Q_EMIT pointedAt(field->value);
    }
}

void ColorGrid::leaveEvent(QEvent* event) {
    QTableView::leaveEvent(event);
    Q_EMIT leftAll();
}

}  // namespace korvex
