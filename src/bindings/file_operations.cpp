// File operations: the statements copy, del, dir, md, rd, rename, setattrib. Layouts (source
// first, target second, options in braces; "\" and "/" both separate path components; "*" and
// "?" in the last component match names ignoring case):
//
//   copy SOURCE TARGET {animated}
//       SOURCE is a file, or a pattern whose matching files (never directories) are copied.
//       TARGET is an existing directory (the files keep their names) or, for one file without
//       wildcards, a file name. Times and permissions go with the copy; an existing target is
//       replaced unless it is read-only, and a file is never copied onto itself. Every copy is
//       written to a temporary file beside the target and renamed over it. "animated" shows
//       the progress window, one step per file.
//   del PATTERN
//       Deletes a file, or the files a pattern matches; directories are left alone and
//       read-only files are kept.
//   dir [PATH] {sub dirsonly}
//       Lists a directory (PATH names one), or the names in a directory that match PATH's last
//       component (a plain name matches itself, ignoring case), into the output window, one
//       line per entry sorted by name ignoring case: "yyyy-mm-dd hh:nn", the size right-aligned
//       in 18 characters or "<DIR>" ("<LINK>" for a link to a directory), and the name. "sub"
//       adds every subdirectory's content after its own line, as paths relative to the listed
//       directory (links are not entered); "dirsonly" lists directories only. Without PATH: the
//       working directory.
//   md PATH
//       Creates a directory and any missing directories above it; an existing one is fine.
//   rd PATH {severe}
//       Removes an empty directory; with "severe" the directory and everything in it. Roots,
//       the user's home directory and the directories that hold it are never removed.
//   rename OLD NEW
//       Renames or moves a file or directory. A NEW without a separator stays in OLD's
//       directory; an existing NEW is never replaced.
//   setattrib PATH FLAGS...
//       "+" sets and "-" clears the letters after it: R read-only, H hidden, S system,
//       A archive, C compressed ("+R", "-h", "+RH-A", "+R -S" as one argument or several).
//
// Each statement reports at most one warning, tagged "(copy) " and so on: the first problem,
// how many more there were, and the platform's text for it. Nothing that the script didn't
// name is removed or overwritten.
#include "bindings/file_operations.hpp"

#include "bindings/file_operation_steps.hpp"
#include "engine/engine.hpp"

namespace quiller::statements {
namespace {

void run(Engine& e, void (*work)(Engine&, FileSystem&)) {
    FileSystem* ops = e.platform().files.get();
    if (!ops) return e.report_not_available();
    work(e, *ops);
}

}  // namespace

void copy(Engine& e) {
    run(e, fileops::run_copy);
}
void del(Engine& e) {
    run(e, fileops::run_del);
}
void dir(Engine& e) {
    run(e, fileops::run_dir);
}
void md(Engine& e) {
    run(e, fileops::run_md);
}
void rd(Engine& e) {
    run(e, fileops::run_rd);
}
void rename(Engine& e) {
    run(e, fileops::run_rename);
}
void setattrib(Engine& e) {
    run(e, fileops::run_setattrib);
}

}  // namespace quiller::statements
