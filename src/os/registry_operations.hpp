// The registry operations that scripts, start-up and the windows use. Each takes a key path as
// text (see registry_path.hpp), reports its failures as warnings with its own tag ("(WriteReg) ",
// "(DelRegKey) '" ...) and the platform's text, and returns: a failure never stops the caller.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "os/registry_path.hpp"
#include "os/registry_store.hpp"

namespace quiller {

// Receives one failure: the message and the platform's text ("" when there is none).
using RegistryReport =
    std::function<void(std::string_view message, std::string_view platform_text)>;

class RegistryOperations {
  public:
    RegistryOperations(RegistryStore& store, RegistryReport report)
        : store_(store), report_(std::move(report)) {}

    // WriteReg: the value as text, of the type named (see write_type_code).
    void write_reg(std::string_view path, std::string_view name, std::string_view value,
                   std::string_view type_name);
    // WriteReg for data in its stored form (registry files). False when nothing was written.
    bool write_data(std::string_view path, std::string_view name, const RegistryData& data);
    // Creates a key (a registry file's "[key]" line). False after a report.
    bool create_key(std::string_view path);

    // ReadReg: the value as text; empty when the key or value doesn't exist.
    std::string read_reg(std::string_view path, std::string_view name);
    // GetKeyValue under ReadReg's rules: the value, or nothing when it is missing or failed.
    std::optional<RegistryData> get_key_value(std::string_view path, std::string_view name);

    // delregkey (with its subkeys) and delregvalue. `missing_ok`: a key or value that isn't
    // there is no failure (registry files). False when nothing was deleted.
    bool delete_key(std::string_view path, bool missing_ok = false);
    bool delete_value(std::string_view path, std::string_view name, bool missing_ok = false);

    // The subkey or value name at `index` (case-blind alphabetical; the default value is
    // "DEFAULT"); nothing past the last or when the key can't be opened (reported).
    std::optional<std::string> enum_key(std::string_view path, std::uint32_t index);
    std::optional<std::string> enum_value(std::string_view path, std::uint32_t index);

    bool key_exists(std::string_view path);
    bool value_exists(std::string_view path, std::string_view name);

    // Many writes as one unit: begin, write, end (reported when the unit could not be saved).
    void begin_batch() { store_.begin_batch(); }
    bool end_batch(std::string_view tag);
    // Ends the batch without a report (while the run is ending).
    void close_batch() { store_.end_batch(); }

    void report(std::string_view message, int code = 0);

  private:
    // The remote rule, then the connection: false after reporting.
    bool reach(const RegistryPath& path, std::string_view refuse_tag, std::string_view connect_tag);
    bool set_key_value(const RegistryPath& path, std::string_view name, const RegistryData& data);

    RegistryStore& store_;
    RegistryReport report_;
};

}  // namespace quiller
