// Header values: reading them from a drawing, looking them up, changing them under the journal.
#include "host/db/kernel/header.h"

#include "host/db/groups/group_cursor.h"
#include "host/db/groups/group_writer.h"
#include "host/db/kernel/database_imp.h"
#include "host/db/kernel/reactor_list.h"

namespace korvex {

namespace {

constexpr int kNameCode = 9;

std::string narrow(const std::wstring& name) { return std::string(name.begin(), name.end()); }

/// The value's groups with the names of now.
Blob current(const HxDbDatabase::Imp& db, const Header::Value& value) {
    std::string fresh;
    if (value.groups.generation() < db.names.size() &&
        db.names.refresh(value.name, false, value.groups, db.format, fresh)) {
        return {std::move(fresh), db.names.size()};
    }
    return value.groups;
}

void writeGroup(GroupWriter& out, const HeaderGroup& group) {
    switch (groupType(group.code)) {
    case GroupType::real: out.real(group.code, group.real); break;
    case GroupType::text:
    case GroupType::handle:
    case GroupType::binary: out.text(group.code, group.text); break;
    default: out.integer(group.code, group.integer); break;
    }
}

bool sameGroups(const std::vector<HeaderGroup>& a, const std::vector<HeaderGroup>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const HeaderGroup& x, const HeaderGroup& y) {
        return x.code == y.code && x.text == y.text && x.real == y.real && x.integer == y.integer;
    });
}

}  // namespace

Header::Value* Header::find(std::string_view name) {
    for (Value& value : values) {
        if (value.name == name) {
            return &value;
        }
    }
    return nullptr;
}

const Header::Value* Header::find(std::string_view name) const {
    return const_cast<Header*>(this)->find(name);
}

void Header::read(std::string_view groups, const GroupFormat& format) {
    GroupCursor cursor(groups, format);
    std::size_t start = groups.size();
    std::string name;
    const auto finish = [&](std::size_t end) {
        if (!name.empty()) {
            values.push_back({name, Blob(groups.substr(start, end - start))});
        }
    };
    while (cursor.next()) {
        if (cursor.code() == kNameCode) {
            finish(cursor.offset());
            start = cursor.offset();
            const std::wstring text = cursor.asText();
            name = narrow(text);
            name.erase(0, name.find_first_not_of(' '));
            name.erase(name.find_last_not_of(' ') + 1);
        }
    }
    finish(groups.size());
}

bool headerValue(const HxDbDatabase& database, const std::wstring& name, std::vector<HeaderGroup>& groups) {
    const HxDbDatabase::Imp& db = *database.imp();
    const Header::Value* value = db.header.find(narrow(name));
    groups.clear();
    if (!value) {
        return false;
    }
    const Blob blob = current(db, *value);
    GroupCursor cursor(blob.groups(), db.format);
    while (cursor.next()) {
        if (cursor.code() == kNameCode) {
            continue;
        }
        HeaderGroup group;
        group.code = cursor.code();
        group.text = cursor.asText();
        switch (groupType(cursor.code())) {
        case GroupType::real: group.real = cursor.asReal(); break;
        case GroupType::text:
        case GroupType::handle:
        case GroupType::binary: break;
        default: group.integer = cursor.asInteger(); break;
        }
        groups.push_back(std::move(group));
    }
    return true;
}

void setHeaderValue(HxDbDatabase& database, const std::wstring& name,
                    const std::vector<HeaderGroup>& groups) {
    HxDbDatabase::Imp& db = *database.imp();
    std::vector<HeaderGroup> old;
    if (headerValue(database, name, old) && sameGroups(old, groups)) {
        return;
    }
    const std::wstring bare = name.substr(name.find_first_not_of(L'$'));
    notifyAll(db.reactors,
              [&](HxDbDatabaseReactor& r) { r.headerSysVarWillChange(&database, bare.c_str()); });
    const std::string key = narrow(name);
    db.journal.recordHeader(key);
    GroupWriter out(db.format);
    out.text(kNameCode, name);
    for (const HeaderGroup& group : groups) {
        writeGroup(out, group);
    }
    Header::Value* value = db.header.find(key);
    if (!value) {
        db.header.values.push_back({key, {}});
        value = &db.header.values.back();
    }
    value->groups = Blob(out.take(), db.names.size());
    db.modified = db.modified || !db.journal.isLooking();
    ++db.changes;
    db.currentLayer = nullptr;
    notifyAll(db.reactors,
              [&](HxDbDatabaseReactor& r) { r.headerSysVarChanged(&database, bare.c_str(), true); });
}

long long headerInteger(const HxDbDatabase& database, const std::wstring& name, long long fallback) {
    std::vector<HeaderGroup> groups;
    return headerValue(database, name, groups) && !groups.empty() ? groups.front().integer : fallback;
}

std::wstring headerText(const HxDbDatabase& database, const std::wstring& name,
                        const std::wstring& fallback) {
    std::vector<HeaderGroup> groups;
    return headerValue(database, name, groups) && !groups.empty() ? groups.front().text : fallback;
}

}  // namespace korvex
