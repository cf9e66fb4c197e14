// Text helpers: UTF-8 decoding, Unicode case operations and small string operations.
//
// Ill-formed UTF-8: every function here accepts any byte sequence. A byte that does not start a
// well-formed UTF-8 sequence counts as one character of its own: case mapping copies it through
// unchanged, case-blind comparison matches it only against the very same byte, and character
// counts count it as one. Nothing is replaced, so such text round-trips byte for byte.
//
// Case-blind matching uses full case folding, one code point at a time (Unicode's folding is
// context-free apart from the Turkic variants, which are not used). A match must start and end
// on character boundaries of the haystack, so "ß" matches "SS" but "s" does not match half of
// "ß". Positions returned always index the haystack's own bytes.
//
// Platforms: ICU (root locale) on POSIX; the Win32 NLS functions with the invariant locale on
// Windows. Pure ASCII text takes a table-free fast path and never reaches either library.
#include "value/text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>
#endif

namespace quiller::text {
namespace {

// --- UTF-8 decoding ---------------------------------------------------------------------------

// One decoded character: a code point, or for an ill-formed byte kInvalidBase + the byte value
// (outside the Unicode range, so it never equals a real code point).
struct Decoded {
    char32_t value;
    std::size_t length;  // bytes consumed, at least 1
    bool valid;
};

constexpr char32_t kInvalidBase = 0x110000;

bool is_continuation(unsigned char b) {
    return (b & 0xC0) == 0x80;
}

bool is_ascii_byte(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}

// Decodes the character at `pos` (pos < s.size()), rejecting overlong forms, surrogates and
// values above U+10FFFF.
Decoded decode_at(std::string_view s, std::size_t pos) {
    const auto b0 = static_cast<unsigned char>(s[pos]);
    if (b0 < 0x80) return {b0, 1, true};

    const Decoded bad{kInvalidBase + b0, 1, false};
    std::size_t len;
    char32_t cp;
    char32_t min;
    if (b0 >= 0xC2 && b0 <= 0xDF) {
        len = 2, cp = b0 & 0x1F, min = 0x80;
    } else if (b0 >= 0xE0 && b0 <= 0xEF) {
        len = 3, cp = b0 & 0x0F, min = 0x800;
    } else if (b0 >= 0xF0 && b0 <= 0xF4) {
        len = 4, cp = b0 & 0x07, min = 0x10000;
    } else {
        return bad;
    }
    if (s.size() - pos < len) return bad;
    for (std::size_t i = 1; i < len; ++i) {
        const auto b = static_cast<unsigned char>(s[pos + i]);
        if (!is_continuation(b)) return bad;
        cp = (cp << 6) | (b & 0x3F);
    }
    if (cp < min || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return bad;
    return {cp, len, true};
}

// Length of the well-formed UTF-8 run starting at `pos`.
std::size_t valid_run_length(std::string_view s, std::size_t pos) {
    std::size_t end = pos;
    while (end < s.size()) {
        if (is_ascii_byte(s[end])) {
            ++end;
            continue;
        }
        const Decoded d = decode_at(s, end);
        if (!d.valid) break;
        end += d.length;
    }
    return end - pos;
}

// --- ASCII fast path ---------------------------------------------------------------------------

char ascii_upper_char(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 32) : c;
}

bool ascii_iequals(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (ascii_lower_char(a[i]) != ascii_lower_char(b[i])) return false;
    }
    return true;
}

// Case-blind search over ASCII text; no allocation.
std::size_t ascii_ifind(std::string_view hay, std::string_view needle, std::size_t from) {
    if (needle.size() > hay.size()) return std::string_view::npos;
    const char first = ascii_lower_char(needle[0]);
    const std::size_t last = hay.size() - needle.size();
    for (std::size_t i = from; i <= last; ++i) {
        if (ascii_lower_char(hay[i]) == first &&
            ascii_iequals(hay.substr(i, needle.size()), needle))
            return i;
    }
    return std::string_view::npos;
}

// --- Platform case mapping -----------------------------------------------------------------------

enum class CaseKind { lower, upper };

// Folded form of one code point: at most three code points (the longest full folding).
struct Folding {
    std::array<char32_t, 3> cps{};
    std::size_t count = 0;
};

#ifdef _WIN32

std::wstring nls_map(std::wstring_view w, DWORD flags) {
    if (w.empty()) return {};
    const int len = static_cast<int>(w.size());
    const int n =
        LCMapStringEx(LOCALE_NAME_INVARIANT, flags, w.data(), len, nullptr, 0, nullptr, nullptr, 0);
    if (n <= 0) return std::wstring(w);
    std::wstring out(static_cast<std::size_t>(n), L'\0');
    LCMapStringEx(LOCALE_NAME_INVARIANT, flags, w.data(), len, out.data(), n, nullptr, nullptr, 0);
    return out;
}

// Linguistic casing: the Unicode simple mappings. Without it the system applies the file
// system's table, which leaves letters such as the Kelvin sign and long s alone.
constexpr DWORD kLower = LCMAP_LOWERCASE | LCMAP_LINGUISTIC_CASING;
constexpr DWORD kUpper = LCMAP_UPPERCASE | LCMAP_LINGUISTIC_CASING;

// Maps well-formed UTF-8 with the system's (simple, one-to-one) case tables.
std::string map_valid_platform(std::string_view s, CaseKind kind) {
    return wide_to_utf8(nls_map(utf8_to_wide(s), kind == CaseKind::lower ? kLower : kUpper));
}

// Windows has no full case folding; upper- then lower-casing gives the common folding for the
// simple mappings (dotless i and long s fold to i and s, the Kelvin sign to k).
Folding fold_platform(char32_t cp) {
    std::string utf8;
    append_utf8(utf8, cp);
    const std::wstring folded = nls_map(nls_map(utf8_to_wide(utf8), kUpper), kLower);
    Folding f;
    for (std::size_t i = 0; i < folded.size() && f.count < f.cps.size(); ++i) {
        char32_t c = static_cast<char16_t>(folded[i]);
        if (c >= 0xD800 && c <= 0xDBFF && i + 1 < folded.size()) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char16_t>(folded[++i]) - 0xDC00);
        }
        f.cps[f.count++] = c;
    }
    if (f.count == 0) f.cps[f.count++] = cp;
    return f;
}

