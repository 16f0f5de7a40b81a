// The languages of the resource library say the same things.
#include "resources/string_numbers.h"
#include "sdk/hxresource.h"

#include <QString>
#include <QStringList>

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <map>

namespace {

using Strings = std::map<std::uint32_t, QString>;

struct CloseLibrary {
    void operator()(void* library) const { dlclose(library); }
};

class ResourceStrings : public ::testing::Test {
protected:
    void SetUp() override {
        m_library.reset(dlopen(KORVEX_BINARY_DIR "/module/KvLayerManagerRes.dll", RTLD_NOW | RTLD_LOCAL));
        ASSERT_TRUE(m_library) << dlerror();
        m_getTable = reinterpret_cast<HxResourceGetTable>(dlsym(m_library.get(), "hxresGetTable"));
        ASSERT_TRUE(m_getTable);
        english = strings(L"");
        german = strings(L"de");
    }
    Strings strings(const wchar_t* language) const {
        Strings all;
        if (const HxResourceTable* const table = m_getTable(language)) {
            for (std::size_t i = 0; i < table->count; ++i) {
                all[table->strings[i].id] = QString::fromWCharArray(table->strings[i].text);
            }
        }
        return all;
    }
    HxResourceGetTable table() const { return m_getTable; }

    Strings english, german;

private:
    std::unique_ptr<void, CloseLibrary> m_library;
    HxResourceGetTable m_getTable = nullptr;
};

QStringList placeholders(const QString& text) {
    QStringList found;
    for (int at = text.indexOf('%'); at >= 0; at = text.indexOf('%', at + 1)) {
        found << text.mid(at, 3);
    }
    return found;
}

QStringList localKeywords(const QString& list) { return list.section(" _ ", 0, 0).split(' '); }
QStringList globalKeywords(const QString& list) { return list.section(" _ ", -1, -1).split(' '); }

/// The words between the last "[" and "]".
QStringList offered(const QString& prompt) {
    const int open = prompt.lastIndexOf('[');
    return prompt.mid(open + 1, prompt.indexOf(']', open) - open - 1).split('/');
}

/// The leading run of capitals of a keyword, wherever it begins.
QString shortForm(const QString& keyword) {
    QString letters;
    for (const QChar c : keyword) {
        if (c.isUpper()) {
            letters += c;
        } else if (!letters.isEmpty()) {
            break;
        }
    }
    return letters;
}

struct Question {
    std::uint32_t prompt, keywords;
    const char* global;  ///< the keywords that the code compares with
};
constexpr Question kQuestions[] = {
    {kStrPickPrompt, kStrPickKeywords, "Settings Undo eXit"},
    {kStrSettingsPrompt, kStrSettingsKeywords, "Viewports Block"},
    {kStrNestingPromptNo, kStrNestingKeywords, "Block Entity No"},
    {kStrNestingPromptBlock, kStrNestingKeywords, "Block Entity No"},
    {kStrNestingPromptEntity, kStrNestingKeywords, "Block Entity No"},
    {kStrViewportPrompt, kStrViewportKeywords, "Freeze Vpfreeze"},
    {kStrFreezeCurrentQuestion, kStrFreezeCurrentKeywords, "Yes No"},
};

TEST_F(ResourceStrings, LanguagesAreFoundByTheirNames) {
    EXPECT_GT(english.size(), 30U);
    EXPECT_EQ(strings(L"en"), english);
    EXPECT_EQ(strings(L"de_AT"), german);
    EXPECT_NE(german, english);
    EXPECT_EQ(table()(L"fr"), nullptr);
    EXPECT_EQ(table()(L"deutsch"), nullptr);
}

TEST_F(ResourceStrings, BothHaveTheSameNumbersAndPlaceholders) {
    ASSERT_EQ(english.size(), german.size());
    for (const auto& [id, text] : english) {
        ASSERT_TRUE(german.count(id)) << id;
        EXPECT_FALSE(text.isEmpty() || german[id].isEmpty()) << id;
        EXPECT_EQ(placeholders(german[id]), placeholders(text)) << id;
        for (const QString& placeholder : placeholders(text)) {
            const bool isNumbered = placeholder.size() > 1 && placeholder[1].isDigit();
            EXPECT_TRUE(placeholder == "%ls" || placeholder == "%d" || isNumbered) << id;
        }
        EXPECT_EQ(german[id].startsWith('\n'), text.startsWith('\n')) << id;
    }
}

TEST_F(ResourceStrings, PromptsOfferTheirKeywordsAndAllHaveTheGlobalOnes) {
    for (const Strings* const strings : {&english, &german}) {
        for (const Question& question : kQuestions) {
            const QString list = strings->at(question.keywords);
            const QStringList local = localKeywords(list);
            EXPECT_EQ(globalKeywords(list), QString(question.global).split(' ')) << question.keywords;
            EXPECT_EQ(offered(strings->at(question.prompt)), local) << question.prompt;
            QStringList forms;
            for (const QString& keyword : local) {
                forms << shortForm(keyword);
            }
            EXPECT_FALSE(forms.contains("")) << question.keywords;
            EXPECT_EQ(forms.removeDuplicates(), 0) << question.keywords;
        }
    }
}

/// What the code says where a library lacks the text.
TEST_F(ResourceStrings, SayWhatTheTextsThatStandInForThemSay) {
    EXPECT_EQ(english.at(kStrExpectsPoint), "Expects a point or Settings");
    EXPECT_EQ(english.at(kStrInvalidKeyword), "\nInvalid option keyword.");
    EXPECT_EQ(english.at(kStrViewportPrompt), "\nIn paper space viewport use [Freeze/Vpfreeze] <%ls>:");
    EXPECT_EQ(english.at(kStrNothingToUndo), "\nEverything has been undone.");
}

TEST_F(ResourceStrings, DefaultsThatPromptsShowAreKeywords) {
    for (const Strings* const strings : {&english, &german}) {
        const QStringList viewport = localKeywords(strings->at(kStrViewportKeywords));
        EXPECT_EQ(strings->at(kStrWordFreeze), viewport[0]);
        EXPECT_EQ(strings->at(kStrWordVpfreeze), viewport[1]);
        const QStringList nesting = localKeywords(strings->at(kStrNestingKeywords));
        EXPECT_TRUE(strings->at(kStrNestingPromptBlock).contains("<" + nesting[0] + ">"));
        EXPECT_TRUE(strings->at(kStrNestingPromptEntity).contains("<" + nesting[1] + ">"));
        EXPECT_TRUE(strings->at(kStrNestingPromptNo).contains("<" + nesting[2] + ">"));
    }
}

}  // namespace
