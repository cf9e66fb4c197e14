// Files on POSIX: looking at names and paths, and the changes that are one system call.
#include "os/posix/posix_dos_attributes.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "value/text.hpp"
#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

std::string base_name(std::string_view p) {
    while (p.size() > 1 && p.back() == '/') p.remove_suffix(1);
    const std::size_t slash = p.rfind('/');
    return std::string(slash == std::string_view::npos ? p : p.substr(slash + 1));
}

// The resolved path, or empty with the reason in `code`.
std::string real_path(const std::string& p, int& code) {
    char buffer[PATH_MAX];
    if (::realpath(p.c_str(), buffer)) return buffer;
    code = errno;
    return {};
}

// The attribute bits of a file, as FileSystem::status gives them (posix_files.cpp).
std::uint32_t attributes_of(const struct stat& st, std::string_view name, const std::string& p) {
    std::uint32_t attrs = 0;
    if (S_ISDIR(st.st_mode)) attrs |= kAttrDirectory;
    if (S_ISREG(st.st_mode)) attrs |= kAttrArchive;
    if (!(st.st_mode & S_IWUSR)) attrs |= kAttrReadOnly;
    if (!name.empty() && name.front() == '.' && name != "." && name != "..") attrs |= kAttrHidden;
    return with_dos_attributes(p, attrs);
}

// The entry of a path in the system's own form (no separators to convert).
Result<FileEntry> describe(const std::string& p) {
    struct stat own {};
    if (p.empty() || ::lstat(p.c_str(), &own) != 0) return system_error(p.empty() ? ENOENT : errno);
    FileEntry e;
    e.name = base_name(p);
    e.link = S_ISLNK(own.st_mode);
    struct stat st = own;
    if (e.link && ::stat(p.c_str(), &st) != 0) return e;  // a dangling link
    e.directory = S_ISDIR(st.st_mode);
    e.size = e.directory ? 0 : static_cast<std::int64_t>(st.st_size);
    e.modified = static_cast<std::int64_t>(st.st_mtime);
    e.attributes = attributes_of(st, e.name, p);
    return e;
}

std::string absolute(const std::string& p) {
    if (p.empty() || p.front() == '/') return p;
    char buffer[PATH_MAX];
    if (!::getcwd(buffer, sizeof buffer)) return {};
    return std::string(buffer) + "/" + p;
}

// Appends "a/../b"-style parts that don't exist to a resolved directory, by their text.
std::string append_parts(std::string base, const std::vector<std::string>& reversed_parts) {
    for (auto it = reversed_parts.rbegin(); it != reversed_parts.rend(); ++it) {
        if (it->empty() || *it == ".") continue;
        if (*it == "..") {
            const std::size_t slash = base.rfind('/');
            base.erase(slash == 0 ? 1 : slash);
            continue;
        }
        if (base.back() != '/') base += '/';
        base += *it;
    }
    return base;
}

std::string home_of_account() {
    std::vector<char> buffer(16384);
    passwd pw{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &pw, buffer.data(), buffer.size(), &found) != 0 || !found)
        return {};
    return found->pw_dir ? found->pw_dir : "";
}

}  // namespace

// A trailing "/" would make lstat follow a link: it doesn't count.
Result<FileEntry> PosixFileSystem::entry(const std::string& path) {
    std::string p = native_path(path);
    while (p.size() > 1 && p.back() == '/') p.pop_back();
    return describe(p);
}

Result<std::vector<FileEntry>> PosixFileSystem::list(const std::string& directory) {
    std::string dir = native_path(directory);
    DIR* d = ::opendir(dir.c_str());
    if (!d) return system_error(errno);
    if (dir.back() != '/') dir += '/';
    std::vector<FileEntry> entries;
    while (const dirent* item = ::readdir(d)) {
        const std::string_view name = item->d_name;
        if (name == "." || name == "..") continue;
        // A name that vanished meanwhile is left out.
        if (auto e = describe(dir + item->d_name)) entries.push_back(std::move(*e));
    }
    ::closedir(d);
    return entries;
}

bool PosixFileSystem::same_file(const std::string& a, const std::string& b) {
    struct stat sa {
    }, sb{};
    return ::stat(native_path(a).c_str(), &sa) == 0 && ::stat(native_path(b).c_str(), &sb) == 0 &&
           sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

std::string PosixFileSystem::resolve(const std::string& path) {
    std::string head = absolute(native_path(path));
    std::vector<std::string> missing;  // the parts that don't exist, last first
    while (!head.empty()) {
        int code = 0;
        if (std::string real = real_path(head, code); !real.empty())
            return append_parts(real, missing);
        if (code != ENOENT && code != ENOTDIR) return {};
        while (head.size() > 1 && head.back() == '/') head.pop_back();
        const std::size_t slash = head.rfind('/');
        if (head == "/" || slash == std::string::npos) return {};
        missing.push_back(head.substr(slash + 1));
        head.erase(slash == 0 ? 1 : slash);
    }
    return {};
}

std::vector<std::string> PosixFileSystem::home_directories() {
    std::vector<std::string> homes;
    const char* env = std::getenv("HOME");
    for (const std::string& home : {std::string(env ? env : ""), home_of_account()}) {
        if (home.empty()) continue;
        const std::string resolved = resolve(home);
        if (!resolved.empty() && std::find(homes.begin(), homes.end(), resolved) == homes.end())
            homes.push_back(resolved);
    }
    return homes;
}

Status PosixFileSystem::remove_file(const std::string& path) {
    const std::string p = native_path(path);
    struct stat st {};
    if (::lstat(p.c_str(), &st) != 0 || S_ISDIR(st.st_mode) || ::unlink(p.c_str()) != 0)
        return system_error(S_ISDIR(st.st_mode) ? EISDIR : errno);
    return {};
}

Status PosixFileSystem::make_directory(const std::string& path) {
    if (::mkdir(native_path(path).c_str(), 0777) == 0) return {};
    return system_error(errno);
}

Status PosixFileSystem::remove_directory(const std::string& path) {
    const std::string p = native_path(path);
    struct stat st {};
    const bool link = ::lstat(p.c_str(), &st) == 0 && S_ISLNK(st.st_mode);
    if ((link ? ::unlink(p.c_str()) : ::rmdir(p.c_str())) == 0) return {};
    return system_error(errno);
}

// Never replaces: the kernel refuses an existing target where it can (RENAME_NOREPLACE); file
// systems without that are checked first. A new spelling of the same name, on a file system
// whose names ignore case, is a plain rename.
Status PosixFileSystem::rename(const std::string& from, const std::string& to) {
    const std::string f = native_path(from);
    const std::string t = native_path(to);
    int result = ::renameat2(AT_FDCWD, f.c_str(), AT_FDCWD, t.c_str(), RENAME_NOREPLACE);
    if (result != 0 && errno == EEXIST && text::iequals(f, t) && same_file(from, to)) {
        result = ::rename(f.c_str(), t.c_str());
    } else if (result != 0 && (errno == EINVAL || errno == ENOSYS || errno == ENOTSUP)) {
        struct stat st {};
        if (::lstat(t.c_str(), &st) == 0) return system_error(EEXIST);
        result = ::rename(f.c_str(), t.c_str());
    }
    if (result == 0) return {};
    return system_error(errno);
}

}  // namespace quiller::posix
