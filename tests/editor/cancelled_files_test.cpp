// OPEN and SAVE that the user gives up say so and change nothing; they are no failures.
#include "host/base/progress.h"
#include "tests/editor/editor_fixture.h"

namespace korvex::test {
namespace {

/// Gives up when a part of the work is done.
class Impatience : public ProgressListener {
public:
    explicit Impatience(double until) : m_until(until) { setProgressListener(this); }
    ~Impatience() override { setProgressListener(nullptr); }
    void begin(const std::wstring& label, bool) override { shownLabel = label; }
    bool step(double part) override { return part < m_until; }
    void end() override {}
    std::wstring shownLabel;

private:
    double m_until;
};

using CancelledFilesTest = EditorTest;

TEST_F(CancelledFilesTest, OpenLeavesTheOpenDrawingsAlone) {
    ASSERT_TRUE(contains(run(L"SAVEAS " + path("plan.dxf") + L"\nCLOSE\nNEW\n"), L"Saved"));
    HxApDocument* const before = curDoc();
    const int count = hxDocManager()->documentCount();
    for (const double until : {0.0, 0.1, 0.5, 0.79}) {
        const Impatience user(until);
        Recorder recorder;
        const std::wstring shown = run(L"OPEN " + path("plan.dxf") + L"\n");
        EXPECT_EQ(user.shownLabel, L"Opening \"plan.dxf\"");
        EXPECT_TRUE(contains(shown, L"was not opened: cancelled.")) << until;
        EXPECT_EQ(recorder.log.back(), L"cancel OPEN");
    }
    EXPECT_TRUE(failures.empty());
    EXPECT_EQ(curDoc(), before);
    EXPECT_EQ(hxDocManager()->documentCount(), count);
    EXPECT_TRUE(contains(run(L"OPEN " + path("plan.dxf") + L"\n"), L"Opened"));
}

TEST_F(CancelledFilesTest, OpenIsGivenUpWithAReferenceOfTheDrawing) {
    run(L"SAVEAS " + path("part.dxf") + L"\nCLOSE\nNEW\n");
    run(L"XREF Attach " + path("part.dxf") + L"\n0,0\n1\n1\n0\n");
    ASSERT_TRUE(contains(run(L"SAVEAS " + path("whole.dxf") + L"\n"), L"Saved"));
    run(L"CLOSE\nNEW\n");
    const int count = hxDocManager()->documentCount();
    {
        const Impatience user(0.81);  // the drawing is read, its references are not
        EXPECT_TRUE(contains(run(L"OPEN " + path("whole.dxf") + L"\n"), L"was not opened: cancelled."));
    }
    EXPECT_EQ(hxDocManager()->documentCount(), count);
    EXPECT_TRUE(contains(run(L"OPEN " + path("whole.dxf") + L"\n"), L"Opened"));
    {
        const Impatience user(0);
        EXPECT_TRUE(contains(run(L"XREF Reload part\n"), L"was not reloaded: cancelled."));
    }
    EXPECT_TRUE(failures.empty()) << std::string(failures[0].begin(), failures[0].end());
}

TEST_F(CancelledFilesTest, SaveKeepsTheChanges) {
    run(L"SAVEAS " + path("plan.dxf") + L"\n-LAYER Make A\n\n");
    for (const double until : {0.0, 0.3, 0.9}) {
        const Impatience user(until);
        EXPECT_TRUE(contains(run(L"SAVE\n"), L"was not saved: cancelled: the file is as it was."));
        EXPECT_TRUE(database().isModified());
    }
    EXPECT_TRUE(failures.empty());
    EXPECT_TRUE(contains(run(L"SAVE\n"), L"Saved"));
    EXPECT_FALSE(database().isModified());
}

}  // namespace
}  // namespace korvex::test
