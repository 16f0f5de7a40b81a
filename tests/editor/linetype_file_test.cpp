// Linetype files: the text format, loading into a drawing.
#include "tests/editor/editor_fixture.h"

#include "host/editor/linetype_file_loader.h"

#include <QFile>

namespace korvex::test {
namespace {

using Dashes = std::vector<double>;

class LinetypeFileTest : public EditorTest {
protected:
    HxDbObjectId linetype(const wchar_t* name) {
        const HxDbObjectPointer<HxDbSymbolTable> table(database().linetypeTableId(), HxDb::kForRead);
        HxDbObjectId id;
        table->getAt(name, id);
        return id;
    }
    static Dashes dashes(HxDbObjectId id) {
        const HxDbObjectPointer<HxDbLinetypeTableRecord> record(id, HxDb::kForRead);
        Dashes all;
        for (int i = 0; record && i < record->numDashes(); ++i) {
            all.push_back(record->dashLengthAt(i));
        }
        return all;
    }
};

TEST(LinetypeFormat, ReadsPatterns) {
    LinetypeFile file;
    FileFault fault;
    ASSERT_TRUE(readLinetypes("\xEF\xBB\xBF; note\r\n*DASHED , Dashed, __ __\r\n\r\n;\r\nA,6,-3\r\n"
                              "*My dots\r\na, 0 , -.25\r\n"
                              "*FENCE,--x--\r\nA,6,-3,[\"X, Y\",STANDARD,S=1],-3\r\n"
                              "*continuous,Solid\r\nA,1,-1",
                              file, fault))
        << testing::PrintToString(fault.text());
    ASSERT_EQ(file.linetypes.size(), 2U);
    EXPECT_EQ(file.linetypes[0].name, L"DASHED");
    EXPECT_EQ(file.linetypes[0].description, L"Dashed, __ __");
    EXPECT_EQ(file.linetypes[0].dashes, (Dashes{6, -3}));
    EXPECT_EQ(file.linetypes[1].name, L"My dots");
    EXPECT_EQ(file.linetypes[1].dashes, (Dashes{0, -0.25}));
    ASSERT_EQ(file.leftOut.size(), 2U);
    EXPECT_EQ(file.leftOut[0].line, 8);
    EXPECT_TRUE(contains(file.leftOut[0].what, L"\"FENCE\" contains shapes or texts"));
    EXPECT_TRUE(contains(file.leftOut[1].what, L"\"continuous\" is one that every drawing has"));
}

TEST(LinetypeFormat, TellsWhereItIsWrong) {
    struct Case {
        const char* text;
        int line;
        const wchar_t* what;
    };
    const Case cases[] = {
        {"; nothing\n", 0, L"no linetype in this file"},
        {"A,1,-1\n", 1, L"belongs to no linetype"},
        {"*A,x\n", 1, L"\"A\" has no pattern"},
        {"*A,x\n*B,y\nA,1,-1\n", 2, L"\"A\" has no pattern before"},
        {"*A,x\nA,1,-1\nA,2,-2\n", 3, L"belongs to no linetype"},
        {"*,x\nA,1,-1\n", 1, L"cannot be a linetype's name"},
        {"*A|B,x\nA,1,-1\n", 1, L"cannot be a linetype's name"},
        {"*A,x\nA,1,-1\n\n*a,y\nA,2,-2\n", 4, L"\"a\" is in line 1 already"},
        {"*A,x\nB,1,-1\n", 2, L"does not begin with \"A\""},
        {"*A,x\nA,1,-1,\n", 2, L"\"\" in the pattern"},
        {"*A,x\nA,1,-1;5\n", 2, L"\"-1;5\" in the pattern"},
        {"*A,x\nA,1,nan\n", 2, L"is no length"},
        {"*A,x\nA,1,-1e7\n", 2, L"is no length"},
        {"*A,x\nA\n", 2, L"has 0 lengths"},
        {"*A,x\nA,1,-1,1,-1,1,-1,1,-1,1,-1,1,-1,1\n", 2, L"has 13 lengths"},
        {"*A,x\nA,-1,1\n", 2, L"begins with a gap"},
        {"*A,x\nA,0,0\n", 2, L"has no gap"},
        {"*A,\xE4\nA,1,-1\n", 1, L"UTF-8"},
    };
    for (const Case& c : cases) {
        LinetypeFile file;
        FileFault fault;
        EXPECT_FALSE(readLinetypes(c.text, file, fault)) << c.text;
        EXPECT_EQ(fault.line, c.line) << c.text;
        EXPECT_TRUE(contains(fault.what, c.what)) << c.text << testing::PrintToString(fault.what);
        EXPECT_FALSE(fault.remedy.empty()) << c.text;
    }
}

TEST_F(LinetypeFileTest, LoadsTheProgramsOwnInOneStep) {
    LinetypeFile own;
    FileFault fault;
    ASSERT_TRUE(loadLinetypeFile(ownLinetypeFile(), own, fault)) << testing::PrintToString(fault.text());
    EXPECT_GE(own.linetypes.size(), 12U);
    EXPECT_TRUE(own.leftOut.empty());
    const LoadedLinetypes loaded = loadLinetypes(database(), own.linetypes);
    EXPECT_EQ(loaded.ids.size(), own.linetypes.size());
    EXPECT_EQ(dashes(linetype(L"dashed")), (Dashes{6, -3}));
    EXPECT_EQ(linetypePresence(database(), own.linetypes[0]), LinetypePresence::same);
    run(L"U\n");
    EXPECT_TRUE(linetype(L"dashed").isNull());
    EXPECT_FALSE(database().isModified());
}

TEST_F(LinetypeFileTest, RedefinesAndUndoes) {
    loadLinetypes(database(), {{L"MINE", L"first", {4, -1}, 1}});
    const HxDbObjectId mine = linetype(L"MINE");
    const LinetypeDefinition second = {L"mine", L"second", {2, -1, 0, -1}, 1};
    EXPECT_EQ(linetypePresence(database(), second), LinetypePresence::different);
    loadLinetypes(database(), {second});
    EXPECT_EQ(linetype(L"MINE"), mine);
    EXPECT_EQ(dashes(mine), (Dashes{2, -1, 0, -1}));
    run(L"U\n");
    EXPECT_EQ(dashes(mine), (Dashes{4, -1}));
}

TEST_F(LinetypeFileTest, TellsWhatTheDrawingRefuses) {
    loadLinetypes(database(), {{L"MINE", L"first", {4, -1}, 1}});
    const HxDbObjectPointer<HxDbLinetypeTableRecord> reader(linetype(L"MINE"), HxDb::kForRead);
    const LoadedLinetypes loaded =
        loadLinetypes(database(), {{L"MINE", L"", {1, -1}, 1}, {L"OTHER", L"", {1, -1}, 3}});
    ASSERT_EQ(loaded.failures.size(), 1U);
    EXPECT_TRUE(contains(loaded.failures[0], L"\"MINE\" cannot be loaded (eWasOpenForRead"));
    EXPECT_FALSE(linetype(L"OTHER").isNull());
}

/// The groups of linetype MINE in a drawing of tests that was saved after loading it.
QByteArray savedRecord(const char* drawing, const QString& saved) {
    HxDbDatabase database(false);
    EXPECT_EQ(
        database.readDwgFile((KORVEX_SOURCE_DIR "/samples/small/" + QString(drawing)).toStdWString().c_str()),
        Hx::eOk);
    EXPECT_EQ(loadLinetypes(database, {{L"MINE", L"My own", {6, -3}, 1}}).ids.size(), 1U);
    EXPECT_EQ(saveAs(database, saved.toStdWString()), Hx::eOk);
    QFile file(saved);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll().replace("\r\n", "\n").replace(' ', "");
    const int at = bytes.indexOf("\n2\nMINE\n");
    return at < 0 ? QByteArray() : bytes.mid(at, bytes.indexOf("\n0\nENDTAB\n", at) - at);
}

TEST_F(LinetypeFileTest, WritesWhatTheVersionKnows) {
    const QString saved = QString::fromStdWString(path("saved.dxf"));
    const QByteArray old = savedRecord("r12.dxf", saved);
    EXPECT_TRUE(old.contains("\n3\nMyown\n")) << old.toStdString();
    EXPECT_TRUE(old.contains("\n49\n")) << old.toStdString();
    EXPECT_FALSE(old.contains("\n74\n")) << old.toStdString();
    const QByteArray late = savedRecord("r2018.dxf", saved);
    EXPECT_EQ(late.count("\n74\n0"), 2) << late.toStdString();
}

}  // namespace
}  // namespace korvex::test
