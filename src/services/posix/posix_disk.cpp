// Directory tree sizes, free disk space and physical memory on POSIX.
#include <sys/statvfs.h>
#include <sys/sysinfo.h>

#include <filesystem>
#include <fstream>

#include "services/posix/posix_platform.hpp"

namespace quiller::posix {

std::optional<std::int64_t> PosixFileSystem::tree_size(const std::string& directory) {
    namespace fs = std::filesystem;
    std::error_code ec;
    const fs::path root(native_path(directory));
    if (!fs::is_directory(root, ec)) return std::nullopt;
    std::int64_t total = 0;
    fs::recursive_directory_iterator it(root, fs::directory_options::skip_permission_denied, ec);
    if (ec) return std::nullopt;
    for (; it != fs::recursive_directory_iterator(); it.increment(ec)) {
        if (ec) break;
        if (it->is_symlink(ec)) {
            it.disable_recursion_pending();
            continue;
        }
        if (it->is_regular_file(ec)) total += static_cast<std::int64_t>(it->file_size(ec));
    }
    return total;
}

std::optional<std::int64_t> PosixFileSystem::free_space(const std::string& path) {
    struct statvfs st {};
    const std::string p = path.empty() ? std::string("/") : native_path(path);
    if (::statvfs(p.c_str(), &st) != 0) return std::nullopt;
    return static_cast<std::int64_t>(st.f_bavail) * static_cast<std::int64_t>(st.f_frsize);
}

// MemAvailable from /proc/meminfo when the kernel reports it; sysinfo otherwise.
MemoryStatus PosixEnvironment::memory() {
    MemoryStatus m;
    struct sysinfo info {};
    if (::sysinfo(&info) == 0) {
        m.total = static_cast<std::int64_t>(info.totalram) * info.mem_unit;
        m.available = static_cast<std::int64_t>(info.freeram + info.bufferram) * info.mem_unit;
    }
    std::ifstream meminfo("/proc/meminfo");
    std::string key;
    std::int64_t kb = 0;
    std::string unit;
    while (meminfo >> key >> kb >> unit) {
        if (key == "MemAvailable:") m.available = kb * 1024;
    }
    return m;
}

}  // namespace quiller::posix
