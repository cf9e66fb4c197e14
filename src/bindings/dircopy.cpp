// `dircopy SOURCE TARGET [LOG] {quiet hidemeter ask progress nosub preview}`: makes the target
// tree match the source. Either side is a folder or a scan file; a target scan file is rewritten
// after the run to describe the target as it then stands.
#include <algorithm>

#include "bindings/dircopy.hpp"
#include "bindings/dircopy_report.hpp"
#include "engine/engine.hpp"
#include "engine/registry_engine.hpp"
#include "sync/actions.hpp"
#include "sync/executor.hpp"
#include "sync/scan.hpp"
#include "sync/scan_file.hpp"
#include "sync/sort.hpp"
#include "value/format.hpp"

namespace quiller::statements {
namespace {

using sync::ActionKind;
using sync::Listing;

constexpr std::string_view kBusySuffix = ".busy";  // beside a target scan file, during a run

std::string quoted(std::string_view s) {
    return "'" + std::string(s) + "'";
}

std::string count(std::int64_t n) {
    return value::format_number(static_cast<double>(n), "#,##0");
}

// A name a scan file may not carry: it would lead out of the root.
bool unsafe_name(std::string_view name) {
    if (name.empty() || name.find('\0') != std::string_view::npos) return true;
    if (name[0] == '/' || name[0] == '\\' || (name.size() > 1 && name[1] == ':')) return true;
    for (std::size_t start = 0; start <= name.size();) {
        std::size_t end = name.find_first_of("/\\", start);
        if (end == std::string_view::npos) end = name.size();
        if (name.substr(start, end - start) == "..") return true;
        start = end + 1;
    }
    return false;
}

// True when the folders are one, or one lies inside the other (resolved paths).
bool nested(const std::string& a, const std::string& b) {
    if (a.empty() || b.empty()) return false;
    const std::string& shorter = a.size() <= b.size() ? a : b;
    const std::string& longer = a.size() <= b.size() ? b : a;
    if (longer.compare(0, shorter.size(), shorter) != 0) return false;
    return longer.size() == shorter.size() || shorter.back() == '/' || shorter.back() == '\\' ||
           longer[shorter.size()] == '/' || longer[shorter.size()] == '\\';
}

// Drops the positions of the name order for which `drop` says so.
template <class Drop>
void drop_entries(Listing& l, Drop drop) {
    std::erase_if(l.order, [&](std::uint32_t r) { return drop(r); });
}

struct Side {
    Listing listing;
    std::string root;
    bool scan_file = false;
    bool warned = false;  // the scan or the reading reported a problem
};

class Dircopy {
  public:
    explicit Dircopy(Engine& e);
    void run();

  private:
    bool open_source();
    bool open_target();
    bool make_tree(const std::string& path);
    bool scan(Side& side);
    bool read_scan_file(Side& side);
    void rewrite_target_file(Listing listing);
    void clean_listings();
    bool confirm(const sync::ActionList& list, bool deletions, bool empty_source);
    void preview(const sync::ActionList& list, sync::Executor& executor);
    bool space_fits(std::int64_t required);
    void execute(const sync::ActionList& list, bool deletions);
    void refuse(const std::string& message, const Status& error = {}) {
        report_.warn(message, error);
    }

