// The POSIX registry store: keys and values in a SQLite database, one transaction per call (or
// one per batch), safe for several processes at once (WAL journal, 5 s busy timeout).
#include "os/posix/posix_registry.hpp"

#include <unordered_map>
#include <vector>

#include "value/text.hpp"
#include "os/posix/posix_registry_sqlite.hpp"
#include "os/registry_path.hpp"

namespace quiller::posix {

// Makes the database file's directory and the file itself (mode 0600) if they are missing.
void prepare_registry_file(const std::string& path);

namespace {

constexpr std::size_t kMaxCachedKeys = 4096;

void bind_text(sqlite3_stmt* s, int index, std::string_view text) {
    sqlite3_bind_text64(s, index, text.empty() ? "" : text.data(), text.size(), SQLITE_STATIC,
                        SQLITE_UTF8);
}

class SqliteRegistryStore final : public RegistryStore {
  public:
    explicit SqliteRegistryStore(std::string path) : path_(std::move(path)) {}

    int connect(std::string_view, RegistryRoot) override { return reg_error::kBadNetPath; }

    RegistryStatus open_key(const RegistryKeyRef& key) override {
        return run(false, [&] { return resolve_status(key, false); });
    }
    RegistryStatus create_key(const RegistryKeyRef& key) override {
        return run(true, [&] { return resolve_status(key, true); });
    }
    RegistryStatus read_value(const RegistryKeyRef& key, std::string_view name,
                              RegistryData& out) override {
        return run(false, [&] { return do_read(key, name, out); });
    }
    RegistryStatus set_value(const RegistryKeyRef& key, std::string_view name,
                             const RegistryData& data) override {
        return run(true, [&] { return do_set(key, name, data); });
    }
    RegistryStatus write_value(const RegistryKeyRef& key, std::string_view name,
                               const RegistryData& data) override {
        return run(true, [&] {
            const RegistryStatus made = resolve_status(key, true);
            return made.ok() ? do_set(key, name, data) : made;
        });
    }
    RegistryStatus delete_value(const RegistryKeyRef& key, std::string_view name) override {
        return run(true, [&] { return do_delete_value(key, name); });
    }
    RegistryStatus delete_key(const RegistryKeyRef& key) override {
        return run(true, [&] { return do_delete_key(key); });
    }
    RegistryStatus enum_key(const RegistryKeyRef& key, std::uint32_t index,
                            std::string& name) override {
        return run(false, [&] { return do_enum(Sql::EnumKey, key, index, name); });
    }
    RegistryStatus enum_value(const RegistryKeyRef& key, std::uint32_t index,
                              std::string& name) override {
        return run(false, [&] { return do_enum(Sql::EnumValue, key, index, name); });
    }

    std::string error_text(int code) override;
    void begin_batch() override;
    int end_batch() override;

  private:
    int ensure_open();
    template <class Body>
    RegistryStatus run(bool write, Body body);
    void sync_cache();
    int resolve(const RegistryKeyRef& key, bool create, sqlite3_int64& id);
    int find_child(sqlite3_int64 parent, std::string_view name, std::string_view folded,
                   bool create, sqlite3_int64& id);
    RegistryStatus resolve_status(const RegistryKeyRef& key, bool create) {
        sqlite3_int64 id = 0;
        return {resolve(key, create, id), RegistryStep::Open};
    }
    RegistryStatus do_read(const RegistryKeyRef& key, std::string_view name, RegistryData& out);
    RegistryStatus do_set(const RegistryKeyRef& key, std::string_view name,
                          const RegistryData& data);
    RegistryStatus do_delete_value(const RegistryKeyRef& key, std::string_view name);
    RegistryStatus do_delete_key(const RegistryKeyRef& key);
    RegistryStatus do_enum(Sql which, const RegistryKeyRef& key, std::uint32_t index,
                           std::string& name);

