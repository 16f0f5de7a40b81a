// What the host's own dialogs share: OK and Cancel, a line for what is wrong, size and choices that are
// remembered.
#pragma once

#include "host/ui/standard/dialog_settings.h"

#include <QDialog>

class QBoxLayout;
class QLabel;

namespace korvex {

class StandardDialog : public QDialog {
    Q_OBJECT
public:
    /// `name` is the dialog's object name, `key` that of its settings. Null parent: the main window.
    StandardDialog(const char* name, const QString& title, const QString& key, QWidget* parent);

    /// Shows it, as large as it was last time, and waits. True on OK.
    bool run();

protected:
    /// OK was pressed; accepts.
    virtual void onOk() { accept(); }
    /// A word-wrapped line for faults and notes, hidden while it is empty.
    QLabel* makeFaultLine(const char* name);
    void showFault(QLabel* line, const QString& text);
    /// OK and Cancel, "IDOK" and "IDCANCEL"; `extra` (may be null) stands on the left.
    void addButtons(QBoxLayout* layout, QWidget* extra = nullptr);
    void enableOk(bool enable);
    const DialogSettings& settings() const { return m_settings; }
    void done(int result) override;

private:
    DialogSettings m_settings;
    QPushButton* m_ok = nullptr;
};

/// Shows a message before a window.
void tell(QWidget* parent, const QString& text);
/// A question: true for Yes; nothing for Cancel.
enum class Reply { yes, no, cancel };
Reply askYesNo(QWidget* parent, const QString& text, bool canCancel);

}  // namespace korvex
