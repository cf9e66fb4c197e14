// Files on POSIX: status, wildcard tests, whole-file reads and appends. Windows-style
// attributes are derived from the mode bits and the name.
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "os/posix/posix_dos_attributes.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

bool has_wildcard(std::string_view s) {
    return s.find_first_of("*?") != std::string_view::npos;
}

std::uint32_t attributes_of(const struct stat& st, std::string_view name) {
    std::uint32_t attrs = 0;
    if (S_ISDIR(st.st_mode)) attrs |= kAttrDirectory;
    if (S_ISREG(st.st_mode)) attrs |= kAttrArchive;
    if (!(st.st_mode & S_IWUSR)) attrs |= kAttrReadOnly;
    if (!name.empty() && name.front() == '.' && name != "." && name != "..") attrs |= kAttrHidden;
    return attrs;
}

std::string_view base_name(std::string_view path) {
    while (path.size() > 1 && path.back() == '/') path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

bool is_ordinary(const std::string& path, std::string_view name) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) return false;
    return !(attributes_of(st, name) & (kAttrDirectory | kAttrHidden | kAttrSystem)) &&
           S_ISREG(st.st_mode);
}

}  // namespace

std::string native_path(std::string_view path) {
    std::string p(path);
    for (char& c : p)
        if (c == '\\') c = '/';
    return p;
}

Result<FileEntry> PosixFileSystem::status(const std::string& path) {
    const std::string p = native_path(path);
    struct stat st {};
    if (p.empty()) return system_error(ENOENT);
    if (::stat(p.c_str(), &st) != 0) return system_error(errno);
    FileEntry e;
    e.name = base_name(p);
    e.directory = S_ISDIR(st.st_mode);
    e.attributes = with_dos_attributes(p, attributes_of(st, e.name));
    e.size = static_cast<std::int64_t>(st.st_size);
    e.modified = static_cast<std::int64_t>(st.st_mtime);
    return e;
}

bool PosixFileSystem::any_ordinary_file(const std::string& pattern) {
    const std::string p = native_path(pattern);
    const std::size_t slash = p.rfind('/');
    const std::string dir =
        slash == std::string::npos ? "." : (slash == 0 ? "/" : p.substr(0, slash));
    const std::string name = slash == std::string::npos ? p : p.substr(slash + 1);
    if (!has_wildcard(name)) return is_ordinary(p, name);
    DIR* d = ::opendir(dir.c_str());
    if (!d) return false;
    bool found = false;
    while (dirent* entry = ::readdir(d)) {
        if (::fnmatch(name.c_str(), entry->d_name, FNM_CASEFOLD | FNM_PERIOD) != 0) continue;
        if (is_ordinary(dir + "/" + entry->d_name, entry->d_name)) {
            found = true;
            break;
        }
    }
    ::closedir(d);
    return found;
}

Result<std::string> PosixFileSystem::read_file(const std::string& path) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return system_error(errno);
    std::string content;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            const SystemError error = system_error(errno);
            ::close(fd);
            return error;
        }
        content.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return content;
}

namespace {

// All of `bytes` to `fd`, which is closed.
Status write_and_close(int fd, std::string_view bytes) {
    Status s;
    while (!bytes.empty() && s) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0)
            s = system_error(n < 0 ? errno : EIO);
        else
            bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    if (::close(fd) != 0 && s) s = system_error(errno);
    return s;
}

}  // namespace

Status PosixFileSystem::append_file(const std::string& path, std::string_view bytes) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return system_error(errno);
    return write_and_close(fd, bytes);
}

Status PosixFileSystem::append_private(const std::string& path, std::string_view bytes) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(),
                          O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (fd < 0) return system_error(errno);
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_uid != ::geteuid()) {
        ::close(fd);
        return system_error(S_ISDIR(st.st_mode) ? EISDIR : EPERM);
    }
    ::fcntl(fd, F_SETFL, O_WRONLY | O_APPEND);  // a regular file: blocking writes again
    return write_and_close(fd, bytes);
}

}  // namespace quiller::posix
