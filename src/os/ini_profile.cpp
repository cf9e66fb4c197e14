#include "os/ini_profile.hpp"

#include <algorithm>
#include <memory>

#include "value/text.hpp"

namespace quiller::ini {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view without_bom(std::string_view bytes) {
    if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
    return bytes;
}

bool is_blank_char(char c) {
    return c == ' ' || c == '\t' || c == '\v' || c == '\f';
}

std::string_view trim_blanks(std::string_view s) {
    while (!s.empty() && is_blank_char(s.front())) s.remove_prefix(1);
    while (!s.empty() && is_blank_char(s.back())) s.remove_suffix(1);
    return s;
}

bool is_blank(std::string_view s) {
    return trim_blanks(s).empty();
}

// Byte length of the start of `s` that equals `prefix` ignoring case, or npos.
std::size_t match_prefix(std::string_view s, std::string_view prefix) {
    if (prefix.empty()) return 0;
    const std::string_view head = s.substr(0, prefix.size());
    if (text::is_ascii(prefix) && text::is_ascii(head))
        return text::iequals(head, prefix) ? prefix.size() : npos;
    // Case folding can change byte lengths: look for a match at the start of a window, then
    // find where it ends.
    const std::string_view window = s.substr(0, 4 * prefix.size() + 4);
    if (text::ifind(window, prefix) != 0) return npos;
    for (std::size_t end = 1; end <= window.size(); ++end)
        if (text::iequals(window.substr(0, end), prefix)) return end;
    return npos;
}

// a + b + c, built by appending (the operator chain trips a false -Wrestrict in GCC 12).
std::string joined(std::string_view a, std::string_view b, std::string_view c) {
    std::string s;
    s.reserve(a.size() + b.size() + c.size());
    s.append(a).append(b).append(c);
    return s;
}

// The name of a header line (already trimmed): the text between "[" and the last "]".
std::optional<std::string_view> header_name(std::string_view line) {
    if (line.empty() || line.front() != '[') return std::nullopt;
    const std::size_t close = line.rfind(']');
    if (close == npos || close == 0) return std::nullopt;
    return trim_blanks(line.substr(1, close - 1));
}

std::string_view cut_at_nul(std::string_view s) {
    return s.substr(0, s.find('\0'));
}

std::string_view cut_to_buffer(std::string_view s) {
    return s.substr(0, text::byte_offset_of_char(s, kMaxProfileChars));
}

std::string_view without_quotes(std::string_view v) {
    if (v.size() >= 2 && (v.front() == '"' || v.front() == '\'') && v.back() == v.front())
        return v.substr(1, v.size() - 2);
    return v;
}

// The lower-case test of `readinisection`, with a cheap length filter for long lines.
bool lower_equals(std::string_view line, const std::string& lower) {
    if (line.empty() || line.front() != '[' || line.size() > 4 * lower.size() + 8) return false;
    return text::to_lower(line) == lower;
}

}  // namespace

// --- Lines -----------------------------------------------------------------------------------

std::vector<Line> split_lines(std::string_view bytes) {
    bytes = without_bom(bytes);
    std::vector<Line> lines;
    std::size_t start = 0;
    while (start < bytes.size()) {
        const std::size_t brk = bytes.find_first_of("\r\n", start);
        if (brk == npos) {
            lines.push_back({bytes.substr(start), {}});
            break;
        }
        const bool crlf = bytes[brk] == '\r' && brk + 1 < bytes.size() && bytes[brk + 1] == '\n';
        const std::size_t length = crlf ? 2 : 1;
        lines.push_back({bytes.substr(start, brk - start), bytes.substr(brk, length)});
        start = brk + length;
    }
    return lines;
}

// --- The profile reader ----------------------------------------------------------------------

