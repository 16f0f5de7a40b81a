// Cutting script text into answers, and what the console makes of the dialogue.
#include "host/editor/console.h"
#include "host/editor/script_source.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

constexpr AnswerEnd blank = AnswerEnd::blank;
constexpr AnswerEnd line = AnswerEnd::line;

/// All answers of a text, each read as the ends say, the last end for all that follow.
std::vector<std::wstring> answers(const std::wstring& text, std::vector<AnswerEnd> ends,
                                  ScriptOptions options = {}) {
    ScriptSource source(text, options);
    std::vector<std::wstring> out;
    Token token;
    InputRequest request;
    for (std::size_t i = 0; request.end = ends[std::min(i, ends.size() - 1)], source.next(request, token);
         ++i) {
        out.push_back(token.cancels ? L"^C" : token.text);
    }
    return out;
}

using Words = std::vector<std::wstring>;

TEST(ScriptSource, EndsWordsAtBlanksAndNamesAtLineEnds) {
    EXPECT_EQ(answers(L"LINE 0,0 1,1\n", {blank}), (Words{L"LINE", L"0,0", L"1,1"}));
    EXPECT_EQ(answers(L"-LAYER S My Layer\nX", {blank, blank, line, blank}),
              (Words{L"-LAYER", L"S", L"My Layer", L"X"}));
    EXPECT_EQ(answers(L"a\tb", {blank}), (Words{L"a", L"b"}));
}

TEST(ScriptSource, TakesEveryFurtherBlankForEnter) {
    EXPECT_EQ(answers(L"L 0,0 1,1  U\n", {blank}), (Words{L"L", L"0,0", L"1,1", L"", L"U"}));
    EXPECT_EQ(answers(L"L 0,0 \n\nU\n", {blank}), (Words{L"L", L"0,0", L"", L"", L"U"}));
    EXPECT_EQ(answers(L"'_.vplayer _C 3 A,My B\n_C  ", {blank, blank, blank, line, blank}),
              (Words{L"'_.vplayer", L"_C", L"3", L"A,My B", L"_C", L"", L""}));
}

TEST(ScriptSource, KnowsAllLineEnds) {
    EXPECT_EQ(answers(L"a\r\nb\rc\n", {blank}), (Words{L"a", L"b", L"c"}));
}

TEST(ScriptSource, SkipsCommentLinesOfFilesOnly) {
    ScriptOptions file;
    file.comments = true;
    EXPECT_EQ(answers(L"; first\nLINE\n;second\n; third\n0,0 ;no\n;", {blank}, file),
              (Words{L"LINE", L"0,0", L";no"}));
    EXPECT_EQ(answers(L";a\n", {blank}), (Words{L";a"}));
}

TEST(ScriptSource, CancelsAtControlCharacters) {
    EXPECT_EQ(answers(L"\x03\x03_.ZOOM E\n", {blank}), (Words{L"^C", L"^C", L"_.ZOOM", L"E"}));
    EXPECT_EQ(answers(L"LINE 0,0\x1B U\n", {blank}), (Words{L"LINE", L"0,0", L"^C", L"", L"U"}));
}

TEST(ScriptSource, TellsTheLineOfTheAnswer) {
    ScriptOptions options;
    options.name = L"a.scr";
    options.comments = true;
    ScriptSource source(L";\nLINE 0,0\n1,1", options);
    Token token;
    source.next({}, token);
    source.next({}, token);
    EXPECT_EQ(source.place(), L"a.scr, line 2");
    source.next({}, token);
    EXPECT_EQ(source.place(), L"a.scr, line 3");
    EXPECT_TRUE(source.isDry());
}

TEST(Console, ShowsNoEmptyLinesForLeadingLineEnds) {
    std::wstring shown;
    bool quiet = false;
    Console console;
    console.setWriter([&](std::wstring_view text) { shown += text; });
    console.setQuiet([&] { return quiet; });
    console.prompt(L"\nSelect object:");
    console.answer(L"1,1");
    console.print(L"\nLayer \"A\" frozen.");
    console.prompt(L"\nSelect object:");
    console.answer(L"");
    console.print(L"\n\nEmpty above");
    console.message(L"end");
    EXPECT_EQ(shown, L"Select object: 1,1\nLayer \"A\" frozen.\nSelect object: \n\nEmpty above\nend\n");
    shown.clear();
    quiet = true;
    console.message(L"silent");
    console.prompt(L"silent");
    console.failure(L"loud", L"");
    EXPECT_EQ(shown, L"loud\n");
    EXPECT_EQ(console.failures(), 1U);
}

}  // namespace
}  // namespace korvex
