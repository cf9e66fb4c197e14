// How the profile functions under Wine lay out a file they write, and which known rule explains
// a difference in a value read or in a file written.
#include "differential.hpp"
#include "os/ini_profile.hpp"

namespace quiller::differential {
namespace {

constexpr std::string_view kBlanks = " \t\v\f";

std::string_view trim(std::string_view s, std::string_view blanks) {
    const std::size_t first = s.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return s.substr(first, s.find_last_not_of(blanks) - first + 1);
}

// One line as Wine writes it back: trimmed; a header without what follows its last "]" and
// with its name trimmed; a key line with its name and value trimmed.
std::string wine_line(std::string_view text) {
    const std::string_view line = trim(text, kBlanks);
    const std::size_t close = line.rfind(']');
    if (!line.empty() && line.front() == '[' && close != std::string_view::npos && close > 0)
        return "[" + std::string(trim(line.substr(1, close - 1), kBlanks)) + "]";
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.front() == '[') return std::string(line);
    return std::string(trim(line.substr(0, equals), kBlanks)) + "=" +
           std::string(trim(line.substr(equals + 1), kBlanks));
}

// `bytes` without the empty line right before its last header line; as it is when there is
// none.
std::string without_gap_before_last_section(const std::string& bytes) {
    for (const std::string_view gap : {"\r\n\r\n[", "\n\n["}) {
        const std::size_t at = bytes.rfind(gap);
        const std::size_t header = bytes.rfind("\n[");
        if (at == std::string::npos || at + gap.size() - 2 != header) continue;
        const std::size_t empty_line = (gap.size() - 1) / 2;  // the second break
        return bytes.substr(0, at) + bytes.substr(at + empty_line);
    }
    return bytes;
}

// A line of the section without "=" that names the key, before any key line of that name.
bool bare_line_first(const ini::Profile& profile, const ini::SectionEntry& section,
                     std::string_view key) {
    const ini::KeyEntry* found = ini::find_key(section, key);
    const std::size_t end = found ? found->line : section.end;
    for (std::size_t i = section.header + 1; i < end; ++i) {
        const std::string_view line = trim(profile.lines[i].text, kBlanks);
        if (line.find('=') == std::string_view::npos && ascii_iequals(line, trim(key, " ")))
            return true;
    }
    return false;
}

// Another section of the same name that holds the key, as a key line or a line without "="
// (or any other section of that name, for a section's deletion).
bool later_namesake(const ini::Profile& profile, const IniEdit& e) {
    const ini::SectionEntry* first = ini::find_section(profile, e.section);
    for (const ini::SectionEntry& s : profile.sections) {
        if (&s == first || !ascii_iequals(s.name, first->name)) continue;
        if (e.key.empty() || ini::find_key(s, e.key) || bare_line_first(profile, s, e.key))
            return true;
    }
    return false;
}

// The rule of Wine's that explains a different edit of `before`, or null.
const char* edit_rule(const std::string& before, const IniEdit& e) {
    const ini::Profile profile = ini::parse_profile(before);
    const ini::SectionEntry* section = ini::find_section(profile, e.section);
    if (!section) return nullptr;
    if (!e.key.empty() && bare_line_first(profile, *section, e.key)) return "bare-line";
    const bool found = !e.key.empty() && ini::find_key(*section, e.key);
    if (!found && later_namesake(profile, e)) return "duplicate-section";
    return nullptr;
}

}  // namespace

std::string wine_layout(std::string_view bytes, bool keep_blank_lines) {
    std::string out;
    for (const ini::Line& line : ini::split_lines(bytes)) {
        const std::string text = wine_line(line.text);
        if (text.empty() && !keep_blank_lines) continue;
        out += text;
        out += "\r\n";
    }
    return out;
}

const char* ini_write_class(const IniWrite& w, bool keep_blank_lines) {
    if (w.ours == w.system) return nullptr;
    const std::string system = wine_layout(w.system, keep_blank_lines);
    if (wine_layout(w.ours, keep_blank_lines) == system) return "layout";
    if (const char* rule = edit_rule(w.before, w.edit)) return rule;
    const std::string closed = without_gap_before_last_section(w.ours);
    if (closed != w.ours && wine_layout(closed, keep_blank_lines) == system) return "section-gap";
    return "bytes";
}

const char* ini_read_class(std::string_view bytes, const IniQuery& q) {
    if (trim(q.key, " ").starts_with(';')) return "comment-key";
    const ini::Profile profile = ini::parse_profile(bytes);
    const ini::SectionEntry* section = ini::find_section(profile, q.section);
    const ini::KeyEntry* key = section ? ini::find_key(*section, q.key) : nullptr;
    if (!key) return "value";
    for (std::size_t i = section->header + 1; i < key->line; ++i) {
        const std::string_view line = trim(profile.lines[i].text, kBlanks);
        if (line.find('=') == std::string_view::npos && ascii_iequals(line, key->name))
            return "bare-line";
    }
    return "value";
}

}  // namespace quiller::differential
