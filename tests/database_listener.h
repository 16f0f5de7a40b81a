// Whether a drawing is changed, as whoever follows it hears.
#pragma once

#include "sdk/hxdbdatabase.h"

namespace korvex::test {

/// Counts all that a drawing tells.
class Listener final : public HxDbDatabaseReactor {
public:
    explicit Listener(HxDbDatabase& database) : m_database(database) { m_database.addReactor(this); }
    ~Listener() override { m_database.removeReactor(this); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    void objectAppended(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectOpenedForModify(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectModified(const HxDbDatabase*, const HxDbObject*) override { ++told; }
    void objectErased(const HxDbDatabase*, const HxDbObject*, bool) override { ++told; }
    int told = 0;

private:
    HxDbDatabase& m_database;
};

}  // namespace korvex::test
