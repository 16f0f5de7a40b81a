// Keys and values of the registry hive.
#include "tests/base/profile_fixture.h"

namespace korvex::test {
namespace {

class RegistryTest : public ProfileTest {};

std::vector<std::wstring> names(HxRegKey key,
                                HxRegStatus (*step)(HxRegKey, std::uint32_t, wchar_t*, std::uint32_t*)) {
    std::vector<std::wstring> all;
    wchar_t buffer[100];
    for (std::uint32_t size = 100; step(key, static_cast<std::uint32_t>(all.size()), buffer, &size) == kRegOk;
         size = 100) {
        all.emplace_back(buffer, size);
    }
    return all;
}

TEST_F(RegistryTest, ValuesComeBackAsTheyWereWrittenInAnyScript) {
    const std::wstring text = L"B\u00FCro \u5C64 \U0001F600 \u0416";
    {
        const Key key(L"Software\\Ebenen \u00C4\\\u5C64");
        ASSERT_EQ(key.status, kRegOk);
        EXPECT_TRUE(key.created);
        EXPECT_EQ(key.set(L"Breite \u00D6", text), kRegOk);
        EXPECT_EQ(key.set(nullptr, L"unnamed"), kRegOk);
        EXPECT_EQ(hxRegSetValue(key, L"empty", REG_BINARY, nullptr, 0), kRegOk);
        EXPECT_EQ(hxRegSetValue(key, L"odd", 77, "\0\xFF\x80", 3), kRegOk);
    }
    closeSettingsStore();  // as the next run of the program
    const Key key(L"SOFTWARE\\ebenen \u00E4\\\u5C64");
    EXPECT_FALSE(key.created);
    EXPECT_EQ(key.text(L"bREITE \u00F6"), text);
    EXPECT_EQ(key.text(L""), L"unnamed");
    std::uint32_t type = 0;
    std::uint32_t size = 8;
    char bytes[8] = {};
    EXPECT_EQ(hxRegQueryValue(key, L"ODD", &type, bytes, &size), kRegOk);
    EXPECT_EQ(type, 77U);
    EXPECT_EQ(std::string(bytes, size), std::string("\0\xFF\x80", 3));
    size = 8;
    EXPECT_EQ(hxRegQueryValue(key, L"empty", &type, bytes, &size), kRegOk);
    EXPECT_EQ(size, 0U);
}

TEST_F(RegistryTest, NamesKeepTheirFirstCaseAndAreListedInOrder) {
    const Key key(L"Settings");
    for (const wchar_t* name : {L"Zebra", L"alpha", L"Mid", L"ZEBRA"}) {
        key.set(name, name);
        Key(std::wstring(L"settings\\") + name);
    }
    const std::vector<std::wstring> expected = {L"alpha", L"Mid", L"Zebra"};
    EXPECT_EQ(names(key, hxRegEnumValue), expected);
    EXPECT_EQ(names(key, hxRegEnumKey), expected);
    EXPECT_EQ(key.text(L"zebra"), L"ZEBRA");
    wchar_t buffer[3] = {};
    std::uint32_t size = 3;
    EXPECT_EQ(hxRegEnumKey(key, 0, buffer, &size), kRegMoreData);
    EXPECT_STREQ(buffer, L"al");
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(hxRegEnumKey(key, 3, buffer, &size), kRegNoMoreItems);
}

TEST_F(RegistryTest, ASmallBufferGetsTheLeadingBytes) {
    const Key key(L"Settings");
    key.set(L"text", L"abcdef");
    wchar_t buffer[3] = {};
    std::uint32_t size = 2 * sizeof(wchar_t);
    EXPECT_EQ(hxRegQueryValue(key, L"text", nullptr, buffer, &size), kRegMoreData);
    EXPECT_STREQ(buffer, L"ab");
    EXPECT_EQ(size, 6 * sizeof(wchar_t));
    size = 0;
    EXPECT_EQ(hxRegQueryValue(key, L"text", nullptr, nullptr, &size), kRegOk);
    EXPECT_EQ(size, 6 * sizeof(wchar_t));
    EXPECT_EQ(hxRegQueryValue(key, L"text", nullptr, buffer, nullptr), kRegInvalidInput);
}

TEST_F(RegistryTest, AKeyAllowsWhatItWasOpenedForAndNoMore) {
    Key(L"Settings").set(L"a", L"1");
    const Key reader(L"Settings", KEY_READ);
    const Key writer(L"Settings", KEY_WRITE);
    EXPECT_EQ(reader.text(L"a"), L"1");
    EXPECT_EQ(reader.set(L"a", L"2"), kRegAccessDenied);
    EXPECT_EQ(hxRegDeleteValue(reader, L"a"), kRegAccessDenied);
    EXPECT_EQ(writer.text(L"a"), L"<5>");
    HxRegKey below = nullptr;
    EXPECT_EQ(hxRegCreateKey(reader, L"below", nullptr, KEY_READ, below), kRegAccessDenied);
    EXPECT_EQ(below, nullptr);
    bool created = false;
    ASSERT_EQ(hxRegCreateKey(writer, L"below", L"REG_SZ", KEY_READ, below, &created), kRegOk);
    EXPECT_TRUE(created);
    wchar_t text[10];
    std::uint32_t size = 10;
    EXPECT_EQ(hxRegQueryClass(below, text, &size), kRegOk);
    EXPECT_STREQ(text, L"REG_SZ");
    hxRegCloseKey(below);
    ASSERT_EQ(hxRegCreateKey(reader, L"BELOW", nullptr, KEY_READ, below, &created), kRegOk);
    EXPECT_FALSE(created);
    hxRegCloseKey(below);
}

TEST_F(RegistryTest, DeletingLeavesNothingBehind) {
    const Key key(L"A\\B");
    key.set(L"v", L"old");
    EXPECT_EQ(hxRegDeleteKey(HKEY_CURRENT_USER, L"A"), kRegAccessDenied);
    EXPECT_EQ(hxRegDeleteValue(key, L"missing"), kRegNotFound);
    EXPECT_EQ(hxRegDeleteKey(HKEY_CURRENT_USER, L"a\\b"), kRegOk);
    EXPECT_EQ(key.text(L"v"), L"<1018>");
    EXPECT_EQ(key.set(L"v", L"new"), kRegKeyDeleted);
    HxRegKey again = nullptr;
    EXPECT_EQ(hxRegOpenKey(key, L"", KEY_READ, again), kRegKeyDeleted);
    EXPECT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, L"A\\B", KEY_READ, again), kRegNotFound);
    const Key anew(L"A\\B");
    EXPECT_EQ(anew.text(L"v"), L"<2>");
    EXPECT_EQ(key.text(L"v"), L"<1018>");  // the old handle does not mean the new key
}

