// A file is replaced as a whole or not at all, whatever goes wrong.
#include "host/io/atomic_save.h"

#include "tests/io/drawing_support.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
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

/// Another user's rights as long as it lives; only the superuser may take them.
class OtherUser {
public:
    OtherUser(uid_t user, gid_t group, const std::vector<gid_t>& groups) {
        m_groups.resize(static_cast<std::size_t>(::getgroups(0, nullptr)));
        static_cast<void>(::getgroups(static_cast<int>(m_groups.size()), m_groups.data()));
        EXPECT_EQ(::setgroups(groups.size(), groups.data()), 0);
        EXPECT_EQ(::setegid(group), 0);
        EXPECT_EQ(::seteuid(user), 0);
    }
    ~OtherUser() {
        EXPECT_EQ(::seteuid(0), 0);
        EXPECT_EQ(::setegid(0), 0);
        EXPECT_EQ(::setgroups(m_groups.size(), m_groups.data()), 0);
    }

private:
    std::vector<gid_t> m_groups;
};

class AtomicSave : public ::testing::Test {
protected:
    std::string path(const char* name) const { return m_folder.filePath(name).toStdString(); }
    Hx::ErrorStatus save(const std::string& file, std::string_view bytes) {
        return saveAtomically(fromUtf8(file), bytes, error);
    }
    /// Saving fails for someone who is not the superuser, and the message says what to do.
    bool isRefusedToOthers() {
        const pid_t child = ::fork();
        if (child == 0) {
            constexpr unsigned kNobody = 65534;
            const bool isOther = ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
            const bool isRefused = save(path("plan.dxf"), "two") == Hx::eFileAccessErr &&
                                   error.find(L"Permission denied. Save under another name or in another "
                                              L"folder (SAVEAS)") != error.npos;
            ::_exit(isOther && isRefused ? 0 : 1);
        }
        int status = -1;
        return ::waitpid(child, &status, 0) == child && status == 0;
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

TEST_F(AtomicSave, ColleaguesKeepTheirFileAndStrangersGetNoMoreOfIt) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only the superuser may take another user's part";
    }
    constexpr uid_t kOwner = 2001;
    constexpr uid_t kSaver = 2002;
    constexpr gid_t kTeam = 3001;
    constexpr gid_t kSavers = 3002;
    struct Case {
        mode_t before;
        bool isInTeam;
        mode_t after;
    };
    // One who may write the file only as one of the others cannot give it the team's group.
    for (const Case& one : {Case{0660, true, 0660}, Case{02664, true, 0664}, Case{0646, false, 0644},
                            Case{0606, false, 0600}, Case{0676, false, 0666}}) {
        putFile(path("plan.dxf"), "one");
        ASSERT_EQ(::chown(path("plan.dxf").c_str(), kOwner, kTeam), 0);
        ASSERT_EQ(::chmod(path("plan.dxf").c_str(), one.before), 0);
        ASSERT_EQ(::chmod(path(".").c_str(), 0777), 0);
        {
            const OtherUser saver(kSaver, kSavers,
                                  one.isInTeam ? std::vector<gid_t>{kTeam} : std::vector<gid_t>());
            ASSERT_EQ(save(path("plan.dxf"), "two"), Hx::eOk) << toUtf8(error);
        }
        struct stat status {};
        ASSERT_EQ(::stat(path("plan.dxf").c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, kSaver);
        EXPECT_EQ(status.st_gid, one.isInTeam ? kTeam : kSavers);
        EXPECT_EQ(status.st_mode & 07777, one.after);
        ASSERT_EQ(save(path("plan.dxf"), "three"), Hx::eOk) << "the superuser gives it back to all";
        ASSERT_EQ(::stat(path("plan.dxf").c_str(), &status), 0);
        EXPECT_EQ(status.st_uid, kSaver);
        ::unlink(path("plan.dxf").c_str());
        ::unlink(path("plan.bak").c_str());
    }
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
    putFile(path("plan.dxf"), "one");
    ::chmod(path("plan.dxf").c_str(), 0444);
    ::chmod(path("").c_str(), 0755);
    EXPECT_TRUE(isRefusedToOthers());
    ::chmod(path("plan.dxf").c_str(), 0644);
    ::chmod(path("").c_str(), 0555);
    EXPECT_TRUE(isRefusedToOthers());
    ::chmod(path("").c_str(), 0755);
    EXPECT_EQ(fileBytes(path("plan.dxf")), "one");
}

}  // namespace korvex::test
