#include "os/file_operation_paths.hpp"

#include <algorithm>

#include "value/text.hpp"

namespace quiller::fileops {
namespace {

bool is_drive_letter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool has_drive(std::string_view p) {
    return p.size() >= 2 && is_drive_letter(p[0]) && p[1] == ':';
}

bool only_separators(std::string_view p) {
    return std::all_of(p.begin(), p.end(), is_separator);
}

// Bytes of the UTF-8 character that starts at `i` (1 for a stray byte).
std::size_t char_length(std::string_view s, std::size_t i) {
    const auto c = static_cast<unsigned char>(s[i]);
    const std::size_t n = c < 0xC0 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
    return std::min(n, s.size() - i);
}

// "*" and "?" with one backtracking point: the classic linear matcher, stepping by characters.
bool match_lowered(std::string_view pattern, std::string_view name) {
    std::size_t p = 0, n = 0;
    std::size_t star = std::string_view::npos, mark = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '?') {
            ++p;
            n += char_length(name, n);
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = ++p;
            mark = n;
        } else if (p < pattern.size() && pattern[p] == name[n]) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star;
            mark += char_length(name, mark);
            n = mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

std::string path_key(std::string_view p) {
    return kCaseBlindPaths ? text::to_lower(p) : std::string(p);
}

}  // namespace

char separator_of(std::string_view path) {
    const std::size_t at = path.find_last_of("\\/");
    return at == std::string_view::npos ? kNativeSeparator : path[at];
}

std::string_view strip_trailing_separators(std::string_view path) {
    while (path.size() > 1 && is_separator(path.back())) {
        if (path.size() == 3 && has_drive(path)) break;
        path.remove_suffix(1);
    }
    return path;
}

PathSplit split(std::string_view path) {
    const std::size_t at = path.find_last_of("\\/");
    if (at == std::string_view::npos) {
        if (has_drive(path)) return {std::string(path.substr(0, 2)), std::string(path.substr(2))};
        return {{}, std::string(path)};
    }
    std::string_view dir = path.substr(0, at);
    if (dir.empty() || only_separators(dir) || (dir.size() == 2 && has_drive(dir)))
        dir = path.substr(0, at + 1);
    return {std::string(dir), std::string(path.substr(at + 1))};
}

std::string join(std::string_view directory, std::string_view name, char separator) {
    std::string out(directory);
    const bool bare_drive = directory.size() == 2 && has_drive(directory);
    if (!out.empty() && !is_separator(out.back()) && !bare_drive) out += separator;
    out += name;
    return out;
}

bool has_wildcard(std::string_view text) {
    return text.find_first_of("*?") != std::string_view::npos;
}

bool wildcard_match(std::string_view pattern, std::string_view name) {
    if (pattern == "*.*") pattern = "*";
    if (kWildcardsSkipDotNames && !name.empty() && name.front() == '.' &&
        (pattern.empty() || pattern.front() != '.'))
        return false;
    return match_lowered(text::to_lower(pattern), text::to_lower(name));
}

bool is_root(std::string_view path) {
    if (path.empty()) return false;
    if (only_separators(path)) return true;
    if (has_drive(path)) return only_separators(path.substr(2));
    if (path.size() < 3 || !is_separator(path[0]) || !is_separator(path[1])) return false;
    // "\\server\share": two names after the leading pair, then nothing but separators.
    std::string_view rest = path.substr(2);
    for (int part = 0; part < 2; ++part) {
        const std::size_t end = std::min(rest.find_first_of("\\/"), rest.size());
        if (end == 0) return false;
        rest.remove_prefix(end);
        if (part == 0) {
            if (rest.empty()) return false;
            rest.remove_prefix(1);
        }
    }
    return only_separators(rest);
}

bool same_or_within(std::string_view inner, std::string_view outer) {
    const std::string in = path_key(inner);
    const std::string out = path_key(outer);
    if (in == out) return true;
    if (out.empty() || in.size() <= out.size() || in.compare(0, out.size(), out) != 0) return false;
    return is_separator(out.back()) || is_separator(in[out.size()]);
}

bool name_before(std::string_view a, std::string_view b) {
    const std::string la = text::to_lower(a);
    const std::string lb = text::to_lower(b);
    if (la != lb) return la < lb;
    return a < b;
}

}  // namespace quiller::fileops
