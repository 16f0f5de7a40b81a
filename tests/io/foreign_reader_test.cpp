// What is saved is read by an independent reader, whose audit finds no more in it than in what was opened.
#include "sdk/hxdbdict.h"
#include "sdk/hxlystate.h"
#include "tests/io/incomplete_drawings.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace korvex::test {

namespace {

/// A drawing in text form: the reader knows no binary form whose sentinel is this system's.
std::string asText(const std::string& bytes) {
    FileScanner scanner(bytes);
    DrawingError error;
    EXPECT_TRUE(scanner.detect(error));
    GroupFormat format = scanner.format();
    if (!format.binary) {
        return bytes;
    }
    format.binary = false;
    GroupWriter out(format);
    GroupCursor cursor(std::string_view(bytes).substr(scanner.preamble().size()), scanner.format());
    while (cursor.next()) {
        out.transcode(cursor);
    }
    return out.take();
}

class ForeignReader : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_folder.isValid()); }

    void put(const std::string& name, const std::string& before, const std::string& after) {
        putFile(m_folder.filePath(QString::fromStdString(name + ".before.dxf")).toStdString(),
                asText(before));
        putFile(m_folder.filePath(QString::fromStdString(name + ".after.dxf")).toStdString(), asText(after));
        ++m_pairs;
    }
    /// What the audit of all pairs tells.
    std::string audit() const {
        std::string messages;
        const std::string told = tell("audit.py", m_folder.path(), messages);
        EXPECT_NE(messages.find(std::to_string(m_pairs) + " pairs"), messages.npos)
            << messages << " - python3-ezdxf (packages.txt) is needed";
        return told;
    }
    /// The layer states of the second drawing of a pair, as the reader holds them.
    std::string layerStates(const std::string& name) const {
        std::string messages;
        return tell("layer_states.py", m_folder.filePath(QString::fromStdString(name + ".after.dxf")),
                    messages);
    }

private:
    static std::string tell(const char* script, const QString& path, std::string& messages) {
        QProcess python;
        python.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(KORVEX_SOURCE_DIR "/tests/io/") + script, path});
        constexpr int kTime = 120000;  // milliseconds
        EXPECT_TRUE(python.waitForFinished(kTime) && python.exitCode() == 0);
        messages = python.readAllStandardError().toStdString();
        return python.readAllStandardOutput().toStdString();
    }

    QTemporaryDir m_folder;
    int m_pairs = 0;
};

/// A bit of everything that changes what is written.
void changeAll(HxDbDatabase& database) {
    const std::vector<HxDbStub*> layers = members(*database.layerTableId().stub());
    for (HxDbStub* layer : layers) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(HxDbObjectId(layer), HxDb::kForWrite);
        record->setIsLocked(!record->isLocked());
        record->setDescription(L"of the test");
    }
    if (HxDbStub* paper = paperSpace(database)) {
        addPoint(paper);
        if (firstViewport(database) && !database.namedObjectsDictionaryId().isNull()) {
            for (HxDbStub* layer : layers) {
                freezeInViewport(database, recordName(*layer).c_str());
                overrideColor(HxDbObjectId(layer), HxDbObjectId(firstViewport(database)));
            }
        }
    }
    if (!database.namedObjectsDictionaryId().isNull()) {
        EXPECT_EQ(database.getLayerStateManager()->saveLayerState(L"of the test", HxLyState::kAllProperties,
                                                                  HxDbObjectId(firstViewport(database))),
                  Hx::eOk);
    }
    addPoint(modelSpace(database));
    for (HxDbStub* entity : members(*modelSpace(database))) {
        if (isAlive(*entity) && std::string_view(entity->recordClass->type) == "INSERT") {
            erase(database, entity);
            break;
        }
    }
}

}  // namespace