#else

// Maps well-formed UTF-8 with ICU's full mappings in the root locale (language-neutral).
std::string map_valid_platform(std::string_view s, CaseKind kind) {
    std::string out;
    out.reserve(s.size());
    icu::StringByteSink<std::string> sink(&out);
    UErrorCode status = U_ZERO_ERROR;
    const icu::StringPiece piece(s.data(), static_cast<int32_t>(s.size()));
    if (kind == CaseKind::lower) {
        icu::CaseMap::utf8ToLower("", 0, piece, sink, nullptr, status);
    } else {
        icu::CaseMap::utf8ToUpper("", 0, piece, sink, nullptr, status);
    }
    if (U_FAILURE(status)) return std::string(s);
    return out;
}

// Full case folding of one code point.
Folding fold_platform(char32_t cp) {
    UChar src[2];
    int32_t src_len = 0;
    UBool error = false;
    U16_APPEND(src, src_len, 2, static_cast<UChar32>(cp), error);
    UChar dest[8];
    UErrorCode status = U_ZERO_ERROR;
    const int32_t n = u_strFoldCase(dest, 8, src, src_len, U_FOLD_CASE_DEFAULT, &status);
    Folding f;
    if (error || U_FAILURE(status) || n <= 0) {
        f.cps[f.count++] = cp;
        return f;
    }
    for (int32_t i = 0; i < n && f.count < f.cps.size();) {
        UChar32 c;
        U16_NEXT(dest, i, n, c);
        f.cps[f.count++] = static_cast<char32_t>(c);
    }
    return f;
}

#endif

// --- Unicode case mapping and folding ---------------------------------------------------------

std::string ascii_map(std::string_view s, CaseKind kind) {
    std::string out(s);
    for (char& c : out) c = kind == CaseKind::lower ? ascii_lower_char(c) : ascii_upper_char(c);
    return out;
}

// Maps well-formed runs through the platform and copies ill-formed bytes unchanged.
std::string map_case(std::string_view s, CaseKind kind) {
    if (is_ascii(s)) return ascii_map(s, kind);
    std::string out;
    out.reserve(s.size());
    std::size_t pos = 0;
    while (pos < s.size()) {
        const std::size_t run = valid_run_length(s, pos);
        if (run > 0) {
            const std::string_view part = s.substr(pos, run);
            out += is_ascii(part) ? ascii_map(part, kind) : map_valid_platform(part, kind);
            pos += run;
        } else {
            out += s[pos++];  // ill-formed byte
        }
    }
    return out;
}

// Folds one decoded character; ASCII and ill-formed bytes stay off the platform path.
Folding fold_char(const Decoded& d) {
    if (d.valid && d.value >= 0x80) return fold_platform(d.value);
    Folding f;
    f.cps[f.count++] = d.value < 0x80
                           ? static_cast<char32_t>(ascii_lower_char(static_cast<char>(d.value)))
                           : d.value;
    return f;
}

