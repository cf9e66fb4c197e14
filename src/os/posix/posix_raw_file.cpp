// Open files and the path operations under the shared file code, on POSIX.
#include "os/posix/posix_raw_file.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "os/posix/posix_dos_attributes.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

ErrorKind kind_of(int code) {
    switch (code) {
        case ENOENT:
        case ENOTDIR:
            return ErrorKind::NotFound;
        case EEXIST:
            return ErrorKind::Exists;
        case ECANCELED:
            return ErrorKind::Cancelled;
        default:
            return ErrorKind::Other;
    }
}

SystemError last_error() {
    return system_error(errno);
}

// The file a path names, through symbolic links, so that replacing it keeps the link.
std::string resolved(const std::string& path) {
    char buffer[PATH_MAX];
    return ::realpath(path.c_str(), buffer) ? std::string(buffer) : path;
}

// Gives a new file the mode and owner of the one it replaces (or the default mode).
void copy_identity(int fd, const struct stat* old) {
    if (old) {
        [[maybe_unused]] const int ignored = ::fchown(fd, old->st_uid, old->st_gid);
        ::fchmod(fd, old->st_mode & 07777);
        return;
    }
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
}

// Makes a rename durable: flushes the directory that holds `path`.
void sync_directory(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string dir = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const int fd = ::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

// The kept attribute word travels with a copy (archive set, as for any new file).
void copy_dos_word(const std::string& from, int out) {
    const auto bits = read_dos_attributes(from);
    if (!bits) return;
    char text[16];
    const int n = std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(*bits | 0x20u));
    ::fsetxattr(out, "user.DOSATTRIB", text, static_cast<std::size_t>(n), 0);
}

}  // namespace

SystemError system_error(int code) {
    return {code, std::strerror(code), kind_of(code)};
}

Result<std::size_t> PosixRawFile::read(char* buffer, std::size_t size) {
    for (;;) {
        const ssize_t n = ::read(fd_, buffer, size);
        if (n >= 0) return static_cast<std::size_t>(n);
        if (errno != EINTR) return last_error();
    }
}

Status PosixRawFile::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd_, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return last_error();
        if (n == 0) return system_error(EIO);
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return {};
}

Status PosixRawFile::flush() {
    return ::fsync(fd_) == 0 ? Status() : last_error();
}

bool PosixRawFile::status(struct stat& st) const {
    if (status_) {
        st = *status_;
        return true;
    }
    return ::fstat(fd_, &st) == 0;
}

Status PosixRawFile::take_stamp(RawFile& source) {
    const auto& from = static_cast<PosixRawFile&>(source);
    struct stat st {};
    if (!from.status(st)) return last_error();
    copy_dos_word(from.path_, fd_);
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    if (::fchmod(fd_, st.st_mode & 0777) != 0 || ::futimens(fd_, times) != 0) return last_error();
    return {};
}

bool PosixRawFile::is(const std::string& path) {
    struct stat own {
    }, other{};
    return status(own) && ::stat(native_path(path).c_str(), &other) == 0 &&
           own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

Status PosixRawFile::close() {
    if (fd_ < 0) return {};
    const int result = ::close(fd_);
    fd_ = -1;
    return result == 0 ? Status() : last_error();
}

Result<std::string> PosixPrimitives::replaceable(const std::string& path, bool follow_link,
                                                 RawFile* source) {
    if (!follow_link) return native_path(path);
    std::string target = resolved(native_path(path));
    struct stat st {};
    if (::stat(target.c_str(), &st) != 0) return target;
    struct stat own {};
    if (source && static_cast<PosixRawFile*>(source)->status(own) && own.st_dev == st.st_dev &&
        own.st_ino == st.st_ino)
        return same_file();
    if (!S_ISREG(st.st_mode) || !(st.st_mode & S_IWUSR))
        return system_error(S_ISDIR(st.st_mode) ? EISDIR : EACCES);
    return target;
}

// Non-blocking while opening, so a FIFO can't hang; only regular files are copied.
Result<std::unique_ptr<RawFile>> PosixPrimitives::open_source(const std::string& path) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) return last_error();
    struct stat st {};
    if (::fstat(fd, &st) != 0) {
        const SystemError error = last_error();
        ::close(fd);
        return error;
    }
    if (!S_ISREG(st.st_mode)) {
        ::close(fd);
        return system_error(S_ISDIR(st.st_mode) ? EISDIR : EINVAL);
    }
    return std::unique_ptr<RawFile>(std::make_unique<PosixRawFile>(fd, p, st));
}

Result<std::unique_ptr<RawFile>> PosixPrimitives::create_new(const std::string& path,
                                                             const std::string& like) {
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (fd < 0) return last_error();
    struct stat st {};
    if (!like.empty()) copy_identity(fd, ::stat(like.c_str(), &st) == 0 ? &st : nullptr);
    return std::unique_ptr<RawFile>(std::make_unique<PosixRawFile>(fd, path));
}

Status PosixPrimitives::rename_over(const std::string& from, const std::string& to,
                                    bool durable) {
    if (::rename(from.c_str(), to.c_str()) != 0) return last_error();
    if (durable) sync_directory(to);
    return {};
}

void PosixPrimitives::discard(const std::string& path) {
    ::unlink(path.c_str());
}

SystemError PosixPrimitives::cancelled() {
    return system_error(ECANCELED);
}

SystemError PosixPrimitives::same_file() {
    return system_error(EINVAL);
}

int PosixPrimitives::process_id() {
    return static_cast<int>(::getpid());
}

}  // namespace quiller::posix
