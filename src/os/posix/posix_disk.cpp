// Directory tree sizes, free disk space and physical memory on POSIX.
#include <sys/statvfs.h>
#include <sys/sysinfo.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "os/posix/posix_platform.hpp"

namespace quiller::posix {
namespace {

namespace fs = std::filesystem;

// The logical size of a regular file (symbolic links are not followed); 0 for anything else.
std::int64_t entry_size(const fs::directory_entry& entry) {
    std::error_code ec;
    if (entry.is_symlink(ec) || !entry.is_regular_file(ec)) return 0;
    const std::uintmax_t size = entry.file_size(ec);
    return ec ? 0 : static_cast<std::int64_t>(size);
}

// A Windows drive ("C:", "C:\dir") has no meaning here: its letter names the root file system.
std::string disk_path(const std::string& path) {
    if (path.empty()) return "/";
    if (path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0]))) {
        const std::string rest = native_path(path.substr(2));
        return rest.empty() || rest.front() != '/' ? "/" + rest : rest;
    }
    return native_path(path);
}

// The value in kB of a /proc/meminfo line ("MemAvailable:   123 kB"), if it has that key.
bool meminfo_value(const std::string& line, std::string_view key, std::int64_t& bytes) {
    if (line.compare(0, key.size(), key) != 0) return false;
    std::istringstream in(line.substr(key.size()));
    std::int64_t kb = 0;
    if (!(in >> kb)) return false;
    bytes = kb * 1024;
    return true;
}

}  // namespace

// Unreadable subdirectories are skipped; a directory that can't be listed at all gives nothing.
std::optional<std::int64_t> PosixFileSystem::tree_size(const std::string& directory) {
    std::error_code ec;
    const fs::path root(native_path(directory));
    if (root.empty() || !fs::is_directory(root, ec)) return std::nullopt;
    fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, ec);
    if (ec) return std::nullopt;
    std::int64_t total = 0;
    for (; it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (ec) break;
        if (it->is_symlink(ec)) it.disable_recursion_pending();
        total += entry_size(*it);
    }
    return total;
}

std::optional<std::int64_t> PosixFileSystem::free_space(const std::string& path) {
    struct statvfs st {};
    if (::statvfs(disk_path(path).c_str(), &st) != 0) return std::nullopt;
    return static_cast<std::int64_t>(st.f_bavail) * static_cast<std::int64_t>(st.f_frsize);
}

// MemTotal and MemAvailable from /proc/meminfo; sysinfo where the kernel lacks them.
MemoryStatus PosixEnvironment::memory() {
    MemoryStatus m;
    struct sysinfo info {};
    if (::sysinfo(&info) == 0) {
        m.total = static_cast<std::int64_t>(info.totalram) * info.mem_unit;
        m.available = static_cast<std::int64_t>(info.freeram + info.bufferram) * info.mem_unit;
    }
    std::ifstream meminfo("/proc/meminfo");
    for (std::string line; std::getline(meminfo, line);) {
        meminfo_value(line, "MemTotal:", m.total);
        meminfo_value(line, "MemAvailable:", m.available);
    }
    return m;
}

}  // namespace quiller::posix
