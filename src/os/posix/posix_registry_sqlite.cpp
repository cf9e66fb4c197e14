#include "os/posix/posix_registry_sqlite.hpp"

#include "os/registry_store.hpp"

namespace quiller::posix {
namespace {

// "QREG": marks a database as a registry store, so a foreign database is never written to.
constexpr std::int64_t kApplicationId = 0x51524547;
constexpr std::int64_t kSchemaVersion = 1;
// How long a call waits for another process's transaction.
constexpr int kBusyTimeoutMs = 5000;

// Keys form a tree under the four roots (ids 1 to 4, parent 0). Names keep their case; lookups
// and the enumeration order use the lower-cased name.
constexpr const char* kSchema = R"sql(
CREATE TABLE IF NOT EXISTS keys(
  id INTEGER PRIMARY KEY,
  parent INTEGER NOT NULL,
  name TEXT NOT NULL,
  folded TEXT NOT NULL,
  UNIQUE(parent, folded));
CREATE TABLE IF NOT EXISTS key_values(
  key INTEGER NOT NULL,
  name TEXT NOT NULL,
  folded TEXT NOT NULL,
  type INTEGER NOT NULL,
  data BLOB NOT NULL,
  PRIMARY KEY(key, folded)) WITHOUT ROWID;
INSERT OR IGNORE INTO keys(id, parent, name, folded) VALUES
  (1, 0, 'HKEY_CLASSES_ROOT', 'hkey_classes_root'),
  (2, 0, 'HKEY_CURRENT_USER', 'hkey_current_user'),
  (3, 0, 'HKEY_LOCAL_MACHINE', 'hkey_local_machine'),
  (4, 0, 'HKEY_USERS', 'hkey_users');
PRAGMA application_id = 1364346183;
PRAGMA user_version = 1;
)sql";

constexpr const char* kStatements[] = {
    "SELECT id FROM keys WHERE parent = ?1 AND folded = ?2",
    "INSERT INTO keys(parent, name, folded) VALUES(?1, ?2, ?3)",
    "SELECT type, data FROM key_values WHERE key = ?1 AND folded = ?2",
    "INSERT INTO key_values(key, name, folded, type, data) VALUES(?1, ?2, ?3, ?4, ?5) "
    "ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type, data = excluded.data",
    "DELETE FROM key_values WHERE key = ?1 AND folded = ?2",
    "WITH RECURSIVE tree(id) AS (SELECT ?1 UNION ALL "
    "SELECT keys.id FROM keys JOIN tree ON keys.parent = tree.id) "
    "DELETE FROM key_values WHERE key IN tree",
    "WITH RECURSIVE tree(id) AS (SELECT ?1 UNION ALL "
    "SELECT keys.id FROM keys JOIN tree ON keys.parent = tree.id) "
    "DELETE FROM keys WHERE id IN tree",
    "SELECT name FROM keys WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2",
    "SELECT name FROM key_values WHERE key = ?1 ORDER BY folded LIMIT 1 OFFSET ?2",
    "PRAGMA data_version",
};
static_assert(std::size(kStatements) == static_cast<std::size_t>(Sql::Count));

int registry_code(int sqlite_result) {
    switch (sqlite_result & 0xFF) {
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return reg_error::kOk;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return reg_error::kBusy;
        case SQLITE_CORRUPT:
        case SQLITE_NOTADB:
            return reg_error::kCorrupt;
        case SQLITE_NOMEM:
        case SQLITE_TOOBIG:
            return reg_error::kOutOfMemory;
        case SQLITE_READONLY:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return reg_error::kAccessDenied;
        default:
            return reg_error::kIoFailed;
    }
}

}  // namespace

int SqliteDb::open(const std::string& path) {
    close();
    path_ = path;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    int code = fail(sqlite3_open_v2(path.c_str(), &db_, flags, nullptr));
    if (code == 0) {
        sqlite3_busy_timeout(db_, kBusyTimeoutMs);
        code = check_owner();  // before anything writes to a file that may not be ours
    }
    if (code == 0) code = use_wal();
    // NORMAL in WAL mode: a commit survives the process being killed; only a power cut can
    // lose the last commits, never the store's consistency.
    if (code == 0) code = exec("PRAGMA synchronous = NORMAL");
    if (code == 0) code = prepare_schema();
    if (code != 0) close();
    return code;
}

