// The program from its command line to its exit status.
#include "tests/app/korvex_run.h"

#include <QImage>
#include <QSet>

#include "sdk/hxdbsymtb.h"

namespace korvex::test {
namespace {

class Program : public KorvexTest {};

TEST_F(Program, DrawsSavesAndReadsBack) {
    const ProgramRun run = commands(
        {}, {"-LAYER N My Walls\nC 3 My Walls\nS My Walls\n\n", "LINE 0,0 10,0 10,5 C", "SAVEAS a b.dxf"});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.says("Command: LINE\nSpecify first point: 0,0\n"));
    const auto saved = drawing("a b.dxf");
    ASSERT_NE(saved, nullptr);
    const HxDbObjectPointer<HxDbLayerTableRecord> current(saved->clayer(), HxDb::kForRead);
    ASSERT_TRUE(current);
    EXPECT_STREQ(current->name(), L"My Walls");
    EXPECT_EQ(current->color().colorIndex(), 3);
    const ProgramRun again = commands({"a b.dxf"}, {"ERASE ALL \nQSAVE"});
    EXPECT_EQ(again.status, 0) << again.err.toStdString();
    EXPECT_TRUE(again.says("3 found, 3 in all"));
    EXPECT_FALSE(read("a b.dxf").contains("LINE\n"));
    EXPECT_TRUE(read("a b.dxf.bak").contains("LINE\n") || read("a b.bak").contains("LINE\n"));
}

TEST_F(Program, HelpOfTheScriptsNeedsNoBuild) {
    const QTemporaryDir tools;  // no compiler, no package manager
    for (const QString name : {"cat", "dirname", "sed"}) {
        QFile::link("/usr/bin/" + name, tools.filePath(name));
    }
    const auto outputOf = [&tools](const char* script, const QStringList& arguments) {
        QProcess process;
        process.setProgram(QString(KORVEX_SOURCE_DIR) + script);
        process.setArguments(arguments);
        QProcessEnvironment bare;
        bare.insert("PATH", tools.path());
        process.setProcessEnvironment(bare);
        process.start();
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return QString(process.readAllStandardOutput());
    };
    const QString help = outputOf("/run", {"--help"});
    const QString own = korvex({"--help"}).out;
    for (const QString& line : own.split('\n')) {
        EXPECT_TRUE(!line.startsWith("  -") || help.contains(line)) << line.toStdString();
    }
    EXPECT_TRUE(outputOf("/check", {"--help"}).contains("--tidy"));
}

TEST_F(Program, RunsScriptsInOrder) {
    write("one.scr", "; a comment\nLUPREC 3\n");
    write("two.scr", "SETVAR LUPREC\n\n");
    const ProgramRun run = korvex({"--script", "one.scr", "-c", "SETVAR LUPREC 5", "--script", "two.scr"});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.says("Enter new value for LUPREC <4>: 3"));
    EXPECT_TRUE(run.says("Enter new value for LUPREC <3>: 5"));
    EXPECT_TRUE(run.says("Enter new value for LUPREC <5>: \n"));
    const ProgramRun piped = korvex({"--script", "-"}, "SCRIPT two.scr\nREGEN\n");
    EXPECT_EQ(piped.status, 0);
    EXPECT_LT(piped.out.indexOf("Command: SETVAR"), piped.out.indexOf("Command: REGEN"));
}

TEST_F(Program, SaysWhatWentWrongAndWhere) {
    write("bad.scr", "REGEN\nNOSUCH\nLINE 0,0\n");
    const ProgramRun run = korvex({"--script", "bad.scr"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.complains("korvex: bad.scr, line 2: Unknown command \"NOSUCH\""));
    EXPECT_TRUE(run.complains("LINE was cancelled: the script ended"));
    write("bad.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n  0\nENDSEC\n  0\nEOF\n");
    const ProgramRun damaged = commands({"bad.dxf"}, {"REGEN"});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_TRUE(damaged.complains("korvex: bad.dxf: line 8, group 10")) << damaged.err.toStdString();
    EXPECT_FALSE(damaged.says("Command:"));
    EXPECT_EQ(korvex({"--script", "none.scr"}).status, 1);
    EXPECT_EQ(korvex({"--nosuch"}).status, 1);
    EXPECT_EQ(korvex({"--module", "none.hrx"}).status, 1);
}

TEST_F(Program, ChecksADrawingAgainstTheStateOfAnother) {
    ASSERT_TRUE(QFile::copy(KORVEX_SOURCE_DIR "/samples/office-floor.dxf", path("plan.dxf")));
    const ProgramRun made = commands({"plan.dxf"}, {"-LAYERSTATE Save evening", "-LAYER Freeze A-FURN*", " ",
                                                    "-LAYERSTATE Restore evening",
                                                    "-LAYERSTATE Compare evening", "SAVEAS standard.dxf"});
    EXPECT_EQ(made.status, 0) << made.err.toStdString();
    EXPECT_TRUE(made.says("evening: the same"));
    EXPECT_EQ(commands({"plan.dxf"}, {"-LAYERSTATE Compare standard.dxf", "evening"}).status, 0);
    const ProgramRun changed = commands(
        {"plan.dxf"}, {"-LAYER C 3 S-COLS", " ", "-LAYERSTATE Compare standard.dxf", "evening", "QUIT N"});
    EXPECT_EQ(changed.status, 1);
    EXPECT_TRUE(changed.says("\n  S-COLS: color: Green, should be White\n"));
    EXPECT_TRUE(changed.complains("evening: 1 difference(s)"));
    EXPECT_EQ(commands({"plan.dxf"}, {"-LAYERSTATE Compare none.dxf"}).status, 1);
}

TEST_F(Program, TellsOfChangesThatAreLost) {
    EXPECT_TRUE(commands({}, {"LINE 0,0 1,1 \n"}).complains("were not saved"));
    EXPECT_FALSE(commands({}, {"LINE 0,0 1,1 \n", "QUIT N"}).complains("were not saved"));
}

TEST_F(Program, HelpsAndNamesItsVersion) {
    EXPECT_TRUE(korvex({"--help"}).says("--script"));
    EXPECT_EQ(korvex({"--version"}).out, "korvex 1.0\n");
}

TEST_F(Program, AWindowRunsScriptsFirstAndStaysUntilQuit) {
    write("two.scr", "LINE 0,0 1,1 \nSAVEAS b.dxf\n");
    const ProgramRun run =
        windowed({"--script", "two.scr", "-c", "NOSUCH", "-c", "PICTURE window.png", "-c", "QUIT"});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.isEmpty()) << "the dialogue is in the window";
    EXPECT_TRUE(run.complains("Unknown command \"NOSUCH\""));
    EXPECT_TRUE(read("b.dxf").contains("LINE"));
    EXPECT_FALSE(QImage(path("window.png")).isNull());
}

