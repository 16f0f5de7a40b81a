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
constexpr double kHighestPartOfScreen = 0.6;

}  // namespace

MessageText::MessageText(const QString& text, QWidget* parent) : QTextEdit(parent) {
    setObjectName("MessageText");
    setAcceptRichText(false);
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
    setPlainText(text);

    const int widest = fontMetrics().averageCharWidth() * kWidestInCharacters;
    document()->setTextWidth(-1);
    const int width = std::min(static_cast<int>(std::ceil(document()->idealWidth())) + 1, widest);
    document()->setTextWidth(width);
    const int height = static_cast<int>(std::ceil(document()->size().height()));
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const int highest =
        screen ? static_cast<int>(screen->availableGeometry().height() * kHighestPartOfScreen) : height;
    const bool scrolls = height > highest;
    m_size = {width + (scrolls ? verticalScrollBar()->sizeHint().width() : 0), std::min(height, highest)};
    setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // Tab stops only where there is something to scroll.
    setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
    setSizePolicy(QSizePolicy::MinimumExpanding, QSizePolicy::Fixed);
}

}  // namespace korvex
