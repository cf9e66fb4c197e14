// Copying a file and removing a tree on POSIX.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

#include "os/file_operation_paths.hpp"
#include "os/posix/posix_file_operations.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

constexpr std::size_t kCopyBuffer = 256 * 1024;

// Closes a descriptor when it goes out of scope.
struct Fd {
    int fd = -1;
    ~Fd() {
        if (fd >= 0) ::close(fd);
    }
};

bool copy_bytes(int in, int out) {
    auto buffer = std::make_unique<char[]>(kCopyBuffer);
    for (;;) {
        const ssize_t n = ::read(in, buffer.get(), kCopyBuffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return n == 0;
        for (ssize_t done = 0; done < n;) {
            const ssize_t w = ::write(out, buffer.get() + done, static_cast<std::size_t>(n - done));
            if (w < 0 && errno == EINTR) continue;
            if (w <= 0) return false;
            done += w;
        }
    }
}

// The kept attribute word travels with the copy (archive set, as for any new file).
void copy_dos_word(const std::string& from, int out) {
    const auto bits = read_dos_attributes(from);
    if (!bits) return;
    char text[16];
    const int n = std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned>(*bits | 0x20u));
    ::fsetxattr(out, "user.DOSATTRIB", text, static_cast<std::size_t>(n), 0);
}

// Content, kept word, permissions and times, then flushed; false with errno.
bool fill(int in, const struct stat& st, const std::string& from, int out) {
    if (!copy_bytes(in, out)) return false;
    copy_dos_word(from, out);
    const struct timespec times[2] = {st.st_atim, st.st_mtim};
    return ::fchmod(out, st.st_mode & 0777) == 0 && ::futimens(out, times) == 0 &&
           ::fsync(out) == 0;
}

// The file a target path leads to: a link is followed, so the copy replaces what it points at.
std::string followed(const std::string& p) {
    struct stat st {};
    char buffer[PATH_MAX];
    if (::lstat(p.c_str(), &st) == 0 && S_ISLNK(st.st_mode) && ::realpath(p.c_str(), buffer))
        return buffer;
    return p;
}

// Why `target` must not be replaced by a copy of `source`, or 0.
int replace_refusal(const struct stat& source, const std::string& target) {
    struct stat st {};
    if (::stat(target.c_str(), &st) != 0) return 0;
    if (st.st_dev == source.st_dev && st.st_ino == source.st_ino) return EINVAL;
    if (S_ISDIR(st.st_mode)) return EISDIR;
    return (st.st_mode & S_IWUSR) ? 0 : EACCES;
}

