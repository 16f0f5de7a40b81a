// Run-time classes, dictionaries of objects, services, and the host's log and texts.
#include "host/base/log.h"
#include "host/base/text.h"
#include "sdk/hxrx.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace korvex::test {
namespace {

TEST(RxTest, TheCheckedCastFollowsTheClasses) {
    HxRxDictionary* const registry = hxrxSysRegistry();
    HxRxObject* const services = registry->at(L"servicedictionary");
    ASSERT_NE(services, nullptr);
    EXPECT_EQ(HxRxServiceDictionary::cast(services), services);
    EXPECT_EQ(HxRxDictionary::cast(services), services);
    EXPECT_EQ(HxRxDynamicLinker::cast(services), nullptr);
    EXPECT_EQ(HxRxService::cast(static_cast<HxRxObject*>(nullptr)), nullptr);
    EXPECT_NE(HxRxDynamicLinker::cast(registry->at(L"DynamicLinker")), nullptr);
    EXPECT_STREQ(services->isA()->name(), L"HxRxServiceDictionary");
    EXPECT_EQ(HxRxObject::desc()->myParent(), nullptr);
}

TEST(RxTest, ADictionaryHandsObjectsOut) {
    HxRxDictionary dictionary;
    HxRxService a;
    HxRxService b;
    EXPECT_EQ(dictionary.atPut(L"\u00C4NDERN", &a), nullptr);
    EXPECT_EQ(dictionary.at(L"\u00E4ndern"), &a);
    EXPECT_EQ(dictionary.atPut(L"\u00E4Ndern", &b), &a);
    EXPECT_EQ(dictionary.numEntries(), 1);
    EXPECT_EQ(dictionary.atPut(L"", &a), nullptr);
    EXPECT_EQ(dictionary.atPut(nullptr, &a), nullptr);
    EXPECT_EQ(dictionary.atPut(L"x", nullptr), nullptr);
    EXPECT_EQ(dictionary.numEntries(), 1);
    EXPECT_EQ(dictionary.remove(L"\u00C4ndern"), &b);
    EXPECT_EQ(dictionary.remove(L"\u00C4ndern"), nullptr);
    EXPECT_FALSE(dictionary.has(nullptr));
}

TEST(RxTest, AServiceIsThereUntilItsEntryIsRemoved) {
    EXPECT_FALSE(hxrxServiceIsRegistered(L"TestService"));
    HxRxService* const service = hxrxRegisterService(L"TestService");
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(hxrxRegisterService(L"TESTSERVICE"), service);
    EXPECT_TRUE(hxrxServiceIsRegistered(L"testservice"));
    EXPECT_EQ(hxrxRegisterService(L""), nullptr);
    EXPECT_EQ(hxrxRegisterService(nullptr), nullptr);
    auto* const services = HxRxServiceDictionary::cast(hxrxSysRegistry()->at(L"ServiceDictionary"));
    const std::unique_ptr<HxRxObject> removed(services->remove(L"TestService"));
    EXPECT_EQ(removed.get(), service);
    EXPECT_FALSE(hxrxServiceIsRegistered(L"TestService"));
}

TEST(TextTest, WhatIsNoCharacterIsReplacedAndTheRestComesBack) {
    const std::wstring text = L"a\u00E4\u5C64\U0001F600";
    EXPECT_EQ(fromUtf8(toUtf8(text)), text);
    EXPECT_EQ(toWide(toQString(text)), text);
    const std::wstring broken = {L'a', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x7FFFFFFF), L'b'};
    EXPECT_EQ(fromUtf8(toUtf8(broken)), L"a\uFFFD\uFFFDb");
    EXPECT_EQ(fromUtf8("a\xFFz"), L"a\uFFFDz");
    EXPECT_EQ(foldCase(L"\u00C4\u0416\u03A3X"), foldCase(L"\u00E4\u0436\u03C3x"));
}

TEST(LogTest, MessagesWaitForTheirHookAndTheOldestGoFirst) {
    setLogHook([](Severity, const std::wstring&) {});
    setLogHook({});
    for (int i = 0; i < 130; ++i) {
        log(Severity::Note, std::to_wstring(i));
    }
    std::vector<std::wstring> seen;
    setLogHook([&seen](Severity, const std::wstring& message) { seen.push_back(message); });
    log(Severity::Error, L"last");
    setLogHook({});
    ASSERT_EQ(seen.size(), 101U);
    EXPECT_EQ(seen.front(), L"30");
    EXPECT_EQ(seen.back(), L"last");
}

TEST(ErrorTextTest, EveryStatusHasItsOwnText) {
    for (const Hx::ErrorStatus status : {Hx::eOk, Hx::eWasOpenForNotify, Hx::eXrefCircular}) {
        EXPECT_STRNE(Hx::errorText(status), L"unknown status");
    }
    EXPECT_STREQ(Hx::errorText(static_cast<Hx::ErrorStatus>(7777)), L"unknown status");
    EXPECT_EQ(std::wstring(Hx::errorText(Hx::eRefused)).find(L"eRefused: "), 0U);
}

}  // namespace
}  // namespace korvex::test
