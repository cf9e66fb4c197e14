// Copying, deleting, listing, creating, removing, renaming files and directories, and setting their attributes.
#pragma once

#include <memory>

namespace quiller {

class FileOperations {
public:
    virtual ~FileOperations() = default;
};

// The implementation for the platform this build targets.
std::unique_ptr<FileOperations> make_file_operations();

}  // namespace quiller
