#include "tests/module/model_watch.h"

#include <QAbstractItemModelTester>
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QEvent>
#include <QFileDialog>
#include <QPointer>

#include <gtest/gtest.h>

#include <cstring>

namespace korvex::test {
namespace {

constexpr char kCategory[] = "qt.modeltest";

QtMessageHandler previousHandler = nullptr;

/// What testers warn of fails the running test; everything else goes on.
void fail(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (context.category && std::strcmp(context.category, kCategory) == 0) {
        ADD_FAILURE() << "A model contradicts itself: " << text.toStdString();
    } else if (previousHandler) {
        previousHandler(type, context, text);
    }
}

/// Qt's own file dialog and what it completes: their models tell of their roots what testers do not expect.
bool isOfQt(const QAbstractItemView* view) {
    if (view->model()->inherits("QCompletionModel")) return true;
    const QWidget* above = view;
    while (above && !qobject_cast<const QFileDialog*>(above)) {
        above = above->parentWidget();
    }
    return above != nullptr;
}

class ModelWatch : public QObject {
public:
    static ModelWatch& instance() {
        static ModelWatch* const watch = new ModelWatch;
        return *watch;
    }
    bool eventFilter(QObject* receiver, QEvent* event) override {
        switch (event->type()) {
        case QEvent::Polish:
        case QEvent::Show:
        case QEvent::LayoutRequest:
        case QEvent::MetaCall:
        case QEvent::Paint: look(qobject_cast<QAbstractItemView*>(receiver)); break;
        default: break;
        }
        return false;
    }
    QStringList classes() const { return m_classes; }

private:
    ModelWatch() {
        setParent(QCoreApplication::instance());
        previousHandler = qInstallMessageHandler(fail);
        QCoreApplication::instance()->installEventFilter(this);
    }
    /// The models of Qt's own list, tree and table widgets tell of a reset when they are destroyed, without
    /// their view: testers go with the view.
    void look(const QAbstractItemView* view) {
        QAbstractItemModel* const model = view ? view->model() : nullptr;
        if (!model || isOfQt(view) ||
            model->findChild<QAbstractItemModelTester*>(QString(), Qt::FindDirectChildrenOnly)) {
            return;
        }
        const QString name = model->metaObject()->className();
        if (!m_classes.contains(name)) m_classes << name;
        constexpr auto kMode = QAbstractItemModelTester::FailureReportingMode::Warning;
        const QPointer<QAbstractItemModelTester> tester = new QAbstractItemModelTester(model, kMode, model);
        connect(view, &QObject::destroyed, this, [tester] { delete tester; });
    }

    QStringList m_classes;
};

}  // namespace

void watchModels() { ModelWatch::instance(); }

QStringList watchedModels() { return ModelWatch::instance().classes(); }

}  // namespace korvex::test
