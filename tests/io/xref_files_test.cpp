// External references: found, loaded, attached, detached and read again.
#include "host/editor/xrefs.h"
#include "host/io/xref_files.h"
#include "tests/io/drawing_support.h"

#include <QDir>
#include <QTemporaryDir>

namespace korvex::test {

namespace {

struct Reference {
    std::string name;
    std::string path;
    int flags = 4;
};

/// R2000: two layers and a line, and a block for each reference.
std::string planWith(const std::vector<Reference>& references) {
    const std::string layer = " | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 ";
    std::string records;
    std::string blocks;
    int handle = 0x23;
    for (const Reference& reference : references) {
        const std::string record = QString::number(handle, 16).toStdString();
        records += "0 BLOCK_RECORD | 5 " + record +
                   " | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 " + reference.name +
                   "\n";
        const auto part = [&](int add) { return QString::number(handle + add, 16).toStdString(); };
        blocks += "0 BLOCK | 5 " + part(0x20) + " | 330 " + record +
                  " | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 " + reference.name + " | 70 " +
                  std::to_string(reference.flags) + " | 10 0.0 | 20 0.0 | 30 0.0 | 3 " + reference.name +
                  " | 1 " + reference.path + "\n0 ENDBLK | 5 " + part(0x21) + " | 330 " + record +
                  " | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd\n";
        handle += 0x40;
    }
    return inVersion("AC1015",
                     "0 SECTION | 2 TABLES\n0 TABLE | 2 LAYER | 5 2 | 330 0 | 100 AcDbSymbolTable | 70 2\n"
                     "0 LAYER | 5 10" +
                         layer + "0 | 70 0 | 62 7 | 6 Continuous\n0 LAYER | 5 11" + layer +
                         "WALLS | 70 4 | 62 -3 | 6 Continuous | 290 0 | 370 50\n0 ENDTAB\n"
                         "0 TABLE | 2 BLOCK_RECORD | 5 1 | 330 0 | 100 AcDbSymbolTable | 70 1\n" +
                         records + "0 ENDTAB | 0 ENDSEC\n0 SECTION | 2 BLOCKS\n" + blocks +
                         "0 ENDSEC\n0 SECTION | 2 ENTITIES\n0 LINE | 5 1F | 100 AcDbEntity | 8 WALLS | 100 "
                         "AcDbLine | 10 0.0 | 20 0.0 | 11 1.0 | 21 1.0\n0 ENDSEC");
}

/// With a path also a block WING that names it.
std::string plan(const std::string& path = "", int flags = 4) {
    return planWith(path.empty() ? std::vector<Reference>() : std::vector<Reference>{{"WING", path, flags}});
}

class XrefFiles : public ::testing::Test {
protected:
    ~XrefFiles() override { qunsetenv("KORVEX_SEARCH_PATH"); }

    void put(const QString& name, const std::string& bytes) const {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        putFile(path.toStdString(), bytes);
    }
    /// Opens a file with what it refers to.
    void open(const QString& name) {
        database = std::make_unique<HxDbDatabase>(false);
        ASSERT_EQ(database->readDwgFile(folder.filePath(name).toStdWString().c_str()), Hx::eOk);
        messages.clear();
        loadXrefs(*database, messages);
    }
    HxDbObjectId wing() const { return recordId(*database, TableKind::block, L"WING"); }
    static const HxDbBlockTableRecord& block(HxDbObjectId id) {
        return *HxDbBlockTableRecord::cast(hxdbObjectPointer(id));
    }
    HxDbObjectId layer(const wchar_t* name) const { return recordId(*database, TableKind::layer, name); }
    HxDbDatabase* loaded(const HxDbDatabase& of, const wchar_t* name) const {
        return block(recordId(of, TableKind::block, name)).xrefDatabase();
    }
    const HxDbLayerTableRecord& dependent() const {
        return *HxDbLayerTableRecord::cast(hxdbObjectPointer(layer(L"WING|WALLS")));
    }
    std::string saved() const { return written(*database); }
    Journal& journal() const { return database->imp()->journal; }
    HxDbObjectId attach(const wchar_t* path, const wchar_t* name, Hx::ErrorStatus expected = Hx::eOk,
                        bool overlay = false) {
        HxDbObjectId added;
        EXPECT_EQ(attachXref(*database, path, name, overlay, added, error), expected) << toUtf8(error);
        return added;
    }

