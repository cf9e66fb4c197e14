// The few calls each platform gives the shared file code (line reading, atomic replacement,
// copying): an open file read and written in blocks, and the path operations around it.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "os/system_error.hpp"

namespace quiller {

class RawFile {
  public:
    virtual ~RawFile() = default;
    // Up to `size` bytes into `buffer`; 0 at the end of the file.
    virtual Result<std::size_t> read(char* buffer, std::size_t size) = 0;
    // All of `bytes`.
    virtual Status write(std::string_view bytes) = 0;
    // Written data to the disk.
    virtual Status flush() = 0;
    // Gives this file the modification time and the attributes (permissions) of `source`, an
    // open file of the same platform.
    virtual Status take_stamp(RawFile& source) = 0;
    // True when `path` names this very file.
    virtual bool is(const std::string& path) = 0;
    // Closes; a later call does nothing.
    virtual Status close() = 0;
};

class FilePrimitives {
  public:
    virtual ~FilePrimitives() = default;
    // The file a write to `path` must replace, in the platform's own spelling, through a link
    // to the file it names; an error when it is a directory or read-only, or same_file() when
    // it is the open file `source` (when one is given). Without `follow_link`, the name itself,
    // unchecked: the rename decides.
    virtual Result<std::string> replaceable(const std::string& path, bool follow_link,
                                            RawFile* source) = 0;
    // An existing regular file, opened for reading.
    virtual Result<std::unique_ptr<RawFile>> open_source(const std::string& path) = 0;
    // A new file, which must not exist yet (ErrorKind::Exists when it does), opened for writing;
    // it gets the permissions or attributes of `like` when that exists (none asked for when
    // `like` is empty: the caller stamps the file itself).
    virtual Result<std::unique_ptr<RawFile>> create_new(const std::string& path,
                                                        const std::string& like) = 0;
    // Puts `from` in the place of `to` in one step, replacing it; `durable` waits until the
    // rename is on the disk.
    virtual Status rename_over(const std::string& from, const std::string& to, bool durable) = 0;
    // Removes a file, quietly (the clean-up after a failure).
    virtual void discard(const std::string& path) = 0;
    // The error a cancelled operation reports.
    virtual SystemError cancelled() = 0;
    // The error a copy of a file onto itself reports.
    virtual SystemError same_file() = 0;
    virtual int process_id() = 0;
};

}  // namespace quiller
