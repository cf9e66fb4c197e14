// Programs, documents and the machine: starting and waiting for programs, opening documents with
// their associated application, shutdown, restart and log-off.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quiller {

// How a started program's window first shows; the numbers are the Windows show-window states.
enum class WindowState { Hidden = 0, Normal = 1, Minimized = 2, Maximized = 3 };

// Results of `open_document`, with the Windows shell's meaning: below 33 is a failure.
inline constexpr int kOpenNoAssociation = 31;
inline constexpr int kOpenFirstSuccess = 33;

class Processes {
  public:
    virtual ~Processes() = default;

    // Called at least every 100 ms while a wait for a program holds the caller (the windows
    // stay alive); it may throw to abandon the wait.
    std::function<void()> while_waiting;

    // Starts a command line (environment references already expanded); with `wait`, returns only
    // when the program has ended. The process id (0 when none is known), or nothing when the
    // program can't be found or started.
    virtual std::optional<std::uint32_t> shell_command(const std::string& command, bool wait,
                                                       WindowState state) = 0;
    // Blocks until the process ends; returns at once when it has ended or can't be waited on.
    virtual void wait_for_process(std::uint32_t id) = 0;
    // Opens a file, folder or web address with the application associated with `verb`.
    virtual int open_document(const std::string& file, const std::string& verb) = 0;
    // True on the NT family of Windows; false elsewhere.
    virtual bool is_windows_nt() = 0;
    // Shuts down (modes 0, 1), restarts (2, 3) or logs off (4, 5); odd modes force programs to
    // close. Other modes do nothing; failures are silent.
    virtual void exit_system(int mode) = 0;
};

// The implementation for the platform this build targets.
std::unique_ptr<Processes> make_processes();

}  // namespace quiller
