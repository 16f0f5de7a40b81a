// What texts say when their codes are taken away, and how they are set.
#include "host/db/geometry/text_content.h"

#include <gtest/gtest.h>

namespace korvex::test {
namespace {

using Lines = std::vector<std::wstring>;

TEST(TextContent, SignsOfALine) {
    EXPECT_EQ(L"\u00D850 \u00B10.1 45\u00B0", plainLine(L"%%c50 %%P0.1 45%%d"));
    EXPECT_EQ(L"50% A\u00B0", plainLine(L"50%%% %%65%%127"));
    EXPECT_EQ(L"under and over", plainLine(L"%%uunder%%u and %%Oover"));
    EXPECT_EQ(L"a^b    c", plainLine(L"a^ b^Ic"));
    EXPECT_EQ(L"100%", plainLine(L"100%"));
    EXPECT_EQ(L"", plainLine(L"%%"));
    EXPECT_EQ(L"%%x", plainLine(L"%%x")) << "no code";
}

TEST(TextContent, CodesOfAParagraph) {
    EXPECT_EQ((Lines{L"Plain red", L"second"}),
              plainParagraph(L"{\\fArial|b1|i0;Plain} {\\C1;red}\\Psecond"));
    EXPECT_EQ((Lines{L"1/2 and +0.1 -0.2"}), plainParagraph(L"\\S1/2; and \\S+0.1^ -0.2;"));
    EXPECT_EQ((Lines{L"3/4"}), plainParagraph(L"\\A1;\\H0.7x;\\S3#4;"));
    EXPECT_EQ((Lines{L"{a\\b}"}), plainParagraph(L"\\{a\\\\b\\}"));
    EXPECT_EQ((Lines{L"a", L"b", L"c"}), plainParagraph(L"\\pi1,l2;a^Jb\\Nc"));
    EXPECT_EQ((Lines{L"\u00D8 5\u00A0m"}), plainParagraph(L"\\L%%c\\l 5\\~m"));
    EXPECT_EQ((Lines{L"open"}), plainParagraph(L"open{\\H2x")) << "a code without its end";
    EXPECT_EQ((Lines{L"1"}), plainParagraph(L"\\S1"));
    EXPECT_EQ((Lines{L"end\\"}), plainParagraph(L"end\\"));
}

}  // namespace
}  // namespace korvex::test
