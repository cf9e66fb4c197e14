// The one interface through which the engine shows and asks everything. The console host, the
// Qt host and the tests' scripted host implement it; the engine never talks to a window itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ui/output_model.hpp"
#include "ui/progress_model.hpp"

namespace quiller {

enum class Severity { Fatal = 0, Warning = 1, ChooseFile = 2 };

// Thrown by a host when the user ends the whole program at once (the output window's close box,
// the debugger's Terminate, the Cancel button of `frmPopup`), or when its own output can't be
// written any more (a full disk, a closed pipe: exit status 1): the engine closes its files and
// returns `exit_status` without the end-of-run window. A host throws it from its own code (a
// wait or `process_events`), never from inside a toolkit's event handler.
struct EndProgram {
    int exit_status = 0;
};

// What the user did in the error window.
enum class ErrorChoice { Continue, EndRun, Debug };

enum class MessageBoxButtons { Ok, OkCancel };
enum class MessageBoxResult { Ok, Cancel };

// The question window's request (`AskUser`): kind "text" or "yesno".
struct Question {
    std::string kind;
    std::string question;
    std::string default_answer;
    std::string password_char;  // "*" or empty
    std::string caption;        // "Quiller v0.1.0 Question"
};

// One debugger stop: the engine hands over what the window shows.
struct DebugView {
    const std::vector<std::string>* listing;  // one entry per program line, already indented
    std::vector<std::string> variables;       // "name = value"
    int current_line;                         // 1-based
    std::string line_text;
    std::string caption;
    std::string script_file;  // the script's path, for the editor
};
enum class DebugAction { Step, Continue, Terminate };

class Host {
  public:
    virtual ~Host() = default;

    // Output window. `print` carries what one `print` statement added (the model is already
    // updated); hosts that stream show `text` as it is.
    virtual void output_printed(const OutputModel& model, std::string_view text) = 0;
    // A modal pause into the output window: returns when the user pressed OK.
    virtual void output_pause(const OutputModel& model, std::string_view message) = 0;
    // End of run with a visible output window: show it modally with " - Program Finished".
    virtual void output_finished(const OutputModel& model) = 0;
    // A message shown without holding the script (a timed pause): the window shows it; the
    // console writes it to stderr.
    virtual void output_notice(const OutputModel&, std::string_view /*message*/) {}
    // The model's caption or visibility changed (a timed pause counts down in the caption).
    virtual void output_refresh(const OutputModel&) {}
    // Whether the output window shows: OK hides it without the engine's knowing.
    virtual bool output_visible(const OutputModel& model) { return model.visible(); }
    // True once the user pressed OK on the output window since the last call (ends a countdown).
    virtual bool output_dismissed() { return false; }
    // `printwindow`: place and size the output window, in twips.
    virtual void output_place(int /*left*/, int /*top*/, int /*width*/, int /*height*/) {}

    // Question window: returns the answer text.
    virtual std::string ask(const Question& q) = 0;

    // Error window for a warning or fatal error.
    virtual ErrorChoice show_error(Severity severity, std::string_view title,
                                   std::string_view text) = 0;
    // Error window in its file-choosing mode: returns the chosen script, or empty when none.
    virtual std::string choose_script(std::string_view title, std::string_view text,
                                      std::string_view last_script) = 0;

    virtual MessageBoxResult message_box(std::string_view text, std::string_view title,
                                         MessageBoxButtons buttons) = 0;

    // Debugger: show the line and wait for the user's choice.
    virtual DebugAction debug_stop(const DebugView& view) = 0;
    // Hide the debugger window if it is shown.
    virtual void debug_hide() {}

    // Lets the windows process pending events (long work calls it between units).
    virtual void process_events() {}

    // Progress window (`frmProgress`): shown by long work, updated between its items, closed at
    // its end. Hosts without one ignore it.
    virtual void progress_show(std::string_view /*title*/, std::string_view /*unit*/) {}
    // Redraws the window the model names (`frmPopup` or `frmProgress`); the host processes
    // pending events afterwards.
    virtual void progress_update(const ProgressModel& /*model*/) {}
    virtual void progress_close() {}
    // `frmPopup` (the `popup` statement, directory synchronisation): loaded or refreshed with
    // the model's labels, placement and Cancel button; closed by `popup` without a text.
    virtual void popup_show(const ProgressModel& /*model*/) {}
    virtual void popup_close() {}
    // True once the user pressed the window's Cancel button; the work then stops cleanly.
    virtual bool progress_cancelled() { return false; }
};

}  // namespace quiller
