// What the buttons of boxes about layer states mean.
#include "tests/module/module_fixture.h"

#include "layer_states/file/layer_state_boxes.h"

namespace korvex::test {
namespace {

using Overwrite = LayerStateQuestions::Overwrite;

class LayerStateBoxes : public ModuleTest {
protected:
    void SetUp() override {
        ModuleTest::SetUp();
        m_library = LoadResourceDll(builtFile("KvLayerManagerRes.dll").c_str());
        hxSetResourceHandle(m_library);
    }
    void TearDown() override {
        hxFreeResourceDll(m_library);
        ModuleTest::TearDown();
    }
    /// What is shown while `body` runs and the script's next lines answer.
    std::wstring ask(std::function<void(LayerStateQuestions&)> body, const std::wstring& answers) {
        define(L"ASK", [body] {
            KvLayerStateBoxes boxes;
            body(boxes);
        });
        return run(L"ASK\n" + answers);
    }

private:
    HxModuleHandle m_library = nullptr;
};

TEST_F(LayerStateBoxes, AnswersMeanWhatTheySay) {
    Overwrite one = Overwrite::cancel;
    Overwrite many = Overwrite::yes;
    bool restore = false;
    ask(
        [&](LayerStateQuestions& questions) {
            one = questions.mayOverwrite({L"a%d"});
            many = questions.mayOverwrite({L"a", L"b"});
            restore = questions.mayRestore(L"a");
        },
        L"No\nCancel\nYes\n");
    EXPECT_EQ(one, Overwrite::no);
    EXPECT_EQ(many, Overwrite::cancel);
    EXPECT_TRUE(restore);
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerStateBoxes, LongNamesAreCut) {
    const std::wstring shown = ask(
        [](LayerStateQuestions& questions) {
            questions.tellChangedNames({L"1", L"2", L"3", L"4", std::wstring(90, L'x')});
        },
        L"OK\n");
    EXPECT_TRUE(contains(shown, L"5 name(s) will not come back from it as they are: \"1\", \"2\", \"3\", "
                                L"\"4\", \"" +
                                    std::wstring(60, L'x') + L"\u2026\"."));
}

}  // namespace
}  // namespace korvex::test
