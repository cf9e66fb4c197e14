// The Win32 implementation of the processes service: CreateProcessW for command lines,
// ShellExecuteW for documents, ExitWindowsEx for shutdown, restart and log-off.
#include "os/win32/win32_handle.hpp"  // windows.h, which shellapi.h needs first

#include <shellapi.h>

#include <algorithm>
#include <climits>
#include <optional>

#include "os/process_options.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

// The exit flags of shutdown modes 0 to 5.
constexpr UINT kExitFlags[] = {EWX_SHUTDOWN, EWX_SHUTDOWN | EWX_FORCE,
                               EWX_REBOOT,   EWX_REBOOT | EWX_FORCE,
                               EWX_LOGOFF,   EWX_LOGOFF | EWX_FORCE};

// Closes a process or thread handle on destruction (those are null, not invalid, on failure).
class KernelHandle {
  public:
    explicit KernelHandle(HANDLE h) : h_(h) {}
    KernelHandle(const KernelHandle&) = delete;
    KernelHandle& operator=(const KernelHandle&) = delete;
    ~KernelHandle() {
        if (h_) CloseHandle(h_);
    }
    HANDLE get() const { return h_; }

  private:
    HANDLE h_;
};

// Enables the shutdown privilege in the own process's token; failures show when the exit fails.
void enable_shutdown_privilege() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token))
        return;
    KernelHandle owner(token);
    TOKEN_PRIVILEGES privileges{};
    privileges.PrivilegeCount = 1;
    privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
    if (LookupPrivilegeValueW(nullptr, L"SeShutdownPrivilege", &privileges.Privileges[0].Luid))
        AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
}

// The dry run for testing scripts: the file QUILLER_SHUTDOWN_LOG names. Set but unreadable
// counts as set, so that a doubt never shuts the machine down.
std::optional<std::wstring> shutdown_log() {
    const wchar_t* name = L"QUILLER_SHUTDOWN_LOG";
    const DWORD size = GetEnvironmentVariableW(name, nullptr, 0);
    if (size == 0) {
        if (GetLastError() == ERROR_ENVVAR_NOT_FOUND) return std::nullopt;
        return std::wstring();
    }
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(name, value.data(), size));
    return value;
}

void append_line(const std::wstring& path, const std::string& line) {
    FileHandle file(CreateFileW(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return;
    const std::string text = line + "\r\n";
    write_all(file.get(), text.data(), text.size());
}

class Win32Processes final : public Processes {
  public:
    std::optional<std::uint32_t> shell_command(const std::string& command, bool wait,
                                               WindowState state) override {
        std::wstring line = widen(command);
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = static_cast<WORD>(state);  // SW_HIDE .. SW_SHOWMAXIMIZED
        PROCESS_INFORMATION info{};
        if (line.empty() || !CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0,
                                            nullptr, nullptr, &startup, &info))
            return std::nullopt;
        KernelHandle process(info.hProcess), thread(info.hThread);
        // The handle at hand, rather than one opened again by id, can't meet a reused id.
        if (wait) wait_for(process.get());
        return info.dwProcessId;
    }

    // Waits in steps of 100 ms, letting the windows work in between.
    void wait_for(HANDLE process) {
        while (WaitForSingleObject(process, while_waiting ? 100 : INFINITE) == WAIT_TIMEOUT)
            while_waiting();
    }

    void wait_for_process(std::uint32_t id) override {
        KernelHandle process(OpenProcess(SYNCHRONIZE, FALSE, id));
        if (process.get()) wait_for(process.get());
    }

    int open_document(const std::string& file, const std::string& verb) override {
        const INT_PTR result = reinterpret_cast<INT_PTR>(ShellExecuteW(
            nullptr, widen(verb).c_str(), widen(file).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
        return static_cast<int>(std::clamp<INT_PTR>(result, 0, INT_MAX));
    }

    // The top bit of the version word is clear on the NT family.
    bool is_windows_nt() override { return (GetVersion() & 0x80000000u) == 0; }

    void exit_system(int mode) override {
        const std::string action = process::shutdown_action(mode);
        if (action.empty()) return;
        if (const std::optional<std::wstring> log = shutdown_log()) {
            append_line(*log, action);
            return;
        }
        if (mode <= 3 && is_windows_nt()) enable_shutdown_privilege();
        ExitWindowsEx(kExitFlags[mode], 0xFFFFFFFF);
    }
};

}  // namespace
}  // namespace quiller::win32

namespace quiller {

std::unique_ptr<Processes> make_processes() {
    return std::make_unique<win32::Win32Processes>();
}

}  // namespace quiller
