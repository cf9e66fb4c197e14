// `md PATH` and `rename OLD NEW`: making directories and giving files and directories new names.
#include "value/text.hpp"
#include "engine/engine.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"

namespace quiller::fileops {
namespace {

// Makes `path` and every missing directory above it; an existing directory is fine.
bool make_path(FileSystem& ops, const std::string& path, Problems& problems, int depth = 0) {
    const Result<FileEntry> existing = ops.entry(path);
    if (existing) {
        if (existing->directory) return true;
        problems.add(quoted(path) + " exists and is not a directory");
        return false;
    }
    const std::string parent = split(path).directory;
    if (existing.error().kind == ErrorKind::NotFound && !parent.empty() && parent != path &&
        depth < 4096 &&
        !make_path(ops, std::string(strip_trailing_separators(parent)), problems, depth + 1))
        return false;
    const Status made = ops.make_directory(path);
    if (made) return true;
    const auto entry = ops.entry(path);  // made meanwhile, or "dir/.." of a new "dir"
    if (entry && entry->directory) return true;
    problems.add("Couldn't create " + quoted(path), made);
    return false;
}

// A bare new name stays in the old one's directory.
std::string new_path(std::string_view old_path, std::string_view new_name) {
    if (new_name.find_first_of("\\/") != std::string_view::npos) return std::string(new_name);
    if (new_name.size() >= 2 && new_name[1] == ':') return std::string(new_name);
    return join(split(old_path).directory, new_name, separator_of(old_path));
}

// Why `from` can't become `to`, or empty.
std::string rename_refusal(FileSystem& ops, const FileEntry& old_entry, const std::string& from,
                           const std::string& to) {
    // A new spelling of the same name (its case, where names ignore case) is no clash.
    const bool same = text::iequals(from, to) && ops.same_file(from, to);
    if (!same && ops.entry(to)) return quoted(to) + " already exists";
    if (!old_entry.directory || old_entry.link) return {};
    if (const std::string reason = protected_reason(ops, from); !reason.empty())
        return quoted(from) + " was not renamed: " + reason;
    if (!same && same_or_within(ops.resolve(to), ops.resolve(from)))
        return quoted(to) + " lies inside " + quoted(from);
    return {};
}

}  // namespace

void run_md(Engine& e, FileSystem& ops) {
    const std::string path(strip_trailing_separators(e.slots()[1]));
    Problems problems("md");
    if (path.empty())
        problems.add("A directory name is needed");
    else if (has_wildcard(path))
        problems.add(quoted(path) + " was not created: wildcards are not allowed here");
    else
        make_path(ops, path, problems);
    problems.report(e);
}

void run_rename(Engine& e, FileSystem& ops) {
    const std::string from(strip_trailing_separators(e.slots()[1]));
    const std::string to_name(strip_trailing_separators(e.slots()[2]));
    Problems problems("rename");
    if (from.empty() || to_name.empty()) {
        problems.add("An old and a new name are needed");
        return problems.report(e);
    }
    if (has_wildcard(from) || has_wildcard(to_name)) {
        problems.add(quoted(from) + " was not renamed: wildcards are not allowed here");
        return problems.report(e);
    }
    const Result<FileEntry> old_entry = ops.entry(from);
    const std::string to = new_path(from, to_name);
    if (!old_entry) {
        add_unreadable(problems, from, old_entry.status());
    } else if (const std::string refusal = rename_refusal(ops, *old_entry, from, to);
               !refusal.empty()) {
        problems.add(refusal);
    } else if (const Status s = ops.rename(from, to); !s) {
        problems.add("Couldn't rename " + quoted(from) + " to " + quoted(to), s);
    }
    problems.report(e);
}

}  // namespace quiller::fileops