// A text as its folded code points, remembering where each source character starts.
struct FoldedText {
    std::vector<char32_t> cps;
    std::vector<std::size_t> source_pos;  // byte offset of the source character of each cps[i]
    std::vector<bool> char_start;         // cps[i] is the first of its source character's folding
};

FoldedText fold_text(std::string_view s, std::size_t base) {
    FoldedText t;
    t.cps.reserve(s.size());
    t.source_pos.reserve(s.size());
    t.char_start.reserve(s.size());
    for (std::size_t pos = 0; pos < s.size();) {
        const Decoded d = decode_at(s, pos);
        const Folding f = fold_char(d);
        for (std::size_t i = 0; i < f.count; ++i) {
            t.cps.push_back(f.cps[i]);
            t.source_pos.push_back(base + pos);
            t.char_start.push_back(i == 0);
        }
        pos += d.length;
    }
    return t;
}

bool boundary_at(const FoldedText& t, std::size_t i) {
    return i == t.cps.size() || t.char_start[i];
}

// Index into `hay.cps` of the first boundary-aligned match of `needle` at or after `start`, or
// npos. The folded needle must not be empty.
std::size_t find_folded(const FoldedText& hay, const std::vector<char32_t>& needle,
                        std::size_t start) {
    if (needle.size() > hay.cps.size()) return std::string_view::npos;
    const std::size_t last = hay.cps.size() - needle.size();
    for (std::size_t i = start; i <= last; ++i) {
        if (!hay.char_start[i] || hay.cps[i] != needle[0]) continue;
        if (std::equal(needle.begin(), needle.end(),
                       hay.cps.begin() + static_cast<std::ptrdiff_t>(i)) &&
            boundary_at(hay, i + needle.size()))
            return i;
    }
    return std::string_view::npos;
}

// Byte offset in the original text just after the folded code points [0, end).
std::size_t source_end(const FoldedText& t, std::size_t end, std::size_t text_end) {
    return end == t.cps.size() ? text_end : t.source_pos[end];
}

// --- Windows-1252 -----------------------------------------------------------------------------

// Code points for 0x80..0x9F; the five bytes Windows-1252 leaves undefined map to the C1
// control of the same value.
constexpr std::array<char16_t, 32> kCp1252High = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::size_t last_char_start(std::string_view s) {
    const std::size_t lowest = s.size() >= 4 ? s.size() - 4 : 0;
    for (std::size_t p = s.size() - 1; p > lowest && is_continuation(s[p]); --p) {
        if (!is_continuation(s[p - 1])) {
            const Decoded d = decode_at(s, p - 1);
            return d.valid && d.length == s.size() - (p - 1) ? p - 1 : s.size() - 1;
        }
    }
    return s.size() - 1;
}

}  // namespace

#ifdef _WIN32

std::wstring utf8_to_wide(std::string_view s) {
    if (s.empty()) return {};
    const int n = MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), nullptr, 0);
    std::wstring w(static_cast<std::size_t>(n), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, s.data(), static_cast<int>(s.size()), w.data(), n);
    return w;
}

std::string wide_to_utf8(std::wstring_view w) {
    if (w.empty()) return {};
    const int n = WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), nullptr, 0,
                                      nullptr, nullptr);
    std::string s(static_cast<std::size_t>(n), '\0');
    WideCharToMultiByte(CP_UTF8, 0, w.data(), static_cast<int>(w.size()), s.data(), n, nullptr,
                        nullptr);
    return s;
}

#endif

void append_utf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// --- Encoding -------------------------------------------------------------------------------

// Eight bytes at a time: a byte of 0x80 or above sets its top bit.
bool is_ascii(std::string_view s) {
    std::size_t i = 0;
    for (; i + 8 <= s.size(); i += 8) {
        std::uint64_t word;
        std::memcpy(&word, s.data() + i, sizeof word);
        if (word & 0x8080808080808080ull) return false;
    }
    return std::all_of(s.begin() + static_cast<std::ptrdiff_t>(i), s.end(),
                       [](char c) { return is_ascii_byte(c); });
}

bool is_valid_utf8(std::string_view bytes) {
    return valid_run_length(bytes, 0) == bytes.size();
}

std::string windows1252_to_utf8(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 2);
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x80) {
            out += c;
        } else if (b < 0xA0) {
            append_utf8(out, kCp1252High[b - 0x80]);
        } else {
            append_utf8(out, b);  // 0xA0..0xFF equal Latin-1
        }
    }
    return out;
}

