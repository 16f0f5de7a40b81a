// The text of a message box.
#pragma once

#include <QTextEdit>

namespace korvex {

/// Plain text that can be selected but not changed, as large as it needs to be; wrapped where it is wide,
/// also inside of long names; scrolled where it is high.
class MessageText : public QTextEdit {
public:
    MessageText(const QString& text, QWidget* parent);
    QSize sizeHint() const override { return m_size; }
    QSize minimumSizeHint() const override { return m_size; }

private:
    QSize m_size;
};

}  // namespace korvex
