// Storing filters: what is written, what stays as it was, undo, and drawings that are odd.
#include "tests/db/filters/filter_support.h"

namespace korvex::test {

namespace {

class FilterStorage : public FilterTest {
protected:
    /// Stores, looks at what was written, and takes it back: the drawing is what it was, byte for byte.
    template <class Look>
    void storeAndUndo(Look look) {
        const std::string before = saved();
        const std::size_t steps = journal().undoCount();
        ASSERT_EQ(store(), Hx::eOk);
        ASSERT_EQ(journal().undoCount(), steps + 1);
        const std::string expected = shape();
        const std::string written = saved();
        load();
        EXPECT_EQ(shape(), expected) << "as stored";
        look();
        const std::unique_ptr<HxDbDatabase> again = opened(written);
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        ASSERT_EQ(again->layerFilterManager()->getFilters(root, selected), Hx::eOk);
        EXPECT_EQ(shapeOf(*root), expected) << "as read from the file";
        EXPECT_EQ(selected->name(), current->name());
        delete root;
        ASSERT_EQ(journal().undo(), Hx::eOk);
        EXPECT_EQ(saved(), before);
        ASSERT_EQ(journal().redo(), Hx::eOk);
        EXPECT_EQ(saved(), written);
    }
};

class FiltersOfR12 : public FilterTest {
protected:
    FiltersOfR12() : FilterTest(oldDrawing()) {}
};

class NewFilters : public FilterTest {
protected:
    NewFilters() : FilterTest(planDrawing()) {}
};

std::string lines(const std::string& pairs) { return drawing(pairs); }

}  // namespace

TEST_F(FilterStorage, NothingChangedWritesNothing) {
    const std::string before = saved();
    EXPECT_EQ(before, filterDrawing());
    EXPECT_EQ(store(), Hx::eOk);
    EXPECT_EQ(store(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(journal().undoCount(), 0U);
    EXPECT_FALSE(database->isModified());
}

TEST_F(FilterStorage, ARenameChangesOneGroupAndTheOlderCopyGoes) {
    ASSERT_EQ(filter(L"Doors").setName(L"Gates"), Hx::eOk);
    const std::string before = saved();
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), std::vector<std::string>{"Doors > Gates"})
        << "layers did not change: the handle of nothing is still there";
    ASSERT_EQ(journal().undo(), Hx::eOk);
    load();
    ASSERT_EQ(filter(L"Red").setName(L"Scarlet"), Hx::eOk);
    storeAndUndo([&] {
        EXPECT_TRUE(id(0xA7).isErased());
        EXPECT_TRUE(has(record(0xA3), "300 Scarlet | 301 COLOR==\"1\" AND NAME==\"*\" | 62 3"))
            << record(0xA3);
        EXPECT_EQ(filter(L"Off ones").parent(), &filter(L"Scarlet"));
    });
}

TEST_F(FilterStorage, ChangesOfExpressionAndLayers) {
    ASSERT_EQ(filter(L"Off ones").setFilterExpression(L"OFF==\"False\""), Hx::eOk);
    ASSERT_EQ(group(L"Doors").addLayerId(layer(L"WALLS")), Hx::eOk);
    ASSERT_EQ(group(L"Doors").removeLayerId(layer(L"EMPTY")), Hx::eOk);
    storeAndUndo([&] {
        EXPECT_TRUE(has(record(0xB2), "301 OFF==\"False\"")) << record(0xB2);
        EXPECT_TRUE(has(record(0xA4), "300 Doors | 330 12 | 330 11")) << record(0xA4);
        EXPECT_FALSE(has(record(0xA4), "FE"));
        EXPECT_EQ(accepted(filter(L"Off ones")), "WALLS ");
    });
}

TEST_F(FilterStorage, AddingOnAllLevels) {
    HxLyLayerFilter& thick = add(filter(L"Off ones"), L"Thick", L"LINEWEIGHT>=\"0.5\"");
    auto* own = new HxLyLayerGroup;
    ASSERT_EQ(own->setName(L"Own"), Hx::eOk);
    ASSERT_EQ(own->addLayerId(layer(L"0")), Hx::eOk);
    ASSERT_EQ(thick.addNested(own), Hx::eOk);
    add(*tree, L"Last", L"");
    current = own;
    storeAndUndo([&] {
        EXPECT_EQ(accepted(filter(L"Last")), accepted(*tree));
        EXPECT_EQ(current, &filter(L"Own"));
        EXPECT_TRUE(has(record(0xA2), "3 *A3 | 350 A5 | 3 *A4 | 350 ")) << record(0xA2);
    });
}

TEST_F(FilterStorage, DeletingTakesNestedOnesAndTheOlderCopyAlong) {
    remove(L"Red");
    remove(L"Other");
    remove(L"Thawed");
    storeAndUndo([&] {
        for (const std::uint64_t handle : {0xA3U, 0xA5U, 0xA7U, 0xA9U, 0xB0U, 0xB1U, 0xB2U}) {
            EXPECT_EQ(record(handle), "") << std::hex << handle;
        }
        EXPECT_TRUE(has(record(0xA2), "281 1 | 3 *A2 | 350 A4 | 1001 ACAD")) << record(0xA2);
        EXPECT_TRUE(has(record(0xA1), "281 1 | 3 Thick walls | 350 A8")) << record(0xA1);
    });
}

TEST_F(FilterStorage, MovingCopiesWhatIsNotUnderstood) {
    HxLyLayerFilter& red = filter(L"Red");
    HxLyLayerFilter& other = filter(L"Other");
    ASSERT_EQ(tree->removeNested(&red), Hx::eOk);
    ASSERT_EQ(filter(L"Doors").addNested(&red), Hx::eOk);
    ASSERT_EQ(tree->removeNested(&other), Hx::eOk);
    ASSERT_EQ(red.addNested(&other), Hx::eOk);
    storeAndUndo([&] {
        EXPECT_EQ(shapeOf(filter(L"Doors")), "Doors(Red(Off ones, Other))");
        EXPECT_EQ(record(0xA3) + record(0xA5) + record(0xB2), "");
        const std::string all = saved();
        EXPECT_TRUE(has(all, lines("300 Other | 40 1.50 | 310 00FF")));
        EXPECT_TRUE(has(all, lines("301 COLOR==\"1\" AND NAME==\"*\" | 62     3")));
    });
}

TEST_F(FilterStorage, ConvertingToAGroup) {
    remove(L"Doors");
    auto* converted = new HxLyLayerGroup;
    ASSERT_EQ(converted->setName(L"Doors"), Hx::eOk);
    ASSERT_EQ(converted->addLayerId(layer(L"WALLS")), Hx::eOk);
    ASSERT_EQ(tree->addNested(converted), Hx::eOk);
    current = converted;
    storeAndUndo([&] { EXPECT_EQ(accepted(filter(L"Doors")), "WALLS "); });
}

TEST_F(FilterStorage, OlderFiltersBecomeRecordsOfTheTreeWhenTheyChange) {
    ASSERT_EQ(filter(L"Thick walls").setFilterExpression(L"NAME==\"W*\""), Hx::eOk);
    storeAndUndo([&] {
        EXPECT_TRUE(id(0xA8).isErased());
        EXPECT_EQ(filter(L"Thick walls").filterExpression(), L"NAME==\"W*\"");
    });
}

TEST_F(FilterStorage, OlderFiltersBecomeRecordsOfTheTreeWhenSomethingIsNestedInThem) {
    add(filter(L"Thick walls"), L"In it", L"");
    storeAndUndo([&] { EXPECT_EQ(filter(L"In it").parent(), &filter(L"Thick walls")); });
}

TEST_F(FilterStorage, TheSelectedFilterIsMarkedAndNamed) {
    current = &filter(L"Red");
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_TRUE(has(record(0xA3), "280 1 | 290 1 | 1 AcLyLayerFilter")) << record(0xA3);
    EXPECT_TRUE(has(saved(), lines("100 AcDbSymbolTable | 70 6 | 1001 ACAD | 1000 Red")));
    EXPECT_TRUE(has(record(0xA2), "1001 ACAD | 1000 Red"));
    load();
    EXPECT_EQ(current, &filter(L"Red"));

    current = &filter(L"Off ones");
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_FALSE(has(record(0xA3), "290"));
    EXPECT_TRUE(has(record(0xB2), "290 1"));
    load();
    EXPECT_EQ(current, &filter(L"Off ones"));

    current = &filter(L"<AllUsed");
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_FALSE(has(record(0xB2), "290"));
    load();
    EXPECT_EQ(current, &filter(L"<AllUsed"));
    current = tree.get();
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_TRUE(has(saved(), lines("100 AcDbSymbolTable | 70 6 | 1001 ACAD | 1000 <All")));
    while (journal().undoCount() > 0) {
        ASSERT_EQ(journal().undo(), Hx::eOk);
    }
    EXPECT_EQ(saved(), filterDrawing());
}

TEST_F(FilterStorage, TheLayerTableTellsFirstThenTheMarkThenTheDictionary) {
    const auto selectedIn = [](std::string text, const std::string& mark, const std::string& table,
                               const std::string& dictionary) {
        const auto put = [&](const std::string& behind, const std::string& groups) {
            const std::string found = lines(behind);
            text.insert(text.find(found) + found.size(), lines(groups));
        };
        put("5 A4 | 330 A2 | 100 AcDbXrecord | 280     1", mark);
        put("102 } | 330 0 | 100 AcDbSymbolTable | 70 6", table);
        const std::string all = lines("1001 ACAD | 1000 <All");
        text.replace(text.find(all), all.size(), lines(dictionary));
        const std::unique_ptr<HxDbDatabase> database = opened(text);
        HxLyLayerFilter* root = nullptr;
        HxLyLayerFilter* selected = nullptr;
        EXPECT_EQ(database->layerFilterManager()->getFilters(root, selected), Hx::eOk);
        const std::string name = toUtf8(selected->name());
        delete root;
        return name;
    };
    const std::string base = filterDrawing();
    EXPECT_EQ(selectedIn(base, "290 1", "1001 ACAD | 1000 Red", "1001 ACAD | 1000 Other"), "Red");
    EXPECT_EQ(selectedIn(base, "290 1", "", "1001 ACAD | 1000 Other"), "Doors");
    EXPECT_EQ(selectedIn(base, "290 0", "", "1001 ACAD | 1000 other"), "Other");
    EXPECT_EQ(selectedIn(base, "", "", "1001 ACAD | 1000 <AllNonXref"), "<AllNonXref");
    EXPECT_EQ(selectedIn(base, "290 1", "1001 ACAD | 1000 gone", ""), "<All");
    EXPECT_EQ(selectedIn(base, "", "", ""), "<All");
}

TEST_F(NewFilters, MakeTheirDictionariesAsDrawingsHaveThem) {
    add(*tree, L"Walls", L"NAME==\"WALL*\"");
    current = &filter(L"Walls");
    const std::string before = saved();
    ASSERT_EQ(store(), Hx::eOk);
    const std::string after = saved();
    EXPECT_TRUE(has(after, lines("3 ACLYDICTIONARY"))) << after;
    EXPECT_TRUE(has(after, lines("100 AcDbXrecord") +
                               "280\n1\n290\n1\n1\nAcLyLayerFilter\n90\n1\n300\nWalls\n"
                               "301\nNAME==\"WALL*\"\n") ||
                has(after, "AcLyLayerFilter"))
        << after;
    EXPECT_EQ(journal().undoCount(), 1U);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(store(), Hx::eOk) << "the tree stands for itself: it is stored anew";
    EXPECT_EQ(saved().size(), after.size());
    load();
    EXPECT_EQ(shape(), "<All(<AllUsed, <AllNonXref, <XrefRoot, Walls)");
}

TEST_F(NewFilters, GoWithTheTransactionThatStoredThem) {
    const std::string before = saved();
    HxDbTransactionManager& transactions = *database->transactionManager();
    transactions.startTransaction();
    HxDbObject* table = nullptr;
    ASSERT_EQ(transactions.getObject(table, database->layerTableId(), HxDb::kForRead), Hx::eOk);
    add(*tree, L"Walls", L"NAME==\"WALL*\"");
    current = &filter(L"Walls");
    ASSERT_EQ(store(), Hx::eOk) << "the transaction has the layer table open for read";
    EXPECT_TRUE(table->isReadEnabled() && !table->isWriteEnabled());
    ASSERT_EQ(transactions.abortTransaction(), Hx::eOk);
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(journal().undoCount(), 0U);
}

TEST_F(NewFilters, FailAsAWholeWhenTheLayerTableIsInUse) {
    const std::string before = saved();
    add(*tree, L"Walls", L"NAME==\"WALL*\"");
    {
        const HxDbObjectPointer<HxDbLayerTable> reader(database->layerTableId(), HxDb::kForRead);
        EXPECT_EQ(store(), Hx::eWasOpenForRead);
    }
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(journal().undoCount(), 0U);
    EXPECT_EQ(store(), Hx::eOk);
}

TEST_F(FilterStorage, FailsAsAWholeWhenARecordIsInUse) {
    const std::string before = saved();
    add(*tree, L"Walls", L"NAME==\"WALL*\"");
    ASSERT_EQ(filter(L"Doors").setName(L"Gates"), Hx::eOk);
    remove(L"Other");
    {
        const HxDbObjectPointer<HxDbXrecord> reader(id(0xA5), HxDb::kForRead);
        EXPECT_EQ(store(), Hx::eWasOpenForRead);
    }
    EXPECT_EQ(saved(), before);
    EXPECT_EQ(journal().undoCount(), 0U);
    const std::string expected = shape();
    EXPECT_EQ(store(), Hx::eOk);
    load();
    EXPECT_EQ(shape(),
              "<All(<AllUsed, <AllNonXref, <XrefRoot, Red(Off ones), Gates, Walls, Thick walls, Thawed)")
        << expected;
}

TEST_F(FilterStorage, RecordsThatOthersStoredMeanwhileStay) {
    HxLyLayerFilter* second = nullptr;
    HxLyLayerFilter* secondCurrent = nullptr;
    ASSERT_EQ(database->layerFilterManager()->getFilters(second, secondCurrent), Hx::eOk);
    const std::unique_ptr<HxLyLayerFilter> owned(second);
    add(*second, L"Theirs", L"");
    ASSERT_EQ(database->layerFilterManager()->setFilters(second, secondCurrent), Hx::eOk);
    remove(L"Doors");
    ASSERT_EQ(store(), Hx::eOk);
    load();
    EXPECT_EQ(shape(),
              "<All(<AllUsed, <AllNonXref, <XrefRoot, Red(Off ones), Other, Theirs, Thick walls, Thawed)");
}

TEST_F(FilterStorage, ReactorsHearOfDictionariesThatComeAndGo) {
    class Recorder : public HxDbDatabaseReactor {
    public:
        void objectAppended(const HxDbDatabase*, const HxDbObject* o) override { add("+", o); }
        void objectUnAppended(const HxDbDatabase*, const HxDbObject* o) override { add("-", o); }
        void objectReAppended(const HxDbDatabase*, const HxDbObject* o) override { add("++", o); }
        std::string log;

    private:
        void add(const char* what, const HxDbObject* object) {
            if (object->isKindOf(HxDbDictionary::desc())) {
                log += what + std::to_string(object->ownerId().handle().value()) + " ";
            }
        }
    } recorder;
    database->addReactor(&recorder);
    add(filter(L"Doors"), L"In doors", L"");
    ASSERT_EQ(store(), Hx::eOk);
    EXPECT_TRUE(has(recorder.log, "+" + std::to_string(0xA4) + " +")) << recorder.log;
    recorder.log.clear();
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(has(recorder.log, "-" + std::to_string(0xA4) + " ")) << recorder.log;
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_TRUE(has(recorder.log, "++" + std::to_string(0xA4) + " ")) << recorder.log;
    database->removeReactor(&recorder);
}

TEST_F(FilterStorage, OtherTreesAreRefused) {
    HxLyLayerFilterManager& manager = *database->layerFilterManager();
    EXPECT_EQ(manager.setFilters(nullptr, current), Hx::eInvalidInput);
    EXPECT_EQ(manager.setFilters(tree.get(), nullptr), Hx::eInvalidInput);
    HxLyLayerFilter loose;
    EXPECT_EQ(manager.setFilters(tree.get(), &loose), Hx::eInvalidInput);
    EXPECT_EQ(manager.setFilters(&loose, &loose), Hx::eInvalidInput);
    HxDbDatabase other;
    EXPECT_EQ(other.layerFilterManager()->setFilters(tree.get(), current), Hx::eInvalidInput);
}

TEST_F(FilterStorage, DamagedTreesAreReadAsFarAsTheyGo) {
    std::string text = filterDrawing();
    const auto swap = [&](const std::string& old, const std::string& now) {
        const std::string found = lines(old);
        ASSERT_NE(text.find(found), text.npos) << old;
        text.replace(text.find(found), found.size(), lines(now));
    };
    swap("281 1 | 3 *A1 | 350 B2",
         "281 1 | 3 *A1 | 350 B2 | 3 *A2 | 350 A3 | 3 *A9 | 350 11 | 3 *A8 | 350 99");
    swap("300 Off ones | 301 OFF==\"True\"", "300 Off ones | 301 OFF=");
    swap("1 AcLyLayerGroup | 90        1 | 300 Doors", "1 AcLyLayerGroup");
    const std::unique_ptr<HxDbDatabase> damaged = opened(text);
    HxLyLayerFilter* root = nullptr;
    HxLyLayerFilter* selected = nullptr;
    HxLyLayerFilterManager& manager = *damaged->layerFilterManager();
    ASSERT_EQ(manager.getFilters(root, selected), Hx::eOk);
    const std::unique_ptr<HxLyLayerFilter> owned(root);
    EXPECT_EQ(shapeOf(*root),
              "<All(<AllUsed, <AllNonXref, <XrefRoot, Red(Off ones, *A9), *A2, Other, Thick walls, Thawed)");
    EXPECT_EQ(find(root, L"Off ones")->expressionError().position, 3);
    EXPECT_TRUE(find(root, L"*A9")->isProxy());
    EXPECT_EQ(manager.setFilters(root, selected), Hx::eOk);
    EXPECT_EQ(written(*damaged), text);
}

TEST_F(FiltersOfR12, HaveNoPlace) {
    const std::string before = saved();
    EXPECT_EQ(store(), Hx::eOk);
    current = &filter(L"<AllUsed");
    EXPECT_EQ(store(), Hx::eOk);
    add(*tree, L"Walls", L"");
    EXPECT_EQ(store(), Hx::eNotApplicable);
    EXPECT_EQ(saved(), before);
}

}  // namespace korvex::test
