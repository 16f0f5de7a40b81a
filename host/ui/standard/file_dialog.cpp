// File dialogs that remember where the user was.
#include "host/base/text.h"
#include "host/ui/standard/dialog_settings.h"
#include "sdk/hxdoc.h"
#include "sdk/hxstddlg.h"
#include "sdk/hxui.h"

#include <QFileDialog>
#include <QScreen>

namespace korvex {

namespace {

constexpr char kFolder[] = "InitialDirectory";
constexpr char kFilter[] = "InitialFilterIndex";
/// Wide enough for all columns of the file list.
constexpr QSize kSize(900, 500);

/// The first ending that a filter such as "Layer states (*.las *.txt)" names; empty for "*" and the like.
QString endingOf(const QString& filter) {
    const int open = filter.indexOf("(*.");
    const int end = open < 0 ? -1 : filter.indexOf(QRegExp("[ )]"), open);
    const QString ending = end < 0 ? QString() : filter.mid(open + 3, end - open - 3);
    return ending.contains('*') || ending.contains('?') ? QString() : ending;
}

/// Where the current drawing lies; empty for one that has no file.
QString drawingFolder() {
    const HxApDocument* const document = curDoc();
    const QString path = document ? toQString(document->fileName()) : QString();
    return path.isEmpty() ? path : QFileInfo(path).absolutePath();
}

QString firstFolder(const QString& given, const QString& remembered) {
    for (const QString& folder : {given, remembered, drawingFolder()}) {
        if (!folder.isEmpty() && QFileInfo(folder).isDir()) {
            return folder;
        }
    }
    return QDir::currentPath();
}

}  // namespace

}  // namespace korvex

HxUiFileDialog::HxUiFileDialog(const wchar_t* title, const wchar_t* key, const QStringList& filters)
    : m_title(korvex::toQString(title ? title : L"")), m_key(korvex::toQString(key ? key : L"")),
      m_filters(filters) {}

QString HxUiFileDialog::getOpenFile(QWidget* parent) { return run(parent, false, false).value(0); }
QString HxUiFileDialog::getSaveFile(QWidget* parent) { return run(parent, true, false).value(0); }
QStringList HxUiFileDialog::getOpenFiles(QWidget* parent) { return run(parent, false, true); }

QStringList HxUiFileDialog::run(QWidget* parent, bool save, bool several) {
    const korvex::DialogSettings settings(m_key);
    QFileDialog dialog(parent ? parent : hxuiMainWindow(), m_title);
    dialog.setObjectName("FileDialog");
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save      ? QFileDialog::AnyFile
                       : several ? QFileDialog::ExistingFiles
                                 : QFileDialog::ExistingFile);
    dialog.setNameFilters(m_filters);
    const int filter = settings.number(korvex::kFilter, 1);
    if (filter >= 1 && filter <= m_filters.size()) {
        dialog.selectNameFilter(m_filters[filter - 1]);
    }
    const auto takeEnding = [&dialog](const QString& chosen) {
        dialog.setDefaultSuffix(korvex::endingOf(chosen));
    };
    takeEnding(dialog.selectedNameFilter());
    QObject::connect(&dialog, &QFileDialog::filterSelected, takeEnding);
    const QFileInfo offered(m_fileName);
    dialog.setDirectory(korvex::firstFolder(offered.isAbsolute() ? offered.absolutePath() : QString(),
                                            settings.text(korvex::kFolder)));
    dialog.selectFile(offered.fileName());
    dialog.resize(korvex::kSize.boundedTo(dialog.screen()->availableSize()));
    if (dialog.exec() != QDialog::Accepted) {
        m_filterIndex = 0;
        return {};
    }
    m_filterIndex = m_filters.indexOf(dialog.selectedNameFilter()) + 1;
    const QStringList chosen = dialog.selectedFiles();
    settings.setText(korvex::kFolder, QFileInfo(chosen.value(0)).absolutePath());
    settings.setNumber(korvex::kFilter, m_filterIndex);
    return chosen;
}
