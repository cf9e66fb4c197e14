// The ini function group: `readini`.
#include "engine/engine.hpp"
#include "expr/functions.hpp"
#include "os/ini_profile.hpp"

namespace quiller {
namespace {

// readini a1 file, a2 section, a3 key, a4 default.
std::string readini(const FunctionCall& c) {
    return ini::read_ini(*c.engine.platform().files, std::string(c.arg(1)), c.arg(2), c.arg(3),
                         c.arg(4));
}

constexpr FunctionDef kIniFunctions[] = {
    {"readini", readini},
};

}  // namespace

std::span<const FunctionDef> ini_functions() {
    return kIniFunctions;
}

}  // namespace quiller
