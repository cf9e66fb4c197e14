// The registry's functions and condition tests.
#include "engine/engine.hpp"
#include "expr/condition.hpp"
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> registry_functions() {
    return {};
}

bool registry_key_exists(Engine& engine, const std::string&) {
    engine.report_error("(EvalBoolean) : regkeyexists is not available yet", Severity::Warning);
    return false;
}

bool registry_value_exists(Engine& engine, const std::string&, const std::string&) {
    engine.report_error("(EvalBoolean) : regvalueexists is not available yet", Severity::Warning);
    return false;
}

}  // namespace quiller
