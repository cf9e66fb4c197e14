// The writers' lock on POSIX: flock on the companion file, which belongs to the open file
// itself, so two opens conflict in one process as in two.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "os/file_lock.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller {
namespace {

class PosixFileLock final : public FileLock {
  public:
    explicit PosixFileLock(int fd) : fd_(fd) {}
    ~PosixFileLock() override { ::close(fd_); }  // closing releases the lock

  private:
    int fd_;
};

// Under the lock no other writer is at work, so a temporary file beside the target is a dead
// writer's leftover.
void remove_stale_temporaries(const std::string& target) {
    const std::size_t slash = target.rfind('/');
    const std::string dir = slash == std::string::npos ? "." : target.substr(0, slash + 1);
    std::string prefix(1, '.');
    prefix.append(target, slash == std::string::npos ? 0 : slash + 1);
    prefix += kTempMarker;
    DIR* d = ::opendir(dir.c_str());
    if (!d) return;
    while (const dirent* entry = ::readdir(d)) {
        const std::string name = entry->d_name;
        if (name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0)
            ::unlinkat(::dirfd(d), name.c_str(), 0);
    }
    ::closedir(d);
}

}  // namespace

Result<std::unique_ptr<FileLock>> posix::PosixFileSystem::lock_for_update(
    const std::string& path) {
    auto lock = lock_file(path, kLockWaitMs);
    if (lock) remove_stale_temporaries(native_path(path));
    return lock;
}

Result<std::unique_ptr<FileLock>> lock_file(const std::string& path, int timeout_ms) {
    const std::string name = lock_file_name(posix::native_path(path));
    const int fd =
        ::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
    if (fd < 0) return posix::system_error(errno);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeout_ms);
    auto pause = std::chrono::milliseconds(1);
    while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) ||
            std::chrono::steady_clock::now() >= deadline) {
            const SystemError error = posix::system_error(errno);
            ::close(fd);
            return error;
        }
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, std::chrono::milliseconds(50));
    }
    return std::unique_ptr<FileLock>(std::make_unique<PosixFileLock>(fd));
}

}  // namespace quiller
