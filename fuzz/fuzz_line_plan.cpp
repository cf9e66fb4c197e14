// Line plans against the long way: the first input line is the keyword, the second the
// arguments, the others the values of the variables a, b and c.
#include <string>

#include "fuzz_input.hpp"
#include "line_plan_check.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quiller::fuzz::Input in(data, size);
    const std::string keyword(in.line());
    const std::string arguments(in.line());
    quiller::VariableTable vars;
    for (const char* name : {"a", "b", "c"}) vars.set(name, in.line());
    const std::string difference = quiller::plan_check::check(keyword, arguments, vars);
    if (!difference.empty()) quiller::fuzz::fail(difference.c_str());
    return 0;
}
