// Processes: the statements that start programs, open documents and shut the machine down.
#include "bindings/processes.hpp"

#include "engine/engine.hpp"
#include "engine/failure.hpp"
#include "os/process_options.hpp"

namespace quiller::statements {
namespace {

// A failure of ShellCommand: the message says it all, so there is no system text to add.
ScriptFailure shell_failure(const std::string& text) {
    return {{}, 0, "(ShellCommand) " + text};
}

}  // namespace

// `shell COMMAND {wait minimized maxmized hidden}`
void shell(Engine& e) {
    const std::string& command = e.slots()[1];
    const std::optional<std::string> expanded =
        process::expand_environment(command, *e.platform().environment);
    if (!expanded) throw shell_failure("Mismatched % characters :'" + command + "'");
    const bool wait = e.has_option("wait");
    const WindowState state = process::window_state(e.options());
    if (!e.platform().processes->shell_command(*expanded, wait, state))
        throw shell_failure("Couldn't find: " + *expanded);
}

// `web ADDRESS`: a failure shows a message box and the script goes on.
void web(Engine& e) {
    const int result = e.platform().processes->open_document(e.slots()[1], "open");
    if (result >= kOpenFirstSuccess) return;
    std::string text =
        result == kOpenNoAssociation
            ? "There is no application associated with the 'open' verb and the given file name "
              "extension. "
            : "Unable to shell application (ShellExecute returned " + std::to_string(result) + ")";
    text += kLineBreak;
    e.host().message_box(text, "Quiller", MessageBoxButtons::Ok);
}

// `shutdown MODE`
void shutdown(Engine& e) {
    const std::optional<int> mode = process::shutdown_mode(e.slots()[1]);
    if (mode) e.platform().processes->exit_system(*mode);
}

}  // namespace quiller::statements
