// The plan of the kernel's tests with layer filters in it, as drawings from elsewhere hold them.
#pragma once

#include "sdk/hxlyfilter.h"
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

/// Tree: Red (A3), in it Off ones (B2); the group Doors (A4) with DOORS, EMPTY and a handle of nothing; a
/// filter of another maker (A5). Older ones: Red again (A7), Thick walls (A8), one that asks for states (A9).
inline std::string filterDrawing() {
    std::string text = planDrawing();
    const auto put = [&](const std::string& before, const std::string& groups) {
        text.insert(text.find(drawing(before)), drawing(groups));
    };
    const std::string table = drawing("5 2 | 330 0 | 100 AcDbSymbolTable | 70 6");
    text.replace(text.find(table), drawing("5 2").size(),
                 drawing("5 2 | 102 {ACAD_XDICTIONARY | 360 A0 | 102 }"));
    put("0 ENDSEC | 0 EOF", R"(
0 DICTIONARY | 5 A0 | 330 2 | 100 AcDbDictionary | 280 1 | 281 1 | 3 ACAD_LAYERFILTERS | 360 A1 | 3 ACLYDICTIONARY | 360 A2
0 DICTIONARY | 5 A1 | 102 {ACAD_REACTORS | 330 A0 | 102 } | 330 A0 | 100 AcDbDictionary | 281 1 | 3 Red | 350 A7 | 3 Thick walls | 350 A8 | 3 Thawed | 350 A9
0 DICTIONARY | 5 A2 | 102 {ACAD_REACTORS | 330 A0 | 102 } | 330 A0 | 100 AcDbDictionary | 281 1 | 3 *A1 | 350 A3 | 3 *A2 | 350 A4 | 3 *A3 | 350 A5 | 1001 ACAD | 1000 <All
0 XRECORD | 5 A3 | 102 {ACAD_REACTORS | 330 A2 | 102 } | 102 {ACAD_XDICTIONARY | 360 B0 | 102 } | 330 A2 | 100 AcDbXrecord | 280     1 | 1 AcLyLayerFilter | 90        1 | 300 Red | 301 COLOR=="1" AND NAME=="*" | 62     3
0 XRECORD | 5 A4 | 330 A2 | 100 AcDbXrecord | 280     1 | 1 AcLyLayerGroup | 90        1 | 300 Doors | 330 12 | 330 FE | 330 15
0 XRECORD | 5 A5 | 330 A2 | 100 AcDbXrecord | 280     1 | 1 OtherMakersFilter | 90        7 | 300 Other | 40 1.50 | 310 00FF
0 DICTIONARY | 5 B0 | 330 A3 | 100 AcDbDictionary | 280 1 | 281 1 | 3 ACLYDICTIONARY | 360 B1
0 DICTIONARY | 5 B1 | 330 B0 | 100 AcDbDictionary | 281 1 | 3 *A1 | 350 B2
0 XRECORD | 5 B2 | 330 B1 | 100 AcDbXrecord | 280     1 | 1 AcLyLayerFilter | 90        1 | 300 Off ones | 301 OFF=="True"
0 XRECORD | 5 A7 | 330 A1 | 100 AcDbXrecord | 280     1 | 1 Red | 1 * | 1 1 | 1 * | 70      0 | 1 * | 1 *
0 XRECORD | 5 A8 | 330 A1 | 100 AcDbXrecord | 280     1 | 1 Thick walls | 1 *WALL* | 1 * | 1 * | 70      0 | 1 0.50 mm | 1 *
0 XRECORD | 5 A9 | 330 A1 | 100 AcDbXrecord | 280     1 | 1 Thawed | 1 * | 1 * | 1 * | 70      8 | 1 * | 1 *
)");
    return text;
}

/// A drawing and its filters.
class FilterTest : public KernelTest {
protected:
    explicit FilterTest(const std::string& bytes = filterDrawing()) : KernelTest(bytes) { load(); }

    void load() {
        tree.reset();
        HxLyLayerFilter* root = nullptr;
        ASSERT_EQ(database->layerFilterManager()->getFilters(root, current), Hx::eOk);
        tree.reset(root);
    }
    Hx::ErrorStatus store() { return database->layerFilterManager()->setFilters(tree.get(), current); }

    static HxLyLayerFilter* find(HxLyLayerFilter* from, const wchar_t* name) {
        if (from->name() == name) {
            return from;
        }
        for (HxLyLayerFilter* nested : from->getNestedFilters()) {
            if (HxLyLayerFilter* found = find(nested, name)) {
                return found;
            }
        }
        return nullptr;
    }
    HxLyLayerFilter& filter(const wchar_t* name) const {
        HxLyLayerFilter* found = find(tree.get(), name);
        EXPECT_TRUE(found) << toUtf8(name);
        return found ? *found : *tree;
    }
    HxLyLayerGroup& group(const wchar_t* name) const { return *HxLyLayerGroup::cast(&filter(name)); }
    HxLyLayerFilter& add(HxLyLayerFilter& parent, const wchar_t* name, const wchar_t* expression) {
        auto* made = new HxLyLayerFilter;
        EXPECT_EQ(made->setName(name), Hx::eOk);
        EXPECT_EQ(made->setFilterExpression(expression), Hx::eOk);
        EXPECT_EQ(parent.addNested(made), Hx::eOk);
        return *made;
    }
    void remove(const wchar_t* name) {
        HxLyLayerFilter& gone = filter(name);
        ASSERT_EQ(gone.parent()->removeNested(&gone), Hx::eOk);
        delete &gone;
    }

    /// "<All(<AllUsed <AllNonXref <XrefRoot Red(Off_ones) ...)".
    std::string shape() const { return shapeOf(*tree); }
    static std::string shapeOf(const HxLyLayerFilter& filter) {
        std::string text = toUtf8(filter.name());
        std::string inside;
        for (const HxLyLayerFilter* nested : filter.getNestedFilters()) {
            inside += (inside.empty() ? "" : ", ") + shapeOf(*nested);
        }
        return inside.empty() ? text : text + "(" + inside + ")";
    }
    /// Names of the layers that pass, in drawing order, each with a blank behind.
    std::string accepted(const HxLyLayerFilter& filter) const {
        std::string names;
        for (HxDbStub* stub : members(*database->layerTableId().stub())) {
            const auto* layer = at<HxDbLayerTableRecord>(HxDbObjectId(stub));
            names += !stub->erased && filter.filter(layer) ? toUtf8(layer->name()) + " " : "";
        }
        return names;
    }

    std::unique_ptr<HxLyLayerFilter> tree;
    HxLyLayerFilter* current = nullptr;
};

}  // namespace korvex::test
