// A host for tests: records everything the engine shows, takes a question's default answer and
// answers the other windows from a prepared script, over an in-memory platform (files, registry)
// with a fixed clock and environment.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "bindings/language.hpp"
#include "engine/engine.hpp"
#include "ui/host.hpp"
#include "value/value.hpp"

namespace quiller::testing {

struct ShownError {
    Severity severity;
    std::string title;
    std::string text;
};

// Window texts are recorded with "\n" line ends on every platform, so tests read the same
// everywhere (the engine writes the platform's line break).
inline std::string lf(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (!(text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')) out += text[i];
    return out;
}

class ScriptedHost final : public Host {
  public:
    std::vector<std::string> printed;
    std::vector<ShownError> errors;
    std::vector<std::string> message_boxes;
    std::deque<ErrorChoice> error_choices;
    std::string chosen_script;

    void output_printed(const OutputModel&, std::string_view text) override {
        printed.push_back(lf(text));
    }
    void output_pause(const OutputModel&, std::string_view) override {}
    void output_finished(const OutputModel&) override {}
    std::string ask(const Question& q) override { return q.default_answer; }
    ErrorChoice show_error(Severity s, std::string_view title, std::string_view text) override {
        errors.push_back({s, std::string(title), lf(text)});
        if (error_choices.empty()) return ErrorChoice::Continue;
        const ErrorChoice c = error_choices.front();
        error_choices.pop_front();
        return c;
    }
    std::string offered_script;  // the name the file-choosing window was filled with
    std::string choose_script(std::string_view, std::string_view,
                              std::string_view last_script) override {
        offered_script = last_script;
        return chosen_script;
    }
    MessageBoxResult message_box(std::string_view text, std::string_view,
                                 MessageBoxButtons) override {
        message_boxes.push_back(lf(text));
        return MessageBoxResult::Ok;
    }
    std::deque<DebugAction> debug_actions;  // Step once they run out
    std::vector<std::string> debug_stops;   // the listing's entry of each stop
    DebugAction debug_stop(const DebugView& v) override {
        debug_stops.push_back((*v.listing)[static_cast<std::size_t>(v.current_line - 1)]);
        if (debug_actions.empty()) return DebugAction::Step;
        const DebugAction a = debug_actions.front();
        debug_actions.pop_front();
        return a;
    }
};

// Whole files in memory; the tree operations are not there.
class MemoryFiles : public FileSystem {
  public:
    std::map<std::string, std::string> files;

    static SystemError missing() { return {2, "No such file or directory", ErrorKind::NotFound}; }
    static SystemError unsupported() { return {38, "Function not implemented"}; }

    Result<FileEntry> status(const std::string& path) override {
        auto it = files.find(path);
        if (it == files.end()) return missing();
        return FileEntry{
            path, false, false, kAttrArchive, static_cast<std::int64_t>(it->second.size()), 0};
    }
    Result<FileEntry> entry(const std::string& path) override { return status(path); }
    Result<std::vector<FileEntry>> list(const std::string&) override { return unsupported(); }
    bool any_ordinary_file(const std::string& pattern) override { return files.count(pattern) > 0; }
    bool same_file(const std::string& a, const std::string& b) override { return a == b; }
    std::string resolve(const std::string& path) override { return path; }
    std::vector<std::string> home_directories() override { return {}; }
    std::optional<std::int64_t> tree_size(const std::string&) override { return std::nullopt; }
    std::optional<std::int64_t> free_space(const std::string&) override { return std::nullopt; }

    Result<std::string> read_file(const std::string& path) override {
        auto it = files.find(path);
        if (it == files.end()) return missing();
        return it->second;
    }
    Status append_file(const std::string& path, std::string_view bytes) override {
        files[path] += bytes;
        return {};
    }
    Status append_private(const std::string& path, std::string_view bytes) override {
        return append_file(path, bytes);
    }
    Result<std::unique_ptr<FileLock>> lock_for_update(const std::string&) override {
        return std::make_unique<FileLock>();
    }
    Result<std::unique_ptr<OpenFile>> open(const std::string&, OpenMode) override {
        return missing();
    }
    Status replace_file(const std::string& path, std::string_view bytes) override {
        files[path] = bytes;
        return {};
    }
    Result<std::unique_ptr<ReplacementFile>> begin_replace(const std::string&) override {
        return unsupported();
    }
    Status copy_file(const std::string&, const std::string&, const CopyControl&) override {
        return unsupported();
    }
    std::string temp_file_name(const std::string&, bool) override { return {}; }

    Status remove_file(const std::string& path) override {
        return files.erase(path) ? Status() : Status(missing());
    }
    Status make_directory(const std::string&) override { return unsupported(); }
    Status remove_directory(const std::string&) override { return unsupported(); }
    Status remove_tree(const std::string& path, std::string& failed) override {
        failed = path;
        return unsupported();
    }
    Status rename(const std::string&, const std::string&) override { return unsupported(); }
    Result<AttributeOutcome> set_attributes(const std::string&, std::uint32_t,
                                            std::uint32_t) override {
        return unsupported();
    }
};

class FixedEnvironment final : public Environment {
  public:
    std::map<std::string, std::string> vars{
        {"USERDOMAIN", "CORVALE"}, {"USERNAME", "ada"}, {"COMPUTERNAME", "WS01"}};
    std::string get(const std::string& name) override {
        auto it = vars.find(name);
        return it == vars.end() ? std::string() : it->second;
    }
    std::string temp_dir() override { return "/tmp/"; }
    std::string os_family() override { return "Windows NT"; }
    MemoryStatus memory() override { return {1 << 30, 1 << 29}; }
};

class FixedClock final : public Clock {
  public:
    double serial = value::date_serial(2026, 11, 22) + value::time_serial(13, 5, 9);
    double now() override { return serial; }
    double monotonic_seconds() override { return 0; }
    std::int64_t utc_seconds() override { return 1795784709; }
    void sleep_ms(int) override {}
};

// One engine over the scripted host and the in-memory platform.
struct Harness {
    ScriptedHost host;
    Platform platform;
    MemoryFiles* files;
    RegistryStore* registry;  // in memory: tests never touch a real store
    std::size_t text_limit = kMaxTextLength;

    Harness() {
        auto f = std::make_unique<MemoryFiles>();
        files = f.get();
        platform.files = std::move(f);
        platform.registry = make_memory_registry_store();
        registry = platform.registry.get();
        platform.environment = std::make_unique<FixedEnvironment>();
        platform.clock = std::make_unique<FixedClock>();
    }
    // Runs `script` saved as job.prg with the given parameters; returns the exit status.
    int run(const std::string& script, const std::string& params = {}) {
        files->files["job.prg"] = script;
        Engine engine(host, platform, standard_language());
        engine.variables().set_text_limit(text_limit);
        return engine.run("job.prg " + params);
    }
    std::string log() { return lf(files->files["/tmp/ql_err.txt"]); }
};

}  // namespace quiller::testing
