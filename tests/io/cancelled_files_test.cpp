// The user gives up reading or saving at any moment: everything is as it was before.
#include "host/base/progress.h"
#include "host/io/atomic_save.h"
#include "tests/io/drawing_support.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

namespace korvex::test {
namespace {

/// Gives up at the report of a number; counts them.
class Impatience : public ProgressListener {
public:
    explicit Impatience(int patience) : m_patience(patience) { setProgressListener(this); }
    ~Impatience() override { setProgressListener(nullptr); }
    void begin(const std::wstring& label, bool canCancel) override {
        labels.push_back(label);
        EXPECT_TRUE(canCancel);
    }
    bool step(double part) override {
        EXPECT_GE(part, m_last);
        m_last = part;
        return ++reports <= m_patience;
    }
    void end() override {}
    int reports = 0;
    std::vector<std::wstring> labels;

private:
    int m_patience;
    double m_last = -1;
};

class CancelledFilesTest : public ::testing::Test {
protected:
    std::string path(const char* name) const { return folder.filePath(name).toStdString(); }
    std::wstring widePath(const char* name) const { return folder.filePath(name).toStdWString(); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
    QTemporaryDir folder;
};

TEST_F(CancelledFilesTest, ReadingLeavesNothing) {
    putFile(path("plan.dxf"), sheetDrawing());
    int patience = 0;
    int cancelled = 0;
    for (Hx::ErrorStatus status = Hx::eCancelled; status != Hx::eOk; ++patience) {
        ASSERT_LT(patience, 2000);
        HxDbDatabase database(false);
        Impatience user(patience);
        status = database.readDwgFile(widePath("plan.dxf").c_str());
        EXPECT_EQ(user.labels, std::vector<std::wstring>{L"Opening \"plan.dxf\""});
        if (status != Hx::eOk) {
            ++cancelled;
            ASSERT_EQ(status, Hx::eCancelled);
            EXPECT_STREQ(database.readError(), L"cancelled");
            EXPECT_TRUE(database.layerTableId().isNull());
            EXPECT_STREQ(database.getFilename(), L"");
            EXPECT_EQ(database.saveAs(widePath("none.dxf").c_str()), Hx::eInvalidContext);
        } else {
            EXPECT_LE(user.reports, patience) << "it gave up, and was not heard";
        }
    }
    EXPECT_GT(cancelled, 30) << "each record of a small drawing is a moment";
    EXPECT_EQ(files(), QStringList{"plan.dxf"});
}

TEST_F(CancelledFilesTest, SavingLeavesTheOldFileAndItsBackup) {
    putFile(path("plan.dxf"), sheetDrawing());
    putFile(path("plan.bak"), "older");
    HxDbDatabase database(false);
    ASSERT_EQ(database.readDwgFile(widePath("plan.dxf").c_str()), Hx::eOk);
    freeze(database, L"WALLS");
    const std::string wanted = written(database);
    int patience = 0;
    for (Hx::ErrorStatus status = Hx::eCancelled; status != Hx::eOk; ++patience) {
        ASSERT_LT(patience, 2000);
        {
            const Impatience user(patience);
            status = database.saveAs(widePath("plan.dxf").c_str());
        }
        if (status != Hx::eOk) {
            ASSERT_EQ(status, Hx::eCancelled);
            EXPECT_STREQ(database.readError(), L"cancelled: the file is as it was.");
            ASSERT_TRUE(fileBytes(path("plan.dxf")) == sheetDrawing());
            ASSERT_EQ(fileBytes(path("plan.bak")), "older");
            ASSERT_EQ(files(), (QStringList{"plan.bak", "plan.dxf"}));
            ASSERT_TRUE(database.isModified());
            ASSERT_TRUE(written(database) == wanted) << "the time of saving was taken back";
        }
    }
    EXPECT_GT(patience, 30);
    EXPECT_FALSE(database.isModified());
    EXPECT_TRUE(fileBytes(path("plan.bak")) == sheetDrawing());
}

TEST_F(CancelledFilesTest, AConverterIsStopped) {
    putFile(path("slow"), "#!/bin/sh\nexec sleep 60\n");
    QFile::setPermissions(folder.filePath("slow"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    putFile(path("plan.dwg"), "AC1027 compressed");
    qputenv("KORVEX_DWG_CONVERTER", folder.filePath("slow").toUtf8());
    HxDbDatabase database(false);
    QElapsedTimer clock;
    clock.start();
    Impatience user(5);
    EXPECT_EQ(database.readDwgFile(widePath("plan.dwg").c_str()), Hx::eCancelled);
    EXPECT_LT(clock.elapsed(), 20000);
    qunsetenv("KORVEX_DWG_CONVERTER");
}

}  // namespace
}  // namespace korvex::test
