// Statements the engine runs itself: `set`, `debug`, `errorshow`.
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/statements.hpp"
#include "expr/set_expression.hpp"
#include "value/text.hpp"

namespace quiller::statements {

// The target's table entry is remembered per line, so a loop's assignment is a plain store.
void set(Engine& e) {
    ProgramLine& line = e.current_program_line();
    std::string value = eval_string(e, e.slots(), e.arguments());
    VariableTable& vars = e.variables();
    const std::string& target = e.slots()[1];
    if (line.cached_target_index >= 0 && target == line.cached_target) {
        vars.assign_at(line.cached_target_index, value);
        return;
    }
    const int entry = vars.set_prepared(vars.prepare_set_name(target), value);
    if (entry < 0) throw failures::overflow();
    if (target.find('[') == std::string::npos) {
        line.cached_target = target;
        line.cached_target_index = entry;
    }
}

void debug(Engine& e) {
    e.set_debug_mode(text::to_lower(e.slots()[1]) == "on");
}

void errorshow(Engine& e) {
    e.set_error_display(text::to_lower(e.slots()[1]) == "on");
}

}  // namespace quiller::statements
