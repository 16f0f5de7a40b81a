// Values of a list put into the groups of an object.
#include "host/db/lists/list_merge.h"

#include "host/db/lists/group_chain.h"
#include "tests/db/lists/list_support.h"

namespace korvex::test {
namespace {

constexpr const char* kLine =
    "0 LINE|5 2A|330 1F|100 AcDbEntity|8 0|62   1|100 AcDbLine|10 0|20 0.00|30 0|11 5|21 5|31 0|"
    "1001 APP|1000 kept|";

class ListMerge : public ListsTest {
protected:
    ListMerge() { database.imp()->format.paddedInts = false; }

    /// "code value|" words as groups; the value is everything up to the bar.
    std::string groups(const std::string& words) const {
        GroupWriter out(database.imp()->format);
        std::istringstream in(words);
        for (std::string word; std::getline(in, word, '|');) {
            const std::size_t blank = word.find(' ');
            out.rawText(std::stoi(word.substr(0, blank)), word.substr(blank + 1));
        }
        return out.take();
    }
    std::string words(const std::string& text) const {
        std::string out;
        GroupCursor cursor(text, database.imp()->format);
        while (cursor.next()) {
            out += std::to_string(cursor.code()) + " " + std::string(cursor.raw()) + "|";
        }
        return out;
    }
    /// The object's groups after a list; "refused" when it is not taken.
    std::string merged(const std::string& object, const std::string& list) const {
        const Chain chain(chainOfGroups(groups(list), database.imp()->format, database));
        const std::string old = groups(object);
        const std::string type = object.substr(2, object.find('|') - 2);
        const bool isEntity = type != "LAYER" && type != "XRECORD" && type != "LAYOUT";
        std::string result;
        const bool good = mergeList(old, partsOfList(chain.get()), database, 5,
                                    ValueChecks(database, type, isEntity), result);
        return good ? words(result) : "refused";
    }
    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        return text.replace(text.find(from), from.size(), to);
    }
};

TEST_F(ListMerge, TheObjectsOwnListChangesNothing) {
    for (const std::string& object :
         {std::string(kLine),
          std::string(
              "0 LWPOLYLINE|5 1|100 AcDbEntity|8 0|100 AcDbPolyline|90  2|70 0|10 1|20 1|42 .5|10 2e0|20 2|"),
          std::string("0 LAYOUT|5 1|102 {ACAD_REACTORS|330 A|102 }|330 A|100 AcDbPlotSettings|1 |70 688|100 "
                      "AcDbLayout|"
                      "1 Sheet|70 1|10 0|20 0|11 9|21 9|"),
          std::string(
              "0 XRECORD|5 1|330 2|100 AcDbXrecord|280 1|102 {A|335 5|102 }|102 {A|335 6|102 }|40 .50|"),
          std::string("0 LINE|8 0|10 1|20 1|11 2|21 2|")}) {
        EXPECT_EQ(merged(object, object), object);
    }
}

TEST_F(ListMerge, SingleValuesGoWhereTheirCodesAre) {
    EXPECT_EQ(merged(kLine, "62 5|"), replaced(kLine, "62   1", "62 5"));
    EXPECT_EQ(merged(kLine, "62 1|"), kLine);
    EXPECT_EQ(merged(kLine, "11 7|21 7|31 7|8 0|"),
              replaced(kLine, "11 5|21 5|31 0", "11 7.0|21 7.0|31 7.0"));
    // New ones: the general part's and the last subclass's.
    EXPECT_EQ(merged(kLine, "370 25|"), replaced(kLine, "62   1|", "62   1|370 25|"));
    EXPECT_EQ(merged(kLine, "39 2.5|"), replaced(kLine, "31 0|", "31 0|39 2.5|"));
    // The same code in two subclasses: the last has it.
    const std::string layout = "0 LAYOUT|5 1|100 AcDbPlotSettings|70 688|100 AcDbLayout|70 1|";
    EXPECT_EQ(merged(layout, "70 5|"), replaced(layout, "70 1|", "70 5|"));
    EXPECT_EQ(merged(layout, "100 AcDbPlotSettings|70 5|"), replaced(layout, "70 688|", "70 5|"));
}

TEST_F(ListMerge, RepeatedValuesAreGivenAsAWhole) {
    const std::string head = "0 LWPOLYLINE|5 1|100 AcDbEntity|8 0|100 AcDbPolyline|";
    const std::string object = head + "90 3|70 0|10 1|20 1|42 .5|10 2|20 2|10 3|20 3|";
    const std::string marker = "100 AcDbPolyline|";
    struct Row {
        const char* what;
        std::string list, result;
    };
    const Row rows[] = {
        {"a vertex moves", "10 1|20 1|10 2|20 9|10 3|20 3|",
         head + "90 3|70 0|10 1|20 1|42 .5|10 2.0|20 9.0|10 3|20 3|"},
        {"one is added at the end", marker + "90 4|70 0|10 1|20 1|42 .5|10 2|20 2|10 3|20 3|10 4|20 4|",
         head + "90 4|70 0|10 1|20 1|42 .5|10 2|20 2|10 3|20 3|10 4.0|20 4.0|"},
        {"one is taken away", marker + "90 2|70 0|10 1|20 1|42 .5|10 2|20 2|",
         head + "90 2|70 0|10 1|20 1|42 .5|10 2|20 2|"},
        {"the bulge moves to the second", marker + "90 3|70 0|10 1|20 1|10 2|20 2|42 .5|10 3|20 3|",
         head + "90 3|70 0|10 1|20 1|10 2|20 2|42 .5|10 3|20 3|"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(merged(object, row.list), row.result) << row.what;
    }
}

TEST_F(ListMerge, AnXrecordsContentIsTheLists) {
    const std::string head = "0 XRECORD|5 1|330 2|100 AcDbXrecord|";
    const std::string object = head + "280 1|8 A|62 1|8 B|62 2|";
    EXPECT_EQ(merged(object, "100 AcDbXrecord|280 1|8 B|62 2|"), head + "280 1|8 B|62 2|");
    EXPECT_EQ(merged(object, "100 AcDbXrecord|280 1|62 1|90 4|8 A|"), head + "280 1|62 1|90 4|8 A|");
    EXPECT_EQ(merged(head + "280 1|1 a|70 2|", "100 AcDbXrecord|280 1|70 2|1 a|"), head + "280 1|70 2|1 a|");
    EXPECT_EQ(merged(object, "90 4|"), object + "90 4|");
}

TEST_F(ListMerge, AColorReplacesTheWholeColor) {
    const std::string head = "0 LAYER|5 1|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 A|70 0|";
    const std::string object = head + "62 9|420 255|430 B$C|6 Continuous|";
    const std::string marker = "100 AcDbLayerTableRecord|";
    EXPECT_EQ(merged(object, "62 3|"), head + "62 3|6 Continuous|");
    EXPECT_EQ(merged(object, "62 -9|"), head + "62 -9|420 255|430 B$C|6 Continuous|");  // off
    EXPECT_EQ(merged(object, marker + "2 A|70 0|62 9|6 Continuous|"), head + "62 9|6 Continuous|");
    EXPECT_EQ(merged(object, marker + "2 A|70 0|62 9|420 7|6 Continuous|"),
              head + "62 9|420 7|6 Continuous|");
    EXPECT_EQ(merged(object, "420 7|"), head + "62 9|420 7|6 Continuous|");
    EXPECT_EQ(merged(object, "420 7|430 B$D|"), head + "62 9|420 7|430 B$D|6 Continuous|");
}

TEST_F(ListMerge, PointsKeepTheirDimension) {
    const std::string flat = "0 VIEWPORT|5 1|100 AcDbEntity|8 0|100 AcDbViewport|10 1|20 1|30 0|12 5|22 5|";
    EXPECT_EQ(merged(flat, "12 6|22 6|32 7|"), replaced(flat, "12 5|22 5|", "12 6.0|22 6.0|"));
    const std::string old = "0 LINE|8 0|10 1|20 1|11 2|21 2|";
    EXPECT_EQ(merged(old, "10 3|20 3|30 0|"), replaced(old, "10 1|20 1|", "10 3.0|20 3.0|"));
    EXPECT_EQ(merged(old, "10 3|20 3|30 4|"), replaced(old, "10 1|20 1|", "10 3.0|20 3.0|30 4.0|"));
}

TEST_F(ListMerge, RefusesWhatTheDrawingCannotHold) {
    for (const char* list : {"8 no such layer|", "6 no such linetype|", "62 257|", "62 -1|", "370 26|",
                             "420 -1|", "10 nan|20 0|", "40 inf|", "100 AcDbCircle|40 1|",
                             "100 AcDbLine|10 1|20 1|30 1|100 AcDbLine|11 1|21 1|31 1|"}) {
        EXPECT_EQ(merged(kLine, list), "refused") << list;
    }
    EXPECT_EQ(merged(kLine, "6 BYBLOCK|"), replaced(kLine, "62   1|", "62   1|6 BYBLOCK|"));
    // What is there already may stay, however odd it is.
    const std::string odd = "0 LINE|5 1|100 AcDbEntity|8 gone|62 999|100 AcDbLine|10 nan|20 0|30 0|";
    EXPECT_EQ(merged(odd, odd), odd);
    const std::string layer = "0 LAYER|5 1|100 AcDbLayerTableRecord|2 A|70 0|62 7|370 -3|";
    for (const char* list : {"62 0|", "62 256|", "370 -1|", "6 ByLayer|"}) {
        EXPECT_EQ(merged(layer, list), "refused") << list;
    }
}

}  // namespace
}  // namespace korvex::test
