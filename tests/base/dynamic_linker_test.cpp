// The life of modules: loading, refusals on every step, unloading without a trace.
#include "tests/base/library_fixture.h"

#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <cstdlib>
#include <dlfcn.h>
#include <sys/mman.h>

namespace korvex::test {
namespace {

class DynamicLinkerTest : public LibraryTest {
protected:
    /// Loads or fails; `error` holds the text.
    Hx::ErrorStatus load(const QString& path) { return linker().loadModule(toWide(path).c_str(), &error); }
    static std::string events() { return qgetenv("TRIAL_LOG").toStdString(); }
    static void call(const wchar_t* module, const char* function) {
        reinterpret_cast<void (*)()>(linker().functionOf(module, function))();
    }
    static int carry(int number) {
        const auto function = reinterpret_cast<int (*)(int)>(linker().functionOf(L"Trial.hrx", "trialCarry"));
        return function ? function(number) : 0;
    }
    void expectNothingLeft(const QString& name) {
        EXPECT_EQ(linker().moduleCount(), 0);
        EXPECT_TRUE(allLibraries().empty());
        EXPECT_FALSE(isInMemory(name));
        EXPECT_FALSE(isInMemory("TrialRes.dll"));
        EXPECT_FALSE(hxrxServiceIsRegistered(L"Trial"));
        EXPECT_EQ(QMetaType::type("TrialValue"), 0);
    }
    CStdStr<wchar_t> error;
};

TEST_F(DynamicLinkerTest, AModuleLivesFromAttachToDetach) {
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk) << toUtf8(error);
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_TRUE(linker().isModuleLoaded(L"TRIAL.HRX"));
    EXPECT_EQ(linker().moduleName(0), L"Trial.hrx");
    EXPECT_EQ(linker().modulePath(0), toWide(trial("Trial.hrx")));
    EXPECT_EQ(linker().moduleName(1), L"");
    EXPECT_EQ(linker().moduleName(-1), L"");
    EXPECT_TRUE(linker().isAppMDIAware(L"trial.hrx"));
    EXPECT_FALSE(linker().isApplicationLocked(L"trial.hrx"));
    EXPECT_TRUE(hxrxServiceIsRegistered(L"TRIAL"));
    EXPECT_EQ(load(trial("Trial.hrx")), Hx::eDuplicateKey);
    EXPECT_EQ(linker().unloadModule(L"trial.HRX", &error), Hx::eOk) << toUtf8(error);
    EXPECT_EQ(events(), "attach 1 2 widget detach ");
    EXPECT_EQ(linker().unloadModule(L"Trial.hrx", &error), Hx::eKeyNotFound);
    expectNothingLeft("Trial.hrx");
}

TEST_F(DynamicLinkerTest, AModuleWorksAgainWhenItComesBackElsewhere) {
    void* places[3] = {};
    for (void*& place : places) {
        ASSERT_EQ(load("Trial.hrx"), Hx::eOk) << toUtf8(error);
        EXPECT_EQ(carry(41), 41);
        EXPECT_NE(QMetaType::type("TrialValue"), 0);
        Dl_info info;
        ASSERT_NE(dladdr(linker().functionOf(L"Trial.hrx", "trialCarry"), &info), 0);
        ASSERT_EQ(linker().unloadModule(L"Trial.hrx"), Hx::eOk);
        expectNothingLeft("Trial.hrx");
        // The next time it must go to another address.
        place =
            mmap(info.dli_fbase, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
        ASSERT_EQ(place, info.dli_fbase);
    }
    for (void* place : places) {
        munmap(place, 4096);
    }
}

TEST_F(DynamicLinkerTest, WhatIsNoFittingModuleIsRefusedWithAReason) {
    struct Case {
        const char* file;
        Hx::ErrorStatus status;
        const wchar_t* reason;
    };
    const QString text = folder() + "/text.hrx";
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("no library") > 0);
    file.close();
    for (const Case& c : {Case{"OldVersion.hrx", Hx::eNotApplicable, L"version 2020"},
                          Case{"NoEntryPoint.hrx", Hx::eNotApplicable, L"hxrxEntryPoint"},
                          Case{"NoVersion.hrx", Hx::eNotApplicable, L"hxrxGetApiVersion"},
                          Case{"Missing.hrx", Hx::eFileNotFound, L"Missing.hrx"},
                          Case{"/nowhere/Missing.hrx", Hx::eFileNotFound, L"/nowhere/Missing.hrx"},
                          Case{"", Hx::eFileNotFound, L"no module file"}}) {
        EXPECT_EQ(load(c.file), c.status) << c.file;
        EXPECT_GE(error.Find(c.reason), 0) << toUtf8(error);
        EXPECT_EQ(events(), "") << "no code of it runs";
        expectNothingLeft(c.file[0] != 0 ? c.file : "none");
    }
    EXPECT_EQ(load(text), Hx::eFileAccessErr);
    EXPECT_GE(error.Find(L"text.hrx"), 0);
    EXPECT_EQ(linker().loadModule(nullptr), Hx::eFileNotFound);
    EXPECT_EQ(load("NewRevision.hrx"), Hx::eOk) << "only the year must match";
}

TEST_F(DynamicLinkerTest, AFailedInitialisationLeavesNothing) {
    struct Case {
        const char* where;
        const char* events;
        const wchar_t* reason;
    };
    for (const Case& c :
         {Case{"attach", "attach ", L"DllMain"}, Case{"init", "attach 1 detach ", L"answers with 3"},
          Case{"throw", "attach 1 detach ", L"out of memory"}}) {
        qputenv("TRIAL_REFUSES", c.where);
        qputenv("TRIAL_LOG", "");
        EXPECT_EQ(load("Trial.hrx"), Hx::eRefused);
        EXPECT_GE(error.Find(c.reason), 0) << toUtf8(error);
        EXPECT_EQ(events(), c.events);
        expectNothingLeft("Trial.hrx");
    }
    qunsetenv("TRIAL_REFUSES");
    EXPECT_EQ(load("Trial.hrx"), Hx::eOk);
}

TEST_F(DynamicLinkerTest, AModuleMayRefuseToGo) {
    qputenv("TRIAL_REFUSES", "unload");
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk);
    EXPECT_EQ(linker().unloadModule(L"Trial.hrx", &error), Hx::eRefused);
    EXPECT_GE(error.Find(L"refuses"), 0);
    EXPECT_EQ(carry(3), 3);
    EXPECT_EQ(events(), "attach 1 2 ");
    qputenv("TRIAL_REFUSES", "locked");
    ASSERT_EQ(load("Second.hrx"), Hx::eOk);
    EXPECT_TRUE(linker().isApplicationLocked(L"Second.hrx"));
    EXPECT_EQ(linker().unloadModule(L"Second.hrx", &error), Hx::eRefused);
    EXPECT_GE(error.Find(L"stays loaded"), 0);
    EXPECT_EQ(linker().moduleCount(), 2);
    qunsetenv("TRIAL_REFUSES");
    call(L"Second.hrx", "trialUnlock");
    EXPECT_EQ(linker().unloadModule(L"Second.hrx"), Hx::eOk);
}

