// Strings by number and language, and the counting of resource libraries.
#include "host/base/language.h"
#include "tests/base/library_fixture.h"

namespace korvex::test {
namespace {

using Strings = std::vector<std::wstring>;

class ResourceLibraryTest : public LibraryTest {
protected:
    static std::wstring string(HxModuleHandle handle, std::uint32_t id) {
        wchar_t buffer[100] = L"?";
        const int length = hxLoadString(handle, id, buffer, 100);
        EXPECT_EQ(static_cast<std::size_t>(length), std::wcslen(buffer));
        return buffer;
    }
    /// Strings 1 to 4 as a user of that locale sees them.
    static Strings stringsIn(const char* variable, const char* locale) {
        qputenv(variable, locale);
        const HxModuleHandle handle = LoadResourceDll(L"TrialRes.dll");
        Strings all;
        for (std::uint32_t id = 1; id <= 4; ++id) {
            all.push_back(string(handle, id));
        }
        EXPECT_TRUE(hxFreeResourceDll(handle));
        qunsetenv(variable);
        return all;
    }
};

TEST_F(ResourceLibraryTest, EachStringComesInTheNearestLanguage) {
    const Strings english = {L"layer", L"January", L"only English", L""};
    const Strings german = {L"Layer (gefr\u00FCllt)", L"Januar", L"only English", L"nur deutsch"};
    const Strings austrian = {german[0], L"J\u00E4nner", german[2], german[3]};
    EXPECT_EQ(stringsIn("LANG", "C.UTF-8"), english);
    EXPECT_EQ(stringsIn("LANG", "de_DE.UTF-8"), german);
    EXPECT_EQ(stringsIn("LC_ALL", "de_AT.UTF-8@euro"), austrian);
    EXPECT_EQ(stringsIn("LC_MESSAGES", "fr_FR"), english);
    EXPECT_EQ(stringsIn("LANGUAGE", "fr:de_AT"), austrian);
    EXPECT_EQ(stringsIn("LANGUAGE", "en_GB:de"), english) << "English comes first and is there";
    qputenv("LC_ALL", "C");
    EXPECT_EQ(stringsIn("LANGUAGE", "de"), english) << "the plain locale is a wish, too";
    qputenv("LC_ALL", "en_US.UTF-8");
    EXPECT_EQ(stringsIn("LANG", "de_DE"), english);
    qunsetenv("LC_ALL");
    EXPECT_FALSE(isInMemory("TrialRes.dll"));
}

TEST_F(ResourceLibraryTest, TheHandleIsCountedAndForgottenAtTheEnd) {
    const HxModuleHandle handle = LoadResourceDll(L"TrialRes.dll");
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(LoadResourceDll(toWide(trial("TrialRes.dll")).c_str()), handle);
    {
        const HxResourceOverride current(handle);
        EXPECT_EQ(string(nullptr, 1), L"layer");
        const HxResourceOverride none(nullptr);
        EXPECT_EQ(hxGetResourceHandle(), handle);
    }
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
    hxSetResourceHandle(handle);
    EXPECT_TRUE(hxFreeResourceDll(handle));
    EXPECT_EQ(hxGetResourceHandle(), handle);
    EXPECT_TRUE(hxFreeResourceDll(handle));
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
    EXPECT_FALSE(hxFreeResourceDll(handle));
    EXPECT_EQ(string(handle, 1), L"");
    hxSetResourceHandle(handle);
    EXPECT_EQ(hxGetResourceHandle(), nullptr);
    EXPECT_FALSE(hxDisableThreadLibraryCalls(handle));
    EXPECT_FALSE(isInMemory("TrialRes.dll"));
}

TEST_F(ResourceLibraryTest, TextsAreCutToTheirBuffers) {
    const HxModuleHandle handle = LoadResourceDll(L"TrialRes.dll");
    wchar_t buffer[4] = L"???";
    EXPECT_EQ(hxLoadString(handle, 1, buffer, 4), 3);
    EXPECT_STREQ(buffer, L"lay");
    EXPECT_EQ(hxLoadString(handle, 1, buffer, 1), 0);
    EXPECT_STREQ(buffer, L"");
    EXPECT_EQ(hxLoadString(handle, 1, nullptr, 4), 0);
    EXPECT_EQ(hxLoadString(handle, 1, buffer, -1), 0);
    EXPECT_EQ(string(handle, 5), L"") << "between two numbers";
    EXPECT_EQ(string(handle, 901), L"") << "behind the last one";
    const std::wstring path = toWide(trial("TrialRes.dll"));
    EXPECT_EQ(hxModuleFileName(handle, buffer, 4), 4U);
    EXPECT_EQ(buffer, path.substr(0, 3));
    std::wstring room(path.size() + 1, L'?');
    EXPECT_EQ(hxModuleFileName(handle, &room[0], static_cast<std::uint32_t>(room.size())), path.size());
    EXPECT_EQ(hxModuleFileName(handle, &room[0], static_cast<std::uint32_t>(path.size())), path.size());
    EXPECT_EQ(room[path.size() - 1], L'\0') << "cut, and closed all the same";
    EXPECT_GT(hxModuleFileName(nullptr, &room[0], 10), 0U);
    hxFreeResourceDll(handle);
    EXPECT_EQ(hxModuleFileName(handle, buffer, 4), 0U);
}

TEST_F(ResourceLibraryTest, WhatIsNoResourceLibraryIsRefusedWithAReason) {
    EXPECT_EQ(LoadResourceDll(L"UnsortedRes.dll"), nullptr);
    EXPECT_TRUE(wasLogged(L"order of their numbers"));
    EXPECT_EQ(LoadResourceDll(L"NoDefaultRes.dll"), nullptr);
    EXPECT_TRUE(wasLogged(L"default language"));
    EXPECT_EQ(LoadResourceDll(L"Trial.hrx"), nullptr);
    EXPECT_TRUE(wasLogged(L"hxresGetTable"));
    EXPECT_EQ(LoadResourceDll(L"MissingRes.dll"), nullptr);
    EXPECT_TRUE(wasLogged(L"no such file"));
    EXPECT_EQ(LoadResourceDll(nullptr), nullptr);
    EXPECT_FALSE(isInMemory("UnsortedRes.dll"));
}

TEST_F(ResourceLibraryTest, AModuleFindsTheLibraryBesideItself) {
    qunsetenv("KORVEX_MODULE_PATH");
    EXPECT_EQ(LoadResourceDll(L"TrialRes.dll"), nullptr) << "this program has none beside it";
    ASSERT_EQ(linker().loadModule(toWide(trial("Trial.hrx")).c_str()), Hx::eOk);
    EXPECT_TRUE(isInMemory("TrialRes.dll"));
}

}  // namespace
}  // namespace korvex::test
