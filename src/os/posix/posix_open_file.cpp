// Files opened by scripts, temporary files, and replacement through the shared helper, on POSIX.
//
// Only regular files are read (a FIFO would block, a device could stream for ever); writing
// also accepts character devices such as /dev/null. A file whose owner-write bit is clear
// counts as read-only, as `getattrib` reports it, and is never written, even by root.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <random>

#include "os/buffered_file.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

bool read_only(const struct stat& st) {
    return !(st.st_mode & S_IWUSR);
}

// Why an opened descriptor can't serve the mode (0 when it can).
int unusable(const struct stat& st, OpenMode mode) {
    if (S_ISDIR(st.st_mode)) return EISDIR;
    if (mode == OpenMode::Read) return S_ISREG(st.st_mode) ? 0 : EINVAL;
    if (!S_ISREG(st.st_mode) && !S_ISCHR(st.st_mode)) return EINVAL;
    return S_ISREG(st.st_mode) && read_only(st) ? EACCES : 0;
}

int open_flags(OpenMode mode) {
    // Non-blocking only while opening, so a FIFO without a partner can't hang the script.
    int flags = O_CLOEXEC | O_NONBLOCK;
    if (mode == OpenMode::Read) return flags | O_RDONLY;
    flags |= O_WRONLY | O_CREAT;  // truncated only after the read-only check
    return mode == OpenMode::Append ? flags | O_APPEND : flags;
}

int fail(int fd, int code, int& error) {
    ::close(fd);
    error = code;
    return -1;
}

// Opens and checks the file; the descriptor, or -1 with `error` set.
int open_checked(const std::string& path, OpenMode mode, int& error) {
    const int fd = ::open(path.c_str(), open_flags(mode), 0666);
    if (fd < 0) {
        error = errno == ENXIO ? EINVAL : errno;
        return -1;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0) return fail(fd, errno, error);
    if (const int code = unusable(st, mode)) return fail(fd, code, error);
    if (mode == OpenMode::Write && S_ISREG(st.st_mode) && ::ftruncate(fd, 0) != 0)
        return fail(fd, errno, error);
    const int status = ::fcntl(fd, F_GETFL);
    if (status < 0 || ::fcntl(fd, F_SETFL, status & ~O_NONBLOCK) != 0)
        return fail(fd, errno, error);
    return fd;
}

// The platform's naming of temporary files uses at most three characters of the prefix; path
// separators are left out so the name stays in the temporary directory.
std::string temp_stem(const std::string& prefix) {
    std::string stem;
    for (char c : prefix) {
        if (stem.size() == 3) break;
        if (c != '/' && c != '\\' && c != '\0') stem += c;
    }
    return stem;
}

}  // namespace

Result<std::unique_ptr<OpenFile>> PosixFileSystem::open(const std::string& path, OpenMode mode) {
    const std::string p = native_path(path);
    if (p.empty()) return system_error(ENOENT);
    int error = 0;
    const int fd = open_checked(p, mode, error);
    if (fd < 0) return system_error(error);
    return std::unique_ptr<OpenFile>(
        std::make_unique<BufferedFile>(std::make_unique<PosixRawFile>(fd, p)));
}

Status PosixFileSystem::replace_file(const std::string& path, std::string_view bytes) {
    return replace_content(primitives_, path, bytes);
}

Result<std::unique_ptr<ReplacementFile>> PosixFileSystem::begin_replace(const std::string& path) {
    return begin_replacement(primitives_, path);
}

Status PosixFileSystem::copy_file(const std::string& from, const std::string& to,
                                  const CopyControl& control) {
    return copy_through_temp(primitives_, from, to, control);
}

std::string PosixFileSystem::temp_file_name(const std::string& prefix, bool create) {
    const std::string dir = PosixEnvironment().temp_dir();
    const std::string stem = temp_stem(prefix);
    static std::mt19937 rng(static_cast<unsigned>(::getpid()) ^
                            static_cast<unsigned>(::time(nullptr)));
    for (int attempt = 0; attempt < 65536; ++attempt) {
        char hex[8];
        std::snprintf(hex, sizeof hex, "%X", static_cast<unsigned>(rng() & 0xFFFF));
        const std::string name = dir + stem + hex + ".tmp";
        const int fd = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (fd < 0) {
            if (errno == EEXIST) continue;
            return {};
        }
        ::close(fd);
        if (!create) ::unlink(name.c_str());
        return name;
    }
    return {};
}

}  // namespace quiller::posix
