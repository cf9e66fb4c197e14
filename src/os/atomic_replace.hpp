// Writing a file so that it is always either the old or the whole new file: the new content
// goes to a temporary file beside the target, named ".NAME.quiller-tmp-PID-N" so that a
// leftover can be recognised, which is flushed and then renamed over the target in one step.
// Every writer of whole files uses this: INI profiles, scan files, copies.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "os/raw_file.hpp"
#include "os/system_error.hpp"

namespace quiller {

// A new content on its way to replacing a file. Nothing changes at the target before
// commit(); destroyed without a commit, the temporary file is removed.
class ReplacementFile {
  public:
    ReplacementFile(FilePrimitives& platform, std::unique_ptr<RawFile> file, std::string temp,
                    std::string target, bool flush = true);
    ~ReplacementFile();
    ReplacementFile(const ReplacementFile&) = delete;
    ReplacementFile& operator=(const ReplacementFile&) = delete;

    Status write(std::string_view bytes);
    // Flushes (unless told not to), closes and renames the temporary file over the target.
    Status commit();
    // The temporary file itself, e.g. for taking a source's time stamp.
    RawFile& file() { return *file_; }
    const std::string& temp_path() const { return temp_; }
    const std::string& target_path() const { return target_; }

  private:
    FilePrimitives& platform_;
    std::unique_ptr<RawFile> file_;
    std::string temp_;
    std::string target_;
    bool flush_;
    bool committed_ = false;
};

// The temporary name beside `target` for attempt `n` of process `pid`.
std::string temp_name_beside(const std::string& target, int pid, unsigned n);

// Starts replacing the file `path` names (a link is followed, so the link stays).
Result<std::unique_ptr<ReplacementFile>> begin_replacement(FilePrimitives& platform,
                                                           const std::string& path);

// Replaces a file's whole content.
Status replace_content(FilePrimitives& platform, const std::string& path, std::string_view bytes);

// How a long copy reports and stops: `progress` gets the bytes copied so far after each block;
// `cancelled` is asked before each block, and a true answer ends the copy with an error of kind
// ErrorKind::Cancelled, the target untouched. The other fields serve a mirror, which copies a
// whole tree it owns.
struct CopyControl {
    std::function<void(std::int64_t bytes_done)> progress;
    std::function<bool()> cancelled;
    // The copy reaches the disk before it takes the target's name. Without, the rename still
    // keeps a half-written file from ever showing under the real name, but a crash of the whole
    // system may leave the new name empty; a mirror of many small files, which its next run
    // repeats, can't afford a flush per file.
    bool flush = true;
    // The name itself is replaced, as a tree the caller owns wants it: a link at `to` gives way
    // to the copy instead of having its target written, a read-only `to` is replaced where the
    // system's rename allows it, and the copy keeps nothing of the file it replaces.
    bool replace_name = false;
    // The temporary's name beside `to`, for a caller that recognises its own leftovers; by
    // default temp_name_beside's.
    std::function<std::string(const std::string& to)> temp_name;
};

// Copies a regular file through a temporary file in the target's folder that gets the source's
// modification time and attributes and is then renamed over `to`: `to` is always either the old
// or the whole new file. Refuses a target that is a directory, read-only, or the source itself.
Status copy_through_temp(FilePrimitives& platform, const std::string& from, const std::string& to,
                         const CopyControl& control = {});

}  // namespace quiller
