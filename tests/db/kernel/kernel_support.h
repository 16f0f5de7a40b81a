// A small drawing that has one of everything the kernel models, and what tests do with it.
#pragma once

#include "host/db/kernel/journal.h"
#include "host/db/lists/chain.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbtransaction.h"
#include "tests/io/drawing_support.h"

namespace korvex::test {

/// R2013 with named plot styles. Layers WALLS (11), DOORS (12), PIPE|VALVE (13), DEFPOINTS (14), EMPTY (15);
/// sheets First with viewports 60-62 and Second; block DOOR with an attribute; overrides on WALLS.
inline std::string planDrawing() {
    std::string text = drawing(R"(
0 SECTION | 2 HEADER | 9 $ACADVER | 1 AC1027 | 9 $CLAYER | 8 0 | 9 $TILEMODE | 70 1 | 9 $PSTYLEMODE | 290 0
9 $HANDSEED | 5 200 | 0 ENDSEC
0 SECTION | 2 TABLES
0 TABLE | 2 LTYPE | 5 5 | 330 0 | 100 AcDbSymbolTable | 70 4
0 LTYPE | 5 30 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 ByBlock | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 LTYPE | 5 31 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 ByLayer | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 LTYPE | 5 32 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 Continuous | 70 0 | 3 | 72 65 | 73 0 | 40 0.0
0 LTYPE | 5 33 | 330 5 | 100 AcDbSymbolTableRecord | 100 AcDbLinetypeTableRecord | 2 DASHED | 70 0 | 3 __ __ | 72 65 | 73 2 | 40 0.75 | 49 0.5 | 74 0 | 49 -0.25 | 74 0
0 ENDTAB
0 TABLE | 2 LAYER | 5 2 | 330 0 | 100 AcDbSymbolTable | 70 6
0 LAYER | 5 10 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 0 | 70 0 | 62 7 | 6 Continuous | 370 -3 | 390 71
0 LAYER | 5 11 | 102 {ACAD_XDICTIONARY | 360 80 | 102 } | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 WALLS | 70 0 | 62 1 | 6 Continuous | 370 -3 | 390 71 | 1001 ACAD | 1070 5
0 LAYER | 5 12 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 DOORS | 70 0 | 62 3 | 6 DASHED | 370 50 | 390 72
0 LAYER | 5 13 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 PIPE~VALVE | 70 48 | 62 4 | 6 Continuous | 370 -3 | 390 71
0 LAYER | 5 14 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 Defpoints | 70 0 | 62 7 | 6 Continuous | 290 0 | 370 -3 | 390 71
0 LAYER | 5 15 | 330 2 | 100 AcDbSymbolTableRecord | 100 AcDbLayerTableRecord | 2 EMPTY | 70 0 | 62 5 | 6 Continuous | 370 -3 | 390 71
0 ENDTAB
0 TABLE | 2 APPID | 5 9 | 330 0 | 100 AcDbSymbolTable | 70 2
0 APPID | 5 34 | 330 9 | 100 AcDbSymbolTableRecord | 100 AcDbRegAppTableRecord | 2 ACAD | 70 0
0 APPID | 5 35 | 330 9 | 100 AcDbSymbolTableRecord | 100 AcDbRegAppTableRecord | 2 TOOLS | 70 0
0 ENDTAB
0 TABLE | 2 BLOCK_RECORD | 5 1 | 330 0 | 100 AcDbSymbolTable | 70 4
0 BLOCK_RECORD | 5 20 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Model_Space | 340 50
0 BLOCK_RECORD | 5 21 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space | 340 51
0 BLOCK_RECORD | 5 22 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 *Paper_Space0 | 340 52
0 BLOCK_RECORD | 5 23 | 330 1 | 100 AcDbSymbolTableRecord | 100 AcDbBlockTableRecord | 2 DOOR | 340 0
0 ENDTAB
0 ENDSEC
0 SECTION | 2 BLOCKS
0 BLOCK | 5 24 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 *Model_Space | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Model_Space | 1
0 ENDBLK | 5 25 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 26 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbBlockBegin | 2 *Paper_Space | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Paper_Space | 1
0 ENDBLK | 5 27 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 28 | 330 22 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 *Paper_Space0 | 70 0 | 10 0.0 | 20 0.0 | 30 0.0 | 3 *Paper_Space0 | 1
0 ENDBLK | 5 29 | 330 22 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 BLOCK | 5 2A | 330 23 | 100 AcDbEntity | 8 0 | 100 AcDbBlockBegin | 2 DOOR | 70 2 | 10 1.5 | 20 2.5 | 30 0.5 | 3 DOOR | 1
0 CIRCLE | 5 2B | 330 23 | 100 AcDbEntity | 8 DOORS | 100 AcDbCircle | 10 0.0 | 20 0.0 | 30 0.0 | 40 1.0
0 ENDBLK | 5 2C | 330 23 | 100 AcDbEntity | 8 0 | 100 AcDbBlockEnd
0 ENDSEC
0 SECTION | 2 ENTITIES
0 LINE | 5 40 | 330 20 | 100 AcDbEntity | 8 WALLS | 100 AcDbLine | 10 0.0 | 20 0.0 | 30 0.0 | 11 1.0 | 21 1.0 | 31 0.0 | 1001 TOOLS | 1003 WALLS | 1000 note
0 INSERT | 5 41 | 330 20 | 100 AcDbEntity | 8 0 | 100 AcDbBlockReference | 66 1 | 2 DOOR | 10 5.0 | 20 5.0 | 30 0.0
0 ATTRIB | 5 42 | 330 41 | 100 AcDbEntity | 8 WALLS | 100 AcDbText | 10 5.0 | 20 5.0 | 30 0.0 | 40 2.5 | 1 D1 | 100 AcDbAttribute | 2 NO | 70 0
0 SEQEND | 5 43 | 330 41 | 100 AcDbEntity | 8 0
0 POINT | 5 44 | 330 20 | 100 AcDbEntity | 8 0 | 6 DASHED | 62 0 | 370 35 | 60 1 | 100 AcDbPoint | 10 0.0 | 20 0.0 | 30 0.0
0 VIEWPORT | 5 60 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbViewport | 10 0.0 | 20 0.0 | 30 0.0 | 40 420.0 | 41 297.0 | 68 1 | 69 1 | 45 297.0 | 90 0
0 VIEWPORT | 5 61 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbViewport | 10 0.0 | 20 0.0 | 30 0.0 | 40 100.0 | 41 50.0 | 68 2 | 69 2 | 45 200.0 | 331 12 | 331 FF | 90 0
0 VIEWPORT | 5 62 | 330 21 | 100 AcDbEntity | 67 1 | 8 0 | 100 AcDbViewport | 10 0.0 | 20 0.0 | 30 0.0 | 40 100.0 | 41 50.0 | 68 3 | 69 3 | 45 50.0 | 90 131072
0 ENDSEC
0 SECTION | 2 OBJECTS
0 DICTIONARY | 5 C | 330 0 | 100 AcDbDictionary | 281 1 | 3 ACAD_LAYOUT | 350 1A | 3 ACAD_PLOTSTYLENAME | 350 70 | 3 DATA | 350 90
0 DICTIONARY | 5 1A | 330 C | 100 AcDbDictionary | 281 1 | 3 Second | 350 52 | 3 First | 350 51 | 3 Model | 350 50
0 LAYOUT | 5 50 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 Model | 70 1 | 71 5 | 330 20
0 LAYOUT | 5 51 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 First | 70 1 | 71 1 | 330 21
0 LAYOUT | 5 52 | 330 1A | 100 AcDbPlotSettings | 1 | 100 AcDbLayout | 1 Second | 70 1 | 71 2 | 330 22
0 ACDBDICTIONARYWDFLT | 5 70 | 330 C | 100 AcDbDictionary | 281 1 | 3 Bold | 350 72 | 3 Normal | 350 71 | 100 AcDbDictionaryWithDefault | 340 71
0 ACDBPLACEHOLDER | 5 71 | 330 70
0 ACDBPLACEHOLDER | 5 72 | 330 70
0 DICTIONARY | 5 80 | 330 11 | 100 AcDbDictionary | 280 1 | 281 1 | 3 ADSK_XREC_LAYER_COLOR_OVR | 360 81 | 3 ADSK_XREC_LAYER_LINEWT_OVR | 360 82
0 XRECORD | 5 81 | 330 80 | 100 AcDbXrecord | 280 1 | 102 {ADSK_LYR_COLOR_OVERRIDE | 335 62 | 420 -1023410171 | 102 } | 102 {OTHER_MAKERS_OVERRIDE | 335 61 | 420 9 | 102 }
0 XRECORD | 5 82 | 330 80 | 100 AcDbXrecord | 280 1 | 102 {ADSK_LYR_LINEWT_OVERRIDE | 335 61 | 91 13 | 102 }
0 DICTIONARY | 5 90 | 330 C | 100 AcDbDictionary | 280 1 | 281 1 | 3 Colours | 360 91 | 3 Sizes | 360 92
0 XRECORD | 5 91 | 330 90 | 100 AcDbXrecord | 280 1 | 1 red | 62 1 | 40 0.50 | 330 11
0 XRECORD | 5 92 | 330 90 | 100 AcDbXrecord | 280 1 | 10 1.0 | 20 2.0 | 30 3.0 | 310 00FF
0 ENDSEC | 0 EOF)");
    std::replace(text.begin(), text.end(), '~', '|');  // which parts pairs above
    return text;
}

using Log = std::vector<std::string>;

/// Writes down what it is told of an object: "object modified" ...
class ObjectRecorder : public HxDbObjectReactor {
public:
    explicit ObjectRecorder(Log& log) : m_log(log) {}
    void openedForModify(const HxDbObject*) override { m_log.emplace_back("object opened for modify"); }
    void modified(const HxDbObject*) override { m_log.emplace_back("object modified"); }
    void erased(const HxDbObject*, bool erasing) override {
        m_log.emplace_back(erasing ? "object erased" : "object unerased");
    }
    void modifiedXData(const HxDbObject*) override { m_log.emplace_back("object xdata"); }
    void modifyUndone(const HxDbObject*) override { m_log.emplace_back("object undone"); }
    void unappended(const HxDbObject*) override { m_log.emplace_back("object unappended"); }
    void reappended(const HxDbObject*) override { m_log.emplace_back("object reappended"); }
    void objectClosed(const HxDbObjectId) override { m_log.emplace_back("object closed"); }
    void goodbye(const HxDbObject*) override { m_log.emplace_back("object goodbye"); }

private:
    Log& m_log;
};

/// The same of a drawing: "drawing modified WALLS"; names of records only.
class DrawingRecorder : public HxDbDatabaseReactor {
public:
    explicit DrawingRecorder(Log& log) : m_log(log) {}
    void objectAppended(const HxDbDatabase*, const HxDbObject* o) override { add("appended", o); }
    void objectUnAppended(const HxDbDatabase*, const HxDbObject* o) override { add("unappended", o); }
    void objectReAppended(const HxDbDatabase*, const HxDbObject* o) override { add("reappended", o); }
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject* o) override {
        add("opened for modify", o);
    }
    void objectModified(const HxDbDatabase*, const HxDbObject* o) override { add("modified", o); }
    void objectErased(const HxDbDatabase*, const HxDbObject* o, bool erased) override {
        add(erased ? "erased" : "unerased", o);
    }
    void headerSysVarWillChange(const HxDbDatabase*, const wchar_t* name) override {
        m_log.push_back("drawing will change " + toUtf8(name));
    }
    void headerSysVarChanged(const HxDbDatabase*, const wchar_t* name, bool) override {
        m_log.push_back("drawing changed " + toUtf8(name));
    }
    void goodbye(const HxDbDatabase*) override { m_log.emplace_back("drawing goodbye"); }

private:
    void add(const char* what, const HxDbObject* object) {
        const auto* record = HxDbSymbolTableRecord::cast(object);
        m_log.push_back(std::string("drawing ") + what + (record ? " " + toUtf8(record->name()) : ""));
    }
    Log& m_log;
};

