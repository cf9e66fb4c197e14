// Files on POSIX: Windows-style attributes are derived from the mode bits and the name.
#include <dirent.h>
#include <fcntl.h>
#include <fnmatch.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "os/posix/posix_file_operations.hpp"
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

std::optional<FileStatus> PosixFileSystem::status(const std::string& path) {
    const std::string p = native_path(path);
    struct stat st {};
    if (p.empty() || ::stat(p.c_str(), &st) != 0) return std::nullopt;
    return FileStatus{with_dos_attributes(p, attributes_of(st, base_name(p))),
                      static_cast<std::int64_t>(st.st_size),
                      static_cast<std::int64_t>(st.st_mtime)};
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

std::optional<std::string> PosixFileSystem::read_file(const std::string& path, int& error) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        error = errno;
        return std::nullopt;
    }
    std::string content;
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            error = errno;
            ::close(fd);
            return std::nullopt;
        }
        content.append(buffer, static_cast<std::size_t>(n));
    }
    ::close(fd);
    return content;
}

bool PosixFileSystem::append_file(const std::string& path, std::string_view bytes) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    bool ok = true;
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            ok = false;
            break;
        }
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return ::close(fd) == 0 && ok;
}

bool PosixFileSystem::append_private(const std::string& path, std::string_view bytes, int& error) {
    const std::string p = native_path(path);
    const int fd = ::open(p.c_str(),
                          O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
    if (fd < 0) {
        error = errno;
        return false;
    }
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode) || st.st_uid != ::geteuid()) {
        error = S_ISDIR(st.st_mode) ? EISDIR : EPERM;
        ::close(fd);
        return false;
    }
    ::fcntl(fd, F_SETFL, O_WRONLY | O_APPEND);  // a regular file: blocking writes again
    bool ok = true;
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            error = n < 0 ? errno : EIO;
            ok = false;
            break;
        }
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    if (::close(fd) != 0 && ok) {
        error = errno;
        ok = false;
    }
    return ok;
}

std::string PosixFileSystem::error_text(int code) {
    return std::string(std::strerror(code)) + " (" + std::to_string(code) + ")";
}

}  // namespace quiller::posix
