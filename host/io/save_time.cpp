// Times in the header.
#include "host/io/save_time.h"

#include "host/db/kernel/database_imp.h"
#include "host/io/group_edits.h"

#include <QDateTime>

namespace korvex {

namespace {

struct Time {
    const char* name;
    bool isUniversal;
};
constexpr Time kTimes[] = {{"$TDUPDATE", false}, {"$TDUUPDATE", true}};
constexpr int kTimeCode = 40;

}  // namespace

void setHeaderReal(HxDbDatabase& database, const char* name, double value) {
    HxDbDatabase::Imp& db = *database.imp();
    if (Header::Value* found = db.header.find(name)) {
        found->groups =
            Blob(withReal(found->groups.groups(), db.format, kTimeCode, value), found->groups.generation());
    }
}

double julianNow(bool universal) {
    constexpr double kMilliseconds = 24.0 * 60 * 60 * 1000;
    const QDateTime now = universal ? QDateTime::currentDateTimeUtc() : QDateTime::currentDateTime();
    return static_cast<double>(now.date().toJulianDay()) + now.time().msecsSinceStartOfDay() / kMilliseconds;
}

SaveTime::SaveTime(HxDbDatabase& database) : m_database(database) {
    const HxDbDatabase::Imp& db = *database.imp();
    for (const Time& time : kTimes) {
        const Header::Value* value = db.modified ? db.header.find(time.name) : nullptr;
        if (value) {
            m_before.push_back(*value);
            setHeaderReal(database, time.name, julianNow(time.isUniversal));
        }
    }
}

SaveTime::~SaveTime() {
    for (const Header::Value& value : m_before) {
        if (Header::Value* now = m_database.imp()->header.find(value.name)) {
            now->groups = value.groups;
        }
    }
}

}  // namespace korvex
