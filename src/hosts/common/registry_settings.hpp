// The windows' settings store over the platform's registry: REG_SZ values read and written by
// key path ("HKEY_CURRENT_USER\Software\Quiller\DisplayForm").
#pragma once

#include "os/registry_store.hpp"
#include "ui/window_placement.hpp"

namespace quiller {

class RegistrySettings final : public SettingsStore {
  public:
    explicit RegistrySettings(RegistryStore& store) : store_(store) {}
    std::optional<std::string> read(std::string_view key, std::string_view name) override;
    void write(std::string_view key, std::string_view name, std::string_view value) override;

  private:
    RegistryStore& store_;
};

}  // namespace quiller
