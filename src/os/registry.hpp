// The registry as one object: the key, value name and contents are properties, and the methods
// read, write, delete, enumerate and test them through the registry operations.
//
//     Registry reg(operations);
//     reg.key = "HKEY_CURRENT_USER\\Software\\Quiller";
//     reg.value = "LastPrg";
//     reg.contents = "c:\\jobs\\nightly.prg";
//     reg.write_contents();
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "os/registry_operations.hpp"

namespace quiller {

class Registry {
  public:
    explicit Registry(RegistryOperations& operations) : ops_(operations) {}

    std::string key;               // the key path, machine prefix and root included
    std::string value;             // the value name ("DEFAULT" or empty: the default value)
    std::string contents;          // the value as text
    std::string contents_type;     // its type name: written by write, set by read
    std::string contents_default;  // what read gives when the value doesn't exist

    // Reads `value` of `key` into `contents` and `contents_type`; a missing value gives
    // `contents_default` and an empty type. True when the value exists.
    bool read_contents();
    // Writes `contents` as `contents_type` (REG_SZ when empty). False after a report.
    bool write_contents();
    bool del_key();
    bool del_value();
    // The subkey or value name at `index`; empty past the last.
    std::string enum_keys(std::uint32_t index);
    std::string enum_values(std::uint32_t index);
    bool key_exists();
    bool value_exists();

    // Reports a failure of this object as a warning.
    void report_error(std::string_view message, int code = 0);

  private:
    // False after reporting "No registry key specified" when `key` is empty.
    bool has_key(std::string_view tag);

    RegistryOperations& ops_;
};

}  // namespace quiller
