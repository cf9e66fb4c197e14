// The POSIX processes service: command lines run through /bin/sh, documents open with xdg-open,
// shutdown and log-off go through systemd's systemctl and loginctl.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "os/processes.hpp"

namespace quiller::posix {

// Starts a program without waiting for it: argv[0] is searched in PATH unless it holds a "/".
// Returns 0, or the errno code of the failure.
using Spawner = std::function<int(const std::vector<std::string>& argv, pid_t& pid)>;
int spawn_program(const std::vector<std::string>& argv, pid_t& pid);

// The executable file a command name stands for: a name with a "/" as it is, any other searched
// in PATH. Nothing when there is no such executable file.
std::optional<std::string> find_program(const std::string& name);

// Whether the first word of a shell command line names a program that exists. Builtins, reserved
// words and words the shell would expand first count as found; a blank line does not.
bool command_found(std::string_view command);

// The command that carries out a shutdown mode (0 to 5). Log-off ends the session `session`
// (XDG_SESSION_ID), or all sessions of the user `uid` when that is empty.
std::vector<std::string> shutdown_command(int mode, const std::string& session, unsigned uid);

// When this environment variable is set, shutdown modes are appended to the file it names, one
// line each ("poweroff", "reboot force", ...), and nothing is carried out.
inline constexpr const char* kShutdownLogVariable = "QUILLER_SHUTDOWN_LOG";

class PosixProcesses final : public Processes {
  public:
    explicit PosixProcesses(Spawner spawner = spawn_program) : spawn_(std::move(spawner)) {}
    ~PosixProcesses() override { reap(); }

    std::optional<std::uint32_t> shell_command(const std::string& command, bool wait,
                                               WindowState state) override;
    void wait_for_process(std::uint32_t id) override;
    int open_document(const std::string& file, const std::string& verb) override;
    bool is_windows_nt() override { return false; }
    void exit_system(int mode) override;

  private:
    // Starts a program that nobody waits for; a later sweep reaps it. 0 or an errno code.
    int start_detached(const std::vector<std::string>& argv, pid_t& pid);
    // Collects the programs started earlier that have ended, so none is left a zombie.
    void reap();

    Spawner spawn_;
    std::vector<pid_t> children_;
};

}  // namespace quiller::posix
