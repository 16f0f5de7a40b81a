// Typed settings, variants and profiles.
#include "sdk/hxconfig.h"
#include "tests/base/profile_fixture.h"

#include <cmath>
#include <limits>
#include <new>

namespace {
bool g_isMemoryShort = false;
}

// Stands before the library's own, for texts that find no room.
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return g_isMemoryShort ? nullptr : ::operator new[](size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

namespace korvex::test {
namespace {

class ConfigurationTest : public ProfileTest {
protected:
    static int read(const wchar_t* path, VrexVariant& value, int category = kHxConfigUser) {
        return vrexConfig()->getValue(category, path, value);
    }
    static int write(const wchar_t* path, const VrexVariant& value) {
        return vrexConfig()->setValue(kHxConfigUser, path, value);
    }
};

TEST_F(ConfigurationTest, EveryTypeComesBackWithItsTypeAndValue) {
    const std::vector<VrexVariant> values = {
        VrexVariant(std::int16_t{-5}),
        VrexVariant(std::numeric_limits<std::int32_t>::min()),
        VrexVariant(std::numeric_limits<std::int64_t>::min()),
        VrexVariant(0.1),
        VrexVariant(3.0),  // stays a double
        VrexVariant(std::numeric_limits<double>::infinity()),
        VrexVariant(true),
        VrexVariant(L"\u00C4nderung \u5C64 \U0001F600"),
        VrexVariant(L""),
        VrexVariant(L"42"),  // stays a text
    };
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(write((L"Types\\" + std::to_wstring(i)).c_str(), values[i]), Hx::eOk);
    }
    EXPECT_EQ(write(L"Types\\zero", VrexVariant(-0.0)), Hx::eOk);
    EXPECT_EQ(write(L"Types\\nan", VrexVariant(std::nan(""))), Hx::eOk);
    closeSettingsStore();
    VrexVariant read;
    for (std::size_t i = 0; i < values.size(); ++i) {
        ASSERT_EQ(ConfigurationTest::read((L"Types/" + std::to_wstring(i)).c_str(), read), Hx::eOk);
        EXPECT_EQ(read, values[i]) << i;
    }
    double real = 1;
    ASSERT_EQ(ConfigurationTest::read(L"Types\\zero", read), Hx::eOk);
    EXPECT_TRUE(read.getDouble(real) && real == 0 && std::signbit(real));
    ASSERT_EQ(ConfigurationTest::read(L"Types\\nan", read), Hx::eOk);
    EXPECT_TRUE(read.getDouble(real) && std::isnan(real));
}

TEST_F(ConfigurationTest, PathsMeetWhateverTheirCaseAndSeparator) {
    EXPECT_EQ(vrexConfig()->addValue(kHxConfigUser, L"LayerDialog/Grid", L"Breite\u00C4", VrexVariant(7)),
              Hx::eOk);
    VrexVariant value;
    EXPECT_EQ(read(L"LAYERDIALOG\\grid\\bREITE\u00E4", value), Hx::eOk);
    EXPECT_EQ(value.asInt32(), 7);
    EXPECT_EQ(read(L"LayerDialog/Grid/Breite\u00C4", value, 3), Hx::eKeyNotFound);
    EXPECT_EQ(write(L"layerdialog/grid/breite\u00E4", VrexVariant(L"wide")), Hx::eOk);
    EXPECT_EQ(read(L"LayerDialog/Grid/Breite\u00C4", value), Hx::eOk);
    EXPECT_STREQ(value.asString(), L"wide");
    EXPECT_EQ(vrexConfig()->removeValue(kHxConfigUser, L"LayerDialog\\Grid\\Breite\u00C4"), Hx::eOk);
    EXPECT_EQ(vrexConfig()->removeValue(kHxConfigUser, L"LayerDialog\\Grid\\Breite\u00C4"), Hx::eKeyNotFound);
    EXPECT_EQ(read(L"LayerDialog/Grid/Breite\u00C4", value), Hx::eKeyNotFound);
    EXPECT_STREQ(value.asString(), L"wide");  // untouched by the failure
}

TEST_F(ConfigurationTest, BadPathsAndEmptyValuesAreRefused) {
    VrexVariant value;
    for (const wchar_t* path : {L"", L"/", L"A//B", L"A/", L"\\A"}) {
        EXPECT_EQ(write(path, VrexVariant(1)), Hx::eInvalidInput) << toUtf8(path);
        EXPECT_EQ(read(path, value), Hx::eInvalidInput) << toUtf8(path);
    }
    EXPECT_EQ(read(nullptr, value), Hx::eInvalidInput);
    EXPECT_EQ(vrexConfig()->addValue(kHxConfigUser, L"A", nullptr, VrexVariant(1)), Hx::eInvalidInput);
    EXPECT_EQ(write(L"A", VrexVariant()), Hx::eInvalidInput);
}

TEST_F(ConfigurationTest, EachProfileHasItsOwnSettings) {
    HxDbHostApplicationServices& services = *hxdbHostApplicationServices();
    const std::wstring first = services.currentProfile();
    EXPECT_FALSE(first.empty());
    const std::wstring profiles = services.getRegistryProductRootKey() + std::wstring(L"\\Profiles");
    HxRegKey key = nullptr;
    EXPECT_EQ(hxRegOpenKey(HKEY_CURRENT_USER, (profiles + L"\\" + first).c_str(), KEY_READ, key), kRegOk);
    hxRegCloseKey(key);

    write(L"A", VrexVariant(1));
    const std::wstring longName(300, L'\u5C64');
    EXPECT_EQ(services.setCurrentProfile(longName.c_str()), Hx::eOk);
    EXPECT_EQ(services.currentProfile(), longName);
    VrexVariant value;
    EXPECT_EQ(read(L"A", value), Hx::eKeyNotFound);
    write(L"A", VrexVariant(2));
    EXPECT_EQ(services.setCurrentProfile(first.c_str()), Hx::eOk);
    EXPECT_EQ(read(L"A", value), Hx::eOk);
    EXPECT_EQ(value.asInt32(), 1);
    for (const wchar_t* name : {L"", L"a\\b", L"a/b"}) {
        EXPECT_EQ(services.setCurrentProfile(name), Hx::eInvalidInput);
    }

    hxRegDeleteValue(Key(profiles), nullptr);
    EXPECT_EQ(services.currentProfile(), L"");
    EXPECT_EQ(read(L"A", value), Hx::eFileAccessErr);
    EXPECT_TRUE(wasLogged(L"no current profile"));
}

TEST(VariantTest, CopiesOwnTheirText) {
    VrexVariant a(L"first");
    const wchar_t* text = nullptr;
    ASSERT_TRUE(a.getString(text));
    a.setString(text + 2);  // from inside itself
    EXPECT_STREQ(a.asString(), L"rst");
    VrexVariant b(a);
    b = *&b;
    a.setInt32(4);
    EXPECT_STREQ(b.asString(), L"rst");
    VrexVariant c(std::move(b));
    a = std::move(c);
    EXPECT_STREQ(a.asString(), L"rst");
    EXPECT_EQ(b.type(), VrexVariant::kEmpty);
    EXPECT_EQ(c.type(), VrexVariant::kEmpty);
    std::int32_t number = 9;
    EXPECT_FALSE(a.getInt32(number));
    EXPECT_EQ(number, 9);
    EXPECT_EQ(a.asInt32(), 0);
    EXPECT_NE(VrexVariant(1), VrexVariant(std::int64_t{1}));
}

TEST_F(ConfigurationTest, ATextWithoutRoomIsAnExceptionAndChangesNothing) {
    VrexVariant variant(L"before");
    const VrexVariant other(L"after");
    g_isMemoryShort = true;
    Hx::ErrorStatus status = Hx::eOk;
    try {
        variant = other;
    } catch (const HxErrorStatusException& error) {
        status = error.status();
    }
    g_isMemoryShort = false;
    EXPECT_EQ(status, Hx::eOutOfMemory);
    EXPECT_STREQ(variant.asString(), L"before");
    EXPECT_TRUE(wasLogged(L"out of memory"));
}

}  // namespace
}  // namespace korvex::test
