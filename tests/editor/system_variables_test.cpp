// System variables: types, ranges, where they are kept, who is told.
#include "tests/editor/editor_fixture.h"

#include "host/db/kernel/header.h"
#include "sdk/hxads.h"
#include "sdk/hxconfig.h"

namespace korvex::test {
namespace {

class SystemVariables : public EditorTest {
protected:
    static int setTo(const wchar_t* name, short value) {
        resbuf node{};
        node.restype = RTSHORT;
        node.resval.rint = value;
        return hxedSetVar(name, &node);
    }
    static int setTo(const wchar_t* name, double value) {
        resbuf node{};
        node.restype = RTREAL;
        node.resval.rreal = value;
        return hxedSetVar(name, &node);
    }
    static int setTo(const wchar_t* name, const wchar_t* value) {
        std::wstring copy = value;
        resbuf node{};
        node.restype = RTSTR;
        node.resval.rstring = copy.data();
        return hxedSetVar(name, &node);
    }
};

TEST_F(SystemVariables, HaveTheirTypes) {
    struct Case {
        const wchar_t* name;
        short type;
    };
    constexpr Case kCases[] = {{L"CLAYER", RTSTR},    {L"tilemode", RTSHORT}, {L"LayerDlgMode", RTSHORT},
                               {L"VIEWCTR", RTPOINT}, {L"VIEWSIZE", RTREAL},  {L"LTSCALE", RTREAL},
                               {L"ERRNO", RTSHORT},   {L"DATE", RTREAL},      {L"ACADVER", RTSTR}};
    for (const Case& c : kCases) {
        resbuf node{};
        ASSERT_EQ(hxedGetVar(c.name, &node), RTNORM) << testing::PrintToString(std::wstring(c.name));
        EXPECT_EQ(node.restype, c.type) << testing::PrintToString(std::wstring(c.name));
        if (node.restype == RTSTR) {
            hxutFreeString(node.resval.rstring);
        }
    }
    resbuf node{};
    EXPECT_EQ(hxedGetVar(L"NOSUCHVAR", &node), RTERROR);
    EXPECT_EQ(hxedSetVar(L"NOSUCHVAR", &node), RTERROR);
}

TEST_F(SystemVariables, TakeWhatFitsAndNothingElse) {
    EXPECT_EQ(setTo(L"LUPREC", short(8)), RTNORM);
    EXPECT_EQ(setTo(L"LUPREC", short(9)), RTREJ);
    EXPECT_EQ(setTo(L"LUPREC", short(-1)), RTREJ);
    EXPECT_EQ(setTo(L"LUPREC", 2.0), RTNORM);
    EXPECT_EQ(setTo(L"LUPREC", 2.5), RTREJ);
    EXPECT_EQ(setTo(L"LUPREC", L"2"), RTREJ);
    EXPECT_EQ(setTo(L"LTSCALE", short(3)), RTNORM);
    EXPECT_EQ(setTo(L"LTSCALE", short(0)), RTREJ);
    EXPECT_EQ(setTo(L"PSTYLEMODE", short(1)), RTREJ);
    EXPECT_EQ(setTo(L"TILEMODE", short(2)), RTREJ);
    EXPECT_EQ(setTo(L"CELWEIGHT", short(26)), RTREJ);
    EXPECT_EQ(setTo(L"CECOLOR", L"red"), RTNORM);
    EXPECT_EQ(setTo(L"CECOLOR", L"reddish"), RTREJ);
    EXPECT_EQ(setTo(L"CELTYPE", L"NOSUCH"), RTREJ);
    EXPECT_EQ(setTo(L"CLAYER", L"NOSUCH"), RTREJ);
    EXPECT_EQ(variable(L"LUPREC"), L"2");
    EXPECT_EQ(variable(L"LTSCALE"), L"3");
    EXPECT_EQ(variable(L"CECOLOR"), L"\"1\"");
    EXPECT_EQ(variable(L"CLAYER"), L"\"0\"");
}

TEST_F(SystemVariables, LiveInTheDrawingTheProfileOrTheSession) {
    setTo(L"LUPREC", short(7));
    setTo(L"PICKBOX", short(9));
    setTo(L"EXPERT", short(2));
    EXPECT_EQ(headerInteger(database(), L"$LUPREC", -1), 7);
    VrexVariant stored;
    EXPECT_EQ(vrexConfig()->getValue(kHxConfigUser, L"SystemVariables\\PICKBOX", stored), 0);
    EXPECT_EQ(stored.asInt32(), 9);
    editor().documents().newDocument();
    EXPECT_NE(variable(L"LUPREC"), L"7");
    EXPECT_EQ(variable(L"PICKBOX"), L"9");
    EXPECT_EQ(variable(L"EXPERT"), L"2");
    resetSessionVariables();
    EXPECT_EQ(variable(L"EXPERT"), L"0");
}

TEST_F(SystemVariables, TellBeforeAndAfterEveryChange) {
    run(L"-LAYER N A\n\n");
    Recorder recorder;
    setTo(L"LUPREC", short(1));
    setTo(L"LUPREC", short(99));
    setTo(L"CLAYER", L"A");
    setTo(L"CLAYER", L"A");  // the same value again, for all who follow it
    setTo(L"CLAYER", L"NOSUCH");
    EXPECT_EQ(recorder.log, (Lines{L"will LUPREC", L"did LUPREC", L"will CLAYER", L"did CLAYER",
                                   L"will CLAYER", L"did CLAYER", L"will CLAYER", L"did not CLAYER"}));
}

TEST_F(SystemVariables, TellOfChangesThatOthersMake) {
    run(L"-LAYER N A\n\n");
    const HxDbObjectId a = layer(L"A");
    Recorder recorder;
    database().setClayer(a);
    EXPECT_EQ(recorder.log, (Lines{L"will CLAYER", L"did CLAYER"}));
    HxDbDatabase other;
    recorder.log.clear();
    setHeaderValue(other, L"$LUPREC", {{70, L"", 0, 1}});
    EXPECT_EQ(recorder.log, Lines());
}

TEST_F(SystemVariables, AreUndoneWithTheirCommand) {
    run(L"SETVAR LUPREC 1\n");
    EXPECT_EQ(variable(L"LUPREC"), L"1");
    Recorder recorder;
    EXPECT_EQ(run(L"U\n"), L"Command: U\nSETVAR\n");
    EXPECT_EQ(variable(L"LUPREC"), L"4");
    EXPECT_EQ(recorder.log, (Lines{L"start U", L"will LUPREC", L"did LUPREC", L"end U"}));
}

TEST_F(SystemVariables, SetvarAsksShowsAndLists) {
    EXPECT_EQ(run(L"LUPREC 3\n"), L"Command: LUPREC\nEnter new value for LUPREC <4>: 3\n");
    EXPECT_EQ(run(L"SETVAR LUPREC \n"),
              L"Command: SETVAR\nEnter variable name or [?]: LUPREC\nEnter new value for LUPREC <3>: \n");
    EXPECT_EQ(run(L"ACADVER\n"),
              L"Command: ACADVER\nACADVER = \"" + std::wstring(database().version()) + L"\" (read-only)\n");
    const std::wstring list = run(L"SETVAR ? L*\n");
    EXPECT_TRUE(contains(list, L"\nLUPREC                  3\n"));
    EXPECT_TRUE(contains(list, L"\nLASTPOINT"));
    EXPECT_FALSE(contains(list, L"CLAYER"));
    EXPECT_EQ(failures, Lines());
    run(L"LUPREC x\nSETVAR NOSUCH\nLUPREC 99\n");
    EXPECT_EQ(failures, (Lines{L"\"x\" is no value for LUPREC, which is now 3.",
                               L"There is no system variable \"NOSUCH\": SETVAR ? lists them.",
                               L"LUPREC takes values from 0 to 8."}));
}

}  // namespace
}  // namespace korvex::test
