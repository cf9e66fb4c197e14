// The interpreter loop: substitutes, splits and dispatches one program line after another.
#include <functional>
#include <new>
#include <stdexcept>

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "expr/condition.hpp"
#include "ui/debug_model.hpp"
#include "value/text.hpp"

namespace quiller {

// Only this loop moves the current line: a statement asks for its jump, a failing statement
// reports and returns (or throws back here), and the hand-over to on_error comes after the
// statement's own jump, so on_error returns to where the run would have gone on.
// Windows stay alive through long runs of quick lines: pending events run every 1024 lines.
void Engine::do_prg() {
    unsigned lines_run = 0;
    take_jump();
    while (!finished_ && current_line_ >= 1 && current_line_ <= program_.count()) {
        run_line();
        take_jump();
        if (pending_error_ && !finished_) hand_over_to_on_error();
        ++current_line_;
        if ((++lines_run & 1023u) == 0) host_.process_events();
    }
}

void Engine::take_jump() {
    if (!jump_) return;
    current_line_ = *jump_;
    jump_.reset();
}

void Engine::run_line() {
    try {
        execute_line();
    } catch (const ScriptFailure& failure) {
        const std::string message =
            failure.message.empty() ? "(DoPrg) Run-time error in '" + std::string(keyword_) + "'"
                                    : failure.message;
        report_error(message, Severity::Warning, failure.platform_text());
    } catch (const std::bad_alloc&) {
        report_out_of_memory();
    } catch (const std::length_error&) {
        report_error("(DoPrg) Run-time error in '" + std::string(keyword_) + "'", Severity::Warning,
                     failures::out_of_string_space().platform_text());
    }
}

// Memory ran out: what the statement built is gone with the exception; the report shows the
// line as written, since substituting it again could need the same memory once more.
void Engine::report_out_of_memory() {
    jump_.reset();
    arguments_.clear();
    arguments_.shrink_to_fit();
    for (std::string& slot : slots_) std::string().swap(slot);
    try {
        report("(DoPrg) Run-time error in '" + std::string(keyword_) + "'", Severity::Fatal,
               failures::out_of_memory().platform_text(), RawStatement::Yes);
    } catch (const std::bad_alloc&) {
        end_run(1);
    }
}

std::string Engine::substitute(std::string_view text, char delimiter, bool silent) {
    SubstitutionResult r;
    if (delimiter == '%') {
        r = replace_references(
            '%', text,
            [this](std::string_view n) { return platform_.environment->get(std::string(n)); },
            variables_.text_limit());
    } else {
        r = replace_references(
            '$', text, [this](std::string_view n) { return variables_.get(n); },
            variables_.text_limit());
    }
    if (!r.unclosed) return std::move(r.text);
    if (!silent) show_unclosed_delimiter(delimiter, r.text);
    return {};
}

void Engine::show_unclosed_delimiter(char delimiter, std::string_view text) {
    const std::string d(1, delimiter);
    std::string message = "Replace Vars - Closing delimeter not found (" + d + ")";
    message += kLineBreak;
    message += "Use " + d + d + " if this isn't a delimeter.";
    message += kLineBreak;
    message += text;
    host_.message_box(message, "Quiller", MessageBoxButtons::OkCancel);
}

// The argument text of a line as the loop sees it: "%" references, then "$" references (for
// `set`, only after the target's name).
void Engine::prepare_arguments(ProgramLine& line, bool silent, std::string& out) {
    if (!line.arguments_have_env && line.template_.closed()) {
        if (line.set_prefix_length == 0) {
            line.template_.expand(variables_, out);
        } else {
            std::string rest;
            line.template_.expand(variables_, rest);
            out.assign(line.arguments, 0, line.set_prefix_length);
            out += rest;
        }
        return;
    }
    const std::string args =
        line.arguments_have_env ? substitute(line.arguments, '%', silent) : line.arguments;
    if (!(line.statement && line.statement->has(kAssignment))) {
        out = substitute(args, '$', silent);
        return;
    }
    const std::size_t first = args.find('$');
    const std::size_t second = first == std::string::npos ? first : args.find('$', first + 1);
    const std::size_t keep = second == std::string::npos ? args.size() : second + 1;
    out = args.substr(0, keep) + substitute(std::string_view(args).substr(keep), '$', silent);
}

std::string Engine::statement_text(int line_number) {
    if (line_number < 1 || line_number > program_.count()) return " ";
    ProgramLine& line = program_.line(line_number);
    std::string text = line.keyword_has_env ? substitute(line.keyword, '%', true) : line.keyword;
    std::string args;
    prepare_arguments(line, true, args);
    text += ' ';
    text += args;
    return text;
}

void Engine::execute_line() {
    ProgramLine& line = program_.line(current_line_);
    if (line.plan && !debug_mode_) {
        if (const Slots* filled = line.plan->fill(variables_, slots_, variables_.text_limit())) {
            slots_in_use_ = filled;
            facts_in_use_ = &line.plan->facts();
            return run_planned(line);
        }
    }
    slots_in_use_ = &slots_;
    facts_in_use_ = nullptr;
    if (line.keyword_has_env) {
        keyword_storage_ = substitute(line.keyword, '%');
        row_ = language_.statement(keyword_storage_);
    } else {
        keyword_storage_ = line.keyword;
        row_ = line.statement;
    }
    keyword_ = keyword_storage_;
    prepare_arguments(line, false, arguments_);

    if (debug_mode_) debugger_stop();

    if (row_ && row_->has(kCondition) && normalise_condition(keyword_storage_, arguments_))
        row_ = language_.statement(keyword_storage_);
    keyword_ = keyword_storage_;
    split_arguments(arguments_, row_ && row_->has(kAssignment), slots_, option_text_);
    read_options();

    if (!row_) {
        const std::string keyword(keyword_);
        report_error("(DoPrg) " + keyword + " " + slots_[1] + " " + slots_[2] +
                         " :Unrecognized command '" + keyword + "'",
                     Severity::Warning);
        return;
    }
    dispatch();
}

// A line whose plan filled the slots. Only `set` reads the argument text, and only when its value
// is a function's.
void Engine::run_planned(ProgramLine& line) {
    const LinePlan& plan = *line.plan;
    keyword_ = plan.keyword();
    row_ = plan.row();
    if (plan.option_text().empty()) {
        option_text_.clear();
        options_.clear();
        quiet_ = false;
    } else {
        option_text_ = plan.option_text();
        read_options();
    }
    const std::string& word2 = (*slots_in_use_)[2];
    const char first = word2.empty() ? ' ' : word2.front();
    if (row_->has(kAssignment) && first != '"' && first != '\'' && first != '^')
        prepare_arguments(line, false, arguments_);
    else
        arguments_.clear();
    dispatch();
}

void Engine::dispatch() {
    if (!row_->run) return report_not_available();
    row_->run(*this);
}

const value::TextFacts* Engine::facts_of(const std::string& text) const {
    if (!facts_in_use_) return nullptr;
    const std::string* first = slots_in_use_->data();
    const std::less<const std::string*> before;
    if (before(&text, first) || !before(&text, first + slots_in_use_->size())) return nullptr;
    return facts_in_use_->operand[static_cast<std::size_t>(&text - first)];
}

// The debugger's listing, made again only when the program table changed (`load`).
const std::vector<std::string>& Engine::debug_listing_lines() {
    if (listing_generation_ != program_.generation() || listing_.empty()) {
        std::vector<ListingLine> lines;
        lines.reserve(static_cast<std::size_t>(program_.count()));
        for (int n = 1; n <= program_.count(); ++n) {
            const ProgramLine& line = program_.line(n);
            const StatementRow* row = line.statement;
            lines.push_back({line.keyword, line.arguments, row && row->has(kOutdentBefore),
                             row && row->has(kIndentAfter)});
        }
        listing_ = debug_listing(lines);
        listing_generation_ = program_.generation();
    }
    return listing_;
}

// Quiet mode, and the option words of the row found in the option text (containment: a word
// inside a longer one also counts).
void Engine::read_options() {
    options_.clear();
    if (option_text_.empty()) {
        quiet_ = false;
        return;
    }
    option_text_ = text::to_lower(option_text_);
    quiet_ = option_text_.find("quiet") != std::string::npos;
    if (!row_) return;
    for (std::string_view words = row_->options; !words.empty();) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(words.size(), word.size() + 1));
        if (option_text_.find(word) == std::string::npos) continue;
        if (!options_.empty()) options_ += ' ';
        options_ += word;
    }
}

bool Engine::has_option(std::string_view word) const {
    for (std::string_view found = options_; !found.empty();) {
        const std::string_view w = found.substr(0, found.find(' '));
        if (w == word) return true;
        found.remove_prefix(std::min(found.size(), w.size() + 1));
    }
    return false;
}

void Engine::report_not_available() {
    report_error("(DoPrg) " + std::string(keyword_) + " is not available yet", Severity::Warning);
}

void Engine::debugger_stop() {
    std::string statement = std::string(keyword_) + " " + arguments_;
    DebugView view{&debug_listing_lines(), {},          current_line_, std::move(statement),
                   caption(" Debug"),      script_full_};
    for (int i = 0; i < variables_.count(); ++i)
        view.variables.push_back(variables_.name_at(i) + " = " + variables_.value_at(i));
    switch (host_.debug_stop(view)) {
        case DebugAction::Step:
            break;
        case DebugAction::Continue:
            debug_mode_ = false;
            host_.debug_hide();
            break;
        case DebugAction::Terminate:  // at once, without running the line
            throw EndProgram{0};
    }
}

}  // namespace quiller
