// Adds lines at the end and keeps it in sight.
#include "host/ui/workbench/history_pane.h"

#include <QScrollBar>
#include <QtMath>

namespace korvex {

namespace {

constexpr int kMostLines = 5000;
constexpr int kRounding = 3;  // lines are laid out in fractions of pixels

}  // namespace

HistoryPane::HistoryPane(QWidget* parent) : QPlainTextEdit(parent) {
    setObjectName("CommandHistory");
    setAccessibleName(tr("Command history"));
    setToolTip(tr("What was asked and answered so far. F2 enlarges it."));
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setMaximumBlockCount(kMostLines);
    setFrameShape(QFrame::NoFrame);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

bool HistoryPane::isAtEnd() const {
    return verticalScrollBar()->value() >= verticalScrollBar()->maximum() - 1;
}

void HistoryPane::goToEnd() { verticalScrollBar()->setValue(verticalScrollBar()->maximum()); }

int HistoryPane::heightOf(int lines) const {
    const QFontMetricsF metrics(font());
    const int line = qCeil(metrics.ascent()) + qCeil(metrics.descent()) + qCeil(metrics.leading());
    return lines * line + 2 * qCeil(document()->documentMargin()) + kRounding;
}

void HistoryPane::append(const QString& text) {
    const bool follows = isAtEnd();
    QString added = m_owesLineEnd ? '\n' + text : text;
    m_owesLineEnd = added.endsWith('\n');
    if (m_owesLineEnd) {
        added.chop(1);
    }
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    end.insertText(added);
    if (follows) {
        goToEnd();
    }
}

void HistoryPane::turnPage(int by) {
    verticalScrollBar()->triggerAction(by < 0 ? QAbstractSlider::SliderPageStepSub
                                              : QAbstractSlider::SliderPageStepAdd);
}

void HistoryPane::resizeEvent(QResizeEvent* event) {
    const bool follows = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (follows) {
        goToEnd();
    }
}

}  // namespace korvex
