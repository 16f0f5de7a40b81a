// What boxes about layer states say, and which button means what.
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
    const std::wstring shown = ask(
        [&](LayerStateQuestions& questions) {
            one = questions.mayOverwrite({L"a%d"});
            many = questions.mayOverwrite({L"a", L"b"});
            restore = questions.mayRestore(L"a");
        },
        L"No\nCancel\nYes\n");
    EXPECT_EQ(one, Overwrite::no);
    EXPECT_EQ(many, Overwrite::cancel);
    EXPECT_TRUE(restore);
    EXPECT_TRUE(contains(shown, L"There is a layer state \"a%d\" already. Overwrite it?"));
    EXPECT_TRUE(contains(shown, L"2 layer states of these names are there already: \"a\", \"b\"."));
    EXPECT_TRUE(contains(shown, L"Layer state \"a\" was imported. Restore it now?"));
    EXPECT_EQ(failures, Lines());
}

TEST_F(LayerStateBoxes, FiveNamesAreToldAndTheOthersCounted) {
    const std::wstring shown = ask(
        [](LayerStateQuestions& questions) {
            questions.tellChangedNames({L"1", L"2", L"3", L"4", std::wstring(90, L'x')});
            questions.tellMissingLinetypes({L"1", L"2", L"3", L"4", L"%1", L"6", L"7"});
        },
        L"OK\nOK\n");
    EXPECT_TRUE(contains(shown, L"5 name(s) will not come back from it as they are: \"1\", \"2\", \"3\", "
                                L"\"4\", \"" +
                                    std::wstring(60, L'x') + L"\u2026\"."));
    EXPECT_TRUE(contains(shown, L"\"1\", \"2\", \"3\", \"4\", \"%1\" and 2 more."));
}

TEST_F(LayerStateBoxes, FailuresNameFileAndLine) {
    const std::wstring shown = ask(
        [](LayerStateQuestions& questions) {
            questions.tellNotImported(L"/x/a.las", {KvLasFailure::otherLine, 3, L"91"});
            questions.tellNotImported(L"/x/b.las", {KvLasFailure::cannotRead, 0, L"No such file"});
            questions.tellNoStates(L"/x/c.dxf", L"");
            questions.tellNotExported(L"/x/d.las", L"Permission denied");
            questions.tellBrokenName(L"A\nB");
        },
        L"OK\nOK\nOK\nOK\nOK\n");
    EXPECT_TRUE(contains(shown, L"No layer state was imported from \"/x/a.las\": Line 3 should be \"91\"."));
    EXPECT_TRUE(contains(shown, L"from \"/x/b.las\": No such file"));
    EXPECT_TRUE(contains(shown, L"No layer states can be imported from \"/x/c.dxf\": The drawing has none."));
    EXPECT_TRUE(contains(shown, L"The file \"/x/d.las\" was not written: Permission denied"));
    EXPECT_TRUE(contains(shown, L"the name \"A B\" holds a line break"));
}

}  // namespace
}  // namespace korvex::test
