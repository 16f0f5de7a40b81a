// Lists in tests: kept, shown as words, made in a drawing of their own.
#pragma once

#include "host/db/kernel/database_imp.h"
#include "host/db/lists/chain.h"
#include "sdk/hxdbdict.h"
#include "sdk/hxdbentity.h"
#include "sdk/hxed.h"

#include <gtest/gtest.h>
#include <sstream>

namespace korvex::test {

/// "code=value" words; names of objects by their handle.
inline std::string shown(const resbuf* list) {
    std::ostringstream out;
    for (; list; list = list->rbnext) {
        const auto& value = list->resval;
        out << (out.tellp() > 0 ? " " : "") << list->restype << '=';
        switch (valueKind(list->restype)) {
        case ValueKind::none: break;
        case ValueKind::real: out << value.rreal; break;
        case ValueKind::point:
            out << value.rpoint[0] << ',' << value.rpoint[1] << ',' << value.rpoint[2];
            break;
        case ValueKind::int16: out << value.rint; break;
        case ValueKind::int32: out << value.rlong; break;
        case ValueKind::int64: out << value.mnInt64; break;
        case ValueKind::text: out << TextCodec::utf8().encode(textOf(*list)); break;
        case ValueKind::name: out << '#' << std::hex << value.rlname[1] << std::dec; break;
        case ValueKind::chunk: out << '[' << value.rbinary.clen << ']'; break;
        }
    }
    return out.str();
}

/// An empty drawing that is the working database for the test.
class ListsTest : public ::testing::Test {
protected:
    ListsTest() { hxdbSetWorkingDatabase(&database); }
    ~ListsTest() override { hxdbSetWorkingDatabase(nullptr); }

    HxDbObjectId addLayer(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTable> table(database.layerTableId(), HxDb::kForWrite);
        auto* layer = new HxDbLayerTableRecord;
        HxDbObjectId id;
        EXPECT_EQ(layer->setName(name), Hx::eOk);
        EXPECT_EQ(table->add(id, layer), Hx::eOk);
        layer->close();
        return id;
    }
    /// A line from the origin to 1,2 with what else is given.
    void makeLine(zds_name name, Chain more = nullptr) {
        const double ends[2][3] = {{0, 0, 0}, {1, 2, 0}};
        const Chain list(hxutBuildList(RTDXF0, L"LINE", 10, ends[0], 11, ends[1], 0));
        list->rbnext->rbnext->rbnext = more.release();
        ASSERT_EQ(hxdbEntMakeX(list.get(), name), RTNORM);
    }
    static std::string list(const zds_name name, const resbuf* applications = nullptr) {
        return shown(Chain(hxdbEntGetX(name, applications)).get());
    }
    /// The list without what differs from drawing to drawing: name, handle, owner and markers.
    static std::string values(const zds_name name) {
        const Chain all(hxdbEntGet(name));
        ChainBuilder kept;
        for (resbuf* node = all.get(); node; node = node->rbnext) {
            const int code = node->restype;
            if (code != -1 && code != 5 && code != 330 && code != 100) {
                kept.add(valueKind(code) == ValueKind::text ? textNode(code, textOf(*node)) : copyOf(*node));
            }
        }
        return shown(Chain(kept.release()).get());
    }

    HxDbDatabase database;

private:
    static Chain copyOf(const resbuf& node) {
        Chain copy = newNode(node.restype);
        copy->resval = node.resval;
        return copy;
    }
};

}  // namespace korvex::test