std::string decode_script_text(std::string_view bytes) {
    if (is_valid_utf8(bytes)) return std::string(bytes);
    return windows1252_to_utf8(bytes);
}

std::size_t char_count(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t pos = 0; pos < utf8.size(); ++count) {
        pos += is_ascii_byte(utf8[pos]) ? 1 : decode_at(utf8, pos).length;
    }
    return count;
}

std::size_t byte_offset_of_char(std::string_view utf8, std::size_t char_index) {
    std::size_t pos = 0;
    for (std::size_t i = 0; i < char_index && pos < utf8.size(); ++i) {
        pos += is_ascii_byte(utf8[pos]) ? 1 : decode_at(utf8, pos).length;
    }
    return pos;
}

// --- Case ----------------------------------------------------------------------------------

std::string to_lower(std::string_view utf8) {
    return map_case(utf8, CaseKind::lower);
}

std::string to_upper(std::string_view utf8) {
    return map_case(utf8, CaseKind::upper);
}

bool iequals(std::string_view a, std::string_view b) {
    if (is_ascii(a) && is_ascii(b)) return ascii_iequals(a, b);
    return fold_text(a, 0).cps == fold_text(b, 0).cps;
}

std::size_t ifind(std::string_view hay, std::string_view needle, std::size_t from) {
    if (from > hay.size()) return std::string_view::npos;
    if (needle.empty()) return from;
    const std::string_view rest = hay.substr(from);
    if (is_ascii(needle) && is_ascii(rest)) return ascii_ifind(hay, needle, from);

    const FoldedText folded_hay = fold_text(rest, from);
    const std::size_t i = find_folded(folded_hay, fold_text(needle, 0).cps, 0);
    return i == std::string_view::npos ? i : folded_hay.source_pos[i];
}

// --- Small operations ----------------------------------------------------------------------

std::string_view trim(std::string_view s) {
    const std::size_t first = s.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string_view unquote_slow(std::string_view s) {
    return s.substr(1, last_char_start(s) - 1);
}

namespace {

std::size_t replace_all_ascii(std::string& s, std::string_view search,
                              std::string_view replacement) {
    std::size_t pos = ascii_ifind(s, search, 0);
    if (pos == std::string::npos) return 0;
    std::string out;
    std::size_t copied = 0;
    std::size_t count = 0;
    for (; pos != std::string::npos; pos = ascii_ifind(s, search, copied), ++count) {
        out.append(s, copied, pos - copied).append(replacement);
        copied = pos + search.size();
    }
    out.append(s, copied);
    s = std::move(out);
    return count;
}

std::size_t replace_all_unicode(std::string& s, std::string_view search,
                                std::string_view replacement) {
    const FoldedText hay = fold_text(s, 0);
    const std::vector<char32_t> needle = fold_text(search, 0).cps;
    std::string out;
    std::size_t copied = 0;  // bytes of `s` already in `out`
    std::size_t count = 0;
    for (std::size_t i = find_folded(hay, needle, 0); i != std::string::npos;
         i = find_folded(hay, needle, i + needle.size()), ++count) {
        out.append(s, copied, hay.source_pos[i] - copied).append(replacement);
        copied = source_end(hay, i + needle.size(), s.size());
    }
    if (count == 0) return 0;
    out.append(s, copied);
    s = std::move(out);
    return count;
}

}  // namespace

std::size_t replace_all(std::string& s, std::string_view search, std::string_view replacement) {
    if (search.empty() || s.empty()) return 0;
    if (is_ascii(search) && is_ascii(s)) return replace_all_ascii(s, search, replacement);
    return replace_all_unicode(s, search, replacement);
}

bool is_path_separator(char c) {
#ifdef _WIN32
    return c == '\\';
#else
    return c == '\\' || c == '/';
#endif
}

PathParts split_path(std::string_view path) {
    const auto it = std::find_if(path.rbegin(), path.rend(), is_path_separator);
    if (it == path.rend()) return {"", std::string(path)};
    const auto sep = static_cast<std::size_t>(path.rend() - it - 1);
    return {std::string(path.substr(0, sep)), std::string(path.substr(sep + 1))};
}

bool starts_with_ascii_ci(std::string_view s, std::string_view prefix) {
    const std::string_view t = trim(s);
    return t.size() >= prefix.size() && ascii_iequals(t.substr(0, prefix.size()), prefix);
}

std::string ascii_lower(std::string_view s) {
    return ascii_map(s, CaseKind::lower);
}

}  // namespace quiller::text
