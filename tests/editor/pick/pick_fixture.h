// Drawings written as text for picking in: every object has a handle by which the tests name what they hit.
#pragma once

#include "host/editor/picker.h"
#include "sdk/hxdbdatabase.h"
#include "sdk/hxdbentity.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace korvex::test {

/// The text of a drawing. Groups are words: a code and a value without blanks, one after the other.
class DrawingText {
public:
    /// `flags` are those of group 70: 1 frozen, 4 locked; a negative colour is off.
    DrawingText& layer(const std::string& name, int flags = 0, int color = 7) {
        m_layers += groups("0 LAYER 5 " + handle() + " 2 " + name + " 70 " + std::to_string(flags) + " 62 " +
                           std::to_string(color) + " 6 Continuous");
        return *this;
    }
    /// Entities begin with their "0" group; where they name no layer they are on "0".
    DrawingText& block(const std::string& name, const std::string& base, const std::string& entities,
                       int flags = 0) {
        m_blocks +=
            groups("0 BLOCK 5 " + handle() + " 8 0 2 " + name + " 70 " + std::to_string(flags) + " " + base) +
            groups(entities) + groups("0 ENDBLK 5 " + handle() + " 8 0");
        return *this;
    }
    DrawingText& add(const std::string& entities) {
        m_entities += groups(entities);
        return *this;
    }
    std::string text() const {
        return groups("0 SECTION 2 HEADER 9 $ACADVER 1 AC1015 9 $TILEMODE 70 1 0 ENDSEC 0 SECTION 2 TABLES") +
               groups("0 TABLE 2 LAYER 5 2 70 9") + m_layers + groups("0 ENDTAB 0 ENDSEC") +
               groups("0 SECTION 2 BLOCKS") +
               groups("0 BLOCK 5 20 8 0 2 *Model_Space 70 0 10 0 20 0 0 ENDBLK 5 21 8 0") +
               groups("0 BLOCK 5 22 8 0 2 *Paper_Space 70 0 10 0 20 0 0 ENDBLK 5 23 8 0") + m_blocks +
               groups("0 ENDSEC 0 SECTION 2 ENTITIES") + m_entities + groups("0 ENDSEC 0 EOF");
    }

private:
    static std::string groups(std::string words) {
        if (words.empty()) {
            return words;
        }
        for (char& c : words) {
            c = c == ' ' ? '\n' : c;
        }
        return words + "\n";
    }
    /// From F000 up; the tests name their own below that.
    std::string handle() {
        char buffer[20];
        std::snprintf(buffer, sizeof buffer, "%X", m_next++);
        return buffer;
    }

    std::string m_layers, m_blocks, m_entities;
    unsigned m_next = 0xF000;
};

class PickTest : public ::testing::Test {
protected:
    void load(const DrawingText& drawing) {
        m_database = std::make_unique<HxDbDatabase>(false);
        ASSERT_EQ(Hx::eOk, m_database->readDwgFile(write("drawing.dxf", drawing).c_str()))
            << testing::PrintToString(std::wstring(m_database->readError()));
    }
    std::wstring write(const char* name, const DrawingText& drawing) {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(drawing.text()));
        return m_folder.filePath(name).toStdWString();
    }

    HxDbDatabase& database() { return *m_database; }
    HxDbObjectId model() { return m_database->modelSpaceId(); }
    HxDbObjectId paper() { return m_database->paperSpaceId(); }
    HxDbObjectId byHandle(std::uint64_t handle) {
        HxDbObjectId id;
        EXPECT_EQ(Hx::eOk, m_database->getHxDbObjectId(id, false, HxDbHandle(handle)));
        return id;
    }
    HxDbObjectId layer(const wchar_t* name) {
        const HxDbObjectPointer<HxDbLayerTable> table(m_database->layerTableId(), HxDb::kForRead);
        HxDbObjectId id;
        EXPECT_EQ(Hx::eOk, table->getAt(name, id));
        return id;
    }
    void freeze(const wchar_t* name, bool frozen = true) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        EXPECT_EQ(Hx::eOk, record->setIsFrozen(frozen));
    }
    void turnOff(const wchar_t* name, bool off = true) {
        const HxDbObjectPointer<HxDbLayerTableRecord> record(layer(name), HxDb::kForWrite);
        record->setIsOff(off);
    }

    bool pick(HxDbObjectId space, double x, double y, PickHit& hit, HxDbObjectId viewport = {},
              double halfSize = 0.1) {
        PickRequest request;
        request.database = m_database.get();
        request.space = space;
        request.viewport = viewport;
        request.point = {x, y};
        request.halfSize = halfSize;
        return pickAt(request, hit);
    }
    /// "A1 in B2 in C3" for entity A1 in reference B2 in reference C3; "" when nothing is there.
    std::string pickIn(HxDbObjectId space, double x, double y, HxDbObjectId viewport = {}) {
        PickHit hit;
        if (!pick(space, x, y, hit, viewport)) {
            return {};
        }
        std::string text = name(hit.entity);
        for (const HxDbObjectId& container : hit.containers) {
            text += " in " + name(container);
        }
        return text;
    }
    std::string pick(double x, double y) { return pickIn(model(), x, y); }

private:
    static std::string name(const HxDbObjectId& id) {
        char buffer[20];
        std::snprintf(buffer, sizeof buffer, "%llX", static_cast<unsigned long long>(id.handle().value()));
        return buffer;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<HxDbDatabase> m_database;
};

}  // namespace korvex::test
