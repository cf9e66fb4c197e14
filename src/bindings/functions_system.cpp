// The system function group: free disk space, physical memory and temporary files. Numbers
// are whole byte counts in the general number form; a figure the platform can't give is the
// empty text.
#include "value/value.hpp"
#include "engine/engine.hpp"
#include "expr/functions.hpp"

namespace quiller {
namespace {

std::string whole_number(std::int64_t n) {
    return value::format_general_number(static_cast<double>(n));
}

std::string diskspace(const FunctionCall& c) {
    const auto bytes = c.engine.platform().files->free_space(std::string(c.arg(1)));
    return bytes ? whole_number(*bytes) : std::string();
}

std::string getmemtotal(const FunctionCall& c) {
    return whole_number(c.engine.platform().environment->memory().total);
}

std::string getmemavail(const FunctionCall& c) {
    return whole_number(c.engine.platform().environment->memory().available);
}

std::string gettempdir(const FunctionCall& c) {
    return c.engine.platform().environment->temp_dir();
}

// a1 is the name's prefix (its first three characters count); "create" anywhere in the line
// also creates the file.
std::string gettempfile(const FunctionCall& c) {
    return c.engine.platform().files->temp_file_name(std::string(c.arg(1)), c.line_has("create"));
}

constexpr FunctionDef kRows[] = {
    {"diskspace", diskspace},   {"getmemtotal", getmemtotal}, {"getmemavail", getmemavail},
    {"gettempdir", gettempdir}, {"gettempfile", gettempfile},
};

}  // namespace

std::span<const FunctionDef> system_functions() {
    return kRows;
}

}  // namespace quiller
