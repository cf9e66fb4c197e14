#include "hosts/common/registry_settings.hpp"

#include "os/registry_path.hpp"

namespace quiller {

std::optional<std::string> RegistrySettings::read(std::string_view key, std::string_view name) {
    const RegistryPath path = parse_registry_path(key);
    RegistryData data;
    if (!store_.read_value(path.ref(), name, data).ok()) return std::nullopt;
    if (data.type != reg_type::kSz && data.type != reg_type::kExpandSz) return std::nullopt;
    return data.bytes;
}

void RegistrySettings::write(std::string_view key, std::string_view name, std::string_view value) {
    const RegistryPath path = parse_registry_path(key);
    store_.write_value(path.ref(), name, RegistryData{reg_type::kSz, std::string(value)});
}

}  // namespace quiller
