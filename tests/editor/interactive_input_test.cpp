// A user before the command line: what comes while a prompt waits for them.
#include "tests/editor/editor_fixture.h"

#include <deque>

namespace korvex {
namespace {

/// Waits like a window does: each step is what happens during one wait; it gives an answer, or is
/// interrupted.
class User : public InputSource {
public:
    using Step = std::function<std::wstring()>;

    explicit User(std::deque<Step> steps) : m_steps(std::move(steps)) {}
    bool next(const InputRequest& request, Token& token) override {
        requests.push_back(request);
        if (m_steps.empty()) {
            return false;
        }
        const Step step = std::move(m_steps.front());
        m_steps.pop_front();
        m_interrupted = false;
        token.text = step();
        token.interrupted = m_interrupted;
        return true;
    }
    bool isDry() const override { return false; }
    bool isInteractive() const override { return true; }
    void interrupt() override { m_interrupted = true; }

    static std::vector<InputRequest> requests;

private:
    std::deque<Step> m_steps;
    bool m_interrupted = false;
};
std::vector<InputRequest> User::requests;

User::Step types(const wchar_t* text) {
    return [text] { return std::wstring(text); };
}

class InteractiveInputTest : public test::EditorTest {
protected:
    void interact(std::deque<User::Step> steps) {
        User::requests.clear();
        editor().input().append(std::make_unique<User>(std::move(steps)));
        editor().processor().runAll();
    }
    static User::Step sends(const wchar_t* text) {
        return [text] {
            hxDocManager()->sendStringToExecute(curDoc(), text);
            return std::wstring();
        };
    }
};

TEST_F(InteractiveInputTest, RunsWhatIsSentWhileTheCommandPromptWaits) {
    interact({sends(L"CIRCLE 5,5 2 ")});
    EXPECT_EQ(entities(), 1);
}

TEST_F(InteractiveInputTest, KeepsWhatIsSentUntilTheCommandEnds) {
    interact({types(L"CIRCLE"), sends(L"LINE 0,0 1,1  "), types(L"5,5"), types(L"2")});
    EXPECT_EQ(entities(), 2);
    EXPECT_TRUE(failures.empty());
}

TEST_F(InteractiveInputTest, RunsTransparentCommandsThatAreSentWhileACommandWaits) {
    interact({types(L"CIRCLE"), sends(L"'CLAYER 0\n"), types(L"5,5"), types(L"2")});
    EXPECT_EQ(entities(), 1);
    ASSERT_GE(User::requests.size(), 4U);
    EXPECT_EQ(User::requests[1].prompt, User::requests[2].prompt);
}

TEST_F(InteractiveInputTest, AsksTheUserAfterScriptsHoweverLateTheyCome) {
    interact({[] {
                  editor().input().append(std::make_unique<ScriptSource>(L"CIRCLE 5,5", ScriptOptions()));
                  return std::wstring();
              },
              types(L"2")});
    EXPECT_EQ(entities(), 1);
}

TEST_F(InteractiveInputTest, RepeatsTheLastCommandOnEnter) {
    interact({types(L"CIRCLE"), types(L"5,5"), types(L"2"), types(L""), types(L"9,9"), types(L"1")});
    EXPECT_EQ(entities(), 2);
}

TEST_F(InteractiveInputTest, SaysWhatEachPromptAsksFor) {
    using Wants = InputRequest::Wants;
    define(L"ASKALL", [] {
        askReal({L"How much"});
        const HxGePoint3d from{1, 2, 0};
        askPoint({L"Where", L"Here There"}, &from);
        askEntity({L"Which"}, true);
        askName({L"Name"});
    });
    interact({types(L"ASKALL"), types(L"1"), types(L"Here"), types(L"0,0"), types(L"a b")});
    ASSERT_EQ(User::requests.size(), 6U);
    EXPECT_EQ(User::requests[0].wants, Wants::command);
    EXPECT_EQ(User::requests[1].wants, Wants::number);
    EXPECT_EQ(User::requests[2].wants, Wants::point);
    EXPECT_EQ(User::requests[2].keywords, L"Here There");
    ASSERT_TRUE(User::requests[2].base);
    EXPECT_EQ(User::requests[2].base->y, 2);
    EXPECT_EQ(User::requests[3].wants, Wants::entity);
    EXPECT_TRUE(User::requests[3].nested);
    EXPECT_EQ(User::requests[4].end, AnswerEnd::line);
}

}  // namespace
}  // namespace korvex
