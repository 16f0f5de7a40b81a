// The list of words above the command line.
#pragma once

#include "host/ui/workbench/completions.h"

#include <QListWidget>

namespace korvex {

/// Floats inside the window over the edit line and never takes the keyboard from it.
class CompletionList : public QListWidget {
    Q_OBJECT
public:
    /// `below`: the line above which it appears.
    explicit CompletionList(QWidget* below);

    /// Shows the words, none of them chosen; without words it hides.
    void offer(const std::vector<Completion>& completions);
    /// Chooses the next or previous word; before the first and after the last none is.
    void step(int by);
    /// The chosen word; empty when none is.
    QString chosen() const;

Q_SIGNALS:
    void clickedWord(const QString& word);

private:
    void place();

    QWidget* m_below;
};

}  // namespace korvex
