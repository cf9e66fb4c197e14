#include "os/registry.hpp"

#include "os/registry_values.hpp"

namespace quiller {

bool Registry::has_key(std::string_view tag) {
    if (!key.empty()) return true;
    report_error(std::string(tag) + "No registry key specified");
    return false;
}

bool Registry::read_contents() {
    const std::optional<RegistryData> data = ops_.get_key_value(key, value);
    contents = data ? text_from_data(*data) : contents_default;
    contents_type = data ? type_name(data->type) : std::string();
    return data.has_value();
}

bool Registry::write_contents() {
    if (!has_key("(WriteReg) ")) return false;
    return ops_.write_data(key, value, data_from_text(contents, write_type_code(contents_type)));
}

bool Registry::del_key() {
    return has_key("(DelRegKey) ") && ops_.delete_key(key);
}

bool Registry::del_value() {
    return has_key("(DelRegValue) ") && ops_.delete_value(key, value);
}

std::string Registry::enum_keys(std::uint32_t index) {
    return ops_.enum_key(key, index).value_or(std::string());
}

std::string Registry::enum_values(std::uint32_t index) {
    return ops_.enum_value(key, index).value_or(std::string());
}

bool Registry::key_exists() {
    return ops_.key_exists(key);
}

bool Registry::value_exists() {
    return ops_.value_exists(key, value);
}

void Registry::report_error(std::string_view message, int code) {
    ops_.report(message, code);
}

}  // namespace quiller
