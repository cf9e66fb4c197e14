#include "engine/program.hpp"

namespace quiller {

void prepare_program_line(ProgramLine& line, const Language& language) {
    line.keyword_has_env = line.keyword.find('%') != std::string::npos;
    line.arguments_have_env = line.arguments.find('%') != std::string::npos;
    line.statement = line.keyword_has_env ? nullptr : language.statement(line.keyword);
    std::string_view args = line.arguments;
    if (line.statement && line.statement->has(kAssignment)) {
        // The target's own reference (up to the second "$") is kept as a name.
        const std::size_t first = args.find('$');
        const std::size_t second =
            first == std::string_view::npos ? first : args.find('$', first + 1);
        line.set_prefix_length = second == std::string_view::npos ? args.size() : second + 1;
    }
    line.template_.build(args.substr(line.set_prefix_length));
    line.plan = LinePlan::build(line, language);
}

}  // namespace quiller