Profile parse_profile(std::string_view bytes) {
    Profile profile;
    profile.lines = split_lines(bytes);
    std::vector<SectionEntry>& sections = profile.sections;
    for (std::size_t i = 0; i < profile.lines.size(); ++i) {
        const std::string_view raw = profile.lines[i].text;
        const std::string_view line = trim_blanks(raw);
        if (line.empty() || line.front() == ';') continue;
        if (const auto name = header_name(line)) {
            if (!sections.empty()) sections.back().end = i;
            sections.push_back({*name, i, profile.lines.size(), {}});
            continue;
        }
        const std::size_t equals = raw.find('=');
        if (equals == npos || sections.empty()) continue;
        sections.back().keys.push_back(
            {trim_blanks(raw.substr(0, equals)), trim_blanks(raw.substr(equals + 1)), i, equals});
    }
    return profile;
}

const SectionEntry* find_section(const Profile& profile, std::string_view name) {
    name = trim_blanks(name);
    for (const SectionEntry& section : profile.sections)
        if (text::iequals(section.name, name)) return &section;
    return nullptr;
}

const KeyEntry* find_key(const SectionEntry& section, std::string_view name) {
    name = trim_blanks(name);
    for (const KeyEntry& key : section.keys)
        if (text::iequals(key.name, name)) return &key;
    return nullptr;
}

std::string profile_string(const Profile& profile, std::string_view section, std::string_view key,
                           std::string_view fallback) {
    const SectionEntry* found_section = find_section(profile, section);
    const KeyEntry* found = found_section ? find_key(*found_section, key) : nullptr;
    if (found) return std::string(cut_to_buffer(without_quotes(cut_at_nul(found->value))));
    std::string_view value = cut_at_nul(fallback);
    while (!value.empty() && value.back() == ' ') value.remove_suffix(1);
    return std::string(cut_to_buffer(value));
}

// --- The line reader of large files ----------------------------------------------------------

LineFile index_lines(std::string_view bytes) {
    LineFile file{split_lines(bytes), {}};
    for (std::size_t i = 0; i < file.lines.size(); ++i)
        if (file.lines[i].text.starts_with('[')) file.headers.push_back(i);
    return file;
}

std::optional<std::string_view> line_reader_value(const LineFile& file, std::string_view section,
                                                  std::string_view key) {
    const std::string header = joined("[", section, "]");
    const std::string start = joined(key, "=", {});
    for (std::size_t h = 0; h < file.headers.size(); ++h) {
        if (match_prefix(file.lines[file.headers[h]].text, header) == npos) continue;
        const std::size_t end =
            h + 1 < file.headers.size() ? file.headers[h + 1] : file.lines.size();
        for (std::size_t i = file.headers[h] + 1; i < end; ++i) {
            const std::string_view line = file.lines[i].text;
            const std::size_t length = match_prefix(line, start);
            if (length != npos) return line.substr(length);
        }
        return std::nullopt;
    }
    return std::nullopt;
}

// --- Section listing -------------------------------------------------------------------------

std::vector<std::string> section_entries(std::string_view bytes, std::string_view section) {
    const std::string header = text::to_lower(joined("[", section, "]"));
    std::vector<std::string> entries;
    bool inside = false;
    for (const Line& line : split_lines(bytes)) {
        const std::string_view t = line.text;
        if (!inside) {
            inside = lower_equals(t, header);
            continue;
        }
        if (t.starts_with('[')) break;
        const std::size_t equals = t.find('=');
        if (t.starts_with(';') || equals == npos) continue;
        std::string entry(text::trim(t.substr(0, equals)));
        entry += '=';
        entry += text::trim(t.substr(equals + 1));
        entries.push_back(std::move(entry));
    }
    return entries;
}

// --- The profile writer ----------------------------------------------------------------------

