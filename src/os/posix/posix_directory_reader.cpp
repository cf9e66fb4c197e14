// Folders on POSIX: readdir's entry type, fstatat relative to the open folder, following links
// (an entry is recorded as what it points to).
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "os/directory_reader.hpp"
#include "os/platform.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller {
namespace {

std::uint32_t attributes_of(const struct stat& st, const char* name) {
    std::uint32_t attrs = 0;
    if (S_ISDIR(st.st_mode)) attrs |= kAttrDirectory;
    if (S_ISREG(st.st_mode)) attrs |= kAttrArchive;
    if (!(st.st_mode & S_IWUSR)) attrs |= kAttrReadOnly;
    if (name[0] == '.') attrs |= kAttrHidden;
    return attrs;
}

void read_status(int folder, const dirent& d, DirectoryEntry& e) {
    struct stat st {};
    if (::fstatat(folder, d.d_name, &st, 0) != 0) {
        e.error = errno;
        return;
    }
    e.attributes = attributes_of(st, d.d_name);
    e.modified = static_cast<std::int64_t>(st.st_mtime);
    if (S_ISDIR(st.st_mode)) {
        e.kind =
            d.d_type == DT_DIR ? DirectoryEntry::Kind::Folder : DirectoryEntry::Kind::FolderLink;
        // An unknown type needs a look at the entry itself to tell a link.
        struct stat own {};
        if (d.d_type == DT_UNKNOWN && ::fstatat(folder, d.d_name, &own, AT_SYMLINK_NOFOLLOW) == 0 &&
            S_ISDIR(own.st_mode))
            e.kind = DirectoryEntry::Kind::Folder;
    } else if (S_ISREG(st.st_mode)) {
        e.size = static_cast<std::int64_t>(st.st_size);
    } else {
        e.kind = DirectoryEntry::Kind::Other;
    }
}

class PosixDirectoryReader final : public DirectoryReader {
  public:
    int list(const std::string& path, std::vector<DirectoryEntry>& entries) override {
        entries.clear();
        const std::string native = posix::native_path(path);
        const int folder = ::open(native.empty() ? "." : native.c_str(),
                                  O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
        if (folder < 0) return errno;
        DIR* dir = ::fdopendir(folder);
        if (dir == nullptr) {
            const int error = errno;
            ::close(folder);
            return error;
        }
        int error = 0;
        for (;;) {
            errno = 0;
            const dirent* d = ::readdir(dir);
            if (d == nullptr) {
                error = errno;
                break;
            }
            if (d->d_name[0] == '.' &&
                (d->d_name[1] == '\0' || (d->d_name[1] == '.' && d->d_name[2] == '\0')))
                continue;
            DirectoryEntry& e = entries.emplace_back();
            e.name = d->d_name;
            read_status(folder, *d, e);
        }
        ::closedir(dir);
        if (error != 0) entries.clear();
        return error;
    }

    SystemError describe(int error) const override { return posix::system_error(error); }
    bool transient(int error) const override {
        switch (error) {
            case EINTR:
            case EAGAIN:
            case ENOMEM:
            case EMFILE:
            case ENFILE:
            case EBUSY:
            case ETIMEDOUT:
            case ESTALE:
            case ENETDOWN:
            case ENETUNREACH:
            case ENETRESET:
            case EHOSTDOWN:
            case EHOSTUNREACH:
            case ECONNRESET:
            case ECONNABORTED:
            case ENOLINK:
                return true;
            default:
                return false;
        }
    }
};

}  // namespace

std::unique_ptr<DirectoryReader> make_directory_reader() {
    return std::make_unique<PosixDirectoryReader>();
}

}  // namespace quiller
