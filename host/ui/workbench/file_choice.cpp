// Runs file dialogs and remembers their folders.
#include "host/ui/workbench/file_choice.h"

#include "host/ui/workbench/ui_settings.h"

#include <QFileDialog>

namespace korvex {

namespace {

void prepare(QFileDialog& dialog, const FileChoice& choice) {
    dialog.setObjectName("FileDialog");
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setNameFilters(choice.filters);
    const QString folder = uiSetting(choice.key);
    if (!folder.isEmpty() && QDir(folder).exists()) {
        dialog.setDirectory(folder);
    }
}

QStringList run(QFileDialog& dialog, const FileChoice& choice) {
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    keepUiSetting(choice.key, dialog.directory().absolutePath());
    return dialog.selectedFiles();
}

}  // namespace

QStringList chooseFilesToOpen(QWidget* parent, const FileChoice& choice, bool several) {
    QFileDialog dialog(parent, choice.title);
    prepare(dialog, choice);
    dialog.setFileMode(several ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    return run(dialog, choice);
}

QString chooseFileToSave(QWidget* parent, const FileChoice& choice, const QString& current,
                         const QString& suffix) {
    QFileDialog dialog(parent, choice.title);
    prepare(dialog, choice);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(suffix);
    const QFileInfo file(current);
    if (file.isAbsolute()) {
        dialog.setDirectory(file.absolutePath());
    }
    dialog.selectFile(file.fileName());
    return run(dialog, choice).value(0);
}

}  // namespace korvex
