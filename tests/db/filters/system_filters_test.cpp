// Filters that the drawing brings along: those of its references, and that of overrides.
#include "host/editor/xrefs.h"
#include "tests/db/filters/filter_support.h"

#include <QTemporaryDir>

namespace korvex::test {

namespace {

class SystemFilters : public FilterTest {
protected:
    SystemFilters() { putFile(folder.filePath("wing.dxf").toStdString(), planDrawing()); }
    HxDbObjectId attach(const wchar_t* name) {
        HxDbObjectId block;
        std::wstring error;
        EXPECT_EQ(
            attachXref(*database, folder.filePath("wing.dxf").toStdWString(), name, false, block, error),
            Hx::eOk)
            << toUtf8(error);
        return block;
    }
    std::string references() const { return shapeOf(filter(L"<XrefRoot")); }

    QTemporaryDir folder;
};

}  // namespace

TEST_F(SystemFilters, OneForEachReference) {
    EXPECT_EQ(references(), "<XrefRoot");
    const HxDbObjectId wing = attach(L"WING");
    EXPECT_EQ(references(), "<XrefRoot") << "a tree does not follow by itself";
    ASSERT_EQ(tree->generateNested(), Hx::eOk);
    EXPECT_EQ(references(), "<XrefRoot(WING)");
    HxLyLayerFilter* first = &filter(L"WING");
    EXPECT_EQ(first->kind(), HxLyLayerFilter::kXref);
    EXPECT_TRUE(first->dynamicallyGenerated());
    EXPECT_FALSE(first->allowDelete() || first->allowRename() || first->allowNested());
    EXPECT_EQ(accepted(*first), "WING|WALLS WING|DOORS WING|PIPE|VALVE WING|Defpoints WING|EMPTY ");

    attach(L"WING2");
    ASSERT_EQ(filter(L"<XrefRoot").generateNested(), Hx::eOk);
    EXPECT_EQ(references(), "<XrefRoot(WING, WING2)");
    EXPECT_EQ(&filter(L"WING"), first) << "it stayed where it was";
    EXPECT_FALSE(has(accepted(*first), "WING2"));
    ASSERT_EQ(detachXref(*database, wing), Hx::eOk);
    ASSERT_EQ(tree->generateNested(), Hx::eOk);
    EXPECT_EQ(references(), "<XrefRoot(WING2)");
    load();
    EXPECT_EQ(references(), "<XrefRoot(WING2)");
    EXPECT_EQ(filter(L"Red").generateNested(), Hx::eNotApplicable);
}

TEST_F(SystemFilters, AReferencesFilterCanBeTheSelectedOne) {
    const HxDbObjectId wing = attach(L"WING");
    load();
    current = &filter(L"WING");
    ASSERT_EQ(store(), Hx::eOk);
    load();
    EXPECT_EQ(current, &filter(L"WING"));
    ASSERT_EQ(detachXref(*database, wing), Hx::eOk);
    load();
    EXPECT_EQ(current, tree.get());
}

TEST_F(SystemFilters, OverridesShowInALayoutOnly) {
    const auto hasNode = [&] { return find(tree.get(), L"<ViewportOverrides") != nullptr; };
    EXPECT_FALSE(hasNode());
    ASSERT_EQ(database->setTilemode(false), Hx::eOk);
    ASSERT_EQ(database->setCvport(2), Hx::eOk);
    ASSERT_EQ(tree->generateNested(), Hx::eOk);
    EXPECT_EQ(shape(),
              "<All(<AllUsed, <AllNonXref, <XrefRoot, <ViewportOverrides, Red(Off ones), Doors, Other, "
              "Thick walls, Thawed)");
    EXPECT_EQ(accepted(filter(L"<ViewportOverrides")), "WALLS ");
    EXPECT_EQ(store(), Hx::eOk);
    EXPECT_FALSE(has(saved(), "ViewportOverrides")) << "it is made, not stored";
    change<HxDbLayerTableRecord>(layer(L"WALLS"),
                                 [](HxDbLayerTableRecord& l) { ASSERT_EQ(l.removeAllOverrides(), Hx::eOk); });
    ASSERT_EQ(tree->generateNested(), Hx::eOk);
    EXPECT_FALSE(hasNode());
}

}  // namespace korvex::test
