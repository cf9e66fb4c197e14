// The attribute bits of a file, numbered as Windows reports them on every platform; scan files
// store them the same way.
#pragma once

#include <cstdint>

namespace quiller {

enum FileAttribute : std::uint32_t {
    kAttrReadOnly = 1,
    kAttrHidden = 2,
    kAttrSystem = 4,
    kAttrDirectory = 16,
    kAttrArchive = 32,
    kAttrCompressed = 2048,  // never stored in a scan file
};

}  // namespace quiller
