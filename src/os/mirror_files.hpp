// The two file primitives of a directory mirror, beside the file operations: a copy into a new
// file that nobody else can have opened, and the atomic rename that puts it in place. A copy thus
// never shows under a real name before it is whole.
#pragma once

#include <memory>
#include <string>

namespace quiller {

class MirrorFiles {
  public:
    virtual ~MirrorFiles() = default;
    // Copies the file `from` into the new file `to` (false with EEXIST-like `error` when it
    // exists): content, modification time and permissions. Nothing of `to` stays on failure.
    virtual bool copy_new(const std::string& from, const std::string& to, int& error) = 0;
    // Renames the file `from` to `to`, replacing an existing file `to` in one step.
    virtual bool replace(const std::string& from, const std::string& to, int& error) = 0;
};

std::unique_ptr<MirrorFiles> make_mirror_files();

}  // namespace quiller
