#include "bindings/file_operation_select.hpp"

#include <algorithm>

#include "os/file_operation_paths.hpp"

namespace quiller::fileops {
namespace {

Selection one_entry(FileSystem& ops, std::string_view path) {
    Selection s;
    if (auto e = ops.entry(std::string(path)))
        s.matches.push_back({std::string(path), std::move(*e)});
    else
        s.error = e.status();
    return s;
}

}  // namespace

Selection select(FileSystem& ops, std::string_view path) {
    path = strip_trailing_separators(path);
    const PathSplit parts = split(path);
    if (!has_wildcard(parts.name)) return one_entry(ops, path);
    Selection s;
    s.wildcard = true;
    const auto entries = ops.list(parts.directory.empty() ? "." : parts.directory);
    if (!entries) {
        s.error = entries.status();
        return s;
    }
    const char separator = separator_of(path);
    for (const FileEntry& e : *entries)
        if (wildcard_match(parts.name, e.name))
            s.matches.push_back({join(parts.directory, e.name, separator), e});
    std::sort(s.matches.begin(), s.matches.end(), [](const Match& a, const Match& b) {
        return name_before(a.entry.name, b.entry.name);
    });
    return s;
}

void add_unreadable(Problems& problems, std::string_view path, const Status& error) {
    if (error.ok() || error.error().kind == ErrorKind::NotFound)
        problems.add(quoted(path) + " not found", error);
    else
        problems.add("Couldn't read " + quoted(path), error);
}

std::string protected_reason(FileSystem& ops, std::string_view path) {
    if (is_root(path)) return "it is a root directory";
    const std::string resolved = ops.resolve(std::string(path));
    if (resolved.empty()) return "its place can't be made out";
    // The same directory under another name (a bind mount) is caught by its identity.
    const std::string p(path);
    if (is_root(resolved) || ops.same_file(p, std::string(1, kNativeSeparator)))
        return "it is a root directory";
    for (const std::string& home : ops.home_directories()) {
        if ((same_or_within(resolved, home) && same_or_within(home, resolved)) ||
            ops.same_file(p, home))
            return "it is the home directory";
        if (same_or_within(home, resolved)) return "it holds the home directory";
    }
    return {};
}

}  // namespace quiller::fileops
