// Fuzz target: any lines are actions in a window with one control of each kind; none of them may crash, and
// one that is no action says nothing.
#include "host/ui/script/actions.h"

#include "host/base/text.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <cstdint>
#include <cstdlib>

namespace {

template <class Control>
Control* add(QWidget& window, const char* name) {
    auto* const control = new Control(&window);
    control->setObjectName(name);
    window.layout()->addWidget(control);
    return control;
}

void fill(QWidget& window) {
    new QVBoxLayout(&window);
    add<QLineEdit>(window, "edit");
    add<QPlainTextEdit>(window, "text");
    add<QCheckBox>(window, "check")->setTristate(true);
    add<QComboBox>(window, "combo")->addItems({"one", "two", "1,2"});
    auto* const table = add<QTableWidget>(window, "table");
    table->setColumnCount(3);
    table->setRowCount(3);
    table->setItem(1, 1, new QTableWidgetItem("a/b"));
    table->setColumnHidden(0, true);
    auto* const tree = add<QTreeWidget>(window, "tree");
    auto* const top = new QTreeWidgetItem(tree, {"a"});
    new QTreeWidgetItem(top, {"b"});
    add<QTabWidget>(window, "tabs")->addTab(new QWidget, "tab");
    auto* const bar = add<QMenuBar>(window, "bar");
    bar->addMenu("&File")->addAction("&Open");
}

QApplication& application() {
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto& only = *new QApplication(count, arguments);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return only;
}

/// They wait, or write files.
bool isLeftOut(const QString& line) {
    const QString start = line.trimmed().toUpper();
    return start.startsWith("DELAY") || start.startsWith("PICTURE");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    application();
    QWidget window;
    window.setObjectName("window of all");
    fill(window);
    window.show();
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (const QString& line : text.split('\n').mid(0, 20)) {
        const korvex::ActionResult result =
            isLeftOut(line) ? korvex::ActionResult() : korvex::performAction(korvex::toWide(line));
        if (!result.isAction && !result.trouble.empty()) {
            std::abort();
        }
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return 0;
}