    QTemporaryDir folder;
    std::unique_ptr<HxDbDatabase> database;
    std::vector<std::wstring> messages;
    std::wstring error;
};

}  // namespace

TEST_F(XrefFiles, AreFoundByPathBesideTheDrawingAndInSearchFolders) {
    put("here/wing.dxf", plan());
    put("elsewhere/far.dxf", plan());
    qputenv("KORVEX_SEARCH_PATH", ("/nowhere::" + folder.filePath("elsewhere")).toUtf8());
    const QString absolute = folder.filePath("here/wing.dxf");
    for (const std::string& path :
         {std::string("wing.dxf"), std::string("./wing.dxf"), std::string("..\\here\\wing.dxf"),
          std::string("C:\\jobs\\wing.dxf"), absolute.toStdString(), std::string("\\\\server\\x\\far.dxf")}) {
        put("here/host.dxf", plan(path));
        open("here/host.dxf");
        EXPECT_TRUE(messages.empty()) << path;
        ASSERT_TRUE(block(wing()).xrefDatabase()) << path;
        EXPECT_EQ(members(*modelSpace(*block(wing()).xrefDatabase())).size(), 1U);
        EXPECT_EQ(toUtf8(block(wing()).pathName()), path);
        EXPECT_TRUE(block(wing()).isFromExternalReference());
        EXPECT_FALSE(block(wing()).isUnloaded() || block(wing()).isFromOverlayReference());
    }
}

TEST_F(XrefFiles, OneThatIsMissingLeavesTheDrawingUsable) {
    put("host.dxf", plan("lost.dxf", 8));
    open("host.dxf");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"\"WING\" is not loaded: file \"lost.dxf\" was not found"),
              std::wstring::npos);
    EXPECT_TRUE(block(wing()).isUnloaded() && block(wing()).isFromOverlayReference());
    EXPECT_EQ(block(wing()).xrefDatabase(), nullptr);
    EXPECT_TRUE(layer(L"WING|WALLS").isNull());
    freeze(*database, L"WALLS");
    EXPECT_EQ(changedLines(plan("lost.dxf", 8), saved()), std::vector<std::string>{"4 > 5"});
}

TEST_F(XrefFiles, DamagedOnesTellWhereAndWhy) {
    std::string broken = plan();
    broken.resize(broken.size() / 2);
    put("wing.dxf", broken);
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"line "), std::wstring::npos) << toUtf8(messages[0]);
    EXPECT_EQ(messages[0].find(L".."), std::wstring::npos);
    EXPECT_TRUE(block(wing()).isUnloaded());
}

TEST_F(XrefFiles, CirclesAreCut) {
    put("self.dxf", plan("self.dxf"));
    open("self.dxf");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"refers back to itself"), std::wstring::npos);
    put("a.dxf", plan("b.dxf"));
    put("b.dxf", plan("a.dxf"));
    open("a.dxf");
    HxDbDatabase* inner = block(wing()).xrefDatabase();
    ASSERT_TRUE(inner);
    EXPECT_TRUE(block(recordId(*inner, TableKind::block, L"WING")).isUnloaded());
    attach(L"a.dxf", L"SELF", Hx::eXrefCircular);
    attach(L"b.dxf", L"AGAIN");
}

TEST_F(XrefFiles, DependentLayersShowAndAreWrittenWhenChanged) {
    put("wing.dxf", plan());
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    ASSERT_FALSE(layer(L"wing|walls").isNull());
    EXPECT_TRUE(dependent().isDependent() && dependent().isResolved());
    EXPECT_TRUE(dependent().isOff() && dependent().isLocked());
    EXPECT_EQ(dependent().color().colorIndex(), 3);
    EXPECT_EQ(dependent().lineWeight(), 50);
    EXPECT_FALSE(dependent().isPlottable());
    EXPECT_TRUE(layer(L"WING|0").isNull());
    EXPECT_TRUE(saved() == plan("wing.dxf"));
    EXPECT_EQ(database->setClayer(layer(L"WING|WALLS")), Hx::eRefused);
    freeze(*database, L"WING|WALLS");
    EXPECT_NE(saved().find("2\nWING|WALLS\n70\n53\n"), std::string::npos) << "4, 16, 32 and 1";
    put("host.dxf", saved());
    open("host.dxf");
    EXPECT_TRUE(dependent().isFrozen()) << "what the host drawing says of the layer holds";
    HxDbObjectId id = layer(L"WING|WALLS");
    EXPECT_EQ(hostLayer(*wing().stub(),
                        *recordId(*block(wing()).xrefDatabase(), TableKind::layer, L"WALLS").stub()),
              id.stub());
}

