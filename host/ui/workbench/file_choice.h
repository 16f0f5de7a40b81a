// The files that the window's commands ask for.
#pragma once

#include <QStringList>

class QWidget;

namespace korvex {

/// What a file dialog is for. `key` is that of its settings: the folder is remembered under it.
struct FileChoice {
    const char* key;
    QString title;
    QStringList filters;
};

/// Files that exist; none when the user gave up. One at most unless `several`.
QStringList chooseFilesToOpen(QWidget* parent, const FileChoice& choice, bool several);
/// A file to write, after the user agreed to replace one that exists; empty when the user gave up. A name
/// without an ending gets `suffix`.
QString chooseFileToSave(QWidget* parent, const FileChoice& choice, const QString& current,
                         const QString& suffix);

}  // namespace korvex
