// The script engine: start-up, the program table, variables, the interpreter loop, control flow
// and error reporting, over one host (windows) and one platform (operating-system services).
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <typeindex>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engine/file_table.hpp"
#include "engine/language.hpp"
#include "engine/program.hpp"
#include "engine/splitter.hpp"
#include "engine/variables.hpp"
#include "os/platform.hpp"
#include "ui/host.hpp"
#include "ui/output_model.hpp"

namespace quiller {

inline constexpr int kMaxCallDepth = 10000;

#ifdef _WIN32
inline constexpr std::string_view kLineBreak = "\r\n";
#else
inline constexpr std::string_view kLineBreak = "\n";
#endif

struct CallFrame {
    std::string name;
    int return_line = 0;
    bool error_handler = false;  // pushed by the hand-over to on_error
};

// A warning waiting for the loop to hand it over to on_error once its statement has finished.
struct PendingError {
    std::string message;
    Severity severity = Severity::Warning;
    int line = 0;
    std::string statement;
    std::string platform_text;
};

// Block kinds the line finder searches for.
enum class BlockKind { Repeat, EndWhile, While, EndIf, Goto, Sub };

class Engine {
  public:
    Engine(Host& host, Platform& platform, const Language& language);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    // Start-up: runs the script named on `command_line` (script file, then parameters).
    // Returns the process exit status.
    int run(std::string_view command_line);

    // --- Services for statements and functions -------------------------------------------
    Host& host() { return host_; }
    Platform& platform() { return platform_; }
    const Language& language() const { return language_; }
    VariableTable& variables() { return variables_; }
    OutputModel& output() { return output_; }
    FileTable& files() { return files_; }
    std::mt19937_64& random() { return random_; }
    // State a statement domain keeps for the whole run, made from `args` on first use (the path
    // filters of directory synchronisation, the INI files read); the engine knows nothing of
    // its type.
    template <class T, class... Args>
    T& run_state(Args&&... args) {
        std::shared_ptr<void>& slot = run_state_[std::type_index(typeid(T))];
        if (!slot) slot = std::make_shared<T>(std::forward<Args>(args)...);
        return *static_cast<T*>(slot.get());
    }
    // The year dates written without one belong to (taken at start-up).
    int current_year() const { return current_year_; }

    // The one failure channel: logs, shows the error window; a fatal error ends the run (throws
    // RunEnded). A warning is handed over to on_error by the loop after the statement finished,
    // unless on_error is already running.
    void report_error(std::string_view message, Severity severity,
                      std::string_view platform_text = {});

    // The caption of the engine's windows: "Quiller v0.1.0" + suffix.
    std::string caption(std::string_view suffix = {}) const;
    const std::string& version() const { return version_; }
    const std::string& script_name() const { return script_name_; }

    // --- State of the statement being run -----------------------------------------------
    const Slots& slots() const { return *slots_in_use_; }
    // What is known of `words` beyond their text, when they are this statement's slots as the
    // line's plan filled them; null otherwise.
    const SlotFacts* facts_for(const Slots& words) const {
        return &words == slots_in_use_ ? facts_in_use_ : nullptr;
    }
    // The kept facts of `text` when it is one of this statement's slots; null otherwise.
    const value::TextFacts* facts_of(const std::string& text) const;
    // The option words of the statement's row that its option text holds, blank-separated: a
    // statement sees only the words its row lists.
    const std::string& options() const { return options_; }
    bool has_option(std::string_view word) const;
    std::string_view keyword() const { return keyword_; }
    const std::string& arguments() const { return arguments_; }
    bool quiet() const { return quiet_; }
    // "(DoPrg) keyword is not available yet": a statement of a later release, or one whose
    // service this system lacks.
    void report_not_available();

