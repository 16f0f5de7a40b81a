// Shows how far long work is, and lets the user give it up.
#pragma once

#include "host/base/progress.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace korvex {

/// From now on long work is shown over this window, as long as the window is visible; null ends that, and so
/// does the end of the window.
void showProgressOver(QWidget* window);

/// Label, bar, and Cancel. It only looks at events when it is told to, and lets no other window have input
/// then.
class ProgressDialog : public QDialog {
    Q_OBJECT
public:
    ProgressDialog(const QString& label, bool canCancel, QWidget* parent);
    ~ProgressDialog() override;

    /// From 0 to 1; below 0: unknown.
    void setPart(double part);
    /// Paints, and takes what the user does.
    void handleEvents();
    bool isCancelled() const { return m_isCancelled; }

    /// Cancel, Esc and the window's close button.
    void reject() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* m_label;
    QProgressBar* m_bar;
    QPushButton* m_cancel;
    int m_turn = 0;
    bool m_canCancel;
    bool m_isCancelled = false;
};

}  // namespace korvex
