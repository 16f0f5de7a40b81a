// LAYISO and LAYUNISO with the built module: by commands, from the palette's menu, and in random walks.
#include "tests/module/manager_ui/palette_fixture.h"
#include "tests/walk_seed.h"

#include "sdk/hxdbdict.h"
#include "sdk/hxlystate.h"

#include <random>

namespace korvex::test {
namespace {

constexpr wchar_t kState[] = L"_LAYISO_STATE";

class IsolationCommands : public PaletteTest {
protected:
    bool isIsolated() { return database().getLayerStateManager()->hasLayerState(kState); }
    /// On or off, frozen, locked, of each layer; and the layout.
    std::wstring looks() {
        std::wstring text = std::wstring(hxdbLayoutManager()->getActiveLayoutName()) + L":";
        const HxDbObjectPointer<HxDbLayerTable> table(database().layerTableId(), HxDb::kForRead);
        HxDbSymbolTableIterator* steps = nullptr;
        table->newIterator(steps);
        for (const std::unique_ptr<HxDbSymbolTableIterator> owner(steps); !steps->done(); steps->step()) {
            const HxDbObjectPointer<HxDbLayerTableRecord> record(steps->getRecordId(), HxDb::kForRead);
            text += L" " + std::wstring(record->name()) + (record->isOff() ? L"-" : L"") +
                    (record->isFrozen() ? L"~" : L"") + (record->isLocked() ? L"+" : L"") +
                    (isFrozenInViewport(steps->getRecordId()) ? L"^" : L"");
        }
        return text;
    }
    static bool isFrozenInViewport(HxDbObjectId layer) {
        const HxDbObjectPointer<HxDbViewport> viewport(hxedGetCurViewportObjectId(), HxDb::kForRead);
        return viewport && viewport->isLayerFrozenInViewport(layer);
    }
    bool isOn(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForRead);
        return !record->isOff();
    }
    QByteArray withoutSeed() {
        QByteArray text = bytes();
        const int at = text.indexOf("$HANDSEED");
        return text.remove(at, text.indexOf("\n9\n", at) - at);
    }
};

TEST_F(IsolationCommands, AreOneUndoStepEach) {
    run(L"-LAYER\nOFF\nNOTES\nLOck\nTOP\n\n");
    const std::wstring looked = looks();
    const QByteArray before = withoutSeed();
    EXPECT_TRUE(contains(run(L"LAYISO\nNames\nWALLS\n"), L"1 layer isolated"));
    const std::wstring isolated = looks();
    EXPECT_TRUE(isOn(L"WALLS"));
    EXPECT_FALSE(isOn(L"OUTER"));
    run(L"LAYUNISO\n");
    EXPECT_EQ(looks(), looked);
    EXPECT_FALSE(isIsolated());
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYUNISO"));
    EXPECT_EQ(looks(), isolated);
    EXPECT_TRUE(isIsolated());
    EXPECT_TRUE(contains(run(L"U\n"), L"LAYISO"));
    EXPECT_TRUE(withoutSeed() == before);
    run(L"REDO\n1\n");
    EXPECT_EQ(looks(), isolated);
    EXPECT_EQ(failures, Lines());
}

TEST_F(IsolationCommands, GridsMenuIsolatesWhatIsSelected) {
    showPalette();
    const std::wstring looked = looks();
    const std::wstring menu = run(
        L"CLICK IDC_LIST_LAYERS_LIST \"WALLS,Name\"\nCLICK IDC_LIST_LAYERS_LIST Ctrl \"NOTES,Name\"\n"
        L"CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\nLOOK\nCHOOSE menu \"Isolate Selected Layers\"\n");
    EXPECT_TRUE(contains(menu, L"End Isolation")) << toUtf8(menu);
    ASSERT_EQ(failures, Lines());
    EXPECT_TRUE(isIsolated());
    EXPECT_TRUE(isOn(L"WALLS") && isOn(L"NOTES"));
    EXPECT_FALSE(isOn(L"OUTER"));
    run(L"CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\nCHOOSE menu \"End Isolation\"\n");
    EXPECT_EQ(looks(), looked);
    run(L"CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\nCHOOSE menu \"End Isolation\"\n");
    EXPECT_FALSE(failures.empty()) << "there is nothing to end";
}

TEST_F(IsolationCommands, GridsMenuTellsThatACommandRuns) {
    showPalette();
    EXPECT_TRUE(
        contains(run(L"CIRCLE\n'CLICK IDC_LIST_LAYERS_LIST right \"NOTES,Name\"\nCHOOSE menu \"Isolate "
                     L"Selected Layers\"\nOK\n0,0\n1\n"),
                 L"[OK]"));
    EXPECT_FALSE(isIsolated());
    EXPECT_EQ(failures, Lines());
}

/// One random step of a user's.
class Step {
public:
    explicit Step(std::mt19937& random) : m_random(random) {}
    std::wstring next() {
        switch (below(14)) {
        case 0: return L"LAYISO\nNames\n" + names() + L"\n";
        case 1: return L"LAYISO\n" + std::wstring(below(2) == 0 ? L"0,0\n\n" : L"305,4\n\n");
        case 2:
            return L"LAYISO\nSettings\n" + std::wstring(below(2) == 0 ? L"Off\n" : L"Lock\n") +
                   (below(2) == 0 ? L"Off\n" : L"Vpfreeze\n") + L"Names\n" + names() + L"\n";
        case 3:
        case 4: return L"LAYUNISO\n";
        case 5: return L"MODEL\n";
        case 6: return L"LAYOUT\nSet\nLayout1\n" + std::wstring(below(2) == 0 ? L"MSPACE\n" : L"PSPACE\n");
        case 7: return L"-LAYER\nOFF\n" + name() + L"\n\n";
        case 8: return L"-LAYER\nFreeze\n" + name() + L"\n\n";
        case 9: return L"-LAYER\nColor\n" + std::to_wstring(1 + below(255)) + L"\n" + name() + L"\n\n";
        case 10: return L"-LAYER\nMake\nNEW" + std::to_wstring(below(4)) + L"\n\n";
        case 11: return L"-LAYER\nRename\n" + name() + L"\nR" + std::to_wstring(below(3)) + L"\n\n";
        case 12: return L"-LAYER\nUnlock\n*\nSet\n" + name() + L"\n\n";
        default: return L"U\nREDO\n1\n";
        }
    }

private:
    unsigned below(unsigned count) { return static_cast<unsigned>(m_random()) % count; }
    std::wstring name() {
        static const wchar_t* const kNames[] = {L"WALLS", L"NOTES", L"TOP", L"OUTER",
                                                L"INNER", L"R1",    L"NEW1"};
        return kNames[below(7)];
    }
    std::wstring names() { return below(2) == 0 ? name() : name() + L"," + name(); }

