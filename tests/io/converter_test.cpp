// Compressed drawings go through a converter, which may be missing, fail, die or hang.
#include "host/io/converter.h"

#include "tests/io/drawing_support.h"

#include <QTemporaryDir>

#include <sys/stat.h>

namespace korvex::test {

namespace {

class Converter : public ::testing::Test {
protected:
    Converter() { putFile(path("a plan.dwg"), "AC1027 compressed"); }
    ~Converter() override { qunsetenv("KORVEX_DWG_CONVERTER"); }

    std::string path(const char* name) const { return m_folder.filePath(name).toStdString(); }
    /// Makes a shell script the converter; "$1" is what comes first after `arguments`.
    void useScript(const std::string& body, const std::string& arguments = "") {
        putFile(path("converter.sh"), "#!/bin/sh\n" + body + "\n");
        ::chmod(path("converter.sh").c_str(), 0755);
        qputenv("KORVEX_DWG_CONVERTER",
                QByteArray::fromStdString("\"" + path("converter.sh") + "\"" + arguments));
    }
    Hx::ErrorStatus read(HxDbDatabase& database) {
        return database.readDwgFile(fromUtf8(path("a plan.dwg")).c_str());
    }
    std::wstring failure() {
        HxDbDatabase database(false);
        EXPECT_EQ(read(database), Hx::eFilerError);
        return database.readError();
    }

private:
    QTemporaryDir m_folder;
};

}  // namespace

TEST_F(Converter, GivesTheDrawingThatItWrites) {
    putFile(path("converted"), sheetDrawing());
    const std::string copy = "cp '" + path("converted") + "' ";
    for (const auto& [body, arguments] :
         {std::pair<std::string, std::string>{"[ \"$1\" = -o ] && [ -f \"$3\" ] && " + copy + "\"$2\"", ""},
          std::pair<std::string, std::string>{"[ -f \"$2\" ] && " + copy + "\"$3\"",
                                              " --quiet {in} {out}"}}) {
        useScript(body, arguments);
        HxDbDatabase database(false);
        ASSERT_EQ(read(database), Hx::eOk) << toUtf8(database.readError());
        EXPECT_TRUE(written(database) == sheetDrawing());
    }
}

TEST_F(Converter, EveryFailureNamesTheReasonAndTheRemedy) {
    qputenv("KORVEX_DWG_CONVERTER", "no-such-program-here");
    std::wstring error = failure();
    EXPECT_NE(error.find(L"no program \"no-such-program-here\""), error.npos) << toUtf8(error);
    EXPECT_NE(error.find(L"KORVEX_DWG_CONVERTER"), error.npos);
    EXPECT_NE(error.find(L"a plan.dwg"), error.npos);

    useScript("echo first >&2; echo version not known >&2; exit 3");
    error = failure();
    EXPECT_NE(error.find(L"exit status 3"), error.npos) << toUtf8(error);
    EXPECT_NE(error.find(L"It says: version not known"), error.npos);

    useScript("kill -SEGV $$");
    EXPECT_NE(failure().find(L"it crashed"), std::wstring::npos);

    useScript("printf '  0\\nSECTION\\n' > \"$2\"");
    HxDbDatabase database(false);
    EXPECT_EQ(read(database), Hx::eBadDxfSequence) << "half a drawing is none";
}

TEST_F(Converter, IsStoppedWhenItHangs) {
    useScript("exec sleep 60");
    std::string bytes;
    std::wstring error;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(convertDrawing(fromUtf8(path("a plan.dwg")), bytes, error, std::chrono::milliseconds(300)),
              Hx::eFilerError);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
    EXPECT_NE(error.find(L"did not finish"), error.npos) << toUtf8(error);
}

TEST_F(Converter, OnlyCompressedDrawingsNeedIt) {
    EXPECT_TRUE(isCompressedDrawing("AC1032\0\0"));
    EXPECT_TRUE(isCompressedDrawing("AC1.40"));
    EXPECT_FALSE(isCompressedDrawing("AC"));
    EXPECT_FALSE(isCompressedDrawing("  0\nSECTION\n"));
}

}  // namespace korvex::test
