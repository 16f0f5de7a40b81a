// Finds layouts in the current resource library and builds them.
#include "host/ui/dialogs/layout.h"

#include "host/base/library.h"
#include "host/base/log.h"
#include "host/ui/dialogs/widget_classes.h"
#include "sdk/hxdialog.h"

#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QUiLoader>

namespace korvex {

namespace {

/// Builds the top widget into a widget that is there, and knows the classes that modules have registered.
class LayoutLoader : public QUiLoader {
public:
    LayoutLoader() { setTranslationEnabled(false); }

    QWidget* loadInto(QIODevice* file, QWidget* target) {
        m_target = target;
        QWidget* const made = load(file);
        m_target = nullptr;
        return made;
    }

    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override {
        if (!parent && m_target) {
            QWidget* const top = m_target;
            m_target = nullptr;
            top->setObjectName(name);
            return top;
        }
        QWidget* const made = makeRegisteredWidget(className, parent);
        if (made) {
            made->setObjectName(name);
            return made;
        }
        return QUiLoader::createWidget(className, parent, name);
    }

private:
    QWidget* m_target = nullptr;
};

/// The one loader: making it looks for plug-ins.
LayoutLoader& loader() {
    static auto& only = *new LayoutLoader;
    return only;
}

/// Where the current library's layouts are, as the middle of resource paths.
QString resourceFolder() {
    const HxModuleHandle library = hxGetResourceHandle();
    QString folder = library ? QFileInfo(library->path).completeBaseName() : QString();
    const QString ending = QStringLiteral("Res");
    if (folder.endsWith(ending)) {
        folder.chop(ending.size());
    }
    return folder;
}

QWidget* refuse(const QString& name, const QString& why) {
    log(Severity::Error,
        toWide(QString("The layout \"%1\" cannot be used: %2. Install the module again.").arg(name, why)));
    return nullptr;
}

}  // namespace

QWidget* loadLayout(const char* name, QWidget* target) {
    const QString shown = QString::fromUtf8(name);
    const QString folder = resourceFolder();
    if (folder.isEmpty()) {
        return refuse(shown, "no resource library is current");
    }
    QFile file(QString(":/%1/%2.ui").arg(folder, shown));
    if (!file.open(QIODevice::ReadOnly)) {
        return refuse(shown, "the resource library has no " + file.fileName());
    }
    QWidget* const made = loader().loadInto(&file, target);
    if (!made) {
        return refuse(shown, loader().errorString().trimmed());
    }
    fillInTexts(*made, nullptr);
    return made;
}

}  // namespace korvex

QMenu* hxuiLoadMenu(const char* name, QWidget* parent) {
    QWidget* const made = korvex::loadLayout(name, nullptr);
    auto* const menu = qobject_cast<QMenu*>(made);
    if (!menu) {
        if (made) {
            korvex::refuse(QString::fromUtf8(name), "its top widget is no menu");
        }
        delete made;
        return nullptr;
    }
    menu->setParent(parent, menu->windowFlags());
    return menu;
}
