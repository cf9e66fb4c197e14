// The SQLite database behind the POSIX registry store: opening (WAL, busy timeout, the schema),
// cached prepared statements, transactions, and SQLite results as registry error codes.
#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quiller::posix {

// The statements the store runs, prepared once per connection.
enum class Sql {
    FindKey,
    InsertKey,
    ReadValue,
    SetValue,
    DeleteValue,
    DeleteTreeValues,
    DeleteTreeKeys,
    EnumKey,
    EnumValue,
    DataVersion,
    Count
};

class SqliteDb {
  public:
    SqliteDb() = default;
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;
    ~SqliteDb() { close(); }

    // Opens `path` (":memory:" for a private store) and makes the schema. 0 or an error code;
    // the reason is kept for detail().
    int open(const std::string& path);
    bool is_open() const { return db_ != nullptr; }
    void close();

    // A cached statement, reset and ready for binding.
    sqlite3_stmt* statement(Sql which);
    // The registry error code of a SQLite result (0 for OK, ROW and DONE); keeps the reason.
    int fail(int sqlite_result);
    // Runs SQL text without results; 0 or an error code.
    int exec(const char* sql);
    sqlite3_int64 last_insert_id() const { return sqlite3_last_insert_rowid(db_); }
    int changes() const { return sqlite3_changes(db_); }
    bool in_transaction() const { return db_ && !sqlite3_get_autocommit(db_); }
    // Rolls back the open transaction, if any, keeping detail() as it is.
    void rollback();
    // Counts commits of other connections (PRAGMA data_version).
    std::int64_t data_version();

    // Why the last call failed: "path: SQLite's message".
    const std::string& detail() const { return detail_; }

  private:
    int use_wal();
    int prepare_schema();
    int check_owner();

    sqlite3* db_ = nullptr;
    std::string path_;
    std::string detail_;
    std::array<sqlite3_stmt*, static_cast<std::size_t>(Sql::Count)> statements_{};
};

// A cached statement for one use: reset when the use ends, so that no finished query keeps a
// read snapshot open between calls.
class Query {
  public:
    Query(SqliteDb& db, Sql which) : s_(db.statement(which)) {}
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    ~Query() {
        if (s_) sqlite3_reset(s_);
    }
    explicit operator bool() const { return s_ != nullptr; }
    sqlite3_stmt* get() const { return s_; }

  private:
    sqlite3_stmt* s_;
};

// A transaction for one store call, or none inside a batch that already holds one. Rolls back
// unless committed.
class Transaction {
  public:
    Transaction(SqliteDb& db, bool write);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();
    // 0 when the transaction began (or a batch holds one), else the error code.
    int status() const { return status_; }
    int commit();

  private:
    SqliteDb& db_;
    bool own_ = false;
    int status_ = 0;
};

}  // namespace quiller::posix