void sync_directory_of(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    const std::string dir = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    Fd d{::open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (d.fd >= 0) ::fsync(d.fd);
}

// The identity of a directory: device and inode.
using Identity = std::pair<dev_t, ino_t>;

// The root and the home directories, which a removal never enters, whatever their name.
std::vector<Identity> protected_identities(PosixFileOperations& ops) {
    std::vector<Identity> out;
    std::vector<std::string> dirs = ops.home_directories();
    dirs.emplace_back("/");
    for (const std::string& d : dirs) {
        struct stat st {};
        if (::stat(d.c_str(), &st) == 0) out.emplace_back(st.st_dev, st.st_ino);
    }
    return out;
}

// Removes what lies inside a directory through descriptors, so a name that is swapped for a
// link while the walk runs is never followed. Stays on the directory's own file system and out
// of the protected directories (met again through a bind mount).
class TreeRemoval {
  public:
    TreeRemoval(dev_t device, std::vector<Identity> kept, char separator, std::string& failed,
                int& error)
        : device_(device),
          kept_(std::move(kept)),
          separator_(separator),
          failed_(failed),
          error_(error) {}

    bool ok() const { return ok_; }
    void fail(const std::string& shown, int code) {
        if (ok_) {
            failed_ = shown;
            error_ = code;
        }
        ok_ = false;
    }

    // Empties the open directory `fd` (taken over) that messages call `shown`.
    void empty(int fd, const std::string& shown) {
        Fd dir{fd};
        struct stat st {};
        if (::fstat(fd, &st) != 0 || st.st_dev != device_) return fail(shown, EXDEV);
        if (std::find(kept_.begin(), kept_.end(), Identity(st.st_dev, st.st_ino)) != kept_.end())
            return fail(shown, EPERM);
        if (!(st.st_mode & S_IWUSR)) ::fchmod(fd, (st.st_mode & 07777) | S_IWUSR);
        for (const std::string& name : names(fd, shown)) remove_entry(fd, name, shown);
    }

  private:
    std::vector<std::string> names(int fd, const std::string& shown) {
        std::vector<std::string> out;
        DIR* d = ::fdopendir(::dup(fd));
        if (!d) {
            fail(shown, errno);
            return out;
        }
        while (const dirent* item = ::readdir(d)) {
            const std::string_view n = item->d_name;
            if (n != "." && n != "..") out.emplace_back(n);
        }
        ::closedir(d);
        return out;
    }

    void remove_entry(int fd, const std::string& name, const std::string& shown) {
        const std::string child = shown + separator_ + name;
        struct stat st {};
        if (::fstatat(fd, name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
            if (errno != ENOENT) fail(child, errno);
            return;
        }
        if (S_ISDIR(st.st_mode)) {
            const int sub =
                ::openat(fd, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (sub < 0) return fail(child, errno);
            empty(sub, child);
        }
        if (::unlinkat(fd, name.c_str(), S_ISDIR(st.st_mode) ? AT_REMOVEDIR : 0) != 0)
            fail(child, errno);
    }

    dev_t device_;
    std::vector<Identity> kept_;
    char separator_;
    std::string& failed_;
    int& error_;
    bool ok_ = true;
};

}  // namespace

bool PosixFileOperations::copy_file(const std::string& from, const std::string& to, int& error) {
    const std::string source = native_path(from);
    const std::string target = followed(native_path(to));
    Fd in{::open(source.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)};
    struct stat st {};
    if (in.fd < 0 || ::fstat(in.fd, &st) != 0) {
        error = errno;
        return false;
    }
    error = !S_ISREG(st.st_mode) ? (S_ISDIR(st.st_mode) ? EISDIR : EINVAL)
                                 : replace_refusal(st, target);
    if (error) return false;
    std::string temp = target + ".XXXXXX";
    Fd out{::mkostemp(temp.data(), O_CLOEXEC)};
    if (out.fd < 0 || !fill(in.fd, st, source, out.fd)) {
        error = errno;
        if (out.fd >= 0) ::unlink(temp.c_str());
        return false;
    }
    const int closed = ::close(out.fd);
    out.fd = -1;
    if (closed != 0 || ::rename(temp.c_str(), target.c_str()) != 0) {
        error = errno;
        ::unlink(temp.c_str());
        return false;
    }
    sync_directory_of(target);
    return true;
}

bool PosixFileOperations::remove_tree(const std::string& path, std::string& failed, int& error) {
    const std::string p = native_path(path);
    struct stat st {};
    int code = 0;
    if (::lstat(p.c_str(), &st) != 0) {
        code = errno;
    } else if (S_ISLNK(st.st_mode)) {
        if (::unlink(p.c_str()) == 0) return true;
        code = errno;
    } else if (!S_ISDIR(st.st_mode)) {
        code = ENOTDIR;
    }
    if (code) {
        failed = path;
        error = code;
        return false;
    }
    TreeRemoval removal(st.st_dev, protected_identities(*this), fileops::separator_of(path), failed,
                        error);
    const int fd = ::open(p.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        removal.fail(path, errno);
    else
        removal.empty(fd, path);
    if (removal.ok() && ::rmdir(p.c_str()) != 0) removal.fail(path, errno);
    return removal.ok();
}

}  // namespace quiller::posix