TEST_F(DynamicLinkerTest, TheHandleLeadsToTheFile) {
    ASSERT_EQ(load("Second.hrx"), Hx::eOk);
    const auto instance =
        reinterpret_cast<HxModuleHandle (*)()>(linker().functionOf(L"Second.hrx", "trialInstance"));
    ASSERT_NE(instance, nullptr);
    std::wstring path(1000, L'\0');
    path.resize(hxModuleFileName(instance(), &path[0], 1000));
    EXPECT_EQ(path, toWide(trial("Second.hrx")));
    EXPECT_TRUE(hxDisableThreadLibraryCalls(instance()));
}

TEST_F(DynamicLinkerTest, AtTheEndEveryModuleIsToldAndStaysInMemory) {
    const auto quitHost = [&] {
        load("Trial.hrx");
        qputenv("TRIAL_REFUSES", "locked");
        load("Second.hrx");
        qputenv("TRIAL_LOG", "");
        quitModules();
        EXPECT_EQ(events(), "8 detach 8 detach ");
        EXPECT_EQ(linker().moduleCount(), 0);
        EXPECT_TRUE(isInMemory("Trial.hrx") && isInMemory("Second.hrx") && isInMemory("TrialRes.dll"));
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(quitHost(), ::testing::ExitedWithCode(0), "");
}

TEST_F(DynamicLinkerTest, PacketsAreCheckedAndLoadingIsNotReentered) {
    int notAModule = 0;
    for (void* packet : {static_cast<void*>(nullptr), static_cast<void*>(&notAModule)}) {
        EXPECT_EQ(linker().prepareApp(packet), Hx::eInvalidInput);
        EXPECT_EQ(linker().unlockApplication(packet), Hx::eInvalidInput);
    }
    qputenv("TRIAL_REFUSES", "reenter");
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk);
    EXPECT_EQ(events(), "attach 1 unload-refused load-refused ");
    EXPECT_EQ(linker().unloadModule(L"Trial.hrx"), Hx::eOk);
    qputenv("TRIAL_LOG", "");
    qputenv("TRIAL_REFUSES", "order");
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk);
    EXPECT_EQ(events(), "attach 1 unprepared ");
    EXPECT_TRUE(linker().isApplicationLocked(L"Trial.hrx")) << "it could not say that it may go";
    call(L"Trial.hrx", "trialUnlock");
}

TEST_F(DynamicLinkerTest, FunctionsAreTheModulesOwn) {
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk);
    ASSERT_EQ(load("Second.hrx"), Hx::eOk);
    EXPECT_NE(linker().functionOf(L"Second.hrx", "trialCarry"), nullptr);
    EXPECT_EQ(linker().functionOf(nullptr, "trialCarry"), linker().functionOf(L"TRIAL.hrx", "trialCarry"));
    EXPECT_EQ(linker().functionOf(nullptr, "malloc"), nullptr) << "of a library below the module";
    EXPECT_EQ(linker().functionOf(L"Third.hrx", "trialCarry"), nullptr);
    EXPECT_EQ(linker().functionOf(nullptr, nullptr), nullptr);
}

TEST_F(DynamicLinkerTest, WidgetsOfAnOuterEventLoopGoBeforeTheCode) {
    ASSERT_EQ(load("Trial.hrx"), Hx::eOk);
    QEventLoop outer;
    QTimer::singleShot(0, [&] {
        call(L"Trial.hrx", "trialDeleteWidgetLater");
        QEventLoop inner;
        QTimer::singleShot(0, [&] {
            EXPECT_EQ(events(), "attach 1 ") << "the inner loop leaves it alone";
            EXPECT_EQ(linker().unloadModule(L"Trial.hrx"), Hx::eOk);
            inner.quit();
        });
        inner.exec();
        outer.quit();
    });
    outer.exec();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(events(), "attach 1 2 widget detach ");
    expectNothingLeft("Trial.hrx");
}

}  // namespace
}  // namespace korvex::test
