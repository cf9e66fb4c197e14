// INI files: the profile reader and writer (the rules of the platform's profile-string
// functions), the line reader of large files, the section listing of `readinisection`, and a
// small cache of parsed files.
//
// Everything works on a file's bytes. Nothing is re-encoded, and a write keeps every byte it
// does not change: other lines, comments and the file's own line breaks. A UTF-8 byte-order mark
// at the start of a file is kept, and skipped when the file is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/platform.hpp"

namespace quiller::ini {

// Files of this size or more are read by the line reader instead of the profile reader.
inline constexpr std::int64_t kLineReaderThreshold = 64000;
// The profile reader returns at most this many characters (a 255-byte buffer with its NUL).
inline constexpr std::size_t kMaxProfileChars = 254;

// --- Lines -----------------------------------------------------------------------------------

// One line and the break that ends it ("\r\n", "\n", "\r", or empty for a last line without one).
struct Line {
    std::string_view text;
    std::string_view end;
};

// Splits bytes into lines as a line-by-line reader does: a line ends at CR LF, LF or CR.
// A leading byte-order mark is not part of the first line.
std::vector<Line> split_lines(std::string_view bytes);

// --- The profile reader ----------------------------------------------------------------------

// A key line: "name=value", both trimmed. `equals` is the offset of the "=" in the line's text.
struct KeyEntry {
    std::string_view name;
    std::string_view value;
    std::size_t line = 0;
    std::size_t equals = 0;
};

// A section: its header line, the lines up to the next header (`end`, exclusive) and its keys.
struct SectionEntry {
    std::string_view name;
    std::size_t header = 0;
    std::size_t end = 0;
    std::vector<KeyEntry> keys;
};

// A parsed profile; its views point into the bytes it was parsed from.
struct Profile {
    std::vector<Line> lines;
    std::vector<SectionEntry> sections;
};

// Sections are "[name]" lines (blanks around the line and inside the brackets don't count, the
// name ends at the last "]"); keys are lines with "="; lines starting with ";" are comments;
// lines before the first section belong to none.
Profile parse_profile(std::string_view bytes);

// The first section, and in it the first key, whose name equals `name` ignoring case and blanks.
const SectionEntry* find_section(const Profile& profile, std::string_view name);
const KeyEntry* find_key(const SectionEntry& section, std::string_view name);

// What the profile-string reader gives: the value cut at its first NUL, without a pair of
// enclosing quotes (double or single), at most kMaxProfileChars characters. A missing section
// or key gives `fallback` without its trailing blanks, cut the same way.
std::string profile_string(const Profile& profile, std::string_view section, std::string_view key,
                           std::string_view fallback);

// --- The line reader of large files ----------------------------------------------------------

// The lines of a file, with the numbers of those that start with "[".
struct LineFile {
    std::vector<Line> lines;
    std::vector<std::size_t> headers;
};

LineFile index_lines(std::string_view bytes);

// The section starts at the first line that begins, ignoring case, with "[" + section + "]";
// the first line after it that begins with key + "=" gives the rest of that line, untrimmed. A
// line starting with "[" ends the search.
std::optional<std::string_view> line_reader_value(const LineFile& file, std::string_view section,
                                                  std::string_view key);

// --- Section listing -------------------------------------------------------------------------

// The entries "name=value" (both trimmed) of a section: it starts after the first line whose
// lower-case text equals "[" + lower-case section + "]" and ends at the next line starting with
// "["; lines starting with ";" and lines without "=" are skipped.
std::vector<std::string> section_entries(std::string_view bytes, std::string_view section);

// --- The profile writer ----------------------------------------------------------------------

enum class EditKind { SetValue, DeleteKey, DeleteSection };

struct ProfileEdit {
    EditKind kind = EditKind::SetValue;
    std::string_view section;
    std::string_view key;
    std::string_view value;
};

// The file's bytes after one edit, with the profile writer's rules:
// - an existing key (first section, first key, as the reader finds them) keeps its line, its
//   spelling and the blanks before the value; only the value changes;
// - a new key goes after the last non-blank line of its section;
// - a new section goes at the end of the file after an empty line (none in an empty file), as
//   "[section]" and then "key=value";
// - deleting removes the key's line, or the section's header and every line up to the next one.
// New lines use the file's first line break, or `new_file_break` when it has none. Names are
// written trimmed; section, key and value end at their first NUL, CR or LF.
std::string apply_edit(std::string_view bytes, const ProfileEdit& edit,
                       std::string_view new_file_break);

// --- Files -----------------------------------------------------------------------------------

// Why a write failed: while reading the old file or while replacing it, with the error.
struct WriteFailure {
    bool reading = false;
    SystemError error;
};

// The INI files of one run, read and written through its file service. A few recently read
// files stay parsed, by path, size and modification time; the run's clock tells when a file has
// settled (see ini_profile.cpp).
class IniFiles {
  public:
    IniFiles(FileSystem& files, Clock& clock);
    ~IniFiles();
    IniFiles(const IniFiles&) = delete;
    IniFiles& operator=(const IniFiles&) = delete;

    // `readini`: the profile reader for a missing file or one under kLineReaderThreshold bytes,
    // the line reader for larger ones (a missing key gives `fallback` as it is). A file that
    // can't be read gives the fallback.
    std::string read(const std::string& path, std::string_view section, std::string_view key,
                     std::string_view fallback);

    // Applies one edit to a file, creating it when needed, through an atomic replacement. A
    // file that would not change is not written; deleting from a missing file does nothing.
    bool write(const std::string& path, const ProfileEdit& edit, std::string_view new_file_break,
               WriteFailure& failure);

  private:
    struct CachedFile;
    using CachedPtr = std::shared_ptr<CachedFile>;

    CachedPtr current_file(const std::string& path, const FileEntry& status);
    CachedPtr parsed(const std::string& path, const FileEntry& status, std::string bytes);
    CachedPtr keep(CachedPtr file);
    CachedPtr take(const std::string& path);
    bool has_settled(const FileEntry& status, std::size_t bytes_read);

    FileSystem& files_;
    Clock& clock_;
    std::vector<CachedPtr> cache_;  // most recently used first
};

}  // namespace quiller::ini
