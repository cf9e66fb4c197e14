// "$" substitution with index notation: the routine and the per-line template must agree.
// Line 1 holds variables as name=value pairs separated by "|"; the rest is the text.
#include "engine/substitution.hpp"
#include "engine/variables.hpp"
#include "fuzz_input.hpp"

using namespace quiller;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input in(data, size);
    VariableTable vars;
    std::string_view defs = in.line();
    while (!defs.empty()) {
        const std::size_t bar = defs.find('|');
        const std::string_view def = defs.substr(0, bar);
        const std::size_t eq = def.find('=');
        if (eq != std::string_view::npos) vars.set(def.substr(0, eq), def.substr(eq + 1));
        defs.remove_prefix(bar == std::string_view::npos ? defs.size() : bar + 1);
    }
    const std::string_view text = in.rest();
    const SubstitutionResult direct =
        replace_references('$', text, [&](std::string_view name) { return vars.get(name); });
    SubstitutionTemplate tmpl;
    tmpl.build(text);
    if (tmpl.closed() != !direct.unclosed) fuzz::fail("template and routine disagree on closing");
    if (tmpl.closed()) {
        std::string expanded;
        tmpl.expand(vars, expanded);
        if (expanded != direct.text) fuzz::fail("template and routine give different texts");
    }
    vars.set(text, "x");
    return 0;
}
