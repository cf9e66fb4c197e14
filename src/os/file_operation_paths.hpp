// Path texts for the file operations: separators, wildcards, roots and containment. Both "\"
// and "/" separate components on every platform.
#pragma once

#include <string>
#include <string_view>

namespace quiller::fileops {

#ifdef _WIN32
inline constexpr char kNativeSeparator = '\\';
inline constexpr bool kCaseBlindPaths = true;
inline constexpr bool kWildcardsSkipDotNames = false;
#else
inline constexpr char kNativeSeparator = '/';
inline constexpr bool kCaseBlindPaths = false;
// As in POSIX shells, "*" and "?" don't match the leading "." of a name.
inline constexpr bool kWildcardsSkipDotNames = true;
#endif

inline bool is_separator(char c) {
    return c == '\\' || c == '/';
}

// The separator a path is written with (its last one), else the platform's.
char separator_of(std::string_view path);

// Without trailing separators, except those of a root ("/", "C:\").
std::string_view strip_trailing_separators(std::string_view path);

// A path split at its last separator. The directory keeps a root's separator ("/x" gives "/",
// "C:\x" gives "C:\", "C:x" gives "C:"); a bare name gives an empty directory.
struct PathSplit {
    std::string directory;
    std::string name;
};
PathSplit split(std::string_view path);

// `name` in `directory`, joined with `separator` when one is needed.
std::string join(std::string_view directory, std::string_view name, char separator);

bool has_wildcard(std::string_view text);

// Case-blind match of a name against a pattern of "*" (any run) and "?" (one character);
// "*.*" matches every name, as "*" does.
bool wildcard_match(std::string_view pattern, std::string_view name);

// True for a root written as such: only separators, a drive ("C:", "C:\") or a network share
// ("\\server\share").
bool is_root(std::string_view path);

// True when `inner` is `outer` or lies below it (both absolute and resolved).
bool same_or_within(std::string_view inner, std::string_view outer);

// Case-blind name order, for listings (ties in byte order, so the order is total).
bool name_before(std::string_view a, std::string_view b);

}  // namespace quiller::fileops
