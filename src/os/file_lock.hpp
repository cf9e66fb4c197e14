// An exclusive lock between processes, held by the writers of one shared file while they read,
// change and replace it, so that concurrent writers never lose each other's changes. The lock
// lives on a companion file (the file's name + ".lock"), because the file itself is replaced
// by a rename while it is locked. The system releases the lock when its holder dies.
#pragma once

#include <memory>
#include <string>

#include "os/system_error.hpp"

namespace quiller {

class FileLock {
  public:
    virtual ~FileLock() = default;
};

inline constexpr int kLockWaitMs = 30000;  // how long a writer waits for another to finish

// What the temporary files of whole-file writers carry in their names, after "." and the name
// of the file they replace.
inline constexpr const char* kTempMarker = ".quiller-tmp-";

// The companion file that carries the lock of `path`.
inline std::string lock_file_name(const std::string& path) {
    return path + ".lock";
}

// Takes the lock of `path`, waiting up to `timeout_ms` (a lock still held by another writer
// after the wait gives the platform's "busy" error).
Result<std::unique_ptr<FileLock>> lock_file(const std::string& path, int timeout_ms);

}  // namespace quiller
