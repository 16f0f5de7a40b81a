#include "host/ui/dialogs/guide.h"

#include "host/base/text.h"
#include "sdk/hxdialog.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace korvex {

QString guidePage(const QString& page) {
    if (page.isEmpty()) {
        return {};
    }
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* const folder : {"../share/doc/korvex", "../../../docs"}) {
        const QFileInfo file(program.filePath(folder), page);
        if (file.isFile()) {
            return QDir::cleanPath(file.absoluteFilePath());
        }
    }
    return {};
}

bool showGuidePage(HxUiBaseDialog& over, const QString& page) {
    const QString file = guidePage(page);
    if (file.isEmpty()) {
        return false;
    }
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(file))) {
        const QString text = QString("No program was found that shows the guide. The page is\n\n%1")
                                 .arg(QDir::toNativeSeparators(file));
        over.MessageBox(toWide(text).c_str(), nullptr, MB_OK | MB_ICONINFORMATION);
    }
    return true;
}

}  // namespace korvex
