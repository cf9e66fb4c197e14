// `copy SOURCE TARGET {animated}`: one file, or the files that the source's wildcards match,
// into an existing directory or (one file) to a file name.
#include "engine/engine.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"

namespace quiller::fileops {
namespace {

struct CopyItem {
    std::string from;
    std::string to;
};

// The files the source names; directories are never copied.
std::vector<Match> source_files(FileSystem& ops, std::string_view source, Problems& problems) {
    Selection s = select(ops, source);
    if (s.matches.empty() && (!s.wildcard || !s.error.ok())) {
        add_unreadable(problems, s.wildcard ? split(source).directory : source, s.error);
        return {};
    }
    if (!s.wildcard && s.matches.front().entry.directory) {
        problems.add(quoted(source) + " is a directory, not a file");
        return {};
    }
    std::erase_if(s.matches, [](const Match& m) { return m.entry.directory; });
    if (s.matches.empty()) problems.add("No file matches " + quoted(source));
    return std::move(s.matches);
}

// Source and target of every copy: into the target when it is a directory, else to its name.
std::vector<CopyItem> plan(FileSystem& ops, const std::vector<Match>& files, bool wildcard,
                           std::string_view target, Problems& problems) {
    const Result<FileEntry> t = ops.entry(std::string(target));
    if (t && t->directory) {
        const std::string dir(strip_trailing_separators(target));
        std::vector<CopyItem> items;
        for (const Match& m : files)
            items.push_back({m.path, join(dir, m.entry.name, separator_of(target))});
        return items;
    }
    const bool wants_directory = wildcard || is_separator(target.back());
    if (wants_directory && !t)
        problems.add("Target directory " + quoted(target) + " not found", t.status());
    else if (wants_directory)
        problems.add(quoted(target) + " is not a directory");
    else
        return {{files.front().path, std::string(target)}};
    return {};
}

void copy_one(FileSystem& ops, const CopyItem& item, Problems& problems) {
    if (ops.same_file(item.from, item.to))
        return problems.add(quoted(item.from) + " can't be copied onto itself");
    if (const Result<FileEntry> t = ops.entry(item.to)) {
        if (t->directory) return problems.add(quoted(item.to) + " is a directory");
        if (t->attributes & kAttrReadOnly)
            return problems.add(quoted(item.to) + " is read-only and was not overwritten");
    }
    if (const Status s = ops.copy_file(item.from, item.to); !s)
        problems.add("Couldn't copy " + quoted(item.from) + " to " + quoted(item.to), s);
}

// The progress window of an animated copy: one step per file.
class CopyProgress {
  public:
    CopyProgress(Engine& e, bool shown, std::int64_t total) : e_(e), shown_(shown) {
        model_.title = "Copying";
        model_.unit = "files";
        model_.total = total;
        model_.start = model_.now = e.platform().clock->monotonic_seconds();
        if (!shown_) return;
        e_.host().progress_show(model_.title, model_.unit);
        e_.host().progress_update(model_);
    }
    ~CopyProgress() {
        if (shown_) e_.host().progress_close();
    }
    CopyProgress(const CopyProgress&) = delete;
    CopyProgress& operator=(const CopyProgress&) = delete;

    // Counts a file, redraws and lets the windows work; false once the user cancelled.
    bool step() {
        ++model_.done;
        if (shown_) {
            model_.now = e_.platform().clock->monotonic_seconds();
            e_.host().progress_update(model_);
        }
        e_.host().process_events();
        return !(shown_ && e_.host().progress_cancelled());
    }

  private:
    Engine& e_;
    bool shown_;
    ProgressModel model_;
};

}  // namespace

void run_copy(Engine& e, FileSystem& ops) {
    const std::string source = e.slots()[1];
    const std::string target = e.slots()[2];
    Problems problems("copy");
    if (source.empty() || target.empty()) {
        problems.add("A source and a target are needed");
        return problems.report(e);
    }
    const std::vector<Match> files = source_files(ops, source, problems);
    const std::vector<CopyItem> items =
        files.empty()
            ? std::vector<CopyItem>{}
            : plan(ops, files, has_wildcard(split(strip_trailing_separators(source)).name), target,
                   problems);
    {
        CopyProgress progress(e, e.has_option("animated") && !items.empty(),
                              static_cast<std::int64_t>(items.size()));
        for (std::size_t i = 0; i < items.size(); ++i) {
            copy_one(ops, items[i], problems);
            if (!progress.step() && i + 1 < items.size()) {
                problems.add("Cancelled after " + std::to_string(i + 1) + " of " +
                             std::to_string(items.size()) + " files");
                break;
            }
        }
    }
    problems.report(e);
}

}  // namespace quiller::fileops