TEST_F(XrefFiles, NestedOnesAreLoadedWithTheirHosts) {
    put("inner.dxf", plan());
    put("sub/middle.dxf", plan("../inner.dxf"));
    put("host.dxf", plan("sub/middle.dxf"));
    open("host.dxf");
    EXPECT_TRUE(messages.empty());
    HxDbDatabase* middle = block(wing()).xrefDatabase();
    ASSERT_TRUE(middle);
    const HxDbObjectId nested = recordId(*middle, TableKind::block, L"WING");
    ASSERT_TRUE(block(nested).xrefDatabase());
    EXPECT_EQ(members(*modelSpace(*block(nested).xrefDatabase())).size(), 1U);
    EXPECT_FALSE(recordId(*middle, TableKind::layer, L"WING|WALLS").isNull());
    EXPECT_TRUE(saved() == plan("sub/middle.dxf"));
}

TEST_F(XrefFiles, AttachingIsAStepLikeAnyOther) {
    put("wing.dxf", plan());
    put("host.dxf", plan());
    open("host.dxf");
    journal().beginGroup(L"ATTACH");
    const HxDbObjectId added = attach(L"wing.dxf", L"WING", Hx::eOk, true);
    journal().endGroup();
    EXPECT_EQ(added, wing());
    EXPECT_TRUE(block(added).isFromOverlayReference());
    EXPECT_TRUE(dependent().isResolved());
    const std::string attached = saved();
    for (const char* part : {"2\nWING\n70\n8\n", "1\nwing.dxf\n", "2\nWING|WALLS\n70\n52\n62\n-3\n"}) {
        EXPECT_NE(attached.find(part), std::string::npos) << part;
    }
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_TRUE(wing().isNull() && layer(L"WING|WALLS").isNull());
    EXPECT_TRUE(saved() == plan());
    ASSERT_EQ(journal().redo(), Hx::eOk);
    EXPECT_TRUE(block(wing()).xrefDatabase());
    EXPECT_EQ(changedLines(attached, saved()), std::vector<std::string>{});
    put("again.dxf", saved());
    open("again.dxf");
    EXPECT_TRUE(messages.empty());
    EXPECT_TRUE(block(wing()).xrefDatabase());
}

TEST_F(XrefFiles, WhatCannotBeAttached) {
    put("wing.dxf", plan());
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    attach(L"lost.dxf", L"LOST", Hx::eXrefNotFound);
    attach(L"wing.dxf", L"wing", Hx::eDuplicateRecordName);
    attach(L"wing.dxf", L"A|B", Hx::eInvalidInput);
    EXPECT_NE(error.find(L"A|B"), std::wstring::npos);
    EXPECT_NE(error.back(), L'.');
    EXPECT_FALSE(database->isModified());
}

TEST_F(XrefFiles, DetachingTakesReferencesAndLayersAlong) {
    put("wing.dxf", plan());
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    freeze(*database, L"WING|WALLS");
    {
        const HxDbObjectPointer<HxDbBlockTableRecord> space(database->modelSpaceId(), HxDb::kForWrite);
        auto* insert = new HxDbBlockReference;
        HxDbObjectId added;
        insert->setBlockTableRecord(wing());
        ASSERT_EQ(space->appendHxDbEntity(added, insert), Hx::eOk);
        insert->close();
    }
    const std::string before = saved();
    journal().beginGroup(L"DETACH");
    EXPECT_EQ(detachXref(*database, layer(L"0")), Hx::eWrongClass);
    EXPECT_EQ(detachXref(*database, database->modelSpaceId()), Hx::eWrongClass);
    EXPECT_EQ(detachXref(*database, wing()), Hx::eOk);
    journal().endGroup();
    EXPECT_EQ(saved().find("WING"), std::string::npos);
    EXPECT_EQ(saved().find("INSERT"), std::string::npos);
    ASSERT_EQ(journal().undo(), Hx::eOk);
    EXPECT_EQ(changedLines(before, saved()), std::vector<std::string>{});
    EXPECT_TRUE(block(wing()).xrefDatabase());
    EXPECT_TRUE(dependent().isResolved());
}