TEST_F(ForeignReader, FindsNothingNewInWhatIsSaved) {
    for (const QString& folder : {QStringLiteral("/samples"), QStringLiteral("/samples/small")}) {
        const QDir samples(QStringLiteral(KORVEX_SOURCE_DIR) + folder);
        for (const QString& name : samples.entryList({QStringLiteral("*.dxf")})) {
            SCOPED_TRACE(name.toStdString());
            const std::string before = fileBytes(samples.filePath(name).toStdString());
            const auto database = opened(before);
            changeAll(*database);
            put(name.toStdString(), before, written(*database));
        }
    }
    const std::string viewport = std::string("0 VIEWPORT | 5 50") + kViewport;
    const std::string both = std::string(kModel) + kPaper;
    const std::pair<const char*, std::string> incomplete[] = {
        {"implied layers", incompletePlan(both, viewport)},
        {"implied model space", incompletePlan(kPaper, viewport)},
        {"a handle twice", incompletePlan(both, std::string("0 VIEWPORT | 5 10") + kViewport)},
        {"no handle", incompletePlan(both, std::string("0 VIEWPORT") + kViewport, "330 2")},
        {"sheets", sheetDrawing()},
    };
    for (const auto& [name, before] : incomplete) {
        SCOPED_TRACE(name);
        const auto database = opened(before);
        changeAll(*database);
        put(name, before, written(*database));
    }
    EXPECT_EQ(audit(), "");
}

namespace {

std::string hex(HxDbObjectId id) {
    wchar_t text[17] = L"0";
    id.handle().getIntoAsciiBuffer(text);
    return toUtf8(text);
}

/// A state's record in the lines of layer_states.py.
std::string lineOf(const HxDbLayerStateManager& states, const wchar_t* name) {
    const HxDbObjectId id = states.layerStateId(name);
    std::string line = toUtf8(name) + "|" + hex(hxdbObjectPointer(id)->ownerId()) + "|" + hex(id);
    HxDbXrecordWalk group(id);
    while (group.next()) {
        const int code = group.code();
        const bool isPointer = code >= 320 && code <= 399 && code != 370;
        const bool isText = code < 10 || (code >= 300 && code < 320);
        line += "\n" + std::to_string(code) + "=" +
                (isPointer ? hex(group.objectId())
                 : isText  ? toUtf8(group.text())
                           : std::to_string(group.integer()));
    }
    return line + "\n";
}

}  // namespace

TEST_F(ForeignReader, HoldsTheSameLayerStates) {
    const std::string before = fileBytes(KORVEX_SOURCE_DIR "/samples/office-floor.dxf");
    const auto database = opened(before);
    HxDbLayerStateManager& states = *database->getLayerStateManager();
    constexpr wchar_t kNew[] = L"\u4e8c\u968e (2)";
    EXPECT_EQ(states.saveLayerState(kNew, HxLyState::kAllProperties, {}, L"\u00d6ffnungen"), Hx::eOk);
    EXPECT_EQ(states.saveLayerState(L"Demolition", 7, HxDbObjectId(firstViewport(*database))), Hx::eOk);
    EXPECT_EQ(states.renameLayerState(L"Escape plan", L"Flucht"), Hx::eOk);
    EXPECT_EQ(states.setLayerStateDescription(L"Services coordination", L"by others"), Hx::eOk);
    EXPECT_EQ(states.deleteLayerState(L"Floor plan 1-100"), Hx::eOk);
    {
        const HxDbObjectId id(findRecord(*database, TableKind::layer, L"A-DOOR"));
        const HxDbObjectPointer<HxDbLayerTableRecord> record(id, HxDb::kForWrite);
        ASSERT_EQ(record->setName(L"T\u00fcren \u4e2d"), Hx::eOk);
    }
    EXPECT_EQ(states.restoreLayerState(L"Services coordination", {}), Hx::eOk);
    put("states", before, written(*database));
    HxArray<CStdStr<wchar_t>> names;
    states.getLayerStateNames(names, true);
    EXPECT_EQ(names.length(), 5);
    std::string expected;
    for (const CStdStr<wchar_t>& name : names) {
        expected += lineOf(states, name.c_str());
    }
    EXPECT_NE(expected.find("8=T\u00fcren \u4e2d\n"), expected.npos) << "names follow renames";
    EXPECT_EQ(layerStates("states"), expected);
    EXPECT_EQ(audit(), "");
}

}  // namespace korvex::test
