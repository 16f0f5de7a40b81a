// The trial modules and resource libraries, and a program with windows for them to live in.
#pragma once

#include "host/base/dynamic_linker.h"
#include "host/base/library.h"
#include "sdk/hxmodule.h"
#include "tests/base/profile_fixture.h"

#include <QApplication>

namespace korvex::test {

class LibraryTest : public ProfileTest {
protected:
    LibraryTest() {
        makeApplication();
        qputenv("KORVEX_MODULE_PATH", folderOfTrials().toUtf8());
        for (const char* name : {"TRIAL_LOG", "TRIAL_REFUSES", "LC_ALL", "LC_MESSAGES", "LANG", "LANGUAGE"}) {
            qunsetenv(name);
        }
    }
    ~LibraryTest() override {
        qunsetenv("TRIAL_REFUSES");
        for (int i = linker().moduleCount() - 1; i >= 0; --i) {
            linker().unloadModule(linker().moduleName(i).c_str());
        }
        EXPECT_TRUE(allLibraries().empty()) << "every test gives its libraries back";
    }

    static HxRxDynamicLinker& linker() {
        return *HxRxDynamicLinker::cast(hxrxSysRegistry()->at(L"DynamicLinker"));
    }
    static QString folderOfTrials() { return QString(KORVEX_BINARY_DIR) + "/tests/trial_modules"; }
    static QString trial(const QString& name) { return folderOfTrials() + "/" + name; }
    static bool isInMemory(const QString& name) {
        QFile maps("/proc/self/maps");
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(trial(name).toUtf8());
    }

private:
    static void makeApplication() {
        static int count = 1;
        static char name[] = "base_test";
        static char* arguments[] = {name, nullptr};
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
            qputenv("QT_QPA_PLATFORM", "offscreen");
        }
        // Never deleted: the platform plugin leaves its screens behind when it goes.
        static const auto* const application = new QApplication(count, arguments);
        (void)application;
    }
};

}  // namespace korvex::test
