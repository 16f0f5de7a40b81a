// The thin layer over SQLite's interface.
#include "host/base/sqlite_database.h"

#include <sqlite3.h>

namespace korvex {

int SqliteDatabase::open(const std::string& file, int busyMilliseconds) {
    close();
    const int code = note(
        sqlite3_open_v2(file.c_str(), &m_connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr));
    if (code == SQLITE_OK) {
        sqlite3_busy_timeout(m_connection, busyMilliseconds);
    }
    return code;
}

void SqliteDatabase::close() {
    for (const auto& [sql, statement] : m_statements) {
        sqlite3_finalize(statement);
    }
    m_statements.clear();
    sqlite3_close(m_connection);
    m_connection = nullptr;
    m_damaged = false;
    m_lastFailure = 0;
}

int SqliteDatabase::execute(const char* sql) {
    return note(sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr));
}

std::string SqliteDatabase::firstText(const char* sql) {
    SqliteQuery query(*this, sql);
    return query.row() ? std::string(query.bytes(0)) : std::string();
}

sqlite3_stmt* SqliteDatabase::prepared(const char* sql) {
    sqlite3_stmt*& statement = m_statements[sql];
    if (!statement) {
        note(sqlite3_prepare_v3(m_connection, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr));
    }
    return statement;
}

int SqliteDatabase::note(int code) {
    const int primary = code & 0xFF;
    if (primary != SQLITE_OK && primary != SQLITE_ROW && primary != SQLITE_DONE) {
        m_lastFailure = code;
        m_damaged = m_damaged || primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
    }
    return code;
}

bool SqliteDatabase::hasMoved() const {
    int moved = 0;
    sqlite3_file_control(m_connection, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

std::string SqliteDatabase::failureText() const { return sqlite3_errstr(m_lastFailure); }

SqliteQuery::SqliteQuery(SqliteDatabase& database, const char* sql)
    : m_database(database), m_statement(database.prepared(sql)) {
    if (!m_statement) {
        m_failure = database.lastFailure();
    }
}

SqliteQuery::~SqliteQuery() {
    if (m_statement) {
        sqlite3_reset(m_statement);
        sqlite3_clear_bindings(m_statement);
    }
}

SqliteQuery& SqliteQuery::bind(int at, std::int64_t value) {
    sqlite3_bind_int64(m_statement, at, value);
    return *this;
}

SqliteQuery& SqliteQuery::bindText(int at, std::string_view text) {
    sqlite3_bind_text64(m_statement, at, text.data() ? text.data() : "", text.size(), SQLITE_TRANSIENT,
                        SQLITE_UTF8);
    return *this;
}

SqliteQuery& SqliteQuery::bindBytes(int at, const void* bytes, std::size_t size) {
    if (size == 0) {
        sqlite3_bind_zeroblob(m_statement, at, 0);  // a null pointer would store NULL
    } else {
        sqlite3_bind_blob64(m_statement, at, bytes, size, SQLITE_STATIC);
    }
    return *this;
}

bool SqliteQuery::row() {
    if (m_failure != 0) {
        return false;
    }
    const int code = m_database.note(sqlite3_step(m_statement));
    if (code != SQLITE_ROW && code != SQLITE_DONE) {
        m_failure = code;
    }
    return code == SQLITE_ROW;
}

int SqliteQuery::run() {
    while (row()) {
    }
    return m_failure;
}

std::int64_t SqliteQuery::integer(int column) const { return sqlite3_column_int64(m_statement, column); }

std::string_view SqliteQuery::bytes(int column) const {
    const auto* data = static_cast<const char*>(sqlite3_column_blob(m_statement, column));
    const int size = sqlite3_column_bytes(m_statement, column);
    return data ? std::string_view(data, static_cast<std::size_t>(size)) : std::string_view();
}

SqliteTransaction::SqliteTransaction(SqliteDatabase& database)
    : m_database(database), m_failure(SqliteQuery(database, "BEGIN IMMEDIATE").run()),
      m_open(m_failure == 0) {}

SqliteTransaction::~SqliteTransaction() {
    if (m_open) {
        m_database.execute("ROLLBACK");
    }
}

int SqliteTransaction::commit() {
    const int code = SqliteQuery(m_database, "COMMIT").run();
    m_open = code != 0;
    return code;
}

}  // namespace korvex
