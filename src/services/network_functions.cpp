// The network and accounts functions and the group test.
#include "engine/engine.hpp"
#include "expr/condition.hpp"
#include "expr/functions.hpp"

namespace quiller {

std::span<const FunctionDef> network_functions() {
    return {};
}

bool user_is_in_group(Engine& engine, const std::string&) {
    engine.report_error("(EvalBoolean) : isingroup is not available yet", Severity::Warning);
    return false;
}

}  // namespace quiller
