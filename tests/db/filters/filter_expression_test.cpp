// Expressions: which layers they accept, and what is wrong with those that make no sense.
#include "tests/db/filters/filter_support.h"

namespace korvex::test {

namespace {

class FilterExpressions : public FilterTest {
protected:
    FilterExpressions() : FilterTest(planDrawing()) {
        change<HxDbLayerTableRecord>(layer(L"WALLS"), [&](HxDbLayerTableRecord& l) {
            EXPECT_EQ(l.setDescription(L"Outer (load) walls"), Hx::eOk);
            EXPECT_EQ(l.setTransparency(HxCmTransparency(127)), Hx::eOk);
            l.setIsLocked(true);
        });
        change<HxDbLayerTableRecord>(layer(L"DOORS"), [&](HxDbLayerTableRecord& l) {
            HxCmColor book = HxCmColor::byRgb(10, 200, 30);
            EXPECT_EQ(book.setNames(L"Leaf 12", L"GARDEN"), Hx::eOk);
            EXPECT_EQ(l.setColor(book), Hx::eOk);
            EXPECT_EQ(l.setIsFrozen(true), Hx::eOk);
        });
        change<HxDbLayerTableRecord>(layer(L"EMPTY"), [&](HxDbLayerTableRecord& l) {
            l.setIsOff(true);
            l.setVPDFLT(true);
            EXPECT_EQ(l.setIsPlottable(false), Hx::eOk);
            EXPECT_EQ(l.setColor(HxCmColor::byRgb(255, 0, 0)), Hx::eOk);
        });
        change<HxDbLayerTable>(database->layerTableId(), [](HxDbLayerTable& t) { t.generateUsageData(); });
    }
    std::string layersFor(const wchar_t* expression) {
        HxLyExpressionError error;
        EXPECT_EQ(scratch.setFilterExpression(expression, &error), Hx::eOk)
            << toUtf8(expression) << ": " << error.position << ' ' << toUtf8(error.reason);
        return accepted(scratch);
    }
    HxLyLayerFilter scratch;
};

struct Case {
    const wchar_t* expression;
    const char* layers;
};

constexpr char kEvery[] = "0 WALLS DOORS PIPE|VALVE Defpoints EMPTY ";

constexpr Case kCases[] = {
    {L"", kEvery},
    {L"  ", kEvery},
    {LR"(NAME=="*")", kEvery},
    {LR"(NAME=="walls")", "WALLS "},
    {LR"(name == "WALLS")", "WALLS "},
    {LR"(NAME=="W*,~*O*")", "0 WALLS PIPE|VALVE EMPTY "},
    {LR"(NAME=="#")", "0 "},
    {LR"(NAME=="@@@@@")", "WALLS DOORS EMPTY "},
    {LR"(NAME=="PIPE.*")", "PIPE|VALVE "},
    {LR"(NAME=="[DE]*")", "DOORS Defpoints EMPTY "},
    {LR"(NAME=="[~0-9]?O*")", "DOORS "},
    {LR"(NAME!="*A*")", "0 DOORS Defpoints EMPTY "},
    {LR"(NAME==WALLS)", "WALLS "},
    {LR"(NAME<"E")", "0 DOORS Defpoints "},
    {LR"(NAME>="PIPE|VALVE")", "WALLS PIPE|VALVE "},
    {LR"(COLOR=="1")", "WALLS "},
    {LR"(COLOR=="red")", "WALLS "},
    {LR"(COLOR=="White")", "0 Defpoints "},
    {LR"(COLOR=="1,4")", "WALLS PIPE|VALVE "},
    {LR"(COLOR=="255,0,0")", "EMPTY "},
    {LR"(COLOR=="RGB:10,200,30")", "DOORS "},
    {LR"(COLOR=="Leaf*")", "DOORS "},
    {LR"(COLOR=="GARDEN$Leaf 12")", "DOORS "},
    {LR"(COLOR!="red")", "0 DOORS PIPE|VALVE Defpoints EMPTY "},
    {LR"(COLOR!="255,0,0")", "0 WALLS DOORS PIPE|VALVE Defpoints "},
    {LR"(COLOR=="~1")", "0 DOORS PIPE|VALVE Defpoints EMPTY "},
    {LR"(COLOR=="color 4")", "PIPE|VALVE "},
    {LR"(COLOR>"1" AND COLOR<="4")", "PIPE|VALVE "},
    {LR"(LINETYPE=="continuous")", "0 WALLS PIPE|VALVE Defpoints EMPTY "},
    {LR"(LINETYPE!="Cont*")", "DOORS "},
    {LR"(LINEWEIGHT=="Default")", "0 WALLS PIPE|VALVE Defpoints EMPTY "},
    {LR"(LINEWEIGHT=="0.50 mm")", "DOORS "},
    {LR"(LINEWEIGHT=="0.5")", "DOORS "},
    {LR"(LINEWEIGHT==50)", "DOORS "},
    {LR"(LINEWEIGHT!="0.50")", "0 WALLS PIPE|VALVE Defpoints EMPTY "},
    {LR"(LINEWEIGHT>"0.25")", "DOORS "},
    {LR"(LINEWEIGHT=="0.*")", "DOORS "},
    {LR"(TRANSPARENCY=="50")", "WALLS "},
    {LR"(TRANSPARENCY=="50%")", "WALLS "},
    {LR"(TRANSPARENCY>"0")", "WALLS "},
    {LR"(PLOTSTYLE=="Bold")", "DOORS "},
    {LR"(DESCRIPTION=="*(load)*")", "WALLS "},
    {LR"(DESCRIPTION=="")", "0 DOORS PIPE|VALVE Defpoints EMPTY "},
    {LR"(ON=="False")", "EMPTY "},
    {LR"(OFF=="True")", "EMPTY "},
    {LR"(OFF!="False")", "EMPTY "},
    {LR"(FROZEN=="True")", "DOORS "},
    {LR"(FROZEN=="*")", kEvery},
    {LR"(LOCKED=="true")", "WALLS "},
    {LR"(LOCKED==1)", "WALLS "},
    {LR"(PLOT=="False")", "Defpoints EMPTY "},
    {LR"(PLOTTABLE=="No")", "Defpoints EMPTY "},
    {LR"(NEWVPFROZEN=="True")", "EMPTY "},
    {LR"(USED=="True")", "0 WALLS DOORS Defpoints "},
    {LR"(STATUS=="Current")", "0 "},
    {LR"(STATUS=="Used")", "0 WALLS DOORS Defpoints "},
    {LR"(STATUS=="Unused")", "PIPE|VALVE EMPTY "},
    {LR"(XREF=="True")", "PIPE|VALVE "},
    {LR"(VPFROZEN=="True")", ""},
    {LR"(VPOVERRIDE=="True")", ""},
    {LR"(OFF=="True" OR FROZEN=="True")", "DOORS EMPTY "},
    {LR"(OFF=="True" AND FROZEN=="True")", ""},
    {LR"(NAME=="0" OR NAME=="WALLS" AND LOCKED=="False")", "0 "},
    {LR"((NAME=="0" OR NAME=="WALLS") AND LOCKED=="True")", "WALLS "},
    {LR"(NOT NAME=="0" AND USED=="True")", "WALLS DOORS Defpoints "},
    {LR"(NOT (NAME=="0" OR USED=="False"))", "WALLS DOORS Defpoints "},
    {LR"(not not NAME=="0")", "0 "},
    {LR"(NOT (NOT (OFF=="True" OR LOCKED=="True") OR COLOR=="1"))", "EMPTY "},
    {L"((NAME==\"0\")\n\tor(NAME==\"WALLS\"))", "0 WALLS "},
    {LR"(NAME=="A" OR NAME=="B" OR NAME=="EMPTY" AND (OFF=="False" OR NEWVPFROZEN=="True"))", "EMPTY "},
};

struct BadCase {
    const wchar_t* expression;
    int position;
    const wchar_t* reason;  ///< a part of it
};

constexpr BadCase kBadCases[] = {
    {L"NAME", 4, L"comparison is expected"},
    {L"NAME==", 6, L"value is expected"},
    {L"NAME=\"A\"", 4, L"comparison is expected"},
    {L"NAME===\"A\"", 4, L"comparison is expected"},
    {L"NAME==\"A", 6, L"closing quote"},
    {L"NAM==\"A\"", 0, L"\"NAM\" is no layer property"},
    {L"\"A\"==NAME", 0, L"layer property is expected"},
    {L"NAME==\"A\" COLOR==\"1\"", 10, L"AND, OR or the end"},
    {L"NAME==\"A\" AND", 13, L"layer property is expected"},
    {L"AND NAME==\"A\"", 0, L"\"AND\" is no layer property"},
    {L"NOT", 3, L"layer property is expected"},
    {L"(NAME==\"A\"", 10, L"\")\" is missing"},
    {L"NAME==\"A\")", 9, L"closes nothing"},
    {L"()", 1, L"layer property is expected"},
    {L"FROZEN==\"maybe\"", 8, L"FROZEN cannot be \"maybe\""},
    {L"OFF==\"False\" OR LINEWEIGHT==\"heavy\"", 28, L"LINEWEIGHT cannot be \"heavy\""},
    {L"LINEWEIGHT==\"0.26 mm\"", 12, L"LINEWEIGHT cannot be"},
    {L"TRANSPARENCY==\"101\"", 14, L"TRANSPARENCY cannot be"},
    {L"TRANSPARENCY<\"much\"", 13, L"number is expected"},
    {L"LOCKED<\"True\"", 7, L"no order"},
    {L"NAME==(\"A\")", 6, L"value is expected"},
};

}  // namespace

TEST_F(FilterExpressions, AcceptTheLayersOfTheTable) {
    for (const Case& c : kCases) {
        EXPECT_EQ(layersFor(c.expression), c.layers) << toUtf8(c.expression);
    }
}

TEST_F(FilterExpressions, ThatMakeNoSenseTellWhereAndAcceptNothing) {
    for (const BadCase& c : kBadCases) {
        HxLyExpressionError error;
        EXPECT_EQ(scratch.setFilterExpression(c.expression, &error), Hx::eInvalidInput)
            << toUtf8(c.expression);
        EXPECT_EQ(error.position, c.position) << toUtf8(c.expression);
        EXPECT_TRUE(has(toUtf8(error.reason), toUtf8(c.reason))) << toUtf8(error.reason);
        EXPECT_EQ(accepted(scratch), "") << toUtf8(c.expression);
        EXPECT_EQ(scratch.filterExpression(), c.expression) << "it is kept";
        EXPECT_EQ(scratch.expressionError().position, c.position);
    }
    EXPECT_EQ(layersFor(L"NAME==\"0\""), "0 ") << "the next one is as good as new";
    EXPECT_EQ(scratch.expressionError().position, -1);
    EXPECT_EQ(scratch.setFilterExpression(nullptr), Hx::eOk);
}

TEST_F(FilterExpressions, MayBeLongButNotBottomless) {
    const auto nested = [](int depth, const std::wstring& open, const std::wstring& close) {
        std::wstring text;
        for (int i = 0; i < depth; ++i) {
            text += open;
        }
        text += L"NAME==\"0\"";
        for (int i = 0; i < depth; ++i) {
            text += close;
        }
        return text;
    };
    EXPECT_EQ(layersFor(nested(100, L"(", L")").c_str()), "0 ");
    EXPECT_EQ(layersFor(nested(100, L"NOT ", L"").c_str()), "0 ");
    HxLyExpressionError error;
    EXPECT_EQ(scratch.setFilterExpression(nested(200000, L"(", L")").c_str(), &error), Hx::eInvalidInput);
    EXPECT_EQ(error.position, 100);
    std::wstring wide = L"NAME==\"none\"";
    for (int i = 0; i < 5000; ++i) {
        wide += L" OR NAME==\"N" + std::to_wstring(i) + L"\"";
    }
    EXPECT_EQ(layersFor((wide + L" OR NAME==\"EMPTY\"").c_str()), "EMPTY ");
}

TEST_F(FilterExpressions, FollowRenamesAndChanges) {
    ASSERT_EQ(scratch.setFilterExpression(LR"(NAME=="WALLS" OR LINETYPE=="DASHED")"), Hx::eOk);
    EXPECT_EQ(accepted(scratch), "WALLS DOORS ");
    ASSERT_EQ(rename(layer(L"WALLS"), L"FACADE"), Hx::eOk);
    ASSERT_EQ(rename(recordId(*database, TableKind::linetype, L"DASHED"), L"DOTS"), Hx::eOk);
    EXPECT_EQ(accepted(scratch), "");
    EXPECT_EQ(layersFor(LR"(LINETYPE=="DOTS")"), "DOORS ");
}

TEST_F(FilterExpressions, SeeTheActiveViewport) {
    ASSERT_EQ(database->setTilemode(false), Hx::eOk);
    ASSERT_EQ(database->setCvport(2), Hx::eOk);
    EXPECT_EQ(layersFor(LR"(VPFROZEN=="True")"), "DOORS ");
    EXPECT_EQ(layersFor(LR"(VPOVERRIDE=="True")"), "WALLS ");
    EXPECT_EQ(layersFor(LR"(VPLINEWEIGHT=="0.50")"), "WALLS DOORS ");
    EXPECT_EQ(layersFor(LR"(LINEWEIGHT=="0.50")"), "DOORS ");
    EXPECT_EQ(layersFor(LR"(VPCOLOR=="1")"), "WALLS ");
    EXPECT_EQ(layersFor(LR"(VPLINETYPE=="DASHED" AND VPPLOTSTYLE=="Bold" AND VPTRANSPARENCY=="0")"),
              "DOORS ");
    ASSERT_EQ(scratch.setFilterExpression(LR"(VPFROZEN=="True")"), Hx::eOk);
    EXPECT_EQ(accepted(scratch), "DOORS ");
    change<HxDbViewport>(id(0x61), [&](HxDbViewport& v) { EXPECT_EQ(v.thawAllLayersInViewport(), Hx::eOk); });
    EXPECT_EQ(accepted(scratch), "");
    change<HxDbViewport>(id(0x61), [&](HxDbViewport& v) {
        HxArray<HxDbObjectId> ids;
        ids.append(layer(L"EMPTY"));
        EXPECT_EQ(accepted(scratch), "") << "open, not changed yet";
        EXPECT_EQ(v.freezeLayersInViewport(ids), Hx::eOk);
        EXPECT_EQ(accepted(scratch), "EMPTY ") << "changed, still open";
    });
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_NE(accepted(scratch), "EMPTY ");
    ASSERT_EQ(database->setTilemode(true), Hx::eOk);
    EXPECT_EQ(accepted(scratch), "");
}

}  // namespace korvex::test
