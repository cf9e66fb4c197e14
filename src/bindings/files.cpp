// Files: the functions fileopen, fileread, filesize, getattrib, dirsize and replacestringinfile,
// the condition tests fileexists, direxists and filesame, and the statements over the files
// `fileopen` opened:
//
//   filewrite NUMBER TEXT   writes TEXT (slot 2; quote it when it holds blanks) and a line
//                           break to the file; `filewrite NUMBER` writes an empty line.
//   fileclose NUMBER        closes that file; its number becomes free for the next fileopen.
//   fileclose               closes every file the script has open.
//
// A missing file or a bad file number throws a ScriptFailure, which the interpreter loop reports
// as a warning (a function's variable is then left unset): a number that is not open fails with
// "Bad file name or number", writing to a file opened for reading with "Bad file mode", and a
// failed write or close with the platform's error.
#include "bindings/files.hpp"

#include <cerrno>
#include <cmath>
#include <cstdlib>

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "expr/functions.hpp"
#include "value/format.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

constexpr std::string_view kEndOfFile = "(eof)";

FileSystem& file_system(const FunctionCall& c) {
    return *c.engine.platform().files;
}

// A status that names an existing file (not a directory), or "File not found".
FileEntry file_status(const FunctionCall& c, std::string_view path) {
    const auto st = file_system(c).status(std::string(path));
    if (!st || (st->attributes & kAttrDirectory)) throw failures::file_not_found();
    return *st;
}

}  // namespace

namespace functions {

// a2 exactly "write" truncates; otherwise "append" anywhere in the line appends.
std::string fileopen(const FunctionCall& c) {
    OpenMode mode = OpenMode::Read;
    if (c.arg(2) == "write")
        mode = OpenMode::Write;
    else if (c.line_has("append"))
        mode = OpenMode::Append;
    auto file = file_system(c).open(std::string(c.arg(1)), mode);
    if (!file) {
        const int error = file.error().code;
        if (error == ENOENT && mode == OpenMode::Read) throw failures::file_not_found();
        if (error == EISDIR) throw failures::path_access_error();
        throw failures::system(file.error().shown());
    }
    return std::to_string(c.engine.files().add(std::move(*file), mode));
}

// Lines come back as UTF-8; a line that isn't is read as Windows-1252.
std::string fileread(const FunctionCall& c) {
    FileTable& table = c.engine.files();
    const int number = table.open_number(c.arg(1));
    if (table.mode(number) != OpenMode::Read) throw failures::bad_file_mode();
    if (table.at_end(number)) return std::string(kEndOfFile);
    std::string line;
    if (!table.find(number)->read_line(line)) {
        table.set_at_end(number);
        return std::string(kEndOfFile);
    }
    if (text::is_ascii(line) || text::is_valid_utf8(line)) return line;
    return text::windows1252_to_utf8(line);
}

std::string filesize(const FunctionCall& c) {
    return value::format_whole_number(file_status(c, c.arg(1)).size);
}

std::string getattrib(const FunctionCall& c) {
    const auto st = file_system(c).status(std::string(c.arg(1)));
    if (!st) throw failures::file_not_found();
    std::string letters;
    for (const auto& [bit, letter] : {std::pair{kAttrReadOnly, 'R'},
                                      {kAttrHidden, 'H'},
                                      {kAttrSystem, 'S'},
                                      {kAttrArchive, 'A'},
                                      {kAttrCompressed, 'C'}}) {
        if (st->attributes & bit) letters += letter;
    }
    return letters;
}

// Kilobytes, or bytes, megabytes, gigabytes by the unit letter; empty for no directory.
std::string dirsize(const FunctionCall& c) {
    const std::string dir(c.arg(1));
    const auto st = file_system(c).status(dir);
    if (!st || !(st->attributes & kAttrDirectory)) return {};
    const auto bytes = file_system(c).tree_size(dir);
    if (!bytes) return {};
    double size = static_cast<double>(*bytes) / 1024;
    const std::string unit = text::to_upper(c.arg(2));
    if (unit == "B") size *= 1024;
    if (unit == "M") size /= 1024;
    if (unit == "G") size /= 1024.0 * 1024.0;
    return value::format_number(size, "0.0#");
}

// Case-blind, every occurrence; the count of replacements. The file is rewritten (atomically)
// only when something was replaced. Its bytes are searched as they are, so a file in another
// encoding keeps it.
std::string replacestringinfile(const FunctionCall& c) {
    const std::string path(c.arg(1));
    file_status(c, path);
    if (c.arg(2).empty()) return "0";
    const auto lock = file_system(c).lock_for_update(path);  // other writers wait
    if (!lock) throw failures::system(lock.error().shown());
    auto content = file_system(c).read_file(path);
    if (!content) throw failures::system(content.error().shown());
    const std::size_t count = text::replace_all(*content, c.arg(2), c.arg(3));
    if (count == 0) return "0";
    if (const Status s = file_system(c).replace_file(path, *content); !s)
        throw failures::system(s.error().shown());
    return std::to_string(count);
}

}  // namespace functions

namespace conditions {

// `if fileexists PATTERN`: an ordinary file (not a directory) the name or pattern names.
bool fileexists(Engine& e, const std::string& a, const std::string&) {
    return !a.empty() && e.platform().files->any_ordinary_file(a);
}

bool direxists(Engine& e, const std::string& a, const std::string&) {
    const auto st = e.platform().files->status(a);
    return st && (st->attributes & kAttrDirectory);
}

// `if filesame A B`: the same size, and times of change less than five seconds apart.
bool filesame(Engine& e, const std::string& a, const std::string& b) {
    FileSystem& files = *e.platform().files;
    const auto s1 = files.status(a);
    const auto s2 = files.status(b);
    return s1 && s2 && std::llabs(s1->modified - s2->modified) < 5 && s1->size == s2->size;
}

}  // namespace conditions

namespace statements {

void filewrite(Engine& e) {
    FileTable& table = e.files();
    const int number = table.open_number(e.slots()[1]);
    if (table.mode(number) == OpenMode::Read) throw failures::bad_file_mode();
    std::string line = e.slots()[2];
    line += kLineBreak;
    if (const Status s = table.find(number)->write(line); !s)
        throw failures::system(s.error().shown());
}

void fileclose(Engine& e) {
    FileTable& table = e.files();
    if (e.slots()[1].empty()) {
        table.close_all();
        return;
    }
    const int number = table.open_number(e.slots()[1]);
    if (const Status s = table.close(number); !s) throw failures::system(s.error().shown());
}

}  // namespace statements

}  // namespace quiller
