// The texts of the registry's error codes.
#include "os/registry_store.hpp"

namespace quiller {
namespace {

std::string_view message_of(int code) {
    switch (code) {
        case reg_error::kFileNotFound:
            return "The system cannot find the file specified";
        case reg_error::kAccessDenied:
            return "Access is denied";
        case reg_error::kInvalidHandle:
            return "The handle is invalid";
        case reg_error::kOutOfMemory:
            return "Not enough memory to complete this operation";
        case reg_error::kBadNetPath:
            return "The network path was not found";
        case reg_error::kInvalidParameter:
            return "The parameter is incorrect";
        case reg_error::kBusy:
            return "The requested resource is in use";
        case reg_error::kNoMoreItems:
            return "No more data is available";
        case reg_error::kCorrupt:
            return "The registry store is corrupt";
        case reg_error::kIoFailed:
            return "The registry store could not be read or written";
        default:
            return "Unknown error";
    }
}

}  // namespace

std::string registry_error_text(int code) {
    return std::string(message_of(code)) + " (" + std::to_string(code) + ")";
}

}  // namespace quiller
