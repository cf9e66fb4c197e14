// The writers' lock on Windows: LockFileEx on the companion file, which belongs to the handle,
// so two opens conflict in one process as in two.
#include <algorithm>
#include <chrono>
#include <thread>

#include "os/file_lock.hpp"
#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller {
namespace {

class Win32FileLock final : public FileLock {
  public:
    explicit Win32FileLock(win32::FileHandle file) : file_(std::move(file)) {}
    ~Win32FileLock() override {
        OVERLAPPED at{};
        UnlockFileEx(file_.get(), 0, MAXDWORD, MAXDWORD, &at);
    }

  private:
    win32::FileHandle file_;
};

// Under the lock no other writer is at work, so a temporary file beside the target is a dead
// writer's leftover.
void remove_stale_temporaries(const std::string& target) {
    const std::size_t slash = target.find_last_of("\\/");
    const std::string dir =
        slash == std::string::npos ? std::string() : target.substr(0, slash + 1);
    const std::string pattern =
        dir + "." + target.substr(slash == std::string::npos ? 0 : slash + 1) + kTempMarker + "*";
    WIN32_FIND_DATAW found;
    const win32::FindHandle find(FindFirstFileW(win32::native_path(pattern).c_str(), &found));
    if (!find.valid()) return;
    do {
        DeleteFileW(win32::native_path(dir + win32::narrow(found.cFileName)).c_str());
    } while (FindNextFileW(find.get(), &found));
}

}  // namespace

Result<std::unique_ptr<FileLock>> win32::Win32FileSystem::lock_for_update(
    const std::string& path) {
    auto lock = lock_file(path, kLockWaitMs);
    if (lock) remove_stale_temporaries(path);
    return lock;
}

Result<std::unique_ptr<FileLock>> lock_file(const std::string& path, int timeout_ms) {
    const std::wstring name = win32::native_path(lock_file_name(path));
    win32::FileHandle file(CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE,
                                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                       nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.valid()) return win32::last_system_error();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout_ms);
    auto pause = std::chrono::milliseconds(1);
    for (;;) {
        OVERLAPPED at{};
        if (LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, MAXDWORD,
                       MAXDWORD, &at))
            return std::unique_ptr<FileLock>(std::make_unique<Win32FileLock>(std::move(file)));
        const DWORD code = GetLastError();
        if (code != ERROR_LOCK_VIOLATION || std::chrono::steady_clock::now() >= deadline)
            return win32::system_error(code);
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::milliseconds(50));
    }
}

}  // namespace quiller
