// A connection to an SQLite file with its prepared statements, queries and transactions.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

namespace korvex {

class SqliteDatabase {
public:
    SqliteDatabase() = default;
    ~SqliteDatabase() { close(); }
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;

    /// Opens or makes the file; an SQLite result code. Other connections are waited for up to
    /// `busyMilliseconds`.
    int open(const std::string& file, int busyMilliseconds);
    void close();
    /// Runs statements that give no rows; an SQLite result code.
    int execute(const char* sql);
    /// The first column of the first row as text, empty for none.
    std::string firstText(const char* sql);

    /// A statement that stays prepared, found by the address of its text; null when it cannot be prepared.
    sqlite3_stmt* prepared(const char* sql);

    /// A statement met a file that is damaged or no database at all.
    bool isDamaged() const { return m_damaged; }
    /// The file was moved or deleted since it was opened.
    bool hasMoved() const;
    /// Keeps `code` as the last failure, unless it is none, and returns it.
    int note(int code);
    int lastFailure() const { return m_lastFailure; }
    std::string failureText() const;

private:
    sqlite3* m_connection = nullptr;
    std::unordered_map<const char*, sqlite3_stmt*> m_statements;
    bool m_damaged = false;
    int m_lastFailure = 0;
};

/// One run of a prepared statement. Parameters count from 1, columns from 0. Two runs of the same statement
/// may not overlap.
class SqliteQuery {
public:
    SqliteQuery(SqliteDatabase& database, const char* sql);
    ~SqliteQuery();
    SqliteQuery(const SqliteQuery&) = delete;
    SqliteQuery& operator=(const SqliteQuery&) = delete;

    SqliteQuery& bind(int at, std::int64_t value);
    SqliteQuery& bindText(int at, std::string_view text);
    /// The bytes must stay until the query ends.
    SqliteQuery& bindBytes(int at, const void* bytes, std::size_t size);

    /// Steps to the next row; false after the last one and after a failure.
    bool row();
    /// Runs to the end; an SQLite result code, 0 when done.
    int run();
    /// 0, or the SQLite result code of the failure that ended the query.
    int failure() const { return m_failure; }

    std::int64_t integer(int column) const;
    /// Valid until the next step.
    std::string_view bytes(int column) const;

private:
    SqliteDatabase& m_database;
    sqlite3_stmt* m_statement;
    int m_failure = 0;
};

/// Takes the write lock; rolls back at its end unless it was committed.
class SqliteTransaction {
public:
    explicit SqliteTransaction(SqliteDatabase& database);
    ~SqliteTransaction();
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;

    /// 0, or the SQLite result code that kept it from beginning.
    int failure() const { return m_failure; }
    int commit();

private:
    SqliteDatabase& m_database;
    int m_failure;
    bool m_open;
};

}  // namespace korvex
