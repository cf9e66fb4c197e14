#include "app/console_host.hpp"

#include <unistd.h>

namespace quiller {

ConsoleHost::ConsoleHost(std::FILE* out, std::FILE* err, std::FILE* in)
    : out_(out), err_(err), in_(in), interactive_(::isatty(::fileno(in)) != 0) {}

void ConsoleHost::write_err(std::string_view title, std::string_view text) {
    if (!title.empty()) std::fprintf(err_, "%.*s\n", static_cast<int>(title.size()), title.data());
    std::fwrite(text.data(), 1, text.size(), err_);
    std::fputc('\n', err_);
    std::fflush(err_);
}

bool ConsoleHost::read_line(std::string& line) {
    line.clear();
    int c;
    bool any = false;
    while ((c = std::fgetc(in_)) != EOF) {
        any = true;
        if (c == '\n') break;
        line += static_cast<char>(c);
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return any;
}

void ConsoleHost::output_printed(const OutputModel&, std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), out_);
    std::fputc('\n', out_);
    std::fflush(out_);
}

void ConsoleHost::output_pause(const OutputModel&, std::string_view message) {
    write_err({}, message);
    if (!interactive_) return;
    std::string ignored;
    read_line(ignored);
}

void ConsoleHost::output_finished(const OutputModel&) {}

std::string ConsoleHost::ask(const Question& q) {
    write_err(q.caption, q.question);
    std::string answer;
    if (!read_line(answer)) return q.default_answer;
    return answer;
}

ErrorChoice ConsoleHost::show_error(Severity, std::string_view title, std::string_view text) {
    write_err(title, text);
    return ErrorChoice::Continue;
}

std::string ConsoleHost::choose_script(std::string_view title, std::string_view text,
                                       std::string_view last_script) {
    write_err(title, text);
    if (!interactive_) return {};
    if (!last_script.empty())
        std::fprintf(err_, "[%.*s] ", static_cast<int>(last_script.size()), last_script.data());
    std::fprintf(err_, "File: ");
    std::fflush(err_);
    std::string name;
    read_line(name);
    return name.empty() ? std::string(last_script) : name;
}

MessageBoxResult ConsoleHost::message_box(std::string_view text, std::string_view title,
                                          MessageBoxButtons) {
    write_err(title, text);
    return MessageBoxResult::Ok;
}

// The console has no debugger window: lines run on as if Step were pressed.
DebugAction ConsoleHost::debug_stop(const DebugView&) {
    return DebugAction::Step;
}

}  // namespace quiller