// Switching a new file to the WAL journal needs a moment alone with it, and SQLite doesn't wait
// for that (the busy timeout doesn't apply), so this waits as the timeout would.
int SqliteDb::use_wal() {
    for (int waited = 0;; waited += 5) {
        const int rc = sqlite3_exec(db_, "PRAGMA journal_mode = WAL", nullptr, nullptr, nullptr);
        if ((rc & 0xFF) != SQLITE_BUSY || waited >= kBusyTimeoutMs) return fail(rc);
        sqlite3_sleep(5);
    }
}

void SqliteDb::close() {
    for (sqlite3_stmt*& s : statements_) {
        sqlite3_finalize(s);
        s = nullptr;
    }
    if (db_) {
        if (in_transaction()) sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
        db_ = nullptr;
    }
}

int SqliteDb::fail(int sqlite_result) {
    const int code = registry_code(sqlite_result);
    if (code != 0) {
        detail_ = path_ + ": " + (db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(sqlite_result));
    }
    return code;
}

void SqliteDb::rollback() {
    if (in_transaction()) sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
}

int SqliteDb::exec(const char* sql) {
    return fail(sqlite3_exec(db_, sql, nullptr, nullptr, nullptr));
}

sqlite3_stmt* SqliteDb::statement(Sql which) {
    sqlite3_stmt*& s = statements_[static_cast<std::size_t>(which)];
    if (!s) {
        const char* sql = kStatements[static_cast<std::size_t>(which)];
        if (fail(sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, &s, nullptr)) != 0)
            return nullptr;
    } else {
        sqlite3_reset(s);
        sqlite3_clear_bindings(s);
    }
    return s;
}

std::int64_t SqliteDb::data_version() {
    const Query q(*this, Sql::DataVersion);
    if (!q || sqlite3_step(q.get()) != SQLITE_ROW) return -1;
    return sqlite3_column_int64(q.get(), 0);
}

int SqliteDb::check_owner() {
    sqlite3_stmt* s = nullptr;
    const char* sql =
        "SELECT (SELECT application_id FROM pragma_application_id), "
        "(SELECT count(*) FROM sqlite_schema), (SELECT user_version FROM pragma_user_version)";
    int code = fail(sqlite3_prepare_v2(db_, sql, -1, &s, nullptr));
    if (code == 0) code = fail(sqlite3_step(s));
    if (code == 0) {
        const std::int64_t id = sqlite3_column_int64(s, 0);
        const std::int64_t objects = sqlite3_column_int64(s, 1);
        const std::int64_t version = sqlite3_column_int64(s, 2);
        if ((id != kApplicationId && (id != 0 || objects != 0)) || version > kSchemaVersion) {
            detail_ = path_ + ": not a registry store of this version";
            code = reg_error::kCorrupt;
        }
    }
    sqlite3_finalize(s);
    return code;
}

int SqliteDb::prepare_schema() {
    sqlite3_stmt* s = nullptr;
    int code = fail(sqlite3_prepare_v2(db_, "PRAGMA user_version", -1, &s, nullptr));
    if (code == 0) code = fail(sqlite3_step(s));
    const bool ready = code == 0 && sqlite3_column_int64(s, 0) == kSchemaVersion;
    sqlite3_finalize(s);
    if (code != 0 || ready) return code;
    code = exec("BEGIN IMMEDIATE");
    if (code == 0) code = exec(kSchema);
    if (code == 0) code = exec("COMMIT");
    if (code != 0) rollback();
    return code;
}

Transaction::Transaction(SqliteDb& db, bool write) : db_(db) {
    if (db.in_transaction()) return;
    status_ = db.exec(write ? "BEGIN IMMEDIATE" : "BEGIN");
    own_ = status_ == 0;
}

Transaction::~Transaction() {
    if (own_) db_.rollback();
}

int Transaction::commit() {
    if (!own_) return 0;
    own_ = false;
    const int code = db_.exec("COMMIT");
    if (code != 0) db_.rollback();
    return code;
}

}  // namespace quiller::posix
