// What is saved is read by an independent reader, whose audit finds no more in it than in what was opened.
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
        QProcess python;
        python.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(KORVEX_SOURCE_DIR "/tests/io/audit.py"), m_folder.path()});
        constexpr int kTime = 120000;  // milliseconds
        EXPECT_TRUE(python.waitForFinished(kTime) && python.exitCode() == 0);
        const std::string messages = python.readAllStandardError().toStdString();
        EXPECT_NE(messages.find(std::to_string(m_pairs) + " pairs"), messages.npos)
            << messages << " - python3-ezdxf (packages.txt) is needed";
        return python.readAllStandardOutput().toStdString();
    }

private:
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

}  // namespace korvex::test
