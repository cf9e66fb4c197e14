// Removing a tree on POSIX.
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
#include "os/removal_failures.hpp"
#include "os/posix/posix_platform.hpp"
#include "os/posix/posix_raw_file.hpp"

namespace quiller::posix {
namespace {

// Closes a descriptor when it goes out of scope.
struct Fd {
    int fd = -1;
    ~Fd() {
        if (fd >= 0) ::close(fd);
    }
};

// The identity of a directory: device and inode.
using Identity = std::pair<dev_t, ino_t>;

// The root and the home directories, which a removal never enters, whatever their name.
std::vector<Identity> protected_identities(PosixFileSystem& files) {
    std::vector<Identity> out;
    std::vector<std::string> dirs = files.home_directories();
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
    TreeRemoval(dev_t device, std::vector<Identity> kept, RemovalFailures& failures)
        : device_(device), kept_(std::move(kept)), failures_(failures) {}

    void fail(const std::string& shown, int code) { failures_.fail(shown, system_error(code)); }

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
        const std::string child = failures_.child(shown, name);
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
    RemovalFailures& failures_;
};

}  // namespace

Status PosixFileSystem::remove_tree(const std::string& path, std::string& failed) {
    const std::string p = native_path(path);
    struct stat st {};
    int code = 0;
    if (::lstat(p.c_str(), &st) != 0) {
        code = errno;
    } else if (S_ISLNK(st.st_mode)) {
        if (::unlink(p.c_str()) == 0) return {};
        code = errno;
    } else if (!S_ISDIR(st.st_mode)) {
        code = ENOTDIR;
    }
    if (code) {
        failed = path;
        return system_error(code);
    }
    RemovalFailures failures(path);
    TreeRemoval removal(st.st_dev, protected_identities(*this), failures);
    const int fd = ::open(p.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        removal.fail(path, errno);
    else
        removal.empty(fd, path);
    if (failures.ok() && ::rmdir(p.c_str()) != 0) removal.fail(path, errno);
    return failures.outcome(failed);
}

}  // namespace quiller::posix
