// A file is replaced as a whole or not at all, whatever goes wrong.
#include "host/io/atomic_save.h"

#include "tests/io/drawing_support.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korvex::test {

namespace {

/// Files can be no larger as long as it lives, as on a full disk.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t bytes) {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SmallFiles() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int) = nullptr;
};

class AtomicSave : public ::testing::Test {
protected:
    std::string path(const char* name) const { return m_folder.filePath(name).toStdString(); }
    Hx::ErrorStatus save(const std::string& file, std::string_view bytes) {
        return saveAtomically(fromUtf8(file), bytes, error);
    }
    /// Names in the folder, hidden ones too.
    QStringList names() const {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    std::wstring error;

private:
    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(AtomicSave, KeepsThePreviousFileAsBackup) {
    ASSERT_EQ(save(path("plan.dxf"), "one"), Hx::eOk);
    EXPECT_EQ(names(), QStringList({"plan.dxf"})) << "there is nothing to keep yet";
    ASSERT_EQ(save(path("plan.dxf"), "two"), Hx::eOk);
    ASSERT_EQ(save(path("plan.dxf"), "three"), Hx::eOk);
    EXPECT_EQ(names(), QStringList({"plan.bak", "plan.dxf"}));
    EXPECT_EQ(fileBytes(path("plan.dxf")), "three");
    EXPECT_EQ(fileBytes(path("plan.bak")), "two");
    EXPECT_TRUE(error.empty());
}

TEST_F(AtomicSave, BackupThatIsTheSameFileByAnotherName) {
    putFile(path("plan.dxf"), "one");
    ASSERT_EQ(::link(path("plan.dxf").c_str(), path("plan.bak").c_str()), 0);
    ASSERT_EQ(save(path("plan.dxf"), "two"), Hx::eOk);
    EXPECT_EQ(names(), QStringList({"plan.bak", "plan.dxf"}));
    EXPECT_EQ(fileBytes(path("plan.bak")), "one");
}

TEST_F(AtomicSave, NamesOfBackups) {
    EXPECT_EQ(backupName("/a.b/plan"), "/a.b/plan.bak");
    EXPECT_EQ(backupName("plan.v2.dxf"), "plan.v2.bak");
    EXPECT_EQ(backupName(".dxf"), ".dxf.bak");
    ASSERT_EQ(save(path("old.bak"), "one"), Hx::eOk);
    ASSERT_EQ(save(path("old.bak"), "two"), Hx::eOk);
    EXPECT_EQ(fileBytes(path("old.bak")), "two");
    EXPECT_EQ(fileBytes(path("old.bak.bak")), "one");
}

TEST_F(AtomicSave, KeepsPermissions) {
    putFile(path("plan.dxf"), "one");
    ::chmod(path("plan.dxf").c_str(), 0640);
    ASSERT_EQ(save(path("plan.dxf"), "two"), Hx::eOk);
    struct stat status {};
    ASSERT_EQ(::stat(path("plan.dxf").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
}

TEST_F(AtomicSave, ReplacesTheTargetOfALink) {
    putFile(path("plan.dxf"), "one");
    ASSERT_EQ(::symlink("plan.dxf", path("middle.dxf").c_str()), 0);
    ASSERT_EQ(::symlink(path("middle.dxf").c_str(), path("link.dxf").c_str()), 0);
    ASSERT_EQ(save(path("link.dxf"), "two"), Hx::eOk);
    EXPECT_EQ(names(), QStringList({"link.dxf", "middle.dxf", "plan.bak", "plan.dxf"}));
    EXPECT_TRUE(QFileInfo(QString::fromStdString(path("link.dxf"))).isSymLink());
    EXPECT_EQ(fileBytes(path("plan.dxf")), "two");

    ASSERT_EQ(::symlink("new.dxf", path("dangling.dxf").c_str()), 0);
    ASSERT_EQ(save(path("dangling.dxf"), "three"), Hx::eOk);
    EXPECT_EQ(fileBytes(path("new.dxf")), "three");
}

TEST_F(AtomicSave, FullDiskLeavesEverythingAsItWas) {
    putFile(path("plan.dxf"), "one");
    putFile(path("plan.bak"), "zero");
    const std::string large(100000, 'x');
    {
        const SmallFiles limit(50000);
        EXPECT_EQ(save(path("plan.dxf"), large), Hx::eFileAccessErr);
    }
    EXPECT_NE(error.find(L"plan.dxf"), error.npos);
    EXPECT_NE(error.find(L"room"), error.npos);
    EXPECT_EQ(names(), QStringList({"plan.bak", "plan.dxf"}));
    EXPECT_EQ(fileBytes(path("plan.dxf")), "one");
    EXPECT_EQ(fileBytes(path("plan.bak")), "zero");
    EXPECT_EQ(save(path("plan.dxf"), large), Hx::eOk) << "once there is room";
}

TEST_F(AtomicSave, BackupThatCannotBeReplacedStopsTheSave) {
    putFile(path("plan.dxf"), "one");
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(path("plan.bak/inside"))));
    EXPECT_EQ(save(path("plan.dxf"), "two"), Hx::eFileAccessErr);
    EXPECT_NE(error.find(L"plan.bak"), error.npos);
    EXPECT_EQ(fileBytes(path("plan.dxf")), "one");
    EXPECT_EQ(names(), QStringList({"plan.bak", "plan.dxf"}));
}

TEST_F(AtomicSave, RefusesWhatIsNoOrdinaryFile) {
    ASSERT_TRUE(QDir().mkpath(QString::fromStdString(path("folder"))));
    EXPECT_EQ(save(path("folder"), "one"), Hx::eFileAccessErr);
    EXPECT_EQ(save(path("none/plan.dxf"), "one"), Hx::eFileAccessErr);
    EXPECT_EQ(save("/dev/full", "one"), Hx::eFileAccessErr);
    EXPECT_EQ(names(), QStringList({"folder"}));
}

TEST_F(AtomicSave, ReadOnlyFilesAndFoldersAreRefused) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser may write everywhere";
    }
    putFile(path("plan.dxf"), "one");
    ::chmod(path("plan.dxf").c_str(), 0444);
    EXPECT_EQ(save(path("plan.dxf"), "two"), Hx::eFileAccessErr);
    ::chmod(path("plan.dxf").c_str(), 0644);
    ::chmod(path("").c_str(), 0555);
    EXPECT_EQ(save(path("plan.dxf"), "two"), Hx::eFileAccessErr);
    ::chmod(path("").c_str(), 0755);
    EXPECT_EQ(fileBytes(path("plan.dxf")), "one");
}

}  // namespace korvex::test
