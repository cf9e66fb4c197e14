// The POSIX implementation of the processes service.
#include "os/posix/posix_processes.hpp"

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <thread>

#include "os/posix/posix_platform.hpp"
#include "os/process_options.hpp"

namespace quiller::posix {
namespace {

constexpr int kOpenSucceeded = 42;   // any result from 33 up means success
constexpr int kShellNotFound = 127;  // /bin/sh's exit status for a command it can't find

// The exit status of a child, after waiting for it; -1 when it can't be waited on. With
// `idle`, the child is polled (quickly at first, then every 50 ms) and `idle` runs in between.
int wait_child(pid_t pid, const std::function<void()>& idle) {
    int status = 0;
    if (!idle) {
        while (waitpid(pid, &status, 0) < 0)
            if (errno != EINTR) return -1;
        return status;
    }
    for (int pause_ms = 1;; pause_ms = std::min(pause_ms * 2, 50)) {
        const pid_t r = waitpid(pid, &status, WNOHANG);
        if (r == pid) return status;
        if (r < 0 && errno != EINTR) return -1;
        std::this_thread::sleep_for(std::chrono::milliseconds(pause_ms));
        idle();
    }
}

// The shell's result codes for a failure to start the opener (file not found, access denied, out
// of memory); 0 for anything else.
int open_error_code(int error) {
    switch (error) {
        case ENOENT:
            return 2;
        case EACCES:
        case EPERM:
            return 5;
        case ENOMEM:
            return 8;
        default:
            return 0;
    }
}

void append_line(const char* path, const std::string& line) {
    const int fd = ::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0) return;
    const std::string text = line + "\n";
    [[maybe_unused]] const ssize_t written = ::write(fd, text.data(), text.size());
    ::close(fd);
}

}  // namespace

std::vector<std::string> shutdown_command(int mode, const std::string& session, unsigned uid) {
    if (mode >= 4) {
        if (session.empty())
            return {"loginctl", "--no-ask-password", "terminate-user", std::to_string(uid)};
        return {"loginctl", "--no-ask-password", "terminate-session", session};
    }
    std::vector<std::string> command{"systemctl", "--no-ask-password",
                                     mode < 2 ? "poweroff" : "reboot"};
    if (mode % 2 == 1) command.push_back("--ignore-inhibitors");
    return command;
}

std::optional<std::uint32_t> PosixProcesses::shell_command(const std::string& command, bool wait,
                                                           WindowState) {
    reap();
    if (!command_found(command)) return std::nullopt;
    pid_t pid = 0;
    if (!wait) {
        if (start_detached({"/bin/sh", "-c", command}, pid) != 0) return std::nullopt;
        return static_cast<std::uint32_t>(pid);
    }
    if (spawn_({"/bin/sh", "-c", command}, pid) != 0) return std::nullopt;
    const int status = wait_child(pid, while_waiting);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kShellNotFound) return std::nullopt;
    return static_cast<std::uint32_t>(pid);
}

void PosixProcesses::wait_for_process(std::uint32_t id) {
    reap();
    if (id == 0 || id > INT_MAX || static_cast<pid_t>(id) == getpid()) return;
    const pid_t pid = static_cast<pid_t>(id);
    const auto own = std::find(children_.begin(), children_.end(), pid);
    if (own != children_.end()) {
        children_.erase(own);
        wait_child(pid, while_waiting);
        return;
    }
    // Another program's process: watch it until it is gone. One we may not signal can't be
    // waited on.
    while (kill(pid, 0) == 0) {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        if (while_waiting) while_waiting();
    }
}

// The verb is the desktop's default action: xdg-open knows no other.
int PosixProcesses::open_document(const std::string& file, const std::string&) {
    reap();
    const std::optional<std::string> opener = find_program("xdg-open");
    if (!opener) return kOpenNoAssociation;
    const bool address = file.find("://") != std::string::npos;
    pid_t pid = 0;
    const int error = start_detached({*opener, address ? file : native_path(file)}, pid);
    return error == 0 ? kOpenSucceeded : open_error_code(error);
}

void PosixProcesses::exit_system(int mode) {
    const std::string action = process::shutdown_action(mode);
    if (action.empty()) return;
    if (const char* log = std::getenv(kShutdownLogVariable)) {
        append_line(log, action);
        return;
    }
    reap();
    const char* session = std::getenv("XDG_SESSION_ID");
    pid_t pid = 0;
    start_detached(shutdown_command(mode, session ? session : "", getuid()), pid);
}

int PosixProcesses::start_detached(const std::vector<std::string>& argv, pid_t& pid) {
    const int error = spawn_(argv, pid);
    if (error == 0) children_.push_back(pid);
    return error;
}

void PosixProcesses::reap() {
    std::erase_if(children_, [](pid_t pid) {
        int status = 0;
        const pid_t r = waitpid(pid, &status, WNOHANG);
        return r == pid || (r < 0 && errno == ECHILD);
    });
}

}  // namespace quiller::posix

namespace quiller {

std::unique_ptr<Processes> make_processes() {
    return std::make_unique<posix::PosixProcesses>();
}

}  // namespace quiller
