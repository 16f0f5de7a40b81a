// The SDK's input functions: what they accept, what they give, what they say to wrong input.
#include "tests/editor/editor_fixture.h"

#include "sdk/hxads.h"

namespace korvex::test {
namespace {

class InputFunctions : public EditorTest {
protected:
    /// Runs a function inside a command that gets `answers`.
    void inCommand(const std::wstring& answers, std::function<void()> body) {
        editor().commands().removeGroup(L"TEST");
        define(L"ASK", std::move(body));
        shown = run(L"ASK " + answers);
    }
    std::wstring shown;
    wchar_t text[64] = L"";
};

TEST_F(InputFunctions, KeywordsComeBackInGlobalForm) {
    inCommand(L"_Y j ? Ja \n", [&] {
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(hxedInitGet(0, L"Ja Nein _ Yes No"), RTNORM);
            EXPECT_EQ(hxedGetKword(L"\nSicher?", text), RTNORM);
            EXPECT_STREQ(text, L"Yes");
        }
        // "?" is wrong: it is told, and the next answer is taken.
        hxedInitGet(0, L"Ja Nein _ Yes No");
        EXPECT_EQ(hxedGetKword(L"\nSicher?", text), RTNORM);
        EXPECT_STREQ(text, L"Yes");
        hxedInitGet(0, L"Ja Nein _ Yes No");
        EXPECT_EQ(hxedGetKword(L"\nSicher?", text), RTNONE);
    });
    EXPECT_EQ(failures, Lines{L"\"?\" is not one of Ja/Nein."});
    EXPECT_EQ(hxedInitGet(0, L"Ja Nein _ Yes"), RTERROR);
}

TEST_F(InputFunctions, InitGetHoldsForOneCall) {
    inCommand(L"a b 7\n", [&] {
        int value = 0;
        hxedInitGet(RSG_OTHER, nullptr);
        EXPECT_EQ(hxedGetInt(L"n", &value), RTKWORD);
        EXPECT_EQ(hxedGetInput(text), RTNORM);
        EXPECT_STREQ(text, L"a");
        EXPECT_EQ(hxedGetInt(L"n", &value), RTNORM);
        EXPECT_EQ(value, 7);
        EXPECT_EQ(hxedGetInput(text), RTERROR);
    });
    EXPECT_EQ(failures, Lines{L"\"b\" is not a whole number."});
}

TEST_F(InputFunctions, BitsRefuseWhatTheyName) {
    inCommand(L" 0 -1 2 \n", [&] {
        double value = 0;
        hxedInitGet(RSG_NONULL | RSG_NOZERO | RSG_NONEG, L"Auto");
        EXPECT_EQ(hxedGetReal(L"n", &value), RTNORM);
        EXPECT_EQ(value, 2);
    });
    EXPECT_EQ(failures, (Lines{L"An answer is required: a number or one of Auto.",
                               L"The value must not be zero.", L"The value must not be negative."}));
}

TEST_F(InputFunctions, AmbiguousKeywordsAreAskedForAgain) {
    inCommand(L"col Color\n", [&] {
        hxedInitGet(0, L"Color COlorbook");
        EXPECT_EQ(hxedGetKword(L"?", text), RTNORM);
        EXPECT_STREQ(text, L"Color");
    });
    EXPECT_EQ(failures, Lines{L"\"col\" may mean Color or COlorbook."});
}

TEST_F(InputFunctions, PointsKeepTheLastOne) {
    inCommand(L"1,2 @1,1 @3<0 x Close\n", [&] {
        zds_point p = {0, 0, 0};
        const double base[3] = {100, 100, 0};
        EXPECT_EQ(hxedGetPoint(nullptr, L"p", p), RTNORM);
        EXPECT_EQ(hxedGetPoint(nullptr, L"p", p), RTNORM);
        EXPECT_EQ(p[0], 2);
        EXPECT_EQ(hxedGetPoint(base, L"p", p), RTNORM);
        EXPECT_EQ(p[0], 103);
        hxedInitGet(0, L"Close");
        EXPECT_EQ(hxedGetPoint(nullptr, L"p", p), RTKWORD);
        EXPECT_EQ(hxedGetInput(text), RTNORM);
        EXPECT_STREQ(text, L"Close");
    });
    EXPECT_EQ(failures, Lines{L"\"x\" is not a point (x,y) or one of Close."});
    EXPECT_EQ(variable(L"LASTPOINT"), L"103,100,0");
}

TEST_F(InputFunctions, TextsKeepTheirBlanksWordsDoNot) {
    inCommand(L"one two  three\nfour five\n", [&] {
        EXPECT_EQ(hxedGetString(false, L"w", text), RTNORM);
        EXPECT_STREQ(text, L"one");
        EXPECT_EQ(hxedGetString(true, L"t", text), RTNORM);
        EXPECT_STREQ(text, L"two  three");
        EXPECT_EQ(hxedGetString(true, L"t", text, 5), RTNORM);
        EXPECT_STREQ(text, L"four");
    });
}

TEST_F(InputFunctions, EverythingIsCancelledWhenInputIsOut) {
    define(L"ASK", [&] {
        zds_name name = {0, 0};
        zds_point p = {0, 0, 0};
        int i = 0;
        double r = 0;
        resbuf* chain = nullptr;
        EXPECT_EQ(hxedGetKword(L"a", text), RTCAN);
        EXPECT_EQ(hxedGetPoint(nullptr, L"a", p), RTCAN);
        EXPECT_EQ(hxedGetString(true, L"a", text), RTCAN);
        EXPECT_EQ(hxedGetInt(L"a", &i), RTCAN);
        EXPECT_EQ(hxedGetReal(L"a", &r), RTCAN);
        EXPECT_EQ(hxedEntSel(L"a", name, p), RTCAN);
        EXPECT_EQ(hxedNEntSelP(L"a", name, p, 0, nullptr, &chain), RTCAN);
    });
    run(L"ASK\n");
    EXPECT_EQ(failures.size(), 1U);
}

TEST_F(InputFunctions, PicksFindObjectsAndSayWhenTheyMiss) {
    run(L"LINE 0,0 10,0 \nZOOM W -1,-10 21,10\n");
    inCommand(L"5,0 5,9 word \n", [&] {
        zds_name name = {0, 0};
        zds_point point = {0, 0, 0};
        resbuf* chain = nullptr;
        EXPECT_EQ(hxedNEntSelP(L"Pick:", name, point, 0, nullptr, &chain), RTNORM);
        EXPECT_EQ(chain, nullptr);
        EXPECT_EQ(point[0], 5);
        HxDbObjectId id;
        EXPECT_EQ(hxdbGetObjectId(id, name), Hx::eOk);
        const HxDbObjectPointer<HxDbEntity> entity(id, HxDb::kForRead);
        EXPECT_STREQ(entity->dxfName(), L"LINE");
        EXPECT_EQ(variable(L"ERRNO"), L"0");
        EXPECT_EQ(hxedNEntSelP(L"Pick:", name, point, 0, nullptr, &chain), RTERROR);
        EXPECT_EQ(variable(L"ERRNO"), L"7");
        hxedInitGet(RSG_OTHER, L"eXit");
        EXPECT_EQ(hxedNEntSelP(L"Pick:", name, point, 0, nullptr, &chain), RTKWORD);
        EXPECT_EQ(hxedNEntSelP(L"Pick:", name, point, 0, nullptr, &chain), RTNONE);
        EXPECT_EQ(variable(L"ERRNO"), L"52");
    });
    EXPECT_EQ(failures, Lines());
}

}  // namespace
}  // namespace korvex::test
