// The search box.
#pragma once

#include <QLineEdit>

class QToolButton;

/// A line edit with a button in it that shows a magnifying glass, and while there is text a cross that clears
/// it. A click into the empty box puts "*" there, which fits every name; when the box is left with nothing
/// else in it, it is emptied. Esc empties it, too.
class CSearchEdit : public QLineEdit {
    Q_OBJECT
public:
    explicit CSearchEdit(QWidget* parent = nullptr);

Q_SIGNALS:
    void searchTextChanged(const QString& text);

public Q_SLOTS:
    void slotSearchButton();
    void slotTextChanged(const QString& text);
    void slotLoseFocus();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void showButton(bool clears);

    QToolButton* m_button;
};
