// The registry: the functions readreg, regvaluetype, enumregkeys and enumregvalues, the
// condition tests regkeyexists and regvalueexists, and the statements writereg, delregkey,
// delregvalue and loadreg.
#include "bindings/registry.hpp"

#include <cmath>

#include "bindings/registry_load.hpp"
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/registry_engine.hpp"
#include "expr/functions.hpp"
#include "os/registry.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

// Runs `work` on the registry accessor of a run, set to the value `value` of the key `key`.
template <typename Work>
auto with_registry(Engine& e, std::string_view key, std::string_view value, Work work) {
    RegistryOperations ops = registry_operations(e);
    Registry reg(ops);
    reg.key = key;
    reg.value = value;
    return work(reg);
}

// The position of an enumeration, kept in the script variable named like the function.
std::uint32_t position(Engine& engine, std::string_view variable) {
    const double v = value::read_leading_number(engine.variables().get(variable, "0"));
    if (!(v >= 0)) return 0;
    return v >= 4294967295.0 ? 4294967295u : static_cast<std::uint32_t>(v);
}

void set_position(Engine& engine, std::string_view variable, std::uint64_t index) {
    if (!engine.variables().set(variable, std::to_string(index))) throw failures::overflow();
}

// enumregkeys / enumregvalues a1 key path: one name per call, from the position in the
// variable $enumregkeys$ / $enumregvalues$ (default 0), which then moves on by one. Past the last
// name the result is empty and the position goes back to 0, ready for the next round.
template <bool kKeys>
std::string enumerate(const FunctionCall& c) {
    constexpr std::string_view variable = kKeys ? "enumregkeys" : "enumregvalues";
    const std::uint32_t index = position(c.engine, variable);
    std::string name = with_registry(c.engine, c.arg(1), {}, [&](Registry& reg) {
        return kKeys ? reg.enum_keys(index) : reg.enum_values(index);
    });
    set_position(c.engine, variable, name.empty() ? 0 : std::uint64_t{index} + 1);
    return name;
}

}  // namespace

namespace functions {

// readreg a1 key path, a2 value name: the value as text, empty when it doesn't exist.
std::string readreg(const FunctionCall& c) {
    return with_registry(c.engine, c.arg(1), c.arg(2), [](Registry& reg) {
        reg.read_contents();
        return std::move(reg.contents);
    });
}

// regvaluetype a1 key path, a2 value name: REG_SZ ... or UNKNOWN; empty when it doesn't exist.
std::string regvaluetype(const FunctionCall& c) {
    return with_registry(c.engine, c.arg(1), c.arg(2), [](Registry& reg) {
        reg.read_contents();
        return std::move(reg.contents_type);
    });
}

std::string enumregkeys(const FunctionCall& c) {
    return enumerate<true>(c);
}

std::string enumregvalues(const FunctionCall& c) {
    return enumerate<false>(c);
}

}  // namespace functions

namespace conditions {

// `if regkeyexists KEYPATH`: false, without a warning, when the key isn't there.
bool regkeyexists(Engine& engine, const std::string& path, const std::string&) {
    return with_registry(engine, path, {}, [](Registry& reg) { return reg.key_exists(); });
}

// `if regvalueexists KEYPATH VALUENAME`: VALUENAME DEFAULT is the key's default value.
bool regvalueexists(Engine& engine, const std::string& path, const std::string& name) {
    return with_registry(engine, path, name, [](Registry& reg) { return reg.value_exists(); });
}

}  // namespace conditions

namespace statements {

// `writereg KEYPATH VALUENAME VALUE [TYPE]`: TYPE is REG_SZ (the default), REG_EXPAND_SZ,
// REG_MULTI_SZ (items separated by "|") or REG_DWORD; the key is created as needed.
void writereg(Engine& e) {
    const Slots& s = e.slots();
    with_registry(e, s[1], s[2], [&](Registry& reg) {
        reg.contents = s[3];
        reg.contents_type = s[4];
        reg.write_contents();
    });
}

// `delregkey KEYPATH`: deletes the key with all its subkeys and values.
void delregkey(Engine& e) {
    with_registry(e, e.slots()[1], {}, [](Registry& reg) { reg.del_key(); });
}

// `delregvalue KEYPATH VALUENAME`.
void delregvalue(Engine& e) {
    with_registry(e, e.slots()[1], e.slots()[2], [](Registry& reg) { reg.del_value(); });
}

// `loadreg FILE`: loads a registry export file (REGEDIT4 or version 5.00).
void loadreg(Engine& e) {
    load_registry_file(e, e.slots()[1]);
}

}  // namespace statements

}  // namespace quiller
