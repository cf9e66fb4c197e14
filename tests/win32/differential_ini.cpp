// Quiller's INI reader and writer against the profile-string functions, on the same files, and
// which of Wine's known rules explains a difference in a value read or in a file written.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <windows.h>

#include "differential.hpp"
#include "os/ini_profile.hpp"
#include "os/win32/win32_platform.hpp"
#include "value/text.hpp"

namespace quiller::differential {
namespace {

namespace fs = std::filesystem;

// --- Wine's rules ----------------------------------------------------------------------------

constexpr std::string_view kBlanks = " \t\v\f";

std::string_view trim(std::string_view s) {
    const std::size_t first = s.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return s.substr(first, s.find_last_not_of(kBlanks) - first + 1);
}

// One line as Wine writes it back: trimmed; a header without what follows its last "]" and
// with its name trimmed; a key line with its name and value trimmed.
std::string wine_line(std::string_view text) {
    const std::string_view line = trim(text);
    const std::size_t close = line.rfind(']');
    if (!line.empty() && line.front() == '[' && close != std::string_view::npos && close > 0)
        return "[" + std::string(trim(line.substr(1, close - 1))) + "]";
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.front() == '[') return std::string(line);
    return std::string(trim(line.substr(0, equals))) + "=" +
           std::string(trim(line.substr(equals + 1)));
}

// The file as the profile functions under Wine write it back: every line as wine_line() gives
// it, empty lines dropped unless `keep_blank_lines`, every line ended by CR LF.
std::string wine_layout(std::string_view bytes, bool keep_blank_lines) {
    std::string out;
    for (const ini::Line& line : ini::split_lines(bytes)) {
        const std::string text = wine_line(line.text);
        if (text.empty() && !keep_blank_lines) continue;
        out += text + "\r\n";
    }
    return out;
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
        const std::string_view line = trim(profile.lines[i].text);
        if (line.find('=') == std::string_view::npos && text::iequals(line, trim(key))) return true;
    }
    return false;
}

// Another section of the same name that holds the key, as a key line or a line without "="
// (or any other section of that name, for a section's deletion).
bool later_namesake(const ini::Profile& profile, const IniEdit& e) {
    const ini::SectionEntry* first = ini::find_section(profile, e.section);
    for (const ini::SectionEntry& s : profile.sections) {
        if (&s == first || !text::iequals(s.name, first->name)) continue;
        if (e.key.empty() || ini::find_key(s, e.key) || bare_line_first(profile, s, e.key))
            return true;
    }
    return false;
}

// How an edit of `before` differs: nothing when it doesn't; "layout" when Wine's layout explains
// it; "bare-line" or "duplicate-section" when Wine edits another line of the file, a line
// without "=" or a key of a later section of the same name; "section-gap" when only the empty
// line Quiller puts before a new section does; else "bytes".
const char* ini_write_class(const std::string& before, const IniEdit& e, const std::string& ours,
                            const std::string& system, bool keep_blank_lines) {
    if (ours == system) return nullptr;
    const std::string wine = wine_layout(system, keep_blank_lines);
    if (wine_layout(ours, keep_blank_lines) == wine) return "layout";
    const ini::Profile profile = ini::parse_profile(before);
    if (const ini::SectionEntry* section = ini::find_section(profile, e.section)) {
        if (!e.key.empty() && bare_line_first(profile, *section, e.key)) return "bare-line";
        const bool found = !e.key.empty() && ini::find_key(*section, e.key);
        if (!found && later_namesake(profile, e)) return "duplicate-section";
    }
    const std::string closed = without_gap_before_last_section(ours);
    if (closed != ours && wine_layout(closed, keep_blank_lines) == wine) return "section-gap";
    return "bytes";
}

// Which rule explains why a read of `bytes` differs: "comment-key" (a key starting with ";"),
// "bare-line" (a line without "=" named like the key comes first), or "value" when none does.
const char* ini_read_class(std::string_view bytes, const IniQuery& q) {
    if (trim(q.key).starts_with(';')) return "comment-key";
    const ini::Profile profile = ini::parse_profile(bytes);
    const ini::SectionEntry* section = ini::find_section(profile, q.section);
    if (section && ini::find_key(*section, q.key) && bare_line_first(profile, *section, q.key))
        return "bare-line";
    return "value";
}

// --- The comparison --------------------------------------------------------------------------

bool write_bytes(const fs::path& path, const std::string& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << bytes;
    return static_cast<bool>(out);
}

std::string read_bytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::string quoted(const std::string& s) {
    return "\"" + escape(s) + "\"";
}