    std::mt19937& m_random;
};

class IsolationWalk : public IsolationCommands {};

TEST_F(IsolationWalk, EndsInTheFirstBytesWhenAllIsUndone) {
    std::mt19937 random(walkSeed(15));
    showPalette();
    run(L"UNDO\nMark\n");
    const QByteArray before = withoutSeed();
    int isolations = 0;
    int ended = 0;
    std::wstring recorded;
    Step step(random);
    for (int i = 0; i < 150; ++i) {
        const std::wstring commands = step.next();
        const bool was = isIsolated();
        const std::wstring looked = looks();
        const std::wstring told = run(commands);
        failures.clear();  // refusals are part of the walk
        if (contains(told, L" isolated; ")) {
            ++isolations;
            run(L"LAYUNISO\n");
            EXPECT_EQ(looks(), looked) << i << ": " << toUtf8(commands);
            run(L"U\n");
            EXPECT_TRUE(isIsolated());
        }
        if (commands == L"LAYUNISO\n" && was) {
            ++ended;
            EXPECT_FALSE(isIsolated()) << toUtf8(told);
        }
        idle();
    }
    EXPECT_GT(isolations, 10);
    EXPECT_GT(ended, 3);
    run(L"UNDO\nBack\nYes\n");
    failures.clear();
    EXPECT_TRUE(withoutSeed() == before);
}

}  // namespace
}  // namespace korvex::test
