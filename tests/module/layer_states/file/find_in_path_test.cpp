// Finding files by bare names.
#include "tests/module/module_fixture.h"

#include "layer_states/file/find_in_path.h"
#include "layer_states/file/layer_state_files.h"

#include <QDir>

namespace korvex::test {
namespace {

class FindInPath : public ModuleTest {
protected:
    void TearDown() override {
        qunsetenv("KORVEXSEARCHPATH");
        ModuleTest::TearDown();
    }
    void put(const char* name) {
        QDir().mkpath(QFileInfo(QString::fromStdWString(path(name))).path());
        write(name, "x");
    }
    void search(const std::wstring& folders) {
        qputenv("KORVEXSEARCHPATH", QString::fromStdWString(folders).toUtf8());
    }
};

TEST_F(FindInPath, TakesTheFirstFolderThatHasIt) {
    put("one/a.las");
    put("two/a.las");
    put("two/b.las");
    search(path("none") + L"; ;" + path("one") + L" ; " + path("two"));
    EXPECT_EQ(KvFindInPath(L"a.las"), path("one/a.las"));
    EXPECT_EQ(KvFindInPath(L"b.las"), path("two/b.las"));
    EXPECT_EQ(KvFindInPath(L"c.las"), L"c.las");
    EXPECT_EQ(KvFindInPath(L"./b.las"), L"./b.las");
    EXPECT_EQ(KvFindInPath(L"one"), L"one") << "a folder is no file";
    EXPECT_EQ(KvFindInPath(L""), L"");
    EXPECT_EQ(KvFindUserPathInCompletePath(path("one"), L"b.las"), L"");
}

TEST_F(FindInPath, LooksBesideTheDrawingAfterTheSearchPath) {
    write("floor.dxf", SmallDrawing().text());
    open("floor.dxf");
    put("a.las");
    put("one/b.las");
    put("b.las");
    search(path("one"));
    EXPECT_EQ(KvFindInPath(L"a.las"), path("a.las"));
    EXPECT_EQ(KvFindInPath(L"b.las"), path("one/b.las"));
}

TEST_F(FindInPath, LooksInTheProgramsFolderLast) {
    const QDir folder(QCoreApplication::applicationDirPath() + "/Template");
    ASSERT_TRUE(!folder.exists() && QDir().mkpath(folder.path()));
    const QString file = folder.filePath("sheet.DWT");
    ASSERT_TRUE(QFile::copy(KORVEX_SOURCE_DIR "/README.md", file));
    EXPECT_EQ(KvFindInPath(L"sheet.DWT"), file.toStdWString());
    EXPECT_EQ(KvFindInPath(L"sheet.shx"), L"sheet.shx");
    put("sheet.DWT");
    search(path(""));
    EXPECT_EQ(KvFindInPath(L"sheet.DWT"), path("sheet.DWT"));
    QDir(folder).removeRecursively();
}

TEST_F(FindInPath, KindsOfFilesAreToldByTheirExtensions) {
    EXPECT_EQ(stateSourceOf(L"/x.y/a.LAS"), KvStateSource::layerStateFile);
    EXPECT_EQ(stateSourceOf(L"a.b.dwg"), KvStateSource::drawing);
    EXPECT_EQ(stateSourceOf(L"a.Dwt"), KvStateSource::drawing);
    EXPECT_EQ(stateSourceOf(L"a.dxf"), KvStateSource::drawing);
    EXPECT_EQ(stateSourceOf(L"a.las.txt"), KvStateSource::none);
    EXPECT_EQ(stateSourceOf(L"las"), KvStateSource::none);
}

}  // namespace
}  // namespace korvex::test
