// Script loading: reads a .prg file into the program table, normalising every line to
// keyword + arguments, and enters the script's main subroutine.
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "value/text.hpp"

namespace quiller {
namespace {

// The "$name$ = value" and ":label" shorthands, comments and blank lines. Returns false for a
// line that is dropped.
bool normalise_line(std::string& line) {
    for (char& c : line)
        if (c == '\t') c = ' ';
    line = std::string(text::trim(line));
    if (line.empty()) return false;
    const char first = line.front();
    if (first == '$') {
        const std::size_t eq = line.find('=');
        if (eq != std::string::npos) line = "set " + line.substr(0, eq) + " " + line.substr(eq + 1);
    } else if (first == ':') {
        line = "label " + line.substr(1);
    }
    return first != '\'' && !line.empty();
}

// Cuts the file's text into lines at CR LF, LF or a lone CR.
template <typename Fn>
void for_each_line(std::string_view content, Fn&& fn) {
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = content.size();
        fn(content.substr(start, end - start));
        if (end < content.size() && content[end] == '\r' && end + 1 < content.size() &&
            content[end + 1] == '\n')
            ++end;
        start = end + 1;
    }
}

}  // namespace

void Engine::read_prg(const std::string& file_name, int return_line) {
    variables_.set("param[0]", file_name);
    script_full_ = file_name;
    script_name_ = text::split_path(file_name).file;

    Result<std::string> bytes = platform_.files->read_file(file_name);
    if (!bytes) {
        report_error("(ReadPrg) '" + file_name + "' could not be opened.", Severity::Fatal,
                     bytes.error().shown());
        return;
    }
    std::string content = text::decode_script_text(*bytes);
    std::string_view view = content;
    if (view.starts_with("\xEF\xBB\xBF")) view.remove_prefix(3);

    const int first_new = program_.count() + 1;
    bool overflow = false;
    for_each_line(view, [&](std::string_view raw) {
        std::string line(raw);
        if (overflow || !normalise_line(line)) return;
        if (program_.count() >= kMaxLines) {
            overflow = true;
            return;
        }
        ProgramLine pl;
        const std::size_t blank = line.find(' ');
        pl.keyword = text::to_lower(std::string_view(line).substr(0, blank));
        if (blank != std::string::npos) pl.arguments = line.substr(blank + 1);
        prepare_program_line(pl, language_);
        program_.append(std::move(pl));
    });
    program_.touch();
    if (overflow) {
        report_error("(ReadPrg) '" + file_name + "' has more than 32767 lines.", Severity::Fatal,
                     failures::overflow().platform_text());
        return;
    }

    const std::optional<int> main = search(BlockKind::Sub, "main", 0, first_new);
    if (!main) {
        report_error(" (Findline): Couldn't find 'sub main", Severity::Fatal);
        return;
    }
    push_frame("main", return_line);
    jump_to(*main);
}

}  // namespace quiller
