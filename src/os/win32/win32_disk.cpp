// Directory tree sizes, free disk space and physical memory on Win32.
#include <vector>

#include "os/win32/win32_handle.hpp"
#include "os/win32/win32_platform.hpp"

namespace quiller::win32 {
namespace {

bool is_dot_entry(const wchar_t* name) {
    return name[0] == L'.' && (name[1] == L'\0' || (name[1] == L'.' && name[2] == L'\0'));
}

// Adds the sizes of the files directly in `dir` (which ends in "\") to `total` and queues its
// subdirectories. Links and junctions are not followed.
void scan_directory(const std::wstring& dir, std::int64_t& total,
                    std::vector<std::wstring>& pending) {
    WIN32_FIND_DATAW entry{};
    FindHandle find(FindFirstFileExW((dir + L"*").c_str(), FindExInfoBasic, &entry,
                                     FindExSearchNameMatch, nullptr, FIND_FIRST_EX_LARGE_FETCH));
    if (!find.valid()) return;
    do {
        if (is_dot_entry(entry.cFileName)) continue;
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) continue;
        if (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
            pending.push_back(dir + entry.cFileName + L"\\");
        } else {
            total += static_cast<std::int64_t>(
                (static_cast<std::uint64_t>(entry.nFileSizeHigh) << 32) | entry.nFileSizeLow);
        }
    } while (FindNextFileW(find.get(), &entry));
}

// The folder of `path` itself, ending in "\".
std::wstring as_directory(const std::string& path) {
    std::wstring dir = native_path(path);
    if (!dir.empty() && dir.back() != L'\\' && dir.back() != L'/') dir += L'\\';
    return dir;
}

// The root of the volume that holds `path` ("C:\", a mount point or "\\server\share\").
std::wstring volume_root(const std::string& path) {
    const std::wstring p = native_path(path);
    std::wstring root(p.size() + MAX_PATH + 1, L'\0');
    if (!GetVolumePathNameW(p.c_str(), root.data(), static_cast<DWORD>(root.size()))) return p;
    root.resize(wcslen(root.c_str()));
    return root;
}

}  // namespace

std::optional<std::int64_t> Win32FileSystem::tree_size(const std::string& directory) {
    const DWORD attrs = GetFileAttributesW(native_path(directory).c_str());
    if (attrs == INVALID_FILE_ATTRIBUTES || !(attrs & FILE_ATTRIBUTE_DIRECTORY))
        return std::nullopt;
    std::int64_t total = 0;
    std::vector<std::wstring> pending{as_directory(directory)};
    while (!pending.empty()) {
        const std::wstring dir = std::move(pending.back());
        pending.pop_back();
        scan_directory(dir, total, pending);
    }
    return total;
}

std::optional<std::int64_t> Win32FileSystem::free_space(const std::string& path) {
    ULARGE_INTEGER available{};
    const std::wstring root = path.empty() ? std::wstring() : volume_root(path);
    if (!GetDiskFreeSpaceExW(root.empty() ? nullptr : root.c_str(), &available, nullptr, nullptr))
        return std::nullopt;
    return static_cast<std::int64_t>(available.QuadPart);
}

MemoryStatus Win32Environment::memory() {
    MEMORYSTATUSEX status{};
    status.dwLength = sizeof status;
    if (!GlobalMemoryStatusEx(&status)) return {};
    return {static_cast<std::int64_t>(status.ullTotalPhys),
            static_cast<std::int64_t>(status.ullAvailPhys)};
}

}  // namespace quiller::win32
