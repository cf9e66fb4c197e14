// `filewrite` and `fileclose`: the statements over files opened by `fileopen`.
//
//   filewrite NUMBER TEXT   writes TEXT (slot 2; quote it when it holds blanks) and a line
//                           break to the file; `filewrite NUMBER` writes an empty line.
//   fileclose NUMBER        closes that file; its number becomes free for the next fileopen.
//   fileclose               closes every file the script has open.
//
// A number that is not open fails with "Bad file name or number", writing to a file opened for
// reading with "Bad file mode", and a failed write or close with the platform's error.
#include <cerrno>
#include <cmath>

#include "common/value.hpp"
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {
namespace {

// The platform's error as a failure: "text (code)" split into its two parts. The error number
// is taken right after the failed call; it is EIO when the call left none.
ScriptFailure platform_failure(Engine& e, int code) {
    if (code == 0) code = EIO;
    std::string text = e.platform().files->error_text(code);
    const std::string suffix = " (" + std::to_string(code) + ")";
    if (text.ends_with(suffix)) text.resize(text.size() - suffix.size());
    return {std::move(text), code, {}};
}

// "1" to "9999" read directly: the common case of a loop over fileread.
bool small_whole_number(std::string_view text, int& number) {
    if (text.empty() || text.size() > 4) return false;
    number = 0;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
        number = number * 10 + (c - '0');
    }
    return true;
}

int open_file_number(FileTable& table, std::string_view text) {
    int number = 0;
    if (!small_whole_number(text, number)) {
        const auto v = value::parse_locale_number(text);
        if (!v || !(std::fabs(*v) < 32768)) throw failures::bad_file_number();
        number = static_cast<int>(std::nearbyint(*v));
    }
    if (!table.find(number)) throw failures::bad_file_number();
    return number;
}

}  // namespace

void filewrite(Engine& e) {
    FileTable& table = e.files();
    const int number = open_file_number(table, e.slots()[1]);
    if (table.mode(number) == OpenMode::Read) throw ScriptFailure{"Bad file mode", 54, {}};
    std::string line = e.slots()[2];
    line += kLineBreak;
    errno = 0;
    if (!table.find(number)->write(line)) throw platform_failure(e, errno);
}

void fileclose(Engine& e) {
    FileTable& table = e.files();
    if (e.slots()[1].empty()) {
        table.close_all();
        return;
    }
    const int number = open_file_number(table, e.slots()[1]);
    errno = 0;
    if (!table.close(number)) throw platform_failure(e, errno);
}

}  // namespace quiller::statements
