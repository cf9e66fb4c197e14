#include "os/registry_operations.hpp"

#include "os/registry_values.hpp"

namespace quiller {
namespace {

// Codes that mean "not there" to the reading operations: a missing key or value, an unknown
// root, a name no key can have. Reads and tests give "" or false for them without a report.
bool absent(int code) {
    return code == reg_error::kFileNotFound || code == reg_error::kInvalidHandle ||
           code == reg_error::kInvalidParameter;
}

std::string cat(std::initializer_list<std::string_view> parts) {
    std::string out;
    for (std::string_view p : parts) out += p;
    return out;
}

}  // namespace

void RegistryOperations::report(std::string_view message, int code) {
    report_(message, code == reg_error::kOk ? std::string() : store_.error_text(code));
}

bool RegistryOperations::reach(const RegistryPath& path, std::string_view refuse_tag,
                               std::string_view connect_tag) {
    if (path.machine.empty()) return true;
    if (refused_remotely(path)) {
        report(cat({refuse_tag, path.root_name, " can't be read remotely."}));
        return false;
    }
    const int code = store_.connect(path.machine, path.root);
    if (code == reg_error::kOk) return true;
    report(cat({connect_tag, path.machine, " can't be connected to."}), code);
    return false;
}

void RegistryOperations::write_reg(std::string_view path, std::string_view name,
                                   std::string_view value, std::string_view type_name) {
    write_data(path, name, data_from_text(value, write_type_code(type_name)));
}

bool RegistryOperations::write_data(std::string_view path, std::string_view name,
                                    const RegistryData& data) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(WriteReg) ", "(SetKeyValue) ")) return false;
    return set_key_value(p, stored_value_name(name), data);
}

bool RegistryOperations::set_key_value(const RegistryPath& p, std::string_view name,
                                       const RegistryData& data) {
    const RegistryStatus s = store_.write_value(p.ref(), name, data);
    if (s.ok()) return true;
    if (s.step == RegistryStep::Open)
        report(cat({"(SetKeyValue) ", p.subkey, " Couldn't be opened/created."}), s.code);
    else
        report(cat({"(SetKeyValue) ", p.subkey, " ", name, " Value couldn't be set."}), s.code);
    return false;
}

bool RegistryOperations::create_key(std::string_view path) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(WriteReg) ", "(SetKeyValue) ")) return false;
    const RegistryStatus s = store_.create_key(p.ref());
    if (!s.ok()) report(cat({"(SetKeyValue) ", p.subkey, " Couldn't be opened/created."}), s.code);
    return s.ok();
}

std::optional<RegistryData> RegistryOperations::get_key_value(std::string_view path,
                                                              std::string_view name) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(ReadReg) ", "(GetKeyValue) ")) return std::nullopt;
    RegistryData data;
    const RegistryStatus s = store_.read_value(p.ref(), stored_value_name(name), data);
    if (s.ok()) return data;
    if (absent(s.code)) return std::nullopt;
    if (s.step == RegistryStep::Open)
        report(cat({"(GetKeyValue) ", p.subkey, " Couldn't be opened."}), s.code);
    else
        report(cat({"(GetKeyValue) ", p.subkey, " ", name, " Value couldn't be read."}), s.code);
    return std::nullopt;
}

std::string RegistryOperations::read_reg(std::string_view path, std::string_view name) {
    const std::optional<RegistryData> data = get_key_value(path, name);
    return data ? text_from_data(*data) : std::string();
}

bool RegistryOperations::delete_key(std::string_view path, bool missing_ok) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(DelRegKey) ", "(DelRegKey) ")) return false;
    const RegistryStatus s = store_.delete_key(p.ref());
    if (s.ok() || (missing_ok && s.code == reg_error::kFileNotFound)) return s.ok();
    const std::string_view what =
        s.step == RegistryStep::Open ? "' Couldn't be opened" : "' Couldn't be deleted";
    report(cat({"(DelRegKey) '", path, what}), s.code);
    return false;
}

bool RegistryOperations::delete_value(std::string_view path, std::string_view name,
                                      bool missing_ok) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(DelRegValue) ", "(DelRegValue) ")) return false;
    const RegistryStatus s = store_.delete_value(p.ref(), stored_value_name(name));
    if (s.ok() || (missing_ok && s.code == reg_error::kFileNotFound)) return s.ok();
    if (s.step == RegistryStep::Open)
        report(cat({"(DelRegValue) ", path, " Couldn't be opened"}), s.code);
    else
        report(cat({"(DelRegValue) ", path, " ", name, " Couldn't be deleted"}), s.code);
    return false;
}

std::optional<std::string> RegistryOperations::enum_key(std::string_view path,
                                                        std::uint32_t index) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(EnumRegKeys) ", "(EnumRegKeys) ")) return std::nullopt;
    std::string name;
    const RegistryStatus s = store_.enum_key(p.ref(), index, name);
    if (s.ok()) return name;
    if (s.code != reg_error::kNoMoreItems)
        report(cat({"(EnumRegKeys) '", path, "' Couldn't be opened."}), s.code);
    return std::nullopt;
}

std::optional<std::string> RegistryOperations::enum_value(std::string_view path,
                                                          std::uint32_t index) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(EnumRegValues) ", "(EnumRegValues) ")) return std::nullopt;
    std::string name;
    const RegistryStatus s = store_.enum_value(p.ref(), index, name);
    if (s.ok()) return shown_value_name(name);
    if (s.code != reg_error::kNoMoreItems)
        report(cat({"(EnumRegValues) ", path, " Couldn't be opened."}), s.code);
    return std::nullopt;
}

bool RegistryOperations::key_exists(std::string_view path) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(RegKeyExists) ", "(RegKeyExists) ")) return false;
    const RegistryStatus s = store_.open_key(p.ref());
    if (!s.ok() && !absent(s.code))
        report(cat({"(RegKeyExists) ", path, " Couldn't be opened."}), s.code);
    return s.ok();
}

bool RegistryOperations::value_exists(std::string_view path, std::string_view name) {
    const RegistryPath p = parse_registry_path(path);
    if (!reach(p, "(RegValueExists) ", "(RegValueExists) ")) return false;
    RegistryData data;
    const RegistryStatus s = store_.read_value(p.ref(), stored_value_name(name), data);
    if (!s.ok() && !absent(s.code))
        report(cat({"(RegValueExists) ", path, " Couldn't be opened."}), s.code);
    return s.ok();
}

bool RegistryOperations::end_batch(std::string_view tag) {
    const int code = store_.end_batch();
    if (code != reg_error::kOk) report(cat({tag, "The changes couldn't be saved."}), code);
    return code == reg_error::kOk;
}

}  // namespace quiller
