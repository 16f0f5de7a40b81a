// What was asked and answered so far.
#pragma once

#include <QPlainTextEdit>

namespace korvex {

/// Read-only lines that stay at the end as long as the user has not scrolled away from it.
class HistoryPane : public QPlainTextEdit {
    Q_OBJECT
public:
    explicit HistoryPane(QWidget* parent = nullptr);

    /// A piece of the dialogue as the console writes it.
    void append(const QString& text);
    /// Scrolls by a page: up (-1) or down (1).
    void turnPage(int by);
    /// The height of so many lines.
    int heightOf(int lines) const;

    QSize minimumSizeHint() const override { return {0, heightOf(1)}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool isAtEnd() const;
    void goToEnd();

    bool m_owesLineEnd = false;  ///< of the last line: a line end shows only when there is something after it
};

}  // namespace korvex