    int current_line() const { return current_line_; }
    ProgramLine& current_program_line() { return program_.line(current_line_); }
    // A statement's jump: the loop moves to `line` when the statement has finished (and then
    // on to the line after it).
    void jump_to(int line) { jump_ = line; }
    const std::vector<CallFrame>& call_stack() const { return call_stack_; }
    // Pushes a call frame; more than kMaxCallDepth frames is a fatal error.
    void push_frame(std::string name, int return_line, bool error_handler = false);
    void pop_frame();
    // `endsub`: returns to the top frame's return line; the run ends when that is 0.
    void return_from_sub();

    // The line finder. Nothing when the partner is missing (reported unless `quiet`).
    std::optional<int> findline(BlockKind kind, std::string_view name, int start,
                                bool quiet = false);

    // Publishes slots `first`..12 as $param[first-1]$ onward with $param_count$.
    void publish_parameters(const Slots& slots, int first);

    // Loads a script file into the program table and enters its main (`load` and start-up).
    void read_prg(const std::string& file_name, int return_line);

    void end_run(int exit_status);
    void set_debug_mode(bool on) { debug_mode_ = on; }
    void set_error_display(bool on) { error_display_ = on; }

    // Substitution of one text as the loop does it ("%" then "$"); silent skips the message box.
    std::string substitute(std::string_view text, char delimiter, bool silent = false);

  private:
    int run_script(std::string_view command_line);
    void startup(std::string_view command_line);
    void finish_run();
    void do_prg();
    void execute_line();
    void run_planned(ProgramLine& line);
    void dispatch();
    void prepare_arguments(ProgramLine& line, bool silent, std::string& out);
    std::string statement_text(int line_number);
    void show_unclosed_delimiter(char delimiter, std::string_view text);
    void write_log_record(std::string_view message, Severity severity, std::string_view statement,
                          std::string_view platform_text, std::string& window_note,
                          std::string& log_problem);
    void hand_over_to_on_error();
    void run_line();
    void report_out_of_memory();
    enum class RawStatement { No, Yes };
    void report(std::string_view message, Severity severity, std::string_view platform_text,
                RawStatement raw);
    void take_jump();
    std::optional<int> find_partner(BlockKind kind, int start);
    std::optional<int> search(BlockKind kind, std::string_view name, int start, int first_line);
    void debugger_stop();
    const std::vector<std::string>& debug_listing_lines();
    void read_options();

    Host& host_;
    Platform& platform_;
    const Language& language_;
    std::string version_;
    std::string script_full_;
    std::string script_name_;
    Program program_;
    VariableTable variables_;
    std::vector<CallFrame> call_stack_;
    OutputModel output_;
    FileTable files_;
    std::mt19937_64 random_;
    int current_line_ = 0;
    std::optional<int> jump_;
    std::optional<PendingError> pending_error_;
    int error_handlers_running_ = 0;
    int current_year_ = 2000;
    bool finished_ = false;
    bool debug_mode_ = false;
    bool quiet_ = false;
    bool error_display_ = true;
    std::string chosen_script_;  // the file-choosing window's answer
    std::vector<std::string> listing_;  // the debugger's listing of the program table
    std::uint32_t listing_generation_ = 0;

    Slots slots_;  // filled by the splitter, or by a plan with long values
    const Slots* slots_in_use_ = &slots_;
    const SlotFacts* facts_in_use_ = nullptr;
    std::string option_text_;
    std::string options_;
    std::string keyword_storage_;        // the keyword of a line run the long way
    std::string_view keyword_;           // in keyword_storage_ or in the line's plan
    const StatementRow* row_ = nullptr;  // of keyword_; null when it is unknown
    std::string arguments_;
    std::unordered_map<std::type_index, std::shared_ptr<void>> run_state_;
    // Found partners of the unnamed block kinds (Repeat, EndWhile, While, EndIf), by start line
    // + 1; 0 while unknown, else the line found + 1.
    std::array<std::vector<int>, 4> findline_cache_;
    std::uint32_t findline_generation_ = 0;
};

}  // namespace quiller
