// `dir PATH {sub dirsonly}`: a listing in the output window, one line per entry, as `print`
// writes them.
#include <algorithm>

#include "value/format.hpp"
#include "engine/engine.hpp"
#include "os/file_operation_paths.hpp"
#include "bindings/file_operation_select.hpp"
#include "bindings/file_operation_steps.hpp"

namespace quiller::fileops {
namespace {

constexpr std::size_t kSizeWidth = 18;

struct Listing {
    Engine& e;
    FileSystem& ops;
    Problems& problems;
    std::string pattern;
    char separator;
    bool sub;
    bool dirs_only;
    int shown = 0;  // lines printed
};

void print_line(Engine& e, const std::string& line) {
    OutputModel& out = e.output();
    out.show({}, line, false, false);
    out.set_visible(true);
    e.host().output_printed(out, line);
}

// The entries of one directory that match, each followed by its own content under "sub".
void list_directory(Listing& l, const std::string& directory, const std::string& prefix) {
    auto entries = l.ops.list(directory.empty() ? "." : directory);
    if (!entries) return add_unreadable(l.problems, directory, entries.status());
    std::sort(entries->begin(), entries->end(),
              [](const FileEntry& a, const FileEntry& b) { return name_before(a.name, b.name); });
    l.e.host().process_events();
    for (const FileEntry& entry : *entries) {
        const std::string shown = prefix.empty() ? entry.name : prefix + l.separator + entry.name;
        if (wildcard_match(l.pattern, entry.name) && (entry.directory || !l.dirs_only)) {
            print_line(l.e, listing_line(entry, shown));
            ++l.shown;
        }
        if (l.sub && entry.directory && !entry.link)
            list_directory(l, join(directory, entry.name, l.separator), shown);
    }
}

}  // namespace

std::string listing_line(const FileEntry& entry, std::string_view shown_name) {
    std::string line =
        value::format_date(value::local_day_number(entry.modified), "yyyy-mm-dd hh:nn");
    if (entry.directory) {
        line += entry.link ? "    <LINK>        " : "    <DIR>         ";
    } else {
        const std::string size = value::format_number(static_cast<double>(entry.size), "#,##0");
        line.append(kSizeWidth - std::min(kSizeWidth, size.size()), ' ');
        line += size;
    }
    line += ' ';
    line += shown_name;
    return line;
}

// A directory lists its content; otherwise the last component is a name pattern in the
// directory before it (a plain name matches itself, ignoring case, and must match something).
void run_dir(Engine& e, FileSystem& ops) {
    const std::string written = e.slots()[1].empty() ? "." : e.slots()[1];
    const std::string path(strip_trailing_separators(written));
    Problems problems("dir");
    Listing l{e,
              ops,
              problems,
              "*",
              separator_of(written),
              e.has_option("sub"),
              e.has_option("dirsonly")};
    const PathSplit parts = split(path);
    const bool plain = !has_wildcard(parts.name);
    const Result<FileEntry> entry = plain ? ops.entry(path) : Result<FileEntry>(FileEntry{});
    if (plain && entry && entry->directory) {
        list_directory(l, path, {});
    } else {
        l.pattern = parts.name;
        list_directory(l, parts.directory, {});
        if (plain && l.shown == 0 && problems.empty())
            add_unreadable(problems, path, entry.status());
    }
    problems.report(e);
}

}  // namespace quiller::fileops
