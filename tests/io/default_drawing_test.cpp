// The drawing that NEW begins with.
#include "host/io/default_drawing.h"

#include "sdk/hxdbdict.h"
#include "tests/io/drawing_support.h"

#include <ctime>
#include <set>

namespace korvex::test {

namespace {

class DefaultDrawing : public ::testing::Test {
protected:
    DefaultDrawing() { buildDefaultDrawing(m_database); }
    HxDbDatabase m_database{false};
};

}  // namespace

TEST_F(DefaultDrawing, HasWhatEveryDrawingNeeds) {
    EXPECT_STREQ(m_database.version(), L"AC1027");
    EXPECT_FALSE(m_database.isModified());
    EXPECT_EQ(m_database.clayer(), m_database.layerZero());
    EXPECT_FALSE(m_database.continuousLinetype().isNull());
    EXPECT_FALSE(m_database.paperSpaceId().isNull());
    EXPECT_TRUE(m_database.tilemode());
    EXPECT_TRUE(m_database.plotStyleMode());
    for (const HxDbStub& stub : m_database.imp()->stubs) {
        EXPECT_FALSE(stub.implicit) << "nothing had to be added to it: handle " << stub.handle;
    }
    HxDbObjectPointer<HxDbDictionary> styles(m_database.getPlotStyleNameDictionaryId(), HxDb::kForRead);
    ASSERT_EQ(styles.openStatus(), Hx::eOk);
    EXPECT_TRUE(styles->has(L"Normal"));

    HxArray<HxDbObjectId> layouts;
    hxdbLayoutManager()->layouts(&m_database, layouts);
    ASSERT_EQ(layouts.length(), 2);
    HxDbObjectPointer<HxDbLayout> first(layouts[1], HxDb::kForRead);
    EXPECT_STREQ(first->getLayoutName().GetString(), L"Layout1");
    EXPECT_EQ(first->getBlockTableRecordId(), m_database.paperSpaceId());
}

TEST_F(DefaultDrawing, ReferencesLeadToObjects) {
    const std::string bytes = written(m_database);
    const HxDbDatabase::Imp& db = *m_database.imp();
    std::set<std::uint64_t> handles;
    for (const FileItem& item : db.layout) {
        if (item.kind != FileItem::object) {
            continue;
        }
        EXPECT_TRUE(handles.insert(item.stub->handle).second);
        GroupCursor cursor(item.stub->blob.groups(), db.format);
        while (cursor.next()) {
            const bool isReference = cursor.code() >= 330 && groupType(cursor.code()) == GroupType::handle;
            if (isReference && cursor.asHandle() != 0) {
                EXPECT_TRUE(db.handles.find(cursor.asHandle())) << cursor.bytes();
            }
        }
    }
    EXPECT_LT(*handles.rbegin(), db.handles.seed());
}

TEST_F(DefaultDrawing, OpensAgainAndIsMadeNow) {
    const std::string bytes = written(m_database);
    const auto again = opened(bytes);
    EXPECT_TRUE(written(*again) == bytes);
    std::vector<HeaderGroup> groups;
    ASSERT_TRUE(headerValue(*again, L"$TDUCREATE", groups));
    constexpr double kEpoch = 2440588;
    const double now = kEpoch + static_cast<double>(std::time(nullptr)) / 86400.0;
    EXPECT_NEAR(groups.at(0).real, now, 0.01);
}

}  // namespace korvex::test
