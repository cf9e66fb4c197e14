// The POSIX implementation of the file operations service.
#include "services/file_operations.hpp"

namespace quiller {

std::unique_ptr<FileOperations> make_file_operations() { return std::make_unique<FileOperations>(); }

}  // namespace quiller
