// `set $r$ adjustmaster MASTER COPY BASE [LABEL1] [LABEL2]`: brings what changed in COPY since
// its last synchronisation (BASE, the scan file `dirscan COPY BASE` wrote right after it) into
// MASTER, so that the `dircopy MASTER COPY` that follows loses nothing. Only MASTER changes.
// The value is the number of conflicts, as text; the empty text when nothing could be compared.
#include "bindings/adjustmaster.hpp"

#include "bindings/dircopy_report.hpp"
#include "engine/engine.hpp"
#include "engine/registry_engine.hpp"
#include "expr/functions.hpp"
#include "os/directory_reader.hpp"
#include "sync/adjust.hpp"
#include "sync/executor.hpp"
#include "sync/scan.hpp"
#include "sync/scan_file.hpp"
#include "sync/sort.hpp"
#include "value/format.hpp"

namespace quiller::functions {
namespace {

using sync::AdjustKind;
using sync::AdjustStep;

constexpr std::string_view kTag = "(adjustmaster) ";

std::string quoted(std::string_view s) {
    std::string out = "'";
    out += s;
    out += '\'';
    return out;
}

std::string count(std::int64_t n) {
    return value::format_number(static_cast<double>(n), "#,##0");
}

// A label as part of a file name: no separators, no characters Windows refuses.
std::string name_safe(std::string label) {
    for (char& ch : label)
        if (std::string_view("/\\:*?\"<>|").find(ch) != std::string_view::npos ||
            static_cast<unsigned char>(ch) < 32)
            ch = '_';
    return label;
}

class NoObserver final : public sync::ExecutionObserver {
    void action_ended(const sync::Action&, std::string_view, const Status&) override {}
    void between_actions(std::int64_t, std::string_view) override {}
};

class Adjustment {
  public:
    explicit Adjustment(const FunctionCall& c)
        : e_(c.engine),
          master_(c.arg(1)),
          copy_(c.arg(2)),
          base_(c.arg(3)),
          label1_(c.arg(4).empty() ? "Source" : c.arg(4)),
          label2_(c.arg(5).empty() ? "Target" : c.arg(5)) {}

    std::string run();

  private:
    bool is_directory(const std::string& path);
    bool scan(const std::string& root, sync::Listing& listing);
    void warn(const std::string& message, const Status& error = {}) {
        e_.report_error(message, Severity::Warning,
                        error.ok() ? std::string() : error.error().shown());
    }
    void line(const std::string& text) {
        if (!e_.quiet()) statements::activity_line(e_, text);
    }
    std::string describe(const AdjustStep& s) const;
    void execute(const sync::AdjustPlan& plan);

