// Measures the text of a message box.
#include "host/ui/dialogs/message_text.h"

#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>
#include <QTextDocument>

#include <cmath>

namespace korvex {

namespace {

constexpr int kWidestInCharacters = 64;
constexpr int kGapBeforeScrollBar = 6;
constexpr double kHighestPartOfScreen = 0.6;

QTextOption wrapping() {
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

/// The room that a text needs when no line is to be wider than `widest`.
QSize sizeOf(const QString& text, const QFont& font, int widest) {
    QTextDocument document;
    document.setDefaultFont(font);
    document.setDocumentMargin(0);
    document.setDefaultTextOption(wrapping());
    document.setPlainText(text);
    document.setTextWidth(widest);
    const int width = static_cast<int>(std::ceil(document.idealWidth())) + 1;
    document.setTextWidth(width);
    return {width, static_cast<int>(std::ceil(document.size().height()))};
}

}  // namespace

MessageText::MessageText(const QString& text, QWidget* parent) : QTextEdit(parent) {
    setObjectName("MessageText");
    setAcceptRichText(false);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(wrapping().wrapMode());
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
    setPlainText(text);

    const QSize size = sizeOf(text, font(), fontMetrics().averageCharWidth() * kWidestInCharacters);
    const int width = size.width();
    const int height = size.height();
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const int highest =
        screen ? static_cast<int>(screen->availableGeometry().height() * kHighestPartOfScreen) : height;
    const bool scrolls = height > highest;
    m_size = {width + (scrolls ? verticalScrollBar()->sizeHint().width() + kGapBeforeScrollBar : 0),
              std::min(height, highest)};
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // Tab stops only where there is something to scroll.
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
}

}  // namespace korvex
