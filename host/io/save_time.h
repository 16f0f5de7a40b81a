// The times that a drawing keeps of its making and saving.
#pragma once

#include "host/db/kernel/header.h"

#include <vector>

namespace korvex {

/// Sets a header value of one real, in the drawing's form, without journal and notifications; nothing happens
/// where the drawing lacks it.
void setHeaderReal(HxDbDatabase& database, const char* name, double value);

/// Now as drawings write it: Julian day and fraction of the day since midnight.
double julianNow(bool universal);

/// Puts the present time into $TDUPDATE and $TDUUPDATE of a drawing with changes, and takes it back unless
/// the saving succeeded.
class SaveTime {
public:
    explicit SaveTime(HxDbDatabase& database);
    ~SaveTime();
    SaveTime(const SaveTime&) = delete;
    SaveTime& operator=(const SaveTime&) = delete;
    void keep() { m_before.clear(); }

private:
    HxDbDatabase& m_database;
    std::vector<Header::Value> m_before;
};

}  // namespace korvex