    Engine& e_;
    std::string master_, copy_, base_, label1_, label2_;
    sync::Listing m_, c_, b_;
};

std::string Adjustment::run() {
    if (master_.empty() || copy_.empty() || base_.empty()) {
        warn(std::string(kTag) + "A master folder, its copy and a scan file are needed.");
        return {};
    }
    if (!is_directory(master_) || !is_directory(copy_)) return {};
    FileSystem& files = *e_.platform().files;
    if (const auto base = files.entry(base_); !base && base.error().kind == ErrorKind::NotFound) {
        warn(std::string(kTag) + quoted(base_) +
             " does not exist yet: this is the first run, so nothing was adjusted. It will "
             "exist after the first dirscan of " +
             quoted(copy_) + ".");
        return "0";
    }
    line("--- adjustmaster " + master_ + " (" + label1_ + ") with " + copy_ + " (" + label2_ + ")" +
         value::format_date(e_.platform().clock->now(), "  (mmm d hh:nn:ss)"));
    sync::ScanFileEvents events;
    events.warning = [&](const std::string& message) { warn(message); };
    if (const Status s = sync::read_scan_file(files, base_, events, b_); !s) {
        warn(std::string(kTag) + "The scan file " + quoted(base_) +
                 " can't be read; nothing was changed.",
             s);
        return {};
    }
    sync::sort_listing(b_, [this] { e_.host().process_events(); });
    if (!scan(master_, m_) || !scan(copy_, c_)) return {};
    const bool copy_emptied = c_.empty() && !b_.empty();
    const bool removals = m_.warnings == 0 && c_.warnings == 0 && b_.warnings == 0 && !copy_emptied;
    const sync::AdjustPlan plan = sync::plan_adjustment({{m_, master_},
                                                         {c_, copy_},
                                                         b_,
                                                         e_.run_state<sync::PathFilters>(),
                                                         name_safe(label2_),
                                                         removals});
    if (plan.removals_held)
        warn(std::string(kTag) +
             (copy_emptied ? "The copy " + quoted(copy_) + " is empty and its scan file is not"
                           : std::string("A scan reported problems")) +
             ", so nothing is removed from " + quoted(master_) + " (" + count(plan.removals_held) +
             " removals left out).");
    const std::int64_t required = plan.bytes_written - plan.bytes_replaced;
    const std::optional<std::int64_t> free = e_.platform().files->free_space(master_);
    if (required > 0 && free && *free < required) {
        warn(std::string(kTag) + "Not enough disk space on " + quoted(master_) + ": " +
             count(required) + " bytes required, " + count(*free) + " free; nothing was changed.");
        return {};
    }
    execute(plan);
    return std::to_string(plan.conflicts);
}

bool Adjustment::is_directory(const std::string& path) {
    const Result<FileEntry> entry = e_.platform().files->entry(path);
    if (entry && entry->directory) return true;
    warn(std::string(kTag) + quoted(path) + " is not a directory; nothing was changed.",
         entry.status());
    return false;
}

bool Adjustment::scan(const std::string& root, sync::Listing& listing) {
    const std::unique_ptr<DirectoryReader> reader = make_directory_reader();
    RegistryOperations registry = registry_operations(e_);
    sync::ScanServices services{*e_.platform().files,
                                *reader,
                                registry,
                                *e_.platform().clock,
                                e_.host(),
                                [this](const std::string& text) { line(text); },
                                [this](const std::string& message, const std::string& system) {
                                    e_.report_error(message, Severity::Warning, system);
                                }};
    services.tag = std::string(kTag.substr(0, kTag.size() - 1));
    if (!sync::scan_tree(services, root, {}, listing)) return false;
    sync::sort_listing(listing, [this] { e_.host().process_events(); });
    return true;
}

// "copy docs/a.txt (new in Server)": what happened to MASTER, and why, by the sides' labels.
std::string Adjustment::describe(const AdjustStep& s) const {
    const std::string& name = s.name;
    switch (s.kind) {
        case AdjustKind::Copy:
            return "copy " + name + " (new in " + label2_ + ")";
        case AdjustKind::Replace:
            return "replace " + name + " (changed in " + label2_ + ")";
        case AdjustKind::Restore:
            return "restore " + name + " (changed in " + label2_ + ", removed in " + label1_ + ")";
        case AdjustKind::Md:
            if (s.master < 0) return "md " + name + " (in " + label2_ + ")";
            [[fallthrough]];  // a folder of the copy beside a file of the master
        case AdjustKind::Conflict:
            return "conflict " + std::string(m_.name(s.master)) + " (changed in " + label1_ +
                   " and in " + label2_ + "): " + label2_ + "'s version kept as " + name;
        case AdjustKind::Del:
            return "del " + name + " (removed in " + label2_ + ")";
        case AdjustKind::Rd:
            return "rd " + name + " (removed in " + label2_ + ")";
    }
    return name;
}

void Adjustment::execute(const sync::AdjustPlan& plan) {
    NoObserver quiet;
    sync::Executor executor({c_, copy_}, {m_, master_}, *e_.platform().files, quiet);
    std::int64_t done = 0, failed = 0;
    for (const AdjustStep& s : plan.steps) {
        const std::string path = sync::join_path(master_, s.name);
        Status error;
        switch (s.kind) {
            case AdjustKind::Md:
                error = executor.make_directory(path);
                break;
            case AdjustKind::Del:
                error = executor.remove_file(path);
                break;
            case AdjustKind::Rd:
                error = executor.remove_directory(path);
                break;
            default:
                error = executor.copy(sync::join_path(copy_, c_.name(s.copy)), path);
                break;
        }
        if (!error) {
            ++failed;
            warn(std::string(kTag) + "Couldn't " + describe(s) + ".", error);
        } else {
            ++done;
            line(describe(s));
        }
        e_.host().process_events();
    }
    line(label1_ + " adjusted to " + label2_ + ": " + count(done) + " changes, " +
         count(plan.conflicts) + " conflicts, " + count(failed) + " failed.");
}

}  // namespace

std::string adjustmaster(const FunctionCall& c) {
    return Adjustment(c).run();
}

}  // namespace quiller::functions
