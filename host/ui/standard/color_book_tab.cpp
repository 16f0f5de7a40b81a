// The tab of colour books.
#include "host/ui/standard/color_book_tab.h"

#include "host/base/text.h"
#include "host/db/kernel/text_fold.h"
#include "host/ui/standard/color_text.h"

#include <QComboBox>
#include <QDir>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStyledItemDelegate>

#include <algorithm>

namespace korvex {

namespace {

constexpr int kColorRole = Qt::UserRole;  ///< QColor; the text is the name
constexpr int kPadding = 4;
constexpr int kFaultLines = 3;

/// A field of colour with its name below.
class NamedFieldPainter : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return static_cast<const QListView*>(option.widget)->gridSize();
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        const bool isChosen = option.state & QStyle::State_Selected;
        const QPalette::ColorGroup group =
            option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        if (isChosen) {
            painter->fillRect(option.rect, option.palette.brush(group, QPalette::Highlight));
        }
        const int line = option.fontMetrics.height();
        QRect inside = option.rect.adjusted(kPadding, kPadding, -kPadding, -kPadding);
        const QRect text(inside.left(), inside.bottom() - line + 1, inside.width(), line);
        inside.setBottom(text.top() - kPadding);
        painter->setPen(option.palette.color(QPalette::Mid));
        painter->setBrush(index.data(kColorRole).value<QColor>());
        painter->drawRect(inside.adjusted(0, 0, -1, -1));
        painter->setPen(option.palette.color(group, isChosen ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(
            text, Qt::AlignCenter,
            option.fontMetrics.elidedText(index.data().toString(), Qt::ElideRight, text.width()));
        if (option.state & QStyle::State_HasFocus) {
            painter->setBrush(Qt::NoBrush);
            painter->setPen(QPen(option.palette.color(QPalette::Text), 1, Qt::DotLine));
            painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
        }
    }
};

/// A list of such fields in columns that take the whole width and are wide enough for the names.
class BookColorList : public QListWidget {
public:
    explicit BookColorList(QWidget* parent) : QListWidget(parent) {
        setItemDelegate(new NamedFieldPainter(this));
        setFlow(QListView::LeftToRight);
        setWrapping(true);
        setResizeMode(QListView::Adjust);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        setMouseTracking(true);
    }