std::string edit_text(const IniEdit& e) {
    if (e.key.empty()) return "delete [" + e.section + "]";
    if (!e.value) return "delete [" + e.section + "] " + e.key;
    return "[" + e.section + "] " + e.key + "=" + *e.value;
}

// The edit as the project's writer takes it; it points into `e`.
ini::ProfileEdit profile_edit(const IniEdit& e) {
    static const std::string kNone;
    ini::ProfileEdit p{ini::EditKind::SetValue, e.section, e.key, e.value ? *e.value : kNone};
    if (e.key.empty()) {
        p.kind = ini::EditKind::DeleteSection;
    } else if (!e.value) {
        p.kind = ini::EditKind::DeleteKey;
    }
    return p;
}

class IniComparison {
  public:
    IniComparison(fs::path dir, Report& report) : dir_(std::move(dir)), report_(report) {}

    void run(const IniCase& c, int number) {
        const std::string name = "file " + std::to_string(number);
        const fs::path path = dir_ / ("read-" + std::to_string(number) + ".ini");
        write_bytes(path, c.bytes);
        for (const IniQuery& q : c.queries) read(path, name, q, c.bytes);
        const std::string tag = std::to_string(number);
        series(c, c.bytes, tag, name + " edit ", false);
        series(c, wine_written(c.bytes, number), tag + "-wine", name + " as Wine writes it, edit ",
               true);
    }

  private:
    void read(const fs::path& path, const std::string& name, const IniQuery& q,
              const std::string& bytes) {
        const std::string ours = ini_.read(path.string(), q.section, q.key, q.fallback);
        const std::string system =
            system_profile_string(path.string(), q.section, q.key, q.fallback);
        report_.compare("ini-read", ours != system ? ini_read_class(bytes, q) : nullptr,
                        name + " [" + q.section + "] " + q.key + " (" + q.fallback + ")",
                        quoted(ours), quoted(system));
    }

    // The file as Wine writes it back after an edit that changes nothing in the end.
    std::string wine_written(const std::string& bytes, int number) {
        const fs::path path = dir_ / ("wine-" + std::to_string(number) + ".ini");
        write_bytes(path, bytes);
        system_write_profile(path.string(), "Quiller Scratch", "k", "v");
        system_write_profile(path.string(), "Quiller Scratch", "", std::nullopt);
        return read_bytes(path);
    }

    // The edits one after the other on two copies of `start`. A difference Wine's layout
    // explains is reported and the series goes on; after any other one it stops.
    void series(const IniCase& c, const std::string& start, const std::string& tag,
                const std::string& label, bool as_wine_writes) {
        const fs::path mine = dir_ / ("quiller-" + tag + ".ini");
        const fs::path theirs = dir_ / ("system-" + tag + ".ini");
        write_bytes(mine, start);
        write_bytes(theirs, start);
        std::string before = start;
        for (std::size_t i = 0; i < c.edits.size(); ++i) {
            const IniEdit& e = c.edits[i];
            ini::WriteFailure failure;
            ini_.write(mine.string(), profile_edit(e), "\r\n", failure);
            system_write_profile(theirs.string(), e.section, e.key, e.value);
            const std::string ours = read_bytes(mine), system = read_bytes(theirs);
            const char* difference = ini_write_class(before, e, ours, system, as_wine_writes);
            report_.compare(as_wine_writes ? "ini-edit" : "ini-write", difference,
                            label + std::to_string(i + 1) + ": " + edit_text(e) + " on " + before,
                            quoted(ours), quoted(system));
            if (difference && std::string_view(difference) != "layout") return;
            before = ours;
        }
    }

    fs::path dir_;
    Report& report_;
    win32::Win32FileSystem files_;
    win32::Win32Clock clock_;
    ini::IniFiles ini_{files_, clock_};
};

}  // namespace

bool compare_ini(const std::vector<IniCase>& cases, const std::string& work_dir, Report& report) {
    const fs::path dir =
        fs::path(work_dir) / ("quiller-differential-" + std::to_string(GetCurrentProcessId()));
    std::error_code error;
    fs::create_directories(dir, error);
    if (error) return false;
    IniComparison comparison(dir, report);
    for (std::size_t i = 0; i < cases.size(); ++i)
        comparison.run(cases[i], static_cast<int>(i + 1));
    if (std::getenv("QUILLER_DIFFERENTIAL_KEEP")) {
        std::printf("INI files kept in %s\n", dir.string().c_str());
    } else {
        fs::remove_all(dir, error);
    }
    return true;
}

}  // namespace quiller::differential
