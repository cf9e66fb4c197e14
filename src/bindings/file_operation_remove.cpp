// `del PATTERN` and `rd PATH {severe}`: removing files, and directories with or without their
// content.
#include "engine/engine.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"

namespace quiller::fileops {
namespace {

void delete_one(FileSystem& ops, const Match& m, Problems& problems) {
    if (!m.entry.link && (m.entry.attributes & kAttrReadOnly))
        return problems.add(quoted(m.path) + " is read-only and was not deleted");
    if (const Status s = ops.remove_file(m.path); !s)
        problems.add("Couldn't delete " + quoted(m.path), s);
}

// "." and ".." name a directory through another one; removing them is refused.
bool names_relative_step(std::string_view path) {
    path = strip_trailing_separators(path);
    const std::size_t at = path.find_last_of("\\/");
    const std::string_view name = at == std::string_view::npos ? path : path.substr(at + 1);
    return name == "." || name == "..";
}

// Why `path` can't be removed by `rd`, or empty.
std::string rd_refusal(FileSystem& ops, std::string_view path, Problems& problems) {
    if (has_wildcard(path)) return "wildcards are not allowed here";
    if (is_root(path)) return "it is a root directory";
    const Result<FileEntry> entry = ops.entry(std::string(path));
    if (!entry) {
        add_unreadable(problems, path, entry.status());
        return {};
    }
    if (!entry->directory) return "it is not a directory";
    if (names_relative_step(path)) return "a directory can't be removed through '.' or '..'";
    return protected_reason(ops, path);
}

}  // namespace

void run_del(Engine& e, FileSystem& ops) {
    const std::string pattern = e.slots()[1];
    Problems problems("del");
    if (pattern.empty()) {
        problems.add("A file name or pattern is needed");
        return problems.report(e);
    }
    Selection s = select(ops, pattern);
    if (s.matches.empty() && (!s.wildcard || !s.error.ok())) {
        add_unreadable(problems, s.wildcard ? split(pattern).directory : pattern, s.error);
    } else if (!s.wildcard && s.matches.front().entry.directory) {
        problems.add(quoted(pattern) + " is a directory, not a file");
    } else {
        std::erase_if(s.matches, [](const Match& m) { return m.entry.directory; });
        if (s.matches.empty()) problems.add("No file matches " + quoted(pattern));
        for (const Match& m : s.matches) {
            delete_one(ops, m, problems);
            e.host().process_events();
        }
    }
    problems.report(e);
}

void run_rd(Engine& e, FileSystem& ops) {
    const std::string path(strip_trailing_separators(e.slots()[1]));
    Problems problems("rd");
    if (path.empty()) problems.add("A directory name is needed");
    const std::string refusal = path.empty() ? "" : rd_refusal(ops, path, problems);
    if (!refusal.empty()) problems.add(quoted(path) + " was not removed: " + refusal);
    if (!problems.empty()) return problems.report(e);
    std::string failed;
    if (e.has_option("severe")) {
        if (const Status s = ops.remove_tree(path, failed); !s)
            problems.add("Couldn't remove " + quoted(failed), s);
    } else if (const Status s = ops.remove_directory(path); !s) {
        problems.add("Couldn't remove " + quoted(path), s);
    }
    problems.report(e);
}

}  // namespace quiller::fileops
