// How lines of scripts are cut into words.
#include "host/ui/script/words.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

TEST(ScriptWords, KeepBlanksInQuotesAndTexts) {
    Words words("  \"a table.png\" IDC_LIST   two  blanks ");
    const Word file = words.next();
    EXPECT_EQ(file.text, "a table.png");
    EXPECT_TRUE(file.isQuoted);
    EXPECT_TRUE(words.next().is("idc_list"));
    EXPECT_EQ(words.rest(), "  two  blanks ") << "as TYPE types it";
    EXPECT_EQ(words.restAsWord(), "two  blanks");
}

TEST(ScriptWords, TakeQuotesThatDoNotEnd) {
    Words words("\"no end");
    EXPECT_EQ(words.next().text, "no end");
    EXPECT_TRUE(words.isEmpty());
    EXPECT_EQ(words.next().text, "");
    EXPECT_EQ(Words("\"left\" \"right\"").restAsWord(), "\"left\" \"right\"");
    Word quoted = Words("\"left\"").next();
    EXPECT_FALSE(quoted.is("left")) << "an item of that name, no mouse button";
}

}  // namespace
}  // namespace korvex