    void fitColumns() {
        const int line = fontMetrics().height();
        int widest = line * 4;
        for (int i = 0; i < count(); ++i) {
            widest = qMax(widest, fontMetrics().horizontalAdvance(item(i)->text()) + 3 * kPadding);
        }
        const int room = viewport()->width() - 1;
        setGridSize({room / qMax(1, room / widest), line * 3 + 3 * kPadding});
    }

protected:
    void resizeEvent(QResizeEvent* event) override {
        QListWidget::resizeEvent(event);
        fitColumns();
    }
};

}  // namespace

ColorBookTab::ColorBookTab(ColorBooks books, QWidget* parent)
    : ColorTab(parent), m_books(std::move(books)), m_bookList(new QComboBox(this)),
      m_search(new QLineEdit(this)), m_pages(new QListWidget(this)), m_colors(new BookColorList(this)),
      m_note(new QLabel(this)), m_faults(new QPlainTextEdit(this)) {
    makeControls();
    layOut();
    for (const ColorBook& each : m_books.books) {
        m_bookList->addItem(toQString(each.name));
    }
    showFaults();
    connect(m_bookList, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ColorBookTab::fillPages);
    connect(m_search, &QLineEdit::textChanged, this, &ColorBookTab::fillColors);
    connect(m_pages, &QListWidget::currentRowChanged, this, [this](int row) {
        if (!m_isFilling) {
            m_page = row;
            m_search->clear();
            fillColors();
        }
    });
    connect(m_colors, &QListWidget::itemSelectionChanged, this, [this] {
        if (!m_isFilling && !m_colors->selectedItems().isEmpty()) {
            choose(m_colors->selectedItems().first());
        }
    });
    connect(m_colors, &QListWidget::itemDoubleClicked, this, &ColorTab::confirmed);
    connect(m_colors, &QListWidget::itemEntered, this, &ColorBookTab::describe);
    fillPages();
}

void ColorBookTab::makeControls() {
    m_bookList->setObjectName("IDC_COLOR_BOOK");
    m_bookList->setAccessibleName(tr("Color book"));
    m_search->setObjectName("IDC_COLOR_SEARCH");
    m_search->setAccessibleName(tr("Search for a color name"));
    m_search->setPlaceholderText(tr("Part of a color name"));
    m_search->setToolTip(tr("Enter takes the first color found"));
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_pages->setObjectName("IDC_COLOR_PAGES");
    m_pages->setAccessibleName(tr("Pages of the book"));
    m_colors->setObjectName("IDC_COLOR_BOOK_COLORS");
    m_colors->setAccessibleName(tr("Colors of the page"));
    m_note->setObjectName("IDC_COLOR_BOOK_NOTE");
    m_note->setWordWrap(true);
    m_faults->setObjectName("IDC_COLOR_BOOK_FAULTS");
    m_faults->setAccessibleName(tr("Books that could not be read"));
    m_faults->setReadOnly(true);
    m_faults->setTabChangesFocus(true);
    m_faults->setMaximumHeight(fontMetrics().lineSpacing() * kFaultLines + 2 * kPadding + 4);
}

void ColorBookTab::layOut() {
    auto* const layout = new QGridLayout(this);
    const auto addLabel = [this, layout](const QString& text, QWidget* buddy, int row, int column) {
        auto* const label = new QLabel(text, this);
        label->setBuddy(buddy);
        layout->addWidget(label, row, column);
    };
    addLabel(tr("Color &book:"), m_bookList, 0, 0);
    layout->addWidget(m_bookList, 1, 0);
    addLabel(tr("&Search:"), m_search, 0, 1);
    layout->addWidget(m_search, 1, 1);
    addLabel(tr("&Pages:"), m_pages, 2, 0);
    layout->addWidget(m_pages, 3, 0);
    addLabel(tr("C&olors:"), m_colors, 2, 1);
    layout->addWidget(m_colors, 3, 1);
    layout->addWidget(m_note, 4, 0, 1, 2);
    layout->addWidget(m_faults, 5, 0, 1, 2);
    layout->setColumnStretch(0, 2);
    layout->setColumnStretch(1, 5);
    layout->setRowStretch(3, 1);
}

void ColorBookTab::showFaults() {
    QStringList lines;
    for (const FileFault& fault : m_books.faults) {
        lines << toQString(fault.text());
    }
    m_faults->setPlainText(lines.join('\n'));
    m_faults->setVisible(!lines.isEmpty());
    m_colors->setToolTip(tr("Books of your own: .%1 files in %2")
                             .arg(kColorBookExtension, QDir::toNativeSeparators(colorBookFolder())));
}

const ColorBook* ColorBookTab::book() const { return m_books.find(toWide(bookName())); }

QString ColorBookTab::bookName() const { return m_bookList->currentText(); }

void ColorBookTab::showBook(const QString& name) {
    const int at = m_bookList->findText(name, Qt::MatchFixedString);
    if (at >= 0) {
        m_bookList->setCurrentIndex(at);
    }
}

void ColorBookTab::fillPages() {
    m_isFilling = true;
    m_pages->clear();
    if (const ColorBook* shown = book()) {
        for (const ColorBookPage& page : shown->pages) {
            m_pages->addItem(toQString(page.title));
        }
    }
    m_page = 0;
    m_isFilling = false;
    fillColors();
}

/// The colours of the tab, or those that are searched for.
void ColorBookTab::fillColors() {
    m_isFilling = true;
    m_colors->clear();
    const QString wanted = m_search->text().trimmed();
    m_pages->setCurrentRow(wanted.isEmpty() ? m_page : -1);
    const ColorBook* const shown = book();
    for (int i = 0; shown && i < static_cast<int>(shown->pages.size()); ++i) {
        for (const BookColor& color : shown->pages[static_cast<std::size_t>(i)].colors) {
            if (wanted.isEmpty() ? i == m_page
                                 : toQString(color.name).contains(wanted, Qt::CaseInsensitive)) {
                addColor(color);
            }
        }
    }
    static_cast<BookColorList*>(m_colors)->fitColumns();
    m_isFilling = false;
    markChosen();
}

void ColorBookTab::addColor(const BookColor& color) {
    const QColor rgb(color.red, color.green, color.blue);
    auto* const item = new QListWidgetItem(toQString(color.name), m_colors);
    item->setData(kColorRole, rgb);
    item->setToolTip(QStringLiteral("%1, RGB %2").arg(item->text(), rgbText(rgb)));
    item->setData(Qt::AccessibleTextRole, item->toolTip());
}

/// Selects the chosen colour where it is shown, and tells about it.
void ColorBookTab::markChosen() {
    m_isFilling = true;
    QListWidgetItem* chosen = nullptr;
    if (m_color.isFromBook() && equalNames(m_color.bookName(), toWide(bookName()))) {
        for (int i = 0; i < m_colors->count() && !chosen; ++i) {
            const bool isIt = equalNames(toWide(m_colors->item(i)->text()), m_color.colorName());
            chosen = isIt ? m_colors->item(i) : nullptr;
        }
    }
    m_colors->clearSelection();
    if (chosen) {
        m_colors->setCurrentItem(chosen);
        m_colors->scrollToItem(chosen);
    }
    m_isFilling = false;
    if (m_colors->count() == 0) {
        m_note->setText(m_books.books.empty() ? tr("There are no color books.")
                                              : tr("No color of this book has such a name."));
    } else if (m_color.isFromBook() && !m_books.find(m_color.bookName())) {
        m_note->setText(tr("The color book \"%1\" of the color %2 is not here; the color can be kept.")
                            .arg(toQString(m_color.bookName()), toQString(m_color.colorName())));
    } else {
        describe(chosen);
    }
}

void ColorBookTab::describe(QListWidgetItem* item) { m_note->setText(item ? item->toolTip() : QString()); }

void ColorBookTab::choose(QListWidgetItem* item) {
    const ColorBook* const shown = book();
    const BookColor* const entry = shown ? shown->find(toWide(item->text())) : nullptr;
    if (entry) {
        m_color = shown->color(*entry);
        describe(item);
        Q_EMIT chosen(m_color);
    }
}

/// The first colour found is the choice, unless one of them is it already.
void ColorBookTab::takeFound() {
    if (m_colors->count() > 0) {
        m_colors->setFocus();
        if (m_colors->selectedItems().isEmpty()) {
            m_colors->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
        }
    }
}

/// Enter and Down go on from a search to what it found; Enter there ends the dialog.
bool ColorBookTab::eventFilter(QObject* receiver, QEvent* event) {
    if (receiver == m_search && event->type() == QEvent::KeyPress && !m_search->text().trimmed().isEmpty()) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down) {
            takeFound();
            return true;
        }
    }
    return ColorTab::eventFilter(receiver, event);
}

void ColorBookTab::takeFocus() { m_colors->setFocus(); }

void ColorBookTab::showColor(const HxCmColor& color) {
    m_color = color;
    const ColorBook* const itsBook = color.isFromBook() ? m_books.find(color.bookName()) : nullptr;
    const BookColor* const entry = itsBook ? itsBook->find(color.colorName()) : nullptr;
    if (entry) {
        m_search->clear();
        showBook(toQString(itsBook->name));
        const auto page = std::find_if(itsBook->pages.begin(), itsBook->pages.end(), [&](const auto& each) {
            return entry >= each.colors.data() && entry < each.colors.data() + each.colors.size();
        });
        m_pages->setCurrentRow(static_cast<int>(page - itsBook->pages.begin()));
    }
    markChosen();
}

}  // namespace korvex
