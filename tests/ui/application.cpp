// The application object that every test of the user interface runs in.
#include "host/ui/workbench/host_application.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// All but what the platform without a screen says of itself.
void showMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.startsWith("This plugin does not support")) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
    }
}

class ApplicationEnvironment : public ::testing::Environment {
public:
    void SetUp() override {
        qInstallMessageHandler(showMessage);
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
        m_application = std::make_unique<korvex::HostApplication>(m_count, m_arguments);
    }
    void TearDown() override { m_application.reset(); }

private:
    int m_count = 1;
    char m_name[8] = "ui_test";
    char* m_arguments[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

}  // namespace
