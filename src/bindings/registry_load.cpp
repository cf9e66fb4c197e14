#include "bindings/registry_load.hpp"

#include "engine/engine.hpp"
#include "engine/registry_engine.hpp"
#include "os/registry_file.hpp"

namespace quiller {
namespace {

// Bad lines reported one by one; the rest are counted in one last warning, so that a file that
// isn't a registry file at all doesn't bring up thousands of error windows.
constexpr int kMaxLineReports = 20;

class Loader {
  public:
    Loader(Engine& engine, RegistryOperations& ops, const std::string& file)
        : engine_(engine), ops_(ops), file_(file) {}

    void entry(const RegistryFileEntry& e) {
        using Kind = RegistryFileEntry::Kind;
        switch (e.kind) {
            case Kind::Key:
                return open_key(e);
            case Kind::DeleteKey:
                ops_.delete_key(e.key, true);
                key_.clear();
                key_ok_ = false;
                return;
            case Kind::Value:
            case Kind::DeleteValue:
                return value(e);
        }
    }

    void problem(int line, std::string_view text) {
        if (++problems_ > kMaxLineReports) return;
        report("(LoadReg) " + file_ + " line " + std::to_string(line) + ": " + std::string(text));
    }

    void finish() {
        if (problems_ <= kMaxLineReports) return;
        report("(LoadReg) " + file_ + ": " + std::to_string(problems_ - kMaxLineReports) +
               " more lines couldn't be read");
    }

  private:
    void open_key(const RegistryFileEntry& e) {
        key_ = e.key;
        if (parse_registry_path(key_).root == RegistryRoot::None) {
            key_ok_ = false;
            problem(e.line, "unknown root key");
            return;
        }
        key_ok_ = ops_.create_key(key_);
    }

    // A value of the current key; values of a key that failed are skipped (it was reported).
    void value(const RegistryFileEntry& e) {
        if (key_.empty()) return problem(e.line, "a value before any [key] line");
        if (!key_ok_) return;
        if (e.kind == RegistryFileEntry::Kind::DeleteValue)
            ops_.delete_value(key_, e.name, true);
        else
            ops_.write_data(key_, e.name, e.data);
    }

    void report(const std::string& message) { engine_.report_error(message, Severity::Warning); }

    Engine& engine_;
    RegistryOperations& ops_;
    const std::string& file_;
    std::string key_;
    bool key_ok_ = false;
    int problems_ = 0;
};

// Ends the batch also when a warning ends the run.
class Batch {
  public:
    explicit Batch(RegistryOperations& ops) : ops_(ops) { ops_.begin_batch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch() {
        if (open_) ops_.close_batch();
    }
    void end() {
        open_ = false;
        ops_.end_batch("(LoadReg) ");
    }

  private:
    RegistryOperations& ops_;
    bool open_ = true;
};

}  // namespace

void load_registry_file(Engine& engine, const std::string& file) {
    const Result<std::string> bytes = engine.platform().files->read_file(file);
    if (!bytes) {
        engine.report_error("(LoadReg) Couldn't open '" + file + "'", Severity::Warning,
                            bytes.error().shown());
        return;
    }
    RegistryOperations ops = registry_operations(engine);
    Loader loader(engine, ops, file);
    Batch batch(ops);
    read_registry_file(*bytes, {[&](const RegistryFileEntry& e) { loader.entry(e); },
                                [&](int line, std::string_view p) { loader.problem(line, p); }});
    batch.end();
    loader.finish();
}

}  // namespace quiller
