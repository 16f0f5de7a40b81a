// What the command line makes of prompts.
#include "host/ui/workbench/prompt_text.h"

#include <gtest/gtest.h>

namespace korvex {
namespace {

InputRequest request(const wchar_t* prompt, const wchar_t* keywords) {
    InputRequest out;
    out.wants = InputRequest::Wants::keyword;
    out.prompt = prompt;
    out.keywords = keywords;
    return out;
}

QStringList clickable(const InputRequest& request) {
    QStringList words;
    for (const PromptPart& part : promptParts(request)) {
        if (part.isKeyword) {
            words << part.text;
        }
    }
    return words;
}

QString whole(const InputRequest& request) {
    QString text;
    for (const PromptPart& part : promptParts(request)) {
        text += part.text;
    }
    return text;
}

TEST(PromptText, MakesKeywordsInBracketsClickable) {
    const InputRequest zoom = request(L"\nSpecify corner, or\n[All/Window] <Extents>:", L"All Window");
    EXPECT_EQ(clickable(zoom), QStringList({"All", "Window"}));
    EXPECT_EQ(whole(zoom), "Specify corner, or [All/Window] <Extents>:");
}

TEST(PromptText, LeavesWordsThatAreNoKeywords) {
    EXPECT_EQ(clickable(request(L"Pick [Settings/Other]:", L"Settings")), QStringList("Settings"));
    EXPECT_TRUE(clickable(request(L"Pick [Settings/Other]:", L"")).isEmpty());
    EXPECT_EQ(clickable(request(L"Replace [Ja/Nein] or [Alle]?", L"Ja Nein Alle _ Yes No All")),
              QStringList({"Ja", "Nein", "Alle"}));
}

TEST(PromptText, ShowsBracketsThatDoNotClose) {
    for (const wchar_t* text : {L"a [b/c", L"a ] b [", L"[]", L"a [b] c [d", L"["}) {
        const InputRequest odd = request(text, L"b c d");
        EXPECT_EQ(whole(odd).toStdWString(), text);
    }
}

TEST(PromptText, LinksLeadBackToTheKeyword) {
    const QString html = promptHtml(request(L"A<b> [?/Straße]:", L"? Straße"));
    EXPECT_TRUE(html.startsWith("A&lt;b&gt; [<a href=\"keyword:")) << html.toStdString();
    const QString link = html.section("href=\"", 2).section('"', 0, 0);
    EXPECT_EQ(linkedKeyword(link), QString::fromUtf8("Straße"));
    EXPECT_EQ(linkedKeyword("http://x"), QString());
}

}  // namespace
}  // namespace korvex
