// The tree of a drawing's filters: what is read, what each accepts, names, nesting, ownership.
#include "tests/db/filters/filter_support.h"

namespace korvex::test {

namespace {

class FilterTree : public FilterTest {};

class NoFilters : public FilterTest {
protected:
    NoFilters() : FilterTest(planDrawing()) {}
};

constexpr char kWhole[] =
    "<All(<AllUsed, <AllNonXref, <XrefRoot, Red(Off ones), Doors, Other, Thick walls, Thawed)";

}  // namespace

TEST_F(FilterTree, IsReadAsTheDrawingHoldsIt) {
    EXPECT_EQ(shape(), kWhole);
    EXPECT_EQ(current, tree.get());
    EXPECT_EQ(filter(L"Red").filterExpression(), LR"(COLOR=="1" AND NAME=="*")");
    EXPECT_EQ(filter(L"Off ones").parent(), &filter(L"Red"));
    EXPECT_EQ(filter(L"Thick walls").filterExpression(), LR"(NAME=="*WALL*" AND LINEWEIGHT=="0.50 mm")");
    EXPECT_TRUE(filter(L"Other").isProxy());
    EXPECT_TRUE(filter(L"Thawed").isProxy()) << "what the bits of its states mean is not known";
    HxArray<HxDbObjectId> ids;
    group(L"Doors").layerIds(ids);
    ASSERT_EQ(ids.length(), 2);
    EXPECT_EQ(ids[0], layer(L"DOORS"));
    EXPECT_EQ(ids[1], layer(L"EMPTY"));
}

TEST_F(FilterTree, EachKindAcceptsItsLayers) {
    change<HxDbLayerTable>(database->layerTableId(), [](HxDbLayerTable& t) { t.generateUsageData(); });
    EXPECT_EQ(accepted(*tree), "0 WALLS DOORS PIPE|VALVE Defpoints EMPTY ");
    EXPECT_EQ(accepted(filter(L"<AllUsed")), "0 WALLS DOORS Defpoints ");
    EXPECT_EQ(accepted(filter(L"<AllNonXref")), "0 WALLS DOORS Defpoints EMPTY ");
    EXPECT_EQ(accepted(filter(L"<XrefRoot")), "PIPE|VALVE ");
    EXPECT_EQ(accepted(filter(L"Red")), "WALLS ");
    EXPECT_EQ(accepted(filter(L"Doors")), "DOORS EMPTY ");
    EXPECT_EQ(accepted(filter(L"Other")), "");
    EXPECT_EQ(accepted(filter(L"Off ones")), "");
    EXPECT_FALSE(tree->filter(nullptr));
}

TEST_F(FilterTree, WhatIsNestedNarrowsDown) {
    change<HxDbLayerTableRecord>(layer(L"WALLS"), [](HxDbLayerTableRecord& l) { l.setIsOff(true); });
    change<HxDbLayerTableRecord>(layer(L"EMPTY"), [](HxDbLayerTableRecord& l) { l.setIsOff(true); });
    EXPECT_EQ(accepted(filter(L"Off ones")), "WALLS ") << "EMPTY is not red";
    add(group(L"Doors"), L"Off doors", LR"(OFF=="True")");
    EXPECT_EQ(accepted(filter(L"Off doors")), "EMPTY ");
}

TEST_F(FilterTree, KindsAllowWhatSuitsThem) {
    const struct {
        const wchar_t* name;
        HxLyLayerFilter::Kind kind;
        bool canRename;
        bool canDelete;
        bool canNest;
    } cases[] = {
        {L"<All", HxLyLayerFilter::kAll, false, false, true},
        {L"<AllUsed", HxLyLayerFilter::kAllUsed, false, false, false},
        {L"<AllNonXref", HxLyLayerFilter::kAllNonXref, false, false, false},
        {L"<XrefRoot", HxLyLayerFilter::kXrefRoot, false, false, false},
        {L"Red", HxLyLayerFilter::kProperty, true, true, true},
        {L"Doors", HxLyLayerFilter::kGroup, true, true, true},
        {L"Other", HxLyLayerFilter::kProxy, false, true, false},
    };
    for (const auto& c : cases) {
        HxLyLayerFilter& it = filter(c.name);
        EXPECT_EQ(it.kind(), c.kind) << toUtf8(c.name);
        EXPECT_EQ(it.allowRename(), c.canRename) << toUtf8(c.name);
        EXPECT_EQ(it.allowDelete(), c.canDelete) << toUtf8(c.name);
        EXPECT_EQ(it.allowNested(), c.canNest) << toUtf8(c.name);
        EXPECT_EQ(it.isIdFilter(), c.kind == HxLyLayerFilter::kGroup);
        auto* more = new HxLyLayerFilter;
        EXPECT_EQ(more->setName(L"More"), Hx::eOk);
        EXPECT_EQ(it.addNested(more), c.canNest ? Hx::eOk : Hx::eRefused) << toUtf8(c.name);
        delete more;
        EXPECT_EQ(it.setName(L"Renamed"), c.canRename ? Hx::eOk : Hx::eRefused) << toUtf8(c.name);
        EXPECT_EQ(it.setName(c.name), c.canRename ? Hx::eOk : Hx::eRefused) << toUtf8(c.name);
        EXPECT_EQ(it.setFilterExpression(L""),
                  c.kind == HxLyLayerFilter::kProperty ? Hx::eOk : Hx::eNotApplicable);
    }
    EXPECT_EQ(tree->removeNested(&filter(L"<AllUsed")), Hx::eRefused);
    EXPECT_EQ(shape(), kWhole) << "deleted filters took themselves out";
}

TEST_F(FilterTree, NamesAreUniqueInTheTree) {
    HxLyLayerFilter& red = filter(L"Red");
    EXPECT_EQ(red.setName(L"doors"), Hx::eDuplicateKey);
    EXPECT_EQ(red.setName(L"OFF ONES"), Hx::eDuplicateKey) << "nested in itself";
    EXPECT_EQ(red.setName(L"RED"), Hx::eOk) << "its own, in other case";
    for (const std::wstring& bad :
         {std::wstring(), std::wstring(L"<mine"), std::wstring(L"a\nb"), std::wstring(256, L'x')}) {
        EXPECT_EQ(red.setName(bad.c_str()), Hx::eInvalidInput);
    }
    EXPECT_EQ(red.setName(nullptr), Hx::eInvalidInput);
    EXPECT_EQ(red.name(), L"RED");

    HxLyLayerFilter outer;
    ASSERT_EQ(outer.setName(L"Outer"), Hx::eOk);
    add(outer, L"Doors", L"");
    EXPECT_EQ(tree->addNested(&outer), Hx::eDuplicateKey) << "what is nested in it counts";
    EXPECT_EQ(outer.parent(), nullptr);
    EXPECT_EQ(find(&outer, L"Doors")->addNested(&outer), Hx::eInvalidInput) << "no rings";
    HxLyLayerFilter nameless;
    EXPECT_EQ(tree->addNested(&nameless), Hx::eInvalidInput);
    EXPECT_EQ(tree->addNested(&red), Hx::eInvalidInput) << "it has a parent";
    EXPECT_EQ(tree->addNested(nullptr), Hx::eInvalidInput);
    EXPECT_EQ(tree->removeNested(&filter(L"Off ones")), Hx::eInvalidInput) << "it is nested elsewhere";
}

TEST_F(FilterTree, GroupsKnowTheirLayers) {
    HxLyLayerGroup& doors = group(L"Doors");
    EXPECT_EQ(doors.addLayerId(layer(L"WALLS")), Hx::eOk);
    EXPECT_EQ(doors.addLayerId(layer(L"WALLS")), Hx::eDuplicateKey);
    EXPECT_EQ(doors.addLayerId({}), Hx::eNullObjectId);
    EXPECT_EQ(doors.addLayerId(id(0x40)), Hx::eWrongClass);
    const HxDbDatabase other;
    EXPECT_EQ(doors.addLayerId(other.layerZero()), Hx::eInvalidInput);
    HxLyLayerGroup foreign;
    ASSERT_EQ(foreign.setName(L"Foreign"), Hx::eOk);
    ASSERT_EQ(foreign.addLayerId(other.layerZero()), Hx::eOk);
    EXPECT_EQ(foreign.addLayerId(layer(L"WALLS")), Hx::eInvalidInput);
    EXPECT_EQ(tree->addNested(&foreign), Hx::eInvalidInput);
    EXPECT_EQ(doors.removeLayerId(layer(L"DOORS")), Hx::eOk);
    EXPECT_EQ(doors.removeLayerId(layer(L"DOORS")), Hx::eKeyNotFound);
    EXPECT_TRUE(doors.containsLayerId(layer(L"WALLS")));
    EXPECT_EQ(accepted(doors), "WALLS EMPTY ");
}

TEST_F(FilterTree, ErasedLayersAreOutOfTheirGroupsUntilTheyComeBack) {
    HxLyLayerGroup& doors = group(L"Doors");
    const HxDbObjectId empty = layer(L"EMPTY");
    HxArray<HxDbObjectId> ids;
    step(L"ERASE", [&] { erase(empty); });
    doors.layerIds(ids);
    EXPECT_EQ(ids.length(), 1);
    EXPECT_FALSE(doors.containsLayerId(empty));
    EXPECT_EQ(doors.addLayerId(empty), Hx::eWasErased);
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_EQ(journal().undoCount(), 1U) << "storing wrote nothing";
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(doors.containsLayerId(empty));
}

TEST_F(FilterTree, OutlivesWhatHappensToTheDrawing) {
    change<HxDbDictionary>(id(0xA0), [](HxDbDictionary& extension) {
        ASSERT_EQ(extension.remove(L"ACLYDICTIONARY"), Hx::eOk);
        ASSERT_EQ(extension.remove(L"ACAD_LAYERFILTERS"), Hx::eOk);
    });
    EXPECT_EQ(shape(), kWhole);
    EXPECT_EQ(accepted(filter(L"Red")), "WALLS ");
    load();
    EXPECT_EQ(shape(), "<All(<AllUsed, <AllNonXref, <XrefRoot)");
    ASSERT_EQ(journal().undo(), Hx::eOk);
    load();
    EXPECT_EQ(shape(), kWhole);
}

TEST_F(NoFilters, GiveTheSystemsOwnAndAreNotWrittenForThem) {
    const std::string before = saved();
    EXPECT_EQ(shape(), "<All(<AllUsed, <AllNonXref, <XrefRoot)");
    EXPECT_EQ(current, tree.get());
    EXPECT_EQ(store(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(journal().undoCount(), 0U);
}

}  // namespace korvex::test
