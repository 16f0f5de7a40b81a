// Commands from their name to their end: reactors, transparent commands, cancelling, leftovers.
#include "tests/editor/editor_fixture.h"

#include "host/db/kernel/journal.h"
#include "sdk/hxads.h"
#include "sdk/hxconfig.h"

namespace korvex::test {
namespace {

class CommandFlow : public EditorTest {};

TEST_F(CommandFlow, ReadsLikeADialogue) {
    EXPECT_EQ(run(L"LINE 0,0 10,0 @0,5 C\n"), L"Command: LINE\n"
                                              L"Specify first point: 0,0\n"
                                              L"Specify next point or [Undo]: 10,0\n"
                                              L"Specify next point or [Undo]: @0,5\n"
                                              L"Specify next point or [Close/Undo]: C\n");
    EXPECT_EQ(entities(), 3);
}

TEST_F(CommandFlow, FindsCommandsUnderTheirNames) {
    for (const wchar_t* name :
         {L"LINE", L"line", L"_LINE", L"_.Line", L"._line", L".LINE", L"L", L"'REDRAW", L"'_REDRAW"}) {
        Recorder recorder;
        run(std::wstring(name) + L"\n");
        ASSERT_FALSE(recorder.log.empty()) << testing::PrintToString(std::wstring(name));
        EXPECT_EQ(recorder.log[0], contains(name, L"REDRAW") ? L"start REDRAW" : L"start LINE");
    }
}

TEST_F(CommandFlow, LaterGroupsWinButForTheDot) {
    bool ran = false;
    define(L"REDRAW", [&] { ran = true; });
    run(L".REDRAW\n");
    EXPECT_FALSE(ran);
    run(L"REDRAW\n");
    EXPECT_TRUE(ran);
}

TEST_F(CommandFlow, LocalNamesAreNotGlobalOnes) {
    auto* stack = HxEdCommandStack::cast(hxrxSysRegistry()->at(L"VREX_REGISTERED_COMMANDS"));
    ASSERT_NE(stack, nullptr);
    EXPECT_EQ(stack->addCommand(L"TEST", L"SHOW", L"ZEIGE", 0, [] {}), Hx::eOk);
    EXPECT_EQ(stack->addCommand(L"TEST", L"show", L"X", 0, [] {}), Hx::eDuplicateKey);
    EXPECT_EQ(stack->addCommand(L"TEST", L"", L"X", 0, [] {}), Hx::eInvalidInput);
    CStdStr<wchar_t> global;
    EXPECT_TRUE(stack->lookupCmd(L"zeige", &global));
    EXPECT_EQ(global, L"SHOW");
    EXPECT_TRUE(stack->lookupCmd(L"_SHOW"));
    EXPECT_FALSE(stack->lookupCmd(L"_ZEIGE"));
    EXPECT_EQ(stack->removeCmd(L"TEST", L"Show"), Hx::eOk);
    EXPECT_EQ(stack->removeCmd(L"TEST", L"Show"), Hx::eKeyNotFound);
    EXPECT_EQ(stack->removeGroup(L"NONE"), Hx::eKeyNotFound);
}

TEST_F(CommandFlow, NamesUnknownCommandsAndTheRemedy) {
    run(L"LIEN\nXYZZY\n");
    EXPECT_EQ(failures,
              (Lines{L"Unknown command \"LIEN\". Did you mean LINE?",
                     L"Unknown command \"XYZZY\". Check the spelling, or load the module that brings it "
                     L"(HRX Load)."}));
}

TEST_F(CommandFlow, TellsReactorsHowACommandEnded) {
    define(L"BREAK", [] { throw std::runtime_error("broken"); });
    define(L"MEMORY", [] { throw HxErrorStatusException(Hx::eOutOfMemory); });
    Recorder recorder;
    run(L"REGEN\n");
    run(L"LINE 0,0\n");
    run(L"BREAK\nMEMORY\nLINE 0,0 \x1B");
    EXPECT_EQ(recorder.log,
              (Lines{L"start REGEN", L"end REGEN", L"start LINE", L"cancel LINE", L"start BREAK",
                     L"fail BREAK", L"start MEMORY", L"fail MEMORY", L"start LINE", L"cancel LINE"}));
    ASSERT_EQ(failures.size(), 3U);
    EXPECT_TRUE(contains(failures[0], L"LINE was cancelled: the script ended"));
    EXPECT_TRUE(contains(failures[1], L"BREAK was stopped: broken"));
    EXPECT_TRUE(curDoc()->isQuiescent());
    EXPECT_EQ(hxDocManager()->lockMode(curDoc()), kNone);
}

TEST_F(CommandFlow, ReactorsMayComeAndGoInsideOfANotification) {
    class Once : public HxEditorReactor {
    public:
        explicit Once(std::unique_ptr<Recorder>& other) : m_other(other) { hxedEditor()->addReactor(this); }
        ~Once() override { hxedEditor()->removeReactor(this); }
        void commandWillStart(const wchar_t*) override {
            hxedEditor()->removeReactor(this);
            m_other.reset();
        }

    private:
        std::unique_ptr<Recorder>& m_other;
    };
    std::unique_ptr<Recorder> gone;
    Once once(gone);
    gone = std::make_unique<Recorder>();
    Recorder stays;
    run(L"REGEN\n");
    EXPECT_EQ(stays.log, (Lines{L"start REGEN", L"end REGEN"}));
}

TEST_F(CommandFlow, RunsTransparentCommandsAtPrompts) {
    Recorder recorder;
    const std::wstring shown = run(L"LINE 0,0 'SETVAR LUPREC 3 '-LAYER N My Layer\n 5,5 \n");
    EXPECT_EQ(entities(), 1);
    EXPECT_EQ(variable(L"LUPREC"), L"3");
    EXPECT_TRUE(hasLayer(L"My Layer"));
    EXPECT_TRUE(contains(shown, L"Resuming LINE.\nSpecify next point or [Undo]: "));
    EXPECT_EQ(recorder.log.front(), L"start LINE");
    EXPECT_EQ(recorder.log.back(), L"end LINE");
    EXPECT_EQ(failures, Lines());
}

TEST_F(CommandFlow, RefusesOthersInsideOfACommand) {
    run(L"LINE 0,0 'CIRCLE 'NOSUCH 1,1 \n");
    ASSERT_EQ(failures.size(), 2U);
    EXPECT_EQ(failures[0], L"CIRCLE can not run inside of another command: end LINE first.");
    EXPECT_TRUE(contains(failures[1], L"Unknown command \"NOSUCH\""));
    EXPECT_EQ(entities(), 1);
}

TEST_F(CommandFlow, TransparentCommandsBelongToTheOuterUndoStep) {
    run(L"LINE 0,0 '-LAYER N A\n 1,1 \n");
    EXPECT_EQ(run(L"U\n"), L"Command: U\nLINE\n");
    EXPECT_EQ(entities(), 0);
    EXPECT_FALSE(hasLayer(L"A"));
}

TEST_F(CommandFlow, LooksAtNamePromptsForTransparentCommandsToo) {
    run(L"-LAYER N\n'SETVAR LUPREC 5\nB\n\n");
    EXPECT_EQ(variable(L"LUPREC"), L"5");
    EXPECT_TRUE(hasLayer(L"B"));
    run(L"-LAYER N 'quoted\n\n");
    EXPECT_TRUE(hasLayer(L"'quoted"));
}

TEST_F(CommandFlow, TakesBackTransactionsThatAreLeftOpen) {
    define(L"LEAVE", [&] {
        HxDbObject* object = nullptr;
        database().transactionManager()->startTransaction()->getObject(object, database().layerZero(),
                                                                       HxDb::kForWrite);
        static_cast<HxDbLayerTableRecord*>(object)->setIsLocked(true);
    });
    Recorder recorder;
    run(L"LEAVE\n");
    EXPECT_EQ(database().transactionManager()->numActiveTransactions(), 0);
    const HxDbObjectPointer<HxDbLayerTableRecord> zero(database().layerZero(), HxDb::kForRead);
    ASSERT_TRUE(zero);
    EXPECT_FALSE(zero->isLocked());
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"LEAVE left a transaction open"));
    EXPECT_EQ(recorder.log.back(), L"fail LEAVE");
}