TEST_F(Program, AWindowComesBackWithItsPalettes) {
    const QString look = "PICTURE palette.png KvLayerManagerWnd";
    EXPECT_TRUE(windowed({"-c", look, "-c", "QUIT"}).complains("KvLayerManagerWnd"))
        << "a new profile has none";
    windowed({"-c", "LAYERPALETTE", "-c", "QUIT"});
    windowed({"-c", look, "-c", "LAYERCLOSE", "-c", "QUIT"});
    const QSize docked = QImage(path("palette.png")).size();
    EXPECT_GT(docked.height(), docked.width());
    EXPECT_TRUE(QFile::remove(path("palette.png")));
    windowed({"-c", "PICTURE window.png", "-c", look, "-c", "QUIT"});
    EXPECT_FALSE(QFile::exists(path("palette.png"))) << "it was closed";

    // A docked palette takes room from the drawing, a floating one does not.
    const auto width = [this](const QStringList& strings) {
        QStringList arguments;
        for (const QString& string : strings + QStringList{"PICTURE view.png DrawingView", "QUIT"}) {
            arguments << "-c" << string;
        }
        windowed(arguments);
        return QImage(path("view.png")).width();
    };
    const int whole = width({});
    EXPECT_LT(width({"LAYERPALETTE"}), whole);
    EXPECT_LT(width({look}), whole) << "docked again";
    EXPECT_EQ(width({"CLICK dockPanelFloat"}), whole);
    EXPECT_TRUE(QFile::remove(path("palette.png")));
    EXPECT_EQ(width({look}), whole) << "floating again";
    EXPECT_TRUE(QFile::exists(path("palette.png")));
}

TEST_F(Program, AWindowOpensOnADrawingThatCannotBeRead) {
    // The box about it would come after the scripts, which find a new drawing.
    write("bad.dxf", "  0\nSECTION\n  2\nENTITIES\n  0\nLINE\n 10\nabc\n  0\nENDSEC\n  0\nEOF\n");
    const ProgramRun run = windowed({"bad.dxf", "-c", "SAVEAS new.dxf", "-c", "QUIT"});
    EXPECT_TRUE(run.complains("line 8, group 10")) << run.err.toStdString();
    EXPECT_EQ(run.status, 1);
    EXPECT_FALSE(read("new.dxf").isEmpty());
}

TEST_F(Program, MakesAWindowForAPictureWithoutADisplay) {
    const ProgramRun run = commands({KORVEX_SOURCE_DIR "/samples/office-floor.dxf"},
                                    {"ZOOM E", "PICTURE shot.png", "PICTURE tabs.png DocumentTabs"});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    const QImage shot(path("shot.png"));
    EXPECT_EQ(shot.size(), QSize(1280, 800));
    // The drawing has many colours, the window has few.
    QSet<QRgb> colors;
    for (int y = 100; y < 600; y += 2) {
        for (int x = 0; x < shot.width(); x += 2) {
            colors.insert(shot.pixel(x, y));
        }
    }
    EXPECT_GT(colors.size(), 8);
    EXPECT_FALSE(QImage(path("tabs.png")).isNull());
    EXPECT_TRUE(run.says("Command: PICTURE"));
}

TEST_F(Program, OpensSeveralDrawings) {
    commands({}, {"LINE 0,0 1,1 \nSAVEAS a.dxf\nERASE L \nSAVEAS b.dxf"});
    const ProgramRun run = commands({"a.dxf", "b.dxf"}, {"DWGNAME", "CLOSE", "DWGNAME"});
    EXPECT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_LT(run.out.indexOf("DWGNAME = \"a.dxf\""), run.out.indexOf("DWGNAME = \"b.dxf\""));
}

}  // namespace
}  // namespace korvex::test