    Engine& e_;
    FileSystem& files_;
    const Slots& slots_;
    bool nosub_, progress_, meter_, ask_, preview_;
    DircopyReport report_;
    Side source_, target_;
    std::string target_file_;  // the target's scan file, when it is one
};

std::string progress_file_of(Engine& e, const std::string& log) {
    return log.empty() ? e.platform().environment->temp_dir() + "ql_dircopy.progress"
                       : log + ".progress";
}

Dircopy::Dircopy(Engine& e)
    : e_(e),
      files_(*e.platform().files),
      slots_(e.slots()),
      nosub_(e.has_option("nosub")),
      progress_(e.has_option("progress")),
      meter_(!e.has_option("hidemeter")),
      ask_(e.has_option("ask")),
      preview_(e.has_option("preview")),
      report_(e, e.slots()[3], progress_file_of(e, e.slots()[3]), meter_, e.quiet()) {}

void Dircopy::run() {
    if (slots_[1].empty() || slots_[2].empty())
        return refuse("(dircopy) A source and a target are needed.");
    report_.line("--- dircopy " + slots_[1] + " to " + slots_[2] +
                 value::format_date(e_.platform().clock->now(), "  (mmm d hh:nn:ss)"));
    if (!open_source() || !open_target()) return;
    report_.set_roots(source_.root, target_.root);
    clean_listings();
    const sync::ActionList list =
        sync::compute_actions({source_.listing, source_.root}, {target_.listing, target_.root},
                              e_.run_state<sync::PathFilters>());
    for (const std::string& name : list.beyond_end)
        report_.warn("(dircopy) '" + name + "' sorts after the end marker and is skipped.");
    const bool deletions = !source_.warned;
    if (!deletions && (list.count(ActionKind::Del) || list.count(ActionKind::Rd)))
        report_.warn("(dircopy) The scan of " + quoted(source_.root) +
                     " reported problems, so nothing is deleted in this run.");
    const bool empty_source = source_.listing.order.empty() && !target_.listing.order.empty();
    if (preview_) {
        sync::Executor planner({source_.listing, source_.root}, {target_.listing, target_.root},
                               files_, report_);
        return preview(list, planner);
    }
    if (!confirm(list, deletions, empty_source)) return;
    if (list.actions.size() <= 1) {
        if (!target_file_.empty() && !target_.scan_file) rewrite_target_file(target_.listing);
        return report_.line("Nothing to do: the target matches the source.");
    }
    if (!space_fits(list.space_required(deletions))) return;
    execute(list, deletions);
}

// ---- The two sides -----------------------------------------------------------------------

bool Dircopy::open_source() {
    const Result<FileEntry> entry = files_.entry(slots_[1]);
    if (!entry) {
        refuse("(dircopy) " + quoted(slots_[1]) + " is not a directory.", entry.status());
        return false;
    }
    source_.root = slots_[1];
    if (!entry->directory) {
        source_.scan_file = true;
        if (!read_scan_file(source_)) return false;
    }
    if (const auto listed = files_.list(source_.root); !listed) {
        refuse("(dircopy) The source " + quoted(source_.root) + " can't be read.",
               listed.status());
        return false;
    }
    return source_.scan_file || scan(source_);
}

bool Dircopy::open_target() {
    const Result<FileEntry> entry = files_.entry(slots_[2]);
    target_.root = slots_[2];
    bool trusted = false;
    if (entry && !entry->directory) {
        target_file_ = slots_[2];
        target_.scan_file = true;
        if (!read_scan_file(target_)) return false;
        const auto busy = files_.entry(target_file_ + std::string(kBusySuffix));
        const auto root = files_.entry(target_.root);
        trusted = !busy && root && root->directory;
        if (!trusted) {
            // The last run into it did not finish, or its root is gone: the disk tells the truth.
            report_.line("The scan file " + quoted(target_file_) +
                         " may be out of date; scanning " + target_.root + ".");
            target_.listing = Listing{};
            target_.scan_file = false;
        }
    }
    if (nested(files_.resolve(source_.root), files_.resolve(target_.root))) {
        refuse("(dircopy) " + quoted(source_.root) + " and " + quoted(target_.root) +
               " are the same folder, or one lies inside the other.");
        return false;
    }
    if (trusted) return true;
    if (!make_tree(target_.root)) return false;
    return !entry || scan(target_);
}

bool Dircopy::make_tree(const std::string& path) {
    if (const auto e = files_.entry(path); e && e->directory) return true;
    std::string parent = path;
    while (!parent.empty() && (parent.back() == '/' || parent.back() == '\\')) parent.pop_back();
    const std::size_t cut = parent.find_last_of("/\\");
    if (cut != std::string::npos && cut > 0 && !make_tree(parent.substr(0, cut))) return false;
    const Status made = files_.make_directory(path);
    if (made) return true;
    const auto e = files_.entry(path);
    if (e && e->directory) return true;
    refuse("(dircopy) The target folder " + quoted(path) + " can't be made.",
           e ? made : e.status());
    return false;
}

// Leftovers of an interrupted run go, and a scan file may not lead out of its root.
void Dircopy::clean_listings() {
    for (Side* side : {&source_, &target_}) {
        Listing& l = side->listing;
        drop_entries(l, [&](std::uint32_t r) {
            const std::string_view name = l.name(r);
            if (side->scan_file && unsafe_name(name)) {
                report_.warn("(dircopy) The scan file names " + quoted(name) +
                             ", which lies outside its folder; it is skipped.");
                return true;
            }
            if (l.record(r).is_folder() || !sync::is_temporary_name(sync::last_component(name)))
                return false;
            if (side == &target_) {
                files_.remove_file(sync::join_path(target_.root, name));
            }
            return true;
        });
    }
}

// ---- Scans and scan files ----------------------------------------------------------------

// The walk of one side, sorted; false (reported) when its root could not be listed.
bool Dircopy::scan(Side& side) {
    const std::unique_ptr<DirectoryReader> reader = make_directory_reader();
    RegistryOperations registry = registry_operations(e_);
    sync::ScanServices services{*e_.platform().files,
                                *reader,
                                registry,
                                *e_.platform().clock,
                                e_.host(),
                                [this](const std::string& line) { report_.line(line); },
                                [this](const std::string& message, const std::string& system) {
                                    report_.warn(message, system);
                                }};
    services.tag = "(dircopy)";
    sync::ScanOptions options;
    options.subfolders = !nosub_;
    options.progress = progress_ && meter_;
    const bool ok = sync::scan_tree(services, side.root, options, side.listing);
    side.warned = side.listing.warnings > 0;
    if (ok) sync::sort_listing(side.listing, [this] { e_.host().process_events(); });
    return ok;
}

// The listing of a scan file; its first line names the side's root.
bool Dircopy::read_scan_file(Side& side) {
    sync::ScanFileEvents events;
    events.warning = [&](const std::string& message) {
        side.warned = true;
        report_.warn(message);
    };
    events.progress = [this](std::size_t, std::string_view) { e_.host().process_events(); };
    const std::string path = side.root;
    if (const Status s = sync::read_scan_file(files_, path, events, side.listing); !s) {
        refuse("(dircopy) The scan file " + quoted(path) + " can't be read.", s);
        return false;
    }
    side.root = side.listing.root;
    if (!side.root.empty()) return true;
    refuse("(dircopy) The scan file " + quoted(path) + " names no folder.");
    return false;
}

// The target's scan file describes the target as it now stands; the run's mark goes with it.
void Dircopy::rewrite_target_file(Listing listing) {
    listing.root = target_.root;
    listing.subfolders = !nosub_;
    if (const Status s = sync::write_scan_file(files_, target_file_, listing); !s)
        return report_.warn(
            "(dircopy) The scan file " + quoted(target_file_) + " can't be written.", s);
    files_.remove_file(target_file_ + std::string(kBusySuffix));
}

// ---- Before anything changes -------------------------------------------------------------

std::string counts_text(const sync::ActionList& list) {
    std::string text;
    for (int k = 1; k < sync::kActionKinds; ++k) {
        const auto kind = static_cast<ActionKind>(k);
        if (!text.empty()) text += ", ";
        text += std::string(sync::kind_name(kind)) + " " + count(list.count(kind));
    }
    return text;
}

// "ask": the counts and the space, answered yes or no (default No). Without "ask", an empty
// source facing a full target is refused: a source that vanished must not empty the mirror.
bool Dircopy::confirm(const sync::ActionList& list, bool deletions, bool empty_source) {
    if (!ask_) {
        if (empty_source)
            refuse("(dircopy) The source " + quoted(source_.root) +
                   " is empty and the target is not; nothing was changed.");
        return !empty_source;
    }
    Question q;
    q.kind = "yesno";
    q.caption = e_.caption(" Question");
    q.default_answer = "No";
    q.question = "Synchronise " + target_.root + " with " + source_.root + "?" +
                 std::string(kLineBreak) + counts_text(list) + std::string(kLineBreak) +
                 "Disk space required: " + count(list.space_required(deletions)) + " bytes";
    if (empty_source)
        q.question +=
            std::string(kLineBreak) + "The source is empty: everything in the target goes.";
    if (e_.host().ask(q) == "Yes") return true;
    report_.line("Nothing was changed.");
    return false;
}

void Dircopy::preview(const sync::ActionList& list, sync::Executor& planner) {
    for (const sync::Action& a : list.actions)
        if (a.kind != ActionKind::Reset)
            activity_line(e_, std::string(sync::kind_name(a.kind)) + " " +
                                  planner.describe(a, planner.target_path(a)));
    report_.line(counts_text(list) + "; Disk space required: " +
                 count(list.space_required(!source_.warned)) + " bytes. Nothing was changed.");
}

bool Dircopy::space_fits(std::int64_t required) {
    if (required <= 0) return true;
    const std::optional<std::int64_t> free = e_.platform().files->free_space(target_.root);
    if (!free || *free >= required) return true;
    refuse("(dircopy) Not enough disk space on " + quoted(target_.root) + ": " + count(required) +
           " bytes required, " + count(*free) + " free; nothing was changed.");
    return false;
}

// ---- The run -----------------------------------------------------------------------------

void Dircopy::execute(const sync::ActionList& list, bool deletions) {
    const std::string busy =
        target_file_.empty() ? std::string() : target_file_ + std::string(kBusySuffix);
    if (!busy.empty()) files_.replace_file(busy, "");
    sync::Executor executor({source_.listing, source_.root}, {target_.listing, target_.root},
                            files_, report_);
    report_.watch(executor.counts());
    report_.start(static_cast<std::int64_t>(list.actions.size()) - 1);
    const auto wind_up = [&](std::string_view state) {
        report_.finish(executor.counts(), state);
        if (busy.empty()) return;
        rewrite_target_file(executor.target_after(list));
    };
    try {
        executor.run(list, deletions);
    } catch (...) {
        wind_up("cancelled");
        throw;
    }
    wind_up("finished");
}

}  // namespace

void dircopy(Engine& e) {
    Dircopy(e).run();
}

void exclude(Engine& e) {
    sync::PathFilters& filters = e.run_state<sync::PathFilters>();
    if (e.has_option("reset")) return filters.reset();
    if (e.slots()[1].empty())
        return e.report_error("(exclude) A pattern is needed.", Severity::Warning);
    filters.add(e.slots()[1], e.has_option("include"));
}

}  // namespace quiller::statements
