// The mount table, which answers `connectedto` (what is mounted on a directory) and
// `connectedhow` (its file-system type) on POSIX.
#include <climits>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "os/posix/posix_network.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

bool is_octal(char c) {
    return c >= '0' && c <= '7';
}

// Blanks, tabs, newlines and backslashes in a field are written as "\" and three octal digits.
std::string unescape(std::string_view field) {
    std::string out;
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && is_octal(field[i + 1]) &&
            is_octal(field[i + 2]) && is_octal(field[i + 3])) {
            out += static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8 +
                                     (field[i + 3] - '0'));
            i += 3;
        } else {
            out += field[i];
        }
    }
    return out;
}

}  // namespace

std::vector<MountEntry> parse_mount_table(std::string_view text) {
    std::vector<MountEntry> table;
    std::istringstream lines{std::string(text)};
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream fields(line);
        std::string source, target, type;
        if (fields >> source >> target >> type)
            table.push_back({unescape(source), unescape(target), unescape(type)});
    }
    return table;
}

const MountEntry* find_mount(std::span<const MountEntry> table, std::string_view target) {
    const MountEntry* found = nullptr;
    for (const MountEntry& m : table)
        if (m.target == target) found = &m;
    return found;
}

std::vector<MountEntry> read_mount_table() {
    for (const char* name : {"/proc/self/mounts", "/etc/mtab"}) {
        std::ifstream in(name);
        if (!in) continue;
        std::ostringstream text;
        text << in.rdbuf();
        return parse_mount_table(text.str());
    }
    return {};
}

std::string mount_point_of(std::string_view path) {
    std::string p = native_path(path);
    if (p.empty()) return p;
    char resolved[PATH_MAX];
    if (::realpath(p.c_str(), resolved)) return resolved;
    while (p.size() > 1 && p.back() == '/') p.pop_back();
    return p;
}

}  // namespace quiller::posix