    std::string path_;
    SqliteDb db_;
    bool batch_ = false;
    // Key ids by root and lower-cased subkey path, kept while no other process commits.
    std::unordered_map<std::string, sqlite3_int64> key_ids_;
    std::int64_t data_version_ = -1;
    std::vector<std::string_view> names_;
    std::vector<std::string_view> folded_names_;
};

int SqliteRegistryStore::ensure_open() {
    if (db_.is_open()) return reg_error::kOk;
    if (path_.empty()) path_ = registry_file_path();
    prepare_registry_file(path_);
    return db_.open(path_);
}

template <class Body>
RegistryStatus SqliteRegistryStore::run(bool write, Body body) {
    if (const int code = ensure_open()) return {code, RegistryStep::Open};
    Transaction transaction(db_, write);
    if (transaction.status() != 0) return {transaction.status(), RegistryStep::Open};
    sync_cache();
    RegistryStatus status = body();
    if (status.ok()) {
        const int code = transaction.commit();
        if (code != 0) status = {code, RegistryStep::Work};
    }
    if (!status.ok() && write) key_ids_.clear();
    return status;
}

void SqliteRegistryStore::sync_cache() {
    const std::int64_t version = db_.data_version();
    if (version != data_version_ || version < 0) key_ids_.clear();
    data_version_ = version;
}

int SqliteRegistryStore::resolve(const RegistryKeyRef& key, bool create, sqlite3_int64& id) {
    if (const int code = local_key_names(key, names_)) return code;
    std::string folded = text::to_lower(key.subkey);
    if (folded.ends_with('\\')) folded.pop_back();
    folded.insert(folded.begin(), static_cast<char>('0' + (static_cast<int>(key.root) & 3)));
    if (const auto hit = key_ids_.find(folded); hit != key_ids_.end()) {
        id = hit->second;
        return reg_error::kOk;
    }
    split_subkey(std::string_view(folded).substr(1), folded_names_);
    id = (static_cast<int>(key.root) & 3) + 1;
    for (std::size_t i = 0; i < names_.size(); ++i) {
        if (const int code = find_child(id, names_[i], folded_names_[i], create, id)) return code;
    }
    if (key_ids_.size() >= kMaxCachedKeys) key_ids_.clear();
    key_ids_.emplace(std::move(folded), id);
    return reg_error::kOk;
}

int SqliteRegistryStore::find_child(sqlite3_int64 parent, std::string_view name,
                                    std::string_view folded, bool create, sqlite3_int64& id) {
    {
        const Query find(db_, Sql::FindKey);
        if (!find) return db_.fail(SQLITE_ERROR);
        sqlite3_bind_int64(find.get(), 1, parent);
        bind_text(find.get(), 2, folded);
        const int rc = sqlite3_step(find.get());
        if (rc == SQLITE_ROW) {
            id = sqlite3_column_int64(find.get(), 0);
            return reg_error::kOk;
        }
        if (rc != SQLITE_DONE) return db_.fail(rc);
    }
    if (!create) return reg_error::kFileNotFound;
    const Query insert(db_, Sql::InsertKey);
    if (!insert) return db_.fail(SQLITE_ERROR);
    sqlite3_bind_int64(insert.get(), 1, parent);
    bind_text(insert.get(), 2, name);
    bind_text(insert.get(), 3, folded);
    if (const int code = db_.fail(sqlite3_step(insert.get()))) return code;
    id = db_.last_insert_id();
    return reg_error::kOk;
}

RegistryStatus SqliteRegistryStore::do_read(const RegistryKeyRef& key, std::string_view name,
                                            RegistryData& out) {
    sqlite3_int64 id = 0;
    if (const int code = resolve(key, false, id)) return {code, RegistryStep::Open};
    const Query q(db_, Sql::ReadValue);
    if (!q) return {db_.fail(SQLITE_ERROR), RegistryStep::Work};
    const std::string folded = text::to_lower(name);
    sqlite3_bind_int64(q.get(), 1, id);
    bind_text(q.get(), 2, folded);
    const int rc = sqlite3_step(q.get());
    if (rc == SQLITE_DONE) return {reg_error::kFileNotFound, RegistryStep::Work};
    if (rc != SQLITE_ROW) return {db_.fail(rc), RegistryStep::Work};
    out.type = static_cast<std::uint32_t>(sqlite3_column_int64(q.get(), 0));
    const void* blob = sqlite3_column_blob(q.get(), 1);
    const int size = sqlite3_column_bytes(q.get(), 1);
    out.bytes.assign(blob ? static_cast<const char*>(blob) : "", static_cast<std::size_t>(size));
    return {};
}

RegistryStatus SqliteRegistryStore::do_set(const RegistryKeyRef& key, std::string_view name,
                                           const RegistryData& data) {
    sqlite3_int64 id = 0;
    if (const int code = resolve(key, false, id)) return {code, RegistryStep::Open};
    if (text::char_count(name) > kMaxValueNameChars)
        return {reg_error::kInvalidParameter, RegistryStep::Work};
    const Query q(db_, Sql::SetValue);
    if (!q) return {db_.fail(SQLITE_ERROR), RegistryStep::Work};
    const std::string folded = text::to_lower(name);
    sqlite3_bind_int64(q.get(), 1, id);
    bind_text(q.get(), 2, name);
    bind_text(q.get(), 3, folded);
    sqlite3_bind_int64(q.get(), 4, data.type);
    sqlite3_bind_blob64(q.get(), 5, data.bytes.data(), data.bytes.size(), SQLITE_STATIC);
    return {db_.fail(sqlite3_step(q.get())), RegistryStep::Work};
}

RegistryStatus SqliteRegistryStore::do_delete_value(const RegistryKeyRef& key,
                                                    std::string_view name) {
    sqlite3_int64 id = 0;
    if (const int code = resolve(key, false, id)) return {code, RegistryStep::Open};
    const Query q(db_, Sql::DeleteValue);
    if (!q) return {db_.fail(SQLITE_ERROR), RegistryStep::Work};
    const std::string folded = text::to_lower(name);
    sqlite3_bind_int64(q.get(), 1, id);
    bind_text(q.get(), 2, folded);
    if (const int code = db_.fail(sqlite3_step(q.get()))) return {code, RegistryStep::Work};
    if (db_.changes() == 0) return {reg_error::kFileNotFound, RegistryStep::Work};
    return {};
}

RegistryStatus SqliteRegistryStore::do_delete_key(const RegistryKeyRef& key) {
    sqlite3_int64 id = 0;
    if (const int code = resolve(key, false, id)) return {code, RegistryStep::Open};
    if (names_.empty()) return {reg_error::kAccessDenied, RegistryStep::Work};
    key_ids_.clear();
    for (const Sql which : {Sql::DeleteTreeValues, Sql::DeleteTreeKeys}) {
        const Query q(db_, which);
        if (!q) return {db_.fail(SQLITE_ERROR), RegistryStep::Work};
        sqlite3_bind_int64(q.get(), 1, id);
        if (const int code = db_.fail(sqlite3_step(q.get()))) return {code, RegistryStep::Work};
    }
    return {};
}

RegistryStatus SqliteRegistryStore::do_enum(Sql which, const RegistryKeyRef& key,
                                            std::uint32_t index, std::string& name) {
    sqlite3_int64 id = 0;
    if (const int code = resolve(key, false, id)) return {code, RegistryStep::Open};
    const Query q(db_, which);
    if (!q) return {db_.fail(SQLITE_ERROR), RegistryStep::Work};
    sqlite3_bind_int64(q.get(), 1, id);
    sqlite3_bind_int64(q.get(), 2, index);
    const int rc = sqlite3_step(q.get());
    if (rc == SQLITE_DONE) return {reg_error::kNoMoreItems, RegistryStep::Work};
    if (rc != SQLITE_ROW) return {db_.fail(rc), RegistryStep::Work};
    const auto* chars = reinterpret_cast<const char*>(sqlite3_column_text(q.get(), 0));
    name.assign(chars ? chars : "", static_cast<std::size_t>(sqlite3_column_bytes(q.get(), 0)));
    return {};
}

std::string SqliteRegistryStore::error_text(int code) {
    std::string text = registry_error_text(code);
    const bool store_failure = code == reg_error::kCorrupt || code == reg_error::kIoFailed ||
                               code == reg_error::kBusy || code == reg_error::kAccessDenied ||
                               code == reg_error::kOutOfMemory;
    if (store_failure && !db_.detail().empty()) text.insert(text.rfind(" ("), ": " + db_.detail());
    return text;
}

void SqliteRegistryStore::begin_batch() {
    if (batch_ || ensure_open() != 0) return;
    batch_ = db_.exec("BEGIN IMMEDIATE") == 0;
    if (batch_) sync_cache();
}

int SqliteRegistryStore::end_batch() {
    if (!batch_) return reg_error::kOk;
    batch_ = false;
    // A failed statement may have rolled the whole batch back already.
    const int code = db_.in_transaction() ? db_.exec("COMMIT") : reg_error::kIoFailed;
    if (code != 0) {
        db_.rollback();
        key_ids_.clear();
    }
    return code;
}

}  // namespace

std::unique_ptr<RegistryStore> make_sqlite_registry_store(std::string path) {
    return std::make_unique<SqliteRegistryStore>(std::move(path));
}

}  // namespace quiller::posix

namespace quiller {

std::unique_ptr<RegistryStore> make_registry_store() {
    return posix::make_sqlite_registry_store({});
}

}  // namespace quiller