TEST_F(CommandFlow, ReportsRecordsThatAreLeftOpenOnce) {
    HxDbLayerTableRecord* left = nullptr;
    define(L"FORGET", [&] { hxdbOpenObject(left, database().layerZero(), HxDb::kForRead); });
    run(L"FORGET\nREGEN\n");
    ASSERT_NE(left, nullptr);
    left->close();
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"FORGET left objects open"));
    EXPECT_TRUE(contains(failures[0], L"LAYER"));
}

TEST_F(CommandFlow, AnObstinateCommandDoesNotHang) {
    define(L"AGAIN", [] {
        int value = 0;
        while (hxedGetInt(L"Number:", &value) != RTNORM) {
        }
    });
    run(L"AGAIN\n");
    ASSERT_EQ(failures.size(), 1U);
    EXPECT_TRUE(contains(failures[0], L"keeps asking"));
}

TEST_F(CommandFlow, SentStringsComeWhenTheHostIsIdle) {
    Recorder recorder;
    define(L"SENDER", [] {
        hxDocManager()->sendStringToExecute(curDoc(), L"_.-LAYER N Sent\n ", true, false, false);
        int value = 0;
        hxedGetInt(L"Number:", &value);
    });
    const std::wstring shown = run(L"SENDER 4 REGEN\n");
    EXPECT_EQ(recorder.log, (Lines{L"start SENDER", L"end SENDER", L"start -LAYER", L"end -LAYER",
                                   L"start REGEN", L"end REGEN"}));
    EXPECT_TRUE(hasLayer(L"Sent"));
    EXPECT_FALSE(contains(shown, L"-LAYER"));
    EXPECT_FALSE(contains(shown, L"Enter name list"));
}

TEST_F(CommandFlow, SentTransparentStringsComeAtTheNextPrompt) {
    define(L"SENDER", [] {
        hxDocManager()->sendStringToExecute(curDoc(), L"'_SETVAR LUPREC 6 ");
        int value = 0;
        hxedGetInt(L"Number:", &value);
        EXPECT_EQ(integerVariable(L"LUPREC"), 6);
        EXPECT_EQ(value, 9);
    });
    run(L"SENDER 9\n");
    EXPECT_EQ(failures, Lines());
    EXPECT_EQ(hxDocManager()->sendStringToExecute(nullptr, L"X"), Hx::eNoDocument);
}

TEST_F(CommandFlow, NoMuttKeepsTheCommandLineSilent) {
    EXPECT_EQ(run(L"NOMUTT 1\nLINE 0,0 1,1 \n"), L"Command: NOMUTT\nEnter new value for NOMUTT <0>: 1\n");
    EXPECT_TRUE(hxedIsQuiet());
    EXPECT_TRUE(contains(run(L"NOSUCH\n"), L"Unknown command"));
}

TEST_F(CommandFlow, PrintsAtMostSoMuchACall) {
    define(L"TALK", [] { hxutPrintf(L"\n%ls!", std::wstring(5000, L'x').c_str()); });
    EXPECT_EQ(run(L"TALK\n").size(), std::wstring(L"Command: TALK\n").size() + 2047);
}

}  // namespace
}  // namespace korvex::test