namespace {

// Section, key and value hold one line each.
std::string_view one_line(std::string_view s) {
    return s.substr(0, s.find_first_of(std::string_view("\0\r\n", 3)));
}

std::string_view line_break_of(std::string_view bytes, std::string_view fallback) {
    const std::size_t brk = bytes.find_first_of("\r\n");
    if (brk == npos) return fallback;
    if (bytes[brk] == '\n') return "\n";
    return bytes.substr(brk, 2) == "\r\n" ? "\r\n" : "\r";
}

// Offset of a view into `bytes` (every line and entry view points into them).
std::size_t offset_of(std::string_view bytes, std::string_view part) {
    return static_cast<std::size_t>(part.data() - bytes.data());
}

std::size_t line_start(std::string_view bytes, const Profile& profile, std::size_t i) {
    return i < profile.lines.size() ? offset_of(bytes, profile.lines[i].text) : bytes.size();
}

std::string remove_lines(std::string_view bytes, const Profile& profile, std::size_t first,
                         std::size_t last) {
    std::string out(bytes.substr(0, line_start(bytes, profile, first)));
    out += bytes.substr(line_start(bytes, profile, last));
    return out;
}

// The line keeps its text up to "=" (and the blanks before a value that stays non-empty).
std::string replace_value(std::string_view bytes, const Profile& profile, const KeyEntry& key,
                          std::string_view value) {
    const std::string_view line = profile.lines[key.line].text;
    const std::size_t start = offset_of(bytes, line);
    std::size_t keep = key.equals + 1;
    if (!key.value.empty() && !value.empty()) keep = offset_of(line, key.value);
    std::string out(bytes.substr(0, start + keep));
    out += value;
    out += bytes.substr(start + line.size());
    return out;
}

std::string insert_key(std::string_view bytes, const Profile& profile, const SectionEntry& section,
                       std::string_view brk, std::string_view key, std::string_view value) {
    std::size_t last = section.header;
    for (std::size_t i = section.header + 1; i < section.end; ++i)
        if (!is_blank(profile.lines[i].text)) last = i;
    const Line& line = profile.lines[last];
    if (!line.end.empty()) brk = line.end;
    const std::size_t text_end = offset_of(bytes, line.text) + line.text.size();
    std::string out(bytes.substr(0, text_end));
    out.append(brk).append(key).append("=").append(value).append(brk);
    out += bytes.substr(text_end + line.end.size());
    return out;
}

std::string append_section(std::string_view bytes, const Profile& profile, std::string_view brk,
                           std::string_view section, std::string_view key, std::string_view value) {
    std::string out(bytes);
    if (!profile.lines.empty()) {
        const Line& last = profile.lines.back();
        // Finish the last line; the new section follows it directly, as Windows writes it.
        if (last.end.empty() && !is_blank(last.text)) out += brk;
    }
    out.append("[").append(section).append("]").append(brk);
    out.append(key).append("=").append(value).append(brk);
    return out;
}

}  // namespace

std::string apply_edit(std::string_view bytes, const ProfileEdit& edit,
                       std::string_view new_file_break) {
    const Profile profile = parse_profile(bytes);
    const std::string_view section_name = trim_blanks(one_line(edit.section));
    const std::string_view key_name = trim_blanks(one_line(edit.key));
    const SectionEntry* section = find_section(profile, section_name);
    const KeyEntry* key = section ? find_key(*section, key_name) : nullptr;
    switch (edit.kind) {
        case EditKind::DeleteSection:
            if (!section) return std::string(bytes);
            return remove_lines(bytes, profile, section->header, section->end);
        case EditKind::DeleteKey:
            if (!key) return std::string(bytes);
            return remove_lines(bytes, profile, key->line, key->line + 1);
        case EditKind::SetValue:
            break;
    }
    const std::string_view value = one_line(edit.value);
    const std::string_view brk = line_break_of(bytes, new_file_break);
    if (!section) return append_section(bytes, profile, brk, section_name, key_name, value);
    if (key) return replace_value(bytes, profile, *key, value);
    return insert_key(bytes, profile, *section, brk, key_name, value);
}

// --- Files -----------------------------------------------------------------------------------
//
// A few recently read files stay parsed. A cached copy is used without reading the file again
// while its size and modification time are unchanged, but only when the file had been written
// at least kSettleSeconds before it was read: a file written within the same second as another
// change of equal size can't be told apart by its time, so such a copy is compared with the
// file's bytes on every use (cheap next to parsing) until it has settled.

namespace {

constexpr std::size_t kCacheSlots = 4;
constexpr std::size_t kMaxCachedBytes = 16u << 20;
constexpr std::int64_t kSettleSeconds = 2;

bool same_status(const FileEntry& a, const FileEntry& b) {
    return a.size == b.size && a.modified == b.modified && a.attributes == b.attributes;
}

}  // namespace

