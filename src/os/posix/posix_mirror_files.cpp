// The mirror's copy on POSIX: read and write through one buffer, permissions and times from the
// source's descriptor. No fsync per file: a process that is killed leaves only a temporary name.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

#include "os/mirror_files.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller {
namespace {

constexpr std::size_t kBuffer = 256 * 1024;

bool pump(int in, int out) {
    static const std::unique_ptr<char[]> buffer(new char[kBuffer]);
    for (;;) {
        const ssize_t n = ::read(in, buffer.get(), kBuffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return n == 0;
        for (ssize_t done = 0; done < n;) {
            const ssize_t w = ::write(out, buffer.get() + done, static_cast<std::size_t>(n - done));
            if (w < 0 && errno == EINTR) continue;
            if (w < 0) return false;
            done += w;
        }
    }
}

class PosixMirrorFiles final : public MirrorFiles {
  public:
    bool copy_new(const std::string& from, const std::string& to, int& error) override {
        const std::string target = posix::native_path(to);
        const int in = ::open(posix::native_path(from).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
        struct stat st {};
        if (in < 0 || ::fstat(in, &st) != 0) {
            error = errno;
            if (in >= 0) ::close(in);
            return false;
        }
        if (!S_ISREG(st.st_mode)) {
            ::close(in);
            error = S_ISDIR(st.st_mode) ? EISDIR : EINVAL;
            return false;
        }
        const int out = ::open(target.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                               S_IRUSR | S_IWUSR);
        bool ok = out >= 0 && pump(in, out);
        if (ok) {
            const struct timespec times[2] = {st.st_atim, st.st_mtim};
            ok = ::fchmod(out, st.st_mode & 07777) == 0 && ::futimens(out, times) == 0;
        }
        if (!ok) error = errno;
        if (out >= 0 && ::close(out) != 0 && ok) {
            ok = false;
            error = errno;
        }
        ::close(in);
        if (!ok && out >= 0) ::unlink(target.c_str());
        return ok;
    }

    bool replace(const std::string& from, const std::string& to, int& error) override {
        if (::rename(posix::native_path(from).c_str(), posix::native_path(to).c_str()) == 0)
            return true;
        error = errno;
        return false;
    }
};

}  // namespace

std::unique_ptr<MirrorFiles> make_mirror_files() {
    return std::make_unique<PosixMirrorFiles>();
}

}  // namespace quiller
