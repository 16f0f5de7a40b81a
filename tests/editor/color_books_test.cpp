// Colour books: the text format, the folders, colours by name.
#include "tests/editor/editor_fixture.h"

#include "host/editor/color_books.h"

#include <QDir>
#include <QFile>

#include <set>

namespace korvex::test {
namespace {

class ColorBooksTest : public EditorTest {
protected:
    void write(const char* name, const QByteArray& text) {
        QDir().mkpath(colorBookFolder());
        QFile file(QDir(colorBookFolder()).filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    HxCmColor colorOf(const wchar_t* name) {
        return HxDbObjectPointer<HxDbLayerTableRecord>(layer(name), HxDb::kForRead)->color();
    }
};

TEST(ColorBookFormat, ReadsPagesAndNames) {
    ColorBook book;
    FileFault fault;
    ASSERT_TRUE(readColorBook("\xEF\xBB\xBF; note\r\nbook:  T\xC3\xB6ne \r\n\r\npage: A\r\nRed 1\t255,0,7\r\n"
                              "page: B\r\nBlue   0,0,255",
                              book, fault))
        << testing::PrintToString(fault.text());
    EXPECT_EQ(book.name, L"T\u00F6ne");
    ASSERT_EQ(book.pages.size(), 2U);
    EXPECT_EQ(book.pages[0].colors[0].name, L"Red 1");
    EXPECT_EQ(book.pages[1].title, L"B");
    const HxCmColor color = book.color(*book.find(L"red 1"));
    EXPECT_EQ(color.getDictionaryKey(), L"T\u00F6ne$Red 1");
    EXPECT_EQ(color.blue(), 7);
}

TEST(ColorBookFormat, TellsWhereItIsWrong) {
    struct Case {
        const char* text;
        int line;
        const wchar_t* what;
    };
    const Case cases[] = {
        {"", 0, L"no color book"},
        {"Red 1,2,3\n", 1, L"first line"},
        {"book: A\nRed 1,2,3\n", 2, L"on no page"},
        {"book: A\n", 1, L"no colors"},
        {"book: A\npage: P\npage: Q\nRed 1,2,3\n", 3, L"Page \"P\" has no colors"},
        {"book: A\npage: P\nRed 1,2,3\npage: p\n", 4, L"page \"p\" already"},
        {"book: A\npage: P\nRed 1,2\n", 3, L"does not end with a color"},
        {"book: A\npage: P\nRed 1,2,256\n", 3, L"does not end with a color"},
        {"book: A\npage: P\nRed 1,2,-3\n", 3, L"does not end with a color"},
        {"book: A\npage: P\nRed 1,2,3,4\n", 3, L"does not end with a color"},
        {"book: A\npage: P\n1,2,3\n", 3, L"no name"},
        {"book: A\n;\npage: P\nRed 1,2,3\n\nRED 1,2,4\n", 6, L"\"RED\" already"},
        {"book: A$B\n", 1, L"\"$\""},
        {"book: A\nbook: B\n", 2, L"second"},
        {"book: A\npage: R\xF6t\n", 2, L"UTF-8"},
        {"book: A\npage: P\x01\n", 2, L"control character"},
    };
    for (const Case& c : cases) {
        ColorBook book;
        FileFault fault;
        EXPECT_FALSE(readColorBook(c.text, book, fault)) << c.text;
        EXPECT_EQ(fault.line, c.line) << c.text;
        EXPECT_TRUE(contains(fault.what, c.what)) << c.text << testing::PrintToString(fault.what);
        EXPECT_FALSE(fault.remedy.empty()) << c.text;
    }
}

TEST_F(ColorBooksTest, TheProgramHasItsOwn) {
    const ColorBooks all = loadColorBooks();
    EXPECT_EQ(all.faults.size(), 0U);
    const ColorBook* const hues = all.find(L"tidewater hues");
    ASSERT_NE(hues, nullptr);
    std::set<std::uint32_t> different;
    for (const ColorBookPage& page : hues->pages) {
        for (const BookColor& color : page.colors) {
            different.insert(hues->color(color).color());
        }
    }
    EXPECT_GT(different.size(), 150U);
}

TEST_F(ColorBooksTest, ADamagedBookLeavesTheOthers) {
    const std::size_t own = loadColorBooks().books.size();
    write("a.cbk", "book: Broken\npage: P\nRed 1,2\n");
    write("b.cbk", "book: Mine\npage: P\nRed 1,2,3\n");
    write("c.cbk", "book: MINE\npage: P\nRed 3,2,1\n");
    write("d.txt", "book: Not looked at\npage: P\nRed 1,2,3\n");
    const ColorBooks all = loadColorBooks();
    EXPECT_EQ(all.books.size(), own + 1);
    EXPECT_EQ(all.find(L"Mine")->color(all.find(L"Mine")->pages[0].colors[0]).red(), 1);
    ASSERT_EQ(all.faults.size(), 2U);
    EXPECT_TRUE(contains(all.faults[0].text(), L"a.cbk\", line 3: \"Red 1,2\" does not end with a color."));
    EXPECT_TRUE(contains(all.faults[1].text(), L"c.cbk\": The color book \"MINE\" is there already, from"));
    EXPECT_TRUE(contains(all.faults[1].text(), L"b.cbk\""));
}

TEST_F(ColorBooksTest, LayersTakeBookColours) {
    write("mine.cbk", "book: Mine\npage: P\nSunset red 250,80,10\n");
    run(L"-LAYER N A,B\nC CO mine\nsunset RED\nA\n\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(colorOf(L"A").getDictionaryKey(), L"Mine$Sunset red");
    EXPECT_EQ(colorOf(L"A").green(), 80);

    QFile::remove(QDir(colorBookFolder()).filePath("mine.cbk"));
    run(L"-LAYER C CO Mine\nSunset red\nB\n\n");  // layer A has it still
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(colorOf(L"B"), colorOf(L"A"));

    run(L"-LAYER C CO Mine\nNope\n\n");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"\"Nope\" of book \"Mine\" is not known"));
}

}  // namespace
}  // namespace korvex::test
