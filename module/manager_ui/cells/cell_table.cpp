// A table of rows that are edited by clicks on their cells.
#include "cell_table.h"

#include <QDateTime>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QScreen>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace {

/// Between the outermost cell rows and their text.
constexpr int kRowPadding = 4;
constexpr int kIconSize = 16;

/// No more and no less than these: a shifted click selects.
bool isPlainLeft(const QMouseEvent& event) {
    return event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier;
}

}  // namespace

void putInPlace(QWidget* other, QTableView& table) {
    QWidget* const parent = other ? other->parentWidget() : nullptr;
    if (!parent || !parent->layout()) return;
    const QString name = other->objectName();
    table.setAccessibleName(other->accessibleName());
    QWidget* before = other->previousInFocusChain();
    while (before != other && (before == &table || before->focusPolicy() == Qt::NoFocus)) {
        before = before->previousInFocusChain();
    }
    if (before != other) QWidget::setTabOrder(before, &table);
    delete parent->layout()->replaceWidget(other, &table);
    delete other;
    table.setObjectName(name);
}

void widenFor(const QTableView& table, QDialog& dialog) {
    constexpr int kScreenEdge = 24;  // for the window's frame
    const QMargins around = dialog.layout() ? dialog.layout()->contentsMargins() : QMargins();
    const int scrollBar = table.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &table);
    const int wanted = table.horizontalHeader()->length() + 2 * table.frameWidth() + scrollBar +
                       around.left() + around.right();
    const QScreen* const screen = dialog.parentWidget() ? dialog.parentWidget()->screen() : dialog.screen();
    const int most = screen ? screen->availableGeometry().width() - kScreenEdge : wanted;
    dialog.resize(std::max(dialog.width(), std::min(wanted, most)), dialog.height());
}

KvCellTable::KvCellTable(int nameColumn, QWidget* parent) : QTableView(parent), m_nameColumn(nameColumn) {
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setAlternatingRowColors(true);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(kIconSize);
    verticalHeader()->setDefaultSectionSize(usualRowHeight());
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* const header = horizontalHeader();
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSortIndicatorShown(true);
}

int KvCellTable::usualRowHeight() const { return std::max(fontMetrics().height(), kIconSize) + kRowPadding; }

void KvCellTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        verticalHeader()->setDefaultSectionSize(usualRowHeight());
    }
}

// ---- selection ----

std::vector<int> KvCellTable::selectedRowNumbers() const {
    std::vector<int> rows;
    if (!selectionModel()) return rows;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        if (range.left() > m_nameColumn || range.right() < m_nameColumn) continue;
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.push_back(row);
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

/// Whole rows, neighbours in one range each.
void KvCellTable::selectRowNumbers(const std::vector<int>& rows) {
    QItemSelection selection;
    const int last = model()->columnCount() - 1;
    for (std::size_t first = 0; first < rows.size();) {
        std::size_t end = first + 1;
        while (end < rows.size() && rows[end] == rows[end - 1] + 1) {
            ++end;
        }
        selection.select(model()->index(rows[first], 0), model()->index(rows[end - 1], last));
        first = end;
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void KvCellTable::makeCurrent(const QModelIndex& index, QItemSelectionModel::SelectionFlags selecting) {
    const int left = horizontalScrollBar()->value();
    selectionModel()->setCurrentIndex(index, selecting);
    scrollTo(index);
    horizontalScrollBar()->setValue(left);
}

// ---- what derived tables do ----

bool KvCellTable::isClickedColumn(int /*column*/) const { return false; }

void KvCellTable::cellClicked(int /*row*/, int /*column*/) {}

void KvCellTable::cellDoubleClicked(int /*row*/, int /*column*/) {}

QString KvCellTable::nameAt(int row) const { return model()->index(row, m_nameColumn).data().toString(); }

bool KvCellTable::keyEdits(QKeyEvent* /*event*/) { return false; }

// ---- mouse ----

void KvCellTable::mousePressEvent(QMouseEvent* event) {
    m_pressed = isPlainLeft(*event) ? indexAt(event->pos()) : QModelIndex();
    QTableView::mousePressEvent(event);
}

/// A click on a cell of a selected row acts on all selected rows: it does not make this row the only one.
QItemSelectionModel::SelectionFlags KvCellTable::selectionCommand(const QModelIndex& index,
                                                                  const QEvent* event) const {
    const bool isClick = event && event->type() == QEvent::MouseButtonRelease && m_pressed.isValid() &&
                         index == m_pressed && isClickedColumn(index.column());
    return isClick ? QItemSelectionModel::NoUpdate : QTableView::selectionCommand(index, event);
}

void KvCellTable::mouseReleaseEvent(QMouseEvent* event) {
    const QModelIndex released = indexAt(event->pos());
    const bool isClick = isPlainLeft(*event) && released.isValid() && m_pressed == released;
    QTableView::mouseReleaseEvent(event);
    m_pressed = QModelIndex();
    if (isClick && isClickedColumn(released.column())) cellClicked(released.row(), released.column());
}

void KvCellTable::mouseDoubleClickEvent(QMouseEvent* event) {
    QTableView::mouseDoubleClickEvent(event);
    m_pressed = QModelIndex();
    const QModelIndex at = indexAt(event->pos());
    if (event->button() == Qt::LeftButton) cellDoubleClicked(at.row(), at.column());
}

// ---- keyboard ----

void KvCellTable::goToRow(int row, bool extend) {
    if (row < 0 || row >= model()->rowCount()) return;
    const QModelIndex to =
        model()->index(row, currentIndex().isValid() ? currentIndex().column() : m_nameColumn);
    if (extend) {
        const int from = std::max(currentIndex().row(), 0);
        const int last = model()->columnCount() - 1;
        const QItemSelection range(model()->index(std::min(from, row), 0),
                                   model()->index(std::max(from, row), last));
        selectionModel()->select(range, QItemSelectionModel::Select);
        makeCurrent(to, QItemSelectionModel::NoUpdate);
    } else {
        makeCurrent(to, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
}

void KvCellTable::keyPressEvent(QKeyEvent* event) {
    if (isEditing()) return;  // the Enter that ends the editor means nothing else
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    switch (event->key()) {
    case Qt::Key_Home: goToRow(0, extend); break;
    case Qt::Key_End: goToRow(model()->rowCount() - 1, extend); break;
    default:
        if (!keyEdits(event)) QTableView::keyPressEvent(event);
        break;
    }
}

bool KvCellTable::goToName(const QString& beginning, int from) {
    const int rows = model()->rowCount();
    for (int step = 0; step < rows; ++step) {
        const int row = (from + step) % rows;
        if (nameAt(row).startsWith(beginning, Qt::CaseInsensitive)) {
            goToRow(row, false);
            return true;
        }
    }
    return false;
}

/// What is typed without a pause is the beginning of a name; one letter again and again goes through those
/// that begin with it.
void KvCellTable::keyboardSearch(const QString& typed) {
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    constexpr qint64 kPause = 1000;
    const bool goesOn = !m_typed.isEmpty() && now - m_typedAt < kPause && m_typed != typed;
    m_typed = goesOn ? m_typed + typed : typed;
    m_typedAt = now;
    if (goesOn) {
        goToName(m_typed, std::max(currentIndex().row(), 0));
    } else if (!m_typed.isEmpty()) {
        const wchar_t letter = m_typed.toStdWString().front();
        goToName(QString::fromWCharArray(&letter, 1), currentIndex().row() + 1);
    }
}
