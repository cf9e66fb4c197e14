// Statements the engine runs itself: `set`, `debug`, `errorshow`.
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "engine/statements.hpp"
#include "expr/set_expression.hpp"
#include "value/text.hpp"

namespace quiller::statements {

// The target's table entry is remembered per line, so a loop's assignment is a plain store; a
// whole-number result is stored with its number.
void set(Engine& e) {
    ProgramLine& line = e.current_program_line();
    const Slots& words = e.slots();
    std::optional<double> whole;
    std::string value =
        is_value_expression(words)
            ? eval_value_expression(words, e.current_year(), e.facts_for(words), &whole)
            : eval_string(e, words, e.arguments());
    VariableTable& vars = e.variables();
    const std::string& target = words[1];
    int entry = line.cached_target_index;
    if (entry < 0 || target != line.cached_target) {
        entry = vars.set_prepared(vars.prepare_set_name(target), value);
        if (entry < 0) throw failures::overflow();
        if (target.find('[') == std::string::npos) {
            line.cached_target = target;
            line.cached_target_index = entry;
        }
        if (whole) vars.assign_whole_number_at(entry, value, *whole);
        return;
    }
    if (whole) {
        vars.assign_whole_number_at(entry, value, *whole);
    } else {
        vars.assign_at(entry, value);
    }
}

void debug(Engine& e) {
    e.set_debug_mode(text::to_lower(e.slots()[1]) == "on");
}

void errorshow(Engine& e) {
    e.set_error_display(text::to_lower(e.slots()[1]) == "on");
}

}  // namespace quiller::statements
