// References to erased objects: not in the file, but back with their objects.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class ErasedReferences : public KernelTest {
protected:
    HxDbObjectId walls = layer(L"WALLS");
    HxDbObjectId doors = layer(L"DOORS");
};

}  // namespace

TEST_F(ErasedReferences, AreNotWrittenWhereNothingElseChanged) {
    const std::string before = saved();
    step(L"ERASE", [&] {
        erase(id(0x91));
        erase(doors);
        erase(id(0x80));
    });
    EXPECT_TRUE(has(record(0x90), "281 1 | 3 Sizes | 360 92"));
    EXPECT_FALSE(has(record(0x90), "360 91"));
    EXPECT_TRUE(has(record(0x61), "45 200.0 | 331 FF | 90 0"));
    EXPECT_TRUE(has(record(0x11), "5 11 | 330 2 |"));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(ErasedReferences, ComeBackWithTheirObjects) {
    const std::string before = saved();
    const auto add = [&](const wchar_t* name) {
        HxDbObjectId added;
        change<HxDbDictionary>(id(0x90), [&](HxDbDictionary& dictionary) {
            auto* record = new HxDbXrecord;
            ASSERT_EQ(dictionary.setAt(name, record, added), Hx::eOk);
            record->close();
        });
        return added;
    };
    const auto freeze = [&](HxDbObjectId layer) {
        HxArray<HxDbObjectId> layers;
        layers.append(layer);
        change<HxDbViewport>(id(0x61), [&](HxDbViewport& viewport) {
            EXPECT_EQ(viewport.freezeLayersInViewport(layers), Hx::eOk);
        });
    };
    HxDbObjectId names;
    step(L"CHANGE", [&] {
        names = add(L"Names");
        freeze(walls);
        recolor(walls, 6);
    });
    step(L"ERASE", [&] {
        erase(names);
        erase(doors);
        erase(id(0x80));
    });
    step(L"CHANGE", [&] {
        add(L"Weights");
        freeze(layer(L"EMPTY"));
        recolor(walls, 5);
    });
    EXPECT_FALSE(has(record(0x11), "{ACAD_XDICTIONARY"));
    EXPECT_FALSE(has(record(0x61), "331 12"));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(at<HxDbDictionary>(id(0x90))->has(L"Names"));
    EXPECT_TRUE(at<HxDbViewport>(id(0x61))->isLayerFrozenInViewport(doors));
    EXPECT_EQ(hxdbObjectPointer(walls)->extensionDictionary(), id(0x80));
    EXPECT_TRUE(has(record(0x11), "102 {ACAD_XDICTIONARY | 360 80 | 102 } |"));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

}  // namespace korvex::test
