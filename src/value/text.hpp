// Text helpers shared by the engine and the expression evaluator.
// All script text is UTF-8. Case-blind operations are Unicode-aware with an ASCII fast path.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "value/ascii_class.hpp"

namespace quiller::text {

// --- Encoding -------------------------------------------------------------------------------

// True when every byte is below 0x80 (such text takes the fast paths of the case functions).
bool is_ascii(std::string_view s);

// True when `bytes` is well-formed UTF-8.
bool is_valid_utf8(std::string_view bytes);

// Reads a byte sequence in Windows-1252 and returns it as UTF-8.
std::string windows1252_to_utf8(std::string_view bytes);

// Returns `bytes` unchanged when it is valid UTF-8, else decodes it as Windows-1252.
std::string decode_script_text(std::string_view bytes);

// Number of Unicode characters (code points) in a UTF-8 text.
std::size_t char_count(std::string_view utf8);

// Byte offset of the character with 0-based index `char_index` (the text's size when past the
// end).
std::size_t byte_offset_of_char(std::string_view utf8, std::size_t char_index);

// --- Case ----------------------------------------------------------------------------------

// Unicode lower and upper case (full mapping; ASCII-only text never leaves the fast path).
std::string to_lower(std::string_view utf8);
std::string to_upper(std::string_view utf8);

// Case-blind equality (full case folding).
bool iequals(std::string_view a, std::string_view b);

// Byte position of the first case-blind occurrence of `needle` in `hay` at or after byte `from`,
// or npos. Positions are in `hay`'s own bytes, so callers can cut `hay` at them. `from` should be
// a character boundary (bytes of a character cut in half count as ill-formed bytes). An empty
// `needle` is found at `from`.
std::size_t ifind(std::string_view hay, std::string_view needle, std::size_t from = 0);

// --- Small operations ----------------------------------------------------------------------

// Removes leading and trailing blanks (space characters only, as the language trims).
std::string_view trim(std::string_view s);

// The unquoting rule: a text of at least two characters whose first character is "$", "^",
// the double quote or "'" loses its first and last character (a whole UTF-8 character at the
// end); any other text is kept.
std::string_view unquote_slow(std::string_view s);
inline std::string_view unquote(std::string_view s) {
    if (s.size() < 2) return s;
    const char c = s.front();
    if (c != '$' && c != '^' && c != '"' && c != '\'') return s;
    if (static_cast<unsigned char>(s.back()) < 0x80) return s.substr(1, s.size() - 2);
    return unquote_slow(s);
}

// Replaces every case-blind occurrence of `search` by `replacement`; returns the count.
// An empty `search` replaces nothing.
std::size_t replace_all(std::string& s, std::string_view search, std::string_view replacement);

// Splits a path at its last "\" (or "/" on POSIX) into directory (without the separator) and
// file name. A name without separator gives an empty directory.
struct PathParts {
    std::string directory;
    std::string file;
};
PathParts split_path(std::string_view path);

// True for the path separators of this platform ("\" always, "/" too on POSIX).
bool is_path_separator(char c);

// True when the (trimmed) text starts with the ASCII word `prefix`, ignoring ASCII case.
bool starts_with_ascii_ci(std::string_view s, std::string_view prefix);

#ifdef _WIN32
// UTF-8 to UTF-16 and back, for the system's wide functions (ill-formed input becomes U+FFFD).
std::wstring utf8_to_wide(std::string_view s);
std::string wide_to_utf8(std::wstring_view w);
#endif

// Appends the UTF-8 form of a code point.
void append_utf8(std::string& out, char32_t cp);

// ASCII-only lower-casing, for keywords and option words.
std::string ascii_lower(std::string_view s);
constexpr char ascii_lower_char(char c) {
    return value::detail::lower(c);
}

}  // namespace quiller::text
