// The reader of registry export files (.reg), both formats, as `loadreg` reads them.
#include "fuzz_input.hpp"
#include "os/registry_file.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    bool utf16 = false;
    (void)registry_file_text(bytes, utf16);
    std::size_t entries = 0;
    read_registry_file(
        bytes, {[&](const RegistryFileEntry&) { ++entries; }, [](int, std::string_view) {}});
    return 0;
}