/// The drawing above, opened.
class KernelTest : public ::testing::Test {
protected:
    explicit KernelTest(const std::string& bytes = planDrawing()) : database(opened(bytes)) {
        hxdbSetWorkingDatabase(database.get());
    }
    ~KernelTest() override { hxdbSetWorkingDatabase(nullptr); }

    HxDbObjectId id(std::uint64_t handle) const { return HxDbObjectId(byHandle(*database, handle)); }
    HxDbObjectId layer(const wchar_t* name) const { return recordId(*database, TableKind::layer, name); }
    Journal& journal() const { return database->imp()->journal; }

    /// The object without an open; for looking.
    template <class T>
    static T* at(HxDbObjectId id) {
        return T::cast(hxdbObjectPointer(id));
    }
    /// Opens for write, does something, closes.
    template <class T, class Change>
    static void change(HxDbObjectId id, Change what) {
        const HxDbObjectPointer<T> object(id, HxDb::kForWrite, true);
        ASSERT_EQ(object.openStatus(), Hx::eOk);
        what(*object.object());
    }
    static void lock(HxDbObjectId layer, bool locked = true) {
        change<HxDbLayerTableRecord>(layer, [&](HxDbLayerTableRecord& l) { l.setIsLocked(locked); });
    }
    static void recolor(HxDbObjectId layer, std::int16_t index) {
        change<HxDbLayerTableRecord>(layer, [&](HxDbLayerTableRecord& l) {
            EXPECT_EQ(l.setColor(HxCmColor::byIndex(index)), Hx::eOk);
        });
    }
    static Hx::ErrorStatus rename(HxDbObjectId record, const wchar_t* name) {
        const HxDbObjectPointer<HxDbSymbolTableRecord> open(record, HxDb::kForWrite);
        return open ? open->setName(name) : open.openStatus();
    }
    static void erase(HxDbObjectId id, bool erasing = true) {
        change<HxDbObject>(id, [&](HxDbObject& object) { EXPECT_EQ(object.erase(erasing), Hx::eOk); });
    }
    HxDbObjectId addLayer(const wchar_t* name) const {
        const HxDbObjectPointer<HxDbLayerTable> table(database->layerTableId(), HxDb::kForWrite);
        auto* record = new HxDbLayerTableRecord;
        HxDbObjectId added;
        EXPECT_EQ(record->setName(name), Hx::eOk);
        EXPECT_EQ(table->add(added, record), Hx::eOk);
        record->close();
        return added;
    }
    /// One undo step.
    template <class Change>
    void step(const wchar_t* name, Change what) const {
        journal().beginGroup(name);
        what();
        journal().endGroup();
    }

    std::string saved() const { return written(*database); }
    /// A record of the saved drawing as pairs, "0 LAYER | 5 11 | ..."; empty when it is not written.
    std::string record(HxDbObjectId wanted) const {
        const std::string bytes = saved();
        std::string pairs;
        bool found = false;
        GroupCursor cursor(bytes, database->imp()->format);
        while (cursor.next()) {
            if (cursor.code() == 0) {
                if (found) {
                    return pairs;
                }
                pairs.clear();
            }
            found = found || (cursor.code() == 5 && cursor.asHandle() == wanted.handle().value() &&
                              pairs.find(" | ") == pairs.npos);
            pairs +=
                (pairs.empty() ? "" : " | ") + std::to_string(cursor.code()) + ' ' + toUtf8(cursor.asText());
        }
        return "";
    }
    std::string record(std::uint64_t handle) const { return record(id(handle)); }

    std::unique_ptr<HxDbDatabase> database;
};

inline bool has(const std::string& text, const std::string& part) { return text.find(part) != text.npos; }

}  // namespace korvex::test
