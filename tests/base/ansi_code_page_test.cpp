// The code page that desktops of a language call "ANSI".
#include "sdk/hxtext.h"

#include <QByteArray>

#include <gtest/gtest.h>
#include <map>

namespace {

/// The locale variables as they were before, put back at the end.
class AnsiCodePage : public ::testing::Test {
protected:
    AnsiCodePage() {
        for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG", "KORVEX_ANSI_CODEPAGE"}) {
            if (qEnvironmentVariableIsSet(name)) {
                m_before[name] = qgetenv(name);
            }
            qunsetenv(name);
        }
    }
    ~AnsiCodePage() override {
        for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG", "KORVEX_ANSI_CODEPAGE"}) {
            const auto found = m_before.find(name);
            found == m_before.end() ? qunsetenv(name) : qputenv(name, found->second);
        }
    }
    static int pageIn(const char* locale) {
        qputenv("LANG", locale);
        return hxutAnsiCodePage();
    }

private:
    std::map<std::string, QByteArray> m_before;
};

}  // namespace

TEST_F(AnsiCodePage, FollowsTheLanguageAndItsCountry) {
    EXPECT_EQ(hxutAnsiCodePage(), 1252);
    const std::pair<const char*, int> pages[] = {
        {"de_DE.UTF-8", 1252}, {"C", 1252},     {"C.UTF-8", 1252}, {"pl_PL", 1250}, {"ru_RU.KOI8-R", 1251},
        {"el", 1253},          {"tr_TR", 1254}, {"he_IL", 1255},   {"ar_EG", 1256}, {"lt_LT.UTF-8", 1257},
        {"vi_VN", 1258},       {"th_TH", 874},  {"ja_JP", 932},    {"zh_CN", 936},  {"zh_TW.UTF-8@x", 950},
        {"zh", 936},           {"ko_KR", 949},  {"zhx_YY", 1252},  {"", 1252},
    };
    for (const auto& [locale, page] : pages) {
        EXPECT_EQ(pageIn(locale), page) << locale;
    }
}

TEST_F(AnsiCodePage, VariablesCountInTheirOrder) {
    qputenv("LANG", "ru_RU");
    qputenv("LC_CTYPE", "ja_JP");
    EXPECT_EQ(hxutAnsiCodePage(), 932);
    qputenv("LC_ALL", "de_DE");
    EXPECT_EQ(hxutAnsiCodePage(), 1252);
    qputenv("KORVEX_ANSI_CODEPAGE", "936");
    EXPECT_EQ(hxutAnsiCodePage(), 936);
    for (const char* wrong : {"", "none", "-5", "0"}) {
        qputenv("KORVEX_ANSI_CODEPAGE", wrong);
        EXPECT_EQ(hxutAnsiCodePage(), 1252) << wrong;
    }
}
