// All commands and system variables, to look up and to run.
#pragma once

#include <QDialog>

class QLineEdit;
class QListWidget;

namespace korvex {

class CommandListDialog : public QDialog {
    Q_OBJECT
public:
    explicit CommandListDialog(QWidget* parent);
    /// The name to run, when it was accepted.
    QString chosen() const;

private:
    void filter(const QString& text);

    QLineEdit* m_search;
    QListWidget* m_names;
};

}  // namespace korvex