TEST_F(XrefFiles, ADetachThatIsRefusedChangesNothing) {
    put("wing.dxf", plan());
    std::string bytes = plan("wing.dxf");
    const std::string own =
        "0\nLAYER\n5\n12\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n"
        "2\nWing|Walls\n70\n48\n62\n1\n6\nContinuous\n0\nLAYER\n5\n13\n330\n2\n100\n"
        "AcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n2\nWING|ROOF\n70\n48\n62\n1\n6\n"
        "Continuous\n";
    bytes.insert(bytes.find("0\nENDTAB"), own);
    put("host.dxf", bytes);
    open("host.dxf");
    {
        const HxDbObjectPointer<HxDbObject> inUse(layer(L"WING|ROOF"), HxDb::kForRead);
        EXPECT_EQ(detachXref(*database, wing()), Hx::eWasOpenForRead);
    }
    EXPECT_FALSE(database->isModified());
    EXPECT_EQ(changedLines(bytes, saved()), std::vector<std::string>{});
    EXPECT_EQ(detachXref(*database, wing()), Hx::eOk);
    EXPECT_TRUE(layer(L"WING|WALLS").isNull()) << "however it is spelled";
}

TEST_F(XrefFiles, ReloadingReadsTheFileAgain) {
    put("wing.dxf", plan());
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    HxDbDatabase* old = block(wing()).xrefDatabase();
    std::string renamed = plan();
    for (std::size_t at = renamed.find("WALLS"); at != renamed.npos; at = renamed.find("WALLS")) {
        renamed.replace(at, 5, "ROOF");
    }
    put("wing.dxf", renamed);
    EXPECT_EQ(reloadXref(*database, wing(), error), Hx::eOk);
    EXPECT_NE(block(wing()).xrefDatabase(), old);
    EXPECT_FALSE(recordId(*old, TableKind::layer, L"WALLS").isNull()) << "ids of the old one still hold";
    EXPECT_FALSE(layer(L"WING|ROOF").isNull());
    put("wing.dxf", "no drawing");
    HxDbDatabase* present = block(wing()).xrefDatabase();
    EXPECT_NE(reloadXref(*database, wing(), error), Hx::eOk);
    EXPECT_FALSE(error.empty());
    EXPECT_EQ(block(wing()).xrefDatabase(), present) << "a reload that fails leaves what there was";
    EXPECT_EQ(reloadXref(*database, database->modelSpaceId(), error), Hx::eWrongClass);
}

TEST_F(XrefFiles, OverlaysOfReferencesAreNotFollowed) {
    put("far.dxf", plan());
    put("wing.dxf", planWith({{"NEAR", "far.dxf", 4}, {"FAR", "far.dxf", 8}, {"LOST", "lost.dxf", 8}}));
    put("host.dxf", planWith({{"WING", "wing.dxf", 8}}));
    open("host.dxf");
    EXPECT_TRUE(messages.empty()) << toUtf8(messages.front());
    const HxDbDatabase& wing = *loaded(*database, L"WING");
    EXPECT_TRUE(loaded(wing, L"NEAR"));
    EXPECT_FALSE(loaded(wing, L"FAR"));
    EXPECT_FALSE(layer(L"WING|NEAR|WALLS").isNull());
    EXPECT_TRUE(layer(L"WING|FAR|WALLS").isNull());
}

TEST_F(XrefFiles, EachFileIsLoadedOnce) {
    // Every file is attached twice by the one before: a path for each would be 2 to the power of 20.
    constexpr int kFiles = 20;
    for (int i = 0; i < kFiles; ++i) {
        const std::string next = "d" + std::to_string(i + 1) + ".dxf";
        put(QStringLiteral("d%1.dxf").arg(i), planWith({{"A", next}, {"B", "./" + next}}));
    }
    put(QStringLiteral("d%1.dxf").arg(kFiles), plan());
    open("d0.dxf");
    HxDbDatabase* first = loaded(*database, L"A");
    ASSERT_TRUE(first);
    EXPECT_EQ(loaded(*database, L"B"), first);
    EXPECT_EQ(loaded(*first, L"A"), loaded(*first, L"B"));
    // Their layers are as many as the paths, so they are not all listed, which is told once.
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"not all of its layers are listed"), std::wstring::npos);
    EXPECT_LE(members(*database->layerTableId().stub()).size(), kMostXrefLayers);
    HxDbObjectId added = attach(L"d1.dxf", L"AGAIN");
    EXPECT_EQ(block(added).xrefDatabase(), first);
}

