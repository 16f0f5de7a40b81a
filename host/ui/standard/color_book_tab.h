// Colours of colour books.
#pragma once

#include "host/editor/color_books.h"
#include "host/ui/standard/color_tab.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPlainTextEdit;

namespace korvex {

/// A book's tabs on the left, the colours of one on the right; with a search text all of the book's colours
/// that have it in their names.
class ColorBookTab : public ColorTab {
    Q_OBJECT
public:
    ColorBookTab(ColorBooks books, QWidget* parent);

    void showColor(const HxCmColor& color) override;
    void takeFocus() override;
    /// The book that is shown; empty when there is none.
    QString bookName() const;
    /// Changes nothing for a book that there is not.
    void showBook(const QString& name);

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    void makeControls();
    void layOut();
    void showFaults();
    const ColorBook* book() const;
    void fillPages();
    void fillColors();
    void takeFound();
    void addColor(const BookColor& color);
    void markChosen();
    void choose(QListWidgetItem* item);
    void describe(QListWidgetItem* item);

    ColorBooks m_books;
    HxCmColor m_color;
    int m_page = 0;
    bool m_isFilling = false;
    QComboBox* m_bookList;
    QLineEdit* m_search;
    QListWidget* m_pages;
    QListWidget* m_colors;
    QLabel* m_note;
    QPlainTextEdit* m_faults;
};

}  // namespace korvex
