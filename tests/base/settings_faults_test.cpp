// What can befall the settings store: other hosts, kills, damage, locks, missing rights.
#include "sdk/hxconfig.h"
#include "tests/base/profile_fixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <csignal>

namespace korvex::test {
namespace {

class SettingsFaultsTest : public ProfileTest {
protected:
    /// Starts this program again as another host that writes; the caller's profile folder is its own, too.
    static std::unique_ptr<QProcess> startWriter(const QString& name, int count) {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("KORVEX_PROFILE_DIR", qEnvironmentVariable("KORVEX_PROFILE_DIR"));
        environment.insert("WRITER_NAME", name);
        environment.insert("WRITER_COUNT", QString::number(count));
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start(QFile::symLinkTarget("/proc/self/exe"),
                       {"--gtest_also_run_disabled_tests", "--gtest_filter=SettingsWriter.DISABLED_Writes"});
        return process;
    }
    static bool endedWell(QProcess& process) {
        const bool good = process.waitForFinished(120000) && process.exitStatus() == QProcess::NormalExit &&
                          process.exitCode() == 0;
        return good || (ADD_FAILURE() << process.readAll().toStdString(), false);
    }
    QStringList keptAside() const {
        return QDir(folder()).entryList({"settings.sqlite.damaged-*"}, QDir::Files);
    }
    void damage(qint64 at, const QByteArray& bytes) const {
        QFile file(storeFile());
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.seek(at);
        file.write(bytes);
    }
};

/// The other host: writes numbered values, each with its check text, and counts on the shared counter key.
TEST(SettingsWriter, DISABLED_Writes) {
    const std::wstring name = qEnvironmentVariable("WRITER_NAME").toStdWString();
    const int count = qEnvironmentVariableIntValue("WRITER_COUNT");
    for (int i = 0; i < count; ++i) {
        const Key key(L"Writers\\" + name + L"\\" + std::to_wstring(i % 7));
        ASSERT_EQ(key.status, kRegOk);
        ASSERT_EQ(key.set(std::to_wstring(i).c_str(), name + std::to_wstring(i)), kRegOk);
        ASSERT_EQ(vrexConfig()->setValue(kHxConfigUser, (name + L"\\last").c_str(), VrexVariant(i)), Hx::eOk);
    }
}

/// How many of a writer's values are there without a gap; each must hold its own text.
int valuesOf(const std::wstring& name) {
    for (int i = 0;; ++i) {
        const Key key(L"Writers\\" + name + L"\\" + std::to_wstring(i % 7));
        const std::wstring text = key.text(std::to_wstring(i).c_str());
        if (text == L"<2>") {
            return i;
        }
        EXPECT_EQ(text, name + std::to_wstring(i));
    }
}

TEST_F(SettingsFaultsTest, HostsThatWriteAtOnceLoseNothing) {
    const auto a = startWriter("a", 200);
    const auto b = startWriter("b", 200);  // both also race for making the store
    for (int i = 0; i < 200; ++i) {
        const Key key(L"Writers\\c\\" + std::to_wstring(i % 7));
        ASSERT_EQ(key.set(std::to_wstring(i).c_str(), L"c" + std::to_wstring(i)), kRegOk);
    }
    ASSERT_TRUE(endedWell(*a) && endedWell(*b));
    for (const wchar_t* name : {L"a", L"b", L"c"}) {
        EXPECT_EQ(valuesOf(name), 200);
    }
    EXPECT_EQ(keptAside(), QStringList());
}

TEST_F(SettingsFaultsTest, AKilledHostLeavesWhatItHadWritten) {
    for (int round = 0; round < 6; ++round) {
        const std::wstring name = L"k" + std::to_wstring(round);
        const auto writer = startWriter(QString::fromStdWString(name), 1000000);
        ASSERT_TRUE(writer->waitForStarted());
        VrexVariant last;
        QElapsedTimer waited;
        waited.start();
        while (vrexConfig()->getValue(kHxConfigUser, (name + L"\\last").c_str(), last) != Hx::eOk ||
               last.asInt32() < 20 + round * 7) {
            ASSERT_LT(waited.elapsed(), 60000);
            QThread::msleep(1);
        }
        ::kill(static_cast<pid_t>(writer->processId()), SIGKILL);
        writer->waitForFinished();
        ASSERT_EQ(vrexConfig()->getValue(kHxConfigUser, (name + L"\\last").c_str(), last), Hx::eOk);
        if (round % 2 == 1) {
            closeSettingsStore();  // the next host recovers the log that the killed one left
        }
        const int there = valuesOf(name);
        EXPECT_TRUE(there == last.asInt32() + 1 || there == last.asInt32() + 2) << there;
    }
    EXPECT_EQ(keptAside(), QStringList());
}

TEST_F(SettingsFaultsTest, ADamagedStoreIsKeptAsideAndMadeAnew) {
    const QByteArray noise(20000, '\x5A');
    for (const qint64 at : {qint64{0}, qint64{4096}}) {
        const int before = keptAside().size();
        for (int i = 0; i < 300; ++i) {
            Key(L"Old\\" + std::to_wstring(i)).set(L"v", L"x");
        }
        closeSettingsStore();
        damage(at, noise);
        QFile file(storeFile());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray damagedBytes = file.readAll();

        const Key key(L"New");
        EXPECT_EQ(key.status, kRegOk);
        EXPECT_EQ(key.set(L"v", L"y"), kRegOk);
        const QStringList aside = keptAside();
        ASSERT_EQ(aside.size(), before + 1);
        EXPECT_TRUE(wasLogged(toWide(aside.last()))) << "the message names the kept file";
        EXPECT_FALSE(hxdbHostApplicationServices()->currentProfile().IsEmpty());
        bool isKept = false;
        for (const QString& name : aside) {
            QFile kept(QDir(folder()).filePath(name));
            isKept = isKept || (kept.open(QIODevice::ReadOnly) && kept.readAll() == damagedBytes);
        }
        EXPECT_TRUE(isKept);
    }
}

TEST_F(SettingsFaultsTest, AForeignFileIsKeptAside) {
    QFile text(storeFile());
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("these are my notes, not settings\n");
    text.close();
    EXPECT_EQ(Key(L"A").status, kRegOk);
    closeSettingsStore();
    ASSERT_TRUE(QFile::remove(storeFile()));
    SqliteDatabase other;
    ASSERT_EQ(other.open(toFileName(toWide(storeFile())), 100), 0);
    ASSERT_EQ(other.execute("CREATE TABLE recipes(name TEXT)"), 0);
    other.close();
    EXPECT_EQ(Key(L"A").status, kRegOk);
    EXPECT_EQ(keptAside().size(), 2);
    EXPECT_TRUE(wasLogged(L"no settings store"));
}

TEST_F(SettingsFaultsTest, AStoreOfALaterVersionIsLeftAlone) {
    EXPECT_EQ(Key(L"A").set(L"v", L"kept"), kRegOk);
    ASSERT_EQ(settingsStore()->database().execute("PRAGMA user_version=2"), 0);
    closeSettingsStore();
    EXPECT_EQ(Key(L"A").status, kRegStoreFailed);
    EXPECT_EQ(vrexConfig(), nullptr);
    EXPECT_TRUE(wasLogged(L"later version"));
    EXPECT_EQ(keptAside(), QStringList());
}

TEST_F(SettingsFaultsTest, DamageUnderAnOpenStoreIsNoticed) {
    const Key key(L"A");
    for (int i = 0; i < 300; ++i) {
        Key(L"Old\\" + std::to_wstring(i)).set(L"v", L"x");
    }
    closeSettingsStore();
    ASSERT_EQ(Key(L"Old\\1").text(L"v"), L"x");
    ASSERT_EQ(settingsStore()->database().execute("PRAGMA wal_checkpoint(TRUNCATE)"), 0);
    ASSERT_EQ(settingsStore()->database().execute("PRAGMA cache_size=0"), 0);
    damage(4096, QByteArray(200000, '\x5A'));
    HxRegStatus status = kRegOk;
    for (int i = 0; i < 300 && status == kRegOk; ++i) {
        status = Key(L"Old\\" + std::to_wstring(i)).set(L"w", L"z");
    }
    EXPECT_NE(status, kRegOk);
    EXPECT_EQ(Key(L"New").status, kRegOk);  // the next call works on a new store
    EXPECT_EQ(keptAside().size(), 1);
}

TEST_F(SettingsFaultsTest, ARemovedOrReplacedFileIsNoticedByOpenHosts) {
    const Key key(L"A");
    ASSERT_EQ(key.set(L"v", L"1"), kRegOk);
    ASSERT_TRUE(QDir(folder()).rename("settings.sqlite", "elsewhere"));
    EXPECT_EQ(key.set(L"v", L"2"), kRegKeyDeleted);
    EXPECT_EQ(Key(L"A").text(L"v"), L"<2>");
    EXPECT_EQ(key.set(L"v", L"2"), kRegKeyDeleted) << "the new key may have the old one's number";
    const QTemporaryDir second;
    setFolder(second.path());
    EXPECT_EQ(Key(L"B").set(L"v", L"in the second folder"), kRegOk);
    setFolder(folder());
    EXPECT_TRUE(Key(L"B").created);
}

TEST_F(SettingsFaultsTest, AFullDiskKeepsTheOldValue) {
    const Key key(L"A");
    ASSERT_EQ(key.set(L"v", L"old"), kRegOk);
    ASSERT_EQ(settingsStore()->database().execute("PRAGMA max_page_count=1"),
              0);  // the pages in use, at least
    EXPECT_EQ(key.set(L"v", std::wstring(50000, L'x')), kRegDiskFull);
    EXPECT_TRUE(wasLogged(L"full"));
    EXPECT_EQ(key.text(L"v"), L"old");
    ASSERT_EQ(settingsStore()->database().execute("PRAGMA max_page_count=100000"), 0);
    EXPECT_EQ(key.set(L"v", L"new"), kRegOk);
}

TEST_F(SettingsFaultsTest, ALockedStoreIsBusyAndAWrongFolderIsAnError) {
    setSettingsBusyTimeout(50);
    const Key key(L"A");
    ASSERT_EQ(key.set(L"v", L"1"), kRegOk);
    SqliteDatabase other;
    ASSERT_EQ(other.open(toFileName(toWide(storeFile())), 100), 0);
    {
        const SqliteTransaction lock(other);
        ASSERT_EQ(lock.failure(), 0);
        EXPECT_EQ(key.set(L"v", L"2"), kRegBusy);
        EXPECT_EQ(vrexConfig()->setValue(kHxConfigUser, L"A", VrexVariant(1)), Hx::eFileAccessErr);
        EXPECT_EQ(key.text(L"v"), L"1");  // reading goes on
    }
    EXPECT_EQ(key.set(L"v", L"2"), kRegOk);
    QFile file(QDir(folder()).filePath("file"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    setFolder(file.fileName() + "/below");
    EXPECT_EQ(Key(L"A").status, kRegStoreFailed);
    EXPECT_EQ(vrexConfig(), nullptr);
    EXPECT_TRUE(wasLogged(L"KORVEX_PROFILE_DIR"));
}

}  // namespace
}  // namespace korvex::test