TEST_F(XrefFiles, DepthAndSizeAreBounded) {
    for (int i = 0; i < 40; ++i) {
        put(QStringLiteral("d%1.dxf").arg(i), plan("d" + std::to_string(i + 1) + ".dxf"));
    }
    open("d0.dxf");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"deeper than 32 levels"), std::wstring::npos) << toUtf8(messages[0]);
    EXPECT_TRUE(loaded(*database, L"WING"));

    put("wing.dxf", plan());
    put("large.dxf", "");
    QFile large(folder.filePath("large.dxf"));
    ASSERT_TRUE(large.resize(kMostXrefBytes + 1)) << "a file with a hole, which takes no room";
    put("host.dxf", planWith({{"LARGE", "large.dxf"}, {"WING", "wing.dxf"}}));
    open("host.dxf");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_NE(messages[0].find(L"\"large.dxf\" the references would take more than 1024 MB"),
              std::wstring::npos)
        << toUtf8(messages[0]);
    EXPECT_TRUE(loaded(*database, L"WING"));
    attach(L"large.dxf", L"MORE", Hx::eRefused);
}

TEST_F(XrefFiles, ReloadingOneServesAllThatNameItsFiles) {
    put("far.dxf", plan());
    put("near.dxf", plan("far.dxf"));
    put("other.dxf", planWith({{"F", "far.dxf"}, {"N", "near.dxf"}}));
    put("host.dxf",
        planWith({{"WING", "near.dxf"}, {"TWIN", "./near.dxf"}, {"FAR", "far.dxf"}, {"OTHER", "other.dxf"}}));
    open("host.dxf");
    EXPECT_TRUE(messages.empty());
    HxDbDatabase* other = loaded(*database, L"OTHER");
    const std::vector<HxDbDatabase*> before = {loaded(*database, L"WING"), loaded(*database, L"FAR")};
    std::string renamed = plan();
    for (std::size_t at = renamed.find("WALLS"); at != renamed.npos; at = renamed.find("WALLS")) {
        renamed.replace(at, 5, "ROOF");
    }
    put("far.dxf", renamed);
    ASSERT_EQ(reloadXref(*database, wing(), error), Hx::eOk);
    HxDbDatabase* near = loaded(*database, L"WING");
    HxDbDatabase* far = loaded(*database, L"FAR");
    EXPECT_NE(near, before[0]);
    EXPECT_NE(far, before[1]);
    EXPECT_EQ(loaded(*database, L"TWIN"), near);
    EXPECT_EQ(loaded(*near, L"WING"), far);
    EXPECT_EQ(loaded(*database, L"OTHER"), other) << "its own file was not asked for";
    EXPECT_EQ(loaded(*other, L"F"), far);
    EXPECT_EQ(loaded(*other, L"N"), near);
    EXPECT_FALSE(layer(L"FAR|ROOF").isNull());
    EXPECT_FALSE(recordId(*other, TableKind::layer, L"F|ROOF").isNull());
}

namespace {

/// Hears of drawings that go.
class Goodbyes : public HxDbDatabaseReactor {
public:
    void goodbye(const HxDbDatabase*) override { ++count; }
    int count = 0;
};

}  // namespace

TEST_F(XrefFiles, ReloadsGiveBackWhatTheyTook) {
    put("wing.dxf", plan());
    put("host.dxf", plan("wing.dxf"));
    open("host.dxf");
    Goodbyes goodbyes;
    constexpr int kReloads = 5;
    for (int i = 0; i < kReloads; ++i) {
        loaded(*database, L"WING")->addReactor(&goodbyes);
        ASSERT_EQ(reloadXref(*database, wing(), error), Hx::eOk);
    }
    EXPECT_EQ(goodbyes.count, kReloads - 1) << "the last one stays for a while";
    database.reset();
    EXPECT_EQ(goodbyes.count, kReloads);
}

}  // namespace korvex::test