struct IniFiles::CachedFile {
    std::string path;
    FileEntry status;
    bool settled = false;
    bool large = false;
    std::string bytes;
    Profile profile;  // files under the threshold
    LineFile lines;   // the others
};

IniFiles::IniFiles(FileSystem& files, Clock& clock) : files_(files), clock_(clock) {}

IniFiles::~IniFiles() = default;

// A modification time of 0 means the file system keeps none.
bool IniFiles::has_settled(const FileEntry& status, std::size_t bytes_read) {
    return status.modified != 0 && clock_.utc_seconds() - status.modified >= kSettleSeconds &&
           static_cast<std::int64_t>(bytes_read) == status.size;
}

IniFiles::CachedPtr IniFiles::parsed(const std::string& path, const FileEntry& status,
                                     std::string bytes) {
    auto file = std::make_shared<CachedFile>();
    file->path = path;
    file->status = status;
    file->settled = has_settled(status, bytes.size());
    file->bytes = std::move(bytes);
    file->large = static_cast<std::int64_t>(file->bytes.size()) >= kLineReaderThreshold;
    if (file->large)
        file->lines = index_lines(file->bytes);
    else
        file->profile = parse_profile(file->bytes);
    return file;
}

IniFiles::CachedPtr IniFiles::keep(CachedPtr file) {
    if (file->bytes.size() > kMaxCachedBytes) return file;
    cache_.insert(cache_.begin(), file);
    if (cache_.size() > kCacheSlots) cache_.pop_back();
    return file;
}

// Takes a file's entry out of the cache.
IniFiles::CachedPtr IniFiles::take(const std::string& path) {
    const auto it = std::find_if(cache_.begin(), cache_.end(),
                                 [&](const CachedPtr& f) { return f->path == path; });
    if (it == cache_.end()) return nullptr;
    CachedPtr file = *it;
    cache_.erase(it);
    return file;
}

// The parsed file, from the cache when it is still current; nullptr when it can't be read.
IniFiles::CachedPtr IniFiles::current_file(const std::string& path, const FileEntry& status) {
    CachedPtr file = take(path);
    if (file && !same_status(file->status, status)) file = nullptr;
    if (file && file->settled) return keep(file);
    Result<std::string> bytes = files_.read_file(path);
    if (!bytes) return nullptr;
    if (file && *bytes == file->bytes) {
        file->settled = has_settled(status, bytes->size());
        return keep(file);
    }
    return keep(parsed(path, status, std::move(*bytes)));
}

std::string IniFiles::read(const std::string& path, std::string_view section, std::string_view key,
                           std::string_view fallback) {
    const Result<FileEntry> status = files_.status(path);
    const CachedPtr file = status ? current_file(path, *status) : nullptr;
    if (!file) return profile_string(Profile{}, section, key, fallback);
    if (!file->large) return profile_string(file->profile, section, key, fallback);
    const std::optional<std::string_view> value = line_reader_value(file->lines, section, key);
    return value ? std::string(*value) : std::string(fallback);
}

bool IniFiles::write(const std::string& path, const ProfileEdit& edit,
                     std::string_view new_file_break, WriteFailure& failure) {
    take(path);  // about to change
    // Read, edit and replace under the writers' lock, so concurrent writers keep each other's
    // changes.
    const auto lock = files_.lock_for_update(path);
    if (!lock) {
        failure = {false, lock.error()};
        return false;
    }
    std::string old;
    const bool exists = files_.status(path).ok();
    if (exists) {
        Result<std::string> bytes = files_.read_file(path);
        if (!bytes) {
            failure = {true, bytes.error()};
            return false;
        }
        old = std::move(*bytes);
    } else if (edit.kind != EditKind::SetValue) {
        return true;
    }
    const std::string updated = apply_edit(old, edit, new_file_break);
    if (exists && updated == old) return true;
    const Status written = files_.replace_file(path, updated);
    if (written) return true;
    failure = {false, written.error()};
    return false;
}

}  // namespace quiller::ini
