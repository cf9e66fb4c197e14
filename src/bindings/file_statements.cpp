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

#include "value/value.hpp"
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/statements.hpp"

namespace quiller::statements {
namespace {}  // namespace

void filewrite(Engine& e) {
    FileTable& table = e.files();
    const int number = table.open_number(e.slots()[1]);
    if (table.mode(number) == OpenMode::Read) throw ScriptFailure{"Bad file mode", 54, {}};
    std::string line = e.slots()[2];
    line += kLineBreak;
    errno = 0;
    if (!table.find(number)->write(line))
        throw failures::system(e.platform().files->error_text(errno ? errno : EIO));
}

void fileclose(Engine& e) {
    FileTable& table = e.files();
    if (e.slots()[1].empty()) {
        table.close_all();
        return;
    }
    const int number = table.open_number(e.slots()[1]);
    errno = 0;
    if (!table.close(number))
        throw failures::system(e.platform().files->error_text(errno ? errno : EIO));
}

}  // namespace quiller::statements
