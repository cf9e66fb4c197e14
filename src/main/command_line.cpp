#include "main/command_line.hpp"

#include <string_view>

namespace quiller {

std::string join_command_line(int argc, const char* const* argv) {
    std::string line;
    for (int i = 1; i < argc; ++i) {
        const std::string_view arg = argv[i];
        if (!line.empty()) line += ' ';
        const bool needs_quotes = arg.empty() || arg.find(' ') != std::string_view::npos;
        if (!needs_quotes) {
            line += arg;
            continue;
        }
        char quote = '"';
        if (arg.find('"') != std::string_view::npos)
            quote = arg.find('\'') == std::string_view::npos ? '\'' : '^';
        line += quote;
        line += arg;
        line += quote;
    }
    return line;
}

}  // namespace quiller