TEST_F(RegistryTest, BadInputIsRefused) {
    HxRegKey key = nullptr;
    for (const wchar_t* path : {L"\\A", L"A\\", L"A\\\\B", L"\\"}) {
        EXPECT_EQ(hxRegCreateKey(HKEY_CURRENT_USER, path, nullptr, KEY_ALL_ACCESS, key), kRegInvalidInput);
        EXPECT_EQ(key, nullptr);
    }
    EXPECT_EQ(hxRegOpenKey(static_cast<HxRegRoot>(9), L"A", KEY_READ, key), kRegInvalidHandle);
    EXPECT_EQ(hxRegDeleteKey(HKEY_CURRENT_USER, L""), kRegInvalidInput);
    EXPECT_EQ(hxRegCloseKey(nullptr), kRegOk);
    ASSERT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, nullptr, KEY_ALL_ACCESS, key), kRegOk);
    EXPECT_EQ(hxRegSetValue(key, L"v", REG_SZ, nullptr, 4), kRegInvalidInput);
    EXPECT_EQ(hxRegCloseKey(key), kRegOk);
    EXPECT_EQ(hxRegCloseKey(key), kRegInvalidHandle);
    EXPECT_EQ(hxRegQueryValue(key, L"v", nullptr, nullptr, nullptr), kRegInvalidHandle);
}

}  // namespace
}  // namespace korvex::test
