// The system: the functions of free disk space, physical memory and temporary files, and the
// statement `environment`. Numbers are whole byte counts in the general number form; a figure
// the platform can't give is the empty text.
#include "bindings/system.hpp"

#include "engine/engine.hpp"
#include "expr/functions.hpp"
#include "value/value.hpp"

namespace quiller {
namespace functions {

std::string diskspace(const FunctionCall& c) {
    const auto bytes = c.engine.platform().files->free_space(std::string(c.arg(1)));
    return bytes ? value::format_whole_number(*bytes) : std::string();
}

std::string getmemtotal(const FunctionCall& c) {
    return value::format_whole_number(c.engine.platform().environment->memory().total);
}

std::string getmemavail(const FunctionCall& c) {
    return value::format_whole_number(c.engine.platform().environment->memory().available);
}

std::string gettempdir(const FunctionCall& c) {
    return c.engine.platform().environment->temp_dir();
}

// a1 is the name's prefix (its first three characters count); "create" anywhere in the line
// also creates the file.
std::string gettempfile(const FunctionCall& c) {
    return c.engine.platform().files->temp_file_name(std::string(c.arg(1)), c.line_has("create"));
}

}  // namespace functions

namespace statements {

// `environment [variable]`: the operating-system family ("Windows95", "Windows NT", or empty on
// other systems) into the named variable, "environment" when none is named.
void environment(Engine& e) {
    const std::string target = e.slots()[1].empty() ? std::string("environment") : e.slots()[1];
    e.variables().set(target, e.platform().environment->os_family());
}

}  // namespace statements

}  // namespace quiller
