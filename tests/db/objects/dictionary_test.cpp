// Dictionaries and what hangs in them.
#include "tests/db/kernel/kernel_support.h"

namespace korvex::test {

namespace {

class Dictionaries : public KernelTest {
protected:
    HxDbObjectId data = id(0x90);
    HxDbDictionary& look(HxDbObjectId id) const { return *at<HxDbDictionary>(id); }
    template <class Edit>
    void edit(Edit what) {
        change<HxDbDictionary>(data, what);
    }
    HxDbObjectId put(const wchar_t* name) {
        HxDbObjectId added;
        edit([&](HxDbDictionary& dictionary) {
            auto* record = new HxDbXrecord;
            EXPECT_EQ(dictionary.setAt(name, record, added), Hx::eOk);
            record->close();
        });
        return added;
    }
    /// "name " of each entry.
    std::string names() const {
        const std::unique_ptr<HxDbDictionaryIterator> steps(look(data).newIterator());
        std::string all;
        for (; !steps->done(); steps->next()) {
            all += toUtf8(steps->name()) + " ";
        }
        return all;
    }
};

}  // namespace

TEST_F(Dictionaries, EntriesByNameWithoutCase) {
    HxDbObjectId found;
    EXPECT_EQ(look(data).getAt(L"COLOURS", found), Hx::eOk);
    EXPECT_EQ(found, id(0x91));
    EXPECT_EQ(look(data).getAt(L"Weights", found), Hx::eKeyNotFound);
    EXPECT_TRUE(found.isNull());
    CStdStr<wchar_t> name;
    EXPECT_EQ(look(data).nameAt(id(0x92), name), Hx::eOk);
    EXPECT_EQ(name, L"Sizes");
    EXPECT_EQ(look(data).nameAt(id(0x11), name), Hx::eKeyNotFound);
    const HxDbObjectId added = put(L"Weights");
    EXPECT_EQ(names(), "Colours Sizes Weights ");
    EXPECT_EQ(hxdbObjectPointer(added)->ownerId(), data);
    EXPECT_TRUE(has(record(data), "3 Sizes | 360 92 | 3 Weights | 360 "));
    EXPECT_TRUE(has(record(added), "330 90 | 100 AcDbXrecord"));
}

TEST_F(Dictionaries, ReplacingErasesTheOldObjectInItsPlace) {
    const std::string before = saved();
    HxDbObjectId added;
    step(L"REPLACE", [&] { added = put(L"colours"); });
    EXPECT_TRUE(id(0x91).isErased());
    EXPECT_EQ(names(), "Colours Sizes ");
    HxDbObjectId found;
    look(data).getAt(L"Colours", found);
    EXPECT_EQ(found, added);
    EXPECT_EQ(record(0x91), "");
    ASSERT_EQ(journal().undo(), Hx::eOk);
    look(data).getAt(L"Colours", found);
    EXPECT_EQ(found, id(0x91));
    EXPECT_EQ(changedLines(before, saved()), Log{});
}

TEST_F(Dictionaries, AnObjectInUseIsNeitherReplacedNorRemoved) {
    const HxDbObjectPointer<HxDbObject> inUse(id(0x91), HxDb::kForRead);
    edit([&](HxDbDictionary& dictionary) {
        HxDbXrecord fresh;
        HxDbObjectId added;
        EXPECT_EQ(dictionary.setAt(L"Colours", &fresh, added), Hx::eWasOpenForRead);
        EXPECT_TRUE(added.isNull());
        EXPECT_TRUE(fresh.objectId().isNull()) << "it still is its maker's";
        EXPECT_EQ(dictionary.remove(L"Colours"), Hx::eWasOpenForRead);
    });
    HxDbObjectId found;
    EXPECT_EQ(look(data).getAt(L"Colours", found), Hx::eOk);
    EXPECT_EQ(found, id(0x91));
}

TEST_F(Dictionaries, RemovingAndRenaming) {
    edit([](HxDbDictionary& dictionary) {
        EXPECT_EQ(dictionary.remove(L"Weights"), Hx::eKeyNotFound);
        EXPECT_EQ(dictionary.setName(L"Weights", L"W"), Hx::eKeyNotFound);
        EXPECT_EQ(dictionary.setName(L"Colours", L"SIZES"), Hx::eDuplicateKey);
        EXPECT_EQ(dictionary.setName(L"Colours", L""), Hx::eInvalidInput);
        HxDbXrecord fresh;
        HxDbObjectId added;
        EXPECT_EQ(dictionary.setAt(L"", &fresh, added), Hx::eInvalidInput);
        EXPECT_FALSE(dictionary.isModified());
        EXPECT_EQ(dictionary.setName(L"colours", L"COLOURS"), Hx::eOk);
        EXPECT_EQ(dictionary.remove(L"sizes"), Hx::eOk);
    });
    EXPECT_TRUE(id(0x92).isErased());
    EXPECT_TRUE(has(record(data), "281 1 | 3 COLOURS | 360 91"));
    EXPECT_FALSE(has(record(data), "Sizes"));
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(names(), "Colours Sizes ");
    HxDbXrecord fresh;
    HxDbObjectId added;
    EXPECT_EQ(look(data).setAt(L"New", &fresh, added), Hx::eNotOpenForWrite);
    EXPECT_EQ(look(data).remove(L"Sizes"), Hx::eNotOpenForWrite);
}

TEST_F(Dictionaries, EntriesCanBeRemovedOnTheWay) {
    for (const wchar_t* const name : {L"A", L"B", L"C", L"D"}) {
        put(name);
    }
    std::string seen;
    edit([&](HxDbDictionary& dictionary) {
        const std::unique_ptr<HxDbDictionaryIterator> steps(dictionary.newIterator());
        for (; !steps->done(); steps->next()) {
            const std::wstring name = steps->name();
            seen += toUtf8(name) + " ";
            if (name != L"B" && name != L"Sizes") {
                EXPECT_EQ(dictionary.remove(name.c_str()), Hx::eOk);
                EXPECT_STREQ(steps->name(), L"");
            } else if (name == L"B") {
                EXPECT_EQ(dictionary.remove(L"Sizes"), Hx::eOk);  // one that lies behind
                EXPECT_STREQ(steps->name(), L"B");
            }
        }
    });
    EXPECT_EQ(seen, "Colours Sizes A B C D ");
    EXPECT_EQ(names(), "B ");
}

TEST_F(Dictionaries, EntriesOfErasedObjectsAreNotSeen) {
    erase(id(0x91));
    EXPECT_EQ(names(), "Sizes ");
    EXPECT_EQ(look(data).numEntries(), 1U);
    EXPECT_FALSE(look(data).has(L"Colours"));
    const HxDbObjectId again = put(L"Colours");
    EXPECT_FALSE(has(record(data), "360 91")) << "nor written with the changed dictionary";
    HxDbObjectId found;
    look(data).getAt(L"Colours", found);
    EXPECT_EQ(found, again);
}

TEST_F(Dictionaries, ADefaultAnswersForWhatIsMissing) {
    auto& styles = *at<HxDbDictionaryWithDefault>(database->getPlotStyleNameDictionaryId());
    HxDbObjectId found;
    EXPECT_EQ(styles.getAt(L"Bold", found), Hx::eOk);
    EXPECT_EQ(found, id(0x72));
    EXPECT_EQ(styles.getAt(L"Thin", found), Hx::eOk);
    EXPECT_EQ(found, styles.defaultId());
    EXPECT_FALSE(styles.has(L"Thin"));
    change<HxDbDictionaryWithDefault>(styles.objectId(), [&](HxDbDictionaryWithDefault& dictionary) {
        EXPECT_EQ(dictionary.setDefaultId(id(0x72)), Hx::eOk);
    });
    EXPECT_TRUE(has(record(0x70), "3 Normal | 350 71 | 100 AcDbDictionaryWithDefault | 340 72"));
}

TEST_F(Dictionaries, XrecordsGiveAndTakeTheirGroups) {
    const auto chainOf = [&](std::uint64_t handle) { return Chain(at<HxDbXrecord>(id(handle))->rbChain()); };
    const std::string before = record(0x91);
    for (const std::uint64_t handle : {0x91U, 0x92U}) {
        const Chain chain = chainOf(handle);
        change<HxDbXrecord>(id(handle),
                            [&](HxDbXrecord& r) { EXPECT_EQ(r.setFromRbChain(chain.get()), Hx::eOk); });
        const Chain again = chainOf(handle);
        const resbuf* a = chain.get();
        const resbuf* b = again.get();
        for (; a && b; a = a->rbnext, b = b->rbnext) {
            EXPECT_TRUE(sameNode(*a, *b)) << a->restype;
        }
        EXPECT_TRUE(!a && !b);
    }
    EXPECT_EQ(record(0x91), before.substr(0, before.find("40 ")) + "40 0.5 | 330 11");
    change<HxDbXrecord>(id(0x91), [](HxDbXrecord& r) {
        for (const int code : {0, 5, 100, 105, 1000, 1071}) {
            Chain bad = newNode(code);
            EXPECT_EQ(r.setFromRbChain(bad.get()), Hx::eInvalidDxfCode) << code;
        }
        EXPECT_EQ(r.setFromRbChain(nullptr), Hx::eOk);
        EXPECT_EQ(r.rbChain(), nullptr);
    });
    EXPECT_EQ(record(0x91), "0 XRECORD | 5 91 | 330 90 | 100 AcDbXrecord | 280 1");
}

TEST_F(Dictionaries, ExtensionDictionariesComeAndGo) {
    const std::string before = saved();
    const HxDbObjectId line = id(0x40);
    step(L"EXTEND", [&] {
        const HxDbObjectPointer<HxDbObject> open(line, HxDb::kForWrite);
        EXPECT_EQ(open->createExtensionDictionary(), Hx::eOk);
        const HxDbObjectId made = open->extensionDictionary();
        EXPECT_EQ(open->createExtensionDictionary(), Hx::eOk);
        EXPECT_EQ(open->extensionDictionary(), made);
        EXPECT_EQ(hxdbObjectPointer(made)->ownerId(), line);
    });
    const HxDbObjectId made = hxdbObjectPointer(line)->extensionDictionary();
    wchar_t handle[17];
    made.handle().getIntoAsciiBuffer(handle);
    EXPECT_TRUE(has(record(line), "0 LINE | 5 40 | 102 {ACAD_XDICTIONARY | 360 " + toUtf8(handle) +
                                      " | 102 } | 330 20 | 100 AcDbEntity"))
        << record(line);
    EXPECT_TRUE(has(record(made), "330 40 | 100 AcDbDictionary"));
    erase(made);
    EXPECT_TRUE(hxdbObjectPointer(line)->extensionDictionary().isNull());
    EXPECT_TRUE(has(record(line), "0 LINE | 5 40 | 330 20 |")) << record(line);
    journal().undo();
    journal().undo();
    EXPECT_EQ(changedLines(before, saved()), Log{});
    const HxDbObjectPointer<HxDbObject> reading(line, HxDb::kForRead);
    EXPECT_EQ(reading->createExtensionDictionary(), Hx::eNotOpenForWrite);
}

}  // namespace korvex::test
