// Result buffers by themselves, and as groups of a drawing.
#include "host/db/lists/group_chain.h"
#include "tests/db/lists/list_support.h"

namespace korvex::test {
namespace {

TEST(ResultBufferList, TakesEveryKindOfValue) {
    const double point[] = {1, 2.5, -3};
    const zds_name name = {0, 0x2A};
    char bytes[] = {1, 2, 3};
    const zds_binary chunk = {3, bytes};
    const Chain list(hxutBuildList(-1, name, RTDXF0, L"LINE", 10, point, 40, 2.5, 62, -7, 90, 123456L, 290, 1,
                                   160, std::int64_t{1} << 40, 310, &chunk, 330, name, RTSTR, L"t", RTREAL,
                                   1.5, RTSHORT, 4, RTLONG, 5L, RTPOINT, point, RTENAME, name, -3, 1001,
                                   L"APP", 1071, 9L, RTNONE));
    EXPECT_EQ(shown(list.get()),
              "-1=#2a 0=LINE 10=1,2.5,-3 40=2.5 62=-7 90=123456 290=1 160=1099511627776 310=[3] "
              "330=#2a 5005=t 5001=1.5 5003=4 5010=5 5002=1,2.5,-3 5006=#2a -3= 1001=APP 1071=9");
    bytes[0] = 9;  // the list has its own copy
    const resbuf* node = list.get();
    while (node->restype != 310) {
        node = node->rbnext;
    }
    EXPECT_EQ(node->resval.rbinary.buf[0], 1);
}

TEST(ResultBufferList, RefusesUnknownRestypesAndToleratesNulls) {
    for (const int unknown : {85, 1072, 4999, 5020 + 1, -7}) {
        EXPECT_EQ(hxutBuildList(1, L"text that must not leak", unknown, 0), nullptr) << unknown;
    }
    EXPECT_EQ(hxutBuildList(0), nullptr);
    const Chain nulls(hxutBuildList(
        1, static_cast<const wchar_t*>(nullptr), 10, static_cast<const double*>(nullptr), 330,
        static_cast<const std::int64_t*>(nullptr), 310, static_cast<const zds_binary*>(nullptr), 0));
    EXPECT_EQ(shown(nulls.get()), "1= 10=0,0,0 330=#0 310=[0]");
    EXPECT_EQ(hxutRelRb(nullptr), RTNORM);
    EXPECT_EQ(hxutNewString(nullptr), nullptr);
    hxutFreeString(nullptr);
}

TEST(ResultBufferList, LongChainsAreReleasedWithoutRecursion) {
    ChainBuilder chain;
    for (int i = 0; i < 500000; ++i) {
        chain.add(newNode(62));
    }
    EXPECT_EQ(hxutRelRb(chain.release()), RTNORM);
}

class GroupChain : public ListsTest {
protected:
    GroupChain() { database.imp()->format.paddedInts = false; }

