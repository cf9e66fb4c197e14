// The one failure channel: the error log record, the hand-over to the script's on_error
// subroutine, and the error window.
#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "value/text.hpp"
#include "value/value.hpp"

namespace quiller {
namespace {

constexpr std::int64_t kMaxLogSize = 51200;

std::string join_lines(std::initializer_list<std::string_view> lines) {
    std::string out;
    for (std::string_view l : lines) {
        out += l;
        out += kLineBreak;
    }
    return out;
}

}  // namespace

void Engine::report_error(std::string_view message, Severity severity,
                          std::string_view platform_text) {
    report(message, severity, platform_text, RawStatement::No);
}

void Engine::report(std::string_view message, Severity severity, std::string_view platform_text,
                    RawStatement raw) {
    if (severity == Severity::ChooseFile) {
        const std::string title = caption(" : Choose a .PRG file to run");
        std::string text = "Choose a .PRG file to run then press OK.";
        text += kLineBreak;
        text += kLineBreak;
        text += "(This dialog will be skipped if the file is passed as the 1st parameter.)";
        chosen_script_ = host_.choose_script(title, text, chosen_script_);
        return;
    }

    std::string statement = " ";
    if (current_line_ > 0 && raw == RawStatement::No) {
        try {
            statement = statement_text(current_line_);
        } catch (const ScriptFailure&) {  // the substituted line is itself too long
            raw = RawStatement::Yes;
        }
    }
    if (current_line_ > 0 && raw == RawStatement::Yes) {
        const ProgramLine& l = program_.line(current_line_);
        statement = l.keyword + " " + l.arguments;
    }
    const std::string sub = call_stack_.empty() ? std::string() : call_stack_.back().name;
    const int line = current_line_;
    std::string window_note;
    std::string log_problem;
    write_log_record(message, severity, statement, platform_text, window_note, log_problem);
    // One hand-over per statement, none while on_error runs (its own failures would call it
    // again without end) and none for a fatal error, which ends the run.
    if (severity == Severity::Warning && !pending_error_ && error_handlers_running_ == 0)
        pending_error_ = PendingError{std::string(message), severity, line, statement,
                                      std::string(platform_text)};

    if (error_display_ && !(row_ && row_->has(kQuietHidesErrors) && quiet_)) {
        std::string text;
        if (!window_note.empty()) {
            text = window_note;
        } else {
            text = "PRG=" + script_name_;
            text += kLineBreak;
            text += "Sub=" + sub;
            text += kLineBreak;
            text += "Line " + std::to_string(line) + "= " + statement;
            text += kLineBreak;
            text += "From Quiller : ";
            text += message;
            if (!platform_text.empty()) {
                text += kLineBreak;
                text += "From Windows : ";
                text += platform_text;
            }
        }
        if (!log_problem.empty()) {
            text += kLineBreak;
            text += log_problem;
        }
        text += kLineBreak;
        text += kLineBreak;
        text += "There was a problem with the line shown above.";
        text += kLineBreak;
        text +=
            severity == Severity::Fatal ? script_name_ + " will now end." : "Press OK to continue.";
        const std::string title = caption(severity == Severity::Fatal ? " Error" : " Warning");
        const ErrorChoice choice = host_.show_error(severity, title, text);
        if (severity == Severity::Warning && choice == ErrorChoice::EndRun) end_run(1);
        if (severity == Severity::Warning && choice == ErrorChoice::Debug) debug_mode_ = true;
    }
    if (severity == Severity::Fatal) end_run(1);
}

void Engine::write_log_record(std::string_view message, Severity severity,
                              std::string_view statement, std::string_view platform_text,
                              std::string& window_note, std::string& log_problem) {
    Environment& env = *platform_.environment;
    const std::string log_name = env.temp_dir() + "ql_err.txt";
    const Result<FileEntry> existing = platform_.files->status(log_name);
    if (existing && existing->size > kMaxLogSize) {
        window_note = "Maximum size reached for error log! (" + log_name + ")";
        window_note += kLineBreak;
        window_note += "Error not reportable.  Purge the log file.";
        return;
    }
    const std::string header =
        value::format_general_date(platform_.clock->now()) + "---------" + env.get("USERDOMAIN") +
        "\\" + env.get("USERNAME") + " " + env.get("COMPUTERNAME") +
        " ----------------- Quiller - " +
        (severity == Severity::Fatal ? " Fatal: .PRG halted" : " Warning: .PRG can continue");
    const std::string sub = call_stack_.empty() ? std::string() : call_stack_.back().name;
    std::string record =
        join_lines({"", header, "PRG=" + script_name_, "Sub=" + sub,
                    "Line " + std::to_string(current_line_) + "= " + std::string(statement)});
    if (!message.empty()) record += join_lines({"From Quiller : " + std::string(message)});
    if (!platform_text.empty())
        record += join_lines({"From Windows : " + std::string(platform_text)});
    // A log that can't be written must not stop the report itself; the window says why.
    if (const Status s = platform_.files->append_private(log_name, record); !s)
        log_problem = "The error log " + log_name + " was not written (" + s.error().shown() +
                      "); it must be a regular file of your own.";
}

// Called by the loop once the failing statement has finished, its jump included: on_error's
// frame returns to where the run would have gone on.
void Engine::hand_over_to_on_error() {
    const PendingError error = std::move(*pending_error_);
    pending_error_.reset();
    if (program_.count() == 0) return;
    const std::optional<int> handler = findline(BlockKind::Sub, "on_error", 0, true);
    if (!handler) return;
    push_frame("on_error", current_line_, true);
    current_line_ = *handler;
    Slots params;
    params[1] = error.message;
    params[2] = std::to_string(static_cast<int>(error.severity));
    params[3] = std::to_string(error.line);
    params[4] = error.statement;
    params[5] = error.platform_text;
    publish_parameters(params, 1);
    variables_.set("param[4]", error.platform_text);  // empty when there is none, never stale
}

}  // namespace quiller