    const GroupFormat& format() const { return database.imp()->format; }
    /// Groups from code and spelled value, as lines.
    std::string groups(const std::vector<std::pair<int, std::string>>& pairs) const {
        GroupWriter out(format());
        for (const auto& [code, value] : pairs) {
            out.rawText(code, value);
        }
        return out.take();
    }
    Chain chain(const std::string& text) const { return Chain(chainOfGroups(text, format(), database)); }
    std::string back(const resbuf* list) const {
        GroupWriter out(format());
        EXPECT_TRUE(appendChain(out, list, database));
        return out.take();
    }
};

TEST_F(GroupChain, JoinsPointsAndKeepsOrphans) {
    const std::string text = groups({{10, "1.0"},
                                     {20, "2.0"},
                                     {30, "3.0"},  // a point
                                     {40, "4.0"},
                                     {11, "1.0"},
                                     {21, "2.0"},
                                     {39, "0.5"},  // no z
                                     {20, "9.0"},
                                     {31, "8.0"},
                                     {38, "7.0"},  // without their x
                                     {10, "1.0"},
                                     {30, "5.0"},  // z without y
                                     {210, "0.0"},
                                     {220, "0.0"},
                                     {230, "1.0"},
                                     {1011, "1.0"},
                                     {1021, "2.0"},
                                     {1031, "3.0"}});
    EXPECT_EQ(shown(chain(text).get()),
              "10=1,2,3 40=4 11=1,2,0 39=0.5 20=9 31=8 38=7 10=1,0,0 30=5 210=0,0,1 1011=1,2,3");
    EXPECT_EQ(chain(""), nullptr);
}

TEST_F(GroupChain, WritesBackWhatItRead) {
    const HxDbHandle layer = database.layerZero().handle();
    wchar_t text[17];
    layer.getIntoAsciiBuffer(text);
    const std::string handle = TextCodec::utf8().encode(text);
    const std::string all = groups({{1, "T\xC3\xBCr ^J"},
                                    {5, "2A"},
                                    {10, "0.1"},
                                    {20, "2.5"},
                                    {30, "-1.0E+20"},
                                    {62, "-7"},
                                    {90, "-5"},
                                    {160, "5000000000"},
                                    {290, "1"},
                                    {310, "00FF7A"},
                                    {330, handle},
                                    {340, "FFFFFFF0"},
                                    {360, "0"},
                                    {370, "-3"},
                                    {420, "16711680"},
                                    {1000, ""},
                                    {1004, "AB"},
                                    {1005, "1F"},
                                    {1071, "33554432"}});
    const Chain list = chain(all);
    EXPECT_EQ(back(list.get()), all);

    HxDbObjectId id;
    const resbuf* node = list.get();
    while (node->restype != 330) {
        node = node->rbnext;
    }
    EXPECT_EQ(hxdbGetObjectId(id, node->resval.rlname), Hx::eOk);
    EXPECT_EQ(id, database.layerZero());
    EXPECT_EQ(hxdbGetObjectId(id, node->rbnext->resval.rlname), Hx::eInvalidInput);  // of no object
    EXPECT_TRUE(id.isNull());
}

TEST_F(GroupChain, LongChunksSurvive) {
    std::string hex;
    for (int i = 0; i < 70000; ++i) {
        hex += i % 3 == 0 ? "A5" : "0F";
    }
    const Chain list = chain(groups({{310, hex}, {1, "end"}}));
    std::string bytes;
    for (const resbuf* node = list.get(); node && node->restype == 310; node = node->rbnext) {
        ASSERT_GT(node->resval.rbinary.clen, 0);
        bytes.append(node->resval.rbinary.buf, static_cast<std::size_t>(node->resval.rbinary.clen));
    }
    ASSERT_EQ(bytes.size(), 70000U);
    EXPECT_EQ(bytes.substr(0, 3), "\xA5\x0F\x0F");
    std::string written;
    const std::string out = back(list.get());
    GroupCursor cursor(out, format());
    while (cursor.next() && cursor.code() == 310) {
        written += cursor.asChunk();
    }
    EXPECT_EQ(written, bytes);
}

TEST_F(GroupChain, NamesTheNodeThatNoGroupHolds) {
    const zds_name garbage = {0x1234, 0x10};
    HxDbDatabase other;
    zds_name foreign = {0, 0};
    hxdbGetZdsName(foreign, other.layerZero());
    const zds_binary noBytes = {5, nullptr};
    Chain badChunk = newNode(310);
    badChunk->resval.rbinary = noBytes;
    struct Row {
        Chain list;
        int code;
    };
    Row rows[] = {{Chain(hxutBuildList(1, L"a", RTSTR, L"b", 0)), RTSTR},
                  {Chain(hxutBuildList(1, L"a", -3, 0)), -3},
                  {Chain(hxutBuildList(-1, garbage, 0)), -1},
                  {Chain(hxutBuildList(70, 1, 330, garbage, 0)), 330},
                  {Chain(hxutBuildList(340, foreign, 0)), 340},
                  {std::move(badChunk), 310}};
    for (const Row& row : rows) {
        GroupWriter out(format());
        int bad = 0;
        EXPECT_FALSE(appendChain(out, row.list.get(), database, &bad));
        EXPECT_EQ(bad, row.code);
    }
}

}  // namespace
}  // namespace korvex::test
